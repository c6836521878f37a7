#include "utf/utf_Quaternion.h"

#include <algorithm>
#include <cmath>

#include "foundation/shared/nex_Exception.h"
#include "gsl/gsl_Matrix.h"
#include "gsl/gsl_Vector.h"

namespace {

constexpr const char* unknownTypeText = "Unknown quaternion type";

/// `dataType` when it is a quaternion type; throws otherwise.
res_DataTypeEnm Checked(res_DataTypeEnm dataType) {
    if (dataType != res_QUATERNION_2D && dataType != res_QUATERNION_3D) {
        KTSBasThrow(nex_PrimException(unknownTypeText));
    }
    return dataType;
}

/// Row `row` of an array of local axes; what is missing is 0.
template <class T>
gsl_Vector AxisOf(const cow_2DArray<T>& rows, int row) {
    const auto entry = [&](int column) {
        return row < rows.Rows() && column < rows.Cols() ? double(rows.ConstGet(row, column)) : 0;
    };
    return gsl_Vector(entry(0), entry(1), entry(2));
}

}  // namespace

template <class T>
utf_Quaternion<T>::utf_Quaternion(res_DataTypeEnm dataType)
    : utf_EngineeringData<T>(Checked(dataType), numComponents(dataType)) {
    this->Components()[this->numComponents() - 1] = 1;
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(const gsl_Vector& a, const gsl_Vector& b)
    : utf_Quaternion(res_QUATERNION_2D) {
    View2d().set(a, b);
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(const gsl_Vector& x, const gsl_Vector& y, const gsl_Vector& z)
    : utf_Quaternion(res_QUATERNION_3D) {
    View3d().set(x, y, z);
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(T angle1Rad, T angle2Rad, T angle3Rad)
    : utf_Quaternion(res_QUATERNION_3D) {
    const auto halfSine = [](T angleRad) { return std::sin(double(angleRad) / 2); };
    const auto halfCosine = [](T angleRad) { return std::cos(double(angleRad) / 2); };
    double product[4] = {halfSine(angle1Rad), 0, 0, halfCosine(angle1Rad)};
    const double second[4] = {0, halfSine(angle2Rad), 0, halfCosine(angle2Rad)};
    const double third[4] = {0, 0, halfSine(angle3Rad), halfCosine(angle3Rad)};
    utf_Quat3dBase<double>(product).mult(second, product);
    utf_Quat3dBase<double>(product).mult(third, product);
    std::transform(product, product + 4, this->Components(),
                   [](double component) { return static_cast<T>(component); });
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(res_DataTypeEnm dataType, const cow_2DArray<T>& cosines)
    : utf_Quaternion(dataType) {
    if (Is2d()) {
        View2d().set(AxisOf(cosines, 0), AxisOf(cosines, 1));
    } else {
        View3d().set(AxisOf(cosines, 0), AxisOf(cosines, 1), AxisOf(cosines, 2));
    }
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(res_DataTypeEnm dataType, const cow_List<T>& components)
    : utf_Quaternion(dataType) {
    for (int i = 0; i < this->numComponents(); ++i) {
        this->Components()[i] = i < components.Length() ? components.ConstGet(i) : T(0);
    }
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(res_DataTypeEnm dataType, const gsl_Matrix& matrix)
    : utf_Quaternion(dataType) {
    if (Is2d()) {
        View2d().set(matrix);
    } else {
        View3d().set(matrix);
    }
}

template <class T>
utf_Quaternion<T>::utf_Quaternion(res_DataTypeEnm dataType, const T* components)
    : utf_Quaternion(dataType) {
    std::copy_n(components, this->numComponents(), this->Components());
}

template <class T>
void utf_Quaternion<T>::cosines(T (*const rows)[3]) const {
    if (Is2d()) {
        View2d().cosines(rows);
    } else {
        View3d().cosines(rows);
    }
}

template <class T>
cow_2DArray<T> utf_Quaternion<T>::cosines() const {
    return Is2d() ? quatToCosine2D() : quatToCosine3D();
}

namespace {

template <class T>
cow_2DArray<T> ArrayOf(const T (&rows)[3][3]) {
    cow_2DArray<T> result(3, 3);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) result.Get(r, c) = rows[r][c];
    }
    return result;
}

}  // namespace

template <class T>
cow_2DArray<T> utf_Quaternion<T>::quatToCosine2D() const {
    T rows[3][3] = {};
    View2d().cosines(rows);
    return ArrayOf(rows);
}

template <class T>
cow_2DArray<T> utf_Quaternion<T>::quatToCosine3D() const {
    T rows[3][3] = {};
    View3d().cosines(rows);
    return ArrayOf(rows);
}

template <class T>
utf_Quaternion<T> utf_Quaternion<T>::inverse() const {
    utf_Quaternion result(*this);
    if (Is2d()) {
        View2d().inverse(result.Components());
    } else {
        View3d().inverse(result.Components());
    }
    return result;
}

template <class T>
utf_Quaternion<T> utf_Quaternion<T>::Promoted() const {
    if (!Is2d()) return *this;
    const T spatial[4] = {0, 0, this->Components()[0], this->Components()[1]};
    return utf_Quaternion(res_QUATERNION_3D, spatial);
}

template <class T>
utf_Quaternion<T> utf_Quaternion<T>::mult(const utf_Quaternion& other) const {
    if (Is2d() && other.Is2d()) {
        utf_Quaternion result(*this);
        View2d().mult(other.Components(), result.Components());
        return result;
    }
    utf_Quaternion result = Promoted();
    result.View3d().mult(other.Promoted().Components(), result.Components());
    return result;
}

template <class T>
utf_Vector<T> utf_Quaternion<T>::toVector() const {
    utf_Vector<T> result(this->type(), this->numComponents());
    if (Is2d()) {
        View2d().toVector(result.Components());
    } else {
        View3d().toVector(result.Components());
    }
    return result;
}

template <class T>
bool utf_Quaternion<T>::projectOn(const utf_Quaternion& target, unsigned axis, double tol) {
    const gsl_Vector thirdAxis =
        target.Is2d() ? gsl_Vector(0, 0, 1) : gsl_Vector(target.R31(), target.R32(), target.R33());
    return Is2d() ? View2d().projectOn(thirdAxis, axis, tol)
                  : View3d().projectOn(thirdAxis, axis, tol);
}

template <class T>
void utf_Quaternion<T>::Print(aio_ostream& stream, int indent) const {
    if (Is2d()) {
        View2d().Print(stream, indent);
    } else {
        View3d().Print(stream, indent);
    }
}

template class utf_EngineeringData<float>;
template class utf_EngineeringData<double>;
template class utf_Vector<float>;
template class utf_Vector<double>;
template class utf_Quaternion<float>;
template class utf_Quaternion<double>;
