#include "foundation/shared/nex_Exception.h"

#include <gtest/gtest.h>

#include <cstring>

#include "foundation/shared/cls_Uid.h"
#include "foundation/shared/nex_CmdException.h"

namespace {

TEST(KTSBasThrow, ThrowsByValueWithThePositionOfTheCaller) {
    const int line = __LINE__ + 2;
    try {
        KTSBasThrow(nex_PrimException("table is empty"));
    } catch (const KTSBasException& caught) {
        EXPECT_EQ(caught.Line(), line);
        EXPECT_NE(std::strstr(caught.File(), "nex_Exception_test.cpp"), nullptr);
        EXPECT_STREQ(caught.what(), "table is empty");
        EXPECT_THROW(caught.Propagate(), nex_PrimException);
    }
}

cow_String InUpperCase(const cow_String&) { return "TABLE IS EMPTY"; }

TEST(nex_PrimException, TranslatesItsMessageWhenAsked) {
    const nex_PrimException exception("table is empty");
    atr_SetCatalogue(&InUpperCase);
    EXPECT_EQ(exception.JournalMessage(KTSBasStringMode::Translated), "TABLE IS EMPTY");
    EXPECT_EQ(exception.JournalMessage(KTSBasStringMode::Untranslated), "table is empty");
    atr_SetCatalogue(nullptr);
}

template <class Message, int number>
void ExpectTells(const Message& message, const char* pythonType, const char* text) {
    using Exception = nex_CmdException<Message, number>;
    const Exception exception(message);
    EXPECT_STREQ(exception.PythonType(), pythonType);
    EXPECT_STREQ(exception.what(), text);
    const nex_CommandException& base = exception;
    EXPECT_THROW(base.Propagate(), Exception);
}

TEST(nex_CmdException, MessageTypeAndNumberTellThePythonException) {
    ExpectTells<cow_String, 1>("k", "KeyError", "k");
    ExpectTells<cow_String, 6>("c", "ColorError", "c");
    ExpectTells<cow_String, 7>("f", "FontError", "f");
    ExpectTells<cow_String, 8>("a", "AccessError", "a");
    ExpectTells<cow_String, 16>("x", "CorvixError", "x");
    ExpectTells<int, 1>(-3, "IndexError", "-3");
    ExpectTells<atr_String, 1>("v", "ValueError", "v");
    ExpectTells<atr_String, 2>("o", "OverflowError", "o");
    ExpectTells<atr_String, 3>("n", "NameError", "n");
    ExpectTells<atr_String, 5>("z", "ZeroDivisionError", "z");
    ExpectTells<atr_String, 32>("g", "GuiAccessError", "g");
}

TEST(cls_Uid, AllocatedOnesAreDistinctAndTheDefaultIsNone) {
    EXPECT_FALSE(cls_Uid().IsAllocated());
    EXPECT_EQ(cls_Uid(), cls_Uid());
    const cls_Uid first = cls_Uid::AllocateUid();
    EXPECT_TRUE(first.IsAllocated());
    EXPECT_NE(first, cls_Uid::AllocateUid());
    EXPECT_EQ(std::hash<cls_Uid>()(first), std::hash<cls_Uid>()(cls_Uid(first)));
}

}  // namespace
