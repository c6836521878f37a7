#include "foundation/coreutils/omi_BlkBitVect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <set>
#include <vector>

#include "testing/test_FailingAllocator.h"
#include "testing/test_Random.h"

namespace {

using Model = std::set<unsigned>;

void ExpectEqual(const omi_BlkBitVect& vector, const Model& model) {
    std::vector<unsigned> listed;
    for (const unsigned bit : vector) listed.push_back(bit);
    ASSERT_THAT(listed, testing::ElementsAreArray(model));
    ASSERT_EQ(vector.Count(), model.size());
    ASSERT_EQ(vector.IsEmpty(), model.empty());
    if (model.empty()) return;
    ASSERT_EQ(vector.Last(), *model.rbegin());
    const unsigned word = *model.begin() / omi_BlkBitVect::wordBits;
    std::uint64_t expected = 0;
    for (unsigned bit = 0; bit < 64; ++bit) {
        expected |= std::uint64_t{model.count(word * 64 + bit)} << bit;
    }
    ASSERT_EQ(vector.Word(word), expected);
}

/// Draws numbers near each other, far apart and at the upper end.
unsigned Draw(test_Random& random) {
    const int spread[] = {40, 600, 20000};
    const auto number = static_cast<unsigned>(random.Below(spread[random.Below(3)]));
    return random.Below(4) == 0 ? ~number : number;
}

TEST(omi_BlkBitVect, FollowsASetThroughRandomChanges) {
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        test_Random random(seed);
        omi_BlkBitVect vectors[2];
        Model models[2];
        for (int step = 0; step < 400; ++step) {
            const int k = random.Below(2);
            const unsigned bit = Draw(random);
            switch (random.Below(8)) {
                case 0:
                    vectors[k] |= vectors[1 - k];
                    models[k].insert(models[1 - k].begin(), models[1 - k].end());
                    break;
                case 1:
                    if (step % 50 != 1) break;
                    vectors[k] = vectors[1 - k];
                    models[k] = models[1 - k];
                    break;
                case 2:
                case 3:
                case 4: {
                    const unsigned gone = models[k].empty() || bit % 2 ? bit : *models[k].begin();
                    vectors[k].Clear(gone);
                    models[k].erase(gone);
                    break;
                }
                default:
                    vectors[k].Set(bit);
                    models[k].insert(bit);
            }
            ASSERT_EQ(vectors[k].Test(bit), models[k].count(bit) == 1);
            ASSERT_NO_FATAL_FAILURE(ExpectEqual(vectors[k], models[k]));
            ASSERT_EQ(vectors[0] == vectors[1], models[0] == models[1]);
            ASSERT_EQ(vectors[0].Contains(vectors[1]),
                      std::includes(models[0].begin(), models[0].end(), models[1].begin(),
                                    models[1].end()));
        }
        vectors[0].ClearAll();
        EXPECT_TRUE(vectors[0] == omi_BlkBitVect());
    }
}

std::size_t bytesAsked = 0;

TEST(omi_BlkBitVect, FewHighNumbersCostFewBytes) {
    bytesAsked = 0;
    mem_SetFailureHook([](std::size_t bytes) {
        bytesAsked += bytes;
        return false;
    });
    omi_BlkBitVect vector;
    for (const unsigned bit : {0u, 1u << 20, 1u << 31, ~0u}) vector.Set(bit);
    mem_SetFailureHook(nullptr);
    EXPECT_LE(bytesAsked, 500u);
    EXPECT_EQ(vector.Count(), 4u);
}

TEST(omi_BlkBitVect, IsUnchangedWhenMemoryRunsOut) {
    omi_BlkBitVect vector;
    omi_BlkBitVect other;
    for (unsigned bit = 0; bit < 64 * 256; bit += 512) {
        vector.Set(bit);
        other.Set(bit + 256);
    }
    const omi_BlkBitVect before = vector;
    {
        const test_FailingAllocator fail(1);
        EXPECT_THROW(vector |= other, std::bad_alloc);
    }
    EXPECT_TRUE(vector == before);
}

}  // namespace
