#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"

/// A font by its description: fields behind hyphens, of which the second is the family, the third
/// the weight ("medium", "bold"), the fourth the slant ("r" upright, "i" or "o" slanted) and the
/// eighth the size in tenths of a point. A field that is absent, empty or "*" is that of the
/// default font, Verdana of 12 points, medium and upright.
class KTSOVUGEOM_API annC_Font {
  public:
    /// The description of the default font. It ends before the last fields.
    static constexpr const char* kDefault = "-*-verdana-medium-r-normal-*-*-120-";

    /// The font that `description` describes; the default one when it is not valid.
    explicit annC_Font(const cow_String& description);

    /// True for a description that begins with a hyphen and has eight fields or more.
    [[nodiscard]] static bool IsValid(const cow_String& description) noexcept;

    [[nodiscard]] const cow_String& Family() const noexcept { return family; }
    [[nodiscard]] bool IsBold() const noexcept { return weight == "bold"; }
    [[nodiscard]] bool IsSlanted() const noexcept { return slant == "i" || slant == "o"; }
    /// The size in points.
    [[nodiscard]] double SizePt() const noexcept { return sizePt; }

  private:
    cow_String family = "verdana";
    cow_String weight = "medium";
    cow_String slant = "r";
    double sizePt = 12;
};
