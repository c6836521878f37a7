#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "cow/cow_2DArrayArchive.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_MapPrim.h"
#include "idb/idb_MementoRead.h"
#include "idb/idb_MementoWrite.h"
#include "idb/idb_ReadObjCollections.h"
#include "idb/idb_WriteObjCollections.h"
#include "testing/test_ArchiveClasses.h"
#include "testing/test_Hex.h"
#include "testing/test_Random.h"

namespace {

using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

std::vector<int> Words(const bio_Ofilter& out) {
    std::vector<int> words;
    bio_Ifilter in(out.Data(), out.Size());
    while (in.Remaining() >= 4) words.push_back(in.ReadInt());
    return words;
}

bio_Ofilter FiveInts() {
    bio_Ofilter out;
    idb_WriteListPrim<int>(out, 2).Write(cow_List<int>(10, 11, 12, 13, 14));
    return out;
}

TEST(idb_ListPrim, WritesCountColumnsAndElements) {
    bio_Ofilter out;
    {
        idb_WriteListPrim<int> writer(out, 3);
        const int block[] = {1, 2};
        writer.Write(block, 2);
        writer.Write(3);
        writer.Write(cow_List<int>(4, 5));
        EXPECT_EQ(out.Size(), 0u);
    }
    { idb_WriteListPrim<int> nothing(out, 1); }
    EXPECT_THAT(Words(out), ElementsAre(5, 3, 1, 2, 3, 4, 5, 0, 1));

    bio_Ifilter in(out.Data(), out.Size());
    idb_ReadListPrim<int> reader(in);
    EXPECT_EQ(reader.Size(), 5);
    EXPECT_EQ(reader.Columns(), 3);
    for (int i = 1; i <= 5; ++i) {
        ASSERT_TRUE(reader.Next());
        EXPECT_EQ(reader.Read(), i);
    }
    EXPECT_FALSE(reader.Next());
    idb_ReadListPrim<int> empty(in);
    EXPECT_EQ(empty.Size(), 0);
    EXPECT_FALSE(empty.Next());
    EXPECT_FALSE(in.Failed());
}

TEST(idb_ListPrim, ReadsLongListsAsBlocks) {
    cow_List<double> list = cow_List<double>::WithSizeHint(5000);
    test_Random random(1);
    for (int i = 0; i < 5000; ++i) list.Append(random.Between(-1, 1));
    bio_Ofilter out;
    out.Write(true);  // unaligned from here on
    idb_WriteListPrim<double>(out, 1).Write(list);
    bio_Ifilter in(out.Data(), out.Size());
    static_cast<void>(in.ReadBool());
    idb_ReadListPrim<double> reader(in);
    std::vector<double> block(4999);
    ASSERT_TRUE(reader.Next());
    ASSERT_EQ(reader.Read(block.data(), 1000), 1);
    ASSERT_EQ(reader.Read(block.data() + 1000, 3999), 1);
    EXPECT_TRUE(std::equal(block.begin(), block.end(), list.begin()));
    EXPECT_EQ(reader.Read(), list[4999]);
    EXPECT_EQ(reader.ConstGetList(), list);
}

TEST(cls_ReadListPrim_Kept, NeverTakesTheLastElementWithABlock) {
    bio_Ofilter out = FiveInts();
    bio_Ifilter in(out.Data(), out.Size());
    idb_ReadListPrim<int> reader(in);
    ASSERT_TRUE(reader.Next());
    int block[5] = {};
    EXPECT_EQ(reader.Read(block, 5), 0);
    EXPECT_EQ(reader.Read(block, -1), 0);
    EXPECT_EQ(reader.Read(block, std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(reader.Read(block, 4), 1);
    EXPECT_THAT(block, ElementsAre(10, 11, 12, 13, 0));
    EXPECT_EQ(reader.Read(), 14);
    EXPECT_FALSE(reader.Next());
}

TEST(idb_ReadListPrimDeathTest, EndsTheProcessBeforeTheFirstNext) {
    bio_Ofilter out = FiveInts();
    bio_Ifilter in(out.Data(), out.Size());
    idb_ReadListPrim<int> reader(in);
    int block[2];
    EXPECT_DEATH(reader.Read(), "");
    EXPECT_DEATH(reader.Read(block, 2), "");
}

TEST(idb_MapPrim, KeepsTheLastValueOfARepeatedKey) {
    bio_Ofilter out;
    for (const int word : {3, 1, 7, 70, 8, 80, 7, 71}) out.Write(word);
    bio_Ifilter in(out.Data(), out.Size());
    idb_ReadMapInt2Prim<int> reader(in);
    EXPECT_EQ(reader.Size(), 2);
    EXPECT_EQ(reader.Key(), 0);
    std::vector<std::pair<int, int>> entries;
    while (reader.Next()) entries.emplace_back(reader.Key(), reader.Read());
    EXPECT_THAT(entries, ElementsAre(std::pair(7, 71), std::pair(8, 80)));
    EXPECT_FALSE(reader.Next());
}

// Names that share most characters make a chain hundreds deep; what a writer wrote reads back
// without descending it, and a stream in another order is given up.
TEST(idb_MapPrim, ReadsItsOwnLongChainsAndGivesUpForeignOnes) {
    cow_Map<cow_String, int> map;
    for (int i = 0; i < 20000; ++i) {
        std::string name = "Part-000000";
        for (int at = 10, rest = i; rest > 0; rest /= 10) {
            name[static_cast<std::size_t>(at--)] = static_cast<char>('0' + rest % 10);
        }
        map.Insert(cow_String(name), i);
    }
    bio_Ofilter out;
    idb_WriteMapString2Prim<int>(out, 1).Write(map);
    bio_Ifilter in(out.Data(), out.Size());
    idb_ReadMapString2Prim<int> reader(in);
    EXPECT_EQ(reader.Size(), 20000);
    const auto keys = [](const auto& of) { return cow_MapUtils<cow_String, int>::cow_Keys(of); };
    EXPECT_EQ(keys(reader.ConstGetMap()), keys(map));

    bio_Ofilter chain;
    const int count = 20000;
    chain.Write(count);
    chain.Write(1);
    // Keys over two letters with the same low bit lie on one path; every second one goes to its
    // end.
    for (int i = 0; i < count; ++i) {
        std::string key(16, 'b');
        for (std::size_t bit = 0; bit < 15; ++bit) {
            if ((i >> bit & 1) != 0) key[bit] = 'd';
        }
        if (i % 2 != 0) key[15] = 'a';
        chain.Write(cow_String(key));
        chain.Write(i);
    }
    bio_Ifilter hostile(chain.Data(), chain.Size());
    CaptureStderr();
    const int read = idb_ReadMapString2Prim<int>(hostile).Size();
    const std::string lines = GetCapturedStderr();
    EXPECT_TRUE(hostile.Failed() ? read == 0 : read == count);
    EXPECT_EQ(lines,
              hostile.Failed() ? "Error reading stream: string keys out of a map's order\n" : "");
}

template <class Writer, class... Contents>
std::string Written(const Contents&... contents) {
    bio_Ofilter out;
    Writer(out, 2).Write(contents...);
    return test_Hex(out);
}

TEST(idb_Collections, WriteTheStatedBytes) {
    const std::string two = "02000000";
    EXPECT_EQ(Written<idb_WriteListPrim<bool>>(cow_List<bool>(true, false)), two + two + "0100");
    EXPECT_EQ(Written<idb_WriteListPrim<int>>(cow_List<int>(-2, 3)),
              two + two + "feffffff03000000");
    EXPECT_EQ(Written<idb_WriteListPrim<unsigned>>(cow_List<unsigned>(0x80000001u, 3)),
              two + two + "0100008003000000");
    EXPECT_EQ(Written<idb_WriteListPrim<float>>(cow_List<float>(0.5f, -0.0f)),
              two + two + "0000003f00000080");
    EXPECT_EQ(Written<idb_WriteListPrim<double>>(cow_List<double>(1.5, -0.0)),
              two + two + "000000000000f83f0000000000000080");
    EXPECT_EQ(Written<idb_WriteListPrim<cow_String>>(cow_List<cow_String>("ab", "")),
              two + two +
                  "020000006162"
                  "00000000");
    cow_Map<int, float> floats;
    floats.Insert(1, 0.5f);
    floats.Insert(2, 1.5f);
    EXPECT_EQ(Written<idb_WriteMapInt2Prim<float>>(floats), two + two +
                                                                "01000000"
                                                                "0000003f"
                                                                "02000000"
                                                                "0000c03f");
    cow_Map<cow_String, cow_String> strings;
    strings.Insert("a", "xyz");
    strings.Insert("b", "");
    EXPECT_EQ(Written<idb_WriteMapString2Prim<cow_String>>(strings), two + two +
                                                                         "0100000061"
                                                                         "0300000078797a"
                                                                         "0100000062"
                                                                         "00000000");
}

// Count, columns, and the records, in maps each behind its key: the form of every object
// collection.
TEST(idb_ObjCollections, WritesCountColumnsKeysAndRecords) {
    const test_Classes classes;
    const test_Node node(9);
    const std::string null = "0100000000";
    const std::string nine =
        "0200f07f0100000000"
        "09000000" +
        null;
    bio_Ofilter out;
    {
        idb_WriteListObj list(out, classes, 4);
        node.DBWrite(*list.MakeWriteObj(test_Node::TypeId(), cls_Uid(), &node));
        list.WriteNullObj();
    }
    EXPECT_EQ(test_Hex(out),
              "02000000"
              "04000000" +
                  nine + null);
    out.Clear();
    {
        idb_WriteMapString2Obj writer(out, classes, 1);
        node.DBWrite(*writer.MakeWriteObj("key", test_Node::TypeId(), cls_Uid(), &node));
    }
    EXPECT_EQ(test_Hex(out),
              "01000000"
              "01000000"
              "030000006b6579" +
                  nine);
    out.Clear();
    { idb_WriteBlob(out).Write("\x01\x00\xFF", 3); }
    EXPECT_EQ(test_Hex(out),
              "03000000"
              "01000000"
              "0100ff");

    bio_Ofilter map;
    {
        idb_WriteMapInt2Obj writer(map, classes, 1);
        writer.WriteNullObj(3);
        node.DBWrite(*writer.MakeWriteObj(3, test_Node::TypeId(), cls_Uid(), &node));
        writer.WriteNullObj(4);
    }
    EXPECT_EQ(test_Hex(map),
              "03000000"
              "01000000"
              "03000000" +
                  null + "03000000" + nine + "04000000" + null);
    bio_Ifilter in(map.Data(), map.Size());
    idb_ReadMapInt2Obj reader(in, classes, 2);
    ASSERT_EQ(reader.Size(), 2);
    EXPECT_EQ(reader.ConstGet(2), nullptr);
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Key(), 3);
    EXPECT_EQ(reader.ClassId(), test_Node::TypeId());
    EXPECT_EQ(static_cast<const test_Node*>(reader.ConstGet(2))->value, 9);
    const std::unique_ptr<test_Node> taken(
        static_cast<test_Node*>(reader.ReadObjValue(test_Node::TypeId())));
    EXPECT_EQ(taken->value, 9);
    EXPECT_EQ(reader.ReadObjValue(test_Node::TypeId()), nullptr);
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.ClassId(), 0u);
    EXPECT_FALSE(reader.Next());
}

// A record of an unknown class ends at its flag, so that the next one is found.
TEST(idb_ObjCollections, GoesOnBehindAnObjectOfAnUnknownClass) {
    const test_Classes classes;
    const auto bytes = test_Bytes(
        "02000000"
        "01000000"
        "99090000"
        "01"
        "0200f07f0100000000"
        "09000000"
        "0100000000");
    bio_Ifilter in(bytes.data(), bytes.size());
    CaptureStderr();
    idb_ReadListObj reader(in, classes, 2);
    EXPECT_EQ(GetCapturedStderr(), "Error reading object: class 999 has no constructor\n");
    ASSERT_EQ(reader.Size(), 2);
    reader.Next();
    EXPECT_EQ(reader.ConstGet(2), nullptr);
    reader.Next();
    const auto* node = static_cast<const test_Node*>(reader.ConstGet(test_Node::TypeId()));
    EXPECT_TRUE(node && node->value == 9);
    EXPECT_TRUE(in.Faulty() && !in.Failed());
}

TEST(idb_ObjCollections, DestroysWhatNobodyTookOrWarns) {
    test_Classes classes;
    test_Node node(9);
    bio_Ofilter out;
    {
        idb_WriteListObj list(out, classes, 1);
        node.DBWrite(*list.MakeWriteObj(test_Node::TypeId(), cls_Uid(), &node));
    }
    {
        bio_Ifilter in(out.Data(), out.Size());
        const idb_ReadListObj reader(in, classes, 2);
        EXPECT_EQ(test_Node::living, 2);
    }
    EXPECT_EQ(test_Node::living, 1);

    static int immortal;
    classes.AddClass(cls_ClassMetadata("Immortal", test_Node::TypeId(),
                                       [](cls_ReadVisitor&) -> void* { return &immortal; }));
    CaptureStderr();
    {
        bio_Ofilter one;
        one.Write(1);
        one.Write(1);
        one.Write(test_Node::TypeId());
        one.Write(true);
        one.Write(0);
        bio_Ifilter in(one.Data(), one.Size());
        const idb_ReadListObj reader(in, classes, 2);
    }
    EXPECT_EQ(GetCapturedStderr(),
              "Warning: objectCOW dtor not defined in ddbAPI metadata for: Immortal\n");
}

TEST(idb_Collections, ReadBackWithEverythingInTheirOrder) {
    const test_Classes classes;
    const test_Bag bag = test_FullBag();
    bio_Ofilter out;
    idb_MementoWrite memento(out, classes, test_Bag::TypeId(), &bag, true);
    bag.DBWrite(memento);
    memento.Flush();
    bio_Ifilter in(out.Data(), out.Size());
    idb_MementoRead record(in, classes, test_Bag::TypeId());
    const test_Bag read(record);
    EXPECT_EQ(in.Remaining(), 0u);
    EXPECT_EQ(read.bools, bag.bools);
    EXPECT_EQ(read.ints, bag.ints);
    EXPECT_EQ(read.uints, bag.uints);
    EXPECT_EQ(read.floats, bag.floats);
    EXPECT_EQ(read.doubles, bag.doubles);
    EXPECT_EQ(read.strings, bag.strings);
    EXPECT_EQ(read.s2d.ConstGet("pi"), 3.25);
    EXPECT_EQ(read.s2d.ConstGet("e"), 2.75);
    EXPECT_EQ(read.s2s.ConstGet("key"), "value");
    EXPECT_EQ(read.i2f.ConstGet(7), 0.25f);
    EXPECT_EQ(read.i2f.ConstGet(-7), 0.75f);
    EXPECT_EQ(read.i2u.ConstGet(1), 2u);
    EXPECT_EQ(read.table.ConstGet(5), 25);
    EXPECT_EQ(read.numbered.ConstGet(3), 33);
    EXPECT_EQ(read.blob, bag.blob);
    bio_Ofilter again;
    idb_MementoWrite second(again, classes, test_Bag::TypeId(), &read, true);
    read.DBWrite(second);
    second.Flush();
    EXPECT_EQ(again.Size(), out.Size());
}

// Extents that overflow 32 bits, are negative or promise rows without values give the empty array.
TEST(cow_2DArrayArchive, ReadsWholeArraysOnly) {
    test_Classes classes;
    classes.AddClass(cls_ClassMetadata("Table", 79)
                         .AddAttribute("_array", cls_KIND_EMBEDDED_OBJ, cls_2D_ARRAY_CLASS));
    cls_ClassMetadata array("Array", cls_2D_ARRAY_CLASS);
    array.AddAttribute("rows", cls_KIND_INT)
        .AddAttribute("columns", cls_KIND_INT)
        .AddAttribute("values", cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE);
    classes.AddClass(array);
    cow_2DArray<double> table(2, 3);
    for (int i = 0; i < 6; ++i) table.Get(i / 3, i % 3) = i;
    bio_Ofilter out;
    idb_MementoWrite memento(out, classes, 79, &table, true);
    cow_Write2DArray(memento, "_array", table);
    memento.Flush();
    const auto read = [&](int rows, int columns) {
        constexpr std::size_t columnsPlace = 18;  // two heads; then columns, rows in name order
        bio_Buffer::Put(out.Sink().Extend(0) - out.Size() + columnsPlace,
                        static_cast<std::uint32_t>(columns));
        bio_Buffer::Put(out.Sink().Extend(0) - out.Size() + columnsPlace + 4,
                        static_cast<std::uint32_t>(rows));
        bio_Ifilter in(out.Data(), out.Size());
        idb_MementoRead record(in, classes, 79);
        return cow_Read2DArray(record, "_array");
    };
    const cow_2DArray<double> whole = read(2, 3);
    ASSERT_EQ(whole.Rows() * 10 + whole.Cols(), 23);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(whole.ConstGet(i / 3, i % 3), i);
    CaptureStderr();
    for (const auto& [rows, columns] : {std::pair(-2, -3), {3, 3}, {65536, 65536}, {INT_MAX, 0}}) {
        EXPECT_EQ(read(rows, columns).Rows(), 0);
    }
    EXPECT_EQ(GetCapturedStderr(),
              "Error reading array: -2 rows and -3 columns for 6 values\n"
              "Error reading array: 3 rows and 3 columns for 6 values\n"
              "Error reading array: 65536 rows and 65536 columns for 6 values\n"
              "Error reading array: 2147483647 rows and 0 columns for 6 values\n");
}

// Every reader against every collection type: it takes its own and names the type of any other.
TEST(cls_CollectionType_Kept, GivesListsTwoNumbersAndMapsOne) {
    using Make = std::function<bool(idb_MementoRead&)>;
    const cow_String text;
    struct Case {
        std::vector<int> types;
        std::string message;
        Make make;
    };
    const std::vector<Case> cases = {
        {{1},
         "error getting ReadListPrim for object collection type: ",
         [](auto& m) { return m.MakeReadListObj() != nullptr; }},
        {{51, 81},
         "error getting ReadListPrim for bool collection type: ",
         [](auto& m) { return m.MakeReadListPrim(true) != nullptr; }},
        {{52, 82},
         "error getting ReadListPrim for double collection type: ",
         [](auto& m) { return m.MakeReadListPrim(0.0) != nullptr; }},
        {{53, 83},
         "error getting ReadListPrim for float collection type: ",
         [](auto& m) { return m.MakeReadListPrim(0.0f) != nullptr; }},
        {{54, 84},
         "error getting ReadListPrim for int collection type: ",
         [](auto& m) { return m.MakeReadListPrim(0) != nullptr; }},
        {{55, 85},
         "error getting ReadListPrim for string collection type: ",
         [&](auto& m) { return m.MakeReadListPrim(text) != nullptr; }},
        {{57, 87},
         "error getting ReadListPrim for unsigned int collection type: ",
         [](auto& m) { return m.MakeReadListPrim(0u) != nullptr; }},
        {{2, 93, 112},
         "error getting ReadMap string to obj collection type: ",
         [](auto& m) { return m.MakeReadMapString2Obj() != nullptr; }},
        {{62},
         "error getting ReadListMap string to double collection type: ",
         [](auto& m) { return m.MakeReadMapString2Prim(0.0) != nullptr; }},
        {{63},
         "error getting ReadListMap string to float collection type: ",
         [](auto& m) { return m.MakeReadMapString2Prim(0.0f) != nullptr; }},
        {{64},
         "error getting ReadListMap string to int collection type: ",
         [](auto& m) { return m.MakeReadMapString2Prim(0) != nullptr; }},
        {{65},
         "error getting ReadListMap string to string collection type: ",
         [&](auto& m) { return m.MakeReadMapString2Prim(text) != nullptr; }},
        {{66},
         "error getting ReadListMap string to uint collection type: ",
         [](auto& m) { return m.MakeReadMapString2Prim(0u) != nullptr; }},
        {{3},
         "error getting ReadMap int to obj collection type: ",
         [](auto& m) { return m.MakeAltReadMapInt2Obj() != nullptr; }},
        {{72},
         "error getting ReadListMap int to double collection type: ",
         [](auto& m) { return m.MakeAltReadMapInt2Prim(0.0) != nullptr; }},
        {{73},
         "error getting ReadListMap int to float collection type: ",
         [](auto& m) { return m.MakeReadMapInt2Prim(0.0f) != nullptr; }},
        {{74},
         "error getting ReadListMap int to int collection type: ",
         [](auto& m) { return m.MakeReadMapInt2Prim(0) != nullptr; }},
        {{75},
         "error getting ReadListMap int to string collection type: ",
         [&](auto& m) { return m.MakeReadMapInt2Prim(text) != nullptr; }},
        {{76},
         "error getting ReadListMap int to uint collection type: ",
         [](auto& m) { return m.MakeReadMapInt2Prim(0u) != nullptr; }},
    };
    const cls_ClassRegistrar classes;
    bio_Ofilter out;
    for (const int word : {1, 0, 0, 0, 0}) out.Write(word);
    const auto emptyCollection = [&] {
        auto bytes = std::vector<std::byte>(out.Data(), out.Data() + out.Size());
        bytes[4] = std::byte{1};
        return bytes;
    }();
    for (const Case& expected : cases) {
        for (int type = 0; type < 120; ++type) {
            bio_Ifilter in(emptyCollection.data(), emptyCollection.size());
            idb_MementoRead memento(in, classes, 1, static_cast<cls_CollectionType>(type));
            CaptureStderr();
            const bool isMade = expected.make(memento);
            const std::string lines = GetCapturedStderr();
            const bool isOwn = std::ranges::count(expected.types, type) > 0;
            EXPECT_EQ(isMade, isOwn) << expected.message << type;
            EXPECT_EQ(lines, isOwn ? "" : expected.message + std::to_string(type) + "\n");
        }
    }
}

}  // namespace
