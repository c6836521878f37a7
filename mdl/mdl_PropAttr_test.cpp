#include "mdl/mdl_PropAttr.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/shared/nex_Exception.h"
#include "mdl/mdl_Archive_test.h"

namespace {

/// Loads the record before any attribute of its class was made, then saves it again.
template <class V>
void ExpectRecord(const std::string& golden, const V& value) {
    SCOPED_TRACE(mdl_PropClassOf<V>.name);
    const test_Stream bytes = test_Bytes(golden);
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
    const std::string state = "01 00000000 09000000'UNCHANGED' ", list = "00000000 01 00000000";
    ExpectRecord("13000a00" + state + list + "02000000 01000000 01000000 feffffff",
                 cow_List<int>(1, -2));
    ExpectRecord("14000a00" + state + list + "02000000 01000000 01000000'a' 00000000",
                 cow_List<cow_String>("a", ""));
    ExpectRecord("15000a00" + state + list + "01000000 01000000 03000000",
                 mdl_1DArray<int>(cow_List<int>(3)));
    ExpectRecord("18000a00" + state + list + "02000000 01000000 01 00",
                 mdl_1DArray<bool>(cow_List<bool>(true, false)));
    ExpectRecord("19000a00" + state + list + "01000000 01000000 01000000'x'",
                 mdl_1DArray<cow_String>(cow_List<cow_String>("x")));
    ExpectRecord("1a000a00" + state + list + "01000000 01000000 000000000000f03f",
                 mdl_1DArray<double>(cow_List<double>(1)));
    const int offsets[] = {5, -1};  // (kept as they are)
    const double values[] = {0.5, 2};
    const mdl_JaggedArray jagged(2, 2, offsets, values);
    const std::string head = "05002300 01 00000000",
                      body =
                          "02000000 01000000 05000000 ffffffff"
                          "02000000 01000000 000000000000e03f 0000000000000040";
    ExpectRecord("16000a00" + state + head + body, jagged);
    ExpectRecord("17000a00" + state + head + "02000000 01000000" + head + body + head +
                     "00000000 01000000 00000000 01000000",
                 cow_List<mdl_JaggedArray>(jagged, mdl_JaggedArray()));
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
            test_Bytes(std::string("13000a00 01 00000000") + c.record + "01000000 01000000"),
            lines);
        EXPECT_EQ(list->State(), c.state);
        EXPECT_TRUE(list->ConstGetValue().IsEmpty());
        EXPECT_EQ(lines, c.lines);
    }
    const auto any = test_LoadDamaged<mdl_PropBool>(
        test_Bytes("0f000a00 01 00000000 00010000 09000000'UNCHANGED'"), lines);
    EXPECT_TRUE(any->ConstGetValue()) << "any bit makes a truth value";
    const auto jagged = test_LoadDamaged<mdl_PropList1DArrayListFloat>(
        test_Bytes("17000a00 01 00000000 09000000'UNCHANGED' 05002300 01 00000000"
                   "02000000 01000000 01000000 00"
                   "05002300 01 00000000 01000000 01000000 00000000 00000000 01000000"),
        lines);
    ASSERT_EQ(jagged->ConstGetValue().Length(), 1);
    EXPECT_EQ(jagged->ConstGetValue().First().Rows(), 1);
    EXPECT_EQ(lines, "Error reading attribute: 1 of 2 arrays are missing\n");
}

template <class Enumeration>
std::string Names(int count) {
    std::string names;
    for (int i = -1; i <= count; ++i) {
        names += mdl_NameOf(static_cast<Enumeration>(i)) + std::string(" ");
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

TEST(mdl_PropAttr, FollowsAStatusOrStaysAsItWas) {
    for (int number = -1; number <= 17; ++number) {
        const auto status = static_cast<mdl_PropagationStatusEnm>(number);
        const std::string name = mdl_NameOf(status);
        const bool isPlain = number < 8 || number == 15;
        const bool clears = name.starts_with("NO") || name.starts_with("DEACTIVATED") ||
                            name.ends_with("NOT_APPLICABLE");
        for (const mdl_PropInt& before : {mdl_PropInt(5), mdl_PropInt()}) {
            for (const bool acceptsDerived : {false, true}) {
                SCOPED_TRACE(name + (acceptsDerived ? " derived " : " plain ") +
                             mdl_NameOf(before.State()));
                mdl_PropInt attribute = before;
                bool isAccepted = true;
                try {
                    attribute.SetStatus("depth", status, acceptsDerived);
                    EXPECT_EQ(attribute.HasValue(), !clears);
                    EXPECT_EQ(attribute.ConstGetValue(), clears ? 0 : 5);
                } catch (const nex_PrimException&) {
                    isAccepted = false;
                    EXPECT_EQ(attribute, before);
                }
                EXPECT_EQ(isAccepted, !name.empty() && (isPlain || acceptsDerived) &&
                                          (clears || before.HasValue()));
            }
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
    EXPECT_EQ(attribute.State(), mdl_FREED);
    const atr_Catalogue before = atr_SetCatalogue(&Shouted);
    try {
        attribute.SetStatus("50%s", mdl_MODIFIED, true);
        ADD_FAILURE();
    } catch (const nex_Exception& refused) {
        EXPECT_EQ(refused.JournalMessage(KTSBasStringMode::Translated),
                  "Status passt nicht: 50%s!");
    }
    atr_SetCatalogue(before);
}

}  // namespace
