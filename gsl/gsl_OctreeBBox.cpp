#include "gsl/gsl_OctreeBBox.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "foundation/alloc/mem_Alloc.h"
#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_Matrix.h"

namespace {

constexpr unsigned deepestLeaf = 4;
constexpr std::size_t refinedAbove = 2;

/// The largest square whose root is at most `tol`, so that sqrt(s) > tol exactly when s > limit.
double LargestSquareWithin(double tol) noexcept {
    if (tol < 0) return -1;
    const double infinity = std::numeric_limits<double>::infinity();
    double limit = tol * tol;
    while (std::sqrt(limit) > tol) limit = std::nextafter(limit, 0.0);
    while (limit < infinity && std::sqrt(std::nextafter(limit, infinity)) <= tol) {
        limit = std::nextafter(limit, infinity);
    }
    return limit;
}

}  // namespace

struct gsl_OctreeBBox::Children {
    explicit Children(const gsl_OctreeBBox& parent)
        : nodes{Make(parent, 0), Make(parent, 1), Make(parent, 2), Make(parent, 3),
                Make(parent, 4), Make(parent, 5), Make(parent, 6), Make(parent, 7)} {}

    static gsl_OctreeBBox Make(const gsl_OctreeBBox& parent, int index) {
        return {parent.ChildBox(index), parent.user, parent.maxDepth, parent.depth + 1, false};
    }
    static void* operator new(std::size_t bytes) { return mem_Malloc(bytes); }
    static void operator delete(void* storage) noexcept { mem_Free(storage); }

    gsl_OctreeBBox nodes[childCount];
};

/// An item on its way down the tree.
struct gsl_OctreeBBox::ItemSpan {
    unsigned item;
    const gsl_BBox& box;
    double tol;
    /// `LargestSquareWithin(tol)`: comparing squared distances with it saves the roots.
    double squareLimit;
};

/// What stays the same in all of a pair search.
struct gsl_OctreeBBox::PairSearch {
    const gsl_Matrix& placeThis;
    const gsl_Matrix& placeOther;
    PairTable& pairs;
    double tol;
};

/// The placed boxes of a node's children, each computed when it is first asked for: in the 64 calls
/// of two inner nodes each child's is asked for eight times.
class gsl_OctreeBBox::PlacedChildren {
  public:
    PlacedChildren(const gsl_OctreeBBox& parent, const gsl_Matrix& placement) noexcept
        : node(parent), place(placement) {}

    const gsl_BBox& operator[](int index) {
        std::optional<gsl_BBox>& placed = boxes[index];
        if (!placed) {
            placed = node.Child(index).box;
            placed->Transform(place);
        }
        return *placed;
    }

  private:
    const gsl_OctreeBBox& node;
    const gsl_Matrix& place;
    std::optional<gsl_BBox> boxes[childCount];
};

gsl_OctreeBBox::gsl_OctreeBBox(const gsl_BBox& nodeBox, void* userData, unsigned deepest,
                               unsigned nodeDepth, bool subdivide)
    : box(nodeBox), depth(nodeDepth), maxDepth(deepest), user(userData) {
    if (subdivide && depth != maxDepth) children = std::make_unique<Children>(*this);
}

gsl_OctreeBBox::~gsl_OctreeBBox() = default;

const gsl_OctreeBBox& gsl_OctreeBBox::Child(int index) const noexcept {
    return children->nodes[index];
}

gsl_BBox gsl_OctreeBBox::ChildBox(int index) const noexcept {
    const double half[3] = {box.XLen() * 0.5, box.YLen() * 0.5, box.ZLen() * 0.5};
    const int step[3] = {index >> 2 & 1, index >> 1 & 1, index & 1};
    gsl_Point low;
    gsl_Point high;
    for (int axis = 0; axis < 3; ++axis) {
        low[axis] = box.Low()[axis] + step[axis] * half[axis];
        high[axis] = box.Low()[axis] + (step[axis] + 1) * half[axis];
    }
    return {low, high};
}

void gsl_OctreeBBox::SetCallback(Callback function) noexcept {
    callback = function;
    if (!children) return;
    for (gsl_OctreeBBox& child : children->nodes) child.SetCallback(function);
}

bool gsl_OctreeBBox::Classify(unsigned item, const gsl_BBox& itemBox, double tol, bool subdivide) {
    if (BoxBoxDistance(box, itemBox) > tol) {
        items.Clear(item);
        return false;
    }
    ClassifyWithin({item, itemBox, tol, LargestSquareWithin(tol)}, subdivide);
    return true;
}

/// Classifies an item that is known to come within the tolerance of this node.
void gsl_OctreeBBox::ClassifyWithin(const ItemSpan& item, bool subdivide) {
    if (children) {
        items.Set(item.item);
        ClassifyInChildren(item, subdivide);
    } else if (subdivide && depth < std::min(maxDepth, deepestLeaf) && MustSplit(item.box)) {
        Split();
        ClassifyInChildren(item, false);
    } else {
        items.Set(item.item);
    }
}

/// Classifies the item in each child. The eight distances are sums of six squared gaps, two for
/// each axis; they are those of `BoxBoxDistance`, to the last bit, as long as no box is empty.
void gsl_OctreeBBox::ClassifyInChildren(const ItemSpan& item, bool subdivide) {
    if (box.IsEmpty() || item.box.IsEmpty()) {
        for (gsl_OctreeBBox& child : children->nodes) {
            child.Classify(item.item, item.box, item.tol, subdivide);
        }
        return;
    }
    double square[3][2];
    for (int axis = 0; axis < 3; ++axis) {
        const double start = box.Low()[axis];
        const double half = (box.High()[axis] - start) * 0.5;
        for (int step = 0; step < 2; ++step) {
            square[axis][step] =
                gsl_SquaredGap(gsl_AxisGap(start + step * half, start + (step + 1) * half,
                                           item.box.Low()[axis], item.box.High()[axis]));
        }
    }
    for (int index = 0; index < childCount; ++index) {
        gsl_OctreeBBox& child = children->nodes[index];
        const double distanceSquared =
            square[0][index >> 2 & 1] + square[1][index >> 1 & 1] + square[2][index & 1];
        if (distanceSquared > item.squareLimit) {
            child.items.Clear(item.item);
        } else {
            child.ClassifyWithin(item, subdivide);
        }
    }
}

/// True when some child box is not covered by the item.
bool gsl_OctreeBBox::MustSplit(const gsl_BBox& itemBox) const noexcept {
    for (int index = 0; index < childCount; ++index) {
        const gsl_BBox childBox = ChildBox(index);
        if (!childBox.Intersect(itemBox) || BoxBoxContainment(childBox, itemBox) > 0) return true;
    }
    return false;
}

/// Gives this leaf children that hold its items and its callback.
void gsl_OctreeBBox::Split() {
    auto made = std::make_unique<Children>(*this);
    for (gsl_OctreeBBox& child : made->nodes) {
        child.items = items;
        child.callback = callback;
    }
    children = std::move(made);
}

bool gsl_OctreeBBox::Intersect(const gsl_BBox& queryBox, double tol, omi_BlkBitVect& result) const {
    if (!(BoxBoxDistance(box, queryBox) <= tol)) return true;
    if (!children) {
        result |= items;
        return true;
    }
    for (const gsl_OctreeBBox& child : children->nodes) child.Intersect(queryBox, tol, result);
    return true;
}

bool gsl_OctreeBBox::Intersect(gsl_OctreeBBox& other, const gsl_Matrix& placeThis,
                               const gsl_Matrix& placeOther, PairTable& pairs, double tol) {
    if (items.IsEmpty() || other.items.IsEmpty()) return false;
    gsl_BBox placedThis = box;
    placedThis.Transform(placeThis);
    gsl_BBox placedOther = other.box;
    placedOther.Transform(placeOther);
    return PairPlaced(other, placedThis, placedOther, {placeThis, placeOther, pairs, tol});
}

/// The pair search from the test of the distance on, for two nodes that hold items.
bool gsl_OctreeBBox::PairPlaced(gsl_OctreeBBox& other, const gsl_BBox& placedThis,
                                const gsl_BBox& placedOther, const PairSearch& search) {
    if (BoxBoxDistance(placedThis, placedOther) > search.tol) return false;
    if (AllPairsRecorded(other, search.pairs)) return true;
    if (children || other.children) {
        PairDescending(other, placedThis, placedOther, search);
    } else {
        PairLeaves(other, placedThis, placedOther, search);
    }
    return true;
}

/// Searches the children of the nodes that have some at the start: refining one pair can split a
/// leaf, which is still paired as a whole here. It can also take a child's last item, so whether
/// there are any is asked at each turn.
void gsl_OctreeBBox::PairDescending(gsl_OctreeBBox& other, const gsl_BBox& placedThis,
                                    const gsl_BBox& placedOther, const PairSearch& search) {
    const bool splitThis = !IsLeaf();
    const bool splitOther = !other.IsLeaf();
    PlacedChildren mine(*this, search.placeThis);
    PlacedChildren theirs(other, search.placeOther);
    for (int i = 0; i < (splitThis ? childCount : 1); ++i) {
        gsl_OctreeBBox& first = splitThis ? children->nodes[i] : *this;
        for (int j = 0; j < (splitOther ? childCount : 1); ++j) {
            gsl_OctreeBBox& second = splitOther ? other.children->nodes[j] : other;
            if (first.items.IsEmpty() || second.items.IsEmpty()) continue;
            first.PairPlaced(second, splitThis ? mine[i] : placedThis,
                             splitOther ? theirs[j] : placedOther, search);
        }
    }
}

/// Refines the two leaves where that is possible, then records their pairs or, when one has got
/// children, searches again.
void gsl_OctreeBBox::PairLeaves(gsl_OctreeBBox& other, const gsl_BBox& placedThis,
                                const gsl_BBox& placedOther, const PairSearch& search) {
    if (depth < maxDepth && other.depth < other.maxDepth) {
        Refine(search.tol);
        other.Refine(search.tol);
    }
    if (!children && !other.children) {
        RecordPairs(other, search.pairs);
    } else if (!items.IsEmpty() && !other.items.IsEmpty()) {
        PairPlaced(other, placedThis, placedOther, search);
    }
}

/// Classifies the items of a leaf with more than two again, so that it may split. The set changes
/// on the way: items that turn out to be too far away leave it.
void gsl_OctreeBBox::Refine(double tol) {
    if (!callback || items.Count() <= refinedAbove) return;
    const omi_BlkBitVect before = items;
    for (const unsigned item : before) {
        gsl_BBox itemBox;
        callback(user, item, &itemBox);
        Classify(item, itemBox, tol, true);
    }
}

bool gsl_OctreeBBox::AllPairsRecorded(const gsl_OctreeBBox& other, const PairTable& pairs) const {
    for (const unsigned item : items) {
        void* const* row = pairs.Get(static_cast<int>(item));
        if (!row || !static_cast<const omi_IntSet*>(*row)->Contains(other.items)) return false;
    }
    return true;
}

void gsl_OctreeBBox::RecordPairs(const gsl_OctreeBBox& other, PairTable& pairs) const {
    if (other.items.IsEmpty()) return;  // refinement can empty a leaf
    for (const unsigned item : items) {
        const int key = static_cast<int>(item);
        if (void** row = pairs.Get(key)) {
            static_cast<omi_IntSet*>(*row)->Insert(other.items);
        } else {
            auto created = std::make_unique<omi_IntSet>();
            created->Insert(other.items);
            pairs.Insert(key, created.get());
            created.release();
        }
    }
}

void gsl_OctreeBBox::FreePairs(PairTable& pairs) noexcept {
    for (const auto& [item, row] : pairs) delete static_cast<omi_IntSet*>(row);
    pairs.Clear();
}
