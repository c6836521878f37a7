#include "host/import/imp_SceneReader.h"

#include <assimp/BaseImporter.h>
#include <assimp/config.h>
#include <assimp/importerdesc.h>
#include <assimp/mesh.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <chrono>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

#include "host/import/imp_Format.h"
#include "host/import/imp_PartStream.h"
#include "host/import/imp_ThreeMfNames.h"
#include "host/import/imp_VertexWelder.h"

namespace {

[[noreturn]] void Refuse(const std::string& cause) { throw std::runtime_error(cause); }

/// Sends the progress that the library reports on, a few times a second.
class Progress : public Assimp::ProgressHandler {
  public:
    explicit Progress(imp_PartWriter& partWriter) : writer(partWriter) {}

    bool Update(float fraction) override {
        const auto now = std::chrono::steady_clock::now();
        if (fraction >= 0 && now >= nextReport) {
            writer.Progress(static_cast<double>(fraction));
            nextReport = now + std::chrono::milliseconds(100);
        }
        return true;
    }

  private:
    imp_PartWriter& writer;
    std::chrono::steady_clock::time_point nextReport;
};

/// An affine transform in double precision, so that deep hierarchies do not gather single-precision
/// rounding.
struct Affine {
    double m[3][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}};
};

Affine operator*(const Affine& a, const Affine& b) {
    Affine product;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = column == 3 ? a.m[row][3] : 0.0;
            for (int k = 0; k < 3; ++k) sum += a.m[row][k] * b.m[k][column];
            product.m[row][column] = sum;
        }
    }
    return product;
}

Affine ToAffine(const aiMatrix4x4& matrix) {
    Affine affine;
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 4; ++column) {
            const double entry = static_cast<double>(matrix[row][column]);
            if (!std::isfinite(entry)) Refuse("the placement of a node is not finite");
            affine.m[row][column] = entry;
        }
    }
    if (matrix.d1 != 0 || matrix.d2 != 0 || matrix.d3 != 0 || matrix.d4 != 1) {
        Refuse("the placement of a node is no affine transform");
    }
    return affine;
}

/// Undoes what the IFC reader does to the root: to metres, then z-up to y-up by -90 degrees about
/// x.
Affine UndoneIfcRoot(const Affine& root) {
    double cubedScale = 0;
    for (int k = 0; k < 3; ++k) {
        const int i = (k + 1) % 3;
        const int j = (k + 2) % 3;
        cubedScale += root.m[0][k] * (root.m[1][i] * root.m[2][j] - root.m[1][j] * root.m[2][i]);
    }
    double metresPerUnit = std::cbrt(cubedScale);
    if (!(metresPerUnit > 0)) Refuse("the placement of the site is degenerate");
    // The entries are single precision; a decimal prefix of the metre is known better.
    const double decimal = std::pow(10.0, std::round(std::log10(metresPerUnit)));
    if (std::abs(metresPerUnit / decimal - 1) < 1e-5) metresPerUnit = decimal;

    aiMatrix4x4 rotation;
    aiMatrix4x4::RotationX(-AI_MATH_HALF_PI_F, rotation);
    Affine undo;
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 3; ++column) {
            undo.m[row][column] = static_cast<double>(rotation[column][row]) / metresPerUnit;
        }
    }
    return undo * root;
}

/// The transform of the scene's root: what the file says, without the change of units and axes that
/// two of the readers add.
Affine RootTransform(imp_FormatEnm format, const aiMatrix4x4& root) {
    switch (format) {
        case imp_FormatEnm::Collada:
            return {};  // the node of the visual scene, which has no transform of its own
        case imp_FormatEnm::Ifc:
            return UndoneIfcRoot(ToAffine(root));
        default:
            return ToAffine(root);
    }
}

class PartCollector {
  public:
    PartCollector(const aiScene& readScene, imp_FormatEnm readFormat, imp_ObjectNames objectNames,
                  imp_PartWriter& partWriter)
        : scene(readScene),
          format(readFormat),
          threeMfNames(std::move(objectNames)),
          writer(partWriter) {}

    /// Sends a part for every node with triangles; returns how many.
    int SendParts() {
        std::vector<Place> open;
        open.push_back(
            {scene.mRootNode, RootTransform(format, scene.mRootNode->mTransformation), {}});
        int sent = 0;
        while (!open.empty()) {
            Place place = std::move(open.back());
            open.pop_back();
            const aiNode& node = *place.node;
            const std::string given = GivenName(node);
            if (SendPart(node, place, given)) ++sent;
            if (!given.empty()) place.ownerName = given;
            // Backwards onto the stack, so that parts come in the order of the file.
            for (unsigned i = node.mNumChildren; i-- > 0;) {
                const aiNode* child = node.mChildren[i];
                if (!child) Refuse("the scene has a hole");
                open.push_back(
                    {child, place.transform * ToAffine(child->mTransformation), place.ownerName});
            }
        }
        return sent;
    }

  private:
    struct Place {
        const aiNode* node;
        Affine transform;
        std::string ownerName;  ///< given name of the nearest named ancestor
    };

    static std::string_view View(const aiString& text) {
        return {text.data, std::min<std::size_t>(text.length, sizeof text.data - 1)};
    }

    std::string GivenName(const aiNode& node) const {
        if (format != imp_FormatEnm::ThreeMf) {
            return imp_GivenNodeName(format, View(node.mName), &node == scene.mRootNode,
                                     node.mNumMeshes > 0);
        }
        const auto named = threeMfNames.find(imp_ThreeMfObjectId(View(node.mName)));
        return named == threeMfNames.end() ? std::string() : named->second;
    }

    const aiMesh& Mesh(unsigned index) const {
        if (index >= scene.mNumMeshes || !scene.mMeshes[index]) {
            Refuse("a node places a mesh that is not there");
        }
        return *scene.mMeshes[index];
    }

    /// The name of the node's part: its own, its mesh's, that of the group it stands in.
    std::string PartName(const aiNode& node, const std::string& given,
                         const std::string& owner) const {
        if (!given.empty()) return given;
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            const aiMesh& mesh = Mesh(node.mMeshes[i]);
            std::string name = imp_GivenMeshName(format, View(mesh.mName), node.mNumMeshes > 1);
            if (!name.empty()) return name;
        }
        return owner.empty() ? "part" : owner;
    }

    bool SendPart(const aiNode& node, const Place& place, const std::string& given) {
        imp_VertexWelder welder;
        imp_RawPart part;
        part.name = PartName(node, given, place.ownerName);
        for (unsigned i = 0; i < node.mNumMeshes; ++i) {
            AddTriangles(Mesh(node.mMeshes[i]), part, welder);
        }
        if (part.triangles.empty()) return false;
        part.positions = welder.TakePositions();
        std::copy(&place.transform.m[0][0], &place.transform.m[0][0] + 12, &part.placement[0][0]);
        writer.Part(part);
        return true;
    }

    static void AddTriangles(const aiMesh& mesh, imp_RawPart& part, imp_VertexWelder& welder) {
        if (mesh.mNumFaces > 0 && (!mesh.mFaces || !mesh.mVertices)) {
            Refuse("part '" + part.name + "': a mesh has faces but no list of them");
        }
        for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
            const aiFace& face = mesh.mFaces[i];
            if (face.mNumIndices < 3) continue;  // points and lines
            if (face.mNumIndices > 3 || !face.mIndices) {
                Refuse("part '" + part.name + "': a polygon could not be cut into triangles");
            }
            if (part.triangles.size() > std::numeric_limits<int>::max() - 3u) {
                Refuse("part '" + part.name + "': too many triangles");
            }
            for (unsigned corner = 0; corner < 3; ++corner) {
                const unsigned vertex = face.mIndices[corner];
                if (vertex >= mesh.mNumVertices) {
                    Refuse("part '" + part.name + "': a triangle names a vertex that is not there");
                }
                const aiVector3D& position = mesh.mVertices[vertex];
                part.triangles.push_back(welder.Add(position.x, position.y, position.z));
            }
        }
    }

    const aiScene& scene;
    imp_FormatEnm format;
    imp_ObjectNames threeMfNames;
    imp_PartWriter& writer;
};

/// Takes the readers of all other formats out of the importer.
void KeepOwnFormats(Assimp::Importer& importer) {
    for (std::size_t i = importer.GetImporterCount(); i-- > 0;) {
        const aiImporterDesc* description = importer.GetImporterInfo(i);
        if (description && imp_FormatOfReader(description->mName)) continue;
        Assimp::BaseImporter* reader = importer.GetImporter(i);
        importer.UnregisterLoader(reader);
        delete reader;
    }
}

imp_FormatEnm FormatOf(const Assimp::Importer& importer) {
    const int reader = importer.GetPropertyInteger("importerIndex", -1);
    const aiImporterDesc* description =
        reader < 0 ? nullptr : importer.GetImporterInfo(static_cast<std::size_t>(reader));
    const auto format = imp_FormatOfReader(description ? description->mName : "");
    if (!format) Refuse("its format is none of those that are read");
    return *format;
}

[[noreturn]] void RefuseBy(const std::string& error) {
    if (error.starts_with("No suitable reader found")) {
        Refuse("not a mesh: it is in none of the formats that are read");
    }
    Refuse("not a mesh that can be read: " + error);
}

}  // namespace

void imp_ReadScene(const std::string& path, imp_PartWriter& writer) {
    Assimp::Importer importer;
    KeepOwnFormats(importer);
    importer.SetProgressHandler(new Progress(writer));  // the importer deletes it
    // Without it, some readers draw the nodes of a file that has no meshes.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_IGNORE_UP_DIRECTION, true);
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
    const aiScene* scene = importer.ReadFile(path, aiProcess_Triangulate);
    if (!scene) RefuseBy(importer.GetErrorString());
    if (!scene->mRootNode) Refuse("not a mesh that can be read: it has no scene");
    const imp_FormatEnm format = FormatOf(importer);
    imp_ObjectNames threeMfNames;
    if (format == imp_FormatEnm::ThreeMf) threeMfNames = imp_ReadThreeMfNames(path);
    if (PartCollector(*scene, format, std::move(threeMfNames), writer).SendParts() == 0) {
        Refuse("it has no triangles");
    }
    writer.End();
}
