#include "ann/annC_Arrow.h"

#include "ann/annC_NamedAnchor.h"
#include "ann/detail/annC_Archive.h"
#include "ann/detail/annC_FieldNames.h"

using namespace annC_ArrowField;

annC_Arrow::annC_Arrow() : startAnchor(new annC_NamedAnchor), endAnchor(startAnchor) {}

annC_Arrow::annC_Arrow(cls_ReadVisitor& visitor) : annC_Arrow() {
    startPoint = annC_ReadPoint(visitor, kStartPoint);
    endPoint = annC_ReadPoint(visitor, kEndPoint);
    annC_ReadAnchor(visitor, kStartAnchor, startAnchor);
    annC_ReadAnchor(visitor, kEndAnchor, endAnchor);
    annC_ReadEnum<annC_PrimArrowHeadStyle>(visitor, kStartHeadStyle, startHeadStyle);
    annC_ReadEnum<annC_PrimArrowHeadStyle>(visitor, kEndHeadStyle, endHeadStyle);
    visitor.Read(kStartGap, startGap);
    visitor.Read(kEndGap, endGap);
    visitor.Read(kColor, color);
    annC_ReadEnum<annC_PrimLineStyle>(visitor, kLineStyle, lineStyle);
    annC_ReadEnum<annC_PrimLineThickness>(visitor, kLineThickness, lineThickness);
}

annC_Arrow::~annC_Arrow() = default;

annC_Arrow* annC_Arrow::Copy() const { return new annC_Arrow(*this); }

std::uint32_t annC_Arrow::TypeId() const { return kTypeId; }

void annC_Arrow::Translate(double dx, double dy) noexcept {
    TranslateStartPoint(dx, dy);
    TranslateEndPoint(dx, dy);
}

void annC_Arrow::TranslateStartPoint(double dx, double dy) noexcept {
    startPoint = {startPoint.x + dx, startPoint.y + dy};
}

void annC_Arrow::TranslateEndPoint(double dx, double dy) noexcept {
    endPoint = {endPoint.x + dx, endPoint.y + dy};
}

bool annC_Arrow::HasSameFields(const annC_Annotation& other) const {
    const auto& arrow = static_cast<const annC_Arrow&>(other);
    return startPoint == arrow.startPoint && endPoint == arrow.endPoint &&
           *startAnchor == *arrow.startAnchor && *endAnchor == *arrow.endAnchor &&
           startHeadStyle == arrow.startHeadStyle && endHeadStyle == arrow.endHeadStyle &&
           startGap == arrow.startGap && endGap == arrow.endGap && color == arrow.color &&
           lineStyle == arrow.lineStyle && lineThickness == arrow.lineThickness;
}

void annC_Arrow::DBWrite(cls_WriteVisitor& visitor) const {
    annC_WritePoint(visitor, kStartPoint, startPoint);
    annC_WritePoint(visitor, kEndPoint, endPoint);
    cls_WriteCow(visitor, kStartAnchor, startAnchor);
    cls_WriteCow(visitor, kEndAnchor, endAnchor);
    visitor.WriteEnumAsInt(kStartHeadStyle, startHeadStyle);
    visitor.WriteEnumAsInt(kEndHeadStyle, endHeadStyle);
    visitor.Write(kStartGap, startGap);
    visitor.Write(kEndGap, endGap);
    visitor.Write(kColor, color);
    visitor.WriteEnumAsInt(kLineStyle, lineStyle);
    visitor.WriteEnumAsInt(kLineThickness, lineThickness);
}

void annC_Arrow::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        annC_MetadataOf<annC_Arrow, annC_Annotation>("annC_Arrow")
            .AddAttribute(kStartPoint.Name(), cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE)
            .AddAttribute(kEndPoint.Name(), cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE)
            .AddAttribute(kStartAnchor.Name(), cls_KIND_OBJ_POINTER, annC_Anchor::kTypeId)
            .AddAttribute(kEndAnchor.Name(), cls_KIND_OBJ_POINTER, annC_Anchor::kTypeId)
            .AddAttribute(kStartHeadStyle.Name(), cls_KIND_ENUM)
            .AddAttribute(kEndHeadStyle.Name(), cls_KIND_ENUM)
            .AddAttribute(kStartGap.Name(), cls_KIND_DOUBLE)
            .AddAttribute(kEndGap.Name(), cls_KIND_DOUBLE)
            .AddAttribute(kColor.Name(), cls_KIND_STRING)
            .AddAttribute(kLineStyle.Name(), cls_KIND_ENUM)
            .AddAttribute(kLineThickness.Name(), cls_KIND_ENUM));
}
