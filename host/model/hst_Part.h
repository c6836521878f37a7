#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "gsl/gsl_BBox.h"
#include "gsl/gsl_PersistentMatrix.h"
#include "gsl/gsl_Point.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// One part of an assembly: a name, a placement and the triangles of its surface.
///
/// Positions stand in the part's own space, in the unit of the file they came from, and in single
/// precision, as readers of mesh files hand them over; the placement takes them to model space in
/// double precision. Three vertex numbers make a triangle, degenerate ones included. A copy copies
/// the triangles.
class hst_Part {
  public:
    /// `positions` holds x, y, z of every vertex, `triangles` three vertex numbers of every
    /// triangle. Nothing is checked here: see `Fault`.
    hst_Part(std::string name, const gsl_Matrix& placement, std::vector<float> positions,
             std::vector<int> triangles);
    /// Reads the record of a part; what it lacks stays empty and shows in `Fault`.
    explicit hst_Part(cls_ReadVisitor& visitor);

    [[nodiscard]] const std::string& Name() const noexcept { return name; }
    [[nodiscard]] const gsl_Matrix& Placement() const noexcept { return placement; }
    [[nodiscard]] int VertexCount() const noexcept {
        return static_cast<int>(positions.size() / 3);
    }
    [[nodiscard]] int TriangleCount() const noexcept {
        return static_cast<int>(triangles.size() / 3);
    }
    /// Vertex `index` in model space.
    [[nodiscard]] gsl_Point PlacedVertex(int index) const noexcept;
    /// The vertex numbers of triangle `index`.
    [[nodiscard]] std::array<int, 3> Triangle(int index) const noexcept;
    /// The box in model space of all vertices of the triangles.
    [[nodiscard]] gsl_BBox PlacedBox() const noexcept;

    /// What makes the part unusable, in words that follow its name; "" for a sound part. A part
    /// that was read from its record also has to bear the checksum of what it was saved with.
    [[nodiscard]] std::string Fault() const;

    void SetName(std::string newName) { name = std::move(newName); }
    /// The triangles stay as they are in the part's own space.
    void SetPlacement(const gsl_Matrix& matrix);

    [[nodiscard]] static std::uint32_t TypeId() noexcept;
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept { return TypeId(); }
    /// Reads a part from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Writes "_name", "_placement", "_positions", "_triangles", "_checksum".
    void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] unsigned Checksum() const noexcept;

    std::string name;
    gsl_PersistentMatrix placement;
    std::vector<float> positions;
    std::vector<int> triangles;
    std::optional<unsigned> savedChecksum;  ///< of the record that the part was read from
};
