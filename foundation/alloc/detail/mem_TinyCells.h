#pragma once

namespace mem_detail {

/// Gives the chunks behind tiny blocks back to the system when no tiny block is in use; nothing
/// otherwise.
void ReleaseUnusedChunks() noexcept;

}  // namespace mem_detail
