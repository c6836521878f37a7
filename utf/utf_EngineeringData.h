#pragma once

#include <algorithm>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/basicutils/res_DataTypeEnm.h"

/// The components of one engineering quantity (a vector, a quaternion, a tensor) with the code of
/// its data type. Values are kept in place, at most `maxComponents` of them; a copy copies them.
template <class T>
class utf_EngineeringData {
  public:
    static constexpr int maxComponents = 9;

    /// `count` components (limited to 0..`maxComponents`), all zero.
    utf_EngineeringData(res_DataTypeEnm dataType, int count)
        : typeCode(dataType), componentCount(std::clamp(count, 0, maxComponents)) {}
    utf_EngineeringData(const utf_EngineeringData&) = default;
    utf_EngineeringData& operator=(const utf_EngineeringData&) = default;
    virtual ~utf_EngineeringData() = default;

    /// A new copy of the object as its own class, owned by the caller.
    [[nodiscard]] virtual utf_EngineeringData* Copy() const {
        return new utf_EngineeringData(*this);
    }

    [[nodiscard]] res_DataTypeEnm type() const noexcept { return typeCode; }
    [[nodiscard]] int numComponents() const noexcept { return componentCount; }
    /// The components in storage order, `numComponents()` of them.
    [[nodiscard]] const T* Components() const noexcept { return values; }
    [[nodiscard]] T* Components() noexcept { return values; }

    /// Same type code and equal components.
    friend bool operator==(const utf_EngineeringData& a, const utf_EngineeringData& b) noexcept {
        return a.typeCode == b.typeCode && a.componentCount == b.componentCount &&
               std::equal(a.values, a.values + a.componentCount, b.values);
    }

  private:
    res_DataTypeEnm typeCode;
    int componentCount;
    T values[maxComponents] = {};
};

extern template class KTSOVUGEOM_API utf_EngineeringData<float>;
extern template class KTSOVUGEOM_API utf_EngineeringData<double>;
