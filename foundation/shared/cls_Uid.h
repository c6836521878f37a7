#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

#include "foundation/shared/KTSBasSharedExport.h"

/// The identity of an object within the process: one trivially copyable 64-bit number, 0 while none
/// was allocated. Identities are never archived; a stream numbers them in its own order.
class cls_Uid {
  public:
    /// The unallocated identity.
    constexpr cls_Uid() noexcept = default;

    /// A new identity, unique in the process; callable from any thread, takes no lock.
    [[nodiscard]] static cls_Uid AllocateUid() noexcept {
        return cls_Uid(lastAllocated.fetch_add(1, std::memory_order_relaxed) + 1);
    }

    [[nodiscard]] constexpr bool IsAllocated() const noexcept { return number != 0; }
    /// The number itself, 0 when unallocated.
    [[nodiscard]] constexpr std::uint64_t Number() const noexcept { return number; }

    friend constexpr bool operator==(const cls_Uid&, const cls_Uid&) noexcept = default;

  private:
    constexpr explicit cls_Uid(std::uint64_t n) noexcept : number(n) {}

    KTSBASSHARED_API static std::atomic<std::uint64_t> lastAllocated;
    std::uint64_t number = 0;
};

template <>
struct std::hash<cls_Uid> {
    std::size_t operator()(const cls_Uid& uid) const noexcept {
        return std::hash<std::uint64_t>()(uid.Number());
    }
};
