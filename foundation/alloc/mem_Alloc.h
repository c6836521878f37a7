#pragma once

#include <cstddef>

#include "foundation/alloc/KTSBasAllocExport.h"

/// The allocator of the whole application. Every function works before the library's initialise
/// and after its finalise, and may be called from any thread. Exhaustion throws `std::bad_alloc`;
/// nothing is lost or changed by a request that throws.

/// Returns a block of `bytes` bytes, aligned for any fundamental type and never null, also for 0
/// bytes. Throws `std::bad_alloc` when memory is exhausted. The caller owns the block and returns
/// it with `mem_Free`.
[[nodiscard]] KTSBASALLOC_API void* mem_Malloc(std::size_t bytes);

/// Resizes `block` (null: a new block) to `bytes` bytes, keeping the leading content, and returns
/// its place. Throws `std::bad_alloc` when memory is exhausted; `block` is then still valid.
[[nodiscard]] KTSBASALLOC_API void* mem_Realloc(void* block, std::size_t bytes);

/// Returns a block of `mem_Malloc` or `mem_Realloc`; null is ignored.
KTSBASALLOC_API void mem_Free(void* block) noexcept;

/// Returns a block for a counter or a small holder: header-free cells of multiples of 8 bytes, up
/// to `mem_TinyLimit` bytes; larger requests go to `mem_Malloc`. Throws `std::bad_alloc` when
/// memory is exhausted. Returned with `mem_OperatorDeleteTiny` and the same size.
[[nodiscard]] KTSBASALLOC_API void* mem_OperatorNewTinyThrow(std::size_t bytes);

/// Returns a block of `mem_OperatorNewTinyThrow`; `bytes` is the size that was asked for. Null is
/// ignored.
KTSBASALLOC_API void mem_OperatorDeleteTiny(void* block, std::size_t bytes) noexcept;

/// Largest size in bytes that `mem_OperatorNewTinyThrow` serves from cells. A cell is aligned to 8
/// bytes.
inline constexpr std::size_t mem_TinyLimit = 128;

/// Asked before every request with its size in bytes; answering true makes that request fail with
/// `std::bad_alloc`. Tests use it to fail the n-th request.
using mem_FailureHook = bool (*)(std::size_t bytes);

/// Installs `hook` (null: none) and returns the one before.
KTSBASALLOC_API mem_FailureHook mem_SetFailureHook(mem_FailureHook hook) noexcept;

/// Number of blocks handed out and not yet returned, tiny ones included.
[[nodiscard]] KTSBASALLOC_API std::size_t mem_LiveBlocks() noexcept;
