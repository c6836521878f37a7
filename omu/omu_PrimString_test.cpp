#include "omu/omu_PrimString.h"

#include <gtest/gtest.h>

#include <string_view>

#include "cow/cow_List.h"
#include "omu/omu_PrimEnum.h"
#include "omu/omu_Utf8.h"

using namespace std::string_view_literals;

TEST(omu_PrimString, QuotesAsScriptsShowIt) {
    const struct {
        std::string_view text;
        std::string_view quoted;
    } kCases[] = {
        {"", "''"},
        {"it's", "\"it's\""},
        {"say \"hi\"", "'say \"hi\"'"},
        {"a'b\"\\\n", "'a\\'b\"\\\\\\n'"},
        {"it's \\", "\"it's \\\\\""},
        {"a\0b"sv, "'a\0b'"sv},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(omu_PrimString(cow_String(c.text)).AsString(0).View(), c.quoted);
    }
    EXPECT_EQ(omu_PrimString(cow_String("a'b\"\\\n")).AsString(0).Length(), 11);
}

TEST(omu_Quoted_Kept, BackslashBeforeAHighByteStaysSingleAndTabsStayRaw) {
    EXPECT_EQ(omu_Quoted("\\\u00E9"), "'\\\u00E9'");
    EXPECT_EQ(omu_Quoted("\\\u00E9").Length(), 5);
    EXPECT_EQ(omu_Quoted("\\\\\u00E9"), "'\\\\\\\u00E9'");
    EXPECT_EQ(omu_Quoted("\t\r"), "'\t\r'");
}

TEST(omu_PrimString, IsBuiltFromNumbersAndEnumerations) {
    EXPECT_EQ(omu_PrimString(-5).Value(), "-5");
    EXPECT_EQ(omu_PrimString(4000000000u).Value(), "4000000000");
    EXPECT_EQ(omu_PrimString(omu_YesNoConst(false)).Value(), "NO");
}

TEST(omu_PrimString, ShowsTheTranslationAndComparesTheOriginal) {
    atr_SetCatalogue([](const cow_String&) { return cow_String("it's"); });
    EXPECT_EQ(omu_PrimTranslatedString("a").AsString(0), "\"it's\"");
    EXPECT_FALSE(omu_PrimTranslatedString("a") == omu_PrimTranslatedString("b"));
    atr_SetCatalogue(nullptr);
}

// A slice takes the same characters as a slice of the list of characters.
TEST(omu_PrimString, SlicesByCharactersLikeAList) {
    const cow_String text = "a\u00E9\xFF\u20AC\xE2\x82z\U0001F600";
    cow_List<cow_String> characters;
    for (std::string_view rest = text.View(); !rest.empty();) {
        const std::size_t size = omu_CharacterSize(rest);
        characters.Append(rest.substr(0, size));
        rest.remove_prefix(size);
    }
    EXPECT_EQ(characters.Length(), 8);
    EXPECT_EQ(omu_CountCharacters(text.View()), 8);
    for (const int first : {-2147483647 - 1, -1, 0, 1, 3, 8, 9, 2147483647}) {
        for (const int last : {-2147483647 - 1, -1, 0, 1, 4, 7, 8, 9, 2147483647}) {
            cow_String expected;
            for (const cow_String& c : characters.Slice(first, last)) expected = expected + c;
            EXPECT_EQ(omu_PrimString(text).Slice(first, last).Value(), expected)
                << first << ' ' << last;
        }
    }
}

TEST(omu_Utf8, TakesOnlyWellFormedSequencesAsOneCharacter) {
    EXPECT_EQ(omu_CharacterSize("\u07FF"), 2u);
    EXPECT_EQ(omu_CharacterSize("\uFFFF"), 3u);
    EXPECT_EQ(omu_CharacterSize("\U0010FFFF"), 4u);
    for (const char* malformed : {"\xC0\x80", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                                  "\xF5\x80\x80\x80", "\x80\x80", "\xE2\x82"}) {
        EXPECT_EQ(omu_CharacterSize(malformed), 1u);
    }
    EXPECT_EQ(omu_CharacterSize(""), 0u);
}
