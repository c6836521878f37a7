#pragma once

#include <Python.h>

#include <utility>

#include "omu/omu_InterfaceObj.h"

/// A value of the library as an object of scripts, whose Python class it knows.
class py_ValueBase : public omu_InterfaceObj {
  public:
    [[nodiscard]] virtual PyTypeObject* PythonType() const noexcept = 0;
};

/// What scripts know of a type of values; specialised beside each:
///   static constexpr const char* kName    the name of the class
///   static cow_String Text(const T&)      what a script would write to get the value
template <class T>
struct py_ValueTraits;

/// The Python class of the values of type `T`.
template <class T>
inline PyTypeObject* py_typeOf = nullptr;
/// `ktsovu.Array`.
inline PyTypeObject* py_arrayType = nullptr;

/// A `T` as a primitive. Copies copy it; equal to another one by the equality of `T`.
template <class T>
class py_Value final : public py_ValueBase {
  public:
    explicit py_Value(T held) : value(std::move(held)) {}

    [[nodiscard]] PyTypeObject* PythonType() const noexcept override { return py_typeOf<T>; }
    [[nodiscard]] cow_String TypeString() const override { return py_ValueTraits<T>::kName; }
    [[nodiscard]] cow_String AsString(int) const override { return py_ValueTraits<T>::Text(value); }
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override {
        const auto* const same = dynamic_cast<const py_Value*>(&other);
        return same && value == same->value;
    }
    [[nodiscard]] py_Value* Copy() const override { return new py_Value(*this); }

    T value;
};

/// The `T` in a primitive; null when it holds none.
template <class T>
[[nodiscard]] const T* py_FindValue(const omu_Primitive& primitive) noexcept {
    const auto* const held = dynamic_cast<const py_Value<T>*>(&primitive);
    return held ? &held->value : nullptr;
}
