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
    std::string lines;
    const auto unknown = test_LoadDamaged<mdl_PropInt>(
        test_Parse("10000a00 01 00000000 07000000 03000000'SET'"), lines);
    EXPECT_EQ(unknown->State(), mdl_INVALID);
    EXPECT_EQ(unknown->ConstGetValue(), 0);
    EXPECT_EQ(lines, "Error reading attribute: no state is named 'SET'\n");

    const auto unset = test_LoadDamaged<mdl_PropInt>(
        test_Parse("10000a00 01 00000000 07000000 05000000'FREED'"), lines);
    EXPECT_EQ(unset->State(), mdl_FREED);
    EXPECT_EQ(unset->ConstGetValue(), 0) << "a value that the state has no room for";
    EXPECT_EQ(lines, "");

    const auto any = test_LoadDamaged<mdl_PropBool>(
        test_Parse("0f000a00 01 00000000 00010000 09000000'UNCHANGED'"), lines);
    EXPECT_TRUE(any->ConstGetValue()) << "any bit makes a truth value";

    // A count beyond the stream.
    const auto list = test_LoadDamaged<mdl_PropListInt>(
        test_Parse("13000a00 01 00000000 09000000'UNCHANGED' 00000000 01 00000000"
                   "ffffff7f 01000000 01000000"),
        lines);
    EXPECT_EQ(list->ConstGetValue().Length(), 0);
    EXPECT_EQ(list->State(), mdl_UNCHANGED);
    EXPECT_EQ(lines, "Error reading stream: 2147483647 elements expected, 8 bytes left\n");

    // A null record and one of an unrelated class among jagged arrays.
    const auto jagged = test_LoadDamaged<mdl_PropList1DArrayListFloat>(
        test_Parse("17000a00 01 00000000 09000000'UNCHANGED' 05002300 01 00000000"
                   "02000000 01000000 01000000 00"
                   "05002300 01 00000000 01000000 01000000 00000000 00000000 01000000"),
        lines);
    ASSERT_EQ(jagged->ConstGetValue().Length(), 1);
    EXPECT_EQ(jagged->ConstGetValue().First().Rows(), 1);
    EXPECT_EQ(lines, "Error reading attribute: 1 of 2 arrays are missing\n");
}

/// An attribute whose value a registrar of its own describes as a list of another type.
TEST(mdl_PropAttr, ACollectionOfAnotherTypeGivesAnEmptyList) {
    const test_MdlModule module;
    cls_ClassRegistrar other;
    cls_ClassMetadata metadata("mdl_PropListInt", mdl_PropListInt::TypeId(),
                               &mdl_PropListInt::Ctor);
    metadata.AddAttribute("val", cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE)
        .AddAttribute("state", cls_KIND_ENUM);
    other.AddClass(metadata);
    const test_Bytes bytes = test_Save(mdl_PropListInt(cow_List<int>(1, 2)));
    testing::internal::CaptureStderr();
    idb_LoadFault fault;
    mdl_PropListInt read;
    static_cast<void>(idb_LoadRecord(
        bytes.data(), bytes.size(), mdl_PropListInt::TypeId(),
        [&read](cls_ReadVisitor& visitor) { read = mdl_PropListInt(visitor); }, fault, other));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "error getting ReadListPrim for int collection type: 52\n");
    EXPECT_EQ(read, mdl_PropListInt(cow_List<int>()));
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

TEST(mdl_PropagationStatus, NamesStandInTheirOrder) {
    std::string statuses, states;
    for (int i = -1; i <= 17; ++i) {
        statuses += mdl_NameOf(static_cast<mdl_PropagationStatusEnm>(i)) + std::string(" ");
    }
    EXPECT_EQ(statuses,
              " NOT_YET_ACTIVE CREATED PROPAGATED MODIFIED DEACTIVATED NO_LONGER_ACTIVE "
              "TYPE_NOT_APPLICABLE INSTANCE_NOT_APPLICABLE BUILT_INTO_BASE_STATE "
              "PROPAGATED_FROM_BASE_STATE MODIFIED_FROM_BASE_STATE DEACTIVATED_FROM_BASE_STATE "
              "BUILT_INTO_MODES COMPUTED PROPAGATED_FROM_COMPUTED RESET_TO_INITIAL "
              "PROPAGATED_FROM_FREQUENCY  ");
    for (int i = -1; i <= 7; ++i) {
        states += mdl_NameOf(static_cast<mdl_PropStateEnm>(i)) + std::string(" ");
    }
    EXPECT_EQ(states, " UNSET UNCHANGED FREED NOT_APPLICABLE INVALID ABS_DEFAULT COMP_DEFAULT  ");
    mdl_PropagationStatusEnm status = mdl_CREATED;
    EXPECT_TRUE(mdl_Find("COMPUTED", status));
    EXPECT_EQ(status, mdl_COMPUTED);
    EXPECT_FALSE(mdl_Find("computed", status));
    EXPECT_FALSE(mdl_Find("", status));
    EXPECT_EQ(status, mdl_COMPUTED);
}

/// What `SetStatus` makes of an attribute with (5) or without a value: state and value, or "-".
std::string Outcome(bool hasValue, int status, bool acceptsDerived) {
    mdl_PropInt attribute = hasValue ? mdl_PropInt(5) : mdl_PropInt();
    const mdl_PropInt before = attribute;
    try {
        attribute.SetStatus("depth", static_cast<mdl_PropagationStatusEnm>(status), acceptsDerived);
    } catch (const nex_PrimException& refused) {
        EXPECT_STREQ(refused.what(), "Invalid propagation status for 'depth' attribute.");
        EXPECT_EQ(attribute, before);
        return "-";
    }
    return mdl_NameOf(attribute.State()) + std::string(attribute.ConstGetValue() == 5 ? " 5" : "");
}

TEST(mdl_PropAttr, FollowsTheStatus) {
    // By status: with a value (plain, derived), without one (plain, derived).
    const char* const expected[][4] = {
        {"UNSET", "UNSET", "UNSET", "UNSET"},
        {"UNCHANGED 5", "UNCHANGED 5", "-", "-"},
        {"UNCHANGED 5", "UNCHANGED 5", "-", "-"},
        {"UNCHANGED 5", "UNCHANGED 5", "-", "-"},
        {"FREED", "FREED", "FREED", "FREED"},
        {"FREED", "FREED", "FREED", "FREED"},
        {"NOT_APPLICABLE", "NOT_APPLICABLE", "NOT_APPLICABLE", "NOT_APPLICABLE"},
        {"NOT_APPLICABLE", "NOT_APPLICABLE", "NOT_APPLICABLE", "NOT_APPLICABLE"},
        {"-", "UNCHANGED 5", "-", "-"},
        {"-", "UNCHANGED 5", "-", "-"},
        {"-", "UNCHANGED 5", "-", "-"},
        {"-", "FREED", "-", "FREED"},
        {"-", "UNCHANGED 5", "-", "-"},
        {"-", "COMP_DEFAULT 5", "-", "-"},
        {"-", "UNCHANGED 5", "-", "-"},
        {"ABS_DEFAULT 5", "ABS_DEFAULT 5", "-", "-"},
        {"-", "UNCHANGED 5", "-", "-"},
    };
    for (int status = 0; status < 17; ++status) {
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(Outcome(i < 2, status, i % 2 == 1), expected[status][i])
                << status << " " << i;
        }
    }
    for (const int status : {-1, 17, std::numeric_limits<int>::min()}) {
        for (int i = 0; i < 4; ++i) EXPECT_EQ(Outcome(i < 2, status, i % 2 == 1), "-");
    }
}

cow_String Shouted(const cow_String& text) {
    return text == "Invalid propagation status for '%s' attribute."
               ? cow_String("Status passt nicht: %s!")
               : text;
}

TEST(mdl_PropAttr, RefusesAStatusWithTheNameAsData) {
    const cow_List<int> values(1, 2);
    mdl_PropListInt attribute(values);
    try {
        attribute.SetStatus("50%s", mdl_COMPUTED, false);
        FAIL();
    } catch (const nex_Exception& refused) {
        EXPECT_EQ(refused.JournalMessage(KTSBasStringMode::Translated),
                  "Invalid propagation status for '50%s' attribute.");
        EXPECT_STREQ(refused.PythonType(), "CorvixError");
        EXPECT_GT(refused.Line(), 0);
    }
    EXPECT_EQ(attribute, mdl_PropListInt(values));
    attribute.SetStatus("50%s", mdl_DEACTIVATED, true);
    EXPECT_EQ(attribute.State(), mdl_FREED);
    EXPECT_EQ(attribute.ConstGetValue().Length(), 0);
    EXPECT_EQ(values.Length(), 2);

    const atr_Catalogue before = atr_SetCatalogue(&Shouted);
    try {
        attribute.SetStatus("50%s", mdl_MODIFIED, true);
        FAIL();
    } catch (const nex_Exception& refused) {
        EXPECT_EQ(refused.JournalMessage(KTSBasStringMode::Translated),
                  "Status passt nicht: 50%s!");
    }
    atr_SetCatalogue(before);
}

}  // namespace
