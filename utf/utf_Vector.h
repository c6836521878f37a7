#pragma once

#include "utf/utf_EngineeringData.h"

/// A vector result with the type code of what it came from: the rotation vector of a quaternion has
/// the quaternion's code and its number of components.
template <class T>
class utf_Vector : public utf_EngineeringData<T> {
  public:
    using utf_EngineeringData<T>::utf_EngineeringData;

    [[nodiscard]] utf_Vector* Copy() const override { return new utf_Vector(*this); }

    /// Component `i`; 0 outside the vector.
    [[nodiscard]] T operator[](int i) const noexcept {
        return i >= 0 && i < this->numComponents() ? this->Components()[i] : T(0);
    }
};

extern template class KTSOVUGEOM_API utf_Vector<float>;
extern template class KTSOVUGEOM_API utf_Vector<double>;
