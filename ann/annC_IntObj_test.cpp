// Annotations and containers as scripts see them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "ann/annC_AnnotationClient.h"
#include "ann/annC_AnnotationContainerIntObj.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_Text.h"
#include "ann/annC_ViewportAnchor.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"

namespace {

/// The arguments of a call: values by position, then pairs of a keyword and its value.
class Arguments : public omu_Arguments {
  public:
    template <class T>
    Arguments& operator()(const T& value) {
        Put(value);
        return *this;
    }
    template <class T>
    Arguments& operator()(const char* keyword, const T& value) {
        Put(value, keyword);
        return *this;
    }
};

/// "PythonType: message" of what `call` raises, "" when it raises nothing.
template <class Call>
std::string FaultOf(Call&& call) {
    try {
        call();
    } catch (const nex_CommandException& fault) {
        const cow_String message = fault.JournalMessage(KTSBasStringMode::Untranslated);
        return std::string(fault.PythonType()) + ": " + message.Characters();
    }
    return "";
}

std::string Call(annC_InterfaceObj& object, const char* method, omu_Arguments arguments) {
    return FaultOf([&] { EXPECT_EQ(object.Call(method, arguments), nullptr); });
}

std::string Member(const annC_InterfaceObj& object, const char* name) {
    return object.GetMember(name)->AsString(0).Characters();
}

std::string KeysOf(annC_AnnotationContainerIntObj& container) {
    omu_Arguments none;
    return container.Call("keys", none)->AsString(0).Characters();
}

class annC_IntObj : public testing::Test {
  protected:
    annC_IntObj() {
        container.SetItem("t", text);
        container.SetItem("a", arrow);
    }
    ~annC_IntObj() override { omi_SingletonBase<annC_AnnotationClient>::Finalize(); }

    Arguments none;
    annC_ArrowIntObj arrow{none};
    annC_TextIntObj text{none};
    annC_AnnotationContainerIntObj container;
};

TEST_F(annC_IntObj, AnArrowTakesItsMembersInOrderOrByName) {
    const cow_List<double> point(1.0, 2.0);
    Arguments given;
    given(point)(point)("CENTER")(cow_List<double>(1.0, 2.0, 3.0))(annC_PrimLineStyle("NONE"));
    given("lineStyle", annC_PrimLineStyle("DOTTED"))("endPointY", 7);
    const annC_ArrowIntObj built(given);
    const struct {
        const char* member;
        const char* value;
    } members[] = {{"startPoint", "(1.0, 2.0)"},
                   {"endPoint", "(1.0, 7.0)"},
                   {"startAnchor", "CENTER"},
                   {"endAnchor", "(1.0, 2.0, 3.0)"},
                   {"startHeadStyle", "NONE"},
                   {"endHeadStyle", "FILLED_ARROW"},
                   {"startGap", "0.0"},
                   {"endGap", "0.0"},
                   {"color", "'White'"},
                   {"lineStyle", "DOTTED"},
                   {"lineThickness", "VERY_THIN"},
                   {"startPointX", "1.0"},
                   {"startPointY", "2.0"},
                   {"endPointX", "1.0"},
                   {"endPointY", "7.0"}};
    int index = 0;
    for (const auto& [member, value] : members) {
        EXPECT_EQ(built.MemberNames()[index++], member);
        EXPECT_EQ(Member(built, member), value) << member;
    }
    EXPECT_EQ(built.MemberNames().Length(), index);
    EXPECT_EQ(built.TypeString(), "Arrow");
}

TEST_F(annC_IntObj, ATextTakesItsMembersAndReportsItsSize) {
    Arguments given;
    given("a\nb")("offsetX", 2.5)("offset", cow_List<double>(1.0, 1.0));
    given("anchor", cow_List<double>(3.0, 4.0))("box", omu_OnOffConst("ON"))("justification",
                                                                             "RIGHT");
    const annC_TextIntObj built(given);
    EXPECT_EQ(Member(built, "offset"), "(2.5, 1.0)") << "the single coordinate wins";
    EXPECT_EQ(Member(built, "anchor"), "(3.0, 4.0)");
    EXPECT_EQ(Member(built, "box"), "ON");
    EXPECT_EQ(Member(built, "justification"), "RIGHT");
    EXPECT_EQ(built.Summary(), "a\nb");
    EXPECT_EQ(text.Summary(), "Empty Summary");
    EXPECT_EQ(Member(built, "width"), "0.0");
    annC_AnnotationClient::Instance().SetTextMeasurer([](const annC_Text& measured) {
        return annC_Point2D{measured.GetText().Length() * 8.0, 12.0};
    });
    EXPECT_EQ(Member(built, "width"), "24.0");
    EXPECT_EQ(Member(built, "height"), "12.0");
    EXPECT_EQ(Call(text, "setValues", Arguments()("text", "x")("height", 3)),
              "AccessError: height cannot be set");
    EXPECT_EQ(Member(text, "text"), "''");
}

TEST_F(annC_IntObj, WrongValuesChangeNothing) {
    annC_AnnotationClient::Instance().SetColorCheck([](const cow_String& name) {
        if (name == "nocolor") KTSBasThrow(omu_ValueErrorException("no colour"));
    });
    const annC_PrimLineStyle dotted("DOTTED");
    const struct {
        Arguments given;
        const char* fault;
    } arrows[] = {
        {Arguments()("lineStyle", dotted)("nope", 1), "TypeError: keyword error on nope"},
        {Arguments()("lineStyle", "WAVY"),
         "TypeError: lineStyle; found string, expecting SOLID, DASHED, DOTTED, DOT_DASH or NONE"},
        {Arguments()("startPointX", 1)("endPoint", cow_List<double>(1.0, 2.0, 3.0)),
         "TypeError: endPoint; found tuple, expecting sequence of Doubles"},
        {Arguments()("startPointX", 1)("endAnchor", 1),
         "TypeError: endAnchor; found int, expecting BOTTOM_LEFT, BOTTOM_CENTER, BOTTOM_RIGHT, "
         "TOP_LEFT, TOP_RIGHT, TOP_CENTER, CENTER_LEFT, CENTER or CENTER_RIGHT"},
        {Arguments()("startPointX", 1)("color", "nocolor"), "ValueError: no colour"},
    };
    for (const auto& [given, fault] : arrows) {
        EXPECT_EQ(Call(arrow, "setValues", given), fault);
        EXPECT_TRUE(arrow.ConstGet() == annC_Arrow());
    }
    EXPECT_EQ(Call(text, "setValues", Arguments()("font", "Verdana")),
              "FontError: Verdana is not a valid font.");
    EXPECT_EQ(FaultOf([&] { arrow.SetMember("width", omu_PrimNumber(1)); }),
              "AttributeError: 'Arrow' object has no attribute 'width'");
    EXPECT_EQ(FaultOf([&] { Member(text, "startPoint"); }),
              "AttributeError: 'Text' object has no attribute 'startPoint'");
    EXPECT_EQ(Call(text, "translate", none),
              "AttributeError: 'Text' object has no attribute 'translate'");
    EXPECT_EQ(Call(arrow, "translate", Arguments()(1)),
              "TypeError: not all required arguments specified; expected 2, got 1");

    // What stands in a file already is not checked again.
    annC_Arrow stored;
    stored.SetColor("nocolor");
    const auto object = annC_AnnotationIntObj::Make(stored);
    EXPECT_EQ(Call(*object, "setValues", Arguments()("startGap", 2)), "");
}

TEST_F(annC_IntObj, AnArrowTranslates) {
    EXPECT_EQ(Call(arrow, "translate", Arguments()(1)(2.5)), "");
    EXPECT_EQ(Call(arrow, "translateStartPoint", Arguments()("y", -2)("x", 1)), "");
    EXPECT_EQ(Call(arrow, "translateEndPoint", Arguments()(0)(1)), "");
    EXPECT_EQ(Member(arrow, "startPoint"), "(2.0, 0.5)");
    EXPECT_EQ(Member(arrow, "endPoint"), "(1.0, 3.5)");
    EXPECT_EQ(arrow.MethodNames().Length(), 4);
}

TEST_F(annC_IntObj, ItemsStandForTheirAnnotation) {
    const auto item = container.GetItem("a");
    EXPECT_TRUE(*item == arrow);
    item->SetMember("color", omu_PrimString(cow_String("Red")));
    EXPECT_EQ(Member(*container.GetItem("a"), "color"), "'Red'");
    EXPECT_EQ(Member(arrow, "color"), "'White'") << "the container holds a copy";
    EXPECT_EQ(Call(container, "changeKey", Arguments()("a")("b")), "");
    const std::unique_ptr<omu_Primitive> copy(item->Copy());
    EXPECT_EQ(Member(dynamic_cast<annC_ArrowIntObj&>(*copy), "color"), "'Red'");
    container.SetItem("c", *item);
    EXPECT_TRUE(*container.GetItem("c") == *item);

    const char* const gone = "AccessError: Arrow is no longer there";
    container.SetItem("b", text);
    EXPECT_EQ(FaultOf([&] { Member(*item, "startPoint"); }), gone)
        << "another class took its place";
    EXPECT_EQ(Call(*item, "setValues", none), gone);
    container.SetItem("b", arrow);
    EXPECT_EQ(Member(*item, "color"), "'White'");
    container.RemoveItem("b");
    container.SetItem("b", arrow);
    EXPECT_EQ(Call(*item, "translate", Arguments()(1)(1)), gone) << "a new one under its name";
    EXPECT_FALSE(*item == arrow);
}

TEST_F(annC_IntObj, AContainerIsPutInOrder) {
    container.SetItem("p", *annC_AnnotationIntObj::Make(annC_Annotation()));
    EXPECT_EQ(KeysOf(container), "('p', 'a', 't')");
    EXPECT_EQ(container.Summary(), "p: Annotation\na: Arrow\nt: Text");
    const struct {
        const char* method;
        Arguments given;
        const char* fault;
        const char* keys;
    } calls[] = {
        {"sendToBack", Arguments()("p"), "", "('a', 't', 'p')"},
        {"bringToFront", Arguments()("name", "t"), "", "('t', 'a', 'p')"},
        {"sendBackward", Arguments()("t"), "", "('a', 't', 'p')"},
        {"bringForward", Arguments()("p"), "", "('a', 'p', 't')"},
        {"moveAfter", Arguments()("a")("other", "p"), "", "('p', 'a', 't')"},
        {"moveBefore", Arguments()("t")("p"), "", "('t', 'p', 'a')"},
        {"moveBefore", Arguments()("t")("no"), "KeyError: no", "('t', 'p', 'a')"},
        {"bringToFront", Arguments()("no"), "KeyError: no", "('t', 'p', 'a')"},
        {"changeKey", Arguments()("p")("t"), "ValueError: name is already in use: t",
         "('t', 'p', 'a')"},
        {"changeKey", Arguments()("no")("x"), "KeyError: no", "('t', 'p', 'a')"},
        {"changeKey", Arguments()("p")(""), "CorvixNameError: name is empty", "('t', 'p', 'a')"},
        {"changeKey", Arguments()("p")("x"), "", "('t', 'x', 'a')"},
        {"setValues", Arguments()("a")("startGap", 2), "", "('t', 'x', 'a')"},
        {"setValues", Arguments()("a")("text", "x"), "TypeError: keyword error on text",
         "('t', 'x', 'a')"},
        {"setValues", Arguments()("no")("text", "x"), "KeyError: no", "('t', 'x', 'a')"},
        {"setValues", Arguments()(1)("text", 3), "TypeError: keyword error on text",
         "('t', 'x', 'a')"},
        {"moveUp", Arguments()("a"),
         "AttributeError: 'AnnotationContainer' object has no attribute 'moveUp'",
         "('t', 'x', 'a')"},
    };
    for (const auto& [method, given, fault, keys] : calls) {
        EXPECT_EQ(Call(container, method, given), fault) << method;
        EXPECT_EQ(KeysOf(container), keys) << method;
    }
    EXPECT_EQ(Member(*container.GetItem("a"), "startGap"), "2.0");
    EXPECT_EQ(FaultOf([&] { container.RemoveItem("no"); }), "KeyError: no");
    EXPECT_EQ(FaultOf([&] { container.SetItem(std::string_view("a\0b", 3), text); }),
              "ValueError: name holds a zero byte");
    EXPECT_EQ(annC_AnnotationContainerIntObj().Summary(), "Empty Summary");
    EXPECT_EQ(annC_InterfaceObj::TypeNameOf(omu_Primitive::kTypeId), "UNKNOWN TYPE");
}

TEST(annC_Font, TakesOpenFieldsFromTheDefault) {
    const annC_Font standard(annC_Font::kDefault);
    EXPECT_TRUE(annC_Font::IsValid(annC_Font::kDefault));
    EXPECT_EQ(standard.Family(), "verdana");
    EXPECT_EQ(standard.SizePt(), 12.0);
    const annC_Font other("-*-courier-bold-i-*-*-*-85-*-*");
    EXPECT_EQ(other.Family(), "courier");
    EXPECT_TRUE(other.IsBold() && other.IsSlanted());
    EXPECT_EQ(other.SizePt(), 8.5);
    EXPECT_EQ(annC_Font("-*-*-*-*-*-*-*-x").SizePt(), 12.0);
    for (const char* const invalid :
         {"", "verdana", "-*-verdana-medium-r-normal-*-*", "*-*-verdana-medium-r-normal-*-*-120"}) {
        EXPECT_FALSE(annC_Font::IsValid(invalid));
        EXPECT_EQ(annC_Font(invalid).Family(), "verdana");
    }
}

}  // namespace
