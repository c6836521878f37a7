#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "cow/cow_COW.h"
#include "cow/cow_Dismantler.h"
#include "cow/cow_TinyAllocated.h"
#include "foundation/coreutils/cow_String.h"

template <class K, class V>
class cow_BtreeNode;

/// The link to a node of a `cow_Btree`; copies share the subtree.
template <class K, class V>
using cow_BtreeNodeLink = cow_COW<cow_BtreeNode<K, V>, cow_Direct<cow_BtreeNode<K, V>>>;

/// One entry of a `cow_Btree` and the subtrees of the smaller and of the larger keys.
template <class K, class V>
class cow_BtreeNode : public cow_TinyAllocated<cow_BtreeNode<K, V>> {
  public:
    using Link = cow_BtreeNodeLink<K, V>;

    cow_BtreeNode(const K& newKey, const V& newValue) : key(newKey), value(newValue) {}
    cow_BtreeNode(const cow_BtreeNode&) = default;
    cow_BtreeNode& operator=(const cow_BtreeNode&) = delete;
    ~cow_BtreeNode() { cow_Dismantler<cow_BtreeNode, Link>::DestroyBelow(*this); }

    [[nodiscard]] static Link& LinkOf(cow_BtreeNode& node, int side) noexcept {
        return side == 0 ? node.left : node.right;
    }
    /// The depth stored in the node under `link`, 0 for an absent one.
    [[nodiscard]] static int DepthOf(const Link& link) noexcept {
        return link.HasValue() ? link.ConstGet()->depth : 0;
    }
    /// Sets the depth from the children: 0 for a leaf, else one more than the deepest child's.
    void UpdateDepth() noexcept {
        depth = 0;
        if (left.HasValue()) depth = std::max(depth, left.ConstGet()->depth + 1);
        if (right.HasValue()) depth = std::max(depth, right.ConstGet()->depth + 1);
    }

    K key;
    V value;
    Link left;
    Link right;
    std::int32_t depth = 0;
};

/// The order of integer keys in a `cow_Btree`: negative when `b` orders before `a`, 0 when equal.
///
/// Kept: the result is b - a in 32-bit arithmetic, so keys more than 2^31 apart (-2,000,000,000 and
/// 2,000,000,000) order the wrong way round, where one would have expected the order of integers;
/// stored trees rely on their order.
template <class K>
[[nodiscard]] int cow_BtreeCompare(const K& a, const K& b) noexcept {
    static_assert((std::is_integral_v<K> || std::is_enum_v<K>)&&sizeof(K) <= 4,
                  "keys of a cow_Btree are integers of at most 32 bits or cow_String");
    return static_cast<int>(static_cast<std::uint32_t>(b) - static_cast<std::uint32_t>(a));
}

/// The order of string keys: unsigned bytes up to the first zero.
[[nodiscard]] inline int cow_BtreeCompare(const cow_String& a, const cow_String& b) noexcept {
    return std::strcmp(b.Characters(), a.Characters());
}

/// The value that a tree answers for an absent key.
template <class V>
class cow_BtreeValue {
  public:
    /// A default value of `V`.
    [[nodiscard]] static const V& NullValue() {
        static const V value{};
        return value;
    }
};
