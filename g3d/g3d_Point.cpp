#include "g3d/g3d_Point.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "g3d/detail/g3d_Double3.h"

g3d_Point::g3d_Point(cls_ReadVisitor& visitor) {
    visitor.Read("_x", px);
    visitor.Read("_y", py);
    visitor.Read("_z", pz);
    visitor.Read("_w", pw);
}

void g3d_Point::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write("_x", px);
    visitor.Write("_y", py);
    visitor.Write("_z", pz);
    visitor.Write("_w", pw);
}

void g3d_Point::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("g3d_Point", TypeId(), [](cls_ReadVisitor& visitor) -> void* {
        return new g3d_Point(visitor);
    });
    metadata.AddAttribute("_x", cls_KIND_FLOAT)
        .AddAttribute("_y", cls_KIND_FLOAT)
        .AddAttribute("_z", cls_KIND_FLOAT)
        .AddAttribute("_w", cls_KIND_FLOAT)
        .SetCowDtor([](void* object) { delete static_cast<g3d_Point*>(object); });
    registrar.AddClass(metadata);
}

g3d_Point g3d_Point::Place() const noexcept { return g3d_Double3(*this).AsPoint(); }

float g3d_Point::Distance(const g3d_Point& other) const noexcept {
    return static_cast<float>((g3d_Double3(*this) - g3d_Double3(other)).Length());
}

g3d_Vector operator-(const g3d_Point& a, const g3d_Point& b) noexcept {
    return (g3d_Double3(a) - g3d_Double3(b)).AsVector();
}

g3d_Point operator+(const g3d_Point& a, const g3d_Vector& v) noexcept {
    return (g3d_Double3(a) + g3d_Double3(v)).AsPoint();
}
