#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "foundation/shared/nex_Exception.h"
#include "idb/idb_Archive.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_MapPrim.h"
#include "idb/idb_MementoRead.h"
#include "idb/idb_MementoWrite.h"
#include "idb/idb_WriteObjCollections.h"
#include "testing/test_ArchiveClasses.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_Hex.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

template <class T>
std::string Saved(const T& object, const cls_Uid& uid = cls_Uid()) {
    static const test_Classes classes;
    bio_Ofilter out;
    idb_SaveObject(out, object, uid, classes);
    return test_Hex(out);
}

class idb_Memento : public testing::Test {
  protected:
    ~idb_Memento() override { EXPECT_EQ(test_Node::living, 0); }

    /// A filter over the bytes that `hex` spells.
    bio_Ifilter& Filter(const std::string& hex) {
        bytes = test_Bytes(hex);
        filter.emplace(bytes.data(), bytes.size());
        return *filter;
    }
    template <class T>
    std::unique_ptr<T> Load(const std::string& hex) {
        const std::vector<std::byte> stream = test_Bytes(hex);
        return idb_LoadObject<T>(stream.data(), stream.size(), T::TypeId(), fault, classes);
    }

    test_Classes classes;
    std::vector<std::byte> bytes;
    std::optional<bio_Ifilter> filter;
    idb_LoadFault fault;
};

test_Mixed FullMixed() {
    test_Mixed mixed;
    mixed.flag = true;
    mixed.character = -2;
    mixed.byte = 200;
    mixed.small = -4;
    mixed.unsignedSmall = 65535;
    mixed.number = -3;
    mixed.unsignedNumber = 4000000000u;
    mixed.single = 0.5f;
    mixed.real = 1.5;
    mixed.label = "L";
    mixed.mode = 10;
    return mixed;
}

const std::string kFullMixed = test_Hex(
    "0100f07f 01 00000000 01000000 feffffff 000000000000f83f 0000003f fdffffff fcffffff"
    "c8000000 00286bee ffff0000 01000000'L' 02000000'10' 00000000");

TEST_F(idb_Memento, KeepsNumbersInNameOrderThenStrings) {
    EXPECT_EQ(Saved(FullMixed()), kFullMixed);
    const auto read = Load<test_Mixed>(kFullMixed);
    ASSERT_TRUE(read) << fault.text.Characters();
    EXPECT_EQ(*read, FullMixed());
}

// The strings stand in the iteration order of a map that was filled in ascending order of names.
TEST_F(idb_Memento, KeepsStringsInTheOrderOfAMap) {
    cls_ClassMetadata metadata("Text", 77);
    const std::pair<const char*, const char*> fields[] = {
        {"color", "c"},           {"text", "t"},           {"font", "f"}, {"justification", "j"},
        {"backgroundStyle", "s"}, {"backgroundColor", "b"}};
    for (const auto& field : fields) metadata.AddAttribute(field.first, cls_KIND_STRING);
    classes.AddClass(metadata);
    bio_Ofilter out;
    idb_MementoWrite memento(out, classes, 77, this, true);
    for (const auto& [name, text] : fields) memento.Write(name, cow_String(text));
    memento.Flush();
    std::string order;
    for (std::size_t i = 13; i < out.Size(); i += 5) order += static_cast<char>(out.Data()[i]);
    EXPECT_EQ(order, "bsfjtc");
}

// A field takes any type of number or text in the form that the metadata give it.
TEST_F(idb_Memento, ConvertsToTheKindOfTheMetadata) {
    bio_Ofilter out;
    idb_MementoWrite memento(out, classes, test_Mixed::TypeId(), this, true);
    memento.Write("_int", 1e99);
    memento.Write("_uint", -5);
    memento.Write("_uchar", 300);
    memento.Write("_double", cow_String("2.5"));
    memento.Write("_text", 1.25);
    memento.Write("_bool", 7);
    memento.Write("_mode", cow_String("nonsense"));
    memento.Write("_unknown", 1);
    memento.Flush();
    bio_Ifilter in(out.Data(), out.Size());
    idb_MementoRead record(in, classes, test_Mixed::TypeId());
    const test_Mixed read(record);
    EXPECT_EQ(read.number, INT_MAX);
    EXPECT_EQ(read.unsignedNumber, 0u);
    EXPECT_EQ(read.byte, 255);
    EXPECT_EQ(read.real, 2.5);
    EXPECT_EQ(read.text, "1.25");
    EXPECT_TRUE(read.flag);
    EXPECT_EQ(read.mode, 0);
    int untouched = 42;
    record.Read("_unknown", untouched);
    EXPECT_EQ(untouched, 42);
    double text = 0;
    record.Read("_text", text);
    EXPECT_EQ(text, 1.25);
    EXPECT_TRUE(record.FieldIsPresent("_int") && record.DataIsPresent("_int"));
    EXPECT_FALSE(record.FieldIsPresent("_unknown"));
}

// The outer object takes its number first, a null object none, a further reference the same one;
// the base part repeats the object's own.
const std::string kOwner = test_Hex(
    "0400f07f 01 01000000 05000000"
    "0100f07f 01 01000000 00000000 00000000 0000000000000000 00000000 00000000 00000000"
    "00000000 00000000 00000000 00000000 01000000'0' 00000000"
    "0200f07f 01 00000000 06000000 01000000 00"
    "01000000 00"
    "0200f07f 01 02000000 07000000 01000000 00"
    "0200f07f 01 02000000 07000000 01000000 00");

TEST_F(idb_Memento, NumbersIdentitiesInTheOrderOfTheStream) {
    test_Owner owner;
    owner.uid = cls_Uid::AllocateUid();
    owner.id = 5;
    owner.embedded.value = 6;
    test_Node node(7);
    node.uid = cls_Uid::AllocateUid();
    owner.seen = {&node, &node};
    EXPECT_EQ(Saved(owner, owner.uid), kOwner);

    const auto read = Load<test_Owner>(kOwner);
    ASSERT_TRUE(read) << fault.text.Characters();
    EXPECT_EQ(read->id, 5);
    EXPECT_EQ(read->embedded.value, 6);
    EXPECT_EQ(read->owned, nullptr);
    ASSERT_TRUE(read->seen[0]);
    EXPECT_EQ(read->seen[0], read->seen[1]);
    EXPECT_EQ(read->seen[0]->value, 7);
    EXPECT_TRUE(read->handedOver[0]);
    EXPECT_FALSE(read->handedOver[1]);
}

// The last record has the number of an embedded value, which is never substituted.
TEST_F(idb_Memento, NeverHandsOutAValueByItsNumber) {
    std::string stream = kOwner;
    stream.replace(stream.rfind("0200000007000000"), 8, "03000000");
    stream.replace(stream.find("0200f07f0100000000") + 10, 8, "03000000");
    const auto read = Load<test_Owner>(stream);
    ASSERT_TRUE(read) << fault.text.Characters();
    EXPECT_NE(read->seen[0], read->seen[1]);
    EXPECT_NE(read->seen[1], &read->embedded);
    EXPECT_TRUE(read->handedOver[1]);
}

TEST_F(idb_Memento, SharesOneHandleAmongReferences) {
    test_Bag bag = test_FullBag();
    const std::string stream = Saved(bag);
    const auto read = Load<test_Bag>(stream);
    ASSERT_TRUE(read) << fault.text.Characters();
    ASSERT_EQ(read->nodes.Length(), 3);
    EXPECT_TRUE(read->nodes[0].Identical(read->nodes[2]));
    EXPECT_TRUE(read->nodes[0].Identical(read->named.ConstGet("shared")));
    EXPECT_FALSE(read->nodes[0].Exclusive());
    EXPECT_TRUE(read->nodes[1].IsNull());
    EXPECT_EQ(read->named.ConstGet("other")->value, 12);
}

// Slots are taken by the order of making, whatever order the writers end in; those still open at
// the end are taken as they are and write nothing afterwards.
TEST_F(idb_Memento, KeepsTheOrderInWhichWritersWereMade) {
    classes.AddClass(cls_ClassMetadata("Three", 78)
                         .AddAttribute("_a", cls_KIND_COLLECTION, 0, cls_LIST_INT)
                         .AddAttribute("_b", cls_KIND_OBJ_POINTER)
                         .AddAttribute("_c", cls_KIND_EMBEDDED_OBJ));
    bio_Ofilter out;
    idb_MementoWrite memento(out, classes, 78, this, true);
    auto list = memento.MakeWriteObj("_a", 0, cls_Uid());
    auto numbers = list->MakeWriteListPrim(0, 1);
    auto first = memento.MakeWriteObj("_b", test_Node::TypeId(), cls_Uid());
    auto second = memento.MakeWriteObj("_c", test_Node::TypeId(), cls_Uid());
    second->Write("_value", 2);
    second.reset();
    numbers->Write(9);
    first->Write("_value", 1);
    EXPECT_EQ(out.Size(), 0u);
    memento.Flush();
    numbers->Write(10);
    numbers.reset();
    first.reset();
    EXPECT_EQ(memento.MakeWriteObj("_b", test_Node::TypeId(), cls_Uid()), nullptr);
    memento.Flush();
    EXPECT_EQ(test_Hex(out), test_Hex("4e000000 01 00000000"
                                      "00000000 01 00000000 01000000 01000000 09000000"
                                      "0200f07f 01 00000000 01000000"
                                      "0200f07f 01 00000000 02000000"));
}

TEST_F(idb_Memento, EndsNullAndUnknownRecordsAtTheFlag) {
    bio_Ofilter out;
    idb_MementoWrite(out, classes, test_Node::TypeId(), nullptr, true).Flush();
    idb_MementoWrite(out, classes, 1, this, true).Flush();
    idb_MementoWrite(out, classes, 0x999, this, true, cls_Uid::AllocateUid()).Flush();
    idb_MementoWrite(out, classes, 0x230005, this, true).Flush();
    EXPECT_EQ(test_Hex(out), test_Hex("0200f07f 00 01000000 00 99090000 01 05002300 01 00000000"));

    bio_Ifilter in(out.Data(), out.Size());
    CaptureStderr();
    const idb_MementoRead null(in, classes, test_Mixed::TypeId());
    EXPECT_EQ(GetCapturedStderr(),
              "Error constructing object for 7ff00002 does not inherit from 7ff00001\n"
              "Error constructing object for  does not inherit from \n");
    EXPECT_FALSE(null.HasValue());
    EXPECT_EQ(in.Remaining(), out.Size() - 5);
    const idb_MementoRead noClass(in, classes, test_Mixed::TypeId());
    EXPECT_EQ(noClass.ClassId(), test_Mixed::TypeId());
    const idb_MementoRead unknown(in, classes, 2);
    EXPECT_TRUE(unknown.HasValue());
    EXPECT_EQ(unknown.ClassId(), 0x999u);
    const idb_MementoRead jagged(in, classes, 0x230005);
    EXPECT_EQ(in.Remaining(), 0u);
    EXPECT_FALSE(in.Failed());
}

// The body of a special class is its own: collections follow the number, of whatever type.
TEST_F(idb_Memento, LeavesTheBodiesOfSpecialClassesToThem) {
    bio_Ofilter out;
    idb_MementoWrite memento(out, classes, 0x230005, this, true);
    memento.MakeWriteListPrim(0, 1)->Write(3);
    memento.MakeWriteListPrim(0.0, 1)->Write(0.5);
    memento.Flush();
    bio_Ifilter in(out.Data(), out.Size());
    idb_MementoRead record(in, classes, 0x230005);
    EXPECT_EQ(record.MakeReadListPrim(0)->ConstGetList(), cow_List<int>(3));
    EXPECT_EQ(record.MakeReadListPrim(0.0)->ConstGetList(), cow_List<double>(0.5));
}

TEST_F(idb_Memento, TakesDerivedClassesAndReportsOthers) {
    bio_Ifilter& derived = Filter(kOwner);
    EXPECT_EQ(idb_MementoRead(derived, classes, test_Mixed::TypeId()).ClassId(),
              test_Owner::TypeId());
    EXPECT_EQ(idb_MementoRead(Filter(kOwner), classes, 2).ClassId(), test_Owner::TypeId());

    static constexpr typ_ArchRow rows[] = {{}, {typ_PERSISTENT_CLASS, typ_NO_PARENT, "test_Mixed"}};
    typ_ArchCompTable::InsertEntry(0x7FF0, {rows, 2});
    CaptureStderr();
    const idb_MementoRead other(Filter(kFullMixed), classes, test_Node::TypeId());
    EXPECT_EQ(GetCapturedStderr(),
              "Error constructing object for 7ff00001 does not inherit from 7ff00002\n"
              "Error constructing object for test_Mixed does not inherit from \n");
    EXPECT_EQ(other.ClassId(), test_Node::TypeId());
    typ_ArchCompTable::WithdrawEntry(0x7FF0);
}

TEST_F(idb_Memento, RefusesANumberOfAnotherClass) {
    classes.AddClass(cls_ClassMetadata("Pair", 78)
                         .AddAttribute("_a", cls_KIND_OBJ_POINTER)
                         .AddAttribute("_b", cls_KIND_OBJ_POINTER));
    const std::string node = "0200f07f 01 02000000 07000000 01000000 00";
    const std::string mixed = "0100f07f 01 02000000" + kFullMixed.substr(18);

    idb_MementoRead record(Filter("4e000000 01 00000000" + node + mixed + node + mixed), classes,
                           78);
    const std::unique_ptr<test_Node> first(
        static_cast<test_Node*>(record.ReadObjPtr("_a", test_Node::TypeId())));
    CaptureStderr();
    EXPECT_EQ(record.ReadObjPtr("_b", test_Mixed::TypeId()), nullptr);
    const idb_MementoRead second(*filter, classes, test_Node::TypeId());
    static_cast<void>(idb_MementoRead(*filter, classes, 2));  // its null object
    EXPECT_TRUE(second.getMarker());
    EXPECT_EQ(second.getObjectPtr(), first.get());
    const idb_MementoRead other(*filter, classes, test_Mixed::TypeId());
    EXPECT_TRUE(other.getMarker());
    EXPECT_EQ(other.getObjectPtr(), nullptr);
    const std::string line = "Error reading object ptr for 7ff00002 does not inherit from 7ff00001";
    EXPECT_EQ(GetCapturedStderr(), line + line);
    EXPECT_EQ(filter->Remaining(), 0u);
}

TEST(idb_MementoRead_Kept, ReportsAnObjectOfAnotherClassWithoutALineEnd) {
    test_Classes classes;
    classes.AddClass(cls_ClassMetadata("Single", 78).AddAttribute("_a", cls_KIND_OBJ_POINTER));
    const auto stream =
        test_Bytes("4e000000 01 00000000 0200f07f 01 02000000 07000000 01000000 00");
    bio_Ifilter in(stream.data(), stream.size());
    idb_MementoRead record(in, classes, 78);
    CaptureStderr();
    EXPECT_EQ(record.ReadObjPtr("_a", test_Mixed::TypeId()), nullptr);
    EXPECT_EQ(GetCapturedStderr(),
              "Error reading object ptr for 7ff00002 does not inherit from 7ff00001");
    EXPECT_EQ(test_Node::living, 0);
}

// A record may take the place of its parent's class although the object in memory is none of it.
TEST_F(idb_Memento, HandsOutNoPointerToWhatIsAKindOfItsClassInRecordsOnly) {
    classes.AddClass(
        cls_ClassMetadata(
            "Number", 77, [](cls_ReadVisitor&) -> void* { return new int(0); }, test_Node::TypeId())
            .AddAttribute("_value", cls_KIND_INT)
            .SetParentInRecordsOnly()
            .SetCowDtor([](void* object) { delete static_cast<int*>(object); }));
    classes.AddClass(cls_ClassMetadata("Single", 78)
                         .AddAttribute("_a", cls_KIND_EMBEDDED_OBJ, test_Node::TypeId()));
    const std::string number = "4d0000000100000000 07000000";
    idb_MementoRead record(Filter("4e0000000100000000" + number + number + number + number),
                           classes, 78);
    CaptureStderr();
    EXPECT_EQ(record.ReadObjPtr("_a", test_Node::TypeId()), nullptr);
    EXPECT_EQ(record.ReadObjValue("_a", test_Node::TypeId()), nullptr);
    const auto handle =
        cls_ReadCow<test_Node::Handle, test_Node>(record, "_a", test_Node::TypeId());
    EXPECT_TRUE(handle.IsNull());
    const std::string line = "Error reading object: class 4d has its parent in records only\n";
    EXPECT_EQ(GetCapturedStderr(), line + line + line);
    int value = 0;
    record.MakeReadObj("_a")->Read("_value", value);
    EXPECT_EQ(value, 7);
    EXPECT_EQ(filter->Remaining(), 0u);
}

// A class may be a collection itself: its metadata give the type, for every record of it.
TEST_F(idb_Memento, TakesTheCollectionTypeOfTheClass) {
    classes.AddClass(cls_ClassMetadata("Ints", 80, nullptr, 0, cls_LIST_INT));
    classes.AddClass(
        cls_ClassMetadata("Holder", 81).AddAttribute("_ints", cls_KIND_EMBEDDED_OBJ, 80));
    bio_Ofilter out;
    idb_MementoWrite ints(out, classes, 80, this, true);
    const test_Classes others;
    idb_MementoWrite unrelated(out, others, test_Mixed::TypeId(), this, true);
    ints.MakeWriteListPrim(0, 1)->Write(4);
    ints.CheckCollectionType(cls_LIST_INT, "");
    ints.Flush();
    idb_MementoWrite holder(out, classes, 81, this, true);
    holder.MakeWriteObj("_ints", 80, cls_Uid())->MakeWriteListPrim(0, 1)->Write(5);
    holder.Flush();

    bio_Ifilter in(out.Data(), out.Size());
    idb_MementoRead first(in, classes, 80);
    EXPECT_EQ(first.MakeReadListPrim(0)->ConstGetList(), cow_List<int>(4));
    idb_MementoRead second(in, classes, 81);
    EXPECT_EQ(second.MakeReadObj("_ints")->MakeReadListPrim(0)->ConstGetList(), cow_List<int>(5));
    EXPECT_EQ(in.Remaining(), 0u);
}

// What fails in the destructor of a nested writer ends the stream: the outermost memento tells.
TEST_F(idb_Memento, KeepsTheFailureOfADestructorForTheOutermostFlush) {
    bio_Ofilter out;
    out.Write(7);
    idb_MementoWrite memento(out, classes, test_Bag::TypeId(), this, true);
    auto body = memento.MakeWriteObj("_doubles", 0, cls_Uid());
    auto writer = body->MakeWriteListPrim(0.0, 1);
    writer->Write(cow_List<double>(cow_ListFill(), 1000, 0.5));
    {
        const test_FailingAllocator failing(1);
        writer.reset();
    }
    body.reset();
    EXPECT_EQ(memento.MakeWriteObj("_ints", 0, cls_Uid()), nullptr);
    EXPECT_THROW(memento.Flush(), std::bad_alloc);
    out.Write(8);
    { idb_WriteListPrim<int>(out, 1).Write(9); }
    { idb_WriteMapInt2Prim<int>(out, 1).Write(9, 9); }
    { idb_WriteListObj(out, classes, 1).WriteNullObj(); }
    { idb_WriteBlob(out).Write("9", 1); }
    EXPECT_THROW(idb_SaveObject(out, test_Mixed(), cls_Uid(), classes), std::bad_alloc);
    EXPECT_EQ(test_Hex(out), "07000000");
    out.Clear();
    idb_SaveObject(out, FullMixed(), cls_Uid(), classes);
    EXPECT_EQ(test_Hex(out), kFullMixed);
}

// An object refers to itself: it is not finished when the reference is met.
TEST_F(idb_Memento, NeverHandsOutAnUnfinishedObject) {
    CaptureStderr();
    EXPECT_EQ(
        Load<test_Node>("0200f07f 01 05000000 07000000 0200f07f 01 05000000 08000000 01000000 00"),
        nullptr);
    EXPECT_EQ(GetCapturedStderr(),
              "Error reading object: number 5 refers to an unfinished object\n");
    EXPECT_EQ(fault.status, idb_LoadStatusEnm::Damaged);
}

// A second record of number 2 is read and dropped with the node 9 that it was handed: the stream
// must forget that one.
TEST_F(idb_Memento, ForgetsThePartsOfADroppedCopy) {
    const std::string null = "0100000000", drop = "0200f07f010200000007000000";
    std::string stream = kOwner;
    stream.replace(stream.rfind(drop + null), std::string::npos,
                   drop + "0200f07f 01 09000000 09000000" + null);
    const auto read = Load<test_Owner>(stream);
    ASSERT_TRUE(read) << fault.text.Characters();
    EXPECT_EQ(read->seen[0], read->seen[1]);
}

std::string ChainOf(int nodes) {
    test_Node::Handle first;
    for (int i = 0; i < nodes; ++i) {
        test_Node::Handle node(new test_Node(i));
        node.Get()->next = first;
        first = node;
    }
    return Saved(*first);
}

TEST_F(idb_Memento, NestsSoManyObjectsAndNoMore) {
    const std::string deepest = ChainOf(bio_MaxDepth);
    EXPECT_TRUE(Load<test_Node>(deepest)) << fault.text.Characters();

    CaptureStderr();
    EXPECT_THROW(ChainOf(bio_MaxDepth + 1), nex_PrimException);
    EXPECT_EQ(GetCapturedStderr(), "Error writing stream: records nested more than 264 deep\n");

    CaptureStderr();
    EXPECT_EQ(Load<test_Node>(deepest.substr(0, 26) + deepest), nullptr);
    EXPECT_EQ(GetCapturedStderr(), "Error reading stream: records nested more than 264 deep\n");
    EXPECT_EQ(fault.status, idb_LoadStatusEnm::Truncated);
}

TEST_F(idb_Memento, ChecksCollectionTypes) {
    bio_Ofilter out;
    const idb_MementoWrite memento(out, classes, test_Bag::TypeId(), this, false);
    CaptureStderr();
    memento.CheckCollectionType(cls_ALT_LIST_INT, "_ints");
    memento.CheckCollectionType(cls_LIST_INT, "_ints");
    memento.CheckCollectionType(cls_LIST_OBJ, "_unknown");
    EXPECT_EQ(GetCapturedStderr(),
              "Error in collections types have: 84 looking for: 54 _ints\n"
              "Error in collections types have: 0 looking for: 1 _unknown\n");
    EXPECT_FALSE(memento.NeedsDeletion());
}

TEST_F(idb_Memento, LoadsOnlyWhatIsWhole) {
    const auto status = [this](const std::string& hex) {
        CaptureStderr();
        const std::vector<std::byte> stream = test_Bytes(hex);
        const idb_ObjectPtr object =
            idb_LoadAnyObject(stream.data(), stream.size(), test_Mixed::TypeId(), fault, classes);
        GetCapturedStderr();
        EXPECT_EQ(object != nullptr, fault.status == idb_LoadStatusEnm::Loaded);
        return fault.status;
    };
    const std::string& whole = kFullMixed;
    EXPECT_EQ(status(whole), idb_LoadStatusEnm::Loaded);
    EXPECT_EQ(status(whole + "00"), idb_LoadStatusEnm::TrailingBytes);
    EXPECT_EQ(status(whole.substr(0, whole.size() - 2)), idb_LoadStatusEnm::Truncated);
    EXPECT_EQ(status(""), idb_LoadStatusEnm::Truncated);
    EXPECT_EQ(status("0100000000"), idb_LoadStatusEnm::NullObject);
    EXPECT_EQ(status("0200f07f" + whole.substr(8)), idb_LoadStatusEnm::WrongClass);
    EXPECT_EQ(fault.text, "the record is of test_Node, not of test_Mixed");
    const std::vector<std::byte> stream = test_Bytes("9909000001");
    EXPECT_EQ(idb_ClassOfRecord(stream.data(), stream.size()), 0x999u);
    EXPECT_FALSE(idb_LoadAnyObject(stream.data(), stream.size(), 2, fault, classes));
    EXPECT_EQ(fault.status, idb_LoadStatusEnm::UnknownClass);
}

}  // namespace
