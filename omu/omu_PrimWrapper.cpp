#include "omu/omu_PrimWrapper.h"

namespace {

constexpr cls_FieldHandle kObjType("objType");
constexpr cls_FieldHandle kMemberDict("memberDict");
constexpr cls_FieldHandle kObjectPtr("objectPtr");

}  // namespace

omu_PrimWrapper::omu_PrimWrapper(void* wrapped, std::uint32_t typeOfObject,
                                 const omu_PrimStringDictionary& memberDictionary)
    : omu_Primitive(omu_PrimTag::kWrapper),
      object(wrapped),
      objectType(typeOfObject),
      members(memberDictionary) {
    omu_PrimWrapper::Nesting().Require();
}

omu_PrimWrapper::omu_PrimWrapper(cls_ReadVisitor& visitor) : omu_PrimWrapper() {
    visitor.Read(kObjType, objectType);
    members = cls_ReadEmbedded<omu_PrimStringDictionary>(visitor, kMemberDict);
    // Whatever stands there is passed over and destroyed.
    static_cast<void>(visitor.MakeAgentProxy(kObjectPtr, omu_Primitive::kTypeId));
    omu_PrimWrapper::Nesting().Require();
}

cow_String omu_PrimWrapper::AsString(int) const { return "Wrapper"; }

bool omu_PrimWrapper::operator==(const omu_Primitive& other) const {
    const auto* wrapper = dynamic_cast<const omu_PrimWrapper*>(&other);
    return wrapper && object == wrapper->object && objectType == wrapper->objectType;
}

void omu_PrimWrapper::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimWrapper* omu_PrimWrapper::Copy() const { return new omu_PrimWrapper(*this); }

std::uint32_t omu_PrimWrapper::TypeId() const { return kTypeId; }

omu_PrimNesting omu_PrimWrapper::Nesting() const noexcept {
    return omu_PrimNesting::OfEmptyContainer().With(members.Nesting());
}

void omu_PrimWrapper::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kObjType, objectType);
    cls_WriteEmbedded(visitor, kMemberDict, members);
    visitor.WriteNullObj(kObjectPtr);
}

void omu_PrimWrapper::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        omu_MetadataOf<omu_PrimWrapper>("omu_PrimWrapper")
            .AddAttribute(kObjType.Name(), cls_KIND_UNSIGNED_INT)
            .AddAttribute(kMemberDict.Name(), cls_KIND_EMBEDDED_OBJ,
                          omu_PrimStringDictionary::kTypeId)
            .AddAttribute(kObjectPtr.Name(), cls_KIND_OBJ_POINTER, omu_Primitive::kTypeId));
}
