#pragma once

#include <algorithm>
#include <cstdint>

#include "cow/KTSOvuGeomExport.h"

/// How deep and how large the value below a primitive is. Scalars have depth 0 and are one node; a
/// container is one deeper than its deepest element, and itself and all nodes below (shared ones
/// each time that they are reached). Containers keep it for themselves, so that whatever walks a
/// value (text, comparison, archive, destruction) is bounded before it starts.
struct omu_PrimNesting {
    /// Containers nested in each other, the outermost counted.
    static constexpr int kMaxDepth = 256;
    /// Nodes of one value: 2^27.
    static constexpr std::int64_t kMaxNodes = std::int64_t{1} << 27;

    /// The nesting of a container without elements.
    [[nodiscard]] static constexpr omu_PrimNesting OfEmptyContainer() noexcept { return {1, 1}; }
    /// The nesting of this container with one more element.
    [[nodiscard]] constexpr omu_PrimNesting With(const omu_PrimNesting& element) const noexcept {
        return {std::max(depth, element.depth + 1), nodes + element.nodes};
    }
    [[nodiscard]] constexpr bool IsAllowed() const noexcept {
        return depth <= kMaxDepth && nodes <= kMaxNodes;
    }
    /// Raises `omu_ValueErrorException` unless it `IsAllowed()`.
    inline void Require() const {
        if (!IsAllowed()) RaiseExceeded();
    }

    int depth = 0;
    std::int64_t nodes = 1;

  private:
    [[noreturn]] KTSOVUGEOM_API void RaiseExceeded() const;
};
