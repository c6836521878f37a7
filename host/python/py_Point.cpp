#include "host/python/py_Values.h"
#include "omu/omu_ArgumentTypes.h"

namespace {

const cow_String kX = "x";
const cow_String kY = "y";
const cow_String kZ = "z";
const cow_String kPoint = "point";
const cow_String kVector = "vector";

using PointClass = py_Class<gsl_Point>;
using VectorClass = py_Class<gsl_Vector>;

template <class T>
py_Result NewFromComponents(omu_Arguments& arguments) {
    double x = 0;
    double y = 0;
    double z = 0;
    arguments.Get(x, kX);
    arguments.Get(y, kY);
    arguments.Get(z, kZ);
    if (arguments.Error()) return {};
    return py_Return(T(x, y, z));
}

template <class T>
double Component(const T& triple, int index) {
    return triple[index];
}

template <class T>
cow_String TripleText(const T& triple) {
    return atr("%s(%s, %s, %s)", py_ValueTraits<T>::kName, py_NumberText(triple[0]),
               py_NumberText(triple[1]), py_NumberText(triple[2]));
}

py_Result Distance(const gsl_Point& self, omu_Arguments& arguments) {
    gsl_Point point;
    arguments.Get(point, kPoint);
    if (arguments.Error()) return {};
    return py_Return(self.GetDistance(point));
}

py_Result IsOn(const gsl_Point& self, omu_Arguments& arguments) {
    gsl_Point point;
    arguments.Get(point, kPoint);
    if (arguments.Error()) return {};
    return py_Return(self.IsOn(point));
}

gsl_Vector Between(const gsl_Point& to, const gsl_Point& from) { return to - from; }
gsl_Point MovedBy(const gsl_Point& point, const gsl_Vector& vector) { return point + vector; }
gsl_Point MovedBack(const gsl_Point& point, const gsl_Vector& vector) { return point - vector; }

gsl_Vector GivenVector(omu_Arguments& arguments) {
    gsl_Vector vector;
    arguments.Get(vector, kVector);
    arguments.End();
    return vector;
}

py_Result Dot(const gsl_Vector& self, omu_Arguments& arguments) {
    return py_Return(self.DotProduct(GivenVector(arguments)));
}

py_Result Cross(const gsl_Vector& self, omu_Arguments& arguments) {
    return py_Return(self.CrossProduct(GivenVector(arguments)));
}

py_Result Angle(const gsl_Vector& self, omu_Arguments& arguments) {
    return py_Return(self.AngleWith(GivenVector(arguments), false));
}

py_Result Unit(const gsl_Vector& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    return py_Return(self.NormalizedCopy());
}

gsl_Vector Sum(const gsl_Vector& a, const gsl_Vector& b) { return a + b; }
gsl_Vector Difference(const gsl_Vector& a, const gsl_Vector& b) { return a - b; }
gsl_Vector Scaled(const gsl_Vector& vector, const double& factor) { return vector * factor; }
gsl_Vector ScaledFromLeft(const double& factor, const gsl_Vector& vector) {
    return vector * factor;
}

PyMethodDef kPointMethods[] = {
    PointClass::Method<&Distance>("distance",
                                  "distance($self, point)\n--\n\n"
                                  "Returns the distance to another point."),
    PointClass::Method<&IsOn>("isOn",
                              "isOn($self, point)\n--\n\n"
                              "True when the points are closer than the linear "
                              "tolerance of the library, 1e-6."),
    {},
};

PyGetSetDef kPointAttributes[] = {
    PointClass::Attribute<&gsl_Point::GetX>("x", "the coordinate along x, in model units"),
    PointClass::Attribute<&gsl_Point::GetY>("y", "the coordinate along y, in model units"),
    PointClass::Attribute<&gsl_Point::GetZ>("z", "the coordinate along z, in model units"),
    {},
};

PyType_Slot pointSlots[] = {
    {Py_tp_doc,
     const_cast<char*>(
         "Point(x, y, z)\n--\n\n"
         "A point in model units. Points that are no farther apart than the linear tolerance, "
         "1e-6,\nare equal. point + vector and point - vector move it; point - point is the vector "
         "between.\nIt unpacks into its coordinates, and wherever a point is wanted three numbers "
         "will do.")},
    {Py_tp_methods, kPointMethods},
    {Py_tp_getset, kPointAttributes},
    PointClass::Constructor<&NewFromComponents<gsl_Point>>(),
    PointClass::Length<3>(),
    PointClass::Item<3, &Component<gsl_Point>>(),
    py_Operator<&MovedBy>(Py_nb_add),
    py_Operator<&Between, &MovedBack>(Py_nb_subtract),
    {},
};

PyMethodDef kVectorMethods[] = {
    VectorClass::Method<&Dot>("dot", "dot($self, vector)\n--\n\nReturns the scalar product."),
    VectorClass::Method<&Cross>("cross",
                                "cross($self, vector)\n--\n\n"
                                "Returns the vector product self x vector."),
    VectorClass::Method<&Angle>("angle",
                                "angle($self, vector)\n--\n\n"
                                "Returns the angle between the vectors in radians, 0 to "
                                "pi; pi/2 when one is null."),
    VectorClass::Method<&Unit>("unit",
                               "unit($self)\n--\n\n"
                               "Returns the vector of length 1 in the same direction; a "
                               "null vector gives (0, 0, 0)."),
    {},
};

PyGetSetDef kVectorAttributes[] = {
    VectorClass::Attribute<&gsl_Vector::DeltaX>("x", "the component along x"),
    VectorClass::Attribute<&gsl_Vector::DeltaY>("y", "the component along y"),
    VectorClass::Attribute<&gsl_Vector::DeltaZ>("z", "the component along z"),
    VectorClass::Attribute<&gsl_Vector::Length>("length", "the Euclidean length"),
    {},
};

PyType_Slot vectorSlots[] = {
    {Py_tp_doc,
     const_cast<char*>("Vector(x, y, z)\n--\n\n"
                       "A free vector. Vectors whose difference is shorter than the linear "
                       "tolerance, 1e-6, are\nequal. It unpacks into its components, and wherever "
                       "a vector is wanted three numbers will do.")},
    {Py_tp_methods, kVectorMethods},
    {Py_tp_getset, kVectorAttributes},
    VectorClass::Constructor<&NewFromComponents<gsl_Vector>>(),
    VectorClass::Length<3>(),
    VectorClass::Item<3, &Component<gsl_Vector>>(),
    py_Operator<&Sum>(Py_nb_add),
    py_Operator<&Difference>(Py_nb_subtract),
    py_Operator<&Scaled, &ScaledFromLeft>(Py_nb_multiply),
    {},
};

}  // namespace

bool py_TakeThree(const omu_Primitive& value, double (&numbers)[3]) {
    cow_List<double> list;
    if (!omu_Convert(value, list) || list.Length() != 3) return false;
    for (int i = 0; i < 3; ++i) numbers[i] = list[i];
    return true;
}

cow_String py_ValueTraits<gsl_Point>::Text(const gsl_Point& point) { return TripleText(point); }
cow_String py_ValueTraits<gsl_Vector>::Text(const gsl_Vector& vector) { return TripleText(vector); }

void py_AddPointAndVector(PyObject* module) {
    PointClass::Add<&NewFromComponents<gsl_Point>>(module, pointSlots);
    VectorClass::Add<&NewFromComponents<gsl_Vector>>(module, vectorSlots);
}
