#include "mdl/mdl_JaggedArray.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

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
        {{0, 2, 2}, 5, "2 0 3 "},  {{0}, 5, "5 "},
        {{5, -1, 2}, 3, "0 2 1 "}, {{INT_MIN, INT_MAX, 0}, 3, "3 0 3 "},
        {{0, 1}, 0, "0 0 "},
    };
    for (const auto& c : cases) {
        const mdl_JaggedArray array(static_cast<int>(c.offsets.size()), c.size, c.offsets.data(),
                                    values);
        EXPECT_EQ(Lengths(array), c.lengths);
        for (int row = 0; row < array.Rows(); ++row) {
            const cow_List<double> list = array.RowList(row);
            ASSERT_EQ(list.Length(), array.RowLength(row));
            EXPECT_TRUE(list.IsEmpty() || array.ConstGet(row, 0) == list.First());
        }
    }
    mdl_JaggedArray zeros(3, 2);
    EXPECT_EQ(Lengths(zeros), "0 0 2 ");
    const mdl_JaggedArray copy = zeros;
    zeros.Get(2, 1) = 7;
    EXPECT_EQ(copy.ConstGet(2, 1), 0);
    EXPECT_EQ(mdl_JaggedArray(-1, -1), mdl_JaggedArray());
}

TEST(mdl_JaggedArrayDeathTest, EndsTheProcessOutsideARow) {
    const mdl_JaggedArray array(2, 3);
    EXPECT_DEATH(static_cast<void>(array.ConstGet(0, 0)), "");
    EXPECT_DEATH(static_cast<void>(array.Row(2)), "");
}

}  // namespace
