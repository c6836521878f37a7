#include "mdl/mdl_JaggedArray.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "mdl/mdl_Archive_test.h"

namespace {

std::string Lengths(const mdl_JaggedArray& array) {
    std::string text;
    for (int row = 0; row < array.Rows(); ++row) text += std::to_string(array.RowLength(row)) + " ";
    return text;
}

TEST(mdl_JaggedArray, RowsEndWhereTheNextOnesStart) {
    const double values[] = {1, 2, 3, 4, 5};
    const struct {
        std::vector<int> offsets;
        int size;
        const char* lengths;
    } cases[] = {
        {{0, 2, 2}, 5, "2 0 3 "},
        {{0}, 5, "5 "},
        {{1, 3}, 5, "2 2 "},
        {{5, -1, 2}, 3, "0 2 1 "},
        {{INT_MIN, INT_MAX, 0}, 3, "3 0 3 "},
        {{4, 2}, 5, "0 3 "},
        {{0, 1}, 0, "0 0 "},
        {{}, 5, ""},
    };
    for (const auto& c : cases) {
        const mdl_JaggedArray array(static_cast<int>(c.offsets.size()), c.size, c.offsets.data(),
                                    values);
        EXPECT_EQ(Lengths(array), c.lengths);
        EXPECT_EQ(array.Size(), c.size);
        for (int row = 0; row < array.Rows(); ++row) {
            const std::span<const double> span = array.Row(row);
            ASSERT_EQ(static_cast<int>(span.size()), array.RowLength(row));
            EXPECT_EQ(array.RowList(row).Length(), array.RowLength(row));
            if (!span.empty()) {
                EXPECT_EQ(array.ConstGet(row, 0), span.front());
                EXPECT_EQ(array.RowList(row).Last(), span.back());
            }
        }
    }
    mdl_JaggedArray zeros(3, 2);
    EXPECT_EQ(Lengths(zeros), "0 0 2 ");
    const mdl_JaggedArray copy = zeros;
    zeros.Get(2, 1) = 7;
    EXPECT_EQ(copy.ConstGet(2, 1), 0);
    EXPECT_FALSE(copy == zeros);
    EXPECT_EQ(mdl_JaggedArray(-1, -1).Rows(), 0);
    EXPECT_EQ(mdl_JaggedArray(-1, -1), mdl_JaggedArray());
}

TEST(mdl_JaggedArrayDeathTest, EndsTheProcessOutsideARow) {
    const mdl_JaggedArray array(2, 3);
    EXPECT_DEATH(static_cast<void>(array.ConstGet(0, 0)), "");
    EXPECT_DEATH(static_cast<void>(array.ConstGet(1, -1)), "");
    EXPECT_DEATH(static_cast<void>(array.Row(2)), "");
}

TEST(mdl_JaggedArray, ComesBackFromItsRecordWithItsOffsets) {
    const test_MdlModule module;
    const int offsets[] = {5, -1, 2};
    const double values[] = {1, 2, 3};
    const mdl_JaggedArray array(3, 3, offsets, values);
    const auto loaded = test_Load<mdl_JaggedArray>(test_Save(array));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(*loaded, array);
    EXPECT_EQ(test_Save(mdl_JaggedArray()).size(), 25u);
    EXPECT_EQ(*test_Load<mdl_JaggedArray>(test_Save(mdl_JaggedArray())), mdl_JaggedArray());
}

}  // namespace
