#include "g3d/g3d_ColorMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    const struct {
        const char* name;
        float red, green, blue;
    } rows[] = {
        {"Black", 0, 0, 0},
        {"White", 1, 1, 1},
        {"Red", 1, 0, 0},
        {"Orange", 1, 0.5f, 0},
        {"Light orange", 1, 0.6f, 0},
        {"Purple", 0.63f, 0.13f, 0.94f},
        {"Blue", 0, 0, 1},
        {"Medium blue", 0, 0.6f, 1},
        {"Sky blue", 0, 0.8f, 1},
        {"Cyan", 0, 1, 1},
        {"Aqua", 0, 1, 0.8f},
        {"Green", 0, 1, 0},
        {"Spring green", 0, 1, 0.55f},
        {"Yellow", 1, 1, 0},
        {"Gold", 1, 0.844f, 0},
        {"Dark gold", 1, 0.7f, 0},
        {"Chartreuse", 0.7f, 1, 0},
        {"Grey20", 0.2f, 0.2f, 0.2f},
        {"Grey60", 0.6f, 0.6f, 0.6f},
        {"Grey80", 0.8f, 0.8f, 0.8f},
        {"Default", 1, 1, 1},
        {"Magenta", 1, 0, 1},
        {"Grey10", 0.1f, 0.1f, 0.1f},
        {"Grey30", 0.3f, 0.3f, 0.3f},
        {"Grey40", 0.4f, 0.4f, 0.4f},
        {"Grey50", 0.5f, 0.5f, 0.5f},
        {"Grey70", 0.7f, 0.7f, 0.7f},
        {"Grey90", 0.9f, 0.9f, 0.9f},
    };
    const cow_List<atr_String> names = map.Names();
    ASSERT_EQ(names.Length(), 28);
    for (int i = 0; i < 28; ++i) {
        EXPECT_EQ(names[i], rows[i].name);
        const g3d_Color& color = map.Lookup(rows[i].name);
        EXPECT_TRUE(color.Red() == rows[i].red && color.Green() == rows[i].green &&
                    color.Blue() == rows[i].blue && color.Alpha() == 1)
            << rows[i].name;
        EXPECT_EQ(&map.ColorAt(i), &color);
    }
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
