#include "omu/omu_PrimEnum.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_SymbolicConstantTable.h"
#include "omu/omu_Values_test.h"
#include "testing/test_Environment.h"

namespace {

enum Metal : int { IRON = 3, LEAD = -2, ZINC = 0 };
enum Other : int { OTHER_LEAD = 9 };
enum Nameless : int {};

}  // namespace

template <>
struct omu_PrimEnumNames<Metal, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"IRON", 3}, {"LEAD", -2}, {"ZINC", 0}, {}};
};
template <>
struct omu_PrimEnumNames<Other, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{"LEAD", 9}, {}};
};
template <>
struct omu_PrimEnumNames<Nameless, 1> {
    static constexpr omu_EnumEntry kEntries[] = {{}};
};

namespace {

using PrimMetal = omu_PrimEnum<Metal, 1>;
using PrimOther = omu_PrimEnum<Other, 1>;
using Table = omu_SymbolicConstantTable;

using namespace omu_test;

std::string Pid() {
#if defined(_WIN32)
    const int pid = _getpid();
#else
    const int pid = getpid();
#endif
    return atr("%X", static_cast<unsigned>(pid)).Characters();
}

TEST(omu_PrimEnum, IsBuiltFromValueNameAndOtherEnumerations) {
    EXPECT_EQ(PrimMetal().Enumerator(), IRON) << "the first stored value, as 0 may not be one";
    EXPECT_EQ(PrimMetal(LEAD).EnumValue(), 4294967294u);
    EXPECT_EQ(PrimMetal(LEAD).PermissibleValues().ConstGet("LEAD"), 4294967294u);
    EXPECT_EQ(PrimMetal(cow_String("ZINC")).Enumerator(), ZINC);
    EXPECT_EQ(PrimMetal("LEAD").Enumerator(), LEAD);
    EXPECT_EQ(PrimMetal(PrimOther()).Enumerator(), LEAD) << "by name, not by number";
    EXPECT_TRUE(PrimMetal("LEAD") == PrimOther("LEAD"));
    EXPECT_FALSE(PrimMetal("LEAD") == S("LEAD"));
    PrimMetal assigned;
    assigned = PrimMetal(ZINC);
    EXPECT_EQ(assigned.AsString(0), "ZINC");
}

TEST(omu_PrimEnum, RefusesWithTheWholeMessage) {
    const auto refused = [](const auto& value) {
        const cow_String message = MessageOf([&value] { return PrimMetal(value); });
        return std::string(message.View());
    };
    const std::string permissible =
        std::string("  Permissible: ") + PrimMetal().TypeString().Characters();
    const std::string text = "omu_PrimEnum(const cow_String&) - str not allowed: ";
    EXPECT_EQ(refused("100%s"), text + "100%s" + permissible);
    EXPECT_EQ(refused(static_cast<const char*>(nullptr)), text + permissible);
    EXPECT_EQ(refused(static_cast<Metal>(5)),
              "omu_PrimEnum(ENUMTYPE) - Enum value not allowed: 5" + permissible);
    EXPECT_EQ(MessageOf([] { return PrimMetal(omu_OnOffConst()); }),
              "omu_PrimEnum(const omu_PrimEnumBase&) - str not allowed: ON");
    PrimMetal metal(LEAD);
    EXPECT_FALSE(metal.SetValue(static_cast<Metal>(5)));
    EXPECT_FALSE(metal.SetValue("iron"));
    EXPECT_EQ(metal.Enumerator(), LEAD);
    EXPECT_TRUE(metal.SetValue(ZINC));
    EXPECT_TRUE(metal.SetValue("IRON"));
    EXPECT_EQ(metal.Enumerator(), IRON);
}

TEST(omu_PrimEnum, ListsNamesInTheOrderOfTheMap) {
    std::string expected;
    int index = 0;
    for (const auto& [name, value] : PrimMetal().PermissibleValues()) {
        if (index > 0) expected += index == 2 ? " or " : ", ";
        expected += name.Characters();
        ++index;
    }
    EXPECT_EQ(PrimMetal().TypeString(), expected.c_str());
    EXPECT_EQ(PrimOther().TypeString(), "LEAD");
    EXPECT_EQ(omu_TrueFalseConst().TypeString(), "TRUE or FALSE");
}

TEST(omu_PrimEnum, WithoutNamesPermitsNothing) {
    using Empty = omu_PrimEnum<Nameless, 1>;
    EXPECT_EQ(Empty().EnumValue(), 0u);
    EXPECT_EQ(Empty().TypeString(), "");
    EXPECT_TRUE(Empty().PermissibleValues().IsEmpty());
    EXPECT_EQ(Empty::Value(0), Nameless(0));
    EXPECT_FALSE(Empty().SetValue(Nameless(0)));
    EXPECT_NE(MessageOf([] { return Empty(Nameless(0)); }), "");
}

TEST(omu_PrimEnum_Kept, ValueTakesAnIndexAndNameAValue) {
    EXPECT_EQ(PrimMetal::Value(1), LEAD);
    EXPECT_EQ(PrimMetal::Name(3), "IRON");
    EXPECT_EQ(PrimMetal::Name(1), "");
    EXPECT_EQ(PrimMetal::Value(3), Metal(0));
    EXPECT_EQ(PrimMetal::Value(-1), Metal(0));
}

TEST(omu_BooleanConst, PairsKeepTheirNames) {
    using Bare = omu_PrimEnum<bool, 2>;
    EXPECT_FALSE(Bare("OFF"));
    EXPECT_TRUE(Bare(true));
    EXPECT_EQ(Bare(true).AsString(0), "ON");
    EXPECT_TRUE(omu_YesNoConst("YES"));
    EXPECT_EQ(omu_TrueFalseConst(false).AsString(0), "FALSE");
    EXPECT_EQ(omu_TrueFalseConst::Name(1), "TRUE");
    EXPECT_STREQ(omu_OnOffConst::Family(), "ON_OFF");
    EXPECT_STREQ(omu_TrueFalseConst::Family(), "TRUE_FALSE");
    EXPECT_STREQ(omu_YesNoConst::Family(), "ON_OFF");
    EXPECT_EQ(MessageOf([] { return omu_OnOffConst("TRUE"); }),
              "omu_PrimEnum(const cow_String&) - str not allowed: TRUE  Permissible: ON or OFF");
    omu_YesNoConst answer(true);
    static_cast<Bare&>(answer) = omu_TrueFalseConst(false);
    EXPECT_EQ(answer.AsString(0), "NO") << "an assigned value keeps the names of its target";
    const std::unique_ptr<omu_Primitive> copy(omu_YesNoConst(false).Copy());
    EXPECT_EQ(copy->AsString(0), "NO");
}

TEST(omu_PrimEnumBase, AConstantPermitsItsOwnNameOnly) {
    static_cast<void>(omu_SymbolicConstantData("LEAD"));
    omu_PrimEnumBase lead("LEAD");
    EXPECT_EQ(lead.TypeString(), "LEAD");
    EXPECT_EQ(PrimMetal(lead).Enumerator(), LEAD);
    EXPECT_TRUE(lead == PrimMetal(LEAD));
    EXPECT_TRUE(lead.SetName("LEAD"));
    EXPECT_FALSE(lead.SetName("IRON"));
    EXPECT_EQ(omu_PrimEnumBase().AsString(0), "_UNSPECIFIED");
    EXPECT_NE(MessageOf([] { return omu_PrimEnumBase("NOBODY"); }), "");
    omi_SingletonBase<Table>::Finalize();
}

TEST(omu_SymbolicConstantTable, RefusesWithALineAndChangesNothing) {
    Table& table = Table::Instance();
    EXPECT_EQ(table.Size(), 0u);
    EXPECT_EQ(table.AddString("A"), 1u);
    const std::pair<const char*, std::string> refusals[] = {
        {"A", "(A) name already in table: 1/1"},
        {"", "(key=) key is EMPTY"},
        {"_UNSPECIFIED", "(_UNSPECIFIED) name already in table: 0/1"}};
    for (const auto& [added, refusal] : refusals) {
        EXPECT_EQ(PrintedBy([&, &key = added] { EXPECT_EQ(table.AddString(key), 0u); }),
                  "omu_SymbolicConstantTable::AddString" + refusal + "  pid=" + Pid() + "\n");
    }
    EXPECT_EQ(PrintedBy([&] { EXPECT_EQ(table.GetString(2), ""); }),
              "omu_SymbolicConstantTable::GetString(2)  id>Size (1)  " + Pid() + "\n");
    EXPECT_EQ(PrintedBy([&] { EXPECT_EQ(table.GetId("B"), 0u); }), "");
    EXPECT_EQ(table.GetString(1), "A");
    EXPECT_EQ(table.Size(), 1u);

    table.AddString("bad%s");
    std::vector<cow_String> made;
    EXPECT_EQ(PrintedBy([&] {
                  table.CreatePythonSymbolicConstants(
                      [&made](const cow_String& name, unsigned) { made.push_back(name); });
              }),
              "omu_SymbolicConstantTable::CreatePythonSymbolicConstant('bad%s', 2) ignored\n");
    EXPECT_EQ(made, std::vector<cow_String>{"A"});
    omi_SingletonBase<Table>::Finalize();
}

TEST(omu_SymbolicConstantTable_Kept, TheHeaderOfTheContentsHasALetterBeforeTheProcessId) {
    Table::Instance().AddString("bad%s");
    EXPECT_EQ(PrintedBy([] { Table::Instance().PrintContents(); }),
              "CONTENTS of omu_SymbolicConstantTable  pid:Ox" + Pid() +
                  "\n    0   _UNSPECIFIED\n    1   bad%s\n"
                  "--------------------omu------------ pid:0x" +
                  Pid() + "\n");
    omi_SingletonBase<Table>::Finalize();
}

TEST(omu_SymbolicConstantTable, NamesAreCapitalsOverTheCountedLength) {
    using namespace std::string_view_literals;
    for (const auto good : {"A"sv, "_"sv, "A_1"sv, "_9"sv}) {
        EXPECT_TRUE(Table::IsValidSymConstName(good)) << good;
    }
    for (const auto bad : {""sv, "1A"sv, "a"sv, "A\n"sv, "A\0B"sv, "A B"sv, "\u00C4"sv}) {
        EXPECT_FALSE(Table::IsValidSymConstName(bad)) << bad;
    }
}

TEST(omu_SymbolicConstantData, RefusedEntriesPrintAndStayUnset) {
    Table& table = Table::Instance();
    omu_SymbolicConstantData entry("FIRST");
    EXPECT_EQ(entry.GetId(), 1u);
    EXPECT_EQ(omu_SymbolicConstantData("FIRST", 1).GetId(), 1u);
    EXPECT_EQ(omu_SymbolicConstantData("SECOND", 2).GetId(), 2u);
    EXPECT_EQ(omu_SymbolicConstantData(2).GetText(), "SECOND");
    const auto refusal = [](const auto&... arguments) {
        return PrintedBy([&] { EXPECT_EQ(omu_SymbolicConstantData(arguments...).GetId(), 0u); });
    };
    EXPECT_EQ(refusal("low"), "omu_SymbolicConstantData(low, 0) Name is invalid\n");
    EXPECT_EQ(refusal("FIRST", 2u), "omu_SymbolicConstantData(FIRST, 2) id (2) != idSCD (1)\n");
    EXPECT_EQ(refusal("THIRD", 7u), "omu_SymbolicConstantData(THIRD, 7) id (7) != idSCD (0)\n");
    EXPECT_EQ(refusal(3u), "omu_SymbolicConstantData(3) id > Size (2)\n");
    EXPECT_EQ(PrintedBy([&] { EXPECT_FALSE(entry.Set("SECOND", 2)); }),
              "omu_SymbolicConstantData(SECOND, 2) _id is not 0\n");
    EXPECT_EQ(
        PrintedBy([] {
            omu_SymbolicConstantData reserved;
            EXPECT_FALSE(reserved.Set("_UNSPECIFIED"));
            EXPECT_TRUE(reserved.Set("FIRST"));
        }),
        "omu_SymbolicConstantTable::AddString(_UNSPECIFIED) name already in table: 0/2  pid=" +
            Pid() + "\n");
    EXPECT_EQ(PrintedBy([] { EXPECT_EQ(omu_SymbolicConstantData().GetText(), ""); }),
              "omu_SymbolicConstantData::getText() text is EMPTY\n");
    EXPECT_EQ(table.Size(), 2u);
    omi_SingletonBase<Table>::Finalize();
}

TEST(omu_SymbolicConstantTable, TracesAdditionsOnDemand) {
    test_SetVariable("ZRX_DBG_SYMCONST", "1");
    EXPECT_EQ(PrintedBy([] {
                  omu_RegisterConstants(omu_OnOffNames::kEntries, "ON_OFF");
                  omu_RegisterConstants(omu_OnOffNames::kEntries, "ON_OFF");
              }),
              "KTSOvuGeom:omu_SymbolicConstantData(ON, 0, ON_OFF)\n"
              "KTSOvuGeom:omu_SCTable::AddStr('ON') id:1\n"
              "KTSOvuGeom:omu_SCTable::AddSCD(scd) 'ON' id:0  getId:1\n"
              "KTSOvuGeom:omu_SymbolicConstantData(ON, 0) -> id 1\n"
              "KTSOvuGeom:omu_SymbolicConstantData(OFF, 0, ON_OFF)\n"
              "KTSOvuGeom:omu_SCTable::AddStr('OFF') id:2\n"
              "KTSOvuGeom:omu_SCTable::AddSCD(scd) 'OFF' id:0  getId:2\n"
              "KTSOvuGeom:omu_SymbolicConstantData(OFF, 0) -> id 2\n");
    test_SetVariable("ZRX_DBG_SYMCONST", nullptr);
    omi_SingletonBase<Table>::Finalize();
}

}  // namespace
