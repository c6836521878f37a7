// The camera and the colours.

#include <cmath>
#include <iterator>

#include "g3d/g3d_Camera.h"
#include "g3d/g3d_ColorC.h"
#include "testing/same/same_Report.h"

namespace {

using Numbers = const float (&)[7];

/// The operations that use no trigonometric function.
constexpr void (*kOperations[])(g3d_Camera&, Numbers) = {
    [](g3d_Camera& c, Numbers f) {
        c.SetLocation({f[0], f[1], f[2]}, {f[3], f[4], f[5]}, {f[6], f[0], f[1]});
    },
    [](g3d_Camera& c, Numbers f) { c.SetWindow(f[0], f[1]).SetNearFar(f[2], f[3]); },
    [](g3d_Camera& c, Numbers f) { c.SetViewOffset(f[0], f[1]).Pan(f[2], f[3], f[4], f[5] > 0); },
    [](g3d_Camera& c, Numbers f) { f[0] > 0 ? c.MakeParallel() : c.MakePerspective(); },
    [](g3d_Camera& c, Numbers f) { c.Zoom(f[0], f[1] > 0).Zoom(f[2], f[3], f[4], f[5], f[6] > 0); },
    [](g3d_Camera& c, Numbers f) { c.ZoomTo(f[0], f[1], f[2], f[3] > 0, f[4] > 0); },
    [](g3d_Camera& c, Numbers f) {
        c.Rotate(g3d_Vector(f[0], f[1], f[2]), g3d_Vector(f[3], f[4], f[5]), f[6] > 0);
    },
    [](g3d_Camera& c, Numbers f) {
        c.Rotate({f[0], f[1], f[2]}, {f[3], f[4], f[5]}, g3d_Point(f[6], f[0], f[1]));
    },
    [](g3d_Camera& c, Numbers f) {
        c.Fit({f[0], f[1], f[2]}, {f[3], f[4], f[5]}).FitVP(f[5], f[6]);
    },
    [](g3d_Camera& c, Numbers f) {
        c.Canned({{f[0], f[1], f[2]}, f[3]}, g3d_VIEW_ISOMETRIC);
    },
    [](g3d_Camera& c, Numbers f) {
        c.SetModelBoundingVolume({{f[0], f[1], f[2]}, {f[3], f[4], f[5]}}, f[6]);
    },
    [](g3d_Camera& c, Numbers f) { c.CorrectAspect(f[0], f[1], f[2], 0, f[3], 0, f[4]); },
    [](g3d_Camera& c, Numbers f) { c.FitCenterVP(f[0], f[1], f[2], f[3] > 0); },
};

void Turned(same_Report& report, g3d_Camera camera, Numbers f) {
    report.Near("g3d_Camera::GetFieldOfView", 0.0f, camera.GetFieldOfView());
    g3d_Camera other = camera;
    camera.SetFieldOfView(f[0] * 10, f[6] > 0);
    report.Near("g3d_Camera::SetFieldOfView", 0.0f, camera.GetWindowWidth(),
                camera.GetWindowHeight(), camera.GetNear(), camera.GetViewOffsetX());
    const g3d_Point centre(f[3], f[4], f[5]);
    const float reach = other.GetEye().Distance(centre) + other.GetTarget().Distance(centre);
    other.Rotate(f[0], g3d_Vector(f[1], f[2], f[3]), centre);
    report.Near("g3d_Camera::Rotate", reach, other.GetEye(), other.GetTarget(), other.GetUp());
}

void Colours(same_Report& report, test_Random& random) {
    float hsv[3], ofA[3], ofB[3];
    unsigned short a[3], b[3], rgb[4][3] = {};
    for (float& part : hsv) part = static_cast<float>(random.Between(-0.2, 1.2));
    for (unsigned short& part : a) part = static_cast<unsigned short>(random.Below(65536));
    for (unsigned short& part : b) part = static_cast<unsigned short>(random.Below(4) * 21845);
    HSVToRGB(rgb[0], hsv);
    RGBToHSV(ofA, a);
    RGBToHSV(ofB, b);
    MixRGB(rgb[1], a, hsv[1], b, hsv[2]);
    MixHSV(rgb[2], a, hsv[1], b, hsv[2]);
    PctToRGB(rgb[3], std::abs(hsv[0]), ofA[1], ofB[2]);
    report.Exact("g3d colours", rgb, ofA, ofB, RGBDist(a, b));
}

}  // namespace

void same_View(same_Report& report) {
    test_Random random(4);
    g3d_Camera camera;
    for (int round = 0; round < 2000; ++round) {
        float f[7];
        for (float& number : f) number = static_cast<float>(same_Coordinate(random));
        if (round % 50 == 0) camera = g3d_Camera();
        g3d_Camera_SetTargetRotate(round % 3 != 0);
        const int operation = random.Below(std::size(kOperations));
        kOperations[operation](camera, f);
        report.Exact("g3d_Camera", operation, camera.GetEye(), camera.GetTarget(), camera.GetUp(),
                     camera.GetWindowWidth(), camera.GetWindowHeight(), camera.GetNear(),
                     camera.GetFar(), camera.IsPerspective(), camera.GetViewOffsetX(),
                     camera.GetViewOffsetY(), camera.GetVOM(), camera.GetProjectionMatrix());
        Turned(report, camera, f);
        Colours(report, random);
    }
}
