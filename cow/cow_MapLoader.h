#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "cow/cow_Map.h"
#include "foundation/coreutils/omi_Allocator.h"

/// Builds a map from entries that come one after another, as from a stream, and gives up when it
/// takes too many steps.
///
/// Integer keys are at most 32 levels deep and are inserted as they come. String keys may form long
/// chains, along which inserting n entries would cost n * n / 2 steps; the loader takes entries in
/// a map's own order of iteration (node, child 0, child 1) without going down from the root. Only
/// the entries out of that order cost steps.
template <class K, class V>
class cow_MapLoader {
  public:
    explicit cow_MapLoader(std::int64_t stepBudget) { static_cast<void>(stepBudget); }

    /// Adds the entry, or overwrites the value of `key`. False, and the entry is not taken, once
    /// the step budget is used up (never for integer keys).
    bool Insert(const K& key, const V& value) { return map.Insert(key, value); }
    /// Hands over the map built so far and starts anew with the empty map.
    [[nodiscard]] cow_Map<K, V> Take() { return std::exchange(map, cow_Map<K, V>()); }

  private:
    cow_Map<K, V> map;
};

/// The loader for string keys: keeps the path of the entry before, and a hash table of the keys
/// read for finding repeated ones.
template <class V>
class cow_MapLoader<cow_String, V> {
  public:
    /// A step is one level gone down, or one key looked at in the hash table beyond the first few.
    explicit cow_MapLoader(std::int64_t stepBudget) : stepsLeft(stepBudget) {}

    /// Adds the entry, or overwrites the value of `key`. False, and the entry is not taken, once
    /// the step budget is used up. After an exception the loader may only be destroyed.
    bool Insert(const cow_String& key, const V& value);
    /// Hands over the map built so far and starts anew with the empty map and the steps left.
    [[nodiscard]] cow_Map<cow_String, V> Take();

  private:
    using Node = cow_MapNode<cow_String, V>;
    using KeyPath = cow_KeyPath<cow_String>;
    template <class Element>
    using Vector = std::vector<Element, omi_Allocator<Element>>;

    /// Keys that may share a place in the hash table by chance.
    static constexpr int freeProbes = 64;

    [[nodiscard]] bool TakeStep() noexcept { return stepsLeft > 0 && stepsLeft-- > 0; }
    [[nodiscard]] int CommonLevels(const KeyPath& key) const;
    void CutPath(int levels);
    void PushNode(Node* node, int side);
    [[nodiscard]] std::size_t PlaceOf(const KeyPath& key) const noexcept;
    void GrowTable();

    cow_Map<cow_String, V> map;
    Vector<Node*> path;         ///< from the root to the entry before
    Vector<std::int8_t> sides;  ///< which child each but the last of the path goes on by
    Vector<int> onesInSides;    ///< the levels where that is child 1
    Vector<Node*> known;        ///< hash table with linear probing, a power of two long
    std::int64_t stepsLeft;
};

template <class V>
bool cow_MapLoader<cow_String, V>::Insert(const cow_String& key, const V& value) {
    if (static_cast<std::size_t>(map.size) >= known.size() / 2) GrowTable();
    const KeyPath keyPath(key);
    std::size_t place = PlaceOf(keyPath);
    for (int probes = 0; Node* const other = known[place]; ++probes) {
        if (keyPath.Matches(other->key)) {
            other->value = value;
            return true;
        }
        if (probes >= freeProbes && !TakeStep()) return false;
        place = (place + 1) & (known.size() - 1);
    }

    auto* link = &map.root;
    int side = 0;
    if (!path.empty()) {
        CutPath(CommonLevels(keyPath));
        side = keyPath.BitAt(static_cast<int>(sides.size()));
        link = &path.back()->child[side];
        while (Node* const below = link->GetPtr()) {
            if (!TakeStep()) return false;
            PushNode(below, side);
            side = keyPath.BitAt(static_cast<int>(sides.size()));
            link = &below->child[side];
        }
    }
    *link = new Node(key, value);
    ++map.size;
    known[place] = link->GetPtr();
    PushNode(link->GetPtr(), side);
    return true;
}

template <class V>
cow_Map<cow_String, V> cow_MapLoader<cow_String, V>::Take() {
    cow_Map<cow_String, V> taken = std::exchange(map, cow_Map<cow_String, V>());
    path.clear();
    sides.clear();
    onesInSides.clear();
    known.clear();
    return taken;
}

/// How many levels the key goes the way of the kept path. Beyond the key's length its bits are 0.
template <class V>
int cow_MapLoader<cow_String, V>::CommonLevels(const KeyPath& key) const {
    const int levels = static_cast<int>(sides.size());
    const int compared = std::min(levels, key.Length() + 1);
    for (int level = 0; level < compared; ++level) {
        if (sides[static_cast<std::size_t>(level)] != key.BitAt(level)) return level;
    }
    const auto one = std::lower_bound(onesInSides.begin(), onesInSides.end(), compared);
    return one == onesInSides.end() ? levels : *one;
}

template <class V>
void cow_MapLoader<cow_String, V>::CutPath(int levels) {
    path.resize(static_cast<std::size_t>(levels) + 1);
    sides.resize(static_cast<std::size_t>(levels));
    while (!onesInSides.empty() && onesInSides.back() >= levels) onesInSides.pop_back();
}

template <class V>
void cow_MapLoader<cow_String, V>::PushNode(Node* node, int side) {
    if (!path.empty()) {
        if (side == 1) onesInSides.push_back(static_cast<int>(sides.size()));
        sides.push_back(static_cast<std::int8_t>(side));
    }
    path.push_back(node);
}

/// The FNV-1a hash of the key's bytes, folded to the size of the table.
template <class V>
std::size_t cow_MapLoader<cow_String, V>::PlaceOf(const KeyPath& key) const noexcept {
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : key.View()) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    }
    return static_cast<std::size_t>(hash ^ hash >> 32) & (known.size() - 1);
}

template <class V>
void cow_MapLoader<cow_String, V>::GrowTable() {
    Vector<Node*> old(std::max<std::size_t>(16, known.size() * 2));
    known.swap(old);
    for (Node* const node : old) {
        if (!node) continue;
        std::size_t place = PlaceOf(KeyPath(node->key));
        while (known[place]) place = (place + 1) & (known.size() - 1);
        known[place] = node;
    }
}
