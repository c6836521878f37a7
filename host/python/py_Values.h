#pragma once

#include <type_traits>

#include "g3d/g3d_Camera.h"
#include "g3d/g3d_Color.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_Matrix.h"
#include "host/python/py_Class.h"
#include "host/python/py_Value.h"
#include "omu/omu_ArgumentTypes.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimNumber.h"
#include "utf/utf_Quaternion.h"

/// A rotation in space.
using py_Quaternion = utf_Quaternion<double>;

/// The library's values as classes of the module. Every one shows as what a script would write to
/// get it, where that is short. Boxes and cameras can be changed, the others not.
template <>
struct py_ValueTraits<gsl_Point> {
    static constexpr const char* kName = "Point";
    static cow_String Text(const gsl_Point& point);
};
template <>
struct py_ValueTraits<gsl_Vector> {
    static constexpr const char* kName = "Vector";
    static cow_String Text(const gsl_Vector& vector);
};
template <>
struct py_ValueTraits<gsl_Matrix> {
    static constexpr const char* kName = "Matrix";
    static cow_String Text(const gsl_Matrix& matrix);
};
template <>
struct py_ValueTraits<gsl_BBox> {
    static constexpr const char* kName = "BBox";
    static cow_String Text(const gsl_BBox& box);
};
template <>
struct py_ValueTraits<py_Quaternion> {
    static constexpr const char* kName = "Quaternion";
    static cow_String Text(const py_Quaternion& quaternion);
};
template <>
struct py_ValueTraits<g3d_Camera> {
    static constexpr const char* kName = "Camera";
    static cow_String Text(const g3d_Camera& camera);
};
template <>
struct py_ValueTraits<g3d_Color> {
    static constexpr const char* kName = "Color";
    static cow_String Text(const g3d_Color& color);
};

/// Three numbers in a sequence; false when `value` is none of these.
[[nodiscard]] bool py_TakeThree(const omu_Primitive& value, double (&numbers)[3]);

/// Takes an argument that is a value of the class; for points and vectors also three numbers.
template <class T>
requires requires { py_ValueTraits<T>::kName; }
[[nodiscard]] bool omu_Convert(const omu_Primitive& value, T& out, omu_TypeFault& fault) {
    if (const T* const held = py_FindValue<T>(value)) {
        out = *held;
        return true;
    }
    if constexpr (std::is_constructible_v<T, double, double, double> &&
                  !std::is_same_v<T, py_Quaternion> && !std::is_same_v<T, g3d_Color>) {
        double numbers[3];
        if (py_TakeThree(value, numbers)) {
            out = T(numbers[0], numbers[1], numbers[2]);
            return true;
        }
    }
    fault = {value.TypeString(), py_ValueTraits<T>::kName, {}};
    return false;
}

/// Reads an argument that may be left out, or be None, and says whether it was given.
template <class T>
bool py_GetOptional(omu_Arguments& arguments, T& value, const cow_String& keyword) {
    arguments.Get(value, keyword);
    if (!arguments.ErrorOnPrevious()) return true;
    omu_PrimNone none;
    if (arguments.Alternative()) arguments.Get(none, keyword);
    if (arguments.ErrorOnPrevious() && arguments.Alternative()) arguments.Get(value, keyword);
    return false;
}

/// The result of a command that answers several values: a tuple of them.
template <class... Values>
[[nodiscard]] py_Result py_ReturnTuple(const Values&... values) {
    cow_List<omu_PrimHandle> elements;
    (elements.Append(omu_PrimHandle(py_Return(values).release())), ...);
    return std::make_unique<omu_PrimTuple>(elements);
}

/// The text of a number as scripts write it.
[[nodiscard]] inline cow_String py_NumberText(double number) {
    return omu_PrimNumber::FloatText(number);
}

/// Add the classes to the module.
void py_AddPointAndVector(PyObject* module);
void py_AddMatrix(PyObject* module);
void py_AddBBox(PyObject* module);
void py_AddQuaternion(PyObject* module);
void py_AddCamera(PyObject* module);
void py_AddColor(PyObject* module);
