#include "g3d/g3d_Camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

#include "testing/test_Environment.h"
#include "testing/test_Random.h"

namespace {

constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
using Window = std::pair<float, float>;

Window WindowOf(const g3d_Camera& c) { return {c.GetWindowWidth(), c.GetWindowHeight()}; }
Window NearFarOf(const g3d_Camera& c) { return {c.GetNear(), c.GetFar()}; }
Window OffsetOf(const g3d_Camera& c) { return {c.GetViewOffsetX(), c.GetViewOffsetY()}; }

g3d_Camera Parallel() {
    g3d_Camera camera;
    camera.SetProjection(g3d_Camera::PARALLEL);
    return camera;
}

/// A camera with the same values whose matrices were never built.
g3d_Camera Fresh(const g3d_Camera& c) {
    g3d_Camera fresh;
    fresh.SetProjection(c.IsPerspective() ? g3d_PERSPECTIVE : g3d_PARALLEL);
    fresh.SetLimitsOff(true).SetWindow(c.GetWindowWidth(), c.GetWindowHeight());
    fresh.SetNearFar(c.GetNear(), c.GetFar()).SetLocation(c.GetEye(), c.GetTarget(), c.GetUp());
    fresh.SetViewOffset(c.GetViewOffsetX(), c.GetViewOffsetY());
    fresh.SetViewport(c.GetViewportXMin(), c.GetViewportXMax(), c.GetViewportYMin(),
                      c.GetViewportYMax());
    return fresh.SetFitDistanceFactor(c.GetFitDistanceFactor());
}

/// Where a world point appears, in picture coordinates.
Window Picture(const g3d_Camera& camera, const g3d_Point& p) {
    const g3d_Point clip =
        camera.GetProjectionMatrix().Transform(camera.GetVOM().Transform(p)).Place();
    return {clip.X() / 2 + 0.5f, clip.Y() / 2 + 0.5f};
}

void ExpectNear(const Window& a, const Window& b, float tolerance) {
    EXPECT_NEAR(a.first, b.first, tolerance);
    EXPECT_NEAR(a.second, b.second, tolerance);
}

void ExpectNear(const g3d_Point& a, const g3d_Point& b, float tolerance) {
    EXPECT_LE(a.Distance(b), tolerance) << a.X() << ' ' << a.Y() << ' ' << a.Z();
}

g3d_BoundingVolume UnitVolume() { return {{0, 0, 0}, {1, 1, 1}}; }

g3d_Vector Row(const g3d_XForm& xform, int row) {
    return {xform(row, 0), xform(row, 1), xform(row, 2)};
}

using Point = g3d_Point;
using Vector = g3d_Vector;
using Change = void (*)(g3d_Camera&, float);

/// One call of every method that takes numbers; `x` replaces one argument.
constexpr Change kChanges[] = {
    [](auto& c, float x) { c.SetLocation(Point(x, 5, 6), Point(1, 1, 1), Vector(0, 1, 1)); },
    [](auto& c, float x) { c.SetWindow(x, 2); },
    [](auto& c, float x) { c.SetNearFar(2, x); },
    [](auto& c, float x) { c.SetViewOffset(0.5f, x); },
    [](auto& c, float x) { c.SetFieldOfView(x, true); },
    [](auto& c, float x) { c.SetFieldOfView(x, false); },
    [](auto& c, float x) { c.SetViewport(0.25f, x, 0, 1); },
    [](auto& c, float x) { c.SetFitDistanceFactor(x); },
    [](auto& c, float x) { c.Pan(x, 0, 1, false); },
    [](auto& c, float x) { c.Pan(x, 1, 0, true); },
    [](auto& c, float x) { c.Zoom(x, false); },
    [](auto& c, float x) { c.Zoom(x, true); },
    [](auto& c, float x) { c.Zoom(0.25f, 0.25f, x, 0.5f, false); },
    [](auto& c, float x) { c.ZoomTo(0.25f, x, 0.5f, true, true); },
    [](auto& c, float x) { c.FitCenterVP(x, 0.25f, 2, true); },
    [](auto& c, float x) { c.Rotate(30, Vector(0, x, 1), false); },
    [](auto& c, float x) { c.Rotate(x, Vector(0, 1, 1), Point(1, 2, 3)); },
    [](auto& c, float x) { c.Rotate(Vector(1, x, 0), Vector(0, 1, 2), true); },
    [](auto& c, float x) { c.Rotate(Vector(1, 0, 0), Vector(0, 1, 2), Point(x, 0, 0)); },
    [](auto& c, float x) { c.Fit(g3d_Sphere(Point(3, 2, 1), x)); },
    [](auto& c, float x) { c.Fit(Point(x, 1, 1), Point(-1, 0, 2)); },
    [](auto& c, float x) { c.FitVP(x, 7); },
    [](auto& c, float x) { c.Canned(g3d_Sphere(Point(x, 0, 0), 1), g3d_VIEW_ISOMETRIC); },
    [](auto& c, float x) { c.SetModelBoundingVolume(UnitVolume(), x); },
    [](auto& c, float x) { c.CorrectAspect(x, 3, 1, 0.25f, 0.75f, 0, 1); },
};

class g3d_CameraRecentring : public testing::Test {
  protected:
    void SetUp() override { g3d_Camera_SetTargetRotate(false); }
    void TearDown() override { g3d_Camera_SetTargetRotate(true); }
};

}  // namespace

TEST(g3d_Camera, MatricesFollowEveryChange) {
    for (const bool perspective : {true, false}) {
        for (const Change& change : kChanges) {
            SCOPED_TRACE(&change - kChanges);
            for (const float x : {0.6f, 3.0f}) {
                g3d_Camera camera = perspective ? g3d_Camera() : Parallel();
                camera.SetViewOffset(0.1f, 0.2f);
                static_cast<void>(camera.GetVOM());
                static_cast<void>(camera.GetProjectionMatrix());
                change(camera, x);
                const g3d_Camera fresh = Fresh(camera);
                EXPECT_EQ(camera.GetVOM(), fresh.GetVOM());
                EXPECT_EQ(camera.GetProjectionMatrix(), fresh.GetProjectionMatrix());
                EXPECT_FALSE(camera.IsOrientationStale() || camera.IsProjectionStale());
            }
        }
    }
    g3d_Camera camera;
    EXPECT_EQ(camera.GetProjectionMatrix()(0, 0), 2);
    camera.SetFieldOfView(90, true);
    EXPECT_FLOAT_EQ(camera.GetProjectionMatrix()(0, 0), 1);
    camera.MakeParallel();
    EXPECT_EQ(camera.GetProjectionMatrix(), Fresh(camera).GetProjectionMatrix());
    camera.MakePerspective().SetLimitsOff(true).SetWindow(0, 1).SetLimitsOff(false);
    EXPECT_EQ(camera.GetProjectionMatrix(), Fresh(camera).GetProjectionMatrix());
}

TEST(g3d_Camera, NaNDoesNothingAndInfinityStaysFinite) {
    g3d_Camera before;
    before.SetNearFar(2, 9).SetViewOffset(0.25f, 0.5f);
    for (const Change& change : kChanges) {
        SCOPED_TRACE(&change - kChanges);
        g3d_Camera camera = before;
        static_cast<void>(camera.GetVOM());
        change(camera, NAN);
        EXPECT_EQ(camera == before, 1);
        for (const float x : {kInfinity, -kInfinity}) {
            g3d_Camera far = before;
            change(far, x);
            for (int row = 0; row < 3; ++row)
                for (int column = 0; column < 4; ++column)
                    EXPECT_FALSE(std::isnan(far.GetVOM()(row, column)));
            for (const float value :
                 {far.GetEye().X(), far.GetTarget().Z(), far.GetWindowWidth(), far.GetNear(),
                  far.GetFar(), far.GetViewOffsetX(), far.GetViewDistance()})
                EXPECT_TRUE(std::isfinite(value));
        }
    }
}

TEST(g3d_Camera, WindowLimits) {
    const struct {
        float width, height;
        Window expected;
    } cases[] = {{1, 1000, {2, 1000}},        {1000, 1, {1000, 2}},
                 {500, 1, {500, 1}},          {0, 0, {1e-4f, 1e-4f}},
                 {-3, 5e-5f, {1e-4f, 1e-4f}}, {kInfinity, 1e32f, {3.4028235e31f, 3.4028235e31f}}};
    for (const auto& c : cases)
        EXPECT_EQ(WindowOf(Parallel().SetWindow(c.width, c.height)), c.expected) << c.width;
    // In perspective the least window is measured at the target.
    g3d_Camera camera;
    EXPECT_EQ(WindowOf(camera.SetNearFar(400, 900).SetWindow(0, 0)), Window(0.02f, 0.02f));
    camera.SetLocation({1, 1, 1}, {1, 1, 1}, {0, 1, 0});
    EXPECT_EQ(WindowOf(camera.SetWindow(0, 0)), Window(1e-4f, 1e-4f));
    camera.SetLocation({1, 1, 1}, {1, 1, 1.0000001f}, {0, 1, 0}).SetNearFar(1e38f, 2e38f);
    EXPECT_EQ(WindowOf(camera.SetWindow(0, 0)), Window(3.4028235e31f, 3.4028235e31f));
    camera.SetLimitsOff(true).SetWindow(-1, kInfinity);
    EXPECT_EQ(WindowOf(camera), Window(-1, kInfinity));
}

TEST(g3d_Camera, NearFarRule) {
    const float largestNear = 3.4027894e38f;
    const struct {
        float nearValue, farValue;
        Window expected;
    } cases[] = {{0, 0, {1e-5f, 1e-5f + 1e-5f * 1e-5f}},   {-5, 3, {1e-5f, 3}},
                 {10, 2, {10, 10 + 10 * 1e-5f}},           {1, 1.0001f, {1, 1.0001f}},
                 {kInfinity, 10, {largestNear, kLargest}}, {5, -kInfinity, {5, 5 + 5 * 1e-5f}}};
    for (const auto& c : cases)
        EXPECT_EQ(NearFarOf(g3d_Camera().SetNearFar(c.nearValue, c.farValue)), c.expected)
            << c.nearValue;
    g3d_Camera off;
    off.SetLimitsOff(true).SetNearFar(-1, -2);
    EXPECT_EQ(NearFarOf(off), Window(-1, -2));
    EXPECT_EQ(NearFarOf(off.SetLimitsOff(false)), Window(1e-5f, 1e-5f + 1e-5f * 1e-5f));
}

TEST(g3d_Camera, FieldOfView) {
    EXPECT_NEAR(g3d_Camera().GetFieldOfView(), 53.1301f, 1e-4f);
    test_Random random(2);
    for (int i = 0; i < 500; ++i) {
        g3d_Camera camera = i % 2 == 0 ? g3d_Camera() : Parallel();
        const auto shape = static_cast<float>(random.Between(0.1, 9));
        const auto angle = static_cast<float>(random.Between(1, 170));
        camera.SetWindow(shape, 1).SetViewOffset(1, -2).SetFieldOfView(angle, true);
        EXPECT_NEAR(camera.GetFieldOfView(), angle, 1e-2f);
        EXPECT_NEAR(camera.GetWindowWidth() / camera.GetWindowHeight() / shape, 1, 1e-6f);
        EXPECT_NEAR(camera.GetViewOffsetX() / camera.GetWindowHeight(), 1, 1e-6f);
        if (camera.IsPerspective()) {
            EXPECT_NEAR(camera.SetFieldOfView(40, false).GetFieldOfView(), 40, 1e-4f);
        }
    }
    for (const float outside : {0.0f, 200.0f, -30.0f}) {
        g3d_Camera camera;
        camera.SetWindow(2, 1).SetViewOffset(0.5f, 0).SetFieldOfView(outside, true);
        EXPECT_EQ(WindowOf(camera), Window(2e-4f, 1e-4f)) << outside;
        EXPECT_FLOAT_EQ(camera.GetViewOffsetX(), 5e-5f) << outside;
    }
    // A window within 1e-4 of the present one changes nothing.
    const g3d_Camera camera = g3d_Camera().SetViewOffset(0.3f, 0).SetFieldOfView(53.134f, true);
    EXPECT_EQ(WindowOf(camera), Window(1, 1));
    EXPECT_EQ(OffsetOf(camera), Window(0.3f, 0));
}

TEST(g3d_Camera, ProjectionSwitches) {
    g3d_Camera camera;
    EXPECT_FALSE(camera.SetProjection(g3d_PERSPECTIVE));
    EXPECT_TRUE(camera.SetProjection(static_cast<g3d_ProjectionEnum>(7)));
    EXPECT_FALSE(camera.SetProjection(g3d_Camera::PARALLEL));
    EXPECT_TRUE(camera.SetProjection(g3d_Camera::PERSPECTIVE));
    test_Random random(8);
    for (int i = 0; i < 200; ++i) {
        const auto any = [&] { return static_cast<float>(random.Between(0.5, 50)); };
        g3d_Camera c;
        c.SetLocation({any(), any(), any()}, {-any(), any(), any()}, {0, 1, 0});
        c.SetNearFar(any(), 1000).SetWindow(any(), any()).SetViewOffset(any(), any());
        const g3d_Camera before = c;
        EXPECT_NEAR(c.MakeParallel().GetFieldOfView(), before.GetFieldOfView(), 1e-4f);
        ExpectNear(Picture(c, c.GetTarget()), Picture(before, c.GetTarget()), 1e-3f);
        EXPECT_FALSE(c.IsPerspective());
        EXPECT_NEAR(c.MakePerspective().GetFieldOfView(), before.GetFieldOfView(), 1e-4f);
        ExpectNear(OffsetOf(c), OffsetOf(before), 1e-4f);
    }
    g3d_Camera degenerate = Parallel();
    degenerate.SetLocation({1, 1, 1}, {1, 1, 1}, {0, 1, 0}).SetWindow(3, 2).MakePerspective();
    EXPECT_EQ(WindowOf(degenerate), Window(3, 2));
}

TEST(g3d_Camera, OrientationIsOrthonormalForAnyInput) {
    const g3d_Vector ups[] = {{0, 1, 0},          {0, 0, 1},      {1, 0, 0},
                              {0, 0, 0},          {1, 1, 1},      {1, 1e-30f, 0},
                              {0.3f, 0.1f, 0.2f}, {0, 1e-38f, 0}, {3e38f, 3e38f, 3e38f}};
    const g3d_Point eyes[] = {{0, 0, 0},      {0, 5, 0},         {0, 0, -2},
                              {7, 7, 7},      {1e20f, 0, 0},     {3, 1, 2},
                              {0, 1e-40f, 0}, {3e38f, 3e38f, 0}, {4, 2, 6, 2}};
    for (const g3d_Vector& up : ups) {
        for (const g3d_Point& eye : eyes) {
            g3d_Camera camera;
            const g3d_XForm& view = camera.SetLocation(eye, {0, 0, 0}, up).GetVOM();
            for (int a = 0; a < 3; ++a)
                for (int b = 0; b < 3; ++b)
                    EXPECT_NEAR(Row(view, a).Dot(Row(view, b)), a == b ? 1 : 0, 1e-6f);
            EXPECT_NEAR(Row(view, 0).Cross(Row(view, 1)).Dot(Row(view, 2)), 1, 1e-6f);
            if (eye.X() < 1e10f) {
                ExpectNear(view.Transform(eye.Place()), {0, 0, 0}, 1e-5f);
            }
        }
    }
    // What is above the target appears above, what lies to the right of the view on the right.
    const auto [x, y] = Picture(g3d_Camera(), {0, 1, -0.5f});
    EXPECT_GT(y, 0.5f);
    EXPECT_GT(x, 0.5f);
}

TEST(g3d_Camera, ViewportShowsItsPartOfTheWindow) {
    g3d_Camera camera = Parallel();
    camera.SetWindow(4, 2).SetViewport(0.5f, 1, 0, 0.25f);
    // The lower left corner of the viewport is the middle of the lower edge of the window.
    ExpectNear(Picture(camera, {0, -1, 0}), {0, 0}, 1e-6f);
    ExpectNear(Picture(camera, {0, -0.5f, -2}), {1, 1}, 1e-6f);
    const g3d_Camera before = camera;
    camera.SetViewport(1, 1, 0, 1).SetViewport(0, 1, 0.5f, 0.25f);
    EXPECT_EQ(camera == before, 1);
}

TEST(g3d_Camera, FitsSpheres) {
    g3d_Camera camera;
    camera.Fit(g3d_Sphere({0, 0, 0}, 1));
    EXPECT_EQ(camera.GetEye(), g3d_Point(4, 0, 0));
    EXPECT_EQ(NearFarOf(camera), Window(2, 6));
    EXPECT_EQ(WindowOf(camera), Window(1.05f, 1.05f));
    EXPECT_EQ(g3d_Camera().Fit(g3d_Sphere({10, 0, 0}, 1)).GetEye(), g3d_Point(14, 0, 0));
    EXPECT_EQ(WindowOf(Parallel().SetViewOffset(1, 1).Fit(g3d_Sphere({9, 9, 9}, 3))),
              Window(6.3f, 6.3f));
    const g3d_Sphere empty({1, 1, 1}, -0.5f);
    g3d_Camera untouched;
    untouched.Fit(empty).Fit(g3d_BoundingVolume()).Canned(empty, g3d_VIEW_TOP);
    EXPECT_EQ(untouched == g3d_Camera(), 1);
    // Near and far obey their rule with the limits off too.
    camera.SetLimitsOff(true).Fit(g3d_Sphere({0, 0, 0}, 0));
    EXPECT_EQ(NearFarOf(camera), Window(1e-5f, 1e-5f + 1e-5f * 1e-5f));
    camera.SetLimitsOff(false).Fit(g3d_Sphere({0, 0, 0}, kLargest));
    EXPECT_TRUE(std::isfinite(camera.GetFar()) && camera.GetFar() > 3.4e38f);
    for (const float factor : {5e8f, 1e11f, kLargest, kInfinity}) {
        camera.SetFitDistanceFactor(factor).Fit(g3d_Sphere({0, 0, 0}, kLargest));
        EXPECT_TRUE(std::isfinite(camera.GetNear()) && camera.GetNear() > 3.4e38f) << factor;
    }
    // No fit loses the direction of the view to the size of the coordinates.
    camera = g3d_Camera();
    camera.Fit(g3d_Point(1e6f, 5e5f, 0), g3d_Point(1e6f, 5e5f, 0));
    EXPECT_GT(camera.GetEye().X(), camera.GetTarget().X());
    EXPECT_EQ(g3d_Camera().Fit(g3d_Point(1, 5, 2), g3d_Point(3, -1, 0)) ==
                  g3d_Camera().Fit(g3d_BoundingVolume({3, 5, 0}, {1, -1, 2})),
              1);
}

TEST(g3d_Camera, CannedViewsLookFromTheirSide) {
    const struct {
        g3d_SavedViewIdEnum view;
        g3d_Vector toEye, right;
    } cases[] = {{g3d_VIEW_FRONT, {0, 0, 1}, {1, 0, 0}},
                 {g3d_VIEW_BACK, {0, 0, -1}, {-1, 0, 0}},
                 {g3d_VIEW_TOP, {0, 1, 0}, {1, 0, 0}},
                 {g3d_VIEW_BOTTOM, {0, -1, 0}, {1, 0, 0}},
                 {g3d_VIEW_RIGHT, {1, 0, 0}, {0, 0, -1}},
                 {g3d_VIEW_LEFT, {-1, 0, 0}, {0, 0, 1}},
                 {g3d_VIEW_ISOMETRIC, {0.57735f, 0.57735f, 0.57735f}, {0.70711f, 0, -0.70711f}}};
    for (const auto& c : cases) {
        g3d_Camera camera;
        camera.Canned({{5, 6, 7}, 2}, c.view);
        ExpectNear(camera.GetEye(), g3d_Point(5, 6, 7) + c.toEye * 8, 1e-4f);
        ExpectNear(g3d_Point() + Row(camera.GetVOM(), 0), g3d_Point() + c.right, 1e-5f);
    }
    g3d_Camera untouched;
    untouched.Canned({{5, 6, 7}, 2}, static_cast<g3d_SavedViewIdEnum>(7));
    EXPECT_EQ(untouched == g3d_Camera(), 1);
}

TEST(g3d_Camera, PansAndZooms) {
    g3d_Camera camera;
    camera.Pan(0.25f, 0.5f, 0, false);
    // One window at the near plane is two at the target; the picture moves the other way.
    EXPECT_EQ(camera.GetTarget(), g3d_Point(0, 1, -0.5f));
    ExpectNear(Picture(camera, {0, 0, 0}), {0.25f, 0}, 1e-6f);
    EXPECT_EQ(camera.Pan(0, 0, 0.5f, false).GetEye(), g3d_Point(1, 1, -0.5f));
    EXPECT_EQ(OffsetOf(g3d_Camera().SetWindow(2, 1).Pan(0.25f, 0.5f, 9, true)), Window(0.5f, 0.5f));

    camera = Parallel();
    camera.SetWindow(4, 2).SetViewOffset(1, 0.5f);
    const Window place = Picture(camera, {0, 0, 0});
    ExpectNear(Picture(camera.Zoom(0.5f, true), {0, 0, 0}), place, 1e-6f);
    EXPECT_EQ(WindowOf(camera), Window(2, 1));
    EXPECT_EQ(OffsetOf(camera.Zoom(2, false)), Window(0.5f, 0.25f));
    // The limit holds for both sides together, so that the shape stays.
    EXPECT_EQ(WindowOf(Parallel().SetWindow(4e-4f, 2e-4f).Zoom(0.1f, false)), Window(2e-4f, 1e-4f));
    EXPECT_EQ(WindowOf(camera.Zoom(0, true).Zoom(-2, false)), Window(4, 2));
    EXPECT_FLOAT_EQ(camera.Zoom(1e38f, false).GetWindowHeight(), 3.4028235e31f / 2);
}

TEST(g3d_Camera, ZoomsToPicturePositionsAndRectangles) {
    EXPECT_EQ(OffsetOf(Parallel().ZoomTo(0.75f, 0.5f, 0.5f, true, true)), Window(0.125f, 0));
    EXPECT_EQ(Parallel().ZoomTo(0.75f, 0.5f, 0.5f, false, true).GetTarget(),
              g3d_Point(0, 0, -0.125f));
    test_Random random(12);
    for (int i = 0; i < 1000; ++i) {
        const bool keepTarget = i % 2 == 0;
        g3d_Camera camera = i % 4 < 2 ? g3d_Camera() : Parallel();
        camera.SetWindow(2, 1).SetViewOffset(0.1f, 0.2f);
        const g3d_Camera before = camera;
        const auto x = static_cast<float>(random.Between(0, 1));
        const auto y = static_cast<float>(random.Between(0, 1));
        const auto k = static_cast<float>(random.Between(0.2, 4));
        // The world point at the depth of the target under (x, y).
        g3d_XForm toClip;
        camera.SetLayerXForm(true, &toClip);
        const float depth = toClip.Transform(camera.GetTarget()).Place().Z();
        g3d_Point under;
        ASSERT_TRUE(toClip.UnProjectDivided(2 * x - 1, 2 * y - 1, depth, under));
        camera.ZoomTo(x, y, k, keepTarget, true);
        ExpectNear(Picture(camera, under), {x, y}, 2e-5f);
        camera.ZoomTo(x, y, 1 / k, keepTarget, true);
        ExpectNear(Picture(camera, under), {x, y}, 2e-5f);
        ExpectNear(WindowOf(camera), WindowOf(before), 1e-5f);
        camera.FitCenterVP(x, y, k, keepTarget);
        ExpectNear(Picture(camera, under), {0.5f, 0.5f}, 2e-5f);

        // A rectangle is seen whole: its corners stay in the picture, its middle moves to the
        // centre.
        camera = before;
        const auto x1 = static_cast<float>(random.Between(0, 1));
        camera.Zoom(x, y, x1, 0.5f, keepTarget);
        const float k2 = std::max(std::abs(x1 - x), std::abs(0.5f - y));
        ExpectNear(Picture(camera, under), {0.5f + (x - x1) / 2 / k2, 0.5f + (y - 0.5f) / 2 / k2},
                   1e-3f);
    }
    EXPECT_EQ(g3d_Camera().Zoom(0.3f, 0.4f, 0.3f, 0.4f, true) == g3d_Camera(), 1);
}

TEST(g3d_Camera, FollowsTheShapeOfTheDevice) {
    g3d_Camera camera;
    EXPECT_EQ(WindowOf(camera.FitVP(2, 1)), Window(2, 1));
    EXPECT_EQ(WindowOf(camera.FitVP(1, 2)), Window(1, 2));
    EXPECT_EQ(WindowOf(camera.FitVP(0, 1).FitVP(1, -1)), Window(1, 2));
    EXPECT_FALSE(camera.IsAspectCorrected());

    camera.CorrectAspect(300, 200, 2, 0, 0.5f, 0.25f, 1);
    EXPECT_TRUE(camera.IsAspectCorrected());
    EXPECT_EQ(WindowOf(camera), Window(4.5f, 1));
    camera.SetLocation({5, 0, 0}, {1, 0, 0}, {0, 0, 1}).SetViewOffset(1, 1);
    camera.Pan(1, 0, 0, false).Rotate(5, g3d_Vector(0, 1, 0), true);
    camera.SetWindow(4.5f, 1).SetNearFar(1, 10000);
    EXPECT_TRUE(camera.IsAspectCorrected());
    const g3d_Camera corrected = camera;
    constexpr void (*clearing[])(g3d_Camera&) = {
        [](auto& c) { c.SetWindow(2, 2); },
        [](auto& c) { c.SetNearFar(1, 5); },
        [](auto& c) { c.SetNearFar(2, 10000); },
        [](auto& c) { c.SetFieldOfView(c.GetFieldOfView(), true); },
        [](auto& c) { c.SetFieldOfView(30, false); },
        [](auto& c) { c.SetProjection(g3d_PARALLEL); },
        [](auto& c) { c.MakeParallel(); },
        [](auto& c) { c.Zoom(0.5f, true); },
        [](auto& c) { c.Fit(UnitVolume()).Fit(UnitVolume()); },
    };
    for (const auto& clear : clearing) {
        g3d_Camera c = corrected;
        clear(c);
        EXPECT_FALSE(c.IsAspectCorrected()) << &clear - clearing;
    }
    // The limits, switched on again, change near and far.
    g3d_Camera limited;
    limited.SetLimitsOff(true).SetNearFar(-1, -2).CorrectAspect(1, 1, 1, 0, 1, 0, 1);
    EXPECT_FALSE(limited.SetLimitsOff(false).IsAspectCorrected());
    // Refused as a whole.
    for (const float bad : {0.0f, -1.0f}) {
        g3d_Camera c;
        c.CorrectAspect(bad, 1, 1, 0, 1, 0, 1).CorrectAspect(1, 1, bad, 0, 1, 0, 1);
        c.CorrectAspect(2, 1, 1, 0, bad, 0, 1).CorrectAspect(1, bad, 1, 0, 1, 0, 1);
        EXPECT_EQ(c == g3d_Camera(), 1);
        EXPECT_FALSE(c.IsAspectCorrected());
    }
}

TEST(g3d_Camera, ModelVolumeSetsNearAndFar) {
    g3d_Camera camera;
    camera.SetLocation({0, 0, 10}, {0, 0, 0}, {0, 1, 0}).SetWindow(0.5f, 0.5f);
    const float angle = camera.GetFieldOfView();
    camera.SetModelBoundingVolume({{-3, 0, 0}, {3, 0, 0}}, 1.0f / 3);
    EXPECT_EQ(NearFarOf(camera), Window(6, 14));
    EXPECT_NEAR(camera.GetFieldOfView(), angle, 1e-4f);
    // The eye inside the model: near is a thousandth of far.
    camera.SetModelBoundingVolume({{-20, 0, 0}, {20, 0, 0}}, -1);
    EXPECT_EQ(NearFarOf(camera), Window(0.03f, 30));
    EXPECT_NEAR(camera.GetFieldOfView(), angle, 1e-4f);
    const g3d_Camera before = camera;
    camera.SetModelBoundingVolume({{0, 0, 20}, {0, 0, 22}}, 0);
    camera.SetModelBoundingVolume(g3d_BoundingVolume(), 0);
    EXPECT_EQ(camera == before, 1);
}

TEST(g3d_Camera, LayersTakeWorldOrPictureCoordinates) {
    g3d_Camera camera;
    g3d_XForm layer;
    camera.SetLayerXForm(true, &layer).SetLayerXForm(false, nullptr);
    EXPECT_EQ(layer, camera.GetProjectionMatrix() * camera.GetVOM());
    camera.SetLayerXForm(false, &layer);
    EXPECT_EQ(layer.Transform({0, 1, 0.25f}), g3d_Point(-1, 1, 0.25f));
    EXPECT_EQ(layer.Transform({0.75f, 0.5f, -1}), g3d_Point(0.5f, 0, -1));
}

TEST(g3d_Camera, Rotates) {
    g3d_Camera camera;
    camera.Rotate(90, g3d_Vector(0, 5, 0), false);
    ExpectNear(camera.GetEye(), {0, 0, -2}, 1e-6f);
    camera.Rotate(90, g3d_Vector(1, 0, 0), false);
    ExpectNear(camera.GetEye(), {0, 2, 0}, 1e-6f);
    ExpectNear(g3d_Point() + camera.GetUp(), {0, 0, 1}, 1e-6f);
    camera = g3d_Camera();
    camera.Rotate(180, g3d_Vector(0, 0, 1), g3d_Point(1, 1, 0));
    ExpectNear(camera.GetEye(), {0, 2, 0}, 1e-6f);
    ExpectNear(camera.GetTarget(), {2, 2, 0}, 1e-6f);

    const struct {
        g3d_Vector from, to;
        g3d_Point eye;
    } turns[] = {{{1, 0, 0}, {0, 3, 0}, {0, 2, 0}},   {{1, 0, 0}, {-2, 0, 0}, {-2, 0, 0}},
                 {{0, 1, 0}, {0, -1, 0}, {-2, 0, 0}}, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}},
                 {{1, 0, 0}, {4, 0, 0}, {2, 0, 0}},   {{0, 0, 3e38f}, {3e38f, 0, 0}, {0, 0, -2}}};
    for (const auto& turn : turns) {
        camera = g3d_Camera();
        ExpectNear(camera.Rotate(turn.from, turn.to, false).GetEye(), turn.eye, 1e-6f);
    }
    camera = g3d_Camera();
    for (int i = 0; i < 100000; ++i) camera.Rotate(1, g3d_Vector(1, 2, 3), false);
    EXPECT_NEAR(camera.GetViewDistance(), 2, 1e-4f);
}

TEST_F(g3d_CameraRecentring, MovesTheTargetBetweenThePlanesFirst) {
    g3d_Camera camera;
    camera.SetNearFar(1, 9).MakeParallel();
    EXPECT_EQ(camera.GetTarget(), g3d_Point(-3, 0, 0));
    EXPECT_EQ(WindowOf(camera), Window(5, 5));
    EXPECT_NEAR(camera.GetFieldOfView(), 53.1301f, 1e-4f);

    const g3d_Vector none;
    EXPECT_EQ(g3d_Camera().Rotate(0, none, false).GetTarget().X(), 2 - 5000.5f);
    EXPECT_EQ(g3d_Camera().Rotate(none, none, false).GetTarget().X(), 2 - 5000.5f);
    EXPECT_EQ(g3d_Camera().Rotate(0, none, true).GetTarget().X(), 0);
    EXPECT_EQ(g3d_Camera().Rotate(0, none, g3d_Point(7, 0, 0)).GetTarget().X(), 0);
    camera.SetLocation({1, 1, 1}, {1, 1, 1}, {0, 1, 0}).Rotate(0, none, false);
    EXPECT_EQ(camera.GetTarget(), g3d_Point(1, 1, -4));
    camera.SetNearFar(3e38f, 3.4e38f).Rotate(0, none, false);
    EXPECT_NEAR(camera.GetViewDistance() / 3.2e38f, 1, 1e-6f);
}

TEST(g3d_Camera, EqualityLeavesOutWhatIsDerived) {
    g3d_Camera a;
    g3d_Camera b;
    static_cast<void>(b.GetVOM());
    EXPECT_EQ(a == b, 1);
    EXPECT_EQ(a != b, 0);
    b.CorrectAspect(1, 1, 1, 0, 1, 0, 1);
    EXPECT_EQ(a == b, 1);
    EXPECT_EQ(a == b.SetLimitsOff(true), 0);
    EXPECT_EQ(a != b, 1);
    EXPECT_EQ(g3d_Camera::GetNearPlane_MinValue(), 1e-5f);
}

#if GTEST_HAS_DEATH_TEST
// The variable is read once per process, so each value gets a process of its own.
TEST(g3d_CameraDeathTest, ZoomOutModesOfTheEnvironment) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string head = "ZRX_ZOOM_TOWARD: Zoom-out set to ";
    const std::string start = head + "use start drag for zoom out origin.\n";
    const std::string center = head + "use center for zoom out origin.\n";
    const std::string toward = head + "transpose center toward start drag position.\n";
    const struct {
        const char* value;
        std::string message;
        float offset;
    } cases[] = {
        {nullptr, "", -0.25f},           {"1", start, -0.25f},   {"2", center, 0},
        {"3", toward, 0.125f},           {"7", toward, 0.125f},  {" 2x", center, 0},
        {"99999999999", toward, 0.125f}, {"abc", start, -0.25f}, {"0", start, -0.25f},
        {"-2", start, -0.25f},
    };
    for (const auto& c : cases) {
        const auto zoomOut = [&c] {
            test_SetVariable("ZRX_ZOOM_TOWARD", c.value);
            const bool asExpected =
                Parallel().ZoomTo(0.75f, 0.5f, 2, true, true).GetViewOffsetX() == c.offset;
            test_SetVariable("ZRX_ZOOM_TOWARD", "2");
            // Without a drag, and when zooming in, the origin is the cursor.
            const bool asEver =
                Parallel().ZoomTo(0.75f, 0.5f, 2, true, false).GetViewOffsetX() == -0.25f &&
                Parallel().ZoomTo(0.75f, 0.5f, 0.5f, true, true).GetViewOffsetX() == 0.125f;
            std::fputs("end", stderr);
            std::exit(asExpected && asEver ? 0 : 1);
        };
        // Three calls, three lines.
        EXPECT_EXIT(zoomOut(), testing::ExitedWithCode(0),
                    "^" + c.message + c.message + c.message + "end")
            << (c.value ? c.value : "unset");
    }
}
#endif

TEST(g3d_CameraC_Kept, TheSwitchIsStoredNegated) {
    const auto movesTarget = [] {
        return g3d_Camera().Rotate(0, g3d_Vector(), false).GetTarget().X() != 0;
    };
    EXPECT_FALSE(movesTarget());
    g3d_Camera_SetTargetRotate(false);
    EXPECT_TRUE(movesTarget());
    g3d_Camera_SetTargetRotate(true);
    EXPECT_FALSE(movesTarget());
}

TEST(g3d_Camera_Kept, WindowLimitsBindTheSetterOnly) {
    g3d_Camera camera;
    camera.SetWindow(2e-4f, 2e-4f).SetNearFar(400, 900);
    EXPECT_EQ(WindowOf(camera), Window(2e-4f, 2e-4f));
    camera.SetLocation({1e-3f, 0, 0}, {0, 0, 0}, {0, 1, 0});
    EXPECT_EQ(WindowOf(camera), Window(2e-4f, 2e-4f));
}

TEST(g3d_Camera_Kept, NearFarRuleRunsOnceAndMayMissTheGapByAnUlp) {
    test_Random random(6);
    int missed = 0;
    for (int i = 0; i < 1000; ++i) {
        const auto nearValue = static_cast<float>(random.Between(1, 1000));
        g3d_Camera camera;
        camera.SetNearFar(nearValue, 0);
        EXPECT_EQ(camera.GetFar(), nearValue + nearValue * 1e-5f);
        if (camera.GetFar() - nearValue < nearValue * 1e-5f) ++missed;
    }
    EXPECT_GT(missed, 300);
}

TEST(g3d_Camera_Kept, ParallelFieldOfViewIgnoresNear) {
    g3d_Camera camera = Parallel();
    camera.SetFieldOfView(30, false);
    EXPECT_NEAR(camera.GetFieldOfView(), 28.0725f, 1e-3f);
    EXPECT_NEAR(camera.GetNear(), 1.866f, 1e-3f);
    EXPECT_GT(camera.SetFieldOfView(0, false).GetNear(), 8e15f);
    EXPECT_EQ(camera.SetFieldOfView(200, false).GetNear(), 1e-5f);
}

TEST(g3d_Camera_Kept, MakePerspectiveClampsATinyFieldOfView) {
    g3d_Camera camera = Parallel();
    camera.SetLocation({1000, 0, 0}, {0, 0, 0}, {0, 1, 0}).SetWindow(1e-3f, 1e-3f);
    EXPECT_NEAR(camera.GetFieldOfView(), 5.7e-5f, 1e-6f);
    EXPECT_NEAR(camera.MakePerspective().GetFieldOfView(), 5.7e-3f, 1e-4f);
}

TEST(g3d_Camera_Kept, FitOfATinySphereMayLoseTheDirection) {
    g3d_Camera camera;
    camera.Fit(g3d_Sphere({1e6f, 1e6f, 1e6f}, 0.001f));
    EXPECT_EQ(camera.GetEye(), camera.GetTarget());
    camera = g3d_Camera();
    camera.Fit(g3d_Sphere({1, 2, 3}, 0));
    EXPECT_EQ(camera.GetEye(), camera.GetTarget());
    EXPECT_EQ(WindowOf(camera), Window(1e-4f, 1e-4f));
}
