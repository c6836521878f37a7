#include "mdl/mdl_PropAttr.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "foundation/shared/nex_Exception.h"
#include "mdl/mdl_Archive_test.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Loads the record before any attribute of its class was made, then saves it again.
template <class V>
void ExpectRecord(const char* golden, const V& value) {
    SCOPED_TRACE(mdl_PropClassOf<V>.name);
    const test_Bytes bytes = test_Parse(golden);
    const auto loaded = test_Load<mdl_PropAttr<V>>(bytes);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(test_Save(*loaded), bytes);
    EXPECT_EQ(*loaded, mdl_PropAttr<V>(value));
    EXPECT_EQ(typ_ArchCompTable::Name(loaded->DynTypeId()), mdl_PropClassOf<V>.name);
}

// Fields in the order of their names, then texts in that of a map, then collections.
TEST(mdl_PropAttr, RecordsArePinned) {
    const test_MdlModule module;
    ExpectRecord("0f000a00 01 00000000 01000000 09000000'UNCHANGED'", true);
    ExpectRecord("10000a00 01 00000000 07000000 09000000'UNCHANGED'", 7);
    ExpectRecord("11000a00 01 00000000 000000000000e0bf 09000000'UNCHANGED'", -0.5);
    ExpectRecord("12000a00 01 00000000 09000000'UNCHANGED' 02000000'ab'", cow_String("ab"));
    ExpectRecord(
        "13000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
        "02000000 01000000 01000000 feffffff",
        cow_List<int>(1, -2));
    ExpectRecord(
        "14000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
        "02000000 01000000 01000000'a' 00000000",
        cow_List<cow_String>("a", ""));
    ExpectRecord(
        "15000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
        "01000000 01000000 03000000",
        mdl_1DArray<int>(cow_List<int>(3)));
    const int offsets[] = {0, 1};
    const double values[] = {0.5, 2};
    const mdl_JaggedArray jagged(2, 2, offsets, values);
    ExpectRecord(
        "16000a00 01 00000000 09000000'UNCHANGED' 05002300 01 00000000"
        "02000000 01000000 00000000 01000000"
        "02000000 01000000 000000000000e03f 0000000000000040",
        jagged);
    ExpectRecord(
        "17000a00 01 00000000 09000000'UNCHANGED' 05002300 01 00000000"
        "02000000 01000000"
        "05002300 01 00000000 02000000 01000000 00000000 01000000"
        "02000000 01000000 000000000000e03f 0000000000000040"
        "05002300 01 00000000 00000000 01000000 00000000 01000000",
        cow_List<mdl_JaggedArray>(jagged, mdl_JaggedArray()));
    ExpectRecord(
        "18000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
        "02000000 01000000 01 00",
        mdl_1DArray<bool>(cow_List<bool>(true, false)));
    ExpectRecord(
        "19000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
        "01000000 01000000 01000000'x'",
        mdl_1DArray<cow_String>(cow_List<cow_String>("x")));
    ExpectRecord(
        "1a000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
        "01000000 01000000 000000000000f03f",
        mdl_1DArray<double>(cow_List<double>(1)));
}

TEST(mdl_PropAttr, DamagedRecordsKeepWhatTheyCan) {
    const test_MdlModule module;
    const struct {
        const char* record;  // of a list of integers, up to its count
        mdl_PropStateEnm state;
        const char* lines;
    } cases[] = {
        {"03000000'SET' 00000000 01 00000000 01000000", mdl_INVALID,
         "Error reading attribute: no state is named 'SET'\n"},
        {"05000000'FREED' 00000000 01 00000000 01000000", mdl_FREED, ""},
        {"09000000'UNCHANGED' 00000000 01 00000000 ffffff7f", mdl_UNCHANGED,
         "Error reading stream: 2147483647 elements expected, 8 bytes left\n"},
    };
    std::string lines;
    for (const auto& c : cases) {
        const auto list = test_LoadDamaged<mdl_PropListInt>(
            test_Parse(std::string("13000a00 01 00000000") + c.record + "01000000 01000000"),
            lines);
        EXPECT_EQ(list->State(), c.state);
        EXPECT_TRUE(list->ConstGetValue().IsEmpty());
        EXPECT_EQ(lines, c.lines);
    }
    const auto any = test_LoadDamaged<mdl_PropBool>(
        test_Parse("0f000a00 01 00000000 00010000 09000000'UNCHANGED'"), lines);
    EXPECT_TRUE(any->ConstGetValue()) << "any bit makes a truth value";
    const auto jagged = test_LoadDamaged<mdl_PropList1DArrayListFloat>(
        test_Parse("17000a00 01 00000000 09000000'UNCHANGED' 05002300 01 00000000"
                   "02000000 01000000 01000000 00"
                   "05002300 01 00000000 01000000 01000000 00000000 00000000 01000000"),
        lines);
    ASSERT_EQ(jagged->ConstGetValue().Length(), 1);
    EXPECT_EQ(jagged->ConstGetValue().First().Rows(), 1);
    EXPECT_EQ(lines, "Error reading attribute: 1 of 2 arrays are missing\n");

    cls_ClassRegistrar other;
    other.AddClass(cls_ClassMetadata("mdl_PropListInt", mdl_PropListInt::TypeId())
                       .AddAttribute("val", cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE)
                       .AddAttribute("state", cls_KIND_ENUM));
    const auto list = test_LoadDamaged<mdl_PropListInt>(
        test_Save(mdl_PropListInt(cow_List<int>(1, 2))), lines, other);
    EXPECT_EQ(lines, "error getting ReadListPrim for int collection type: 52\n");
    EXPECT_EQ(*list, mdl_PropListInt(cow_List<int>()));
}

TEST(mdl_PropAttr, ValueAndStateBelongTogether) {
    mdl_PropInt attribute;
    EXPECT_EQ(attribute.State(), mdl_UNSET);
    EXPECT_EQ(attribute.ConstGetValue(), 0);
    EXPECT_NE(attribute, mdl_PropInt(0));
    attribute.SetValue(3);
    EXPECT_EQ(attribute, mdl_PropInt(3));
    EXPECT_FALSE(mdl_PropDouble(kNaN) == mdl_PropDouble(kNaN));
    EXPECT_NE(mdl_PropString("a"), mdl_PropString("b"));
    static_assert(!std::is_constructible_v<mdl_PropBool, const char*>);
}

template <class Enumeration>
std::string Names(int count) {
    std::string names;
    for (int i = -1; i <= count; ++i) {
        const auto value = static_cast<Enumeration>(i);
        names += mdl_NameOf(value) + std::string(" ");
        Enumeration found{};
        EXPECT_EQ(mdl_Find(mdl_NameOf(value), found), i >= 0 && i < count);
        EXPECT_EQ(found, i >= 0 && i < count ? value : Enumeration{});
    }
    return names;
}

TEST(mdl_PropagationStatus, NamesStandInTheirOrder) {
    EXPECT_EQ(Names<mdl_PropagationStatusEnm>(17),
              " NOT_YET_ACTIVE CREATED PROPAGATED MODIFIED DEACTIVATED NO_LONGER_ACTIVE "
              "TYPE_NOT_APPLICABLE INSTANCE_NOT_APPLICABLE BUILT_INTO_BASE_STATE "
              "PROPAGATED_FROM_BASE_STATE MODIFIED_FROM_BASE_STATE DEACTIVATED_FROM_BASE_STATE "
              "BUILT_INTO_MODES COMPUTED PROPAGATED_FROM_COMPUTED RESET_TO_INITIAL "
              "PROPAGATED_FROM_FREQUENCY  ");
    EXPECT_EQ(Names<mdl_PropStateEnm>(7),
              " UNSET UNCHANGED FREED NOT_APPLICABLE INVALID ABS_DEFAULT COMP_DEFAULT  ");
}

/// The state that `SetStatus` gives to an attribute with the value 5 or none; "-" when it refuses.
std::string Outcome(mdl_PropInt attribute, int status, bool acceptsDerived) {
    const mdl_PropInt before = attribute;
    try {
        attribute.SetStatus("depth", static_cast<mdl_PropagationStatusEnm>(status), acceptsDerived);
    } catch (const nex_PrimException& refused) {
        EXPECT_STREQ(refused.what(), "Invalid propagation status for 'depth' attribute.");
        EXPECT_EQ(attribute, before);
        return "-";
    }
    EXPECT_EQ(attribute.ConstGetValue(), attribute.HasValue() ? 5 : 0);
    return mdl_NameOf(attribute.State());
}

TEST(mdl_PropAttr, FollowsTheStatus) {
    // By status: the state, and whether it is accepted: with a value, plain (v) and derived (d),
    // and without one (V, D).
    const struct {
        const char* state;
        const char* accepted;
    } rules[] = {
        {"UNSET", "vdVD"},          {"UNCHANGED", "vd--"},      {"UNCHANGED", "vd--"},
        {"UNCHANGED", "vd--"},      {"FREED", "vdVD"},          {"FREED", "vdVD"},
        {"NOT_APPLICABLE", "vdVD"}, {"NOT_APPLICABLE", "vdVD"}, {"UNCHANGED", "-d--"},
        {"UNCHANGED", "-d--"},      {"UNCHANGED", "-d--"},      {"FREED", "-d-D"},
        {"UNCHANGED", "-d--"},      {"COMP_DEFAULT", "-d--"},   {"UNCHANGED", "-d--"},
        {"ABS_DEFAULT", "vd--"},    {"UNCHANGED", "-d--"},
    };
    for (int status = -1; status <= 17; ++status) {
        const bool isKnown = status >= 0 && status < 17;
        for (int i = 0; i < 4; ++i) {
            const bool isAccepted = isKnown && rules[status].accepted[i] != '-';
            EXPECT_EQ(Outcome(i < 2 ? mdl_PropInt(5) : mdl_PropInt(), status, i % 2 == 1),
                      isAccepted ? rules[status].state : "-")
                << status << " " << i;
        }
    }
}

cow_String Shouted(const cow_String& text) {
    return text == "Invalid propagation status for '%s' attribute."
               ? cow_String("Status passt nicht: %s!")
               : text;
}

TEST(mdl_PropAttr, RefusesAStatusWithTheNameAsData) {
    mdl_PropListInt attribute(cow_List<int>(1, 2));
    attribute.SetStatus("50%s", mdl_DEACTIVATED, true);
    EXPECT_EQ(attribute.ConstGetValue().Length(), 0);
    const atr_Catalogue before = atr_SetCatalogue(&Shouted);
    try {
        attribute.SetStatus("50%s", mdl_MODIFIED, true);
        ADD_FAILURE();
    } catch (const nex_Exception& refused) {
        EXPECT_EQ(refused.JournalMessage(KTSBasStringMode::Translated),
                  "Status passt nicht: 50%s!");
        EXPECT_STREQ(refused.PythonType(), "CorvixError");
        EXPECT_GT(refused.Line(), 0);
    }
    atr_SetCatalogue(before);
}

}  // namespace
