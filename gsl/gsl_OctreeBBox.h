#pragma once

#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/omi_BlkBitVect.h"
#include "foundation/coreutils/omi_IntSet.h"
#include "foundation/coreutils/omi_IntTable.h"
#include "gsl/gsl_BBox.h"

class gsl_Matrix;

/// A node of an octree over numbered items that are given by their boxes; the root is the tree.
///
/// Each node records the items that come within a tolerance of its box. A node is a leaf or has
/// eight children, which split its box at the midpoint of each axis: child 4 i + 2 j + k spans from
/// low + (i, j, k) half-extents to low + (i + 1, j + 1, k + 1) half-extents on x, y and z. Two
/// trees, each placed in space by a matrix, answer the pairs of items that may be near each other;
/// which of these are is for the owner of the items to test. Nothing fails; memory comes from the
/// foundation allocator, whose exhaustion throws and can leave an item in a part of its nodes only.
/// One tree belongs to one thread at a time.
///
/// Rules of use:
/// - Build the root with a maximum depth of 5 or more: leaves are refined only while both depths
///   lie below their maximum, and classification itself stops at depth 4.
/// - Classify every item twice, all with `subdivide` true, then all with false, each time at the
///   linear tolerance of `gsl_Util`, whatever gap is asked for later. The second pass sets the bits
///   that splitting nodes left unset. At tolerance 0 a flat item on a high face of the root can lie
///   one rounding outside every child and be lost; at the gap itself every leaf holds too much.
/// - Where all items are known beforehand, set no callback. With one, the caller caches the boxes:
///   every visited pair of leaves asks for them again.
/// - Pair at the wanted gap plus twice the linear tolerance.
/// - Number the items so that near ones have near numbers, in the Morton order of their centres for
///   example: a node's items are then a few words of bits, and so is the row of an item's pairs.
class KTSOVUGEOM_API gsl_OctreeBBox {
  public:
    /// Puts the box of `item` into `box`, which is empty at the call.
    using Callback = void (*)(void* user, unsigned item, gsl_BBox* box);
    /// The pairs found: under each item of the first tree an `omi_IntSet` with those of the second,
    /// both converted to int. The inner tables belong to the owner of the table, see `FreePairs`.
    using PairTable = omi_IntTable<void*>;

    static constexpr int childCount = 8;

    /// A node without items. `user` is handed to the callback. `depth` is 0 for a root. With
    /// `subdivide` true it gets its eight children at once, unless `depth` is `maxDepth`.
    ///
    /// Kept: only `maxDepth` bounds these children, not the depth of 4 at which classification
    /// stops: a node built at depth 4 with a maximum of 10 has children of depth 5. Callers build
    /// such subtrees by hand.
    gsl_OctreeBBox(const gsl_BBox& box, void* user, unsigned maxDepth, unsigned depth,
                   bool subdivide);
    ~gsl_OctreeBBox();
    gsl_OctreeBBox(const gsl_OctreeBBox&) = delete;
    gsl_OctreeBBox& operator=(const gsl_OctreeBBox&) = delete;

    [[nodiscard]] bool IsLeaf() const noexcept { return !children; }
    /// Child `index`, 0 to 7; the node is not a leaf.
    [[nodiscard]] const gsl_OctreeBBox& Child(int index) const noexcept;
    [[nodiscard]] const gsl_BBox& GetBox() const noexcept { return box; }
    [[nodiscard]] unsigned Depth() const noexcept { return depth; }
    /// As given to the root.
    [[nodiscard]] unsigned MaxDepth() const noexcept { return maxDepth; }
    [[nodiscard]] const omi_BlkBitVect& Items() const noexcept { return items; }

    /// Sets the callback (null: none) of this node and all its descendants. Later children take
    /// that of the leaf they split.
    void SetCallback(Callback function) noexcept;

    /// Records `item` in the nodes that `itemBox` comes within `tol` of, and takes it out of those
    /// visited that are farther away; false when this node is one of these. With `subdivide` true a
    /// leaf above depth min(`MaxDepth()`, 4) splits by one level when the item leaves some child
    /// uncovered; the children start with the leaf's items and callback.
    ///
    /// Kept: a leaf that splits does not set its own bit for the item, only those of the children
    /// reached, where one would expect it to hold what its children hold. Since a node without
    /// items pairs with nothing, items must be classified a second time with `subdivide` false;
    /// trees filled from stored item lists are built that way.
    ///
    /// Kept: leaves end at depth 4, whatever larger maximum the root was given, and one call splits
    /// a leaf by one level only. Callers pass a maximum of 10 and rely on at most 4096 leaves.
    bool Classify(unsigned item, const gsl_BBox& itemBox, double tol, bool subdivide);

    /// Adds to `result` the items of the leaves that `queryBox` comes within `tol` of; always true.
    bool Intersect(const gsl_BBox& queryBox, double tol, omi_BlkBitVect& result) const;

    /// Adds to `pairs` every pair of an item here and one of `other` whose leaves, placed by
    /// `placeThis` and `placeOther`, come within `tol` of each other. Leaves that do are refined
    /// first where they hold more than two items, have a callback and lie above their maximum
    /// depth. False when a node holds no item or the placed boxes are farther apart than `tol`.
    ///
    /// Kept: refinement needs both depths below their maximum, which classification's own stop at
    /// depth 4 does not change: in trees of maximum depth 4 or less the leaves at the bottom are
    /// never refined and record all their items, where one would expect the tree with room to be
    /// refined alone. Callers give 5 or more.
    bool Intersect(gsl_OctreeBBox& other, const gsl_Matrix& placeThis, const gsl_Matrix& placeOther,
                   PairTable& pairs, double tol);

    /// Frees the inner tables of `pairs` and empties it.
    static void FreePairs(PairTable& pairs) noexcept;
    /// Calls `visit(i, j)` with the item numbers of each pair.
    template <class Visit>
    static void ForEachPair(const PairTable& pairs, Visit visit);

  private:
    struct Children;
    struct ItemSpan;
    struct PairSearch;
    class PlacedChildren;

    [[nodiscard]] gsl_BBox ChildBox(int index) const noexcept;
    [[nodiscard]] bool MustSplit(const gsl_BBox& itemBox) const noexcept;
    void Split();
    void ClassifyWithin(const ItemSpan& item, bool subdivide);
    void ClassifyInChildren(const ItemSpan& item, bool subdivide);

    bool PairPlaced(gsl_OctreeBBox& other, const gsl_BBox& placedThis, const gsl_BBox& placedOther,
                    const PairSearch& search);
    void PairDescending(gsl_OctreeBBox& other, const gsl_BBox& placedThis,
                        const gsl_BBox& placedOther, const PairSearch& search);
    void PairLeaves(gsl_OctreeBBox& other, const gsl_BBox& placedThis, const gsl_BBox& placedOther,
                    const PairSearch& search);
    void Refine(double tol);
    [[nodiscard]] bool AllPairsRecorded(const gsl_OctreeBBox& other, const PairTable& pairs) const;
    void RecordPairs(const gsl_OctreeBBox& other, PairTable& pairs) const;

    std::unique_ptr<Children> children;
    gsl_BBox box;
    unsigned depth;
    unsigned maxDepth;
    omi_BlkBitVect items;
    Callback callback = nullptr;
    void* user;
};

template <class Visit>
void gsl_OctreeBBox::ForEachPair(const PairTable& pairs, Visit visit) {
    for (const auto& [i, row] : pairs) {
        const unsigned first = static_cast<unsigned>(i);
        static_cast<const omi_IntSet*>(row)->ForEach(
            [&](int j) { visit(first, static_cast<unsigned>(j)); });
    }
}
