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
    std::string bits;
    for (int r = 0; r < table.Rows(); ++r) {
        for (int c = 0; c < table.Cols(); ++c) {
            bits.append(reinterpret_cast<const char*>(&table.ConstGetTable().ConstGet(r, c)),
                        sizeof(double));
        }
    }
    return bits;
}

/// The plain insertion sort.
Rows InsertionSorted(Rows rows, int keyColumns) {
    const auto ordersAfter = [keyColumns](const std::vector<double>& a,
                                          const std::vector<double>& b) {
        for (std::size_t c = a.size(), end = a.size() - static_cast<std::size_t>(keyColumns);
             c-- > end;) {
            if (a[c] != b[c]) return a[c] > b[c];
        }
        return false;
    };
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const std::vector<double> current = rows[i];
        std::size_t place = i;
        for (; place > 0 && ordersAfter(rows[place - 1], current); --place) {
            rows[place] = rows[place - 1];
        }
        rows[place] = current;
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
        {{{1, 3}, {2, 1}, {0, 3}}, 0, {{1, 3}, {2, 1}, {0, 3}}},
        {{{2, 2}, {1, 1}}, 3, {{1, 1}, {2, 2}}},
        {{{2, 2}, {1, 1}}, INT_MAX, {{1, 1}, {2, 2}}},
        {{{2, 2}, {1, 1}}, -1, {{2, 2}, {1, 1}}},
        {{{2, 2}, {1, 1}}, INT_MIN, {{2, 2}, {1, 1}}},
        {{{2, 0.0}, {1, -0.0}}, 1, {{2, 0.0}, {1, -0.0}}},
        {{{2, 0.0}, {1, -0.0}}, 2, {{1, -0.0}, {2, 0.0}}},
        {{{5, 1}, {4, kNaN}, {3, 0}, {2, 5}, {1, kNaN}, {0, 2}},
         1,
         {{5, 1}, {4, kNaN}, {3, 0}, {2, 5}, {1, kNaN}, {0, 2}}},
        {{{1, 2}, {kNaN, 0}, {kNaN, 2}, {0, 2}}, 2, {{kNaN, 0}, {1, 2}, {kNaN, 2}, {0, 2}}},
        {{{}, {}, {}}, 1, {{}, {}, {}}},
        {{}, 1, {}},
    };
    for (const auto& c : cases) {
        mdl_PropertyTable table = TableOf(c.rows);
        table.Sort(c.keyColumns);
        EXPECT_EQ(Bits(table), Bits(TableOf(c.sorted))) << c.keyColumns;
        EXPECT_EQ(table.Rows(), static_cast<int>(c.rows.size()));
    }
}

// Few values, so that rows often agree in some columns; with NaNs in every column or none.
TEST(mdl_PropertyTable, SortsAsAnInsertionSortDoes) {
    const double values[] = {0.0, -0.0, 1, 2, 3, kInf, -kInf, kNaN};
    for (std::uint64_t seed = 1; seed <= 20000; ++seed) {
        test_Random random(seed);
        const std::size_t columns = static_cast<std::size_t>(1 + random.Below(4));
        const int choice = 2 + random.Below(7), first = random.Below(8);
        Rows rows(static_cast<std::size_t>(random.Below(seed % 100 == 0 ? 200 : 14)),
                  std::vector<double>(columns));
        for (auto& row : rows) {
            for (double& value : row) value = values[(first + random.Below(choice)) % 8];
            row[0] += random.Below(3);
        }
        const int keyColumns = 1 + random.Below(static_cast<int>(columns));
        mdl_PropertyTable table = TableOf(rows);
        table.Sort(keyColumns);
        ASSERT_EQ(Bits(table), Bits(TableOf(InsertionSorted(rows, keyColumns)))) << seed;
    }
}

/// Sorts by three columns within a second.
mdl_PropertyTable SortedSoon(const Rows& rows) {
    mdl_PropertyTable table = TableOf(rows);
    const auto start = std::chrono::steady_clock::now();
    table.Sort(3);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    return table;
}

TEST(mdl_PropertyTable, SortsAHundredThousandRowsSoon) {
    // Each row belongs near its place, so that the insertion sort itself ends soon.
    for (const std::size_t nanAt : {0u, 1u, 2u}) {  // 0: nowhere
        test_Random random(7);
        Rows rows;
        for (int r = 0; r < 100000; ++r) {
            rows.push_back({double(r), double(random.Below(2)), double(r / 64 + random.Below(3))});
            if (nanAt > 0 && random.Below(5) == 0) rows.back()[nanAt] = kNaN;
        }
        EXPECT_EQ(Bits(SortedSoon(rows)), Bits(TableOf(InsertionSorted(rows, 3)))) << nanAt;
    }
    // Those that an insertion sort moves farthest: falling in the last and in the first column.
    for (const std::size_t fallingAt : {0u, 2u}) {
        Rows rows(100000, std::vector<double>(3, 1));
        for (std::size_t r = 0; r < rows.size(); ++r) {
            rows[r][fallingAt] = static_cast<double>(rows.size() - r);
        }
        EXPECT_EQ(Bits(SortedSoon(rows)), Bits(TableOf(Rows(rows.rbegin(), rows.rend()))));
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
    EXPECT_EQ(table, TableOf({{2, 1}, {1, 3}}));
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
        EXPECT_STREQ(invalid.PythonType(), "CorvixError");
        EXPECT_GT(invalid.Line(), 0);
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
        bool isValid;
        bool isValidWithEmptyFirstRow;
    } cases[] = {
        {{{1, 0}, {0, 1}}, true, true},       {{{0, -0.0}, {1, 1}}, false, true},
        {{{0, 0}, {0, 0}}, false, false},     {{{1, 1}, {0, 0}}, false, false},
        {{{0, kNaN}, {kNaN, 0}}, true, true}, {{{0}}, false, true},
        {{{}, {}, {}}, true, true},           {{}, true, true},
    };
    for (const auto& c : cases) {
        mdl_PropertyTable table = TableOf(c.rows);
        EXPECT_EQ(Fault(table), c.isValid ? "" : refusal);
        table.SetAllowEmptyFirstRow(true);
        EXPECT_EQ(Fault(table), c.isValidWithEmptyFirstRow ? "" : refusal);
    }
    EXPECT_EQ(mdl_PropertyTable(-1, 3).Rows(), 0);
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

TEST(mdl_PropertyTable, IsEqualByItsNumbers) {
    EXPECT_EQ(TableOf({{1, 0.0}}), TableOf({{1, -0.0}}));
    EXPECT_FALSE(TableOf({{1, 0}}) == TableOf({{1}, {0}}));
    const mdl_PropertyTable nan = TableOf({{kNaN}});
    EXPECT_FALSE(nan == nan);
}

constexpr char kHead[] = "0e000a00 01 00000000 01000000 01002300 01 00000000";

TEST(mdl_PropertyTable, RecordIsPinned) {
    const test_MdlModule module;
    mdl_PropertyTable table = TableOf({{0.5, 1, 2}, {-1, 0, 0.5}});
    table.SetAllowEmptyFirstRow(true);
    // The array's columns, rows and values row after row.
    const test_Bytes golden = test_Parse(std::string(kHead) +
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
    const struct {
        const char* extents;  // columns, rows
        bool isReported;
    } cases[] = {
        {"00000100 00000100", true},   // 65536 x 65536
        {"00000000 ffffff7f", false},  // 2147483647 x 0
        {"ffffff7f 00000000", false},
        {"ffffffff ffffffff", true},  // -1 x -1
    };
    for (const auto& c : cases) {
        std::string lines;
        const auto table = test_LoadDamaged<mdl_PropertyTable>(
            test_Parse(std::string(kHead) + c.extents + "00000000 01 00000000 00000000 01000000"),
            lines);
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->Rows(), 0) << c.extents;
        EXPECT_EQ(table->Cols(), 0) << c.extents;
        EXPECT_TRUE(table->AllowEmptyFirstRow());
        EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), c.isReported ? 1 : 0) << lines;
    }
}

}  // namespace
