#include "omu/omu_PrimComplex.h"

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kReal("_real");
constexpr cls_FieldHandle kImaginary("_imaginary");

omi_complex ReadNumber(cls_ReadVisitor& visitor) {
    double real = 0;
    double imaginary = 0;
    visitor.Read(kReal, real);
    visitor.Read(kImaginary, imaginary);
    return {real, imaginary};
}

}  // namespace

omu_PrimComplex::omu_PrimComplex(cls_ReadVisitor& visitor) : omu_PrimComplex(ReadNumber(visitor)) {}

cow_String omu_PrimComplex::TypeString() const { return "complex"; }

cow_String omu_PrimComplex::AsString(int) const {
    const double shownImaginary = value.Imaginary() == 0 ? 0 : value.Imaginary();
    const cow_String real = atr_String(value.Real()).Text();
    const cow_String imaginary = atr_String(shownImaginary).Text();
    const char* const sign = imaginary.View().starts_with('-') ? "" : "+";
    return real + sign + imaginary + "j";
}

bool omu_PrimComplex::operator==(const omu_Primitive& other) const {
    const auto* complex = dynamic_cast<const omu_PrimComplex*>(&other);
    return complex && value == complex->value;
}

void omu_PrimComplex::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimComplex* omu_PrimComplex::Copy() const { return new omu_PrimComplex(*this); }

std::uint32_t omu_PrimComplex::TypeId() const { return kTypeId; }

void omu_PrimComplex::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kReal, value.Real());
    visitor.Write(kImaginary, value.Imaginary());
}

void omu_PrimComplex::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimComplex>("omu_PrimComplex")
                           .AddAttribute(kReal.Name(), cls_KIND_DOUBLE)
                           .AddAttribute(kImaginary.Name(), cls_KIND_DOUBLE));
}
