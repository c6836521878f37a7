#pragma once

#include <utility>
#include <vector>

#include "cow/cow_COW.h"
#include "cow/cow_Dismantler.h"
#include "cow/cow_KeyPath.h"
#include "cow/cow_List.h"
#include "cow/cow_RaiseOutOfRange.h"
#include "cow/cow_TinyAllocated.h"
#include "foundation/coreutils/cow_Forward.h"
#include "foundation/coreutils/omi_Allocator.h"

template <class K, class V>
class cow_ConstMapIterator;
template <class K, class V>
class cow_MapLoader;

/// One entry of a `cow_Map` and the subtrees below it; a copy shares the subtrees.
template <class K, class V>
class cow_MapNode : public cow_TinyAllocated<cow_MapNode<K, V>> {
  public:
    using Link = cow_COW<cow_MapNode, cow_Direct<cow_MapNode>>;

    cow_MapNode(const K& newKey, const V& newValue) : key(newKey), value(newValue) {}
    cow_MapNode(const cow_MapNode&) = default;
    cow_MapNode& operator=(const cow_MapNode&) = delete;
    ~cow_MapNode() { cow_Dismantler<cow_MapNode, Link>::DestroyBelow(*this); }

    [[nodiscard]] static Link& LinkOf(cow_MapNode& node, int side) noexcept {
        return node.child[side];
    }

    K key;
    V value;
    Link child[2];
};

/// An entry as range-for over a map sees it.
template <class K, class V>
struct cow_MapEntry {
    const K& key;
    const V& value;
};

/// A map from integers of at most 32 bits, or strings, to any copyable `V`: a bitwise trie with an
/// entry in every node, copied on write.
///
/// A copy shares the root and costs one increment. A write copies the shared nodes on the path from
/// the root (each a copy of one key and one value), never the whole map. The path of a key follows
/// its bits (`cow_KeyPath`), 32 levels at most for integers; random ones lie about log2(n) deep and
/// are inserted and found faster than in `std::map`.
///
/// Known limits: a million integers inserted in ascending order take about twice as long as in
/// `std::map`, which then works on one end of its tree. One bit of each character leads a string,
/// so strings that share most characters, or their low bits, form long chains: "Part-000000" to
/// "Part-019999" lie up to 635 deep and are inserted and found about 12 times slower than in
/// `std::map`. No operation recurses.
///
/// Entries are visited node first, then child 0, then child 1, which is also the order in which
/// maps are stored; it is not the order of the keys. References to values are valid until the map,
/// or a copy that shares the node, is written or destroyed. All maps that share nodes belong to one
/// thread at a time.
template <class K, class V>
class cow_Map {
    using Node = cow_MapNode<K, V>;
    using Link = typename Node::Link;

  public:
    class const_iterator;

    /// The empty map.
    cow_Map() = default;

    [[nodiscard]] int Size() const noexcept { return size; }
    [[nodiscard]] bool IsEmpty() const noexcept { return size == 0; }
    [[nodiscard]] bool IsMember(const K& key) const noexcept { return Find(key) != nullptr; }
    /// The value of `key`; never detaches. An absent key ends the process (`RaiseOutOfRange`).
    [[nodiscard]] const V& ConstGet(const K& key) const noexcept;
    /// The value of `key` for writing; makes the nodes on the path private. An absent key ends the
    /// process.
    [[nodiscard]] V& Get(const K& key);

    /// Adds the entry, or overwrites the value of `key`.
    ///
    /// Kept: the result is true in both cases, where one would have expected false for a key that
    /// was present; callers ask `IsMember` to tell them apart.
    bool Insert(const K& key, const V& value);
    /// Removes the entry; false, and nothing is detached, when the key is absent.
    bool Remove(const K& key);
    void Clear();

    /// Range-for over the entries as they are at its start (`cow_MapEntry`); the map may be written
    /// meanwhile.
    [[nodiscard]] const_iterator begin() const { return const_iterator(*this); }
    [[nodiscard]] std::default_sentinel_t end() const noexcept { return {}; }

  private:
    friend class cow_ConstMapIterator<K, V>;
    friend class cow_MapLoader<K, V>;

    [[nodiscard]] const Node* Find(const K& key) const noexcept;

    Link root;
    std::int32_t size = 0;
};

/// Walks the entries of a map one by one: node, child 0, child 1. It holds its own copy of the map
/// (a shared root), so it walks the content at the time of construction.
template <class K, class V>
class cow_ConstMapIterator {
  public:
    explicit cow_ConstMapIterator(const cow_Map<K, V>& walked)
        : map(walked), current(map.root.ConstGet()) {}

    /// True past the last entry.
    [[nodiscard]] bool IsDone() const noexcept { return current == nullptr; }
    /// Goes on to the next entry; nothing once done.
    void Next();
    /// Key and value of the entry. REQUIRES: not `IsDone()`.
    [[nodiscard]] const K& CurrentKey() const noexcept { return current->key; }
    [[nodiscard]] const V& CurrentValue() const noexcept { return current->value; }

  private:
    cow_Map<K, V> map;
    const cow_MapNode<K, V>* current;
    /// Subtrees by child 1 still to be visited.
    std::vector<const cow_MapNode<K, V>*, omi_Allocator<const cow_MapNode<K, V>*>> pending;
};

template <class K, class V>
class cow_Map<K, V>::const_iterator {
  public:
    explicit const_iterator(const cow_Map& map) : walk(map) {}
    [[nodiscard]] cow_MapEntry<K, V> operator*() const noexcept {
        return {walk.CurrentKey(), walk.CurrentValue()};
    }
    const_iterator& operator++() {
        walk.Next();
        return *this;
    }
    friend bool operator==(const const_iterator& i, std::default_sentinel_t) noexcept {
        return i.walk.IsDone();
    }

  private:
    cow_ConstMapIterator<K, V> walk;
};

/// Lists of what a map holds, in the map's order of iteration.
template <class K, class V>
class cow_MapUtils {
  public:
    [[nodiscard]] static cow_List<K> cow_Keys(const cow_Map<K, V>& map) {
        cow_List<K> keys = cow_List<K>::WithSizeHint(map.Size());
        for (const auto& [key, value] : map) keys.Append(key);
        return keys;
    }
    [[nodiscard]] static cow_List<V> cow_Values(const cow_Map<K, V>& map) {
        cow_List<V> values = cow_List<V>::WithSizeHint(map.Size());
        for (const auto& [key, value] : map) values.Append(value);
        return values;
    }
};

template <class K, class V>
const cow_MapNode<K, V>* cow_Map<K, V>::Find(const K& key) const noexcept {
    cow_KeyPath<K> path(key);
    const Node* node = root.ConstGet();
    while (node && !path.Matches(node->key)) node = node->child[path.NextBit()].ConstGet();
    return node;
}

template <class K, class V>
const V& cow_Map<K, V>::ConstGet(const K& key) const noexcept {
    const Node* const node = Find(key);
    if (!node) RaiseOutOfRange(-1);
    return node->value;
}

template <class K, class V>
V& cow_Map<K, V>::Get(const K& key) {
    cow_KeyPath<K> path(key);
    Link* link = &root;
    for (;;) {
        Node* const node = link->Get();
        if (!node) RaiseOutOfRange(-1);
        if (path.Matches(node->key)) return node->value;
        link = &node->child[path.NextBit()];
    }
}

template <class K, class V>
bool cow_Map<K, V>::Insert(const K& key, const V& value) {
    cow_KeyPath<K> path(key);
    Link* link = &root;
    while (Node* const node = link->Get()) {
        if (path.Matches(node->key)) {
            node->value = value;
            return true;
        }
        link = &node->child[path.NextBit()];
    }
    *link = new Node(key, value);
    ++size;
    return true;
}

// The entries of the chain below the removed one (child 1 before child 0) move up by one place
// each. They move as whole nodes that exchange their links: no key or value is copied, so nothing
// can fail once the chain is private.
template <class K, class V>
bool cow_Map<K, V>::Remove(const K& key) {
    if (!IsMember(key)) return false;
    cow_KeyPath<K> path(key);
    Link* link = &root;
    while (!path.Matches(link->Get()->key)) link = &link->Get()->child[path.NextBit()];

    const auto sideBelow = [](const Node& node) {
        return node.child[1].HasValue() ? 1 : node.child[0].HasValue() ? 0 : -1;
    };
    Node* below = link->Get();
    for (int side = sideBelow(*below); side >= 0; side = sideBelow(*below)) {
        below = below->child[side].Get();
    }

    Node* const removed = link->Get();
    for (int side = sideBelow(*removed); side >= 0; side = sideBelow(*removed)) {
        Node* const next = removed->child[side].GetPtr();
        link->Swap(removed->child[side]);
        removed->child[0].Swap(next->child[0]);
        removed->child[1].Swap(next->child[1]);
        link = &next->child[side];
    }
    *link = nullptr;
    --size;
    return true;
}

template <class K, class V>
void cow_Map<K, V>::Clear() {
    root = nullptr;
    size = 0;
}

template <class K, class V>
void cow_ConstMapIterator<K, V>::Next() {
    if (!current) return;
    const auto* const first = current->child[0].ConstGet();
    const auto* const second = current->child[1].ConstGet();
    if (first) {
        if (second) pending.push_back(second);
        current = first;
    } else if (second) {
        current = second;
    } else if (!pending.empty()) {
        current = pending.back();
        pending.pop_back();
    } else {
        current = nullptr;
    }
}
