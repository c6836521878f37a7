#pragma once

#include "ann/annC_Anchor.h"

/// A point of the viewport, in viewport coordinates: pixels from its bottom left corner, x to the
/// right and y upwards.
class KTSOVUGEOM_API annC_ViewportAnchor final : public annC_Anchor {
  public:
    /// The bottom left corner.
    annC_ViewportAnchor() = default;
    annC_ViewportAnchor(double x, double y) noexcept : positionX(x), positionY(y) {}
    /// Reads the record of an anchor.
    explicit annC_ViewportAnchor(cls_ReadVisitor& visitor);

    [[nodiscard]] double GetX() const noexcept { return positionX; }
    [[nodiscard]] double GetY() const noexcept { return positionY; }
    void SetPosition(double x, double y) noexcept { *this = annC_ViewportAnchor(x, y); }

    [[nodiscard]] annC_ViewportAnchor* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "positionX" and "positionY".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 848:7.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 7);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] bool HasSameFields(const annC_Anchor& other) const override;

    double positionX = 0;
    double positionY = 0;
};
