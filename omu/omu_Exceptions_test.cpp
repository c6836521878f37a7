#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_AttributeErrorException.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_CvxNameErrorException.h"
#include "omu/omu_RangeErrorException.h"
#include "omu/omu_TypeErrorException.h"

namespace {

using Limit = omu_RangeErrorException::Limit;
using ColorError = nex_CmdException<cow_String, 6>;

/// Calls `visit` with one object of each class of the family, its Python type and its message.
template <class Visit>
void ForEachClass(Visit visit) {
    visit(omu_TypeErrorException(), "TypeError", "");
    visit(omu_ArgNumberErrorException(2, 1, "f"), "TypeError",
          "f; not all required arguments specified; expected 2, got 1");
    visit(omu_ArgTypeErrorException(1, "int", "string", ""), "TypeError",
          "arg1; found string, expecting int");
    visit(omu_KeywordErrorException("", "zz"), "TypeError", "keyword error on zz");
    visit(omu_KeywordTypeErrorException("size", "int", "float", ""), "TypeError",
          "size; found float, expecting int");
    visit(omu_GenericTypeErrorException(), "TypeError",
          "illegal argument type for built-in operation");
    visit(omu_RangeErrorException("n", 0, {"0", omu_LIMIT_INCLUDED}, {"9", omu_LIMIT_EXCLUDED}),
          "RangeError", "n must be in the range: 0 <= n < 9");
    visit(omu_AttributeErrorException(3), "AttributeError", "Error message not implemented yet");
    visit(omu_CvxNameErrorException(omu_NAME_INVALID_JOB), "CorvixNameError", "invalid job name");
    visit(omu_KeyErrorException("k"), "KeyError", "k");
    visit(omu_IndexErrorException(-3), "IndexError", "-3");
    visit(omu_ValueErrorException("v"), "ValueError", "v");
    visit(omu_OverflowErrorException("o"), "OverflowError", "o");
    visit(omu_NameErrorException("n"), "NameError", "n");
    visit(omu_ZeroDivisionErrorException("z"), "ZeroDivisionError", "z");
    visit(omu_AccessErrorException("a"), "AccessError", "a");
    visit(omu_PyCorvixException("p"), "CorvixError", "p");
    visit(omu_GuiAccessErrorException("g"), "GuiAccessError", "g");
    visit(omu_FontErrorException("f"), "FontError", "f");
    visit(ColorError("c"), "ColorError", "c");
}

TEST(omu_Exceptions, KeepTheirClassThroughTheirBase) {
    int classes = 0;
    ForEachClass([&](const auto& exception, const char* pythonType, const char* message) {
        using Class = std::decay_t<decltype(exception)>;
        ++classes;
        const nex_Exception& base = exception;
        EXPECT_STREQ(base.PythonType(), pythonType);
        EXPECT_STREQ(base.what(), message);
        EXPECT_EQ(base.DynTypeId(), Class::TypeId());
        const std::unique_ptr<nex_Exception> clone = base.Clone();
        EXPECT_NE(dynamic_cast<const Class*>(clone.get()), nullptr);
        try {
            clone->Propagate();
        } catch (const nex_CommandException& caught) {
            EXPECT_TRUE(typeid(caught) == typeid(Class)) << message;
            EXPECT_STREQ(caught.what(), message);
        }
        try {
            KTSBasThrow(Class(exception), "file.cpp", 7);
        } catch (const Class& caught) {
            EXPECT_EQ(caught.Clone()->Line(), 7);
        }
    });
    EXPECT_EQ(classes, 20);
    EXPECT_STREQ(nex_PrimException("broken").PythonType(), "CorvixError");
    EXPECT_THROW(omu_KeywordErrorException("", "k").Propagate(), omu_TypeErrorException);
}

std::string RangeMessage(int type, const Limit& low, const Limit& high) {
    return omu_RangeErrorException("x", type, low, high).what();
}

TEST(omu_Exceptions, ComposeTheirMessages) {
    const auto number = [](int expected, int found) {
        return std::string(omu_ArgNumberErrorException(expected, found, "").what());
    };
    EXPECT_EQ(number(2, 2), "not all required arguments specified; expected 2, got 2");
    EXPECT_EQ(number(2, 3), "too many arguments; expected 2, got 3");
    EXPECT_STREQ(omu_ArgTypeErrorException(3, "int", "%s", "arg2[%d]").what(),
                 "arg2[%d][2]; found %s, expecting int");
    EXPECT_STREQ(omu_ArgTypeErrorException(INT_MIN, "int", "float", "a").what(),
                 "a[-2147483649]; found float, expecting int");
    EXPECT_STREQ(omu_KeywordErrorException("", "%s%n").what(), "keyword error on %s%n");
    EXPECT_STREQ(omu_AttributeErrorException::NoSuchMember("Part", "%s").what(),
                 "'Part' object has no attribute '%s'");
    EXPECT_STREQ(omu_CvxNameErrorException(omu_NAME_INVALID).what(), "invalid name");
    EXPECT_STREQ(omu_CvxNameErrorException(omu_NAME_EMPTY).what(), "name is empty");
    EXPECT_STREQ(omu_CvxNameErrorException(omu_NAME_INVALID_MODEL).what(), "invalid model name");

    const Limit none, in{"1", omu_LIMIT_INCLUDED}, out{"2", omu_LIMIT_EXCLUDED};
    const Limit foreign{"3", static_cast<omu_RangeQualifierEnm>(0xFFFFFFFF)};
    EXPECT_EQ(RangeMessage(1, none, in), "x must be an Integer <= 1");
    EXPECT_EQ(RangeMessage(2, none, out), "x must be a Float < 2");
    EXPECT_EQ(RangeMessage(3, in, none), "x must be >= 1");
    EXPECT_EQ(RangeMessage(0, out, none), "x must be > 2");
    EXPECT_EQ(RangeMessage(0, out, in), "x must be in the range: 2 < x <= 1");
    EXPECT_EQ(RangeMessage(0, none, none), "x must be < ");
    EXPECT_EQ(RangeMessage(1, foreign, in), "x must be an Integer ");
    EXPECT_EQ(RangeMessage(2, none, foreign), "x must be a Float ");
}

cow_String German(const cow_String& text) {
    if (text == "; found %s, expecting %s") return "; erwartet %2$s, war %1$s";
    if (text == "arg%d") return "Argument";
    if (text == "invalid name") return "falscher Name";
    if (text == "%s must be an Integer ") return "%s muss ganzzahlig sein, ";
    return text.IsEmpty() ? cow_String("about this catalogue") : text;
}

TEST(omu_Exceptions, TranslateTheirPieces) {
    const auto shown = [](const nex_Exception& exception) {
        return exception.JournalMessage(KTSBasStringMode::Translated);
    };
    atr_SetCatalogue(&German);
    EXPECT_EQ(shown(omu_ArgTypeErrorException(1, "int", "%s", "")), "arg1; erwartet int, war %s");
    EXPECT_EQ(shown(omu_CvxNameErrorException(omu_NAME_INVALID)), "falscher Name");
    EXPECT_EQ(shown(omu_CvxNameErrorException(omu_NAME_PART_TOO_LONG)), "");
    EXPECT_EQ(shown(omu_RangeErrorException("n", 1, {}, {"5", omu_LIMIT_INCLUDED})),
              "n muss ganzzahlig sein, <= 5");
    EXPECT_STREQ(omu_CvxNameErrorException(omu_NAME_INVALID).what(), "invalid name");
    atr_SetCatalogue(nullptr);
}

TEST(omu_KeywordErrorException_Kept, ContextStandsRightBeforeTheMessage) {
    EXPECT_STREQ(omu_KeywordErrorException("Part", "zz").what(), "Partkeyword error on zz");
}

TEST(omu_KeywordTypeErrorException_Kept, NestingReplacesTheKeyword) {
    EXPECT_STREQ(omu_KeywordTypeErrorException("size", "int", "float", "points[1]").what(),
                 "points[1]; found float, expecting int");
}

TEST(omu_CvxNameErrorException_Kept, OtherErrorsHaveNoMessage) {
    for (const int error : {4, 5, -1, INT_MAX}) {
        EXPECT_STREQ(omu_CvxNameErrorException(static_cast<omu_CvxNameErrorEnm>(error)).what(), "");
    }
}

}  // namespace
