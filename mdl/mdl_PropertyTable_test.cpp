#include "mdl/mdl_PropertyTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "cow/cow_DetachCount.h"
#include "foundation/shared/nex_Exception.h"
#include "mdl/mdl_Archive_test.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_Random.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
using Rows = std::vector<std::vector<double>>;

mdl_PropertyTable TableOf(const Rows& rows) {
    cow_2DArray<double> values(static_cast<int>(rows.size()),
                               rows.empty() ? 0 : static_cast<int>(rows[0].size()));
    for (int r = 0; r < values.Rows(); ++r) {
        for (int c = 0; c < values.Cols(); ++c) {
            values.Get(r, c) = rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
        }
    }
    return mdl_PropertyTable(values);
}

/// The bits of all values, so that NaNs and signed zeros compare.
std::string Bits(const mdl_PropertyTable& table) {
    const std::size_t count = static_cast<std::size_t>(table.Rows() * table.Cols());
    if (count == 0) return "";
    return {reinterpret_cast<const char*>(&table.ConstGetTable().ConstGet(0, 0)),
            count * sizeof(double)};
}

/// The plain insertion sort.
Rows InsertionSorted(Rows rows, int keyColumns) {
    const auto ordersAfter = [keyColumns](const auto& a, const auto& b) {
        for (std::size_t c = a.size(); c-- > a.size() - static_cast<std::size_t>(keyColumns);) {
            if (a[c] != b[c]) return a[c] > b[c];
        }
        return false;
    };
    for (std::size_t i = 1; i < rows.size(); ++i) {
        for (std::size_t at = i; at > 0 && ordersAfter(rows[at - 1], rows[at]); --at) {
            rows[at - 1].swap(rows[at]);
        }
    }
    return rows;
}

TEST(mdl_PropertyTable, SortsByTheLastColumns) {
    const struct {
        Rows rows;
        int keyColumns;
        Rows sorted;
    } cases[] = {
        {{{1, 3}, {2, 1}, {0, 3}}, 1, {{2, 1}, {1, 3}, {0, 3}}},
        {{{1, 3}, {2, 1}, {0, 3}}, 2, {{2, 1}, {0, 3}, {1, 3}}},
        {{{1, 2}, {kNaN, 0}, {kNaN, 2}, {0, 2}}, 2, {{kNaN, 0}, {1, 2}, {kNaN, 2}, {0, 2}}},
        {{{}, {}, {}}, 1, {{}, {}, {}}},
    };
    for (const auto& c : cases) {
        mdl_PropertyTable table = TableOf(c.rows);
        table.Sort(c.keyColumns);
        EXPECT_EQ(Bits(table), Bits(TableOf(c.sorted))) << c.keyColumns;
    }
}

// Few values, so that rows often agree in some columns; with NaNs in every column or none.
TEST(mdl_PropertyTable, SortsAsAnInsertionSortDoes) {
    const double values[] = {0.0, -0.0, 1, 2, 3, kInf, -kInf, kNaN};
    const int counts[] = {1, 2, 3, 4, 5, 1, 2, 3, 4, 0, INT_MIN, INT_MAX};
    for (std::uint64_t seed = 1; seed <= 20000; ++seed) {
        test_Random random(seed);
        const int columns = 1 + random.Below(4);
        const int choice = 2 + random.Below(7), first = random.Below(8);
        Rows rows(static_cast<std::size_t>(random.Below(seed % 100 == 0 ? 200 : 14)),
                  std::vector<double>(static_cast<std::size_t>(columns)));
        for (auto& row : rows) {
            for (double& value : row) value = values[(first + random.Below(choice)) % 8];
            row[0] += random.Below(3);
        }
        const int keyColumns = counts[random.Below(12)];
        mdl_PropertyTable table = TableOf(rows);
        table.Sort(keyColumns);
        const Rows sorted = InsertionSorted(rows, std::clamp(keyColumns, 0, columns));
        ASSERT_EQ(Bits(table), Bits(TableOf(sorted))) << seed;
    }
}

// Rows that an insertion sort moves far: falling in one of the columns, with NaNs in one or none.
TEST(mdl_PropertyTable, SortsAHundredThousandRowsSoon) {
    for (std::size_t choice = 0; choice < 12; ++choice) {
        const std::size_t fallingAt = choice % 3, nanAt = choice / 3;  // 3: nowhere
        Rows rows(100000, std::vector<double>(3, 1));
        for (std::size_t r = 0; r < rows.size(); ++r) {
            rows[r][fallingAt] = static_cast<double>(rows.size() - r);
            if (nanAt < 3 && r % 30000 == 5) rows[r][nanAt] = kNaN;
        }
        mdl_PropertyTable table = TableOf(rows);
        const auto start = std::chrono::steady_clock::now();
        table.Sort(3);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1)) << choice;
        if (nanAt < 3) continue;
        EXPECT_EQ(Bits(table), Bits(TableOf(Rows(rows.rbegin(), rows.rend()))));
    }
}

TEST(mdl_PropertyTable, SortLeavesOtherHoldersAlone) {
    mdl_PropertyTable table = TableOf({{1, 3}, {2, 1}});
    const std::unique_ptr<const mdl_PropertyTable> copy(table.Copy());
    const auto storage = [&table] { return &table.ConstGetTable().ConstGet(0, 0); };
    const double* const shared = &copy->ConstGetTable().ConstGet(0, 0);
    cow_ResetDetachCounts();
    table.Sort(0);
    {
        const test_FailingAllocator failing(1);
        EXPECT_THROW(table.Sort(1), std::bad_alloc);
    }
    EXPECT_EQ(storage(), shared);
    table.Sort(1);
    EXPECT_EQ(*copy, TableOf({{1, 3}, {2, 1}}));
    const double* const own = storage();
    table.Sort(2);
    EXPECT_EQ(storage(), own) << "already in order";
    EXPECT_EQ(cow_DetachCounts().detaches, 0);
}

/// The message that refuses the table, "" when it is valid.
std::string Fault(const mdl_PropertyTable& table) {
    try {
        table.AssertValid();
    } catch (const nex_PrimException& invalid) {
        return invalid.JournalMessage(KTSBasStringMode::Untranslated).Characters();
    }
    return "";
}

TEST(mdl_PropertyTable, EmptyRowsMakeItInvalid) {
    const std::string refusal =
        "Tabular data for at least one option or suboption\n"
        "has either blank or zero valued row(s).";
    const struct {
        Rows rows;
        bool isValid, isValidWithEmptyFirstRow;
    } cases[] = {{{{1, 0}, {0, 1}}, true, true},
                 {{{0, -0.0}, {1, 1}}, false, true},
                 {{{0, 0}, {0, 0}}, false, false},
                 {{{1, 1}, {0, 0}}, false, false},
                 {{{0, kNaN}, {1, 0}}, true, true},
                 {{{}, {}, {}}, true, true},
                 {{}, true, true}};
    for (const auto& c : cases) {
        mdl_PropertyTable table = TableOf(c.rows);
        EXPECT_EQ(Fault(table), c.isValid ? "" : refusal);
        table.SetAllowEmptyFirstRow(true);
        EXPECT_EQ(Fault(table), c.isValidWithEmptyFirstRow ? "" : refusal);
    }
}

TEST(mdl_PropertyTable_Kept, RowZeroIsSortedWithTheOthers) {
    mdl_PropertyTable table = TableOf({{0, 0}, {1, -2}});
    table.SetAllowEmptyFirstRow(true);
    const mdl_PropertyTable before = table;
    EXPECT_EQ(Fault(table), "");
    table.Sort(1);
    EXPECT_EQ(Bits(table), Bits(TableOf({{1, -2}, {0, 0}})));
    EXPECT_NE(Fault(table), "");
    EXPECT_EQ(Fault(before), "");
}

constexpr char kHead[] = "0e000a00 01 00000000 01000000 01002300 01 00000000";

TEST(mdl_PropertyTable, RecordIsPinned) {
    const test_MdlModule module;
    mdl_PropertyTable table = TableOf({{0.5, 1, 2}, {-1, 0, 0.5}});
    table.SetAllowEmptyFirstRow(true);
    // The array's columns, rows and values row after row.
    const test_Stream golden = test_Bytes(std::string(kHead) +
                                          "03000000 02000000 00000000 01 00000000 06000000 03000000"
                                          "000000000000e03f 000000000000f03f 0000000000000040"
                                          "000000000000f0bf 0000000000000000 000000000000e03f");
    EXPECT_EQ(test_Save(table), golden);
    const auto loaded = test_Load<mdl_PropertyTable>(golden);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(*loaded, table);
}

TEST(mdl_PropertyTable, RefusesExtentsThatItsValuesDoNotFill) {
    const test_MdlModule module;
    // Columns and rows: 65536 x 65536, 2147483647 x 0, -1 x -1.
    for (const std::string extents : {"0000010000000100", "00000000ffffff7f", "ffffffffffffffff"}) {
        std::string lines;
        const auto table = test_LoadDamaged<mdl_PropertyTable>(
            test_Bytes(kHead + extents + "00000000 01 00000000 00000000 01000000"), lines);
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->Rows(), 0) << extents;
        EXPECT_EQ(table->Cols(), 0) << extents;
        EXPECT_TRUE(table->AllowEmptyFirstRow());
    }
}

}  // namespace
