#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/import/imp_ChildProcess.h"
#include "host/model/hst_Part.h"

/// What reading one model may use. What is not given grows with the file, so that a small garbled
/// file is given up soon and a large sound one has room: readers were seen to take up to 8 times
/// the size of a file and a second for 9 MiB.
struct imp_ReadLimits {
    static constexpr int BASE_MIB = 2048;
    static constexpr int MIB_PER_MIB = 16;
    static constexpr int BASE_SECONDS = 60;
    static constexpr int SECONDS_PER_MIB = 2;

    std::optional<std::uint64_t> memoryMiB;
    std::optional<int> seconds;

    /// The limits for a file of `fileBytes` bytes.
    [[nodiscard]] imp_Limits For(std::uintmax_t fileBytes) const;
};

/// Reads the parts of a mesh or assembly file (STL, OBJ, PLY, OFF, 3MF, glTF, Collada, IFC) in a
/// child process with `limits`. Names are as the file gives them, not unique. `onProgress` hears
/// ten times a second what part of the file is read, from 0 to 1, or less than 0 when the reader
/// does not tell. Throws `hst_Error` when the file is refused.
[[nodiscard]] std::vector<hst_Part> imp_ReadModel(const std::string& path,
                                                  const imp_ReadLimits& limits,
                                                  const std::function<void(double)>& onProgress);
