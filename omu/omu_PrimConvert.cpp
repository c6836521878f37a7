#include "omu/omu_PrimConvert.h"

#include <array>
#include <limits>

#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimEnumBase.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"

namespace {

// A tag tells the class, so no dynamic cast is needed.
const omu_PrimNumber* NumberIn(const omu_Primitive& value) {
    const bool isNumber = value.IsType(omu_PrimTag::kInt) || value.IsType(omu_PrimTag::kFloat);
    return isNumber ? static_cast<const omu_PrimNumber*>(&value) : nullptr;
}

/// The integer in `value` when `Integer` has it. Every integer of 32 bits is exact as a double.
template <class Integer>
bool ConvertInteger(const omu_Primitive& value, Integer& out) {
    if (!value.IsType(omu_PrimTag::kInt)) return false;
    const double number = static_cast<const omu_PrimNumber&>(value).AsDouble();
    constexpr double lowest = std::numeric_limits<Integer>::min();
    constexpr double highest = std::numeric_limits<Integer>::max();
    if (!(number >= lowest && number <= highest)) return false;
    out = static_cast<Integer>(number);
    return true;
}

bool ConvertTruthName(const cow_String& name, bool& out) {
    struct Truth {
        const char* name;
        bool value;
    };
    static constexpr std::array<Truth, 6> kNames = {{{"ON", true},
                                                     {"TRUE", true},
                                                     {"YES", true},
                                                     {"OFF", false},
                                                     {"FALSE", false},
                                                     {"NO", false}}};
    for (const Truth& truth : kNames) {
        if (name.View() != truth.name) continue;
        out = truth.value;
        return true;
    }
    return false;
}

}  // namespace

bool omu_Convert(const omu_Primitive& value, signed char& out) {
    return ConvertInteger(value, out);
}
bool omu_Convert(const omu_Primitive& value, short& out) { return ConvertInteger(value, out); }
bool omu_Convert(const omu_Primitive& value, int& out) { return ConvertInteger(value, out); }
bool omu_Convert(const omu_Primitive& value, unsigned int& out) {
    return ConvertInteger(value, out);
}

bool omu_Convert(const omu_Primitive& value, double& out) {
    const omu_PrimNumber* const number = NumberIn(value);
    if (number) out = number->AsDouble();
    return number != nullptr;
}

bool omu_Convert(const omu_Primitive& value, float& out) {
    const omu_PrimNumber* const number = NumberIn(value);
    if (number) out = omu_PrimNumber::ToFloat(number->AsDouble());
    return number != nullptr;
}

bool omu_Convert(const omu_Primitive& value, bool& out) {
    if (value.IsType(omu_PrimTag::kBoolean)) {
        out = static_cast<const omu_PrimBoolean&>(value).Value();
        return true;
    }
    if (value.IsType(omu_PrimTag::kEnum)) {
        return ConvertTruthName(static_cast<const omu_PrimEnumBase&>(value).CurrentName(), out);
    }
    unsigned number = 0;
    if (!ConvertInteger(value, number) || number > 1) return false;
    out = number == 1;
    return true;
}

bool omu_Convert(const omu_Primitive& value, omi_complex& out) {
    if (value.IsType(omu_PrimTag::kComplex)) {
        out = static_cast<const omu_PrimComplex&>(value).Value();
        return true;
    }
    double real = 0;
    if (!omu_Convert(value, real)) return false;
    out = omi_complex(real);
    return true;
}

bool omu_Convert(const omu_Primitive& value, cow_String& out) {
    if (value.IsType(omu_PrimTag::kString)) {
        out = static_cast<const omu_PrimString&>(value).Value();
        return true;
    }
    if (!value.IsType(omu_PrimTag::kTranslatedString)) return false;
    out = static_cast<const omu_PrimTranslatedString&>(value).Value().Text();
    return true;
}

bool omu_Convert(const omu_Primitive& value, atr_String& out) {
    if (value.IsType(omu_PrimTag::kTranslatedString)) {
        out = static_cast<const omu_PrimTranslatedString&>(value).Value();
        return true;
    }
    cow_String text;
    if (!omu_Convert(value, text)) return false;
    out = atr_String(text);
    return true;
}
