#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The file formats that the program reads.
enum class imp_FormatEnm { Stl, Obj, Ply, Off, ThreeMf, Gltf1, Gltf2, Collada, Ifc };

/// The format behind the name by which the importer library describes one of its readers; nothing
/// for a format that the program does not read.
[[nodiscard]] std::optional<imp_FormatEnm> imp_FormatOfReader(std::string_view readerName);

/// The name that the file gives to a node, out of what the importer library calls it; "" where the
/// library made the name up. `isRoot` marks the root of the scene, which most readers add.
[[nodiscard]] std::string imp_GivenNodeName(imp_FormatEnm format, std::string_view name,
                                            bool isRoot, bool hasMeshes);

/// The same for a mesh. `isSplit`: the reader cut the file's mesh in several and numbered them.
[[nodiscard]] std::string imp_GivenMeshName(imp_FormatEnm format, std::string_view name,
                                            bool isSplit);

/// The id of the 3MF object that a node places; -1 for a node that places none. The importer
/// library makes up the names of such nodes out of it.
[[nodiscard]] int imp_ThreeMfObjectId(std::string_view nodeName);
