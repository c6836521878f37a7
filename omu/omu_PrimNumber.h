#pragma once

#include <concepts>

#include "omu/omu_Primitive.h"

/// A number, tag `i` or `f`: a double "value" or an unsigned "uvalue", and the type that it was
/// built from. Signed and floating input stands in "value" with "uvalue" 0, an `unsigned int` in
/// "uvalue" with "value" 0. What has tag `i` is a whole number within the range of its type.
///
/// Read numbers with `AsDouble` and `AsUInt`, which look at both fields. Assignment is deleted,
/// since the tag could differ: holders replace the object.
///
/// Kept: equality compares "value" and "uvalue" alone, so `int` 1 equals `double` 1.0, while the
/// unsigned 5 differs from the `int` 5 and a NaN from itself, where one would expect numbers to be
/// equal or types to count. Scripts compare numbers of any type with each other.
class KTSOVUGEOM_API omu_PrimNumber : public omu_Primitive {
  public:
    /// The type that a number was built from, by the value that archives keep.
    enum DataTypeEnm : int { SCHAR = 0, SHORT = 1, INT = 2, FLOAT = 3, DOUBLE = 4, UINT = 5 };

    /// Numbers convert, so that they can be handed over where a primitive is wanted.
    omu_PrimNumber(signed char number) noexcept;
    omu_PrimNumber(short number) noexcept;
    omu_PrimNumber(int number) noexcept;
    omu_PrimNumber(unsigned int number) noexcept;
    omu_PrimNumber(float number) noexcept;
    omu_PrimNumber(double number) noexcept;
    /// The `int` 0 or 1. (Exactly `bool`: pointers do not convert.)
    template <std::same_as<bool> Boolean>
    omu_PrimNumber(Boolean boolean) noexcept : omu_PrimNumber(static_cast<int>(boolean)) {}
    /// Reads the record of a number and repairs what contradicts itself: an unknown type is
    /// `DOUBLE` (and a line on standard error), the field that the type does not use is 0, and an
    /// integer is truncated and brought into the range of its type.
    explicit omu_PrimNumber(cls_ReadVisitor& visitor);
    omu_PrimNumber(const omu_PrimNumber&) = default;
    omu_PrimNumber& operator=(const omu_PrimNumber&) = delete;

    /// "value" truncated toward zero; the nearest `int` beyond the range, 0 for NaN.
    ///
    /// Kept: 0 for an unsigned number, whose "value" is 0, where one would expect the number.
    /// Callers that want any number take `AsDouble` or `AsUInt`.
    [[nodiscard]] int AsInt() const noexcept { return ToInt(value); }
    /// "value" as `float`, infinite beyond its range; 0 for an unsigned number, as `AsInt`.
    [[nodiscard]] float AsFloat() const noexcept { return ToFloat(value); }
    /// The number itself, whatever its type.
    [[nodiscard]] double AsDouble() const noexcept { return dataType == UINT ? uvalue : value; }
    /// The number truncated toward zero; the nearest `unsigned int` beyond the range, 0 for NaN.
    [[nodiscard]] unsigned int AsUInt() const noexcept;
    [[nodiscard]] DataTypeEnm DataType() const noexcept { return dataType; }

    /// `number` truncated toward zero; the nearest `int` beyond the range, 0 for NaN.
    [[nodiscard]] static int ToInt(double number) noexcept;
    /// `number` rounded to `float`; infinite beyond its range.
    [[nodiscard]] static float ToFloat(double number) noexcept {
        return static_cast<float>(number);
    }
    /// The text of a floating number as scripts show it: up to 15 significant digits, with ".0"
    /// behind a whole number without an exponent ("3.0", "1e-05").
    ///
    /// Kept: infinities read "inf.0" and "-inf.0" and every NaN "nan.0", where one would expect
    /// "inf" and "nan" as Python writes them. Scripts tell a floating number by the point or the
    /// exponent in its text.
    [[nodiscard]] static cow_String FloatText(double number);

    /// "int" or "float".
    [[nodiscard]] cow_String TypeString() const override;
    /// The decimal text of an integer, else `FloatText`.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimNumber* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "value", "uvalue" and "dataType".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:22.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 22);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    struct Fields {
        double value;
        unsigned int uvalue;
        DataTypeEnm dataType;
    };
    explicit omu_PrimNumber(const Fields& fields) noexcept;
    static Fields ReadFields(cls_ReadVisitor& visitor);

    double value;
    unsigned int uvalue;
    DataTypeEnm dataType;
};

/// Drops the zero in front of an exponent of exactly three digits: "1e+005" becomes "1e+05",
/// "1e+100" stays.
[[nodiscard]] KTSOVUGEOM_API cow_String omu_ShortExponent(const cow_String& number);

/// The element of `dataType` at `address`, which need not be aligned; the `int` 0 for a type that
/// is none. `FLOAT` and `DOUBLE` elements have tag `f`.
[[nodiscard]] KTSOVUGEOM_API omu_PrimNumber
getPrimNumberAtPtr(const char* address, omu_PrimNumber::DataTypeEnm dataType);

/// A number for the interpreter; new, owned by the receiver.
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(int result);
[[nodiscard]] KTSOVUGEOM_API omu_Primitive* omu_ReturnPrim(double result);
