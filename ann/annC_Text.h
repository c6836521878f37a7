#pragma once

#include "ann/annC_Anchor.h"
#include "ann/annC_Annotation.h"
#include "ann/annC_Enumerations.h"
#include "ann/annC_Font.h"
#include "foundation/coreutils/cow_String.h"

/// A text in a viewport, of any number of lines. The reference point, a position of the text's own
/// box, lies at the anchor plus the offset, a displacement in viewport units; a reference point
/// that is no named position is kept, and drawn as the bottom left. The text is turned about its
/// reference point.
///
/// A new text is empty, "White" on nothing, left-justified and without a box, at the bottom left.
/// Colours and the font are names, kept as given: whoever draws the text falls back to white on
/// black and the default font (`annC_Font`). A copy shares the anchors until one of the two writes
/// its own.
class KTSOVUGEOM_API annC_Text final : public annC_Annotation {
  public:
    annC_Text();
    /// Reads the record of a text. A field that is absent or damaged has its default; a damaged one
    /// prints a line on standard error.
    explicit annC_Text(cls_ReadVisitor& visitor);
    annC_Text(const annC_Text&) = default;
    annC_Text& operator=(const annC_Text&) = default;
    ~annC_Text() override;

    [[nodiscard]] const cow_String& GetText() const noexcept { return text; }
    void SetText(const cow_String& newText) noexcept { text = newText; }
    [[nodiscard]] const annC_Point2D& GetOffset() const noexcept { return offset; }
    void SetOffset(const annC_Point2D& newOffset) noexcept { offset = newOffset; }

    /// The anchors for reading, and for writing: the latter are private to this text until it is
    /// copied, so a reference does not outlive the next copy.
    [[nodiscard]] const annC_Anchor& ConstGetAnchor() const noexcept { return *anchor; }
    [[nodiscard]] const annC_Anchor& ConstGetReferencePoint() const noexcept {
        return *referencePoint;
    }
    [[nodiscard]] annC_Anchor& GetAnchor() { return *anchor.Get(); }
    [[nodiscard]] annC_Anchor& GetReferencePoint() { return *referencePoint.Get(); }
    /// Takes a copy of `newAnchor`, of `position`.
    void SetAnchor(const annC_Anchor& newAnchor) { anchor = annC_AnchorCow(newAnchor.Copy()); }
    void SetReferencePoint(const annC_Anchor& position) {
        referencePoint = annC_AnchorCow(position.Copy());
    }

    /// The angle of the lines against the x axis, counter-clockwise in degrees.
    [[nodiscard]] double GetRotationAngle() const noexcept { return rotationAngle; }
    void SetRotationAngle(double angleDeg) noexcept { rotationAngle = angleDeg; }
    [[nodiscard]] const cow_String& GetFont() const noexcept { return font; }
    void SetFont(const cow_String& description) noexcept { font = description; }
    [[nodiscard]] const cow_String& GetColor() const noexcept { return color; }
    void SetColor(const cow_String& name) noexcept { color = name; }
    /// The colour behind a text of background style "OTHER".
    [[nodiscard]] const cow_String& GetBackgroundColor() const noexcept { return backgroundColor; }
    void SetBackgroundColor(const cow_String& name) noexcept { backgroundColor = name; }

    [[nodiscard]] annC_BackgroundStyleEnm GetBackgroundStyle() const noexcept {
        return backgroundStyle;
    }
    [[nodiscard]] annC_JustificationEnm GetJustification() const noexcept { return justification; }
    /// The enumerated fields take a value, a name, or the name of another enumeration. One that is
    /// not permitted raises `omu_ValueErrorException`, and nothing is changed.
    template <class Value>
    void SetBackgroundStyle(const Value& value) {
        backgroundStyle = annC_PrimBackgroundStyle(value).Enumerator();
    }
    template <class Value>
    void SetJustification(const Value& value) {
        justification = annC_PrimJustification(value).Enumerator();
    }

    /// Whether a box is drawn around the text. Archives hold a 32-bit flag, of which any value but
    /// 0 is on.
    [[nodiscard]] bool HasBox() const noexcept { return box != 0; }
    void SetBox(bool isOn) noexcept { box = isOn ? 1 : 0; }

    [[nodiscard]] annC_Text* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes the fields, the offset as a list of two doubles and the enumerated ones by value.
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 848:5.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 5);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] bool HasSameFields(const annC_Annotation& other) const override;

    cow_String text;
    annC_Point2D offset;
    annC_AnchorCow anchor;
    annC_AnchorCow referencePoint;
    double rotationAngle = 0;
    cow_String font = annC_Font::kDefault;
    cow_String color = "White";
    annC_BackgroundStyleEnm backgroundStyle = annC_BACKGROUND_TRANSPARENT;
    cow_String backgroundColor = "Black";
    std::int32_t box = 0;
    annC_JustificationEnm justification = annC_JUSTIFIED_LEFT;
};
