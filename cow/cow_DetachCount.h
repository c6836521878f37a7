#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"

/// How often the copy-on-write containers and handles made a private copy, and of how much: a copy
/// that nobody asked for shows here. Tables of pointers count as a detach without elements.
struct cow_DetachCount {
    std::int64_t detaches = 0;  ///< representations, block tables, blocks and nodes copied
    std::int64_t copiedElements =
        0;  ///< referents, list elements and node entries copied with them
};

/// The totals since load or since the last reset, over all threads; under concurrent detaches an
/// update may be lost.
[[nodiscard]] KTSOVUGEOM_API cow_DetachCount cow_DetachCounts() noexcept;
KTSOVUGEOM_API void cow_ResetDetachCounts() noexcept;

/// Records one detach that copied `elements` elements; called by the containers.
KTSOVUGEOM_API void cow_RecordDetach(std::int64_t elements) noexcept;
