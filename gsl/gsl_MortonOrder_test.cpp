#include "gsl/gsl_MortonOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

gsl_BBox PointBox(double x, double y, double z) { return {gsl_Point(x, y, z), gsl_Point(x, y, z)}; }

TEST(gsl_MortonOrder, OrdersByOctantsInsideOctants) {
    std::vector<gsl_BBox> boxes;
    std::vector<unsigned> expected;
    for (unsigned code = 0; code < 512; ++code) {
        // Three bits of each coordinate, taken out of the code from its high end.
        double position[3] = {};
        for (unsigned bit = 0; bit < 9; ++bit) {
            position[bit % 3] = position[bit % 3] * 2 + (code >> (8 - bit) & 1);
        }
        boxes.push_back(PointBox(position[0], position[1], position[2]));
        expected.insert(expected.begin(), code);
    }
    std::reverse(boxes.begin(), boxes.end());
    EXPECT_EQ(gsl_MortonOrder(boxes.data(), boxes.size()), expected);
}

TEST(gsl_MortonOrder, TakesWhateverBoxes) {
    EXPECT_TRUE(gsl_MortonOrder(nullptr, 0).empty());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double huge = std::numeric_limits<double>::max();
    const std::vector<gsl_BBox> boxes = {PointBox(nan, 1, 2), gsl_BBox(), PointBox(huge, 0, 0),
                                         PointBox(-huge, nan, 0), PointBox(1, 1, 1)};
    std::vector<unsigned> order = gsl_MortonOrder(boxes.data(), boxes.size());
    std::sort(order.begin(), order.end());
    EXPECT_EQ(order, (std::vector<unsigned>{0, 1, 2, 3, 4}));
}

}  // namespace
