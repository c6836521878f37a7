#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "foundation/coreutils/omi_Allocator.h"

/// A table from integers to values of `T`.
///
/// Negative keys are kept in a second table under their absolute value (as an unsigned number, so
/// that the lowest int has one too). Entries stand side by side in the order of insertion and are
/// found by hashing; a look-up, a test and an insertion take constant time. A copy copies the
/// entries. The storage is the foundation allocator's; an insertion that throws changes nothing.
/// Values are destroyed with the table: what a pointer value points to is the caller's.
template <class T>
class omi_IntTable {
    class Half;

  public:
    /// One key with its value.
    struct Entry {
        int key;
        const T& value;
    };
    class Iterator;

    [[nodiscard]] bool IsMember(int key) const noexcept { return Get(key) != nullptr; }
    /// The value of `key`, or null; valid until the next insertion.
    [[nodiscard]] const T* Get(int key) const noexcept { return HalfOf(key).Find(Magnitude(key)); }
    [[nodiscard]] T* Get(int key) noexcept { return const_cast<T*>(std::as_const(*this).Get(key)); }
    [[nodiscard]] std::size_t Size() const noexcept { return positive.Size() + negative.Size(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return Size() == 0; }

    /// Enters `value` under `key` and returns true; when the key is there already, replaces its
    /// value and returns false.
    bool Insert(int key, T value) {
        Half& half = key < 0 ? negative : positive;
        return half.Insert(Magnitude(key), std::move(value));
    }
    void Clear() noexcept {
        positive.Clear();
        negative.Clear();
    }

    /// The entries: keys from 0 up in the order of insertion, then the negative ones. An insertion
    /// ends the walk.
    [[nodiscard]] Iterator begin() const noexcept { return Iterator(*this); }
    [[nodiscard]] std::default_sentinel_t end() const noexcept { return {}; }

  private:
    static constexpr unsigned Magnitude(int key) noexcept {
        const unsigned bits = static_cast<unsigned>(key);
        return key < 0 ? 0u - bits : bits;
    }
    [[nodiscard]] const Half& HalfOf(int key) const noexcept {
        return key < 0 ? negative : positive;
    }

    Half positive;
    Half negative;
};

/// The table of the keys of one sign: open addressing with linear probing over the places of the
/// entries, at most half full.
template <class T>
class omi_IntTable<T>::Half {
  public:
    struct Slot {
        unsigned magnitude;
        T value;
    };

    [[nodiscard]] std::size_t Size() const noexcept { return slots.size(); }
    [[nodiscard]] const Slot& operator[](std::size_t place) const noexcept { return slots[place]; }

    [[nodiscard]] const T* Find(unsigned magnitude) const noexcept {
        if (places.empty()) return nullptr;
        const std::uint32_t place = places[ProbeFor(magnitude)];
        return place == 0 ? nullptr : &slots[place - 1].value;
    }

    bool Insert(unsigned magnitude, T value) {
        if (slots.size() * 2 >= places.size()) Grow();
        std::uint32_t& place = places[ProbeFor(magnitude)];
        if (place != 0) {
            slots[place - 1].value = std::move(value);
            return false;
        }
        slots.push_back(Slot{magnitude, std::move(value)});
        place = static_cast<std::uint32_t>(slots.size());
        return true;
    }

    void Clear() noexcept {
        slots.clear();
        places.clear();
    }

  private:
    /// The probe that holds `magnitude`, or the free one where it belongs. The multiplier is 2^32
    /// over the golden ratio, which spreads keys in arithmetic progression evenly.
    [[nodiscard]] std::size_t ProbeFor(unsigned magnitude) const noexcept {
        const std::size_t mask = places.size() - 1;
        const unsigned hash = magnitude * 0x9E3779B9u;
        std::size_t probe = hash >> (32 - std::countr_zero(places.size()));
        while (places[probe] != 0 && slots[places[probe] - 1].magnitude != magnitude) {
            probe = (probe + 1) & mask;
        }
        return probe;
    }

    void Grow() {
        Places grown(places.empty() ? 8 : places.size() * 2, 0);
        places.swap(grown);
        for (std::size_t i = 0; i != slots.size(); ++i) {
            places[ProbeFor(slots[i].magnitude)] = static_cast<std::uint32_t>(i + 1);
        }
    }

    using Places = std::vector<std::uint32_t, omi_Allocator<std::uint32_t>>;
    std::vector<Slot, omi_Allocator<Slot>> slots;
    /// 1 + the place of an entry in `slots`, 0 for a free probe; a power of two of them.
    Places places;
};

/// Walks over the entries of a table.
template <class T>
class omi_IntTable<T>::Iterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Entry;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = Entry;

    explicit Iterator(const omi_IntTable& walked) noexcept : table(&walked) {}

    [[nodiscard]] Entry operator*() const noexcept {
        const std::size_t positives = table->positive.Size();
        if (place < positives) {
            const auto& slot = table->positive[place];
            return {static_cast<int>(slot.magnitude), slot.value};
        }
        const auto& slot = table->negative[place - positives];
        return {static_cast<int>(0u - slot.magnitude), slot.value};
    }
    Iterator& operator++() noexcept {
        ++place;
        return *this;
    }
    void operator++(int) noexcept { ++place; }
    friend bool operator==(const Iterator& it, std::default_sentinel_t) noexcept {
        return it.place == it.table->Size();
    }

  private:
    const omi_IntTable* table;
    std::size_t place = 0;
};
