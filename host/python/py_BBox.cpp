#include "foundation/coreutils/atr_String.h"
#include "host/python/py_Values.h"

namespace {

const cow_String kLow = "low";
const cow_String kHigh = "high";
const cow_String kItem = "item";
const cow_String kBox = "box";
const cow_String kMatrix = "matrix";

using BoxClass = py_Class<gsl_BBox>;

py_Result New(omu_Arguments& arguments) {
    gsl_Point low;
    gsl_Point high(-1, -1, -1);
    arguments.Optional();
    const bool hasLow = py_GetOptional(arguments, low, kLow);
    const bool hasHigh = py_GetOptional(arguments, high, kHigh);
    if (arguments.Error()) return {};
    if (hasLow && !hasHigh) high = low;
    if (hasHigh && !hasLow) low = high;
    return py_Return(gsl_BBox(low, high));
}

/// The argument that is a box or a point, which is a box without size.
gsl_BBox GivenItem(omu_Arguments& arguments) {
    gsl_BBox box;
    gsl_Point point;
    arguments.Get(box, kItem);
    const bool isPoint = arguments.ErrorOnPrevious() && arguments.Alternative();
    if (isPoint) arguments.Get(point, kItem);
    arguments.End();
    return isPoint ? gsl_BBox(point, point) : box;
}

gsl_BBox GivenBox(omu_Arguments& arguments) {
    gsl_BBox box;
    arguments.Get(box, kBox);
    arguments.End();
    return box;
}

py_Result Add(gsl_BBox& self, omu_Arguments& arguments) {
    self.Add(GivenItem(arguments));
    return {};
}

py_Result Contains(const gsl_BBox& self, omu_Arguments& arguments) {
    return py_Return(self.ContainsBox(GivenItem(arguments)));
}

py_Result Intersects(const gsl_BBox& self, omu_Arguments& arguments) {
    return py_Return(self.Intersect(GivenBox(arguments)));
}

py_Result Transformed(const gsl_BBox& self, omu_Arguments& arguments) {
    gsl_Matrix matrix;
    arguments.Get(matrix, kMatrix);
    if (arguments.Error()) return {};
    gsl_BBox image = self;
    image.Transform(matrix);
    return py_Return(image);
}

const gsl_Point& Low(const gsl_BBox& box) { return box.Low(); }
const gsl_Point& High(const gsl_BBox& box) { return box.High(); }

PyMethodDef kMethods[] = {
    BoxClass::Method<&Add>("add",
                           "add($self, item)\n--\n\n"
                           "Grows the box to include a point or another box."),
    BoxClass::Method<&Contains>("contains",
                                "contains($self, item)\n--\n\n"
                                "True when a point or box is inside or beyond a face "
                                "by at most 1e-10."),
    BoxClass::Method<&Intersects>("intersects",
                                  "intersects($self, box)\n--\n\n"
                                  "True when the boxes overlap or touch."),
    BoxClass::Method<&Transformed>("transformed",
                                   "transformed($self, matrix)\n--\n\n"
                                   "Returns the box about the transformed corners."),
    {},
};

PyGetSetDef kAttributes[] = {
    BoxClass::Attribute<&Low>("low", "the corner with the least coordinates"),
    BoxClass::Attribute<&High>("high", "the corner with the largest coordinates"),
    BoxClass::Attribute<&gsl_BBox::Center>("center", "the midpoint of the corners"),
    BoxClass::Attribute<&gsl_BBox::Size>("diagonal",
                                         "the length of the diagonal; -1.0 for an empty box"),
    BoxClass::Attribute<&gsl_BBox::IsEmpty>("isEmpty", "true when the box contains nothing"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc,
     const_cast<char*>("BBox(low=None, high=None)\n--\n\n"
                       "A box along the axes, in model units. Without corners it is empty, and "
                       "grows by what is\nadded; with one it is that point.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    BoxClass::Constructor<&New>(),
    {},
};

}  // namespace

cow_String py_ValueTraits<gsl_BBox>::Text(const gsl_BBox& box) {
    if (box == gsl_BBox()) return "BBox()";
    return atr("BBox(%s, %s)", py_ValueTraits<gsl_Point>::Text(box.Low()),
               py_ValueTraits<gsl_Point>::Text(box.High()));
}

void py_AddBBox(PyObject* module) { BoxClass::Add<&New>(module, slots); }
