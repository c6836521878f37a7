#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/shared/cls_Uid.h"
#include "gsl/gsl_Point.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;
class ftr_FeatureList;

/// How a dot came to be. Derived dots of the application use further values.
enum gsl_DotMethod : int {
    gsl_DOT_BY_POSITION = 0,
    gsl_DOT_BY_ENTITY = 10,
};

/// A point bound to a feature of the model: an identity of its own, a position (with the point's
/// own identity), the method of its construction, and the part instance and entity that it lies on.
///
/// The feature operations are hooks for derived dots; here they answer nothing. The virtual
/// operations stand in the order of their slots, which derived dots elsewhere rely on.
class KTSOVUGEOM_API gsl_Dot {
  public:
    /// A dot at the origin with a new identity: by position, instance 0, entity -1.
    gsl_Dot();
    gsl_Dot(double x, double y, double z);
    /// A dot at `position`, whose identity its point takes over.
    explicit gsl_Dot(const gsl_Point& position);
    /// A dot at the origin on an entity of a part instance.
    gsl_Dot(int instance, int entity);
    /// Reads the record of a dot, with a new identity; absent fields are those of the default.
    explicit gsl_Dot(cls_ReadVisitor& visitor);
    /// Copies carry both identities.
    gsl_Dot(const gsl_Dot&) = default;
    gsl_Dot& operator=(const gsl_Dot&) = default;

    virtual ~gsl_Dot();
    /// A copy with the same identities; new, owned by the caller.
    [[nodiscard]] virtual gsl_Dot* Copy() const;
    /// Recomputes the dot from its features; true when it could. Nothing to do here.
    virtual bool Regenerate(const ftr_FeatureList* features);
    [[nodiscard]] virtual int GetEntityId() const;
    /// The node label that the user sees, 0 for none.
    [[nodiscard]] virtual int GetUserNodeLabel() const;
    /// Number of features that the dot depends on.
    [[nodiscard]] virtual int NmrParents() const;
    /// The id of the n-th feature that the dot depends on.
    [[nodiscard]] virtual int GetNthParentId(int n) const;
    /// The position on the entity's geometry; leaves the outputs untouched here.
    virtual void GetGeometryData(double& u, double& v, double& w) const;
    virtual void SetGeometryData(double u, double v, double w);
    /// 778:5.
    [[nodiscard]] virtual std::uint32_t DynTypeId() const;
    /// The record that picking keeps of the dot; null here.
    [[nodiscard]] virtual void* CreateHitRecord(const ftr_FeatureList* features) const;
    /// Writes "_point" (`gsl_Point`), "_method", "_instanceId" and "_entityId".
    virtual void DBWrite(cls_WriteVisitor& visitor) const;

    [[nodiscard]] const gsl_Point& GetPoint() const noexcept { return point; }
    [[nodiscard]] gsl_DotMethod GetMethod() const noexcept { return method; }
    [[nodiscard]] int GetInstanceId() const noexcept { return instanceId; }
    [[nodiscard]] const cls_Uid& GetUid() const noexcept { return uid; }
    /// The id of the first parent feature, 0 without parents.
    [[nodiscard]] int OwnerFeatID() const;
    /// True when this dot's class is `typeId` or inherits from it in the registered metadata.
    [[nodiscard]] bool IsA(std::uint32_t typeId) const;

    /// Moves the point, keeping its identity.
    void SetValues(double x, double y, double z) noexcept { point.SetPos(gsl_Point(x, y, z)); }

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987013; }
    /// Reads a dot from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cls_Uid uid = cls_Uid::AllocateUid();
    gsl_Point point;
    gsl_DotMethod method = gsl_DOT_BY_POSITION;
    int instanceId = 0;
    int entityId = -1;
};
