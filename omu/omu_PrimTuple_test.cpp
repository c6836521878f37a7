#include "omu/omu_PrimTuple.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimEnum.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimVisitor.h"
#include "omu/omu_TextRepr.h"
#include "omu/omu_TypeErrorException.h"
#include "omu/omu_Values_test.h"

namespace {

using namespace omu_test;

TEST(omu_PrimTuple, TextsTagsAndKinds) {
    struct Case {
        std::unique_ptr<omu_PrimTuple> value;
        const char* text;
    };
    const Case cases[] = {
        {std::make_unique<omu_PrimTuple>(), "()"},
        {std::make_unique<omu_PrimTuple>(Tuple(I(1))), "(1,)"},
        {std::make_unique<omu_PrimTuple>(Tuple(I(1), S("a"))), "(1, 'a')"},
        {std::make_unique<omu_PrimTuple>(Tuple(Tuple(D(2)), List(), omu_PrimNone())),
         "((2.0,), [], None)"},
        {std::make_unique<omu_PrimList>(), "[]"},
        {std::make_unique<omu_PrimList>(List(I(1))), "[1]"},
        {std::make_unique<omu_PrimList>(List(Tuple(), List(S("a"), D(0.5)))), "[(), ['a', 0.5]]"},
    };
    struct Visitor : omu_PrimVisitor {
        void Visit(const omu_PrimTuple&) override { visited = '('; }
        void Visit(const omu_PrimList&) override { visited = '['; }
        char visited = 0;
    };
    for (const Case& a : cases) {
        EXPECT_EQ(a.value->AsString(0), a.text);
        EXPECT_EQ(a.value->AsRepr(), a.text);
        EXPECT_EQ(a.value->Type(), a.text[0]);
        EXPECT_EQ(a.value->TypeString(), a.text[0] == '[' ? "list" : "tuple");
        const std::unique_ptr<omu_PrimTuple> copy(a.value->Copy());
        Visitor visitor;
        copy->Accept(&visitor);
        EXPECT_EQ(visitor.visited, a.text[0]);
        for (const Case& b : cases) EXPECT_EQ(*copy == *b.value, &a == &b) << a.text << b.text;
    }
    EXPECT_FALSE(Tuple(I(1)) == List(I(1)));
    EXPECT_TRUE(Tuple(I(1)) == Tuple(D(1)));
    EXPECT_TRUE(omu_PrimTuple(List(I(1))) == Tuple(I(1))) << "a tuple made of a list is a tuple";
    const omu_PrimTuple nan = Tuple(D(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(nan == nan) << "elements are compared by value, shared or not";
}

TEST(omu_PrimTuple, RefusesIndicesAndNullElementsAndNeverAborts) {
    const omu_PrimTuple tuple = Tuple(I(1), I(2));
    const omu_PrimList list = List(I(1), I(2));
    for (const int index : {-1, 2, -2147483647 - 1, 2147483647}) {
        EXPECT_EQ(MessageOf([&] { return tuple.Index(index); }), "Tuple Index returned NULL");
        EXPECT_EQ(MessageOf([&] { return list.Index(index); }), "List Index returned NULL");
    }
    EXPECT_THROW(omu_PrimTuple(cow_List<omu_PrimHandle>(omu_PrimHandle())),
                 omu_GenericTypeErrorException);
}

TEST(omu_PrimTuple, SlicesJoinsAndRepeatsInItsOwnKind) {
    const omu_PrimTuple tuple = Tuple(I(0), I(1), I(2));
    const omu_PrimList list = List(S("x"));
    EXPECT_EQ(TextOf(tuple.Slice(1, 3)), "(1, 2)");
    EXPECT_EQ(TextOf(tuple.Slice(-5, 2)), "(0, 1)");
    EXPECT_EQ(TextOf(tuple.Slice(2, 1)), "()");
    EXPECT_EQ(TextOf(tuple.Concat(list)), "(0, 1, 2, 'x')");
    EXPECT_EQ(TextOf(list.Concat(tuple)), "['x', 0, 1, 2]");
    EXPECT_EQ(TextOf(list.Concat(list)), "['x', 'x']");
    EXPECT_EQ(TextOf(tuple.Repeat(2)), "(0, 1, 2, 0, 1, 2)");
    EXPECT_EQ(TextOf(list.Repeat(1)), "['x']");
    EXPECT_EQ(TextOf(list.Repeat(0)), "[]");
    EXPECT_EQ(TextOf(list.Slice(0, 9)), "['x']");
    EXPECT_EQ(TextOf(omu_PrimTuple().Repeat(2147483647)), "()");
    EXPECT_EQ(TextOf(tuple.Repeat(-2147483647 - 1)), "()");
    EXPECT_THROW(static_cast<void>(tuple.Repeat(2147483647)), omu_ValueErrorException);
}

TEST(omu_PrimTuple, ReprIsCutBySettings) {
    omu_TextRepr& settings = omu_TextRepr::Instance();
    const omu_PrimTuple tuple = Tuple(I(1), List(I(1), I(2), I(3)), I(3));
    settings.SetMaxElementsInSequence(2);
    EXPECT_EQ(tuple.AsRepr(), "(1, [1, 2, ...], ...)");
    EXPECT_EQ(tuple.AsString(0), "(1, [1, 2, 3], 3)");
    settings.SetMaxElementsInSequence(0);
    EXPECT_EQ(tuple.AsRepr(), "(...)");
    settings.SetMaxElementsInSequence(2147483647);

    const omu_PrimString large(cow_String(std::string((1 << 20) + 1, 'x')));
    const omu_PrimTuple large2 = Tuple(List(large, I(1)), I(2));
    EXPECT_EQ(large2.AsRepr(), "([" + large.AsString(0) + ", ...], ...)");
    EXPECT_EQ(Tuple(large).AsRepr(), "(" + large.AsString(0) + ",)");
    settings.SetMaxReprStringSizeMB(0);
    EXPECT_EQ(large2.AsRepr(), large2.AsString(0));
    settings.SetMaxReprStringSizeMB(2147483647);
    EXPECT_EQ(large2.AsRepr(), large2.AsString(0));
    omi_SingletonBase<omu_TextRepr>::Finalize();
}

TEST(omu_PrimTuple, NestingIsBounded) {
    omu_PrimList nested;
    for (int depth = 2; depth <= 256; ++depth) nested = List(nested);
    EXPECT_EQ(nested.AsString(0).Length(), 512);
    EXPECT_TRUE(nested == *std::unique_ptr<omu_Primitive>(nested.Copy()));
    EXPECT_THROW(List(nested), omu_ValueErrorException);
    EXPECT_THROW(Tuple(I(1), nested), omu_ValueErrorException);
    omu_PrimList shallow = List(I(1));
    EXPECT_THROW(shallow.Append(nested), omu_ValueErrorException);
    EXPECT_THROW(shallow.Set(0, nested), omu_ValueErrorException);
    EXPECT_EQ(shallow.AsString(0), "[1]");

    omu_PrimList doubled = List(I(1));
    for (int i = 0; i < 25; ++i) doubled = List(doubled, doubled);
    EXPECT_EQ(doubled.Nesting().nodes, 3 * (std::int64_t{1} << 25) - 1);
    EXPECT_LT(doubled.AsRepr().Length(), (1 << 20) + 1024);
    EXPECT_THROW(List(doubled, doubled), omu_ValueErrorException);
    EXPECT_THROW(static_cast<void>(List(doubled).Repeat(2)), omu_ValueErrorException);
    EXPECT_THROW(static_cast<void>(List(doubled).Concat(List(doubled))), omu_ValueErrorException);
}

template <class T>
void ExpectConverts(bool (omu_PrimTuple::*as)(cow_List<T>&, cow_String&) const,
                    const omu_PrimTuple& accepted, const cow_List<T>& expected,
                    const omu_PrimTuple& refused, const char* word) {
    cow_List<T> list;
    cow_String found;
    EXPECT_TRUE((accepted.*as)(list, found));
    EXPECT_EQ(list, expected);
    EXPECT_FALSE((refused.*as)(list, found));
    EXPECT_EQ(found, word);
    EXPECT_EQ(list, expected) << "untouched";
}

TEST(omu_PrimTuple, ConvertsAsAWholeOrNotAtAll) {
    ExpectConverts(&omu_PrimTuple::AsListInt, Tuple(I(1), U(2)), cow_List<int>(1, 2),
                   Tuple(I(1), D(2)), "sequence of Integers");
    ExpectConverts(&omu_PrimTuple::AsListFloat, Tuple(I(1), D(0.1)), cow_List<float>(1, 0.1f),
                   Tuple(omu_PrimBoolean(true)), "sequence of Floats");
    ExpectConverts(&omu_PrimTuple::AsListDouble, Tuple(U(4000000000u)), cow_List<double>(4e9),
                   Tuple(D(1), S("1")), "sequence of Doubles");
    ExpectConverts(&omu_PrimTuple::AsListBool, Tuple(omu_OnOffConst(true), I(0)),
                   cow_List<bool>(true, false), Tuple(I(2)), "sequence of Bool");
    ExpectConverts(&omu_PrimTuple::AsListString, Tuple(omu_PrimTranslatedString("b"), S("a")),
                   cow_List<cow_String>("b", "a"), Tuple(I(1)), "sequence of Strings");
    ExpectConverts(&omu_PrimTuple::AsListTranslatedString, Tuple(S("a")), cow_List<atr_String>("a"),
                   Tuple(omu_PrimNone()), "sequence of translated Strings");
}

TEST(omu_PrimTuple, ConvertsRowsOfOneLengthAndPairs) {
    cow_String word;
    cow_2DArray<double> table(1, 1);
    EXPECT_TRUE(Tuple(Tuple(I(1), I(2)), List(I(3), D(4))).As2DArrayDouble(table, word));
    EXPECT_EQ(table.Rows(), 2);
    EXPECT_EQ(table.ConstGet(1, 0), 3);
    for (const omu_PrimTuple& refused :
         {Tuple(Tuple(I(1), I(2)), Tuple(I(1))), Tuple(Tuple(I(1)), I(1)), Tuple(Tuple(S("x")))}) {
        word = "";
        EXPECT_FALSE(refused.As2DArrayDouble(table, word));
        EXPECT_EQ(word, "2D sequence of Doubles");
        EXPECT_EQ(table.Cols(), 2) << "untouched";
    }
    EXPECT_TRUE(Tuple().As2DArrayDouble(table, word));
    EXPECT_EQ(table.Rows() + table.Cols(), 0);
    cow_2DArray<cow_String> texts;
    EXPECT_TRUE(List(List(S("a")), List(S("b"))).As2DArrayString(texts, word));
    EXPECT_EQ(texts.ConstGet(1, 0), "b");
    EXPECT_FALSE(List(List(I(1))).As2DArrayString(texts, word));
    EXPECT_EQ(word, "2D sequence of Strings");

    cow_Map<cow_String, float> map;
    EXPECT_TRUE(Tuple(Tuple(S("a"), I(1)), List(S("b"), D(2)), Tuple(S("a"), I(3)))
                    .AsMapString2Float(map, word));
    EXPECT_EQ(map.ConstGet("a"), 3);
    EXPECT_EQ(map.ConstGet("b"), 2);
    EXPECT_FALSE(Tuple(Tuple(S("a"), I(1), I(1))).AsMapString2Float(map, word));
    EXPECT_EQ(word, "2D sequence of Floats");
}

}  // namespace
