#include "host/model/hst_Part.h"

#include <bit>
#include <cmath>
#include <cstddef>
#include <utility>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "host/model/hst_Classes.h"
#include "host/model/hst_PartName.h"

namespace {

constexpr cls_FieldHandle kName("_name");
constexpr cls_FieldHandle kPlacement("_placement");
constexpr cls_FieldHandle kPositions("_positions");
constexpr cls_FieldHandle kTriangles("_triangles");
constexpr cls_FieldHandle kChecksum("_checksum");

template <class T>
void WriteList(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
               const std::vector<T>& values) {
    const auto record = visitor.MakeWriteObj(field, 0, cls_Uid());
    if (!record) return;
    if (const auto list = record->MakeWriteListPrim(T(), 3)) {
        list->Write(values.data(), static_cast<int>(values.size()));
    }
}

template <class T>
std::vector<T> ReadList(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    const auto record = visitor.MakeReadObj(field);
    const auto list = record ? record->MakeReadListPrim(T()) : nullptr;
    if (!list || list->Size() <= 0 || !list->Next()) return {};
    std::vector<T> values(static_cast<std::size_t>(list->Size()));
    // A block never takes the last element; after it the position stands on that one.
    const int allButLast = list->Size() - 1;
    if (allButLast > 0) list->Read(values.data(), allButLast);
    values.back() = list->Read();
    return values;
}

/// FNV-1a over 32-bit words: each step is a bijection, so one changed word always shows.
class WordHash {
  public:
    void Add(std::uint32_t word) noexcept { hash = (hash ^ word) * 16777619u; }
    void Add(double value) noexcept {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        Add(static_cast<std::uint32_t>(bits));
        Add(static_cast<std::uint32_t>(bits >> 32));
    }
    [[nodiscard]] unsigned Value() const noexcept { return hash; }

  private:
    std::uint32_t hash = 2166136261u;
};

bool IsFinite(const gsl_Matrix& matrix) {
    double entries[4][4];
    matrix.AsArray(entries);
    for (const auto& row : entries) {
        for (const double entry : row) {
            if (!std::isfinite(entry)) return false;
        }
    }
    return true;
}

}  // namespace

hst_Part::hst_Part(std::string partName, const gsl_Matrix& partPlacement,
                   std::vector<float> vertexPositions, std::vector<int> triangleVertices)
    : name(std::move(partName)),
      placement(partPlacement),
      positions(std::move(vertexPositions)),
      triangles(std::move(triangleVertices)) {}

hst_Part::hst_Part(cls_ReadVisitor& visitor) {
    cow_String text;
    visitor.Read(kName, text);
    name = text.View();
    placement = cls_ReadEmbedded<gsl_PersistentMatrix>(visitor, kPlacement);
    positions = ReadList<float>(visitor, kPositions);
    triangles = ReadList<int>(visitor, kTriangles);
    unsigned checksum = 0;
    visitor.Read(kChecksum, checksum);
    savedChecksum = checksum;
}

void* hst_Part::Ctor(cls_ReadVisitor& visitor) { return new hst_Part(visitor); }

std::uint32_t hst_Part::TypeId() noexcept { return hst_PART_CLASS; }

void hst_Part::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kName, cow_String(name));
    cls_WriteEmbedded(visitor, kPlacement, placement);
    WriteList(visitor, kPositions, positions);
    WriteList(visitor, kTriangles, triangles);
    visitor.Write(kChecksum, Checksum());
}

void hst_Part::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("hst_Part", TypeId(), &hst_Part::Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<hst_Part*>(object); })
        .AddAttribute(kName.Name(), cls_KIND_STRING)
        .AddAttribute(kPlacement.Name(), cls_KIND_EMBEDDED_OBJ, gsl_PersistentMatrix::TypeId())
        .AddAttribute(kPositions.Name(), cls_KIND_COLLECTION, 0, cls_LIST_FLOAT)
        .AddAttribute(kTriangles.Name(), cls_KIND_COLLECTION, 0, cls_LIST_INT)
        .AddAttribute(kChecksum.Name(), cls_KIND_UNSIGNED_INT);
    registrar.AddClass(metadata);
}

void hst_Part::SetPlacement(const gsl_Matrix& matrix) { placement = matrix; }

gsl_Point hst_Part::PlacedVertex(int index) const noexcept {
    const float* position = &positions[static_cast<std::size_t>(index) * 3];
    gsl_Point vertex(position[0], position[1], position[2]);
    vertex.Transform(placement);
    return vertex;
}

std::array<int, 3> hst_Part::Triangle(int index) const noexcept {
    const int* vertices = &triangles[static_cast<std::size_t>(index) * 3];
    return {vertices[0], vertices[1], vertices[2]};
}

gsl_BBox hst_Part::PlacedBox() const noexcept {
    gsl_BBox box;
    for (const int vertex : triangles) box.Add(PlacedVertex(vertex));
    return box;
}

std::string hst_Part::Fault() const {
    if (savedChecksum && *savedChecksum != Checksum()) return "its saved bytes are garbled";
    if (name.empty() || name != hst_CleanName(name)) return "its name is no line of text";
    if (!IsFinite(placement)) return "its placement is not finite";
    if (positions.size() % 3 != 0 || triangles.size() % 3 != 0) return "a list of it is cut short";
    if (triangles.empty()) return "it has no triangles";
    for (const float coordinate : positions) {
        if (std::isnan(coordinate)) return "it has a coordinate that is NaN";
        if (std::isinf(coordinate)) return "it has a coordinate that is infinite";
    }
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        if (triangles[i] >= 0 && triangles[i] < VertexCount()) continue;
        return "triangle " + std::to_string(i / 3) + " names vertex " +
               std::to_string(triangles[i]) + " of " + std::to_string(VertexCount());
    }
    return {};
}

unsigned hst_Part::Checksum() const noexcept {
    WordHash hash;
    for (const char byte : name) hash.Add(static_cast<std::uint32_t>(byte));
    double entries[4][4];
    placement.AsArray(entries);
    for (const auto& row : entries) {
        for (const double entry : row) hash.Add(entry);
    }
    for (const float coordinate : positions) hash.Add(std::bit_cast<std::uint32_t>(coordinate));
    for (const int vertex : triangles) hash.Add(static_cast<std::uint32_t>(vertex));
    return hash.Value();
}
