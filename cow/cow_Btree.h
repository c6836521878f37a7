#pragma once

#include <utility>
#include <vector>

#include "cow/cow_BtreeNode.h"
#include "cow/cow_List.h"
#include "foundation/coreutils/omi_Allocator.h"

template <class K, class V>
class cow_BtreeIterator;

/// A height-balanced binary search tree from integers of at most 32 bits, or strings, to any
/// copyable `V` with a default value; copied on write.
///
/// A copy shares the root and costs one increment; a write copies the shared nodes on the path from
/// the root. Iteration visits ascending keys. References to values and nodes are valid until the
/// tree, or a copy that shares the node, is written or destroyed. All trees that share nodes belong
/// to one thread at a time.
///
/// Kept: balancing weighs an absent child like a leaf and makes single rotations only, so 1, 2, 3
/// inserted in that order stay a chain to the right, where one would have expected 2 as the root;
/// stored trees rely on their shape. Depth stays logarithmic for ordered and for random keys.
template <class K, class V>
class cow_Btree {
  public:
    using Node = cow_BtreeNode<K, V>;
    using Link = cow_BtreeNodeLink<K, V>;

    /// The empty tree.
    cow_Btree() = default;

    [[nodiscard]] bool IsEmpty() const noexcept { return root.IsNull(); }
    [[nodiscard]] bool IsMember(const K& key) const noexcept { return ConstFind(key) != nullptr; }
    /// The node of `key` or null; `ConstFind` never detaches, `Find` makes the path private when
    /// the key is present.
    [[nodiscard]] const Node* ConstFind(const K& key) const noexcept;
    [[nodiscard]] Node* Find(const K& key);
    /// The value of `key`, `cow_BtreeValue<V>::NullValue()` when it is absent; never detaches.
    [[nodiscard]] const V& ConstGet(const K& key) const;
    /// The value of `key` for writing; makes the path private. For an absent key a scratch copy of
    /// the null value, which is in no tree and serves until the next such call.
    [[nodiscard]] V& Get(const K& key);
    /// The depth of the root: 0 for one node and for the empty tree.
    [[nodiscard]] int Depth() const noexcept { return Node::DepthOf(root); }
    /// A copy that shares all nodes.
    [[nodiscard]] cow_Btree Copy() const { return *this; }
    /// The root or null, for looking at the shape.
    [[nodiscard]] const Node* Root() const noexcept { return root.ConstGet(); }

    /// Adds the entry; false, and nothing changes, when the key is present. When memory runs out,
    /// or a copy throws, the entry may be in the tree or not; the tree is whole.
    bool InsertUnlessMember(const K& key, const V& value);
    void Clear() { root = nullptr; }

  private:
    friend class cow_BtreeIterator<K, V>;
    static void InsertBelow(Link& link, const K& key, const V& value);
    static void Balance(Link& link);
    static void Rotate(Link& link, int heavySide);

    Link root;
};

/// Walks the entries of a tree in the order of their keys, either way. It holds its own link to the
/// root, so it walks the content at the time of construction.
template <class K, class V>
class cow_BtreeIterator {
  public:
    /// Stands at the smallest key.
    explicit cow_BtreeIterator(const cow_Btree<K, V>& tree) : root(tree.root) { First(); }

    /// Goes to the smallest or to the largest key.
    void First() { Restart(0); }
    void Last() { Restart(1); }
    /// Goes to the next larger or the next smaller key; nothing once done.
    void Next() { Step(1); }
    void Previous() { Step(0); }
    /// True past either end.
    [[nodiscard]] bool IsDone() const noexcept { return path.empty(); }
    /// Key and value of the entry. REQUIRES: not `IsDone()`.
    [[nodiscard]] const K& CurrentKey() const noexcept { return path.back()->key; }
    [[nodiscard]] const V& CurrentValue() const noexcept { return path.back()->value; }

  private:
    using Node = cow_BtreeNode<K, V>;
    static const Node* Child(const Node& node, int side) noexcept {
        return side == 0 ? node.left.ConstGet() : node.right.ConstGet();
    }
    void Restart(int side) {
        path.clear();
        Descend(root.ConstGet(), side);
    }
    void Descend(const Node* node, int side) {
        for (; node; node = Child(*node, side)) path.push_back(node);
    }
    void Step(int side);

    cow_BtreeNodeLink<K, V> root;
    std::vector<const Node*, omi_Allocator<const Node*>> path;  ///< from the root to the current
};

/// Lists of what a tree holds, in ascending order of the keys.
template <class K, class V>
class cow_BtreeUtils {
  public:
    [[nodiscard]] static cow_List<K> cow_Keys(const cow_Btree<K, V>& tree) {
        cow_List<K> keys;
        for (cow_BtreeIterator<K, V> i(tree); !i.IsDone(); i.Next()) keys.Append(i.CurrentKey());
        return keys;
    }
    [[nodiscard]] static cow_List<V> cow_Values(const cow_Btree<K, V>& tree) {
        cow_List<V> values;
        for (cow_BtreeIterator<K, V> i(tree); !i.IsDone(); i.Next()) {
            values.Append(i.CurrentValue());
        }
        return values;
    }
};

template <class K, class V>
const cow_BtreeNode<K, V>* cow_Btree<K, V>::ConstFind(const K& key) const noexcept {
    const Node* node = root.ConstGet();
    while (node) {
        const int order = cow_BtreeCompare(node->key, key);
        if (order == 0) break;
        node = order < 0 ? node->left.ConstGet() : node->right.ConstGet();
    }
    return node;
}

template <class K, class V>
cow_BtreeNode<K, V>* cow_Btree<K, V>::Find(const K& key) {
    if (!IsMember(key)) return nullptr;
    Link* link = &root;
    for (;;) {
        Node* const node = link->Get();
        const int order = cow_BtreeCompare(node->key, key);
        if (order == 0) return node;
        link = order < 0 ? &node->left : &node->right;
    }
}

template <class K, class V>
const V& cow_Btree<K, V>::ConstGet(const K& key) const {
    const Node* const node = ConstFind(key);
    return node ? node->value : cow_BtreeValue<V>::NullValue();
}

template <class K, class V>
V& cow_Btree<K, V>::Get(const K& key) {
    if (Node* const node = Find(key)) return node->value;
    static V scratch{};
    scratch = cow_BtreeValue<V>::NullValue();
    return scratch;
}

template <class K, class V>
bool cow_Btree<K, V>::InsertUnlessMember(const K& key, const V& value) {
    if (IsMember(key)) return false;
    InsertBelow(root, key, value);
    return true;
}

template <class K, class V>
void cow_Btree<K, V>::InsertBelow(Link& link, const K& key, const V& value) {
    Node* const node = link.Get();
    if (!node) {
        link = new Node(key, value);
        return;
    }
    try {
        InsertBelow(cow_BtreeCompare(node->key, key) < 0 ? node->left : node->right, key, value);
        Balance(link);
    } catch (...) {
        node->UpdateDepth();
        throw;
    }
}

template <class K, class V>
void cow_Btree<K, V>::Balance(Link& link) {
    Node& node = *link.GetPtr();
    const int difference = Node::DepthOf(node.right) - Node::DepthOf(node.left);
    if (difference >= 2) {
        Rotate(link, 1);
    } else if (difference <= -2) {
        Rotate(link, 0);
    } else {
        node.UpdateDepth();
    }
}

// The child on the heavy side becomes the root of the subtree: it hands its inner subtree to the
// node and takes the node in its place. Exchanging links moves the subtrees without copying.
template <class K, class V>
void cow_Btree<K, V>::Rotate(Link& link, int heavySide) {
    Node& node = *link.GetPtr();
    Link& heavy = Node::LinkOf(node, heavySide);
    Node& child = *heavy.Get();
    Link& inner = Node::LinkOf(child, 1 - heavySide);
    heavy.Swap(inner);
    link.Swap(inner);
    node.UpdateDepth();
    child.UpdateDepth();
}

template <class K, class V>
void cow_BtreeIterator<K, V>::Step(int side) {
    if (path.empty()) return;
    if (const Node* const below = Child(*path.back(), side)) {
        Descend(below, 1 - side);
        return;
    }
    const Node* done = path.back();
    path.pop_back();
    while (!path.empty() && Child(*path.back(), side) == done) {
        done = path.back();
        path.pop_back();
    }
}
