#include "gsl/gsl_PersistentVector.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "gsl/gsl_Point.h"

namespace {

constexpr cls_FieldHandle kX("_x");
constexpr cls_FieldHandle kY("_y");
constexpr cls_FieldHandle kZ("_z");
constexpr cls_FieldHandle kMagnitude("_magnitude");

}  // namespace

gsl_PersistentVector::gsl_PersistentVector(cls_ReadVisitor& visitor) {
    double xDelta = DeltaX();
    double yDelta = DeltaY();
    double zDelta = DeltaZ();
    double cachedLength = -1;
    visitor.Read(kX, xDelta);
    visitor.Read(kY, yDelta);
    visitor.Read(kZ, zDelta);
    visitor.Read(kMagnitude, cachedLength);
    FromCoordinates(xDelta, yDelta, zDelta, cachedLength);
}

std::uint32_t gsl_PersistentVector::DynTypeId() const noexcept { return TypeId(); }

void* gsl_PersistentVector::Ctor(cls_ReadVisitor& visitor) {
    return new gsl_PersistentVector(visitor);
}

void gsl_PersistentVector::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kX, DeltaX());
    visitor.Write(kY, DeltaY());
    visitor.Write(kZ, DeltaZ());
    visitor.Write(kMagnitude, CachedLength());
}

void gsl_PersistentVector::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_Vector", TypeId(), &Ctor, gsl_Point::TypeId());
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_PersistentVector*>(object); });
    metadata.SetParentInRecordsOnly()
        .AddAttribute(kX.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kY.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kZ.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kMagnitude.Name(), cls_KIND_DOUBLE);
    registrar.AddClass(metadata);
}
