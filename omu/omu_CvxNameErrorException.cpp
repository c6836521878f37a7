#include "omu/omu_CvxNameErrorException.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kError("m_Error");

}  // namespace

omu_CvxNameErrorException::omu_CvxNameErrorException(cls_ReadVisitor& visitor)
    : error(static_cast<omu_CvxNameErrorEnm>(visitor.ReadEnumAsInt(kError))) {}

const char* omu_CvxNameErrorException::PythonType() const { return "CorvixNameError"; }

// The empty text is never looked up: catalogues may hold an entry for it.
cow_String omu_CvxNameErrorException::JournalMessage(KTSBasStringMode mode) const {
    switch (error) {
        case omu_NAME_INVALID:
            return atr_String("invalid name").Text(mode);
        case omu_NAME_EMPTY:
            return atr_String("name is empty").Text(mode);
        case omu_NAME_INVALID_JOB:
            return atr_String("invalid job name").Text(mode);
        case omu_NAME_INVALID_MODEL:
            return atr_String("invalid model name").Text(mode);
        default:
            return {};
    }
}

void omu_CvxNameErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.WriteEnumAsInt(kError, error);
}

void omu_CvxNameErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("omu_CvxNameErrorException", TypeId(), &Ctor);
    metadata.SetCowDtor(&CowDtor).AddAttribute(kError.Name(), cls_KIND_ENUM);
    registrar.AddClass(metadata);
}
