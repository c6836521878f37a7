#include <cmath>

#include "foundation/coreutils/atr_String.h"
#include "host/python/py_Values.h"

namespace {

const cow_String kX = "x";
const cow_String kY = "y";
const cow_String kZ = "z";
const cow_String kW = "w";
const cow_String kAxis = "axis";
const cow_String kAngle = "angleRad";
const cow_String kMatrix = "matrix";

using QuaternionClass = py_Class<py_Quaternion>;

py_Quaternion Make(double x, double y, double z, double w) {
    const double components[] = {x, y, z, w};
    return py_Quaternion(res_QUATERNION_3D, components);
}

py_Result New(omu_Arguments& arguments) {
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 1;
    arguments.Get(x, kX);
    arguments.Get(y, kY);
    arguments.Get(z, kZ);
    arguments.Get(w, kW);
    if (arguments.Error()) return {};
    return py_Return(Make(x, y, z, w));
}

py_Result FromAxis(omu_Arguments& arguments) {
    gsl_Vector axis;
    double angleRad = 0;
    arguments.Get(axis, kAxis);
    arguments.Get(angleRad, kAngle);
    if (arguments.Error()) return {};
    if (!axis.Normalize()) return py_Return(Make(0, 0, 0, 1));
    const double sine = std::sin(angleRad / 2);
    return py_Return(Make(axis.DeltaX() * sine, axis.DeltaY() * sine, axis.DeltaZ() * sine,
                          std::cos(angleRad / 2)));
}

py_Result FromMatrix(omu_Arguments& arguments) {
    gsl_Matrix matrix;
    arguments.Get(matrix, kMatrix);
    if (arguments.Error()) return {};
    return py_Return(py_Quaternion(res_QUATERNION_3D, matrix));
}

py_Result Inverse(const py_Quaternion& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    return py_Return(self.inverse());
}

py_Result Cosines(const py_Quaternion& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    return py_Return(self.cosines());
}

py_Result RotationVector(const py_Quaternion& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    const utf_Vector<double> vector = self.toVector();
    return py_Return(gsl_Vector(vector[0], vector[1], vector[2]));
}

py_Quaternion Product(const py_Quaternion& left, const py_Quaternion& right) {
    return left.mult(right);
}

double ComponentAt(const py_Quaternion& quaternion, int index) {
    return quaternion.Components()[index];
}

template <int index>
double Component(const py_Quaternion& quaternion) {
    return ComponentAt(quaternion, index);
}

PyMethodDef kMethods[] = {
    QuaternionClass::StaticMethod<&FromAxis>(
        "fromAxis",
        "fromAxis(axis, angleRad)\n--\n\n"
        "Returns the rotation by an angle about an axis; the identity when the axis is "
        "null."),
    QuaternionClass::StaticMethod<&FromMatrix>(
        "fromMatrix", "fromMatrix(matrix)\n--\n\nReturns the rotation of a matrix."),
    QuaternionClass::Method<&Inverse>("inverse",
                                      "inverse($self)\n--\n\n"
                                      "Returns the inverse of a unit quaternion."),
    QuaternionClass::Method<&Cosines>("cosines",
                                      "cosines($self)\n--\n\n"
                                      "Returns the direction cosines, 3 rows of 3 numbers; row i "
                                      "is the local axis i in\nglobal coordinates."),
    QuaternionClass::Method<&RotationVector>("rotationVector",
                                             "rotationVector($self)\n--\n\n"
                                             "Returns the axis times the angle in radians."),
    {},
};

PyGetSetDef kAttributes[] = {
    QuaternionClass::Attribute<&Component<0>>("x", "the first component of the vector part"),
    QuaternionClass::Attribute<&Component<1>>("y", "the second component of the vector part"),
    QuaternionClass::Attribute<&Component<2>>("z", "the third component of the vector part"),
    QuaternionClass::Attribute<&Component<3>>("w", "the scalar part"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc,
     const_cast<char*>("Quaternion(x, y, z, w)\n--\n\n"
                       "A rotation in space, vector part first; the identity is (0, 0, 0, 1). "
                       "Nothing normalises it.\na * b is the Hamilton product.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    QuaternionClass::Constructor<&New>(),
    QuaternionClass::Length<4>(),
    QuaternionClass::Item<4, &ComponentAt>(),
    py_Operator<&Product>(Py_nb_multiply),
    {},
};

}  // namespace

cow_String py_ValueTraits<py_Quaternion>::Text(const py_Quaternion& quaternion) {
    const double* const q = quaternion.Components();
    return atr("Quaternion(%s, %s, %s, %s)", py_NumberText(q[0]), py_NumberText(q[1]),
               py_NumberText(q[2]), py_NumberText(q[3]));
}

void py_AddQuaternion(PyObject* module) { QuaternionClass::Add<&New>(module, slots); }
