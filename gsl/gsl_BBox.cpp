#include "gsl/gsl_BBox.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "g3d/g3d_Sphere.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Real.h"

namespace {

constexpr double containmentTolerance = 1e-10;

bool SpanContains(double low, double high, double value) noexcept {
    return gsl_RealGreaterEqual(value, low, containmentTolerance) &&
           gsl_RealLessEqual(value, high, containmentTolerance);
}

g3d_Point ToSinglePrecision(double x, double y, double z) noexcept {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z), 1.0f};
}

/// The midpoint of the corners without an identity.
gsl_Point Midpoint(const gsl_Point& low, const gsl_Point& high) noexcept {
    return {(low.GetX() + high.GetX()) * 0.5, (low.GetY() + high.GetY()) * 0.5,
            (low.GetZ() + high.GetZ()) * 0.5};
}

}  // namespace

gsl_BBox::gsl_BBox(cls_ReadVisitor& visitor)
    : low(cls_ReadEmbedded<gsl_Point>(visitor, "_low")),
      high(cls_ReadEmbedded<gsl_Point>(visitor, "_high")) {}

bool gsl_BBox::ContainsPoint(const gsl_Point& p) const noexcept {
    return SpanContains(low.GetX(), high.GetX(), p.GetX()) &&
           SpanContains(low.GetY(), high.GetY(), p.GetY()) &&
           SpanContains(low.GetZ(), high.GetZ(), p.GetZ());
}

bool gsl_BBox::ContainsBox(const gsl_BBox& b) const noexcept {
    return ContainsPoint(b.low) && ContainsPoint(b.high);
}

bool gsl_BBox::Intersect(const gsl_BBox& b) const noexcept {
    gsl_BBox both = *this;
    both.Add(b);
    return !(both.XLen() > b.XLen() + XLen() || both.YLen() > b.YLen() + YLen() ||
             both.ZLen() > b.ZLen() + ZLen());
}

bool gsl_BBox::SphereContainsBox(const g3d_Sphere& sphere) const noexcept {
    for (const double x : {low.GetX(), high.GetX()}) {
        for (const double y : {low.GetY(), high.GetY()}) {
            for (const double z : {low.GetZ(), high.GetZ()}) {
                if (!sphere.Contains(ToSinglePrecision(x, y, z))) return false;
            }
        }
    }
    return true;
}

g3d_Sphere gsl_BBox::GetExtent() const noexcept {
    const gsl_Point centre = Midpoint(low, high);
    return {ToSinglePrecision(centre.GetX(), centre.GetY(), centre.GetZ()),
            static_cast<float>(Size() * 0.5)};
}

void gsl_BBox::Transform(const gsl_Matrix& matrix) noexcept {
    if (IsEmpty()) return;
    const gsl_Point centre = Midpoint(low, high);
    const double halfX = XLen() * 0.5;
    const double halfY = YLen() * 0.5;
    const double halfZ = ZLen() * 0.5;
    gsl_BBox transformed;
    for (const double sx : {-1.0, 1.0}) {
        for (const double sy : {-1.0, 1.0}) {
            for (const double sz : {-1.0, 1.0}) {
                gsl_Point corner = centre + gsl_Vector(sx * halfX, sy * halfY, sz * halfZ);
                matrix.Transform(corner);
                transformed.Add(corner);
            }
        }
    }
    *this = transformed;
}

void gsl_BBox::Print(aio_ostream& stream, int indent) const {
    low.Print(stream, indent);
    high.Print(stream, indent);
}

std::uint32_t gsl_BBox::DynTypeId() const noexcept { return TypeId(); }

void* gsl_BBox::Ctor(cls_ReadVisitor& visitor) { return new gsl_BBox(visitor); }

void gsl_BBox::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteEmbedded(visitor, "_low", low);
    cls_WriteEmbedded(visitor, "_high", high);
}

void gsl_BBox::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(cls_ClassMetadata("gsl_BBox", TypeId(), &Ctor)
                           .AddAttribute("_low", cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId())
                           .AddAttribute("_high", cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId())
                           .SetCowDtor([](void* box) { delete static_cast<gsl_BBox*>(box); }));
}
