#include "gsl/gsl_Plane.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_PersistentVector.h"

namespace {

constexpr cls_FieldHandle kOrigin("_origin");
constexpr cls_FieldHandle kNormal("_normal");

}  // namespace

void gsl_Plane::Transform(const gsl_Matrix& matrix) noexcept {
    matrix.Transform(origin);
    matrix.Transform(normal);
}

gsl_Plane::gsl_Plane(cls_ReadVisitor& visitor)
    : origin(cls_ReadEmbedded<gsl_Point>(visitor, kOrigin)),
      normal(cls_ReadEmbedded<gsl_PersistentVector>(visitor, kNormal)) {}

std::uint32_t gsl_Plane::DynTypeId() const noexcept { return TypeId(); }

void* gsl_Plane::Ctor(cls_ReadVisitor& visitor) { return new gsl_Plane(visitor); }

void gsl_Plane::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteEmbedded(visitor, kOrigin, origin);
    cls_WriteEmbedded(visitor, kNormal, gsl_PersistentVector(normal));
}

void gsl_Plane::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_Plane", TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_Plane*>(object); });
    metadata.AddAttribute(kOrigin.Name(), cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId())
        .AddAttribute(kNormal.Name(), cls_KIND_EMBEDDED_OBJ, gsl_PersistentVector::TypeId());
    registrar.AddClass(metadata);
}
