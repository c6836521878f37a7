#include "foundation/coreutils/rgx_match.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace {

TEST(rgx_match, FindsWhatTheStandardMatcherFinds) {
    const char* const patterns[] = {"^[^0-9]",
                                    "^[A-Z_][A-Z_0-9]*$",
                                    R"([:\$\\\[\]\{\}. ])",
                                    R"([\*~! \(\)])",
                                    "[a-c-]",
                                    "a[^b]*c",
                                    "ab*c$",
                                    "",
                                    "^$",
                                    "x\\[y"};
    const char* const texts[] = {"",    "A",   "A_1",  "a",   "1a",  "[",    "]",    "\\",  "}x",
                                 "a.b", "a-b", "abbc", "axc", "ac ", "abcb", "x[yz", "A\n", "\n1"};
    for (const char* const pattern : patterns) {
        const std::regex standard(pattern, std::regex::ECMAScript);
        for (const char* const text : texts) {
            // The standard's "^" and "$" bind to lines in some libraries; these texts hold none.
            if (std::string(text).find('\n') != std::string::npos) continue;
            EXPECT_EQ(rgx_match(pattern, text), std::regex_search(text, standard))
                << pattern << " in " << text;
        }
    }
}

TEST(rgx_match, KnowsNoLinesAndCountsTheText) {
    EXPECT_FALSE(rgx_match("^[^0-9]", "1\nb"));
    EXPECT_TRUE(rgx_match("^[^0-9]", "\n1"));
    EXPECT_FALSE(rgx_match("^[A-Z]*$", "A\n"));
    EXPECT_FALSE(rgx_match("^[A-Z]*$", std::string_view("A\0b", 3)));
    EXPECT_TRUE(rgx_match("[^a]", std::string_view("\0", 1)));
    EXPECT_TRUE(rgx_match("[^a]", "\xC3"));
}

TEST(rgx_match, TakesUnfinishedPatternsAsFarAsTheyGo) {
    EXPECT_TRUE(rgx_match("[ab", "b"));
    EXPECT_FALSE(rgx_match("[", "["));
    EXPECT_TRUE(rgx_match("\\", "\\"));
    EXPECT_TRUE(rgx_match("[\xF0-\xFF]", "\xFF"));
}

}  // namespace
