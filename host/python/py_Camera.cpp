#include "foundation/coreutils/atr_String.h"
#include "g3d/g3d_BoundingVolume.h"
#include "host/python/py_Values.h"
#include "host/python/py_Views.h"

namespace {

const cow_String kEye = "eye";
const cow_String kTarget = "target";
const cow_String kUp = "up";
const cow_String kWidth = "width";
const cow_String kHeight = "height";
const cow_String kNear = "near";
const cow_String kFar = "far";
const cow_String kAngle = "angleDeg";
const cow_String kKeepNear = "keepNear";
const cow_String kKeepTarget = "keepTarget";
const cow_String kAxis = "axis";
const cow_String kFactor = "factor";
const cow_String kBox = "box";
const cow_String kView = "view";
const cow_String kPoint = "point";
const cow_String kDx = "dx";
const cow_String kDy = "dy";
const cow_String kDz = "dz";

using CameraClass = py_Class<g3d_Camera>;

/// The view layer computes in single precision.
float Single(double number) { return static_cast<float>(number); }

g3d_Point ToView(const gsl_Point& point) {
    return {Single(point.GetX()), Single(point.GetY()), Single(point.GetZ())};
}
g3d_Vector ToView(const gsl_Vector& vector) {
    return {Single(vector.DeltaX()), Single(vector.DeltaY()), Single(vector.DeltaZ())};
}
gsl_Point FromView(const g3d_Point& point) { return {point.X(), point.Y(), point.Z()}; }

py_Result New(omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    return py_Return(g3d_Camera());
}

py_Result SetLocation(g3d_Camera& self, omu_Arguments& arguments) {
    gsl_Point eye;
    gsl_Point target;
    gsl_Vector up;
    arguments.Get(eye, kEye);
    arguments.Get(target, kTarget);
    arguments.Get(up, kUp);
    if (arguments.Error()) return {};
    self.SetLocation(ToView(eye), ToView(target), ToView(up));
    return {};
}

py_Result SetWindow(g3d_Camera& self, omu_Arguments& arguments) {
    double width = 0;
    double height = 0;
    arguments.Get(width, kWidth);
    arguments.Get(height, kHeight);
    if (arguments.Error()) return {};
    self.SetWindow(Single(width), Single(height));
    return {};
}

py_Result SetNearFar(g3d_Camera& self, omu_Arguments& arguments) {
    double nearValue = 0;
    double farValue = 0;
    arguments.Get(nearValue, kNear);
    arguments.Get(farValue, kFar);
    if (arguments.Error()) return {};
    self.SetNearFar(Single(nearValue), Single(farValue));
    return {};
}

py_Result SetFieldOfView(g3d_Camera& self, omu_Arguments& arguments) {
    double angleDeg = 0;
    bool keepNear = true;
    arguments.Get(angleDeg, kAngle);
    arguments.Optional();
    arguments.Get(keepNear, kKeepNear);
    if (arguments.Error()) return {};
    self.SetFieldOfView(Single(angleDeg), keepNear);
    return {};
}

py_Result MakeParallel(g3d_Camera& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    self.MakeParallel();
    return {};
}

py_Result MakePerspective(g3d_Camera& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    self.MakePerspective();
    return {};
}

py_Result Pan(g3d_Camera& self, omu_Arguments& arguments) {
    double dx = 0;
    double dy = 0;
    double dz = 0;
    bool keepTarget = false;
    arguments.Get(dx, kDx);
    arguments.Get(dy, kDy);
    arguments.Optional();
    arguments.Get(dz, kDz);
    arguments.Get(keepTarget, kKeepTarget);
    if (arguments.Error()) return {};
    self.Pan(Single(dx), Single(dy), Single(dz), keepTarget);
    return {};
}

py_Result Zoom(g3d_Camera& self, omu_Arguments& arguments) {
    double factor = 1;
    bool keepTarget = false;
    arguments.Get(factor, kFactor);
    arguments.Optional();
    arguments.Get(keepTarget, kKeepTarget);
    if (arguments.Error()) return {};
    self.Zoom(Single(factor), keepTarget);
    return {};
}

py_Result Rotate(g3d_Camera& self, omu_Arguments& arguments) {
    double angleDeg = 0;
    gsl_Vector axis;
    bool keepTarget = false;
    arguments.Get(angleDeg, kAngle);
    arguments.Get(axis, kAxis);
    arguments.Optional();
    arguments.Get(keepTarget, kKeepTarget);
    if (arguments.Error()) return {};
    self.Rotate(Single(angleDeg), ToView(axis), keepTarget);
    return {};
}

py_Result Fit(g3d_Camera& self, omu_Arguments& arguments) {
    gsl_BBox box;
    py_ViewConstant view;
    arguments.Get(box, kBox);
    arguments.Optional();
    const bool hasView = py_GetOptional(arguments, view, kView);
    if (arguments.Error()) return {};
    if (box.IsEmpty()) return {};
    if (hasView) {
        self.Canned(box.GetExtent(), view.Enumerator());
    } else {
        self.Fit(ToView(box.Low()), ToView(box.High()));
    }
    return {};
}

py_Result FitDevice(g3d_Camera& self, omu_Arguments& arguments) {
    double width = 0;
    double height = 0;
    arguments.Get(width, kWidth);
    arguments.Get(height, kHeight);
    if (arguments.Error()) return {};
    self.FitVP(Single(width), Single(height));
    return {};
}

py_Result Project(const g3d_Camera& self, omu_Arguments& arguments) {
    gsl_Point point;
    arguments.Get(point, kPoint);
    if (arguments.Error()) return {};
    const g3d_Point seen = self.GetVOM().Transform(ToView(point));
    const g3d_Point clip = self.GetProjectionMatrix().Transform(seen);
    if (!(clip.W() > 0)) return {};
    const g3d_Point place = clip.Place();
    return py_ReturnTuple((place.X() + 1.0) / 2, (place.Y() + 1.0) / 2,
                          static_cast<double>(place.Z()));
}

gsl_Point Eye(const g3d_Camera& camera) { return FromView(camera.GetEye()); }
gsl_Point Target(const g3d_Camera& camera) { return FromView(camera.GetTarget()); }
gsl_Vector Up(const g3d_Camera& camera) {
    const g3d_Vector& up = camera.GetUp();
    return {up.X(), up.Y(), up.Z()};
}

template <float (g3d_Camera::*getter)() const noexcept>
double Number(const g3d_Camera& camera) {
    return (camera.*getter)();
}

PyMethodDef kMethods[] = {
    CameraClass::Method<&SetLocation>("setLocation",
                                      "setLocation($self, eye, target, up)\n--\n\n"
                                      "Places the camera."),
    CameraClass::Method<&SetWindow>("setWindow",
                                    "setWindow($self, width, height)\n--\n\n"
                                    "Sets the window: at the near plane in perspective, at the "
                                    "target in parallel\nprojection. It is brought within its "
                                    "limits."),
    CameraClass::Method<&SetNearFar>("setNearFar",
                                     "setNearFar($self, near, far)\n--\n\n"
                                     "Sets the clipping distances; near is at least 1e-5 and far "
                                     "beyond it."),
    CameraClass::Method<&SetFieldOfView>(
        "setFieldOfView",
        "setFieldOfView($self, angleDeg, keepNear=True)\n--\n\n"
        "Sets the angle across the longer side of the window, by scaling the "
        "window or,\nwithout keepNear, by moving the near plane."),
    CameraClass::Method<&MakeParallel>("makeParallel",
                                       "makeParallel($self)\n--\n\n"
                                       "Changes to parallel projection, keeping the field of "
                                       "view."),
    CameraClass::Method<&MakePerspective>("makePerspective",
                                          "makePerspective($self)\n--\n\n"
                                          "Changes to perspective, keeping the field of view."),
    CameraClass::Method<&Pan>("pan",
                              "pan($self, dx, dy, dz=0, keepTarget=False)\n--\n\n"
                              "Moves the camera by fractions of the window, and by dz view "
                              "distances forward.\nWith keepTarget the view offset moves "
                              "instead."),
    CameraClass::Method<&Zoom>("zoom",
                               "zoom($self, factor, keepTarget=False)\n--\n\n"
                               "Multiplies the window by a factor; below 1 magnifies."),
    CameraClass::Method<&Rotate>("rotate",
                                 "rotate($self, angleDeg, axis, keepTarget=False)\n--\n\n"
                                 "Turns the camera about the target around an axis, "
                                 "right-handed."),
    CameraClass::Method<&Fit>("fit",
                              "fit($self, box, view=None)\n--\n\n"
                              "Shows a whole box, from where the camera looks or from FRONT, "
                              "BACK, TOP, BOTTOM,\nRIGHT, LEFT or ISOMETRIC. An empty box "
                              "changes nothing."),
    CameraClass::Method<&FitDevice>("fitDevice",
                                    "fitDevice($self, width, height)\n--\n\n"
                                    "Gives the window the shape of a picture, keeping its smaller "
                                    "side."),
    CameraClass::Method<&Project>(
        "project",
        "project($self, point)\n--\n\n"
        "Returns where a point lies in the picture: x and y from (0, 0) "
        "at the lower left\nto (1, 1), and the depth from -1 at the near "
        "to 1 at the far plane; None for a\npoint that is not in front of "
        "the eye."),
    {},
};

PyGetSetDef kAttributes[] = {
    CameraClass::Attribute<&Eye>("eye", "where the camera is"),
    CameraClass::Attribute<&Target>("target", "what it looks at"),
    CameraClass::Attribute<&Up>("up", "the direction that is up in the picture"),
    CameraClass::Attribute<&Number<&g3d_Camera::GetViewDistance>>(
        "viewDistance", "the distance from eye to target"),
    CameraClass::Attribute<&Number<&g3d_Camera::GetWindowWidth>>("width",
                                                                 "the width of the window"),
    CameraClass::Attribute<&Number<&g3d_Camera::GetWindowHeight>>("height",
                                                                  "the height of the window"),
    CameraClass::Attribute<&Number<&g3d_Camera::GetNear>>("near", "the distance of the near plane"),
    CameraClass::Attribute<&Number<&g3d_Camera::GetFar>>("far", "the distance of the far plane"),
    CameraClass::Attribute<&Number<&g3d_Camera::GetFieldOfView>>(
        "fieldOfView", "the angle across the longer side of the window in degrees"),
    CameraClass::Attribute<&g3d_Camera::IsPerspective>("isPerspective",
                                                       "false for parallel projection"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc, const_cast<char*>(
                    "Camera()\n--\n\n"
                    "A camera in single precision: at first in perspective at (2, 0, 0), looking "
                    "at the origin.\nIts methods change it; copy() keeps a view.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    CameraClass::Constructor<&New>(),
    {},
};

}  // namespace

cow_String py_ValueTraits<g3d_Camera>::Text(const g3d_Camera& camera) {
    return atr("<Camera at %s looking at %s, %s>", py_ValueTraits<gsl_Point>::Text(Eye(camera)),
               py_ValueTraits<gsl_Point>::Text(Target(camera)),
               camera.IsPerspective() ? "perspective" : "parallel");
}

void py_AddCamera(PyObject* module) { CameraClass::Add<&New>(module, slots); }
