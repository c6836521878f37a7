#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "cow/cow_2DArrayArchive.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "idb/idb_Archive.h"
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
        map.Insert(atr("Part-%06d", i), i);
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
        for (std::size_t bit = 0; bit < 15; ++bit) key[bit] = (i >> bit & 1) != 0 ? 'd' : 'b';
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

/// Expects these contents as count 2, columns 2 and `bytes`.
template <class Writer, class Contents>
void ExpectWritten(const Contents& contents, const std::string& bytes) {
    bio_Ofilter out;
    Writer(out, 2).Write(contents);
    EXPECT_EQ(test_Hex(out), test_Hex("02000000 02000000" + bytes));
}

TEST(idb_Collections, WriteTheStatedBytes) {
    ExpectWritten<idb_WriteListPrim<bool>>(cow_List<bool>(true, false), "01 00");
    ExpectWritten<idb_WriteListPrim<int>>(cow_List<int>(-2, 3), "feffffff 03000000");
    ExpectWritten<idb_WriteListPrim<unsigned>>(cow_List<unsigned>(0x80000001u, 3),
                                               "01000080 03000000");
    ExpectWritten<idb_WriteListPrim<float>>(cow_List<float>(0.5f, -0.0f), "0000003f 00000080");
    ExpectWritten<idb_WriteListPrim<double>>(cow_List<double>(1.5, -0.0),
                                             "000000000000f83f 0000000000000080");
    ExpectWritten<idb_WriteListPrim<cow_String>>(cow_List<cow_String>("ab", ""),
                                                 "02000000'ab' 00000000");
    cow_Map<int, float> floats;
    floats.Insert(1, 0.5f);
    floats.Insert(2, 1.5f);
    ExpectWritten<idb_WriteMapInt2Prim<float>>(floats, "01000000 0000003f 02000000 0000c03f");
    cow_Map<cow_String, cow_String> strings;
    strings.Insert("a", "xyz");
    strings.Insert("b", "");
    ExpectWritten<idb_WriteMapString2Prim<cow_String>>(
        strings, "01000000'a' 03000000'xyz' 01000000'b' 00000000");
}

// Count, columns, and the records, in maps each behind its key: the form of every object
// collection.
TEST(idb_ObjCollections, WritesCountColumnsKeysAndRecords) {
    const test_Classes classes;
    const test_Node node(9);
    const std::string null = "0100000000";
    const std::string nine = "0200f07f 01 00000000 09000000" + null;
    bio_Ofilter out;
    {
        idb_WriteListObj list(out, classes, 4);
        node.DBWrite(*list.MakeWriteObj(test_Node::TypeId(), cls_Uid(), &node));
        list.WriteNullObj();
    }
    EXPECT_EQ(test_Hex(out), test_Hex("02000000 04000000" + nine + null));
    out.Clear();
    {
        idb_WriteMapString2Obj writer(out, classes, 1);
        node.DBWrite(*writer.MakeWriteObj("key", test_Node::TypeId(), cls_Uid(), &node));
    }
    EXPECT_EQ(test_Hex(out), test_Hex("01000000 01000000 03000000'key'" + nine));
    out.Clear();
    { idb_WriteBlob(out).Write("\x01\x00\xFF", 3); }
    EXPECT_EQ(test_Hex(out), test_Hex("03000000 01000000 01 00 ff"));

    bio_Ofilter map;
    {
        idb_WriteMapInt2Obj writer(map, classes, 1);
        writer.WriteNullObj(3);
        node.DBWrite(*writer.MakeWriteObj(3, test_Node::TypeId(), cls_Uid(), &node));
        writer.WriteNullObj(4);
    }
    EXPECT_EQ(test_Hex(map), test_Hex("03000000 01000000 03000000" + null + "03000000" + nine +
                                      "04000000" + null));
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

// A collection whose record names a derived class still takes elements of the field's own.
TEST(idb_ObjCollections, TakesElementsOfTheClassOfTheField) {
    test_Classes classes;
    classes.AddClass(
        cls_ClassMetadata("Holder", 81)
            .AddAttribute("_list", cls_KIND_COLLECTION, test_Mixed::TypeId(), cls_LIST_OBJ));
    bio_Ofilter mixed;
    idb_SaveObject(mixed, test_Mixed(), cls_Uid(), classes);
    const auto bytes =
        test_Bytes("51000000 01 00000000 0400f07f 01 00000000 01000000 01000000" + test_Hex(mixed));
    bio_Ifilter in(bytes.data(), bytes.size());
    idb_MementoRead record(in, classes, 81);
    CaptureStderr();
    const auto body = record.MakeReadObj("_list");
    const auto reader = body->MakeReadListObj();
    EXPECT_EQ(GetCapturedStderr(), "");
    ASSERT_TRUE(reader->Next());
    EXPECT_EQ(reader->ClassId(), test_Mixed::TypeId());
    EXPECT_NE(reader->ConstGet(test_Mixed::TypeId()), nullptr);
}

// A record of an unknown class ends at its flag, so that the next one is found.
TEST(idb_ObjCollections, GoesOnBehindAnObjectOfAnUnknownClass) {
    const test_Classes classes;
    const auto bytes =
        test_Bytes("02000000 01000000 99090000 01 0200f07f0100000000 09000000 0100000000");
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
        const auto one = test_Bytes("01000000 01000000 0200f07f 01 00000000");
        bio_Ifilter in(one.data(), one.size());
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
    using Make = std::function<std::shared_ptr<const void>(idb_MementoRead&)>;
    const auto list = [](auto v) { return Make([v](auto& m) { return m.MakeReadListPrim(v); }); };
    const auto byName = [](auto v) {
        return Make([v](auto& m) { return m.MakeReadMapString2Prim(v); });
    };
    const auto byNumber = [](auto v) {
        return Make([v](auto& m) { return m.MakeReadMapInt2Prim(v); });
    };
    const cow_String text;
    const struct {
        std::vector<int> types;
        std::string wanted;
        Make make;
    } cases[] = {
        {{1}, "ReadListPrim for object", [](auto& m) { return m.MakeReadListObj(); }},
        {{51, 81}, "ReadListPrim for bool", list(true)},
        {{52, 82}, "ReadListPrim for double", list(0.0)},
        {{53, 83}, "ReadListPrim for float", list(0.0f)},
        {{54, 84}, "ReadListPrim for int", list(0)},
        {{55, 85}, "ReadListPrim for string", list(text)},
        {{57, 87}, "ReadListPrim for unsigned int", list(0u)},
        {{2, 93, 112}, "ReadMap string to obj", [](auto& m) { return m.MakeReadMapString2Obj(); }},
        {{62}, "ReadListMap string to double", byName(0.0)},
        {{63}, "ReadListMap string to float", byName(0.0f)},
        {{64}, "ReadListMap string to int", byName(0)},
        {{65}, "ReadListMap string to string", byName(text)},
        {{66}, "ReadListMap string to uint", byName(0u)},
        {{3}, "ReadMap int to obj", [](auto& m) { return m.MakeAltReadMapInt2Obj(); }},
        {{72}, "ReadListMap int to double", [](auto& m) { return m.MakeAltReadMapInt2Prim(0.0); }},
        {{72}, "ReadListMap int to double", byNumber(0.0)},
        {{73}, "ReadListMap int to float", byNumber(0.0f)},
        {{74}, "ReadListMap int to int", byNumber(0)},
        {{75}, "ReadListMap int to string", byNumber(text)},
        {{76}, "ReadListMap int to uint", byNumber(0u)},
    };
    const cls_ClassRegistrar classes;
    const auto emptyCollection = test_Bytes("01000000 01 000000 00000000 00000000 00000000");
    for (const auto& expected : cases) {
        for (int type = 0; type < 120; ++type) {
            bio_Ifilter in(emptyCollection.data(), emptyCollection.size());
            idb_MementoRead memento(in, classes, 1, static_cast<cls_CollectionType>(type));
            CaptureStderr();
            const bool isMade = expected.make(memento) != nullptr;
            const std::string lines = GetCapturedStderr();
            const bool isOwn = std::ranges::count(expected.types, type) > 0;
            EXPECT_EQ(isMade, isOwn) << expected.wanted << type;
            EXPECT_EQ(lines, isOwn ? ""
                                   : "error getting " + expected.wanted +
                                         " collection type: " + std::to_string(type) + "\n");
        }
    }
}

}  // namespace
