#include "cow/cow_Map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "cow/cow_DetachCount.h"
#include "cow/cow_MapLoader.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_Random.h"
#include "testing/test_ThrowingElement.h"

namespace {

int BitOf(int key, int depth) {
    return depth < 32 ? static_cast<int>(static_cast<unsigned>(key) >> depth & 1u) : 0;
}

int BitOf(const std::string& key, int depth) {
    const int length = static_cast<int>(key.size());
    if (depth > length) return 0;
    const int index = depth % 2 == 0 ? depth / 2 : length - depth / 2 - 1;
    return key.c_str()[index] & 1;
}

/// The trie as plainly as it can be written: nodes in a vector, entries copied one place up on
/// removal. It fixes the shape, and so the order of iteration.
template <class K>
class PlainTrie {
  public:
    void Insert(const K& key, int value) {
        int* link = &root;
        for (int depth = 0; *link >= 0; ++depth) {
            Node& node = nodes[static_cast<std::size_t>(*link)];
            if (node.key == key) {
                node.value = value;
                return;
            }
            link = &node.child[static_cast<std::size_t>(BitOf(key, depth))];
        }
        *link = static_cast<int>(nodes.size());
        nodes.push_back({key, value, {-1, -1}});
    }
    void Remove(const K& key) {
        int* link = &root;
        for (int depth = 0; nodes[static_cast<std::size_t>(*link)].key != key; ++depth) {
            link = &nodes[static_cast<std::size_t>(*link)]
                        .child[static_cast<std::size_t>(BitOf(key, depth))];
        }
        for (;;) {
            Node& node = nodes[static_cast<std::size_t>(*link)];
            const std::size_t side = node.child[1] >= 0 ? 1 : 0;
            if (node.child[side] < 0) break;
            const Node& below = nodes[static_cast<std::size_t>(node.child[side])];
            node.key = below.key;
            node.value = below.value;
            link = &node.child[side];
        }
        *link = -1;
    }
    [[nodiscard]] std::vector<std::pair<K, int>> Entries() const {
        std::vector<std::pair<K, int>> entries;
        Visit(root, entries);
        return entries;
    }

  private:
    struct Node {
        K key;
        int value;
        std::array<int, 2> child;
    };
    void Visit(int node, std::vector<std::pair<K, int>>& entries) const {
        if (node < 0) return;
        const Node& n = nodes[static_cast<std::size_t>(node)];
        entries.emplace_back(n.key, n.value);
        Visit(n.child[0], entries);
        Visit(n.child[1], entries);
    }
    std::vector<Node> nodes;
    int root = -1;
};

template <class K>
std::string Text(const K& key) {
    if constexpr (std::is_same_v<K, cow_String>) {
        return std::string(key.View());
    } else {
        return std::to_string(key);
    }
}

template <class K, class Plain>
::testing::AssertionResult HoldsInOrder(const cow_Map<K, int>& map, const PlainTrie<Plain>& plain) {
    const auto expected = plain.Entries();
    std::size_t i = 0;
    for (const auto [key, value] : map) {
        if (i == expected.size() || !(key == K(expected[i].first)) || value != expected[i].second) {
            return ::testing::AssertionFailure() << "entry " << i << " is " << Text(key);
        }
        ++i;
    }
    if (i != expected.size() || map.Size() != static_cast<int>(i)) {
        return ::testing::AssertionFailure() << i << " entries, size " << map.Size();
    }
    return ::testing::AssertionSuccess();
}

int IntKey(test_Random& random) {
    const int n = random.Below(60);
    return n < 40 ? n : static_cast<int>(0x80000000u >> (n - 40));
}

std::string StringKey(test_Random& random) {
    std::string key;
    for (int n = random.Below(4); n > 0; --n) key += "abdfh"[random.Below(5)];
    return key;
}

template <class K, class Plain>
void CompareUnderRandomOperations(Plain (*makeKey)(test_Random&), std::uint64_t seed) {
    test_Random random(seed);
    std::vector<cow_Map<K, int>> maps(3);
    std::vector<PlainTrie<Plain>> plain(3);
    std::vector<std::map<Plain, int>> models(3);
    for (int step = 0; step < 1500; ++step) {
        const std::size_t target = static_cast<std::size_t>(random.Below(3));
        const std::size_t other = static_cast<std::size_t>(random.Below(3));
        const Plain key = makeKey(random);
        const bool present = models[target].count(key) > 0;
        EXPECT_EQ(maps[target].IsMember(K(key)), present);
        const int operation = random.Below(100);
        if (operation < 50) {
            maps[target].Insert(K(key), step);
            plain[target].Insert(key, step);
            models[target][key] = step;
        } else if (operation < 75) {
            EXPECT_EQ(maps[target].Remove(K(key)), present);
            if (present) plain[target].Remove(key);
            models[target].erase(key);
        } else if (operation < 90 && present) {
            EXPECT_EQ(maps[target].ConstGet(K(key)), models[target][key]);
            maps[target].Get(K(key)) = -step;
            plain[target].Insert(key, -step);
            models[target][key] = -step;
        } else if (operation < 98) {
            maps[target] = maps[other];
            plain[target] = PlainTrie<Plain>(plain[other]);
            models[target] = std::map<Plain, int>(models[other]);
        } else if (operation == 99) {
            maps[target].Clear();
            plain[target] = {};
            models[target].clear();
        }
        for (std::size_t i = 0; i < 3; ++i) {
            ASSERT_TRUE(HoldsInOrder(maps[i], plain[i])) << "seed " << seed << " step " << step;
        }
    }
}

TEST(cow_Map, HasTheShapeOfThePlainTrieUnderRandomOperations) {
    const std::size_t before = mem_LiveBlocks();
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        CompareUnderRandomOperations<int, int>(IntKey, seed);
        CompareUnderRandomOperations<cow_String, std::string>(StringKey, seed);
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(cow_Map, AWriteCopiesOnlyThePath) {
    cow_Map<int, int> map;
    for (int key = 0; key < 1000; ++key) map.Insert(key, key);
    cow_Map<int, int> copy(map);
    EXPECT_EQ(&copy.ConstGet(7), &map.ConstGet(7));
    cow_ResetDetachCounts();
    copy.Get(7) = 70;
    EXPECT_LE(cow_DetachCounts().copiedElements, 11);
    EXPECT_EQ(map.ConstGet(7), 7);
    EXPECT_EQ(copy.ConstGet(7), 70);
    EXPECT_EQ(&copy.ConstGet(8), &map.ConstGet(8));
    cow_ResetDetachCounts();
    EXPECT_FALSE(copy.Remove(5000));
    EXPECT_EQ(cow_DetachCounts().detaches, 0);
}

TEST(cow_Map, RemovingMovesNodesAndCopiesNoEntry) {
    cow_Map<int, test_ThrowingElement> map;
    for (int key = 0; key < 64; ++key) map.Insert(key, test_ThrowingElement(key));
    test_ThrowingElement::FailCopy(1);
    EXPECT_TRUE(map.Remove(0));
    test_ThrowingElement::FailCopy(0);
    EXPECT_EQ(map.Size(), 63);
    for (int key = 1; key < 64; ++key) EXPECT_EQ(map.ConstGet(key).Value(), key);
}

TEST(cow_Map, FailuresLeaveTheMapAsItWas) {
    const std::size_t before = mem_LiveBlocks();
    for (int n = 1;; ++n) {
        ASSERT_LT(n, 200);
        cow_Map<int, test_ThrowingElement> map;
        for (int key = 0; key < 64; ++key) map.Insert(key, test_ThrowingElement(key));
        const cow_Map<int, test_ThrowingElement> copy(map);
        int failures = 0;
        for (const bool failAllocator : {false, true}) {
            for (const bool insert : {false, true}) {
                cow_Map<int, test_ThrowingElement> written(map);
                try {
                    const test_FailingAllocator failing(failAllocator ? n : 0);
                    test_ThrowingElement::FailCopy(failAllocator ? 0 : n);
                    insert ? written.Insert(64, test_ThrowingElement()) : written.Remove(0);
                    test_ThrowingElement::FailCopy(0);
                    EXPECT_EQ(written.Size(), insert ? 65 : 63);
                } catch (const std::exception&) {
                    ++failures;
                    EXPECT_EQ(written.Size(), 64);
                    for (int key = 0; key < 64; ++key) {
                        EXPECT_EQ(written.ConstGet(key).Value(), key);
                    }
                }
                for (int key = 0; key < 64; ++key) EXPECT_EQ(copy.ConstGet(key).Value(), key);
            }
        }
        if (failures == 0) break;
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
    EXPECT_EQ(test_ThrowingElement::Live(), 0);
    EXPECT_EQ(test_ThrowingElement::Faults(), 0);
}

/// Keys of which every bit is 0, so that they form one chain.
std::vector<cow_String> ChainKeys(int n) {
    std::vector<cow_String> keys;
    for (int i = 0; i < n; ++i) {
        std::string key;
        for (int rest = i, k = 0; k < 9; ++k, rest /= 4) key += "bdfh"[rest % 4];
        keys.push_back(cow_String(key));
    }
    return keys;
}

template <class K>
cow_Map<K, int> Loaded(const cow_Map<K, int>& source, std::int64_t budget, bool& complete) {
    cow_MapLoader<K, int> loader(budget);
    complete = true;
    for (const auto [key, value] : source) complete = complete && loader.Insert(key, value);
    return loader.Take();
}

TEST(cow_Map, ChainsOf100000EntriesNeedNoStack) {
    const std::size_t before = mem_LiveBlocks();
    {
        cow_MapLoader<cow_String, int> loader(0);
        int next = 0;
        for (const cow_String& key : ChainKeys(100000)) ASSERT_TRUE(loader.Insert(key, next++));
        cow_Map<cow_String, int> map = loader.Take();
        cow_Map<cow_String, int> copy(map);
        copy.Insert("bbbbbbbbb", -1);
        next = 0;
        for (const auto [key, value] : map) EXPECT_EQ(value, next++);
        EXPECT_TRUE(copy.Remove("dbbbbbbbb"));
        EXPECT_EQ(copy.Size(), 99999);
        EXPECT_EQ(map.Size(), 100000);
        map = cow_Map<cow_String, int>();
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(cow_MapLoader, RebuildsAMapFromItsOwnOrderWithoutSteps) {
    test_Random random(7);
    cow_Map<cow_String, int> map;
    PlainTrie<std::string> plain;
    for (int i = 0; i < 2000; ++i) {
        const std::string key = StringKey(random) + StringKey(random) + StringKey(random);
        map.Insert(cow_String(key), i);
        plain.Insert(key, i);
    }
    bool complete = false;
    EXPECT_TRUE(HoldsInOrder(Loaded(map, 0, complete), plain));
    EXPECT_TRUE(complete);
}

TEST(cow_MapLoader, TakesAnyOrderAndRepeatedKeys) {
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        test_Random random(seed);
        cow_MapLoader<cow_String, int> loader(1000000);
        cow_MapLoader<int, int> intLoader(0);
        PlainTrie<std::string> plain;
        PlainTrie<int> intPlain;
        for (int i = 0; i < 3000; ++i) {
            const std::string key = StringKey(random) + StringKey(random);
            ASSERT_TRUE(loader.Insert(cow_String(key), i));
            plain.Insert(key, i);
            const int intKey = IntKey(random);
            ASSERT_TRUE(intLoader.Insert(intKey, i));
            intPlain.Insert(intKey, i);
        }
        EXPECT_TRUE(HoldsInOrder(loader.Take(), plain)) << "seed " << seed;
        EXPECT_TRUE(HoldsInOrder(intLoader.Take(), intPlain)) << "seed " << seed;
        EXPECT_EQ(loader.Take().Size(), 0);
    }
}

TEST(cow_MapLoader, GivesUpWhenTheStepsAreUsedUp) {
    // "a" leaves the chain at the root; every key behind it then goes down the chain again.
    std::vector<cow_String> keys = ChainKeys(1000);
    cow_MapLoader<cow_String, int> loader(20000);
    int taken = 0;
    for (const cow_String& key : keys) {
        const bool aside = loader.Insert(cow_String("a" + std::to_string(taken)), 0);
        if (!aside || !loader.Insert(key, taken)) break;
        ++taken;
    }
    EXPECT_GT(taken, 100);
    EXPECT_LT(taken, 400);
    EXPECT_FALSE(loader.Insert("bbbbbbbbz", 1));
}

TEST(cow_MapUtils, ListsFollowTheIteration) {
    cow_Map<int, int> map;
    for (const int key : {4, 1, 2, 3, 6}) map.Insert(key, 10 * key);
    const std::vector<int> keys = {4, 2, 6, 1, 3};
    const cow_List<int> listed = cow_MapUtils<int, int>::cow_Keys(map);
    EXPECT_TRUE(std::equal(listed.begin(), listed.end(), keys.begin(), keys.end()));
    EXPECT_EQ((cow_MapUtils<int, int>::cow_Values(map).Last()), 30);
    cow_ConstMapIterator<int, int> walk(map);
    map.Clear();
    for (int i = 0; i < 5; ++i, walk.Next()) {
        EXPECT_EQ(walk.CurrentKey(), keys[static_cast<std::size_t>(i)]);
    }
    EXPECT_TRUE(walk.IsDone());
    walk.Next();
    EXPECT_TRUE(walk.IsDone());
}

TEST(cow_Map, AnAbsentKeyEndsTheProcess) {
    cow_Map<int, int> map;
    map.Insert(1, 1);
    EXPECT_DEATH(static_cast<void>(map.Get(2)), "^$");
    EXPECT_DEATH(static_cast<void>(map.ConstGet(2)), "^$");
}

TEST(cow_Map_Kept, InsertIsAlwaysTrue) {
    cow_Map<int, int> map;
    EXPECT_TRUE(map.Insert(1, 10));
    EXPECT_TRUE(map.Insert(1, 11));
    EXPECT_EQ(map.Size(), 1);
    EXPECT_EQ(map.ConstGet(1), 11);
}

TEST(cow_KeyPath_Kept, StringsEndAtTheirFirstZero) {
    cow_Map<cow_String, int> map;
    map.Insert(cow_String(std::string_view("ab\0cd", 5)), 1);
    map.Insert(cow_String(std::string_view("ab\0ef", 5)), 2);
    EXPECT_EQ(map.Size(), 1);
    EXPECT_EQ(map.ConstGet("ab"), 2);
}

}  // namespace
