#include "foundation/coreutils/atr_String.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>

#include "foundation/coreutils/aio_FormatDouble.h"
#include "foundation/coreutils/aio_ostream.h"

namespace {

TEST(atr, FillsPlacesOnceInOrderOrByNumber) {
    EXPECT_EQ(atr("arg%d; found %s, expecting %s", 2, "%s", "int"),
              "arg2; found %s, expecting int");
    EXPECT_EQ(atr("nd=%1$d, ndTemp=%2$d, nd=%1$d", 3, -4), "nd=3, ndTemp=-4, nd=3");
    EXPECT_EQ(atr("##%03d [%5u] %03d %x %X %llx", 7, 42u, -5, 0xabcu, 0xabcu, ~std::uint64_t{0}),
              "##007 [   42] -05 abc ABC ffffffffffffffff");
    EXPECT_EQ(atr("%x %u %c %g", -1, std::uint32_t{4000000000}, 'i', 0.1),
              "ffffffff 4000000000 i 0.1");
}

TEST(atr, LeavesPlacesWithoutAFittingArgument) {
    EXPECT_EQ(atr("%d%% of %s, %d, %q, %", 5, 6), "5% of %s, 6, %q, %");
    EXPECT_EQ(atr("%0$d %9$d %99999999999$d %s", 1), "%0$d %9$d %99999999999$d %s");
    EXPECT_EQ(atr("done", 1, 2), "done");
}

cow_String InUpperCase(const cow_String& text) {
    return text == "name is %s" ? "NAME IS %s" : text;
}

TEST(atr_translate, LooksTheTemplateUpBeforeItIsFilled) {
    EXPECT_EQ(atr_translate("name is %s", "empty"), "name is empty");
    EXPECT_EQ(atr_SetCatalogue(&InUpperCase), nullptr);
    const atr_String message = "name is %s";
    EXPECT_EQ(atr_translate("name is %s", "name is %s"), "NAME IS name is %s");
    EXPECT_EQ(message.Text(KTSBasStringMode::Translated), "NAME IS %s");
    EXPECT_EQ(message.Text(), "name is %s");
    EXPECT_EQ(atr_SetCatalogue(nullptr), &InUpperCase);
}

TEST(atr_translate, UsesNoTextWithOtherPlacesThanItsKey) {
    static const char* translation = "";
    atr_SetCatalogue([](const cow_String&) { return cow_String(translation); });
    const auto shown = [](const char* text) {
        translation = text;
        return atr_translate("%s has %d parts", "box", 3);
    };
    EXPECT_EQ(shown("%2$d Teile in %1$s"), "3 Teile in box");
    EXPECT_EQ(shown("100%% %s: %03d"), "100% box: 003");
    for (const char* unusable : {"", "%s", "%d in %s", "%s %d %s", "%s %s", "%s %x", "%1$s %3$d"}) {
        EXPECT_EQ(shown(unusable), "box has 3 parts") << unusable;
    }
    atr_SetCatalogue(nullptr);
}

TEST(aio_FormatDouble, WritesAsPrintfDoesInTheClassicLocale) {
    std::mt19937_64 bits(1);
    char expected[64];
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t word = bits();
        double value =
            std::ldexp(static_cast<double>(word >> 11), static_cast<int>(word % 2047) - 1100);
        if (i % 2 == 0) value = -static_cast<double>(word % 1000000) / 1000;
        std::snprintf(expected, sizeof expected, "%.15g", value);
        ASSERT_EQ(aio_FormatDouble(value, aio_PRECISION), expected);
    }
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(aio_FormatDouble(-infinity, 15), "-inf");
    EXPECT_EQ(aio_FormatDouble(std::copysign(std::nan(""), -1.0), 15), "nan");
    EXPECT_EQ(aio_FormatDouble(-0.0, 15), "-0");
    EXPECT_EQ(atr_String(1e-5).View(), "1e-05");
}

TEST(aio_StringStream, GathersEveryKindOfValue) {
    aio_StringStream stream;
    stream.Blanks(35).Blanks(-1) << "x = " << 1.0 / 3 << ',' << -7 << cow_String(";") << 8u
                                 << 1e100;
    EXPECT_EQ(stream.Text(), cow_String(std::string_view("                                   ")) +
                                 "x = 0.333333333333333,-7;81e+100");
}

}  // namespace
