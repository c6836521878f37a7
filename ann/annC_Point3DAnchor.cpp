#include "ann/annC_Point3DAnchor.h"

#include "ann/detail/annC_Archive.h"

namespace {

constexpr cls_FieldHandle kPositionX("positionX");
constexpr cls_FieldHandle kPositionY("positionY");
constexpr cls_FieldHandle kPositionZ("positionZ");

}  // namespace

annC_Point3DAnchor::annC_Point3DAnchor(cls_ReadVisitor& visitor) {
    visitor.Read(kPositionX, positionX);
    visitor.Read(kPositionY, positionY);
    visitor.Read(kPositionZ, positionZ);
}

annC_Point3DAnchor* annC_Point3DAnchor::Copy() const { return new annC_Point3DAnchor(*this); }

std::uint32_t annC_Point3DAnchor::TypeId() const { return kTypeId; }

bool annC_Point3DAnchor::HasSameFields(const annC_Anchor& other) const {
    const auto& point = static_cast<const annC_Point3DAnchor&>(other);
    return positionX == point.positionX && positionY == point.positionY &&
           positionZ == point.positionZ;
}

void annC_Point3DAnchor::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kPositionX, positionX);
    visitor.Write(kPositionY, positionY);
    visitor.Write(kPositionZ, positionZ);
}

void annC_Point3DAnchor::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(annC_MetadataOf<annC_Point3DAnchor, annC_Anchor>("annC_Point3DAnchor")
                           .AddAttribute(kPositionX.Name(), cls_KIND_DOUBLE)
                           .AddAttribute(kPositionY.Name(), cls_KIND_DOUBLE)
                           .AddAttribute(kPositionZ.Name(), cls_KIND_DOUBLE));
}
