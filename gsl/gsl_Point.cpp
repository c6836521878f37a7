#include "gsl/gsl_Point.h"

#include "foundation/coreutils/aio_ostream.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_StLine.h"

namespace {

constexpr cls_FieldHandle kX("_x");
constexpr cls_FieldHandle kY("_y");
constexpr cls_FieldHandle kZ("_z");

double LinTol() { return gsl_Util::Instance().LinTol(); }

/// The foot of `p` on the line of a segment of length `length` > 0; `t` is its fraction of the way.
gsl_Point FootOnSegment(const gsl_Point& p, const gsl_Segment& segment, double length, double& t) {
    const gsl_Vector unit = segment.GetDirection().ScaledCopy(1 / length);
    t = (p - segment.GetStart()).DotProduct(unit) / length;
    return segment.GetStart() + unit * (length * t);
}

}  // namespace

double gsl_Point::GetSignedDistance(const gsl_Plane& plane) const {
    return (*this - plane.GetOrigin()).DotProduct(plane.GetNormal()) / plane.GetNormal().Length();
}

double gsl_Point::GetDistance(const gsl_Plane& plane) const {
    return std::fabs(GetSignedDistance(plane));
}

double gsl_Point::GetDistance(const gsl_Point& p1, const gsl_Point& p2, const gsl_Point& p3) const {
    return GetDistance(gsl_Plane(p1, p2, p3));
}

double gsl_Point::GetDistance(const gsl_Plane& plane, const gsl_Vector& direction) const {
    const gsl_Vector& normal = plane.GetNormal();
    return direction.Length() * GetDistance(plane) * normal.Length() / direction.DotProduct(normal);
}

double gsl_Point::GetDistance(const gsl_StLine& line) const {
    const gsl_Vector& direction = line.GetDirection();
    return (*this - line.GetOrigin()).CrossProduct(direction).Length() / direction.Length();
}

double gsl_Point::GetDistance(const gsl_Segment& segment, gsl_Point& closest) const {
    const double length = segment.Length();
    if (length < LinTol()) {
        closest.SetPos(*this);
        return 0;
    }
    double t;
    gsl_Point nearest = FootOnSegment(*this, segment, length, t);
    const double slack = LinTol() / length;
    if (t <= -slack || t >= 1 + slack) {
        const bool endIsNearest = GetDistance(segment.GetEnd()) <= GetDistance(segment.GetStart());
        nearest = endIsNearest ? segment.GetEnd() : segment.GetStart();
    }
    const double distance = GetDistance(nearest);
    closest = nearest;
    return distance;
}

bool gsl_Point::IsOn(const gsl_Plane& plane) const { return GetDistance(plane) <= LinTol(); }

bool gsl_Point::IsOn(const gsl_StLine& line) const { return GetDistance(line) <= LinTol(); }

gsl_Point gsl_Point::ProjectOn(const gsl_Plane& plane) const {
    return *this - plane.GetUnitNormal() * GetSignedDistance(plane);
}

gsl_Point gsl_Point::ProjectOn(const gsl_StLine& line, double& t) const {
    const gsl_Vector unit = line.GetUnitDirection();
    t = (*this - line.GetOrigin()).DotProduct(unit);
    return line.GetOrigin() + unit * t;
}

bool gsl_Point::ProjectOn(const gsl_Point& p1, const gsl_Point& p2, const gsl_Point& p3,
                          gsl_Point& foot, double w[3]) const {
    const gsl_Point projected = ProjectOn(gsl_Plane(p1, p2, p3));
    const bool inside = projected.Bary(p1, p2, p3, w);
    foot = projected;
    return inside;
}

bool gsl_Point::ProjectOn(const gsl_Segment& segment, gsl_Point& foot, double& t) const {
    return ProjectOn(segment, LinTol(), foot, t);
}

bool gsl_Point::ProjectOn(const gsl_Segment& segment, double tol, gsl_Point& foot,
                          double& t) const {
    const double length = segment.Length();
    if (length < tol) {
        foot = *this;
        t = 0;
        return true;
    }
    foot = FootOnSegment(*this, segment, length, t);
    return -tol / length < t && t < 1 + tol / length;
}

bool gsl_Point::RayIntersect(const gsl_Point& a, const gsl_Point& b, const gsl_Vector& direction,
                             gsl_Point& hit, double w[2]) const {
    if (a.GetDistance(b) < LinTol()) return false;
    gsl_Point meeting;
    if (!gsl_StLine(a, b).Intersect(gsl_StLine(*this, direction), meeting)) return false;
    const bool onSegment = meeting.Bary(a, b, w);
    hit = meeting;
    return onSegment;
}

bool gsl_Point::RayIntersect(const gsl_Vector& direction, const gsl_Plane& plane,
                             gsl_Point& hit) const {
    hit = *this;
    if (direction.Length() < LinTol()) return false;
    if (IsOn(plane)) return true;
    const gsl_Vector& normal = plane.GetNormal();
    if (direction.IsOrthogonal(normal)) return false;
    const double t = (plane.GetOrigin() - *this).DotProduct(normal) / direction.DotProduct(normal);
    hit = *this + direction * t;
    return true;
}

bool gsl_Point::Bary(const gsl_Point& p0, const gsl_Point& p1, double w[2]) const {
    const double length = p0.GetDistance(p1);
    if (length <= LinTol()) {
        if (!(GetDistance(p0) <= LinTol())) return false;
        w[0] = 0;
        w[1] = 1;
        return true;
    }
    const double lengthSq = length * length;
    w[0] = (p0 - *this).DotProduct(p0 - p1) / lengthSq;
    w[1] = (p1 - *this).DotProduct(p1 - p0) / lengthSq;
    return !(length * w[0] < -LinTol() || length * w[1] < -LinTol());
}

bool gsl_Point::Bary(const gsl_Point& p0, const gsl_Point& p1, const gsl_Point& p2,
                     double w[3]) const {
    const gsl_Point* const p[] = {&p0, &p1, &p2};
    const double outside = -(LinTol() * LinTol());
    bool inside = true;
    for (int k = 0; k < 3; ++k) {
        const gsl_Point& next = *p[(k + 1) % 3];
        const gsl_Point& last = *p[(k + 2) % 3];
        const gsl_Vector normal = (next - *p[k]).CrossProduct(*p[k] - last);
        const double normalSq = normal.DotProduct(normal);
        w[k] = (next - *this).CrossProduct(*this - last).DotProduct(normal) / normalSq;
        if (w[k] * normalSq < outside) inside = false;
    }
    return inside;
}

gsl_Point gsl_Point::PointAtDistInDirection(double distance,
                                            const gsl_Vector& direction) const noexcept {
    return {x + distance * direction.UnitX(), y + distance * direction.UnitY(),
            z + distance * direction.UnitZ()};
}

void gsl_Point::Print(aio_ostream& stream, int indent) const {
    stream.Blanks(indent) << "x:\t" << x << "\ty:\t" << y << "\tz:\t" << z << '\n';
}

gsl_Point::gsl_Point(cls_ReadVisitor& visitor) {
    visitor.Read(kX, x);
    visitor.Read(kY, y);
    visitor.Read(kZ, z);
}

std::uint32_t gsl_Point::DynTypeId() const noexcept { return TypeId(); }

void* gsl_Point::Ctor(cls_ReadVisitor& visitor) { return new gsl_Point(visitor); }

void gsl_Point::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kX, x);
    visitor.Write(kY, y);
    visitor.Write(kZ, z);
}

void gsl_Point::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_Point", TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_Point*>(object); });
    metadata.AddAttribute(kX.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kY.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kZ.Name(), cls_KIND_DOUBLE);
    registrar.AddClass(metadata);
}
