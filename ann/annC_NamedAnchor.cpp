#include "ann/annC_NamedAnchor.h"

#include "ann/detail/annC_Archive.h"

namespace {

constexpr cls_FieldHandle kPosition("position");

}  // namespace

annC_NamedAnchor::annC_NamedAnchor(annC_RelativePositionEnm relativePosition) {
    SetPosition(relativePosition);
}

annC_NamedAnchor::annC_NamedAnchor(cls_ReadVisitor& visitor) {
    annC_ReadEnum<annC_PrimRelativePosition>(visitor, kPosition, position);
}

annC_NamedAnchor* annC_NamedAnchor::Copy() const { return new annC_NamedAnchor(*this); }

std::uint32_t annC_NamedAnchor::TypeId() const { return kTypeId; }

bool annC_NamedAnchor::HasSameFields(const annC_Anchor& other) const {
    return position == static_cast<const annC_NamedAnchor&>(other).position;
}

void annC_NamedAnchor::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.WriteEnumAsInt(kPosition, position);
}

void annC_NamedAnchor::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(annC_MetadataOf<annC_NamedAnchor, annC_Anchor>("annC_NamedAnchor")
                           .AddAttribute(kPosition.Name(), cls_KIND_ENUM));
}
