#include "cow/cow_DetachCount.h"

#include <atomic>

namespace {

constinit std::atomic<std::int64_t> detaches{0};
constinit std::atomic<std::int64_t> copiedElements{0};

// A plain load and store instead of a locked addition: the counters are for diagnosis, a lost
// update costs nothing, and a detach of one map node is only a few nanoseconds of work.
void Add(std::atomic<std::int64_t>& counter, std::int64_t amount) noexcept {
    counter.store(counter.load(std::memory_order_relaxed) + amount, std::memory_order_relaxed);
}

}  // namespace

cow_DetachCount cow_DetachCounts() noexcept {
    return {detaches.load(std::memory_order_relaxed),
            copiedElements.load(std::memory_order_relaxed)};
}

void cow_ResetDetachCounts() noexcept {
    detaches.store(0, std::memory_order_relaxed);
    copiedElements.store(0, std::memory_order_relaxed);
}

void cow_RecordDetach(std::int64_t elements) noexcept {
    Add(detaches, 1);
    Add(copiedElements, elements);
}
