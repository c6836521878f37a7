#include "gsl/gsl_Vector.h"

#include <numbers>

#include "foundation/coreutils/aio_ostream.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Real.h"

namespace {

double LinTol() { return gsl_Util::Instance().LinTol(); }

}  // namespace

gsl_Vector::gsl_Vector(const gsl_Point& p1, const gsl_Point& p2, const gsl_Point& p3)
    : gsl_Vector((p2 - p1).CrossProduct(p3 - p2)) {
    const double normalLength = Length();
    if ((p2 - p1).Length() * gsl_Util::Instance().AngTol() * (p3 - p2).Length() >= normalLength) {
        FromCoordinates(0, 0, 0, 0);
    } else {
        Scale(1 / normalLength);
    }
}

bool gsl_Vector::SameDirection(const gsl_Vector& v, double tol) const noexcept {
    return gsl_RealEqual(UnitX(), v.UnitX(), tol) && gsl_RealEqual(UnitY(), v.UnitY(), tol) &&
           gsl_RealEqual(UnitZ(), v.UnitZ(), tol);
}

bool gsl_Vector::IsParallel(const gsl_Vector& v, double tol) const noexcept {
    gsl_Vector opposite = v;
    opposite.Negate();
    return SameDirection(v, tol) || SameDirection(opposite, tol);
}

double gsl_Vector::AngleWith(const gsl_Vector& v, bool normalised) const {
    double cosine = DotProduct(v);
    if (!normalised) {
        cosine = Length() > LinTol() ? cosine / Length() : 0;
        if (v.Length() <= LinTol()) return std::numbers::pi / 2;
        cosine /= v.Length();
    }
    if (cosine >= 1) return 0;
    if (cosine <= -1) return std::numbers::pi;
    return std::acos(cosine);
}

double gsl_Vector::AngleWith(const gsl_Vector& v, bool normalised,
                             const gsl_Vector& reference) const {
    const double angle = AngleWith(v, normalised);
    return CrossProduct(v).DotProduct(reference) < 0 ? 2 * std::numbers::pi - angle : angle;
}

bool gsl_Vector::AngleBetween(gsl_Vector a, gsl_Vector b, double& angleRad) const {
    if (a.Length() < LinTol() || b.Length() < LinTol()) return false;
    gsl_Vector axis = *this;
    axis.Normalize();
    a.Normalize();
    b.Normalize();
    const double alongA = a.DotProduct(axis);
    const double alongB = b.DotProduct(axis);
    if (std::fabs(alongA - alongB) > LinTol()) return false;
    gsl_Vector p = a - axis * alongA;
    gsl_Vector q = b - axis * alongB;
    p.Normalize();
    q.Normalize();
    gsl_Vector c = q.CrossProduct(axis);
    c.Normalize();
    angleRad = std::atan2(c.DotProduct(p), p.DotProduct(q));
    return true;
}

gsl_Vector gsl_Vector::AnyOrthogonalUnit() const {
    gsl_Vector c(y - z, z - x, x - y);
    if (c.Length() < LinTol()) c = gsl_Vector(1, -1, 0);
    c.Normalize();
    return c;
}

gsl_Vector gsl_Vector::BestAlignedOrthogonalUnit() const {
    const gsl_Plane plane(gsl_Point(), *this);
    gsl_Vector kept = gsl_Vector(1, 0, 0).ProjectOn(plane);
    for (const gsl_Vector& axis : {gsl_Vector(0, 1, 0), gsl_Vector(0, 0, 1)}) {
        const gsl_Vector projection = axis.ProjectOn(plane);
        if (projection.Length() > kept.Length() + LinTol()) kept = projection;
    }
    return CrossProduct(kept).CrossProduct(*this);
}

gsl_Vector gsl_Vector::ProjectOn(const gsl_Plane& plane) const {
    const gsl_Vector normal = plane.GetUnitNormal();
    return *this - normal * DotProduct(normal);
}

void gsl_Vector::Print(aio_ostream& stream, int indent) const {
    stream.Blanks(indent) << "magnitude:\t" << Length() << '\n';
    gsl_Point(x, y, z).Print(stream, indent);
}
