#include "omu/omu_PrimBoolean.h"

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kValue("_value");

}  // namespace

omu_PrimBoolean::omu_PrimBoolean(cls_ReadVisitor& visitor) : omu_PrimBoolean() {
    visitor.Read(kValue, value);
}

cow_String omu_PrimBoolean::TypeString() const { return "Boolean"; }

cow_String omu_PrimBoolean::AsString(int) const { return value ? "True" : "False"; }

bool omu_PrimBoolean::operator==(const omu_Primitive& other) const {
    const auto* boolean = dynamic_cast<const omu_PrimBoolean*>(&other);
    return boolean && value == boolean->value;
}

void omu_PrimBoolean::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimBoolean* omu_PrimBoolean::Copy() const { return new omu_PrimBoolean(*this); }

std::uint32_t omu_PrimBoolean::TypeId() const { return kTypeId; }

void omu_PrimBoolean::DBWrite(cls_WriteVisitor& visitor) const { visitor.Write(kValue, value); }

void omu_PrimBoolean::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimBoolean>("omu_PrimBoolean")
                           .AddAttribute(kValue.Name(), cls_KIND_BOOL));
}
