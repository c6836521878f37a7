#include "gsl/gsl_Segment.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "gsl/gsl_Matrix.h"

namespace {

constexpr cls_FieldHandle kStart("_start");
constexpr cls_FieldHandle kEnd("_end");

}  // namespace

void gsl_Segment::Transform(const gsl_Matrix& matrix) noexcept {
    matrix.Transform(start);
    matrix.Transform(end);
}

gsl_Segment::gsl_Segment(cls_ReadVisitor& visitor)
    : start(cls_ReadEmbedded<gsl_Point>(visitor, kStart)),
      end(cls_ReadEmbedded<gsl_Point>(visitor, kEnd)) {}

std::uint32_t gsl_Segment::DynTypeId() const noexcept { return TypeId(); }

void* gsl_Segment::Ctor(cls_ReadVisitor& visitor) { return new gsl_Segment(visitor); }

void gsl_Segment::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteEmbedded(visitor, kStart, start);
    cls_WriteEmbedded(visitor, kEnd, end);
}

void gsl_Segment::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_Segment", TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_Segment*>(object); });
    metadata.AddAttribute(kStart.Name(), cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId())
        .AddAttribute(kEnd.Name(), cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId());
    registrar.AddClass(metadata);
}
