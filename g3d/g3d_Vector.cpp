#include "g3d/g3d_Vector.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "g3d/detail/g3d_Double3.h"

g3d_Vector::g3d_Vector(cls_ReadVisitor& visitor) {
    visitor.Read("_x", vx);
    visitor.Read("_y", vy);
    visitor.Read("_z", vz);
}

void g3d_Vector::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write("_x", vx);
    visitor.Write("_y", vy);
    visitor.Write("_z", vz);
}

void g3d_Vector::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("g3d_Vector", TypeId(), [](cls_ReadVisitor& visitor) -> void* {
        return new g3d_Vector(visitor);
    });
    metadata.AddAttribute("_x", cls_KIND_FLOAT)
        .AddAttribute("_y", cls_KIND_FLOAT)
        .AddAttribute("_z", cls_KIND_FLOAT)
        .SetCowDtor([](void* object) { delete static_cast<g3d_Vector*>(object); });
    registrar.AddClass(metadata);
}

float g3d_Vector::Length() const noexcept {
    return static_cast<float>(g3d_Double3(*this).Length());
}

float g3d_Vector::Dot(const g3d_Vector& other) const noexcept {
    return static_cast<float>(g3d_Double3(*this).Dot(other));
}

g3d_Vector g3d_Vector::Cross(const g3d_Vector& other) const noexcept {
    return g3d_Double3(*this).Cross(other).AsVector();
}

bool g3d_Vector::Normalize() noexcept {
    g3d_Double3 direction(*this);
    if (!direction.Normalize()) return false;
    *this = direction.AsVector();
    return true;
}
