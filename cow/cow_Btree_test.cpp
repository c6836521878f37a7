#include "cow/cow_Btree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <string>
#include <vector>

#include "cow/cow_DetachCount.h"
#include "testing/test_Failures.h"
#include "testing/test_Random.h"

namespace {

template <class V = int>
cow_Btree<int, V> TreeOf(const std::vector<int>& keys) {
    cow_Btree<int, V> tree;
    for (const int key : keys) tree.InsertUnlessMember(key, V(key));
    return tree;
}

std::vector<int> Ascending(int n) {
    std::vector<int> keys(static_cast<std::size_t>(n));
    std::iota(keys.begin(), keys.end(), 0);
    return keys;
}

/// Compares with the model forwards and backwards, and every stored depth with the children's.
template <class V>
void ExpectHolds(const cow_Btree<int, V>& tree, const std::map<int, int>& model) {
    cow_BtreeIterator<int, V> walk(tree);
    for (const auto& [key, value] : model) {
        ASSERT_FALSE(walk.IsDone());
        EXPECT_EQ(walk.CurrentKey(), key);
        EXPECT_TRUE(walk.CurrentValue() == V(value));
        walk.Next();
    }
    EXPECT_TRUE(walk.IsDone());
    walk.Last();
    for (auto i = model.rbegin(); i != model.rend(); ++i, walk.Previous()) {
        ASSERT_FALSE(walk.IsDone());
        EXPECT_EQ(walk.CurrentKey(), i->first);
    }
    EXPECT_TRUE(walk.IsDone());
    std::vector<const cow_BtreeNode<int, V>*> nodes(1, tree.Root());
    while (!nodes.empty()) {
        const auto* node = nodes.back();
        nodes.pop_back();
        if (!node) continue;
        const auto* left = node->left.ConstGet();
        const auto* right = node->right.ConstGet();
        EXPECT_EQ(node->depth, std::max(left ? left->depth + 1 : 0, right ? right->depth + 1 : 0));
        nodes.push_back(left);
        nodes.push_back(right);
    }
}

TEST(cow_Btree, EqualsAMapUnderRandomInsertions) {
    const test_NothingLeft nothingLeft;
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        test_Random random(seed);
        std::vector<cow_Btree<int, int>> trees(3);
        std::vector<std::map<int, int>> models(3);
        for (int step = 0; step < 300; ++step) {
            const std::size_t target = static_cast<std::size_t>(random.Below(3));
            const std::size_t other = static_cast<std::size_t>(random.Below(3));
            const int key = random.Below(200) - 100;
            const bool isNew = models[target].emplace(key, step).second;
            EXPECT_EQ(trees[target].InsertUnlessMember(key, step), isNew);
            if (random.Below(10) == 0) {
                trees[target] = trees[other].Copy();
                models[target] = std::map<int, int>(models[other]);
            } else {
                trees[target].Get(key) = -step;
                models[target][key] = -step;
            }
            for (std::size_t i = 0; i < 3; ++i) ExpectHolds(trees[i], models[i]);
        }
    }
}

TEST(cow_Btree, StaysShallowForOrderedAndRandomKeys) {
    constexpr int n = 4095;
    const std::vector<int> ascending = Ascending(n);
    std::vector<int> shuffled = ascending, outsideIn;
    test_Random random(3);
    for (int i = n; i > 1; --i) {
        std::swap(shuffled[static_cast<std::size_t>(i - 1)],
                  shuffled[static_cast<std::size_t>(random.Below(i))]);
    }
    for (int i = 0; i < n; ++i) outsideIn.push_back(i % 2 == 0 ? i / 2 : n - 1 - i / 2);
    std::vector<int> insideOut(outsideIn.rbegin(), outsideIn.rend());
    for (const auto& keys : {ascending, shuffled, outsideIn, insideOut}) {
        EXPECT_LE(TreeOf(keys).Depth(), 16);
    }
}

TEST(cow_Btree, AWriteCopiesOnlyThePath) {
    const cow_Btree<int, int> tree = TreeOf(Ascending(1000));
    cow_Btree<int, int> copy(tree);
    cow_ResetDetachCounts();
    EXPECT_FALSE(copy.InsertUnlessMember(500, -1));
    EXPECT_EQ(copy.Find(5000), nullptr);
    EXPECT_EQ(cow_DetachCounts().detaches, 0);
    EXPECT_TRUE(copy.InsertUnlessMember(1000, 1000));
    EXPECT_LE(cow_DetachCounts().copiedElements, 14);
    EXPECT_FALSE(tree.IsMember(1000));
    EXPECT_EQ(&tree.ConstGet(3), &copy.ConstGet(3));
    EXPECT_EQ(copy.ConstGet(500), 500);
}

TEST(cow_Btree, AbsentKeysReadAsTheNullValue) {
    cow_Btree<int, std::string> tree;
    tree.InsertUnlessMember(1, "one");
    EXPECT_EQ(tree.ConstGet(2), "");
    tree.Get(2) = "scratch";
    EXPECT_EQ(tree.Get(3), "");
    EXPECT_FALSE(tree.IsMember(2));
    EXPECT_EQ((cow_Btree<int, int>().Depth()), 0);
}

TEST(cow_Btree, StringsOrderByUnsignedBytes) {
    cow_Btree<cow_String, int> tree;
    for (const char* key : {"b", "\xC3\xA9", "", "a", "ab"}) tree.InsertUnlessMember(key, 0);
    const cow_List<cow_String> keys = cow_BtreeUtils<cow_String, int>::cow_Keys(tree);
    const std::vector<cow_String> expected = {"", "a", "ab", "b", "\xC3\xA9"};
    EXPECT_TRUE(std::equal(keys.begin(), keys.end(), expected.begin(), expected.end()));
    EXPECT_EQ((cow_BtreeUtils<cow_String, int>::cow_Values(tree).Length()), 5);
}

TEST(cow_Btree, FailuresLeaveWholeTrees) {
    const test_NothingLeft nothingLeft;
    const auto tree = TreeOf<test_ThrowingElement>(Ascending(40));
    std::map<int, int> model;
    for (int key = 0; key < 40; ++key) model[key] = key;
    for (const auto what : {test_Failing::kCopies, test_Failing::kRequests}) {
        bool hasFailed = true;
        for (int n = 1; hasFailed; ++n) {
            ASSERT_LT(n, 200);
            cow_Btree<int, test_ThrowingElement> written(tree);
            hasFailed = test_Fails(
                what, n, [&written] { written.InsertUnlessMember(40, test_ThrowingElement(40)); });
            std::map<int, int> writtenModel(model);
            if (written.IsMember(40)) writtenModel[40] = 40;
            EXPECT_TRUE(hasFailed || written.IsMember(40));
            ExpectHolds(written, writtenModel);
            ExpectHolds(tree, model);
        }
    }
}

TEST(cow_Btree_Kept, AnAbsentChildWeighsLikeALeaf) {
    cow_Btree<int, int> tree = TreeOf({1, 2, 3});
    EXPECT_EQ(tree.Root()->key, 1);
    EXPECT_EQ(tree.Root()->right->key, 2);
    EXPECT_EQ(tree.Root()->right->right->key, 3);
    EXPECT_EQ(tree.Depth(), 2);
    tree.InsertUnlessMember(4, 4);
    EXPECT_EQ(tree.Root()->key, 2);
    EXPECT_EQ(tree.Root()->left->key, 1);
    EXPECT_EQ(tree.Root()->right->right->key, 4);
    EXPECT_EQ(tree.Depth(), 2);
}

TEST(cow_BtreeCompare_Kept, IntegersAreSubtractedIn32Bits) {
    EXPECT_LT(cow_BtreeCompare(2, 1), 0);
    EXPECT_GT(cow_BtreeCompare(1, 2), 0);
    EXPECT_EQ(cow_BtreeCompare(7, 7), 0);
    EXPECT_LT(cow_BtreeCompare(-2000000000, 2000000000), 0);
    const cow_Btree<int, int> tree = TreeOf({-2000000000, 2000000000});
    EXPECT_EQ((cow_BtreeIterator<int, int>(tree).CurrentKey()), 2000000000);
}

}  // namespace
