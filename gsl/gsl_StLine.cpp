#include "gsl/gsl_StLine.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_PersistentVector.h"

namespace {

constexpr cls_FieldHandle kOrigin("_origin");
constexpr cls_FieldHandle kDirection("_direction");

}  // namespace

// With unit directions d1, d2 and n = d1 x d2, |n| is the sine of the angle, the gap between the
// lines is |(o2 - o1) . n| / |n|, and the foot on this line lies at ((o2 - o1) x d2) . n / n . n.
bool gsl_StLine::Intersect(const gsl_StLine& other, gsl_Point& hit) const {
    const gsl_Vector unit = GetUnitDirection();
    const gsl_Vector otherUnit = other.GetUnitDirection();
    const gsl_Vector normal = unit.CrossProduct(otherUnit);
    const double sine = normal.Length();
    if (!(sine > gsl_Util::Instance().AngTol())) return false;
    const gsl_Vector between = other.origin - origin;
    const double gap = std::fabs(between.DotProduct(normal)) / sine;
    if (!(gap <= gsl_Util::Instance().LinTol())) return false;
    hit = origin + unit * (between.TripleProduct(otherUnit, normal) / (sine * sine));
    return true;
}

void gsl_StLine::Transform(const gsl_Matrix& matrix) noexcept {
    matrix.Transform(origin);
    matrix.Transform(direction);
}

gsl_StLine::gsl_StLine(cls_ReadVisitor& visitor)
    : origin(cls_ReadEmbedded<gsl_Point>(visitor, kOrigin)),
      direction(cls_ReadEmbedded<gsl_PersistentVector>(visitor, kDirection)) {}

std::uint32_t gsl_StLine::DynTypeId() const noexcept { return TypeId(); }

void* gsl_StLine::Ctor(cls_ReadVisitor& visitor) { return new gsl_StLine(visitor); }

void gsl_StLine::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteEmbedded(visitor, kOrigin, origin);
    cls_WriteEmbedded(visitor, kDirection, gsl_PersistentVector(direction));
}

void gsl_StLine::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_StLine", TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_StLine*>(object); });
    metadata.AddAttribute(kOrigin.Name(), cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId())
        .AddAttribute(kDirection.Name(), cls_KIND_EMBEDDED_OBJ, gsl_PersistentVector::TypeId());
    registrar.AddClass(metadata);
}
