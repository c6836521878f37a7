#include "ann/annC_ViewportAnchor.h"

#include "ann/detail/annC_Archive.h"

namespace {

constexpr cls_FieldHandle kPositionX("positionX");
constexpr cls_FieldHandle kPositionY("positionY");

}  // namespace

annC_ViewportAnchor::annC_ViewportAnchor(cls_ReadVisitor& visitor) {
    visitor.Read(kPositionX, positionX);
    visitor.Read(kPositionY, positionY);
}

annC_ViewportAnchor* annC_ViewportAnchor::Copy() const { return new annC_ViewportAnchor(*this); }

std::uint32_t annC_ViewportAnchor::TypeId() const { return kTypeId; }

bool annC_ViewportAnchor::HasSameFields(const annC_Anchor& other) const {
    const auto& point = static_cast<const annC_ViewportAnchor&>(other);
    return positionX == point.positionX && positionY == point.positionY;
}

void annC_ViewportAnchor::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kPositionX, positionX);
    visitor.Write(kPositionY, positionY);
}

void annC_ViewportAnchor::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(annC_MetadataOf<annC_ViewportAnchor, annC_Anchor>("annC_ViewportAnchor")
                           .AddAttribute(kPositionX.Name(), cls_KIND_DOUBLE)
                           .AddAttribute(kPositionY.Name(), cls_KIND_DOUBLE));
}
