#include "g3d/g3d_ColorMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

class g3d_ColorMapTest : public testing::Test {
  protected:
    void TearDown() override { omi_SingletonBase<g3d_ColorMap>::Finalize(); }
    g3d_ColorMap& map = g3d_ColorMap::Instance();
};

cow_String Shouted(const cow_String& text) {
    return text == "%s is not a valid color name." ? cow_String("kein Farbname: %s!") : text;
}

}  // namespace

TEST_F(g3d_ColorMapTest, StartsWithItsNamesInOrder) {
    const cow_List<atr_String> names = map.Names();
    ASSERT_EQ(names.Length(), 28);
    std::string text;
    for (int i = 0; i < names.Length(); ++i) {
        const g3d_Color& color = map.Lookup(names[i]);
        char row[64];
        std::snprintf(row, sizeof row, "%s %g %g %g|", names[i].Text().Characters(),
                      static_cast<double>(color.Red()), static_cast<double>(color.Green()),
                      static_cast<double>(color.Blue()));
        text += row;
        EXPECT_EQ(color.Alpha(), 1);
        EXPECT_EQ(&map.ColorAt(i), &color);
    }
    EXPECT_EQ(
        text,
        "Black 0 0 0|White 1 1 1|Red 1 0 0|Orange 1 0.5 0|Light orange 1 0.6 0|"
        "Purple 0.63 0.13 0.94|Blue 0 0 1|Medium blue 0 0.6 1|Sky blue 0 0.8 1|Cyan 0 1 1|"
        "Aqua 0 1 0.8|Green 0 1 0|Spring green 0 1 0.55|Yellow 1 1 0|Gold 1 0.844 0|"
        "Dark gold 1 0.7 0|Chartreuse 0.7 1 0|Grey20 0.2 0.2 0.2|Grey60 0.6 0.6 0.6|"
        "Grey80 0.8 0.8 0.8|Default 1 1 1|Magenta 1 0 1|Grey10 0.1 0.1 0.1|Grey30 0.3 0.3 0.3|"
        "Grey40 0.4 0.4 0.4|Grey50 0.5 0.5 0.5|Grey70 0.7 0.7 0.7|Grey90 0.9 0.9 0.9|");
}

TEST_F(g3d_ColorMapTest, RefusesUnknownNamesWithTheNameAsData) {
    for (const char* name : {"red", "Light  orange", "Gray20", "Red ", "", "100%s", "%n"}) {
        try {
            static_cast<void>(map.Lookup(name));
            ADD_FAILURE() << name;
        } catch (const nex_CommandException& error) {
            const std::string text = std::string(name) + " is not a valid color name.";
            EXPECT_STREQ(error.PythonType(), "ColorError");
            EXPECT_EQ(error.JournalMessage(KTSBasStringMode::Untranslated).View(), text);
            EXPECT_GT(error.Line(), 0);
            EXPECT_THAT(error.File(), testing::EndsWith("g3d_ColorMap.cpp"));
        }
    }
    atr_SetCatalogue(Shouted);
    EXPECT_THROW(
        try { static_cast<void>(map.Lookup("%s")); } catch (const g3d_ColorErrorException& error) {
            EXPECT_EQ(error.GetMessage(), "kein Farbname: %s!");
            throw;
        },
        g3d_ColorErrorException);
    atr_SetCatalogue(nullptr);
}

TEST_F(g3d_ColorMapTest, AddsAndReplacesUntilItIsCreatedAnew) {
    map.Add("Mine", g3d_Color(0.1f, 0.2f, 0.3f));
    map.Add("Red", g3d_Color(0.9f, 0, 0));
    EXPECT_EQ(map.Size(), 29);
    EXPECT_EQ(map.NameAt(28), "Mine");
    EXPECT_EQ(map.NameAt(2), "Red");
    EXPECT_EQ(map.ColorAt(2).Red(), 0.9f);
    EXPECT_DEATH(static_cast<void>(map.ColorAt(29)), "");
    omi_SingletonBase<g3d_ColorMap>::Finalize();
    EXPECT_EQ(g3d_ColorMap::Instance().Size(), 28);
    EXPECT_EQ(g3d_ColorMap::Instance().Lookup("Red").Red(), 1);
}
