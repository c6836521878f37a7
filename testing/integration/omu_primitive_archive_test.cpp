// The primitives of the scripting model through the records of the archive, with the library as it
// is loaded.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "ann/annC_Enumerations.h"
#include "foundation/shared/bio_Ofilter.h"
#include "gsl/gsl_PrimMethods.h"
#include "idb/idb_Archive.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimException.h"
#include "omu/omu_PrimExpr.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimPath.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimType.h"
#include "omu/omu_PrimWrapper.h"
#include "omu/omu_PyObjectWrapper.h"
#include "omu/omu_RangeErrorException.h"

namespace {

std::string Save(const omu_Primitive& primitive) {
    bio_Ofilter out;
    idb_SaveObject(out, primitive);
    return std::string(reinterpret_cast<const char*>(out.Data()), out.Size());
}

std::string Hex(const std::string& bytes) {
    std::string text;
    for (const char byte : bytes) text += atr("%02x", static_cast<unsigned char>(byte)).View();
    return text;
}

/// The primitive that any reader of the record gets; null when it is refused.
std::unique_ptr<omu_Primitive> Load(const std::string& bytes) {
    idb_LoadFault fault;
    idb_ObjectPtr object =
        idb_LoadAnyObject(bytes.data(), bytes.size(), omu_Primitive::kTypeId, fault);
    EXPECT_EQ(object == nullptr, fault.status != idb_LoadStatusEnm::Loaded);
    return std::unique_ptr<omu_Primitive>(static_cast<omu_Primitive*>(object.release()));
}

template <class T>
void ExpectRoundTrip(const T& primitive) {
    const std::unique_ptr<omu_Primitive> loaded = Load(Save(primitive));
    ASSERT_NE(loaded, nullptr) << primitive.AsString(0).Characters();
    EXPECT_EQ(loaded->Type(), primitive.Type());
    EXPECT_TRUE(*loaded == primitive) << primitive.AsString(0).Characters();
    EXPECT_EQ(loaded->AsString(0), primitive.AsString(0));
    EXPECT_EQ(Save(*loaded), Save(primitive));
}

// Class id, has-value flag, reference number; then the numbers and the texts in the order of the
// fields' names.
TEST(omu_PrimitiveArchive, RecordsArePinned) {
    const std::string number = Save(omu_PrimNumber(1));
    EXPECT_EQ(number.size(), 26u);
    EXPECT_EQ(Hex(number),
              "16001300"
              "01"
              "00000000"
              "00000000"
              "000000000000f03f"
              "01000000"
              "32");
    EXPECT_EQ(Hex(Save(omu_PrimNumber(4000000000u))),
              "16001300"
              "01"
              "00000000"
              "00286bee"
              "0000000000000000"
              "01000000"
              "35");
    EXPECT_EQ(Hex(Save(omu_PrimBoolean(true))),
              "17001300"
              "01"
              "00000000"
              "01000000");
    EXPECT_EQ(Hex(Save(omu_PrimComplex({1, 2}))),
              "18001300"
              "01"
              "00000000"
              "0000000000000040"
              "000000000000f03f");
    EXPECT_EQ(Hex(Save(omu_PrimString(cow_String("A")))),
              "19001300"
              "01"
              "00000000"
              "01000000"
              "41");
    EXPECT_EQ(Hex(Save(omu_PrimNone())),
              "1b001300"
              "01"
              "00000000");
    EXPECT_EQ(Hex(Save(omu_OnOffConst("ON"))),
              "1c001300"
              "01"
              "00000000"
              "02000000"
              "4f4e");
}

TEST(omu_PrimitiveArchive, EveryKindComesBack) {
    for (const omu_PrimNumber& number :
         {omu_PrimNumber(static_cast<signed char>(-128)), omu_PrimNumber(short{7}),
          omu_PrimNumber(-1), omu_PrimNumber(4294967295u), omu_PrimNumber(0.1f),
          omu_PrimNumber(-std::numeric_limits<double>::infinity()), omu_PrimNumber(1e300)}) {
        ExpectRoundTrip(number);
    }
    ExpectRoundTrip(omu_PrimBoolean(true));
    ExpectRoundTrip(omu_PrimComplex({1e-300, -2}));
    ExpectRoundTrip(omu_PrimString(cow_String(std::string_view("a\0\xC3\xA9", 4))));
    ExpectRoundTrip(omu_PrimTranslatedString("Part"));
    ExpectRoundTrip(omu_PrimNone());
    ExpectRoundTrip(omu_PrimPath(cow_List<cow_String>("a", "", "c"), 'm', "mdb"));
    ExpectRoundTrip(omu_PrimPath());
    ExpectRoundTrip(omu_PrimExpr("1 + 1"));
    ExpectRoundTrip(omu_PrimType(omu_DISPLAY_ODB));
    ExpectRoundTrip(annC_PrimLineStyle(annC_LINE_DASHED));
    ExpectRoundTrip(omu_PrimEnumBase());
    ExpectRoundTrip(omu_PrimException(
        omu_RangeErrorException("n", 1, {"0", omu_LIMIT_INCLUDED}, {"10", omu_LIMIT_EXCLUDED})));
    ExpectRoundTrip(omu_PrimException(omu_NameErrorException("x"), "unknown x"));
    EXPECT_EQ(gsl_PrimDotMethod().TypeString(), "");
}

TEST(omu_PrimitiveArchive, DictionariesKeepTheirOrderAndAnyValues) {
    omu_PrimIntDictionary numbered;
    for (const int key : {5, -3, 4}) numbered.Insert(key, omu_PrimNumber(key));
    omu_PrimStringDictionary named;
    const annC_PrimLineStyle dotted(annC_LINE_DOTTED);
    for (int i = 20; i > 0; --i) {
        const omu_Primitive* value = &dotted;
        if (i % 3 == 0) value = &numbered;
        named.Insert(atr("key%d", i), *value);
    }
    named.Insert("none", omu_PrimNone());
    ExpectRoundTrip(numbered);
    ExpectRoundTrip(named);
    ExpectRoundTrip(omu_PrimStringDictionary());

    omu_PrimIntDictionary deepest;
    deepest.Insert(0, omu_PrimNumber(1));
    for (int depth = 2; depth <= omu_PrimNesting::kMaxDepth; ++depth) {
        omu_PrimIntDictionary next;
        next.Insert(0, deepest);
        deepest = next;
    }
    ExpectRoundTrip(deepest);
}

TEST(omu_PrimitiveArchive, SequencesKeepTheirElementsAndWhatIsNotShared) {
    omu_PrimList inner;
    inner.Append(omu_PrimNumber(1u));
    const omu_PrimList before = inner;
    inner.Append(annC_PrimLineStyle(annC_LINE_DOTTED));
    omu_PrimList list;
    list.Append(before);
    list.Append(inner);
    list.Append(omu_PrimTuple());
    ExpectRoundTrip(list);
    ExpectRoundTrip(omu_PrimTuple(list));
    ExpectRoundTrip(omu_PrimList());

    omu_PrimList deepest;
    for (int depth = 2; depth <= omu_PrimNesting::kMaxDepth; ++depth) {
        omu_PrimList next;
        next.Append(deepest);
        deepest = next;
    }
    ExpectRoundTrip(deepest);

    // argcount, cursor, errorArg, isOptional, numGets, reqcount, size; both types; the elements.
    std::string tuple = Save(omu_PrimTuple(inner));
    EXPECT_EQ(Hex(tuple.substr(0, 69)),
              "26001300"
              "01"
              "00000000"
              "00000000000000000000000000000000000000000000000002000000"
              "0c000000556e64657465726d696e6564"
              "0c000000556e64657465726d696e6564");
    std::fill(tuple.begin() + 9, tuple.begin() + 37, '\xff');
    const auto hostile = Load(tuple);
    ASSERT_NE(hostile, nullptr);
    EXPECT_TRUE(*hostile == omu_PrimTuple(inner));
    EXPECT_EQ(Hex(Save(*hostile).substr(9, 28)),
              "00000000000000000000000001000000000000000000000002000000")
        << "no counter is negative, and the size is that of the elements";
}

TEST(omu_PrimitiveArchive, ArraysKeepFormTypeAndCode) {
    const int extents[] = {2, 1, 2};
    const double doubles[] = {0.1, -0.0, 1e300, -std::numeric_limits<double>::infinity()};
    const float floats[] = {0.1f, 1, 2, 3};
    const int integers[] = {1, -1, 2147483647, 0};
    ExpectRoundTrip(omu_PrimArray(3, extents, doubles));
    ExpectRoundTrip(omu_PrimArray(3, extents, floats));
    ExpectRoundTrip(omu_PrimArray());
    ExpectRoundTrip(omu_PrimArray(2));
    omu_PrimArray coded(1, extents, integers);
    coded.SetPyType('l');
    ExpectRoundTrip(coded);
    omu_PrimList list;
    for (int i = 0; i < 3; ++i) list.Append(coded);
    ExpectRoundTrip(list);

    const std::string record = Save(omu_PrimArray(3, extents, integers));
    const auto changed = [&record](std::size_t at, char byte) {
        std::string bytes = record;
        bytes[at] = byte;
        testing::internal::CaptureStderr();
        const auto loaded = Load(bytes);
        EXPECT_EQ(loaded == nullptr ? "" : loaded->AsString(0), "array([], 'i')");
        return testing::internal::GetCapturedStderr();
    };
    const std::size_t firstExtent = record.find(std::string("\2\0\0\0\1\0\0\0\2", 9));
    ASSERT_NE(firstExtent, std::string::npos);
    EXPECT_EQ(changed(firstExtent, 3),
              "omu_PrimArray record refused: 4 elements do not fill the extents\n");
    EXPECT_EQ(changed(firstExtent + 3, '\xff'),
              "omu_PrimArray record refused: PrimArray negative dimensions are not allowed\n");
    EXPECT_EQ(changed(firstExtent + 3, 0x7f),
              "omu_PrimArray record refused: "
              "PrimArray can't allocate memory for array (data)\n");
}

TEST(omu_PrimitiveArchive, ForeignPointersComeBackNull) {
    int object = 0;
    omu_PrimStringDictionary members;
    members.Insert("size", omu_PrimNumber(3));
    const std::string wrapper = Save(omu_PrimWrapper(&object, 7, members));
    const auto loaded = Load(wrapper);
    ASSERT_NE(loaded, nullptr);
    const auto& read = dynamic_cast<const omu_PrimWrapper&>(*loaded);
    EXPECT_EQ(read.Object(), nullptr);
    EXPECT_EQ(read.ObjectType(), 7u);
    EXPECT_TRUE(read.Members() == members);
    EXPECT_EQ(Save(*loaded), wrapper);
    const auto pyObject = Load(Save(omu_PyObjectWrapper(&object)));
    ASSERT_NE(pyObject, nullptr);
    EXPECT_EQ(dynamic_cast<const omu_PyObjectWrapper&>(*pyObject).Object(), nullptr);
}

TEST(omu_PrimitiveArchive, AnExceptionWithoutMetadataComesBackAsItsMessage) {
    const auto loaded = Load(Save(omu_PrimException(nex_PrimException("invalid"))));
    ASSERT_NE(loaded, nullptr);
    const auto& read = dynamic_cast<const omu_PrimException&>(*loaded);
    EXPECT_EQ(read.Exception(), nullptr);
    EXPECT_EQ(read.Message(), "invalid");
    EXPECT_THROW(read.Propagate(), omu_PyCorvixException);
    EXPECT_NE(Load(Save(omu_PrimException(nex_CmdException<cow_String, 6>("pink")))), nullptr);
}

TEST(omu_PrimitiveArchive, NumbersThatContradictThemselvesAreRepaired) {
    constexpr std::size_t kUvalue = 9;
    constexpr std::size_t kValue = 13;
    constexpr std::size_t kType = 25;
    const auto changed = [](const omu_PrimNumber& number, double value, unsigned uvalue,
                            char type) {
        std::string bytes = Save(number);
        const auto bits = std::bit_cast<std::uint64_t>(value);
        for (std::size_t i = 0; i < 8; ++i) bytes[kValue + i] = static_cast<char>(bits >> 8 * i);
        for (std::size_t i = 0; i < 4; ++i) bytes[kUvalue + i] = static_cast<char>(uvalue >> 8 * i);
        bytes[kType] = type;
        return Load(bytes);
    };
    const omu_PrimNumber any(1);
    EXPECT_EQ(changed(any, 1e300, 5, '2')->AsString(0), "2147483647");
    EXPECT_EQ(changed(any, -2.7, 0, '2')->AsString(0), "-2");
    EXPECT_EQ(changed(any, 1000, 0, '0')->AsString(0), "127");
    EXPECT_EQ(changed(any, std::numeric_limits<double>::quiet_NaN(), 0, '1')->AsString(0), "0");
    const auto unsignedNumber = changed(any, 3, 9, '5');
    EXPECT_TRUE(*unsignedNumber == omu_PrimNumber(9u));
    const auto real = changed(any, 2, 9, '4');
    EXPECT_TRUE(*real == omu_PrimNumber(2.0));
    EXPECT_EQ(real->Type(), 'f');

    testing::internal::CaptureStderr();
    const auto unknown = changed(any, 2.5, 9, '6');
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "omu_PrimNumber unknown dataType 6\n");
    EXPECT_EQ(unknown->AsString(0), "2.5");
    EXPECT_EQ(dynamic_cast<const omu_PrimNumber&>(*unknown).DataType(), omu_PrimNumber::DOUBLE);
}

TEST(omu_PrimEnum_Kept, ARecordWithAnUnknownNameIsRefused) {
    std::string bytes = Save(annC_PrimJustification("LEFT"));
    bytes[bytes.size() - 1] = 'X';
    idb_LoadFault fault;
    cow_String message;
    const auto read = [&message](cls_ReadVisitor& visitor) {
        try {
            static_cast<void>(annC_PrimJustification(visitor));
        } catch (const omu_ValueErrorException& refused) {
            message = refused.JournalMessage(KTSBasStringMode::Untranslated);
            throw;
        }
    };
    EXPECT_FALSE(
        idb_LoadRecord(bytes.data(), bytes.size(), omu_PrimEnumBase::kTypeId, read, fault));
    EXPECT_EQ(message,
              "omu_PrimEnum(const cls_ReadVisitor&) - str not allowed: LEFX  Permissible: LEFT, "
              "RIGHT or CENTER");
    EXPECT_EQ(Load(bytes), nullptr) << "no symbolic constant has this name";
}

}  // namespace
