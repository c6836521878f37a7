#include "omu/omu_PrimNumber.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cstring>
#include <limits>
#include <memory>

#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimConvert.h"
#include "omu/omu_PrimEnum.h"
#include "omu/omu_PrimString.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(omu_PrimNumber, InputDecidesTagTypeAndText) {
    const struct {
        omu_PrimNumber number;
        char tag;
        omu_PrimNumber::DataTypeEnm type;
        const char* text;
    } kCases[] = {
        {static_cast<signed char>(-5), 'i', omu_PrimNumber::SCHAR, "-5"},
        {static_cast<short>(300), 'i', omu_PrimNumber::SHORT, "300"},
        {-2147483647 - 1, 'i', omu_PrimNumber::INT, "-2147483648"},
        {true, 'i', omu_PrimNumber::INT, "1"},
        {static_cast<unsigned char>(200), 'i', omu_PrimNumber::INT, "200"},
        {4000000000u, 'i', omu_PrimNumber::UINT, "4000000000"},
        {0.1f, 'f', omu_PrimNumber::FLOAT, "0.100000001490116"},
        {2.0, 'f', omu_PrimNumber::DOUBLE, "2.0"},
        {-0.0, 'f', omu_PrimNumber::DOUBLE, "-0.0"},
        {1e-5, 'f', omu_PrimNumber::DOUBLE, "1e-05"},
        {1e15, 'f', omu_PrimNumber::DOUBLE, "1e+15"},
        {123456789012345.0, 'f', omu_PrimNumber::DOUBLE, "123456789012345.0"},
        {1e100, 'f', omu_PrimNumber::DOUBLE, "1e+100"},
        {-DBL_MAX, 'f', omu_PrimNumber::DOUBLE, "-1.79769313486232e+308"},
        {1.0 / 3, 'f', omu_PrimNumber::DOUBLE, "0.333333333333333"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(c.number.Type(), c.tag) << c.text;
        EXPECT_EQ(c.number.DataType(), c.type) << c.text;
        EXPECT_EQ(c.number.AsString(0), c.text);
    }
}

TEST(omu_PrimNumber, ExponentRuleHoldsForTextsOfOtherRuntimes) {
    EXPECT_EQ(omu_ShortExponent("1e+005"), "1e+05");
    EXPECT_EQ(omu_ShortExponent("-1.5e-012"), "-1.5e-12");
    for (const char* as : {"1e+100", "1e+05", "1e5", "1.5"}) EXPECT_EQ(omu_ShortExponent(as), as);
}

TEST(omu_PrimNumber, TextIsTheSameInEveryLocale) {
    const char* const before = std::setlocale(LC_NUMERIC, nullptr);
    const std::string restored = before ? before : "C";
    for (const char* locale : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany.1252", "C.UTF-8"}) {
        std::setlocale(LC_NUMERIC, locale);
        EXPECT_EQ(omu_PrimNumber(1.5).AsString(0), "1.5") << locale;
    }
    std::setlocale(LC_NUMERIC, restored.c_str());
}

TEST(omu_PrimNumber, NarrowingSaturates) {
    EXPECT_EQ(omu_PrimNumber(3e9).AsInt(), 2147483647);
    EXPECT_EQ(omu_PrimNumber(-3e9).AsInt(), -2147483647 - 1);
    EXPECT_EQ(omu_PrimNumber(kNan).AsInt(), 0);
    EXPECT_EQ(omu_PrimNumber(-2.9).AsInt(), -2);
    EXPECT_EQ(omu_PrimNumber(-2.9).AsUInt(), 0u);
    EXPECT_EQ(omu_PrimNumber(kInf).AsUInt(), 4294967295u);
    EXPECT_EQ(omu_PrimNumber(7u).AsUInt(), 7u);
    EXPECT_EQ(omu_PrimNumber(4000000000u).AsDouble(), 4e9);
    EXPECT_EQ(omu_PrimNumber(DBL_MAX).AsFloat(), std::numeric_limits<float>::infinity());
}

TEST(omu_PrimNumber, ElementsAreReadFromAnyAddress) {
    char raw[1 + sizeof(double)];
    const auto at = [&raw](auto element) {
        std::memcpy(raw + 1, &element, sizeof element);
        return raw + 1;
    };
    EXPECT_EQ(getPrimNumberAtPtr(at(-3), omu_PrimNumber::INT).AsString(0), "-3");
    EXPECT_EQ(getPrimNumberAtPtr(at(0.5f), omu_PrimNumber::FLOAT).AsString(0), "0.5");
    EXPECT_EQ(getPrimNumberAtPtr(at(2.0), omu_PrimNumber::DOUBLE).AsString(0), "2.0");
    EXPECT_EQ(getPrimNumberAtPtr(at(4000000000u), omu_PrimNumber::UINT).AsDouble(), 4e9);
    EXPECT_EQ(getPrimNumberAtPtr(at(short{-4}), omu_PrimNumber::SHORT).AsInt(), -4);
    EXPECT_EQ(getPrimNumberAtPtr(at(char{5}), omu_PrimNumber::SCHAR).AsInt(), 5);
    EXPECT_EQ(getPrimNumberAtPtr(at(2.0), omu_PrimNumber::DataTypeEnm(9)).AsString(0), "0");
    const std::unique_ptr<omu_Primitive> result(omu_ReturnPrim(3.0));
    EXPECT_EQ(result->AsString(0), "3.0");
}

TEST(omu_PrimNumber_Kept, EqualityLooksAtBothFieldsAndNotAtTheType) {
    EXPECT_TRUE(omu_PrimNumber(1) == omu_PrimNumber(1.0));
    EXPECT_FALSE(omu_PrimNumber(5u) == omu_PrimNumber(5));
    EXPECT_FALSE(omu_PrimNumber(5u) == omu_PrimNumber(6u));
    EXPECT_TRUE(omu_PrimNumber(0u) == omu_PrimNumber(-0.0));
    EXPECT_FALSE(omu_PrimNumber(kNan) == omu_PrimNumber(kNan));
}

TEST(omu_PrimNumber_Kept, InfinitiesAndNansReadAsWholeNumbersDo) {
    EXPECT_EQ(omu_PrimNumber(kInf).AsString(0), "inf.0");
    EXPECT_EQ(omu_PrimNumber(-kInf).AsString(0), "-inf.0");
    EXPECT_EQ(omu_PrimNumber(-kNan).AsString(0), "nan.0");
}

TEST(omu_PrimNumber_Kept, AsIntAndAsFloatOfAnUnsignedNumberAreZero) {
    EXPECT_EQ(omu_PrimNumber(7u).AsInt(), 0);
    EXPECT_EQ(omu_PrimNumber(7u).AsFloat(), 0.0f);
    EXPECT_EQ(omu_PrimNumber(7u).AsString(0), "7");
}

/// What `value` becomes as a `T`, -99 when it is refused.
template <class T>
double Converted(const omu_Primitive& value) {
    T out = T(77);
    if (omu_Convert(value, out)) return static_cast<double>(out);
    EXPECT_EQ(out, T(77)) << "a refused value changed its target";
    return -99;
}

TEST(omu_PrimConvert, NumbersGoByTagAndRange) {
    EXPECT_EQ(Converted<signed char>(omu_PrimNumber(127)), 127);
    EXPECT_EQ(Converted<signed char>(omu_PrimNumber(300)), -99);
    EXPECT_EQ(Converted<short>(omu_PrimNumber(-32768)), -32768);
    EXPECT_EQ(Converted<short>(omu_PrimNumber(-32769)), -99);
    EXPECT_EQ(Converted<int>(omu_PrimNumber(2147483647u)), 2147483647);
    EXPECT_EQ(Converted<int>(omu_PrimNumber(2147483648u)), -99);
    EXPECT_EQ(Converted<int>(omu_PrimNumber(2.0)), -99);
    EXPECT_EQ(Converted<int>(omu_PrimBoolean(true)), -99);
    EXPECT_EQ(Converted<unsigned>(omu_PrimNumber(-1)), -99);
    EXPECT_EQ(Converted<unsigned>(omu_PrimNumber(4000000000u)), 4e9);
    EXPECT_EQ(Converted<double>(omu_PrimNumber(4000000000u)), 4e9);
    EXPECT_EQ(Converted<double>(omu_PrimNumber(0.1)), 0.1);
    EXPECT_EQ(Converted<double>(omu_PrimBoolean(true)), -99);
    EXPECT_EQ(Converted<double>(omu_PrimString(cow_String("1"))), -99);
    EXPECT_EQ(Converted<float>(omu_PrimNumber(0.1)), 0.1f);
}

TEST(omu_PrimConvert, TruthComplexAndText) {
    bool truth = false;
    EXPECT_TRUE(omu_Convert(omu_YesNoConst("YES"), truth) && truth);
    EXPECT_TRUE(omu_Convert(omu_TrueFalseConst(false), truth) && !truth);
    EXPECT_TRUE(omu_Convert(omu_PrimNumber(1u), truth) && truth);
    EXPECT_TRUE(omu_Convert(omu_PrimBoolean(), truth) && !truth);
    EXPECT_FALSE(omu_Convert(omu_PrimNumber(2), truth));
    EXPECT_FALSE(omu_Convert(omu_PrimNumber(-1), truth));
    EXPECT_FALSE(omu_Convert(omu_PrimNumber(1.0), truth));
    EXPECT_FALSE(omu_Convert(omu_PrimEnumBase(), truth));

    omi_complex number;
    EXPECT_TRUE(omu_Convert(omu_PrimComplex({1, 2}), number) && number == omi_complex(1, 2));
    EXPECT_TRUE(omu_Convert(omu_PrimNumber(3u), number) && number == omi_complex(3));
    EXPECT_FALSE(omu_Convert(omu_PrimBoolean(true), number));

    cow_String text;
    EXPECT_TRUE(omu_Convert(omu_PrimTranslatedString("a"), text) && text == "a");
    EXPECT_FALSE(omu_Convert(omu_OnOffConst("ON"), text));
    atr_String translated;
    EXPECT_TRUE(omu_Convert(omu_PrimString(cow_String("b")), translated) && translated == "b");
}

}  // namespace
