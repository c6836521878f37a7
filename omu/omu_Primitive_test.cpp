#include "omu/omu_Primitive.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "omu/KTSOvuOmu.h"
#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimEnum.h"
#include "omu/omu_PrimException.h"
#include "omu/omu_PrimExpr.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimPath.h"
#include "omu/omu_PrimType.h"
#include "omu/omu_PrimVisitor.h"
#include "omu/omu_PrimWrapper.h"
#include "omu/omu_PyObjectWrapper.h"
#include "omu/omu_TextRepr.h"
#include "omu/omu_Values_test.h"

namespace {

using omu_test::Arrow;

/// Notes the tag of the kind that it was sent to.
class TagVisitor : public omu_PrimVisitor {
  public:
    void Visit(const omu_PrimNumber& p) override { Note(p); }
    void Visit(const omu_PrimBoolean& p) override { Note(p); }
    void Visit(const omu_PrimComplex& p) override { Note(p); }
    void Visit(const omu_PrimString& p) override { Note(p); }
    void Visit(const omu_PrimTranslatedString& p) override { Note(p); }
    void Visit(const omu_PrimNone& p) override { Note(p); }
    void Visit(const omu_PrimEnumBase& p) override { Note(p); }
    void Visit(const omu_PrimPath& p) override { Note(p); }
    void Visit(const omu_PrimExpr& p) override { Note(p); }
    void Visit(const omu_PrimType& p) override { Note(p); }
    void Visit(const omu_PrimWrapper& p) override { Note(p); }
    void Visit(const omu_PyObjectWrapper& p) override { Note(p); }
    void Visit(const omu_PrimException& p) override { Note(p); }
    void Visit(const omu_PrimIntDictionary& p) override { Note(p); }
    void Visit(const omu_PrimStringDictionary& p) override { Note(p); }
    void Visit(const omu_InterfaceObj& p) override { Note(p); }

    std::string visited;

  private:
    void Note(const omu_Primitive& primitive) { visited += primitive.Type(); }
};

struct Kind {
    std::unique_ptr<omu_Primitive> value;
    char tag;
    const char* typeString;
    const char* text;
};

/// One value of every kind; no two are equal.
std::vector<Kind> AllKinds() {
    int object = 0;
    omu_PrimIntDictionary numbered;
    numbered.Insert(-7, omu_PrimBoolean(true));
    omu_PrimStringDictionary named;
    named.Insert("it's", omu_PrimNumber(0.5));
    named.Insert("a", numbered);
    std::vector<Kind> kinds;
    const auto add = [&kinds](const omu_Primitive& value, char tag, const char* typeString,
                              const char* text) {
        kinds.push_back({std::unique_ptr<omu_Primitive>(value.Copy()), tag, typeString, text});
    };
    add(omu_PrimNumber(1), 'i', "int", "1");
    add(omu_PrimNumber(2.5), 'f', "float", "2.5");
    add(omu_PrimBoolean(true), 'b', "Boolean", "True");
    add(omu_PrimBoolean(), 'b', "Boolean", "False");
    add(omu_PrimComplex({1, -2}), 'x', "complex", "1-2j");
    add(omu_PrimString(cow_String("ON")), 's', "string", "'ON'");
    add(omu_PrimTranslatedString("ON"), 'l', "tran_string", "'ON'");
    add(omu_PrimNone(), 'n', "primitive", "None");
    add(omu_OnOffConst(true), 'c', "ON or OFF", "ON");
    add(omu_PrimPath(cow_List<cow_String>("mdb", "x")), 'p', "path", "'mdb.x'");
    add(omu_PrimPath(cow_List<cow_String>("mdb", "x"), 'm'), 'p', "path", "'mdb.x'");
    add(omu_PrimExpr("1 + x"), 'e', "expression", "1 + x");
    add(omu_PrimType(), 't', "type", "Type");
    add(omu_PrimType(omu_DISPLAY_ODB), 't', "Type", "Type");
    add(omu_PrimWrapper(&object, 7), 'w', "primitive", "Wrapper");
    add(omu_PrimWrapper(&object, 8), 'w', "primitive", "Wrapper");
    add(omu_PyObjectWrapper(&object), 'W', "primitive", "Wrapper");
    add(omu_PrimException(omu_ValueErrorException("bad")), 'E', "primitive",
        "omu_PrimException object");
    add(omu_PrimException(omu_NameErrorException("bad")), 'E', "primitive",
        "omu_PrimException object");
    add(numbered, '{', "dictionary", "{-7: True}");
    add(named, '{', "dictionary", "{\"it's\": 0.5, 'a': {-7: True}}");
    add(Arrow(), '<', "Arrow", "Arrow object");
    return kinds;
}

static_assert(!std::is_constructible_v<omu_PrimNumber, const char*>);
static_assert(!std::is_constructible_v<omu_PrimNumber, int*>);
static_assert(!std::is_constructible_v<omu_PrimNumber, long>);
static_assert(!std::is_constructible_v<omu_PrimNumber, std::size_t>);
static_assert(!std::is_constructible_v<omu_PrimBoolean, const char*>);
static_assert(!std::is_assignable_v<omu_PrimNumber&, omu_PrimNumber>);
static_assert(!std::is_assignable_v<omu_Primitive&, const omu_Primitive&>);

}  // namespace

TEST(omu_Primitive, EveryKindHasItsTagTextsCopyAndVisit) {
    for (const Kind& kind : AllKinds()) {
        const omu_Primitive& value = *kind.value;
        SCOPED_TRACE(kind.text);
        EXPECT_EQ(value.Type(), kind.tag);
        EXPECT_TRUE(value.IsType(kind.tag));
        EXPECT_EQ(value.TypeString(), kind.typeString);
        EXPECT_EQ(value.AsString(1), kind.text);
        EXPECT_EQ(value.AsRepr(), kind.text);
        EXPECT_FALSE(value.GetUid().IsAllocated());
        const std::unique_ptr<omu_Primitive> copy(value.Copy());
        const omu_Primitive& copied = *copy;
        EXPECT_EQ(typeid(copied), typeid(value));
        EXPECT_TRUE(*copy == value);
        TagVisitor visitor;
        copy->Accept(&visitor);
        EXPECT_EQ(visitor.visited, std::string(1, kind.tag));
    }
}

TEST(omu_Primitive, ValuesOfDifferentKindsAreNeverEqual) {
    const std::vector<Kind> kinds = AllKinds();
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        for (std::size_t j = 0; j < kinds.size(); ++j) {
            EXPECT_EQ(*kinds[i].value == *kinds[j].value, i == j) << i << ' ' << j;
            EXPECT_EQ(*kinds[i].value != *kinds[j].value, i != j) << i << ' ' << j;
        }
    }
    EXPECT_FALSE(omu_PrimNumber(1) == omu_PrimBoolean(true));
    EXPECT_TRUE(omu_PrimBoolean(true) != omu_PrimNumber(1));
}

TEST(omu_Primitive, ClassesAreRegisteredWithTheirFlagsAndInherit) {
    int count = 0;
    KTSOvuOmu_initialize(count);
    cls_MetadataRegistrar& registrar = omi_Singleton<cls_MetadataRegistrar>::Instance();
    EXPECT_EQ(registrar.Flags(&omu_Primitive::InitializeMetadata), 7u);
    EXPECT_EQ(registrar.Flags(&omu_PrimNumber::InitializeMetadata), 3u);
    EXPECT_EQ(registrar.Flags(&omu_PrimString::InitializeMetadata), 3u);
    EXPECT_EQ(registrar.Flags(&omu_PrimEnumBase::InitializeMetadata), 7u);
    EXPECT_EQ(registrar.Flags(&omu_PrimDictionaryBase::InitializeMetadata), 3u);
    EXPECT_EQ(registrar.Flags(&omu_PrimStringDictionary::InitializeMetadata), 3u);
    EXPECT_EQ(registrar.Flags(&omu_PrimIntDictionary::InitializeMetadata), 2u);
    for (const Kind& kind : AllKinds()) {
        const omu_Primitive& value = *kind.value;
        const cls_ClassMetadata* const metadata = registrar.ClassRegistrar().Find(value.TypeId());
        ASSERT_NE(metadata, nullptr) << kind.text;
        EXPECT_EQ(metadata->Name(), typ_ArchCompTable::Name(value.TypeId()));
        EXPECT_TRUE(value.IsA(omu_Primitive::kTypeId)) << kind.text;
        EXPECT_TRUE(value.IsA(value.TypeId()));
        EXPECT_EQ(value.IsA(omu_PrimDictionaryBase::kTypeId), kind.tag == '{') << kind.text;
    }
    static_cast<void>(omu_TextRepr::Instance());
    KTSOvuOmu_finalize(count);
    EXPECT_FALSE(omi_Singleton<omu_TextRepr>::Exists());
    EXPECT_FALSE(omi_Singleton<omu_SymbolicConstantTable>::Exists());
}

TEST(omu_PrimComplex, ShowsTheSignOfTheImaginaryPartOnce) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(omu_PrimComplex().AsString(0), "0+0j");
    EXPECT_EQ(omu_PrimComplex({1, -0.0}).AsString(0), "1+0j");
    EXPECT_EQ(omu_PrimComplex({0.1, 1e-7}).AsString(0), "0.1+1e-07j");
    EXPECT_EQ(omu_PrimComplex({1, -nan}).AsString(0), "1+nanj");
    EXPECT_EQ(omu_PrimComplex({-inf, -inf}).AsString(0), "-inf-infj");
    EXPECT_FALSE(omu_PrimComplex({nan, 0}) == omu_PrimComplex({nan, 0}));
}

TEST(omu_PrimType, NamesTheDisplayedKinds) {
    for (int i = 0; i < 8; ++i) {
        const auto type = static_cast<omu_ObjectToDisplayTypeEnm>(i);
        EXPECT_EQ(omu_PrimType::ConverStringToType(omu_PrimType::ConverTypeToString(type)), type);
    }
    EXPECT_EQ(omu_PrimType::ConverTypeToString(omu_DISPLAY_XY_PLOT), "XYPlot");
    EXPECT_EQ(omu_PrimType::ConverTypeToString(omu_ObjectToDisplayTypeEnm(8)), "None");
    EXPECT_EQ(omu_PrimType::ConverTypeToString(omu_ObjectToDisplayTypeEnm(-1)), "None");
    EXPECT_EQ(omu_PrimType::ConverStringToType("part"), omu_DISPLAY_NONE);
    EXPECT_TRUE(omu_PrimType("Arrow").SameType(Arrow()));
    EXPECT_FALSE(omu_PrimType("Part").SameType(Arrow()));
}

TEST(omu_PrimException, KeepsTheExceptionAsItsOwnClass) {
    std::unique_ptr<omu_PrimException> carried;
    try {
        KTSBasThrow(omu_IndexErrorException(3));
    } catch (const nex_Exception& caught) {
        carried = std::make_unique<omu_PrimException>(caught, "no third");
    }
    EXPECT_STREQ(carried->PythonType(), "IndexError");
    EXPECT_EQ(carried->Message(), "no third");
    const omu_PrimException copy = *carried;
    carried.reset();
    EXPECT_THROW(copy.Propagate(), omu_IndexErrorException);
    EXPECT_STREQ(omu_PrimException(nex_PrimException("x")).PythonType(), "CorvixError");
}

TEST(omu_PyObjectWrapper, RetainsAndReleasesInStep) {
    static int held;
    held = 0;
    omu_PyObjectWrapper::SetHooks({[](void*) { ++held; }, [](void*) { --held; }});
    int first = 0;
    int second = 0;
    {
        omu_PyObjectWrapper a(&first);
        const omu_PyObjectWrapper b(a);
        const std::unique_ptr<omu_PyObjectWrapper> c(b.Copy());
        EXPECT_EQ(held, 3);
        const omu_PyObjectWrapper none;
        EXPECT_EQ(held, 3);
        a = omu_PyObjectWrapper(&second);
        EXPECT_EQ(held, 3);
        EXPECT_EQ(a.Object(), &second);
        a = *&a;
        a = none;
        EXPECT_EQ(held, 2);
    }
    EXPECT_EQ(held, 0);
    omu_PyObjectWrapper::SetHooks({});
}

TEST(omu_TextRepr, HasDefaultsAndFillsTheRecursionTextAtOnePlace) {
    omu_TextRepr& settings = omu_TextRepr::Instance();
    EXPECT_FALSE(settings.IsSimpleStyle());
    EXPECT_EQ(settings.GetMaxRecursion(), 1);
    EXPECT_EQ(settings.GetMaxElementsInSequence(), 2147483647);
    EXPECT_EQ(settings.GetMaxReprStringSizeMB(), 1);
    EXPECT_EQ(settings.GetZeroTolerance(), 1e-6);
    EXPECT_EQ(settings.GetSignificantDigits(), 3);
    EXPECT_TRUE(settings.GetSortedMembersMethods());
    const Arrow arrow;
    EXPECT_EQ(settings.GetMaxRecursionString(&arrow), "Arrow object");
    EXPECT_EQ(settings.GetMaxRecursionString(nullptr), "");
    settings.SetMaxRecursionString("%d%n<%s%s>");
    EXPECT_EQ(settings.GetMaxRecursionString(&arrow), "%d%n<Arrow%s>");

    settings.SetZeroTolerance(1);
    settings.SetSignificantDigits(1);
    EXPECT_EQ(omu_PrimNumber(1e-7).AsRepr(), "1e-07") << "numbers obey no setting";
    omi_SingletonBase<omu_TextRepr>::Finalize();
}

TEST(omu_TextRepr_Kept, SimpleStyleIsOnlyOne) {
    omu_TextRepr::Instance().SetSimpleStyle(2);
    EXPECT_FALSE(omu_TextRepr::Instance().IsSimpleStyle());
    omu_TextRepr::Instance().SetSimpleStyle(1);
    EXPECT_TRUE(omu_TextRepr::Instance().IsSimpleStyle());
    omi_SingletonBase<omu_TextRepr>::Finalize();
}
