#include "omu/omu_PrimException.h"

#include <string_view>

#include "foundation/shared/cls_FoundationClasses.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kMessage("_message");
constexpr cls_FieldHandle kException("_exception");

/// The class that `exception` can be read back as, 0 for none.
std::uint32_t ArchivedClassOf(const nex_Exception& exception) {
    const std::uint32_t classId = exception.DynTypeId();
    const cls_ClassMetadata* const metadata =
        omi_Singleton<cls_MetadataRegistrar>::Instance().ClassRegistrar().Find(classId);
    return metadata && metadata->Ctor() ? classId : 0;
}

}  // namespace

omu_PrimException::omu_PrimException(const nex_Exception& caught)
    : omu_PrimException(caught, caught.JournalMessage(KTSBasStringMode::Translated)) {}

omu_PrimException::omu_PrimException(const nex_Exception& caught, const cow_String& messageText)
    : omu_Primitive(omu_PrimTag::kException), message(messageText), exception(caught.Clone()) {}

// Archives hold exceptions as `nex_Exception`.
omu_PrimException::omu_PrimException(cls_ReadVisitor& visitor)
    : omu_Primitive(omu_PrimTag::kException) {
    visitor.Read(kMessage, message);
    exception.reset(static_cast<const nex_Exception*>(
        visitor.ReadObjValue(kException, cls_BASE_EXCEPTION_CLASS)));
}

const char* omu_PrimException::PythonType() const {
    return exception ? exception->PythonType() : nex_CmdExceptionNamesOf<cow_String>(16).pythonType;
}

void omu_PrimException::Propagate() const {
    if (exception) exception->Propagate();
    KTSBasThrow(omu_PyCorvixException(message));
}

cow_String omu_PrimException::AsString(int) const { return "omu_PrimException object"; }

bool omu_PrimException::operator==(const omu_Primitive& other) const {
    const auto* caught = dynamic_cast<const omu_PrimException*>(&other);
    return caught && message == caught->message &&
           std::string_view(PythonType()) == caught->PythonType();
}

void omu_PrimException::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimException* omu_PrimException::Copy() const { return new omu_PrimException(*this); }

std::uint32_t omu_PrimException::TypeId() const { return kTypeId; }

void omu_PrimException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kMessage, message);
    const std::uint32_t classId = exception ? ArchivedClassOf(*exception) : 0;
    if (classId == 0) return visitor.WriteNullObj(kException);
    if (const auto record =
            visitor.MakeWriteObjWithPtr(kException, classId, cls_Uid(), exception.get())) {
        exception->DBWrite(*record);
    }
}

void omu_PrimException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        omu_MetadataOf<omu_PrimException>("omu_PrimException")
            .AddAttribute(kMessage.Name(), cls_KIND_STRING)
            .AddAttribute(kException.Name(), cls_KIND_OBJ_POINTER, cls_BASE_EXCEPTION_CLASS));
}
