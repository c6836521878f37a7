#include "omu/omu_PrimDictionary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimWrapper.h"
#include "omu/omu_TypeErrorException.h"
#include "testing/test_Random.h"

namespace {

template <class Key>
Key KeyOf(int number) {
    if constexpr (std::is_same_v<Key, int>) {
        return number - 10;
    } else {
        return std::string_view("key" + std::to_string(number));
    }
}

template <class Key>
class omu_PrimDictionaryTest : public testing::Test {};
using Keys = testing::Types<int, cow_String>;
TYPED_TEST_SUITE(omu_PrimDictionaryTest, Keys);

// Against a vector of pairs, with copies taken on the way that later changes must not reach.
TYPED_TEST(omu_PrimDictionaryTest, KeepsTheOrderOfInsertionThroughAnyChanges) {
    using Dictionary = omu_PrimDictionary<TypeParam>;
    using Model = std::vector<std::pair<TypeParam, int>>;
    const auto check = [](const Dictionary& dictionary, const Model& model) {
        ASSERT_EQ(dictionary.Length(), static_cast<int>(model.size()));
        EXPECT_EQ(dictionary.Nesting().nodes, static_cast<std::int64_t>(model.size()) + 1);
        for (int i = 0; i < dictionary.Length(); ++i) {
            const auto& [key, value] = model[static_cast<std::size_t>(i)];
            EXPECT_EQ(dictionary.ConstGetKey(i), key);
            EXPECT_TRUE(dictionary.ConstGetValue(i) == omu_PrimNumber(value));
            ASSERT_NE(dictionary.Find(key), nullptr);
            EXPECT_TRUE(*dictionary.Find(key) == omu_PrimNumber(value));
        }
    };
    test_Random random(20);
    Dictionary dictionary;
    Model model;
    std::vector<std::pair<Dictionary, Model>> copies;
    for (int step = 0; step < 600; ++step) {
        const TypeParam key = KeyOf<TypeParam>(random.Below(20));
        const auto place = std::ranges::find(model, key, &Model::value_type::first);
        ASSERT_EQ(dictionary.IsMember(key), place != model.end());
        if (random.Below(3) == 0) {
            ASSERT_EQ(dictionary.Remove(key), place != model.end());
            if (place != model.end()) model.erase(place);
        } else {
            dictionary.Insert(key, omu_PrimNumber(step));
            if (place != model.end()) {
                place->second = step;
            } else {
                model.emplace_back(key, step);
            }
        }
        if (step % 50 == 0) copies.emplace_back(dictionary, model);
        check(dictionary, model);
    }
    for (const auto& [copy, copiedModel] : copies) check(copy, copiedModel);
    dictionary.Clear();
    EXPECT_EQ(dictionary.AsString(0), "{}");
}

TEST(omu_PrimDictionary, EqualityIgnoresTheOrder) {
    omu_PrimStringDictionary a;
    omu_PrimStringDictionary b;
    for (int i = 0; i < 12; ++i) a.Insert(KeyOf<cow_String>(i), omu_PrimNumber(i));
    for (int i = 11; i >= 0; --i) b.Insert(KeyOf<cow_String>(i), omu_PrimNumber(i * 1.0));
    EXPECT_TRUE(a == b);
    b.Insert("key3", omu_PrimNumber(4));
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(omu_PrimStringDictionary() == omu_PrimIntDictionary());
    EXPECT_EQ(a.Keys().Length(), 12);
    EXPECT_EQ(a.Keys()[11], "key11");
}

TEST(omu_PrimDictionary, AdoptsOrRefuses) {
    omu_PrimIntDictionary dictionary;
    dictionary.Insert(1, new omu_PrimNumber(5));
    EXPECT_THROW(dictionary.Insert(2, static_cast<omu_Primitive*>(nullptr)),
                 omu_GenericTypeErrorException);
    EXPECT_EQ(dictionary.AsString(0), "{1: 5}");
}

TEST(omu_PrimDictionary, NestingIsBoundedAndCounted) {
    omu_PrimIntDictionary outer;
    for (int depth = 2; depth <= omu_PrimNesting::kMaxDepth; ++depth) {
        omu_PrimIntDictionary next;
        next.Insert(0, outer);
        outer = next;
    }
    EXPECT_EQ(outer.Nesting().depth, 256);
    EXPECT_EQ(outer.Nesting().nodes, 256);
    EXPECT_EQ(outer.AsString(0).Length(), 256 * 2 + 255 * 3);
    EXPECT_TRUE(outer == *std::unique_ptr<omu_Primitive>(outer.Copy()));
    omu_PrimIntDictionary refused;
    refused.Insert(7, omu_PrimNumber(7));
    EXPECT_THROW(refused.Insert(0, outer), omu_ValueErrorException);
    EXPECT_THROW(refused.Insert(7, outer), omu_ValueErrorException);
    EXPECT_EQ(refused.AsString(0), "{7: 7}");
    EXPECT_EQ(refused.Nesting().depth, 1);

    omu_PrimStringDictionary members;
    members.Insert("deep", *static_cast<const omu_PrimIntDictionary*>(outer.Find(0)));
    EXPECT_EQ(members.Nesting().depth, 256);
    EXPECT_THROW(omu_PrimWrapper(nullptr, 0, members), omu_ValueErrorException);
    members.Insert("deep", omu_PrimNumber(1));
    EXPECT_EQ(members.Nesting().depth, 1) << "a shallower value makes the whole shallower";
    EXPECT_EQ(omu_PrimWrapper(nullptr, 0, members).Nesting().nodes, 3);

    omu_PrimIntDictionary doubled;
    int levels = 0;
    const auto doubleForEver = [&doubled, &levels] {
        for (;; ++levels) {
            omu_PrimIntDictionary next;
            for (const int key : {0, 1}) next.Insert(key, doubled);
            doubled = next;
        }
    };
    EXPECT_THROW(doubleForEver(), omu_ValueErrorException);
    EXPECT_EQ(levels, 26) << "2^27 - 1 nodes";
}

}  // namespace
