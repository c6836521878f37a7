#pragma once

#include <climits>
#include <cstddef>

#include "foundation/coreutils/omi_BlkBitVect.h"

/// An integer table that keeps keys alone, as rows of bits in pieces: a key among near ones costs a
/// few bits. Negative keys are kept in a second row under their absolute value (as an unsigned
/// number). Copies, storage and threads are as for `omi_BlkBitVect`.
class omi_IntSet {
  public:
    [[nodiscard]] bool IsMember(int key) const noexcept {
        return key < 0 ? negative.Test(Magnitude(key)) : positive.Test(static_cast<unsigned>(key));
    }
    [[nodiscard]] bool IsEmpty() const noexcept { return positive.IsEmpty() && negative.IsEmpty(); }
    [[nodiscard]] std::size_t Size() const noexcept { return positive.Count() + negative.Count(); }
    /// True when every bit number of `numbers`, converted to int, is a key here. Compares whole
    /// words and stops at the first that differs.
    [[nodiscard]] bool Contains(const omi_BlkBitVect& numbers) const noexcept {
        if (FitInt(numbers)) return positive.Contains(numbers);
        for (const unsigned number : numbers) {
            if (!IsMember(static_cast<int>(number))) return false;
        }
        return true;
    }

    void Insert(int key) {
        if (key < 0) {
            negative.Set(Magnitude(key));
        } else {
            positive.Set(static_cast<unsigned>(key));
        }
    }
    /// Enters every bit number of `numbers`, converted to int (so those from 2^31 on are negative).
    void Insert(const omi_BlkBitVect& numbers) {
        if (FitInt(numbers)) {
            positive |= numbers;
        } else {
            for (const unsigned number : numbers) Insert(static_cast<int>(number));
        }
    }
    void Clear() noexcept {
        positive.ClearAll();
        negative.ClearAll();
    }

    /// The keys from 0 up, ascending, and the absolute values of the negative ones, ascending.
    [[nodiscard]] const omi_BlkBitVect& NonNegative() const noexcept { return positive; }
    [[nodiscard]] const omi_BlkBitVect& NegativeMagnitudes() const noexcept { return negative; }

    /// Calls `visit(key)` for the keys from 0 up, ascending, then for the negative ones,
    /// descending.
    template <class Visit>
    void ForEach(Visit visit) const {
        for (const unsigned key : positive) visit(static_cast<int>(key));
        for (const unsigned magnitude : negative) visit(static_cast<int>(0u - magnitude));
    }

    friend bool operator==(const omi_IntSet&, const omi_IntSet&) noexcept = default;

    /// Sets on the heap lie in storage of the foundation allocator too.
    static void* operator new(std::size_t bytes) { return mem_OperatorNewTinyThrow(bytes); }
    static void operator delete(void* set, std::size_t bytes) noexcept {
        mem_OperatorDeleteTiny(set, bytes);
    }

  private:
    static constexpr unsigned Magnitude(int key) noexcept {
        return 0u - static_cast<unsigned>(key);
    }
    [[nodiscard]] static bool FitInt(const omi_BlkBitVect& numbers) noexcept {
        return numbers.IsEmpty() || numbers.Last() <= INT_MAX;
    }

    omi_BlkBitVect positive;
    omi_BlkBitVect negative;
};
