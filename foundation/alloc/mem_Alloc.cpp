#include "foundation/alloc/mem_Alloc.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

#include "foundation/alloc/detail/mem_TinyCells.h"

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

#if defined(__SANITIZE_ADDRESS__)
#define MEM_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define MEM_ADDRESS_SANITIZER
#endif
#endif

namespace {

#if defined(MEM_ADDRESS_SANITIZER)
// The sanitizer sees faults in blocks of its own only.
constexpr bool useCells = false;
#else
constexpr bool useCells = true;
#endif

/// True while the process is known to have one thread, so that locks and atomic updates can be
/// skipped.
bool IsSingleThreaded() noexcept {
#if __has_include(<sys/single_threaded.h>)
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

struct FreeCell {
    FreeCell* next;
};

struct alignas(16) Chunk {
    Chunk* next;
    std::size_t bytes;
};

constexpr std::size_t cellUnit = 8;
constexpr std::size_t classCount = mem_TinyLimit / cellUnit;
constexpr std::size_t firstChunkBytes = std::size_t{1} << 14;
constexpr std::size_t largestChunkBytes = std::size_t{1} << 20;

/// Cells of all sizes are cut from one chunk in the order of the requests, so that what is made
/// together (a node and its counters, the headers of a list's blocks) lies together. When the last
/// cell comes back the pool starts over from its first chunk, since the free cells by then are
/// scattered. Everything here is constant-initialised and trivially destroyed: the allocator serves
/// before the first and after the last code of the library has run.
struct CellPool {
    FreeCell* freeCells[classCount];
    char* fresh;
    char* freshEnd;
    Chunk* chunks;  ///< cut into cells; the first one is being cut
    Chunk* spare;   ///< left from before the pool started over
    std::size_t nextChunkBytes;
    std::size_t live;
};

constinit CellPool pool{};
constinit std::atomic_flag poolLock{};
constinit std::atomic<mem_FailureHook> failureHook{nullptr};
constinit std::atomic<std::size_t> liveLarge{0};

class PoolGuard {
  public:
    PoolGuard() noexcept : locked(!IsSingleThreaded()) {
        if (locked) Lock();
    }
    ~PoolGuard() {
        if (locked) poolLock.clear(std::memory_order_release);
    }
    PoolGuard(const PoolGuard&) = delete;
    PoolGuard& operator=(const PoolGuard&) = delete;

  private:
    static void Lock() noexcept {
        while (poolLock.test_and_set(std::memory_order_acquire)) {
            while (poolLock.test(std::memory_order_relaxed)) {
            }
        }
    }
    bool locked;
};

void AskHook(std::size_t bytes) {
    const mem_FailureHook hook = failureHook.load(std::memory_order_relaxed);
    if (hook && hook(bytes)) throw std::bad_alloc();
}

void AddLiveLarge(std::size_t change) noexcept {
    if (IsSingleThreaded()) {
        liveLarge.store(liveLarge.load(std::memory_order_relaxed) + change,
                        std::memory_order_relaxed);
    } else {
        liveLarge.fetch_add(change, std::memory_order_relaxed);
    }
}

/// Sizes above half the address space are refused here: not every `malloc` refuses them quietly.
bool IsServable(std::size_t bytes) noexcept { return bytes <= SIZE_MAX / 2; }

std::size_t ClassOf(std::size_t bytes) noexcept { return bytes == 0 ? 0 : (bytes - 1) / cellUnit; }

/// Turns what is left of the current chunk into one free cell.
void KeepRemainder() noexcept {
    const std::size_t left = static_cast<std::size_t>(pool.freshEnd - pool.fresh);
    if (left < cellUnit) return;
    FreeCell* cell = reinterpret_cast<FreeCell*>(pool.fresh);
    FreeCell*& list = pool.freeCells[ClassOf(left)];
    cell->next = list;
    list = cell;
}

void CutCellsFrom(Chunk* chunk) noexcept {
    chunk->next = pool.chunks;
    pool.chunks = chunk;
    pool.fresh = reinterpret_cast<char*>(chunk) + sizeof(Chunk);
    pool.freshEnd = reinterpret_cast<char*>(chunk) + chunk->bytes;
}

Chunk* NewChunk() {
    const std::size_t bytes = pool.nextChunkBytes ? pool.nextChunkBytes : firstChunkBytes;
    void* const memory = std::malloc(bytes);
    if (!memory) throw std::bad_alloc();
    if (bytes < largestChunkBytes) pool.nextChunkBytes = bytes * 2;
    return ::new (memory) Chunk{nullptr, bytes};
}

void AddChunk() {
    Chunk* chunk = pool.spare;
    if (chunk) {
        pool.spare = chunk->next;
    } else {
        chunk = NewChunk();
    }
    KeepRemainder();
    CutCellsFrom(chunk);
}

/// With no cell in use, forgets the free cells and cuts new ones in order.
void StartOver() noexcept {
    for (FreeCell*& list : pool.freeCells) list = nullptr;
    while (pool.chunks->next) {
        Chunk* const chunk = pool.chunks;
        pool.chunks = chunk->next;
        chunk->next = pool.spare;
        pool.spare = chunk;
    }
    CutCellsFrom(std::exchange(pool.chunks, nullptr));
}

void FreeChunks(Chunk* chunk) noexcept {
    while (chunk) std::free(std::exchange(chunk, chunk->next));
}

void* TakeFresh(std::size_t bytes) {
    if (static_cast<std::size_t>(pool.freshEnd - pool.fresh) < bytes) AddChunk();
    void* cell = pool.fresh;
    pool.fresh += bytes;
    return cell;
}

}  // namespace

void mem_detail::ReleaseUnusedChunks() noexcept {
    const PoolGuard guard;
    if (pool.live != 0) return;
    FreeChunks(pool.chunks);
    FreeChunks(pool.spare);
    pool = CellPool{};
}

void* mem_Malloc(std::size_t bytes) {
    AskHook(bytes);
    void* block = IsServable(bytes) ? std::malloc(bytes == 0 ? 1 : bytes) : nullptr;
    if (!block) throw std::bad_alloc();
    AddLiveLarge(1);
    return block;
}

void* mem_Realloc(void* block, std::size_t bytes) {
    AskHook(bytes);
    void* moved = IsServable(bytes) ? std::realloc(block, bytes == 0 ? 1 : bytes) : nullptr;
    if (!moved) throw std::bad_alloc();
    if (!block) AddLiveLarge(1);
    return moved;
}

void mem_Free(void* block) noexcept {
    if (!block) return;
    AddLiveLarge(std::size_t{0} - 1);
    std::free(block);
}

void* mem_OperatorNewTinyThrow(std::size_t bytes) {
    if (!useCells || bytes > mem_TinyLimit) return mem_Malloc(bytes);
    AskHook(bytes);
    const std::size_t sizeClass = ClassOf(bytes);
    const PoolGuard guard;
    FreeCell* cell = pool.freeCells[sizeClass];
    void* block = cell;
    if (cell) {
        pool.freeCells[sizeClass] = cell->next;
    } else {
        block = TakeFresh((sizeClass + 1) * cellUnit);
    }
    ++pool.live;
    return block;
}

void mem_OperatorDeleteTiny(void* block, std::size_t bytes) noexcept {
    if (!useCells || bytes > mem_TinyLimit) return mem_Free(block);
    if (!block) return;
    FreeCell* cell = static_cast<FreeCell*>(block);
    const PoolGuard guard;
    FreeCell*& list = pool.freeCells[ClassOf(bytes)];
    cell->next = list;
    list = cell;
    if (--pool.live == 0) StartOver();
}

mem_FailureHook mem_SetFailureHook(mem_FailureHook hook) noexcept {
    return failureHook.exchange(hook);
}

std::size_t mem_LiveBlocks() noexcept {
    const PoolGuard guard;
    return pool.live + liveLarge.load(std::memory_order_relaxed);
}
