#include "g3d/g3d_XForm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "foundation/basicutils/KTSBasOmniSSELevel.h"
#include "g3d/g3d_Camera.h"
#include "testing/test_Environment.h"
#include "testing/test_Random.h"

namespace {

/// The image divided by its w.
g3d_Point Divided(const g3d_XForm& xform, const g3d_Point& p) { return xform.Transform(p).Place(); }

void ExpectNear(const g3d_Point& a, const g3d_Point& b, float tolerance) {
    EXPECT_LE(a.Distance(b), tolerance) << a.X() << ' ' << a.Y() << ' ' << a.Z() << " against "
                                        << b.X() << ' ' << b.Y() << ' ' << b.Z();
}

}  // namespace

TEST(g3d_XForm, ProjectionsMapTheirVolumeOntoTheClipCube) {
    g3d_XForm parallel;
    parallel.SetOrthographicProjection(-3, 1, 4, 2, 5, 9);
    g3d_XForm perspective;
    perspective.SetPerspectiveProjection(-3, 1, 4, 2, 5, 10);
    const struct {
        g3d_Point inParallel, inPerspective, clip;
    } corners[] = {{{-3, 2, -5}, {-3, 2, -5}, {-1, -1, -1}},
                   {{1, 4, -9}, {2, 8, -10}, {1, 1, 1}},
                   {{-1, 3, -9}, {-2, 6, -10}, {0, 0, 1}}};
    for (const auto& corner : corners) {
        ExpectNear(Divided(parallel, corner.inParallel), corner.clip, 1e-6f);
        ExpectNear(Divided(perspective, corner.inPerspective), corner.clip, 1e-6f);
    }
    EXPECT_EQ(perspective.Transform({0, 0, -7}).W(), 7);
    // In floats the product far * near would overflow.
    perspective.SetPerspectiveProjection(-1, 1, 1, -1, 1, 3.4028235e38f);
    EXPECT_EQ(perspective(2, 3), -2);
}

TEST(g3d_XForm, AxesTransposeAndTranslateMapTheEyeToTheOrigin) {
    g3d_XForm view;
    view.SetAxes({0, 0, -1}, {0, 1, 0}, {1, 0, 0});
    EXPECT_EQ(view.Transform({0, 0, 1}), g3d_Point(1, 0, 0));
    view.Transpose();
    view.Translate(-2, -3, -4);
    EXPECT_EQ(view.Transform({2, 3, 4}), g3d_Point(0, 0, 0));
    EXPECT_EQ(view.Transform({5, 3, 4}), g3d_Point(0, 0, 3));

    g3d_XForm scale;
    scale.SetOrthographicProjection(-0.5f, 0.5f, 0.5f, -0.5f, 1, -1);
    EXPECT_EQ((scale * view).Transform({5, 4, 4}), scale.Transform(view.Transform({5, 4, 4})));
    EXPECT_NE(scale * view, view * scale);
}

TEST(g3d_XForm, UnProjectGivesPointsBack) {
    test_Random random(41);
    for (int i = 0; i < 2000; ++i) {
        g3d_Camera camera;
        const auto coordinate = [&] { return static_cast<float>(random.Between(-100, 100)); };
        camera.SetLocation({coordinate(), coordinate(), coordinate()},
                           {coordinate(), coordinate(), coordinate()}, {0.1f, 1, 0.2f});
        if (i % 2 == 0) camera.MakeParallel();
        g3d_XForm toClip;
        camera.SetViewOffset(0.2f, -0.1f).SetLayerXForm(true, &toClip);
        // A point in front of the eye, at a distance of 1 to 10000.
        g3d_XForm toWorld = camera.GetVOM();
        g3d_Point ahead;
        const auto distance = static_cast<float>(std::pow(10.0, random.Between(0, 4)));
        ASSERT_TRUE(toWorld.UnProject({0.3f * distance, 0.2f * distance, -distance}, ahead));
        const float range = ahead.Distance(camera.GetEye());
        const g3d_Point clip = toClip.Transform(ahead);
        g3d_Point back;
        ASSERT_TRUE(toClip.UnProject(clip, back));
        // A parallel clip z has steps of its own.
        const float depthStep = 0x1p-24f * (camera.GetFar() - camera.GetNear());
        ExpectNear(back, ahead, 1e-5f * range + (camera.IsPerspective() ? 0 : depthStep));

        const g3d_Point divided = clip.Place();
        ASSERT_TRUE(toClip.UnProjectDivided(divided.X(), divided.Y(), divided.Z(), back));
        // A distance step along the line of sight is longer than along the view direction.
        const float dividedStep = 0x1p-24f * distance * range / camera.GetNear();
        ExpectNear(back, ahead, 1e-5f * range + (camera.IsPerspective() ? dividedStep : depthStep));
    }
}

TEST(g3d_XForm, UnProjectRefusesWhatHasNoInverse) {
    g3d_XForm flat;
    flat.SetAxes({1, 0, 0}, {0, 1, 0}, {1, 1, 0});
    g3d_Point point(7, 8, 9);
    EXPECT_FALSE(flat.UnProject({1, 2, 3}, point));
    EXPECT_FALSE(g3d_XForm().UnProject({NAN, 2, 3}, point));
    EXPECT_EQ(point, g3d_Point(7, 8, 9));
}

TEST(g3d_XForm, ArraysTransformAsSinglePointsAtEveryProcessorLevel) {
    g3d_Camera camera;
    g3d_XForm xform;
    camera.SetLocation({3, 5, 7}, {0.1f, 0.2f, 0.3f}, {0, 1, 0}).SetLayerXForm(true, &xform);
    test_Random random(5);
    std::vector<g3d_Point> points(101);
    for (g3d_Point& p : points)
        p = {static_cast<float>(random.Between(-9, 9)), static_cast<float>(random.Between(-1, 1)),
             static_cast<float>(random.Between(-1e6, 1e6)), 1};
    std::vector<g3d_Point> expected;
    for (const g3d_Point& p : points) {
        float image[4];
        for (int row = 0; row < 4; ++row) {
            const auto product = [&](int column, float x) {
                return static_cast<double>(xform(row, column)) * x;
            };
            image[row] = static_cast<float>(product(0, p.X()) + product(1, p.Y()) +
                                            product(2, p.Z()) + product(3, p.W()));
        }
        expected.emplace_back(image[0], image[1], image[2], image[3]);
    }
    for (const char* level : {"NONE", "AVX2"}) {
        const test_SseLevel forced(level);
        std::vector<g3d_Point> images = points;
        xform.Transform(images.data(), images.data(), images.size());
        EXPECT_EQ(images, expected) << level;
    }
}

TEST(g3d_Vector, KeepsLengthsAndProductsAtTheEndsOfTheRange) {
    EXPECT_EQ(g3d_Vector(3e20f, 4e20f, 0).Length(), 5e20f);
    EXPECT_EQ(g3d_Vector(3e-30f, 0, 4e-30f).Length(), 5e-30f);
    g3d_Vector small(0, 2e-40f, 0);
    EXPECT_TRUE(small.Normalize());
    EXPECT_EQ(small, g3d_Vector(0, 1, 0));
    for (const g3d_Vector& degenerate : {g3d_Vector(), g3d_Vector(INFINITY, 1, 0)}) {
        g3d_Vector v = degenerate;
        EXPECT_FALSE(v.Normalize());
        EXPECT_EQ(v, degenerate);
    }
    EXPECT_EQ(g3d_Vector(1, 0, 0).Cross({0, 1, 0}), g3d_Vector(0, 0, 1));
    // A homogeneous point stands for the place after the division by w.
    EXPECT_EQ(g3d_Point(2, 4, 6, 2) - g3d_Point(1, 1, 1), g3d_Vector(0, 1, 2));
    EXPECT_EQ(g3d_Point(2, 4, 6, 0) - g3d_Point(1, 1, 1), g3d_Vector(1, 3, 5));
}
