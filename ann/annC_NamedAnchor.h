#pragma once

#include "ann/annC_Anchor.h"
#include "ann/annC_Enumerations.h"

/// One of the nine named positions of the viewport, the bottom left corner at first; of the box of
/// a text where it is the text's reference point.
class KTSOVUGEOM_API annC_NamedAnchor final : public annC_Anchor {
  public:
    annC_NamedAnchor() = default;
    /// A value without a name raises `omu_ValueErrorException`.
    explicit annC_NamedAnchor(annC_RelativePositionEnm relativePosition);
    /// Reads the record of an anchor.
    explicit annC_NamedAnchor(cls_ReadVisitor& visitor);

    [[nodiscard]] annC_RelativePositionEnm GetPosition() const noexcept { return position; }
    /// Takes a value, a name, or the name of another enumeration. One that is not permitted raises
    /// `omu_ValueErrorException`, and nothing is changed.
    template <class Value>
    void SetPosition(const Value& value) {
        position = annC_PrimRelativePosition(value).Enumerator();
    }

    [[nodiscard]] annC_NamedAnchor* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "position", as its value.
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 848:4.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 4);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] bool HasSameFields(const annC_Anchor& other) const override;

    annC_RelativePositionEnm position = annC_POSITION_BOTTOM_LEFT;
};
