#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "gsl/gsl_Matrix.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A matrix made archivable. Archives know it as "gsl_Matrix".
class KTSOVUGEOM_API gsl_PersistentMatrix : public gsl_Matrix {
  public:
    /// The identity, flag 1.
    gsl_PersistentMatrix() noexcept = default;
    /// A copy of `matrix`, its identity flag included.
    gsl_PersistentMatrix(const gsl_Matrix& matrix) noexcept : gsl_Matrix(matrix) {}
    /// Reads the record of a matrix; the identity when its array is absent or not 4 x 4. A flag
    /// other than 0 and 1 means unknown.
    explicit gsl_PersistentMatrix(cls_ReadVisitor& visitor);
    gsl_PersistentMatrix(const gsl_PersistentMatrix&) noexcept = default;
    gsl_PersistentMatrix& operator=(const gsl_PersistentMatrix&) noexcept = default;
    virtual ~gsl_PersistentMatrix() = default;

    /// 778:2.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return 50987010; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Reads a matrix from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_is_identity", the flag as it stands, and "DDBmatrix", a 4 x 4 array of doubles.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};
