#include "gsl/gsl_OctreeBBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "gsl/gsl_BoxMeasures.h"
#include "gsl/gsl_Matrix.h"
#include "testing/test_Random.h"

namespace {

using Boxes = std::vector<gsl_BBox>;
using Pairs = std::set<std::pair<unsigned, unsigned>>;

constexpr double linTol = 1e-6;
const gsl_BBox rootBox(gsl_Point(0, 0, 0), gsl_Point(16, 16, 16));

gsl_BBox CubeAt(double x, double y, double z, double side) {
    return {gsl_Point(x, y, z), gsl_Point(x + side, y + side, z + side)};
}

gsl_BBox RandomBox(test_Random& random, double side) {
    const auto place = [&random] { return random.Between(-1, 16.5); };
    gsl_BBox box = CubeAt(place(), place(), place(), 0);
    const gsl_Point& low = box.Low();
    box.Add(gsl_Point(low.GetX() + random.Between(0, side), low.GetY() + random.Between(0, side),
                      random.Below(3) ? low.GetZ() : low.GetZ() + random.Between(0, side)));
    return box;
}

Boxes RandomBoxes(test_Random& random, unsigned count, double side) {
    Boxes boxes;
    while (boxes.size() < count) boxes.push_back(RandomBox(random, side));
    return boxes;
}

gsl_BBox BoundsOf(const Boxes& boxes) {
    gsl_BBox bounds;
    for (const gsl_BBox& box : boxes) bounds.Add(box);
    return bounds;
}

std::set<unsigned> ItemsOf(const omi_BlkBitVect& items) {
    std::set<unsigned> listed;
    for (const unsigned item : items) listed.insert(item);
    return listed;
}

/// The tree by its rules alone, node by node through the box measures, without any shortcut. Leaves
/// are refined where the boxes of the items are given.
struct ModelNode {
    gsl_BBox box;
    unsigned maxDepth = 10;
    const Boxes* itemBoxes = nullptr;
    unsigned depth = 0;
    std::set<unsigned> items = {};
    std::vector<ModelNode> children = {};

    std::vector<ModelNode> MakeChildren() const {
        std::vector<ModelNode> made;
        for (int index = 0; index < 8; ++index) {
            gsl_Point low, high;
            for (int axis = 0; axis < 3; ++axis) {
                const double half = (box.High()[axis] - box.Low()[axis]) * 0.5;
                const int upper = index >> (2 - axis) & 1;
                low[axis] = box.Low()[axis] + upper * half;
                high[axis] = box.Low()[axis] + (upper + 1) * half;
            }
            made.push_back({gsl_BBox(low, high), maxDepth, itemBoxes, depth + 1, items});
        }
        return made;
    }

    bool Classify(unsigned item, const gsl_BBox& itemBox, double tol, bool subdivide) {
        if (BoxBoxDistance(box, itemBox) > tol) {
            items.erase(item);
            return false;
        }
        const bool wasLeaf = children.empty();
        if (wasLeaf && subdivide && depth < std::min(maxDepth, 4u)) {
            const std::vector<ModelNode> made = MakeChildren();
            const bool split = std::any_of(made.begin(), made.end(), [&](const ModelNode& child) {
                return !child.box.Intersect(itemBox) || BoxBoxContainment(child.box, itemBox) > 0;
            });
            if (split) children = made;
        }
        if (!wasLeaf || children.empty()) items.insert(item);
        for (ModelNode& child : children) {
            child.Classify(item, itemBox, tol, subdivide && !wasLeaf);
        }
        return true;
    }

    void Query(const gsl_BBox& query, double tol, std::set<unsigned>& found) const {
        if (BoxBoxDistance(box, query) > tol) return;
        if (children.empty()) found.insert(items.begin(), items.end());
        for (const ModelNode& child : children) child.Query(query, tol, found);
    }

    void Refine(double tol) {
        if (!itemBoxes || items.size() <= 2) return;
        const std::set<unsigned> before = items;
        for (const unsigned item : before) Classify(item, (*itemBoxes)[item], tol, true);
    }

    bool Intersect(ModelNode& other, const gsl_Matrix& placeThis, const gsl_Matrix& placeOther,
                   Pairs& pairs, double tol) {
        if (items.empty() || other.items.empty()) return false;
        gsl_BBox placedThis = box;
        gsl_BBox placedOther = other.box;
        placedThis.Transform(placeThis);
        placedOther.Transform(placeOther);
        if (BoxBoxDistance(placedThis, placedOther) > tol) return false;
        const Pairs all = PairsWith(other);
        if (std::includes(pairs.begin(), pairs.end(), all.begin(), all.end())) return true;
        const bool wereLeaves = children.empty() && other.children.empty();
        if (wereLeaves && depth < maxDepth && other.depth < other.maxDepth) {
            Refine(tol);
            other.Refine(tol);
        }
        if (children.empty() && other.children.empty()) {
            pairs.merge(PairsWith(other));
        } else if (wereLeaves) {
            Intersect(other, placeThis, placeOther, pairs, tol);
        } else {
            const std::vector<ModelNode*> others = other.Parts();
            for (ModelNode* first : Parts()) {
                for (ModelNode* second : others) {
                    first->Intersect(*second, placeThis, placeOther, pairs, tol);
                }
            }
        }
        return true;
    }

    Pairs PairsWith(const ModelNode& other) const {
        Pairs all;
        for (const unsigned i : items) {
            for (const unsigned j : other.items) all.emplace(i, j);
        }
        return all;
    }

    /// The children, or the leaf itself, which may split while it is paired.
    std::vector<ModelNode*> Parts() {
        if (children.empty()) return {this};
        std::vector<ModelNode*> parts;
        for (ModelNode& child : children) parts.push_back(&child);
        return parts;
    }
};

void ExpectSame(const ModelNode& model, const gsl_OctreeBBox& node) {
    ASSERT_EQ(ItemsOf(node.Items()), model.items);
    ASSERT_EQ(node.Depth(), model.depth);
    for (int axis = 0; axis < 3; ++axis) {
        ASSERT_EQ(node.GetBox().Low()[axis], model.box.Low()[axis]);
        ASSERT_EQ(node.GetBox().High()[axis], model.box.High()[axis]);
    }
    ASSERT_EQ(node.IsLeaf(), model.children.empty());
    for (std::size_t k = 0; k < model.children.size(); ++k) {
        ASSERT_NO_FATAL_FAILURE(ExpectSame(model.children[k], node.Child(static_cast<int>(k))));
    }
}

Pairs Listed(const gsl_OctreeBBox::PairTable& table) {
    Pairs pairs;
    gsl_OctreeBBox::ForEachPair(table, [&](unsigned i, unsigned j) { pairs.emplace(i, j); });
    return pairs;
}

Pairs PairsOf(gsl_OctreeBBox& a, gsl_OctreeBBox& b, double tol) {
    gsl_OctreeBBox::PairTable table;
    a.Intersect(b, gsl_Matrix(), gsl_Matrix(), table, tol);
    const Pairs pairs = Listed(table);
    gsl_OctreeBBox::FreePairs(table);
    EXPECT_TRUE(table.IsEmpty());
    return pairs;
}

/// What the owner of the items does for the callback.
void GiveBox(void* user, unsigned item, gsl_BBox* box) {
    EXPECT_TRUE(box->IsEmpty());
    *box = (*static_cast<const Boxes*>(user))[item];
}

/// A tree over random boxes and its model, filled alike.
struct Twins {
    explicit Twins(test_Random& random)
        : boxes(RandomBoxes(random, 1 + static_cast<unsigned>(random.Below(90)), 3)),
          model{BoundsOf(boxes), static_cast<unsigned>(random.Below(7))},
          tree(model.box, &boxes, model.maxDepth, 0, false) {
        if (random.Below(2)) {
            model.itemBoxes = &boxes;
            tree.SetCallback(&GiveBox);
        }
        for (int pass = random.Below(3); pass >= 0; --pass) {
            subdividedLast = random.Below(2) == 0;
            for (unsigned i = 0; i < boxes.size(); ++i) {
                model.Classify(i, boxes[i], linTol, subdividedLast);
                tree.Classify(i, boxes[i], linTol, subdividedLast);
            }
        }
    }

    Boxes boxes;
    ModelNode model;
    gsl_OctreeBBox tree;
    bool subdividedLast = false;
};

TEST(gsl_OctreeBBox, ClassifiesAndFindsByTheRules) {
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE(seed);
        test_Random random(seed);
        const unsigned maxDepth = static_cast<unsigned>(random.Below(7));
        gsl_OctreeBBox tree(rootBox, nullptr, maxDepth, 0, false);
        ModelNode model{rootBox, maxDepth};
        const double tols[] = {0, 1e-6, 0.3, 2};
        for (int step = 0; step < 120; ++step) {
            const unsigned item = static_cast<unsigned>(random.Below(30)) * 17;
            const double sides[] = {0.1, 3, 40};
            gsl_BBox box = RandomBox(random, sides[random.Below(3)]);
            if (random.Below(20) == 0) box.Vacate();
            if (random.Below(10) == 0) box = CubeAt(4, 8, 0, 4);
            const double tol = tols[random.Below(4)];
            const bool subdivide = random.Below(2) == 0;
            ASSERT_EQ(tree.Classify(item, box, tol, subdivide),
                      model.Classify(item, box, tol, subdivide));
            if (step % 8 != 7) continue;
            ASSERT_NO_FATAL_FAILURE(ExpectSame(model, tree));
            const gsl_BBox query = RandomBox(random, 4);
            omi_BlkBitVect found;
            found.Set(1000);
            EXPECT_TRUE(tree.Intersect(query, tol, found));
            std::set<unsigned> expected = {1000};
            model.Query(query, tol, expected);
            ASSERT_EQ(ItemsOf(found), expected);
        }
    }
}

TEST(gsl_OctreeBBox, PairsAndRefinesByTheRulesAndLosesNoPair) {
    int nearPairs = 0;
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        test_Random random(seed);
        Twins a(random), b(random);
        gsl_Matrix placeA;
        const bool turned = random.Below(2) == 0;
        if (turned) placeA.AxisRotation(gsl_Vector(1, 2, 3), random.Between(-1, 1));
        gsl_Matrix placeB;
        placeB.SetTranslation(gsl_Vector(random.Between(-4, 4), random.Between(-4, 4), 3));
        gsl_OctreeBBox::PairTable table;
        Pairs expected;
        for (const double tol : {0.0, 2.0}) {
            EXPECT_EQ(a.tree.Intersect(b.tree, placeA, placeB, table, tol),
                      a.model.Intersect(b.model, placeA, placeB, expected, tol));
            EXPECT_EQ(Listed(table), expected);
        }
        gsl_OctreeBBox::FreePairs(table);
        ASSERT_NO_FATAL_FAILURE(ExpectSame(a.model, a.tree));
        ASSERT_NO_FATAL_FAILURE(ExpectSame(b.model, b.tree));
        // Only a last pass without subdivision puts every item into its leaves.
        if (a.subdividedLast || b.subdividedLast) continue;
        for (unsigned i = 0; i < a.boxes.size(); ++i) {
            // Of a turned box only its centre, since the box about a turned box is larger.
            gsl_BBox first = a.boxes[i];
            if (turned) first = gsl_BBox(first.Center(), first.Center());
            first.Transform(placeA);
            for (unsigned j = 0; j < b.boxes.size(); ++j) {
                gsl_BBox second = b.boxes[j];
                second.Transform(placeB);
                if (BoxBoxDistance(first, second) > 2.0 - 2 * linTol) continue;
                ASSERT_EQ(expected.count({i, j}), 1u) << i << ' ' << j;
                ++nearPairs;
            }
        }
    }
    EXPECT_GT(nearPairs, 30);
}

TEST(gsl_OctreeBBox_Kept, SubtreesBuiltByHandMayBeDeeperThanFour) {
    const gsl_OctreeBBox node(rootBox, nullptr, 10, 4, true);
    ASSERT_FALSE(node.IsLeaf());
    EXPECT_EQ(node.Child(0).Depth(), 5u);
    EXPECT_TRUE(node.Child(0).IsLeaf());
    EXPECT_TRUE(gsl_OctreeBBox(rootBox, nullptr, 4, 4, true).IsLeaf());
}

TEST(gsl_OctreeBBox_Kept, SplittingLeafLeavesItsOwnBitUnset) {
    gsl_OctreeBBox a(rootBox, nullptr, 10, 0, false);
    gsl_OctreeBBox b(rootBox, nullptr, 10, 0, false);
    const gsl_BBox item = CubeAt(1, 1, 1, 2);
    for (gsl_OctreeBBox* tree : {&a, &b}) tree->Classify(0, item, linTol, true);
    EXPECT_TRUE(a.Items().IsEmpty());
    EXPECT_TRUE(a.Child(0).Items().Test(0));
    gsl_OctreeBBox::PairTable pairs;
    EXPECT_FALSE(a.Intersect(b, gsl_Matrix(), gsl_Matrix(), pairs, 1));
    EXPECT_TRUE(pairs.IsEmpty());
    for (gsl_OctreeBBox* tree : {&a, &b}) tree->Classify(0, item, linTol, false);
    EXPECT_EQ(PairsOf(a, b, 1), (Pairs{{0, 0}}));
}

TEST(gsl_OctreeBBox_Kept, LeavesEndAtDepthFour) {
    gsl_OctreeBBox root(rootBox, nullptr, 10, 0, false);
    const gsl_BBox item = CubeAt(0.1, 0.1, 0.1, 0.01);
    for (unsigned call = 1; call <= 8; ++call) {
        root.Classify(0, item, linTol, true);
        const gsl_OctreeBBox* node = &root;
        while (!node->IsLeaf()) node = &node->Child(0);
        EXPECT_EQ(node->Depth(), std::min(call, 4u));
    }
}

TEST(gsl_OctreeBBox_Kept, RefinementNeedsBothDepthsBelowTheirMaximum) {
    Boxes boxes;
    for (int i = 0; i < 4; ++i) boxes.push_back(CubeAt(4 * i, 4 * i, 4 * i, 1));
    const auto count = [&boxes](unsigned maxDepth) {
        gsl_OctreeBBox shallow(rootBox, &boxes, maxDepth, 0, false);
        gsl_OctreeBBox roomy(rootBox, &boxes, 10, 0, false);
        for (gsl_OctreeBBox* tree : {&shallow, &roomy}) {
            tree->SetCallback(&GiveBox);
            for (unsigned i = 0; i < 4; ++i) tree->Classify(i, boxes[i], linTol, false);
        }
        return PairsOf(shallow, roomy, 0.1).size();
    };
    EXPECT_EQ(count(0), 16u);
    EXPECT_LT(count(5), 16u);
}

}  // namespace
