#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Vector.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A vector made archivable. Archives know it as "gsl_Vector", a kind of `gsl_Point`, although the
/// record holds its own four fields alone.
class KTSOVUGEOM_API gsl_PersistentVector : public gsl_Vector {
  public:
    /// The unit Z axis.
    gsl_PersistentVector() noexcept = default;
    /// A copy of `v`, its length cache included.
    gsl_PersistentVector(const gsl_Vector& v) noexcept : gsl_Vector(v) {}
    /// Reads the record of a vector; absent components are those of the default.
    explicit gsl_PersistentVector(cls_ReadVisitor& visitor);
    gsl_PersistentVector(const gsl_PersistentVector&) noexcept = default;
    gsl_PersistentVector& operator=(const gsl_PersistentVector&) noexcept = default;
    virtual ~gsl_PersistentVector() = default;

    /// 778:3.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987011; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a vector from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_x", "_y", "_z" and "_magnitude", the length cache as it stands (negative: unset).
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};
