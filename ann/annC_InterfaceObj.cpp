#include "ann/annC_InterfaceObj.h"

#include "ann/annC_Arrow.h"
#include "ann/annC_Text.h"
#include "omu/omu_AttributeErrorException.h"

cow_String annC_InterfaceObj::TypeNameOf(std::uint32_t classId) {
    if (classId == annC_Arrow::kTypeId) return "Arrow";
    if (classId == annC_Text::kTypeId) return "Text";
    const bool isOfThisModule = classId >> 16 == annC_Annotation::kTypeId >> 16;
    return isOfThisModule ? "Annotation" : "UNKNOWN TYPE";
}

void annC_InterfaceObj::RaiseNoSuchMember(const cow_String& member) const {
    KTSBasThrow(omu_AttributeErrorException::NoSuchMember(TypeString(), member));
}
