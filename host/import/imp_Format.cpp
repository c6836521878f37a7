#include "host/import/imp_Format.h"

#include <charconv>
#include <cstddef>

namespace {

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// True for "KIND[NUMBER]", the stand-in for the name of an unnamed glTF 2 object.
bool IsIndexName(std::string_view name, std::string_view kind) {
    return name.size() > kind.size() + 2 && name.starts_with(kind) && name[kind.size()] == '[' &&
           name.back() == ']' &&
           IsNumber(name.substr(kind.size() + 1, name.size() - kind.size() - 2));
}

/// Takes off the number behind the name of one primitive of a glTF mesh.
std::string_view WithoutPrimitiveNumber(std::string_view name) {
    const std::size_t dash = name.rfind('-');
    return dash != std::string_view::npos && IsNumber(name.substr(dash + 1)) ? name.substr(0, dash)
                                                                             : name;
}

/// The name inside "CLASS_NAME_GLOBALID", by which the IFC reader calls an element.
std::string_view IfcElementName(std::string_view name) {
    constexpr std::size_t kGlobalIdLength = 22;
    const std::size_t head = name.find('_');
    if (!name.starts_with("Ifc") || head == std::string_view::npos ||
        name.size() < head + kGlobalIdLength + 2) {
        return {};
    }
    const std::size_t tail = name.size() - kGlobalIdLength - 1;
    if (name[tail] != '_') return {};
    name = name.substr(head + 1, tail - head - 1);
    return name == "Unnamed" ? std::string_view() : name;
}

}  // namespace

std::optional<imp_FormatEnm> imp_FormatOfReader(std::string_view readerName) {
    struct Row {
        std::string_view reader;
        imp_FormatEnm format;
    };
    static constexpr Row kReaders[] = {
        {"Stereolithography (STL) Importer", imp_FormatEnm::Stl},
        {"Wavefront Object Importer", imp_FormatEnm::Obj},
        {"Stanford Polygon Library (PLY) Importer", imp_FormatEnm::Ply},
        {"OFF Importer", imp_FormatEnm::Off},
        {"3mf Importer", imp_FormatEnm::ThreeMf},
        {"glTF Importer", imp_FormatEnm::Gltf1},
        {"glTF2 Importer", imp_FormatEnm::Gltf2},
        {"Collada Importer", imp_FormatEnm::Collada},
        {"Industry Foundation Classes (IFC) Importer", imp_FormatEnm::Ifc},
    };
    for (const Row& row : kReaders) {
        if (row.reader == readerName) return row.format;
    }
    return std::nullopt;
}

std::string imp_GivenNodeName(imp_FormatEnm format, std::string_view name, bool isRoot,
                              bool hasMeshes) {
    switch (format) {
        case imp_FormatEnm::Ply:
        case imp_FormatEnm::Off:
        case imp_FormatEnm::ThreeMf:
            return {};
        case imp_FormatEnm::Stl:
            return std::string(isRoot ? "" : name);
        case imp_FormatEnm::Obj:
            return std::string(isRoot || name == "defaultobject" ? "" : name);
        case imp_FormatEnm::Gltf1:
        case imp_FormatEnm::Gltf2: {
            const bool isAddedRoot = isRoot && !hasMeshes && name == "ROOT";
            return std::string(isAddedRoot || IsIndexName(name, "nodes") ? "" : name);
        }
        case imp_FormatEnm::Collada:
            return std::string(isRoot || name.starts_with("$ColladaAutoName$_") ? "" : name);
        case imp_FormatEnm::Ifc:
            return std::string(IfcElementName(name));
    }
    return {};
}

std::string imp_GivenMeshName(imp_FormatEnm format, std::string_view name, bool isSplit) {
    switch (format) {
        case imp_FormatEnm::Gltf1:
        case imp_FormatEnm::Gltf2:
            if (isSplit) name = WithoutPrimitiveNumber(name);
            return std::string(IsIndexName(name, "meshes") ? "" : name);
        case imp_FormatEnm::Stl:
        case imp_FormatEnm::Collada:
            return std::string(name);
        // PLY, OFF and IFC meshes have no names; OBJ meshes are called after their material, 3MF
        // ones after a number.
        default:
            return {};
    }
}

int imp_ThreeMfObjectId(std::string_view nodeName) {
    constexpr std::string_view kPrefix = "Object_";
    int id = -1;
    if (nodeName.starts_with(kPrefix)) {
        std::from_chars(nodeName.data() + kPrefix.size(), nodeName.data() + nodeName.size(), id);
    }
    return id;
}
