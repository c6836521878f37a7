#include "omu/omu_PrimExpr.h"

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kText("_text");

}  // namespace

omu_PrimExpr::omu_PrimExpr(cls_ReadVisitor& visitor) : omu_PrimExpr() { visitor.Read(kText, text); }

cow_String omu_PrimExpr::TypeString() const { return "expression"; }

cow_String omu_PrimExpr::AsString(int) const { return text; }

bool omu_PrimExpr::operator==(const omu_Primitive& other) const {
    const auto* expression = dynamic_cast<const omu_PrimExpr*>(&other);
    return expression && text == expression->text;
}

void omu_PrimExpr::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimExpr* omu_PrimExpr::Copy() const { return new omu_PrimExpr(*this); }

std::uint32_t omu_PrimExpr::TypeId() const { return kTypeId; }

void omu_PrimExpr::DBWrite(cls_WriteVisitor& visitor) const { visitor.Write(kText, text); }

void omu_PrimExpr::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        omu_MetadataOf<omu_PrimExpr>("omu_PrimExpr").AddAttribute(kText.Name(), cls_KIND_STRING));
}
