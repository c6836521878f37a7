#pragma once

#include "ann/annC_Anchor.h"
#include "ann/annC_Annotation.h"
#include "ann/annC_Enumerations.h"
#include "foundation/coreutils/cow_String.h"

/// An arrow between two places of a viewport. Each end lies at its anchor plus its point, a
/// displacement in viewport units. The gaps, in viewport units, shorten the line at either end; an
/// arrow whose ends coincide, as those of a new one do, shows nothing, and one shorter than its
/// gaps shows only its heads.
///
/// A new arrow runs from bottom left to bottom left, solid, very thin and "White", with a filled
/// head at its end. Colours are names, kept as given: whoever draws the arrow falls back to white.
/// A copy shares the anchors until one of the two writes its own.
class KTSOVUGEOM_API annC_Arrow final : public annC_Annotation {
  public:
    annC_Arrow();
    /// Reads the record of an arrow. A field that is absent or damaged has its default; a damaged
    /// one prints a line on standard error.
    explicit annC_Arrow(cls_ReadVisitor& visitor);
    annC_Arrow(const annC_Arrow&) = default;
    annC_Arrow& operator=(const annC_Arrow&) = default;
    ~annC_Arrow() override;

    [[nodiscard]] const annC_Point2D& GetStartPoint() const noexcept { return startPoint; }
    [[nodiscard]] const annC_Point2D& GetEndPoint() const noexcept { return endPoint; }
    void SetStartPoint(const annC_Point2D& point) noexcept { startPoint = point; }
    void SetEndPoint(const annC_Point2D& point) noexcept { endPoint = point; }
    /// Moves both ends by (`dx`, `dy`) viewport units; the anchors stay.
    void Translate(double dx, double dy) noexcept;
    void TranslateStartPoint(double dx, double dy) noexcept;
    void TranslateEndPoint(double dx, double dy) noexcept;

    /// The anchors for reading, and for writing: the latter are private to this arrow until it is
    /// copied, so a reference does not outlive the next copy.
    [[nodiscard]] const annC_Anchor& ConstGetStartAnchor() const noexcept { return *startAnchor; }
    [[nodiscard]] const annC_Anchor& ConstGetEndAnchor() const noexcept { return *endAnchor; }
    [[nodiscard]] annC_Anchor& GetStartAnchor() { return *startAnchor.Get(); }
    [[nodiscard]] annC_Anchor& GetEndAnchor() { return *endAnchor.Get(); }
    /// Takes a copy of `anchor`.
    void SetStartAnchor(const annC_Anchor& anchor) { startAnchor = annC_AnchorCow(anchor.Copy()); }
    void SetEndAnchor(const annC_Anchor& anchor) { endAnchor = annC_AnchorCow(anchor.Copy()); }

    [[nodiscard]] annC_ArrowHeadStyleEnm GetStartHeadStyle() const noexcept {
        return startHeadStyle;
    }
    [[nodiscard]] annC_ArrowHeadStyleEnm GetEndHeadStyle() const noexcept { return endHeadStyle; }
    [[nodiscard]] annC_LineStyleEnm GetLineStyle() const noexcept { return lineStyle; }
    [[nodiscard]] annC_LineThicknessEnm GetLineThickness() const noexcept { return lineThickness; }
    /// The enumerated fields take a value, a name, or the name of another enumeration. One that is
    /// not permitted raises `omu_ValueErrorException`, and nothing is changed.
    template <class Value>
    void SetStartHeadStyle(const Value& value) {
        startHeadStyle = annC_PrimArrowHeadStyle(value).Enumerator();
    }
    template <class Value>
    void SetEndHeadStyle(const Value& value) {
        endHeadStyle = annC_PrimArrowHeadStyle(value).Enumerator();
    }
    template <class Value>
    void SetLineStyle(const Value& value) {
        lineStyle = annC_PrimLineStyle(value).Enumerator();
    }
    template <class Value>
    void SetLineThickness(const Value& value) {
        lineThickness = annC_PrimLineThickness(value).Enumerator();
    }

    /// The gaps in viewport units.
    [[nodiscard]] double GetStartGap() const noexcept { return startGap; }
    [[nodiscard]] double GetEndGap() const noexcept { return endGap; }
    void SetStartGap(double gap) noexcept { startGap = gap; }
    void SetEndGap(double gap) noexcept { endGap = gap; }
    [[nodiscard]] const cow_String& GetColor() const noexcept { return color; }
    void SetColor(const cow_String& name) noexcept { color = name; }

    [[nodiscard]] annC_Arrow* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes the fields, the points as lists of two doubles and the enumerated ones by value.
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 848:6.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 6);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] bool HasSameFields(const annC_Annotation& other) const override;

    annC_Point2D startPoint;
    annC_Point2D endPoint;
    annC_AnchorCow startAnchor;
    annC_AnchorCow endAnchor;
    annC_ArrowHeadStyleEnm startHeadStyle = annC_HEAD_NONE;
    annC_ArrowHeadStyleEnm endHeadStyle = annC_HEAD_FILLED_ARROW;
    double startGap = 0;
    double endGap = 0;
    cow_String color = "White";
    annC_LineStyleEnm lineStyle = annC_LINE_SOLID;
    annC_LineThicknessEnm lineThickness = annC_THICKNESS_VERY_THIN;
};
