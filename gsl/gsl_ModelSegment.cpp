#include "gsl/gsl_ModelSegment.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kSegment("_segment");
constexpr cls_FieldHandle kInstanceId("_instanceId");
constexpr cls_FieldHandle kEntityId("_entityId");

}  // namespace

gsl_ModelSegment::gsl_ModelSegment(cls_ReadVisitor& visitor)
    : segment(cls_ReadEmbedded<gsl_Segment>(visitor, kSegment)) {
    visitor.Read(kInstanceId, instanceId);
    visitor.Read(kEntityId, entityId);
}

std::uint32_t gsl_ModelSegment::DynTypeId() const noexcept { return TypeId(); }

void* gsl_ModelSegment::Ctor(cls_ReadVisitor& visitor) { return new gsl_ModelSegment(visitor); }

void gsl_ModelSegment::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteEmbedded(visitor, kSegment, segment);
    visitor.Write(kInstanceId, instanceId);
    visitor.Write(kEntityId, entityId);
}

void gsl_ModelSegment::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_ModelSegment", TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_ModelSegment*>(object); });
    metadata.AddAttribute(kSegment.Name(), cls_KIND_EMBEDDED_OBJ, gsl_Segment::TypeId())
        .AddAttribute(kInstanceId.Name(), cls_KIND_INT)
        .AddAttribute(kEntityId.Name(), cls_KIND_INT);
    registrar.AddClass(metadata);
}
