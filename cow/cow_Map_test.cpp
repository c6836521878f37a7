#include "cow/cow_Map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "cow/cow_DetachCount.h"
#include "cow/cow_MapLoader.h"
#include "testing/test_Failures.h"
#include "testing/test_Random.h"

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

/// The trie as plainly as it can be written: each entry under its path from the root, a digit a
/// level, whose order is that of the iteration. Removal copies entries one place up.
template <class K>
struct PlainTrie {
    std::map<std::string, std::pair<K, int>> entries;

    [[nodiscard]] std::string PathOf(const K& key) const {
        std::string path;
        for (auto at = entries.find(path); at != entries.end(); at = entries.find(path)) {
            if (at->second.first == key) break;
            path += BitOf(key, static_cast<int>(path.size())) == 0 ? '0' : '1';
        }
        return path;
    }
    void Insert(const K& key, int value) { entries[PathOf(key)] = {key, value}; }
    void Remove(const K& key) {
        std::string path = PathOf(key);
        for (;;) {
            const std::string below = path + (entries.contains(path + '1') ? '1' : '0');
            if (!entries.contains(below)) break;
            entries[path] = entries[below];
            path = below;
        }
        entries.erase(path);
    }
};

template <class K, class Plain>
bool HoldsInOrder(const cow_Map<K, int>& map, const PlainTrie<Plain>& plain) {
    auto expected = plain.entries.begin();
    for (const auto [key, value] : map) {
        if (expected == plain.entries.end()) return false;
        const auto& [path, entry] = *expected++;
        if (!(key == K(entry.first)) || value != entry.second) return false;
    }
    return expected == plain.entries.end() && map.Size() == static_cast<int>(plain.entries.size());
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

/// A map beside the trie of its shape and the map of its content.
template <class K, class Plain>
struct Compared {
    cow_Map<K, int> map;
    PlainTrie<Plain> plain;
    std::map<Plain, int> model;

    void NoteInModels(const Plain& key, int value) {
        plain.Insert(key, value);
        model[key] = value;
    }
    void ChangeSomehow(test_Random& random, const Plain& key, int step, const Compared& other) {
        const bool present = model.contains(key);
        EXPECT_EQ(map.IsMember(K(key)), present);
        const int operation = random.Below(100);
        if (operation < 50) {
            map.Insert(K(key), step);
            NoteInModels(key, step);
        } else if (operation < 75) {
            EXPECT_EQ(map.Remove(K(key)), present);
            if (present) plain.Remove(key);
            model.erase(key);
        } else if (operation < 90 && present) {
            EXPECT_EQ(map.ConstGet(K(key)), model[key]);
            map.Get(K(key)) = -step;
            NoteInModels(key, -step);
        } else if (operation < 98) {
            *this = Compared(other);
        } else if (operation == 99) {
            map.Clear();
            plain = {};
            model.clear();
        }
    }
};

template <class K, class Plain>
void CompareUnderRandomOperations(Plain (*makeKey)(test_Random&), std::uint64_t seed) {
    test_Random random(seed);
    std::array<Compared<K, Plain>, 3> all;
    for (int step = 0; step < 1500; ++step) {
        auto& target = all[static_cast<std::size_t>(random.Below(3))];
        const auto& other = all[static_cast<std::size_t>(random.Below(3))];
        const Plain key = makeKey(random);
        target.ChangeSomehow(random, key, step, other);
        for (const auto& compared : all) {
            ASSERT_TRUE(HoldsInOrder(compared.map, compared.plain))
                << "seed " << seed << " step " << step;
        }
    }
}

TEST(cow_Map, HasTheShapeOfThePlainTrieUnderRandomOperations) {
    const test_NothingLeft nothingLeft;
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        CompareUnderRandomOperations<int, int>(IntKey, seed);
        CompareUnderRandomOperations<cow_String, std::string>(StringKey, seed);
    }
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

using ThrowingMap = cow_Map<int, test_ThrowingElement>;

/// Expects the keys `first` to 63, each with itself as the value.
void ExpectNumbers(const ThrowingMap& map, int first) {
    EXPECT_EQ(map.Size(), 64 - first);
    for (int key = first; key < 64; ++key) EXPECT_EQ(map.ConstGet(key).Value(), key);
}

TEST(cow_Map, FailuresLeaveTheMapAsItWas) {
    const test_NothingLeft nothingLeft;
    ThrowingMap map;
    for (int key = 0; key < 64; ++key) map.Insert(key, test_ThrowingElement(key));
    const ThrowingMap copy(map);
    for (const auto what : {test_Failing::kCopies, test_Failing::kRequests}) {
        for (const bool insert : {false, true}) {
            bool hasFailed = true;
            for (int n = 1; hasFailed; ++n) {
                ASSERT_LT(n, 200);
                ThrowingMap written(map);
                hasFailed = test_Fails(what, n, [&] {
                    insert ? written.Insert(64, test_ThrowingElement()) : written.Remove(0);
                });
                if (hasFailed) {
                    ExpectNumbers(written, 0);
                } else {
                    EXPECT_EQ(written.Size(), insert ? 65 : 63);
                }
                ExpectNumbers(copy, 0);
            }
        }
    }
}

TEST(cow_Map, RemovingMovesNodesAndCopiesNoEntry) {
    ThrowingMap map;
    for (int key = 0; key < 64; ++key) map.Insert(key, test_ThrowingElement(key));
    EXPECT_FALSE(test_Fails(test_Failing::kCopies, 1, [&map] { map.Remove(0); }));
    ExpectNumbers(map, 1);
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

TEST(cow_Map, ChainsOf100000EntriesNeedNoStack) {
    const test_NothingLeft nothingLeft;
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

TEST(cow_MapLoader, RebuildsAMapFromItsOwnOrderWithoutSteps) {
    test_Random random(7);
    cow_Map<cow_String, int> map;
    PlainTrie<std::string> plain;
    for (int i = 0; i < 2000; ++i) {
        const std::string key = StringKey(random) + StringKey(random) + StringKey(random);
        map.Insert(cow_String(key), i);
        plain.Insert(key, i);
    }
    cow_MapLoader<cow_String, int> loader(0);
    for (const auto [key, value] : map) EXPECT_TRUE(loader.Insert(key, value));
    EXPECT_TRUE(HoldsInOrder(loader.Take(), plain));
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
    cow_MapLoader<cow_String, int> loader(20000);
    int taken = 0;
    for (const cow_String& key : ChainKeys(1000)) {
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
