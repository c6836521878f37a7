#include "g3d/g3d_BoundingVolume.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(g3d_BoundingVolume, TakesCornersInAnyOrderAndIgnoresNaN) {
    const g3d_BoundingVolume box({4, -1, 2}, {0, 3, -2});
    EXPECT_EQ(box, g3d_BoundingVolume({0, -1, -2}, {4, 3, 2}));
    EXPECT_EQ(box.Low(), g3d_Point(0, -1, -2));
    EXPECT_EQ(box.BoundingSphere().Center(), g3d_Point(2, 1, 0));
    EXPECT_FLOAT_EQ(box.BoundingSphere().Radius(), std::sqrt(12.0f));

    g3d_BoundingVolume grown;
    EXPECT_TRUE(grown.BoundingSphere().IsEmpty());
    grown.Extend({NAN, 0, 0}).Extend(g3d_Sphere());
    EXPECT_TRUE(grown.IsEmpty());
    grown.Extend({4, 8, -4, 2}).Extend(g3d_Sphere({0, 0, 0}, 1));
    EXPECT_EQ(grown, g3d_BoundingVolume({-1, -1, -2}, {2, 4, 1}));
    EXPECT_TRUE(g3d_BoundingVolume({0, 0, 0}, {NAN, 1, 1}).IsEmpty());
    EXPECT_EQ(g3d_BoundingVolume({3e38f, 0, 0}, {-3e38f, 0, 0}).BoundingSphere().Radius(), 3e38f);
}

TEST(g3d_Sphere, ContainsItsSurfaceAndNothingWhenEmpty) {
    const g3d_Sphere sphere({1, 2, 3}, 5);
    EXPECT_TRUE(sphere.Contains({4, 6, 3}));
    EXPECT_TRUE(sphere.Contains({8, 12, 6, 2}));
    EXPECT_FALSE(sphere.Contains({std::nextafter(4.0f, 5.0f), 6, 3}));
    EXPECT_FALSE(sphere.Contains({NAN, 2, 3}));
    EXPECT_TRUE(g3d_Sphere({1, 2, 3}, 0).Contains({1, 2, 3}));
    for (const float radius : {-0.5f, -0.0001f, NAN})
        EXPECT_FALSE(g3d_Sphere({1, 2, 3}, radius).Contains({1, 2, 3})) << radius;
    EXPECT_TRUE(g3d_Sphere({-3e38f, 0, 0}, 3.2e38f).Contains({1e37f, 0, 0}));
}
