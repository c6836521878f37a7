#pragma once

#include "ann/annC_Anchor.h"

/// A point of the model, in model coordinates: the annotation follows it as the view changes.
class KTSOVUGEOM_API annC_Point3DAnchor final : public annC_Anchor {
  public:
    /// The origin of the model.
    annC_Point3DAnchor() = default;
    annC_Point3DAnchor(double x, double y, double z) noexcept
        : positionX(x), positionY(y), positionZ(z) {}
    /// Reads the record of an anchor.
    explicit annC_Point3DAnchor(cls_ReadVisitor& visitor);

    [[nodiscard]] double GetX() const noexcept { return positionX; }
    [[nodiscard]] double GetY() const noexcept { return positionY; }
    [[nodiscard]] double GetZ() const noexcept { return positionZ; }
    void SetPosition(double x, double y, double z) noexcept { *this = annC_Point3DAnchor(x, y, z); }

    [[nodiscard]] annC_Point3DAnchor* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "positionX", "positionY" and "positionZ".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 848:8.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 8);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] bool HasSameFields(const annC_Anchor& other) const override;

    double positionX = 0;
    double positionY = 0;
    double positionZ = 0;
};
