// The camera and the colours.

#include "g3d/g3d_Camera.h"
#include "g3d/g3d_ColorC.h"
#include "testing/same/same_Report.h"

namespace {

void Show(same_Report& report, const g3d_Camera& camera) {
    report.Print("exact g3d_Camera", camera.GetEye(), camera.GetTarget(), camera.GetUp(),
                 camera.GetWindowWidth(), camera.GetWindowHeight(), camera.GetNear(),
                 camera.GetFar(), camera.IsPerspective(), camera.GetViewOffsetX(),
                 camera.GetViewOffsetY(), camera.GetVOM(), camera.GetProjectionMatrix());
}

void Cameras(same_Report& report, const float (&f)[7]) {
    const g3d_Point p(f[0], f[1], f[2]), q(f[3], f[4], f[5]);
    const g3d_Vector v(f[1], f[2], f[3]), w(f[4], f[6], f[0]);
    const bool yes = f[6] > 0, no = f[5] > 0;
    g3d_Camera camera;
    camera.SetWindow(f[0], f[1]).SetNearFar(f[2], f[3]).SetViewOffset(f[4], f[5]);
    if (no) camera.MakePerspective();
    Show(report, camera.SetLocation(p, q, w).Pan(f[2], f[3], f[4], yes));
    if (yes) camera.MakeParallel();
    camera.Rotate(v, w, no).Rotate(w, v, q).Zoom(f[3], no).Zoom(f[2], f[3], f[4], f[5], yes);
    Show(report, camera);
    camera.ZoomTo(f[0], f[1], f[2], yes, no).CorrectAspect(f[0], f[1], f[2], 0, f[3], 0, f[4]);
    Show(report, camera.SetModelBoundingVolume({p, q}, f[6]).FitCenterVP(f[0], f[1], f[2], yes));
    Show(report, camera.Fit(p, q).FitVP(f[5], f[6]));
    Show(report, camera.Canned({p, f[3]}, g3d_VIEW_ISOMETRIC));
    const float reach = camera.GetEye().Distance(q) + camera.GetTarget().Distance(q);
    g3d_Camera turned = camera;
    turned.Rotate(f[0], v, q);
    report.Print("near g3d_Camera::Rotate", reach, turned.GetEye(), turned.GetTarget(),
                 turned.GetUp());
    const float before = camera.GetFieldOfView();
    camera.SetFieldOfView(f[0] * 10, yes);
    report.Print("near g3d_Camera::SetFieldOfView", 0.0f, before, camera.GetWindowWidth(),
                 camera.GetWindowHeight(), camera.GetNear(), camera.GetViewOffsetX());
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
    report.Print("exact g3d colours", rgb, ofA, ofB, RGBDist(a, b));
}

}  // namespace

void same_View(same_Report& report) {
    test_Random random(4);
    for (int round = 0; round < 1000; ++round) {
        float f[7];
        for (float& number : f) number = static_cast<float>(same_Coordinate(random));
        g3d_Camera_SetTargetRotate(round % 3 != 0);
        Cameras(report, f);
        Colours(report, random);
    }
}
