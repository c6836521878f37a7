#include "omu/omu_AttributeErrorException.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kErrorType("m_ErrorType");
constexpr cls_FieldHandle kMessage("m_Message");

constexpr char kDefaultMessage[] = "Error message not implemented yet";
constexpr char kNoAttribute[] = "'%s' object has no attribute '%s'";

}  // namespace

omu_AttributeErrorException::omu_AttributeErrorException(cls_ReadVisitor& visitor) {
    visitor.Read(kErrorType, errorType);
    cow_String text;
    visitor.Read(kMessage, text);
    message = text;
}

omu_AttributeErrorException omu_AttributeErrorException::NoSuchMember(const cow_String& typeName,
                                                                      const cow_String& member) {
    return omu_AttributeErrorException(0, atr_translate(kNoAttribute, typeName, member));
}

const char* omu_AttributeErrorException::PythonType() const { return "AttributeError"; }

cow_String omu_AttributeErrorException::JournalMessage(KTSBasStringMode mode) const {
    return (message.IsEmpty() ? atr_String(kDefaultMessage) : message).Text(mode);
}

void omu_AttributeErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kErrorType, errorType);
    visitor.Write(kMessage, message.Text());
}

void omu_AttributeErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("omu_AttributeErrorException", TypeId(), &Ctor);
    metadata.SetCowDtor(&CowDtor)
        .AddAttribute(kErrorType.Name(), cls_KIND_INT)
        .AddAttribute(kMessage.Name(), cls_KIND_TRANSLATED_STRING);
    registrar.AddClass(metadata);
}
