#include "gsl/gsl_Dot.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kPoint("_point");
constexpr cls_FieldHandle kMethod("_method");
constexpr cls_FieldHandle kInstanceId("_instanceId");
constexpr cls_FieldHandle kEntityId("_entityId");

}  // namespace

gsl_Dot::gsl_Dot() = default;

gsl_Dot::gsl_Dot(double x, double y, double z) : point(x, y, z) {}

gsl_Dot::gsl_Dot(const gsl_Point& position) : point(position) {}

gsl_Dot::gsl_Dot(int instance, int entity)
    : method(gsl_DOT_BY_ENTITY), instanceId(instance), entityId(entity) {}

gsl_Dot::~gsl_Dot() = default;

gsl_Dot* gsl_Dot::Copy() const { return new gsl_Dot(*this); }

bool gsl_Dot::Regenerate(const ftr_FeatureList*) { return true; }

int gsl_Dot::GetEntityId() const { return entityId; }

int gsl_Dot::GetUserNodeLabel() const { return 0; }

int gsl_Dot::NmrParents() const { return 0; }

int gsl_Dot::GetNthParentId(int) const { return 0; }

void gsl_Dot::GetGeometryData(double&, double&, double&) const {}

void gsl_Dot::SetGeometryData(double, double, double) {}

void* gsl_Dot::CreateHitRecord(const ftr_FeatureList*) const { return nullptr; }

int gsl_Dot::OwnerFeatID() const { return NmrParents() < 1 ? 0 : GetNthParentId(0); }

bool gsl_Dot::IsA(std::uint32_t typeId) const {
    return omi_Singleton<cls_MetadataRegistrar>::Instance().ClassRegistrar().Inherits(DynTypeId(),
                                                                                      typeId);
}

gsl_Dot::gsl_Dot(cls_ReadVisitor& visitor)
    : point(cls_ReadEmbedded<gsl_Point>(visitor, kPoint)),
      method(static_cast<gsl_DotMethod>(visitor.ReadEnumAsInt(kMethod))) {
    visitor.Read(kInstanceId, instanceId);
    visitor.Read(kEntityId, entityId);
}

std::uint32_t gsl_Dot::DynTypeId() const { return TypeId(); }

void* gsl_Dot::Ctor(cls_ReadVisitor& visitor) { return new gsl_Dot(visitor); }

void gsl_Dot::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteEmbedded(visitor, kPoint, point);
    visitor.WriteEnumAsInt(kMethod, method);
    visitor.Write(kInstanceId, instanceId);
    visitor.Write(kEntityId, entityId);
}

void gsl_Dot::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_Dot", TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_Dot*>(object); });
    metadata.AddAttribute(kPoint.Name(), cls_KIND_EMBEDDED_OBJ, gsl_Point::TypeId())
        .AddAttribute(kMethod.Name(), cls_KIND_ENUM)
        .AddAttribute(kInstanceId.Name(), cls_KIND_INT)
        .AddAttribute(kEntityId.Name(), cls_KIND_INT);
    registrar.AddClass(metadata);
}
