#include "omu/omu_PrimNumber.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "foundation/coreutils/aio_FormatDouble.h"
#include "foundation/coreutils/atr_String.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559,
              "narrowing beyond the range of float is defined by IEEE 754");

namespace {

constexpr cls_FieldHandle kValue("value");
constexpr cls_FieldHandle kUvalue("uvalue");
constexpr cls_FieldHandle kDataType("dataType");

constexpr int kFloatDigits = 15;

/// `number` truncated and brought into the range of `Integer`, 0 for NaN. The bounds are exact as
/// doubles.
template <class Integer>
Integer Saturated(double number) noexcept {
    constexpr double lowest = std::numeric_limits<Integer>::min();
    constexpr double highest = std::numeric_limits<Integer>::max();
    if (std::isnan(number)) return 0;
    return static_cast<Integer>(std::clamp(number, lowest, highest));
}

double Repaired(double value, omu_PrimNumber::DataTypeEnm dataType) {
    switch (dataType) {
        case omu_PrimNumber::SCHAR:
            return Saturated<signed char>(value);
        case omu_PrimNumber::SHORT:
            return Saturated<short>(value);
        case omu_PrimNumber::INT:
            return Saturated<int>(value);
        case omu_PrimNumber::UINT:
            return 0;
        case omu_PrimNumber::FLOAT:
        case omu_PrimNumber::DOUBLE:
            break;
    }
    return value;
}

constexpr bool IsFloating(omu_PrimNumber::DataTypeEnm dataType) {
    return dataType == omu_PrimNumber::FLOAT || dataType == omu_PrimNumber::DOUBLE;
}

template <class T>
T Load(const char* address) noexcept {
    T element;
    std::memcpy(&element, address, sizeof element);
    return element;
}

}  // namespace

omu_PrimNumber::omu_PrimNumber(const Fields& fields) noexcept
    : omu_Primitive(IsFloating(fields.dataType) ? omu_PrimTag::kFloat : omu_PrimTag::kInt),
      value(fields.value),
      uvalue(fields.uvalue),
      dataType(fields.dataType) {}

omu_PrimNumber::omu_PrimNumber(signed char number) noexcept
    : omu_PrimNumber(Fields{static_cast<double>(number), 0, SCHAR}) {}
omu_PrimNumber::omu_PrimNumber(short number) noexcept
    : omu_PrimNumber(Fields{static_cast<double>(number), 0, SHORT}) {}
omu_PrimNumber::omu_PrimNumber(int number) noexcept
    : omu_PrimNumber(Fields{static_cast<double>(number), 0, INT}) {}
omu_PrimNumber::omu_PrimNumber(unsigned int number) noexcept
    : omu_PrimNumber(Fields{0, number, UINT}) {}
omu_PrimNumber::omu_PrimNumber(float number) noexcept
    : omu_PrimNumber(Fields{static_cast<double>(number), 0, FLOAT}) {}
omu_PrimNumber::omu_PrimNumber(double number) noexcept
    : omu_PrimNumber(Fields{number, 0, DOUBLE}) {}
omu_PrimNumber::omu_PrimNumber(cls_ReadVisitor& visitor) : omu_PrimNumber(ReadFields(visitor)) {}

omu_PrimNumber::Fields omu_PrimNumber::ReadFields(cls_ReadVisitor& visitor) {
    Fields fields{0, 0, DOUBLE};
    visitor.Read(kValue, fields.value);
    visitor.Read(kUvalue, fields.uvalue);
    const int stored = visitor.ReadEnumAsInt(kDataType);
    if (stored >= SCHAR && stored <= UINT) {
        fields.dataType = static_cast<DataTypeEnm>(stored);
    } else {
        std::fputs(atr("omu_PrimNumber unknown dataType %d\n", stored).Characters(), stderr);
    }
    fields.value = Repaired(fields.value, fields.dataType);
    if (fields.dataType != UINT) fields.uvalue = 0;
    return fields;
}

int omu_PrimNumber::ToInt(double number) noexcept { return Saturated<int>(number); }

unsigned int omu_PrimNumber::AsUInt() const noexcept {
    return dataType == UINT ? uvalue : Saturated<unsigned int>(value);
}

cow_String omu_ShortExponent(const cow_String& number) {
    const std::string_view text = number.View();
    const std::size_t e = text.find('e');
    if (text.size() <= 3 || e == std::string_view::npos || e + 5 != text.size()) return number;
    const std::size_t digits = e + 2;  // behind the sign
    if (text[digits] != '0') return number;
    return cow_String(text.substr(0, digits)) + cow_String(text.substr(digits + 1));
}

cow_String omu_PrimNumber::FloatText(double number) {
    const cow_String text = aio_FormatDouble(number, kFloatDigits);
    const bool isWhole = text.View().find_first_of(".e") == std::string_view::npos;
    return isWhole ? text + ".0" : omu_ShortExponent(text);
}

cow_String omu_PrimNumber::TypeString() const {
    return IsType(omu_PrimTag::kInt) ? "int" : "float";
}

cow_String omu_PrimNumber::AsString(int) const {
    if (IsType(omu_PrimTag::kFloat)) return FloatText(value);
    return dataType == UINT ? atr("%u", uvalue) : atr("%d", static_cast<int>(value));
}

bool omu_PrimNumber::operator==(const omu_Primitive& other) const {
    const auto* number = dynamic_cast<const omu_PrimNumber*>(&other);
    return number && value == number->value && uvalue == number->uvalue;
}

void omu_PrimNumber::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimNumber* omu_PrimNumber::Copy() const { return new omu_PrimNumber(*this); }

std::uint32_t omu_PrimNumber::TypeId() const { return kTypeId; }

void omu_PrimNumber::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kValue, value);
    visitor.Write(kUvalue, uvalue);
    visitor.WriteEnumAsInt(kDataType, dataType);
}

void omu_PrimNumber::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimNumber>("omu_PrimNumber")
                           .AddAttribute(kValue.Name(), cls_KIND_DOUBLE)
                           .AddAttribute(kUvalue.Name(), cls_KIND_UNSIGNED_INT)
                           .AddAttribute(kDataType.Name(), cls_KIND_ENUM));
}

omu_PrimNumber getPrimNumberAtPtr(const char* address, omu_PrimNumber::DataTypeEnm dataType) {
    switch (dataType) {
        case omu_PrimNumber::SCHAR:
            return Load<signed char>(address);
        case omu_PrimNumber::SHORT:
            return Load<short>(address);
        case omu_PrimNumber::INT:
            return Load<int>(address);
        case omu_PrimNumber::FLOAT:
            return Load<float>(address);
        case omu_PrimNumber::DOUBLE:
            return Load<double>(address);
        case omu_PrimNumber::UINT:
            return Load<unsigned int>(address);
    }
    return 0;
}

omu_Primitive* omu_ReturnPrim(int result) { return new omu_PrimNumber(result); }

omu_Primitive* omu_ReturnPrim(double result) { return new omu_PrimNumber(result); }
