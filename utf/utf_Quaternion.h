#pragma once

#include "cow/cow_2DArray.h"
#include "cow/cow_List.h"
#include "utf/utf_EngineeringData.h"
#include "utf/utf_Quat2dBase.h"
#include "utf/utf_Quat3dBase.h"
#include "utf/utf_Vector.h"

/// A rotation in the plane (type 6, two components) or in space (type 7, four components), laid out
/// as in `utf_Quat2dBase` and `utf_Quat3dBase`, whose conventions hold. Unlike these views it owns
/// its components; results are new objects.
///
/// A constructor that takes a type code throws `nex_PrimException` "Unknown quaternion type" for
/// anything but 6 and 7, before it looks at its other argument.
template <class T>
class utf_Quaternion : public utf_EngineeringData<T> {
  public:
    /// Number of components of a quaternion of type `dataType`: 2 for 6, 4 for 7, else 0.
    [[nodiscard]] static int numComponents(res_DataTypeEnm dataType) noexcept {
        return dataType == res_QUATERNION_2D ? 2 : dataType == res_QUATERNION_3D ? 4 : 0;
    }
    using utf_EngineeringData<T>::numComponents;

    utf_Quaternion(const utf_Quaternion&) = default;
    utf_Quaternion& operator=(const utf_Quaternion&) = default;

    /// A plane rotation by `utf_Quat2dBase::set(a, b)`.
    utf_Quaternion(const gsl_Vector& a, const gsl_Vector& b);
    /// A rotation in space by `utf_Quat3dBase::set(x, y, z)`.
    utf_Quaternion(const gsl_Vector& x, const gsl_Vector& y, const gsl_Vector& z);
    /// The rotation (q1 q2) q3 of the rotations by the three angles about the 1-, 2- and 3-axis.
    utf_Quaternion(T angle1Rad, T angle2Rad, T angle3Rad);
    /// From direction cosines whose rows are the local axes; rows and columns that are missing
    /// count as zero.
    utf_Quaternion(res_DataTypeEnm dataType, const cow_2DArray<T>& cosines);
    /// From its components; missing ones are zero, surplus ones are ignored.
    utf_Quaternion(res_DataTypeEnm dataType, const cow_List<T>& components);
    /// The rotation of `matrix`.
    utf_Quaternion(res_DataTypeEnm dataType, const gsl_Matrix& matrix);
    /// A copy of 2 or 4 components.
    utf_Quaternion(res_DataTypeEnm dataType, T* components)
        : utf_Quaternion(dataType, static_cast<const T*>(components)) {}
    utf_Quaternion(res_DataTypeEnm dataType, const T* components);

    [[nodiscard]] utf_Quaternion* Copy() const override { return new utf_Quaternion(*this); }

    /// Elements of the direction-cosine matrix in space, whatever the type: for type 6 these read
    /// the two missing components as zero in the places of z and w.
    [[nodiscard]] T R11() const { return View3d().R11(); }
    [[nodiscard]] T R12() const { return View3d().R12(); }
    [[nodiscard]] T R13() const { return View3d().R13(); }
    [[nodiscard]] T R21() const { return View3d().R21(); }
    [[nodiscard]] T R22() const { return View3d().R22(); }
    [[nodiscard]] T R23() const { return View3d().R23(); }
    [[nodiscard]] T R31() const { return View3d().R31(); }
    [[nodiscard]] T R32() const { return View3d().R32(); }
    [[nodiscard]] T R33() const { return View3d().R33(); }
    /// Elements of the in-plane matrix from the first two components, whatever the type.
    [[nodiscard]] T R11_2d() const { return View2d().R11_2d(); }
    [[nodiscard]] T R12_2d() const { return View2d().R12_2d(); }
    [[nodiscard]] T R21_2d() const { return View2d().R21_2d(); }
    [[nodiscard]] T R22_2d() const { return View2d().R22_2d(); }
    [[nodiscard]] T R33_2d() const { return View2d().R33_2d(); }

    /// The direction-cosine matrix by the view of the type; for type 6 see the `Kept:` note of
    /// `utf_Quat2dBase::cosines`. The array form starts from zeros.
    void cosines(T (*const rows)[3]) const;
    [[nodiscard]] cow_2DArray<T> cosines() const;

    /// The inverse of a unit quaternion, of the same type.
    [[nodiscard]] utf_Quaternion inverse() const;

    /// The Hamilton product of this (left) and `other`. Of two types the result is of type 7.
    [[nodiscard]] utf_Quaternion mult(const utf_Quaternion& other) const;

    /// The rotation vector with this type code and number of components; for type 7 the fourth is
    /// 0.
    [[nodiscard]] utf_Vector<T> toVector() const;

    /// `projectOn` of the view with the third local axis of `target` as the vector.
    [[nodiscard]] bool projectOn(const utf_Quaternion& target, unsigned axis, double tol);

    void Print(aio_ostream& stream, int indent) const;

  protected:
    /// The identity of the type.
    explicit utf_Quaternion(res_DataTypeEnm dataType);

  private:
    bool Is2d() const noexcept { return this->type() == res_QUATERNION_2D; }
    // A view holds a plain pointer and serves reading and writing alike; the const functions only
    // read through it.
    utf_Quat2dBase<T> View2d() const { return utf_Quat2dBase<T>(Writable()); }
    utf_Quat3dBase<T> View3d() const { return utf_Quat3dBase<T>(Writable()); }
    T* Writable() const { return const_cast<T*>(this->Components()); }
    cow_2DArray<T> quatToCosine2D() const;
    cow_2DArray<T> quatToCosine3D() const;
    utf_Quaternion Promoted() const;
};

extern template class KTSOVUGEOM_API utf_Quaternion<float>;
extern template class KTSOVUGEOM_API utf_Quaternion<double>;
