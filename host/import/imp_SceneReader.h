#pragma once

#include <string>

class imp_PartWriter;

/// Reads the mesh or assembly file `path` through the importer library and sends its parts: one for
/// every node of the scene that places meshes, with all triangles of these meshes, in the unit and
/// the axes of the file. Meshes without triangles are left out. Throws `std::runtime_error` with
/// the cause when the file is refused, also when it has no triangles.
///
/// The library crashes, hangs and eats memory on some garbled files, so this belongs into a child
/// process. What it hands over is not trusted: counts, indices and coordinates are checked.
void imp_ReadScene(const std::string& path, imp_PartWriter& writer);
