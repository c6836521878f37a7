#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Segment.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A segment bound to an entity of a part instance of the model, as `gsl_Dot` is a bound point.
class KTSOVUGEOM_API gsl_ModelSegment {
  public:
    /// A degenerate segment bound to nothing: instance 0, entity -1.
    gsl_ModelSegment() noexcept = default;
    gsl_ModelSegment(const gsl_Segment& geometry, int instance, int entity) noexcept
        : segment(geometry), instanceId(instance), entityId(entity) {}
    /// Reads the record of a model segment; absent fields are those of the default.
    explicit gsl_ModelSegment(cls_ReadVisitor& visitor);
    gsl_ModelSegment(const gsl_ModelSegment&) noexcept = default;
    gsl_ModelSegment& operator=(const gsl_ModelSegment&) noexcept = default;
    virtual ~gsl_ModelSegment() = default;

    [[nodiscard]] const gsl_Segment& GetSegment() const noexcept { return segment; }
    [[nodiscard]] int GetInstanceId() const noexcept { return instanceId; }
    [[nodiscard]] int GetEntityId() const noexcept { return entityId; }

    /// 778:11.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987019; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a model segment from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_segment" (`gsl_Segment`), "_instanceId" and "_entityId".
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    gsl_Segment segment;
    int instanceId = 0;
    int entityId = -1;
};
