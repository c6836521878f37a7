#include "ann/annC_Text.h"

#include "ann/annC_NamedAnchor.h"
#include "ann/detail/annC_Archive.h"
#include "ann/detail/annC_FieldNames.h"

using namespace annC_TextField;

annC_Text::annC_Text() : anchor(new annC_NamedAnchor), referencePoint(anchor) {}

annC_Text::annC_Text(cls_ReadVisitor& visitor) : annC_Text() {
    visitor.Read(kText, text);
    offset = annC_ReadPoint(visitor, kOffset);
    annC_ReadAnchor(visitor, kAnchor, anchor);
    annC_ReadAnchor(visitor, kReferencePoint, referencePoint);
    visitor.Read(kRotationAngle, rotationAngle);
    visitor.Read(kFont, font);
    visitor.Read(kColor, color);
    annC_ReadEnum<annC_PrimBackgroundStyle>(visitor, kBackgroundStyle, backgroundStyle);
    visitor.Read(kBackgroundColor, backgroundColor);
    visitor.Read(kBox, box);
    annC_ReadEnum<annC_PrimJustification>(visitor, kJustification, justification);
}

annC_Text::~annC_Text() = default;

annC_Text* annC_Text::Copy() const { return new annC_Text(*this); }

std::uint32_t annC_Text::TypeId() const { return kTypeId; }

bool annC_Text::HasSameFields(const annC_Annotation& other) const {
    const auto& same = static_cast<const annC_Text&>(other);
    return text == same.text && offset == same.offset && *anchor == *same.anchor &&
           *referencePoint == *same.referencePoint && rotationAngle == same.rotationAngle &&
           font == same.font && color == same.color && backgroundStyle == same.backgroundStyle &&
           backgroundColor == same.backgroundColor && box == same.box &&
           justification == same.justification;
}

void annC_Text::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kText, text);
    annC_WritePoint(visitor, kOffset, offset);
    cls_WriteCow(visitor, kAnchor, anchor);
    cls_WriteCow(visitor, kReferencePoint, referencePoint);
    visitor.Write(kRotationAngle, rotationAngle);
    visitor.Write(kFont, font);
    visitor.Write(kColor, color);
    visitor.WriteEnumAsInt(kBackgroundStyle, backgroundStyle);
    visitor.Write(kBackgroundColor, backgroundColor);
    visitor.Write(kBox, box);
    visitor.WriteEnumAsInt(kJustification, justification);
}

void annC_Text::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        annC_MetadataOf<annC_Text, annC_Annotation>("annC_Text")
            .AddAttribute(kText.Name(), cls_KIND_STRING)
            .AddAttribute(kOffset.Name(), cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE)
            .AddAttribute(kAnchor.Name(), cls_KIND_OBJ_POINTER, annC_Anchor::kTypeId)
            .AddAttribute(kReferencePoint.Name(), cls_KIND_OBJ_POINTER, annC_Anchor::kTypeId)
            .AddAttribute(kRotationAngle.Name(), cls_KIND_DOUBLE)
            .AddAttribute(kFont.Name(), cls_KIND_STRING)
            .AddAttribute(kColor.Name(), cls_KIND_STRING)
            .AddAttribute(kBackgroundStyle.Name(), cls_KIND_ENUM)
            .AddAttribute(kBackgroundColor.Name(), cls_KIND_STRING)
            .AddAttribute(kBox.Name(), cls_KIND_INT)
            .AddAttribute(kJustification.Name(), cls_KIND_ENUM));
}
