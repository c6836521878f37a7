#include "foundation/coreutils/omi_IntTable.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <new>
#include <set>
#include <string>

#include "foundation/coreutils/omi_IntSet.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_Random.h"

namespace {

constexpr int edgeKeys[] = {0, 1, -1, INT_MAX, -INT_MAX, INT_MIN};

int DrawKey(test_Random& random) {
    const int near = random.Below(300) - 150;
    const auto any = static_cast<unsigned>(random.Next());
    return random.Below(5) == 0   ? edgeKeys[random.Below(6)]
           : random.Below(3) == 0 ? static_cast<int>(any)
                                  : near;
}

TEST(omi_IntTable, FollowsAMapThroughRandomInsertions) {
    test_Random random(7);
    omi_IntTable<std::string> table;
    std::map<int, std::string> model;
    for (int step = 0; step < 3000; ++step) {
        const int key = DrawKey(random);
        ASSERT_EQ(table.IsMember(key), model.count(key) == 1) << key;
        const std::string value = "value " + std::to_string(step);
        ASSERT_EQ(table.Insert(key, value), model.count(key) == 0) << key;
        model[key] = value;
        ASSERT_EQ(*table.Get(key), value);
    }
    ASSERT_EQ(table.Size(), model.size());
    const omi_IntTable<std::string> copy = table;
    table.Clear();
    EXPECT_TRUE(table.IsEmpty());
    EXPECT_EQ(table.Get(0), nullptr);
    std::map<int, std::string> walked;
    for (const auto& [key, value] : copy) walked[key] = value;
    EXPECT_EQ(walked, model);
}

TEST(omi_IntTable, WalksInTheOrderOfInsertionAndNegativeKeysLast) {
    omi_IntTable<int> table;
    for (const int key : {-5, 9, INT_MIN, 3, 9, -1, 1 << 30}) table.Insert(key, key);
    std::vector<int> keys;
    for (const auto& entry : table) keys.push_back(entry.key);
    EXPECT_EQ(keys, (std::vector<int>{9, 3, 1 << 30, -5, INT_MIN, -1}));
}

TEST(omi_IntTable, IsUnchangedWhenMemoryRunsOut) {
    omi_IntTable<int> table;
    int key = 0;
    mem_FailureHook const none = mem_SetFailureHook([](std::size_t bytes) { return bytes > 400; });
    EXPECT_THROW(for (;; ++key) table.Insert(key, key), std::bad_alloc);
    mem_SetFailureHook(none);
    EXPECT_EQ(table.Size(), static_cast<std::size_t>(key));
    EXPECT_FALSE(table.IsMember(key));
    EXPECT_TRUE(table.Insert(key, key));
    for (int known = 0; known <= key; ++known) ASSERT_EQ(*table.Get(known), known);
}

TEST(omi_IntSet, FollowsASetOfInts) {
    test_Random random(11);
    omi_IntSet keys;
    std::set<int> model;
    const auto insertRow = [&](std::initializer_list<unsigned> numbers) {
        omi_BlkBitVect row;
        for (const unsigned number : numbers) {
            row.Set(number);
            model.insert(static_cast<int>(number));
        }
        keys.Insert(row);
        EXPECT_TRUE(keys.Contains(row));
        row.Set(77777);
        EXPECT_FALSE(keys.Contains(row));
    };
    for (int step = 0; step < 500; ++step) {
        const int key = DrawKey(random);
        ASSERT_EQ(keys.IsMember(key), model.count(key) == 1) << key;
        keys.Insert(key);
        model.insert(key);
    }
    insertRow({5, 6, 1000});
    insertRow({8, 0x7fffffffu, 0x80000000u, 0xffffff00u, 0xffffffffu});
    std::set<int> walked;
    keys.ForEach([&](int key) { walked.insert(key); });
    EXPECT_EQ(walked, model);
    EXPECT_EQ(keys.Size(), model.size());
    keys.Clear();
    EXPECT_TRUE(keys.IsEmpty());
}

}  // namespace
