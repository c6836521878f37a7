#include "omu/omu_CorvixName.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "foundation/coreutils/rgx_match.h"
#include "omu/omu_CvxNameErrorException.h"
#include "testing/test_Random.h"

namespace {

constexpr int kPasses = -1;

/// The error of `text` in `mode`, `kPasses` for none.
int ErrorOf(const std::string& text, int mode) {
    try {
        const omu_CorvixName name(cow_String(std::string_view(text)),
                                  static_cast<omu_CorvixNameEnum>(mode));
        EXPECT_EQ(name.AsString().View(), text);
        return kPasses;
    } catch (const omu_CvxNameErrorException& caught) {
        EXPECT_STREQ(caught.PythonType(), "CorvixNameError");
        EXPECT_GT(caught.Line(), 0);
        return caught.Error();
    }
}

/// The rules once more, by searching texts, for ASCII names and modes 0 to 8.
int ModelOfRules(const std::string& text, int mode) {
    const bool job = mode == 1 || mode == 4;
    const bool modelName = mode == 2 || mode == 5;
    const bool gui = mode >= 3;
    const int fault = job ? 2 : modelName ? 3 : 0;
    const std::size_t longest = mode == 3 || mode == 6 ? 38 : mode == 7 ? 256 : 80;
    const auto has = [&text](const std::string& bytes) {
        return text.find_first_of(bytes) != std::string::npos;
    };
    const auto begins = [&text](const char* bytes) { return text.find_first_of(bytes) == 0; };
    const auto ends = [&text](const char* bytes) {
        return text.find_last_of(bytes) == text.size() - 1;
    };
    if (text.empty()) return 1;
    if (text.size() > longest) return mode == 8 ? 4 : fault;
    if (has("\"")) return fault;
    if (!job && !modelName && (begins("0123456789") || has("\\"))) return fault;
    if ((mode == 0 || mode == 3 || mode == 6 || mode == 8) && has(".")) return fault;
    if (mode == 7 && has(",")) return fault;
    if ((job || mode >= 7) && begins("-")) return fault;
    if ((job || modelName) && has("$\\&*~!()[]{}|;'`<>?/.")) return fault;
    if (job && has(": ")) return fault;
    if (gui && (begins("_") || ends("_"))) return fault;
    if (gui && !job && (begins(" ") || ends(" "))) return fault;
    for (const char c : text) {
        if (gui && c >= 0 && c < 32) return fault;
    }
    return kPasses;
}

std::string RandomName(test_Random& random, const std::string& alphabet, int longest) {
    std::string text;
    for (int length = random.Below(longest + 1); length > 0; --length) {
        text += alphabet[static_cast<std::size_t>(random.Below(static_cast<int>(alphabet.size())))];
    }
    return text;
}

TEST(omu_CorvixName, FollowsTheRulesOfEachMode) {
    test_Random random(51);
    std::string alphabet = "aaAbB11-_ ";
    for (char c = 1; c > 0; ++c) alphabet += c;
    for (int i = 0; i < 12000; ++i) {
        const int kind = i % 4;
        const std::string plain = "aB1-_ c";
        const std::string text =
            RandomName(random, kind == 0 ? alphabet : plain + alphabet[i % 100],
                       kind == 3   ? 270
                       : kind == 2 ? 90
                                   : 6);
        for (int mode = 0; mode <= 8; ++mode) {
            ASSERT_EQ(ErrorOf(text, mode), ModelOfRules(text, mode)) << text << " mode " << mode;
        }
    }
}

TEST(omu_CorvixName, PatternsExcludeTheSameBytesAsTheTests) {
    const omu_CorvixName names[] = {{}, {"a", omu_KER_JOB_NAME}, {cow_String("a"), omu_PART_NAME}};
    for (const omu_CorvixName& name : names) {
        const std::string job(name.JobNamePattern().View());
        const std::string model(name.ModelNamePattern().View());
        const std::regex jobRegex(job), modelRegex(model);
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            const bool quote = byte == '"';
            EXPECT_EQ(ErrorOf("a" + text + "a", 1) != kPasses, quote || rgx_match(job, text));
            EXPECT_EQ(ErrorOf("a" + text + "a", 2) != kPasses, quote || rgx_match(model, text));
            const bool digitFirst = !rgx_match(name.FirstCharacterPattern().View(), text);
            EXPECT_EQ(ErrorOf(text + "a", 0) != kPasses,
                      digitFirst || quote || text == "." || text == "\\");
            if (byte == 0) continue;
            EXPECT_EQ(rgx_match(job, text), std::regex_search(text, jobRegex)) << byte;
            EXPECT_EQ(rgx_match(model, text), std::regex_search(text, modelRegex)) << byte;
        }
    }
}

TEST(omu_CorvixName, CountsCharactersAndTakesBytesBeyondAscii) {
    const auto repeated = [](const char* piece, int count) {
        std::string text;
        for (; count > 0; --count) text += piece;
        return text;
    };
    const struct {
        std::string text;
        int mode;
        int error;
    } cases[] = {
        {"P\xC3\xA4rt", 0, kPasses},
        {"P\xC3\xA4rt", 7, kPasses},
        {repeated("\xC3\xA9", 38), 3, kPasses},
        {repeated("\xC3\xA9", 39), 3, 0},
        {repeated("\xC3\xA9", 80), 0, kPasses},
        {repeated("\xC3\xA9", 81), 0, 0},
        {repeated("\xFF", 39), 6, 0},
        {"1\nb", 0, 0},
        {"1\nb", 1, kPasses},
        {"1\nb", 8, 0},
        {"\nb", 0, kPasses},
        {"\nb", 3, 0},
        {"a\tb", 2, kPasses},
        {std::string("Job\0x", 5), 1, kPasses},
        {std::string("Job\0x", 5), 4, 2},
        {"1" + repeated("a", 80), 8, 4},
        {"1" + repeated("a", 79), 8, 0},
        {"a\x7F", 8, kPasses},
    };
    for (const auto& [text, mode, error] : cases) EXPECT_EQ(ErrorOf(text, mode), error) << text;
}

TEST(omu_CorvixName, OtherModesTestNothing) {
    for (const int mode : {-1, 9, 42}) {
        EXPECT_EQ(ErrorOf("", mode), kPasses);
        EXPECT_EQ(ErrorOf("1\"", mode), kPasses);
    }
    EXPECT_THROW(omu_CorvixName(static_cast<const char*>(nullptr), omu_KER_NAME),
                 omu_CvxNameErrorException);
    omu_CorvixName assigned;
    assigned = omu_CorvixName("Part-1", omu_PART_NAME);
    EXPECT_EQ(assigned.AsString(), "Part-1");
    EXPECT_EQ(assigned.FirstCharacterPattern(), omu_CorvixName().FirstCharacterPattern());
}

TEST(omu_CorvixName, RepairedNamesPassTheirTestsAndStay) {
    test_Random random(52);
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    const char* const fallbacks[] = {nullptr, "", "_", "Part-1", "1"};
    for (int i = 0; i < 8000; ++i) {
        const bool fromAll = i % 2 == 0;
        const std::string text =
            RandomName(random, fromAll ? bytes : "__ -1a.,\xC3\xA9", i % 4 < 2 ? 5 : 100);
        cow_String file = std::string_view(text);
        omu_CorvixName::MakeLegalFileName(file);
        for (const int mode : {1, 2, 4, 5}) {
            ASSERT_EQ(ErrorOf(std::string(file.View()), mode), kPasses)
                << text << " -> " << file.View();
        }
        cow_String gui = std::string_view(text);
        omu_CorvixName::MakeLegalGuiName(gui, fallbacks[i % 5]);
        const std::string made(gui.View());
        const bool everywhere = made[0] != '-' && made.find(',') == std::string::npos;
        for (const int mode : {0, 3, 6, 7, 8}) {
            if (mode >= 7 && !everywhere) continue;
            ASSERT_EQ(ErrorOf(made, mode), kPasses) << text << " -> " << made << " mode " << mode;
        }
        const cow_String file2 = file, gui2 = gui;
        omu_CorvixName::MakeLegalFileName(file);
        omu_CorvixName::MakeLegalGuiName(gui, nullptr);
        ASSERT_EQ(file, file2);
        ASSERT_EQ(gui, gui2);
        ASSERT_TRUE(ErrorOf(text, 4) != kPasses || file.View() == text) << text;
        ASSERT_TRUE(ErrorOf(text, 3) != kPasses || gui.View() == text) << text;
        const cow_String quoted = omu_CorvixName::QuoteIfNeeded(cow_String(std::string_view(text)));
        ASSERT_TRUE(omu_CorvixName::IsQuoted(quoted)) << text;
        ASSERT_EQ(omu_CorvixName::QuoteIfNeeded(quoted), quoted);
    }
}

TEST(omu_CorvixName, RepairsReadably) {
    const auto file = [](cow_String text) {
        omu_CorvixName::MakeLegalFileName(text);
        return text;
    };
    EXPECT_EQ(file("-My job (2).x"), "My_job__2__x");
    EXPECT_EQ(file("..."), "Name");
    const auto gui = [](cow_String text, const char* fallback) {
        omu_CorvixName::MakeLegalGuiName(text, fallback);
        return text;
    };
    EXPECT_EQ(gui("_2x4.stp ", nullptr), "N2x4_stp");
    EXPECT_EQ(gui("\"\"", "Part-1"), "Part-1");
    EXPECT_EQ(gui("", "1"), "Name");
}

TEST(omu_CorvixName, KnowsQuotes) {
    for (const char* quoted : {"''", "'a'", R"('a\'b')", R"("it's")", R"('\\')"}) {
        EXPECT_TRUE(omu_CorvixName::IsQuoted(quoted)) << quoted;
    }
    for (const char* plain : {"", "'", "'a\"", "'a'b'", R"('a\')", "a'b'"}) {
        EXPECT_FALSE(omu_CorvixName::IsQuoted(plain)) << plain;
    }
    EXPECT_EQ(omu_CorvixName::QuoteIfNeeded("it's"), R"("it's")");
    EXPECT_EQ(omu_CorvixName::QuoteIfNeeded("'x'"), "'x'");
}

TEST(omu_CorvixName_Kept, InterfaceJobNamesHaveTheLongerLimit) {
    EXPECT_EQ(ErrorOf(std::string(80, 'a'), omu_GUI_JOB_NAME), kPasses);
    EXPECT_EQ(ErrorOf(std::string(81, 'a'), omu_GUI_JOB_NAME), omu_NAME_INVALID_JOB);
}

}  // namespace
