#include "omu/omu_PrimArray.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "foundation/alloc/mem_Alloc.h"
#include "foundation/coreutils/typ_DebugFlags.h"
#include "omu/omu_PrimBoolean.h"
#include "omu/omu_Values_test.h"
#include "testing/test_Environment.h"
#include "testing/test_Random.h"

namespace {

using namespace omu_test;

constexpr auto kInt = omu_PrimNumber::INT;
constexpr auto kFloat = omu_PrimNumber::FLOAT;
constexpr auto kDouble = omu_PrimNumber::DOUBLE;
constexpr int kLargest = 2147483647;
constexpr char kCannotAllocate[] = "PrimArray can't allocate memory for array (data)";

using Dims = std::vector<int>;

/// An array of `dimensions` over elements of type `T`.
template <class T>
omu_PrimArray Array(const Dims& dimensions, const std::vector<T>& elements) {
    return {static_cast<int>(dimensions.size()), dimensions.data(), elements.data()};
}

/// The elements 0, 1, 2 and so on of type INT.
omu_PrimArray Counting(const Dims& dimensions) {
    std::vector<int> elements(64);
    std::iota(elements.begin(), elements.end(), 0);
    return Array(dimensions, elements);
}

/// The text of the array made of `sequence`, or of the failure.
cow_String TextFrom(const omu_PrimSequence& sequence) {
    cow_String text;
    const cow_String failure = MessageOf([&] { text = omu_PrimArray(sequence).AsString(0); });
    return failure.IsEmpty() ? text : failure;
}

TEST(omu_PrimArray, HasFormTextAndCodeOfItsElements) {
    struct Case {
        omu_PrimArray array;
        const char* text;
        int itemSize;
        std::vector<int> strides;
    };
    const std::vector<Case> cases = {
        {Counting({3}), "array([0, 1, 2], 'i')", 4, {4}},
        {Counting({2, 3}), "array([[0, 1, 2], [3, 4, 5]], 'i')", 4, {12, 4}},
        {Counting({2, 1, 2}), "array([[[0, 1]], [[2, 3]]], 'i')", 4, {8, 8, 4}},
        {Array<float>({2}, {0.5f, 2}), "array([0.5, 2.0], 'f')", 4, {4}},
        {Array<double>({1, 2}, {1e-7, -0.0}), "array([[1e-07, -0.0]], 'd')", 8, {16, 8}},
        {Counting({0}), "array([], 'i')", 4, {4}},
        {Counting({0, 3}), "array([], 'i')", 4, {12, 4}},
        {Counting({2, 0}), "array([[], []], 'i')", 4, {0, 4}},
        {omu_PrimArray(), "array([], 'i')", 4, {}},
        {omu_PrimArray(2), "array([], 'i')", 4, {0, 4}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const omu_PrimArray& array = c.array;
        EXPECT_EQ(array.AsString(0), c.text);
        EXPECT_EQ(array.TypeString(), "omu_PrimArray");
        EXPECT_EQ(array.Type(), 'o');
        EXPECT_EQ(array.ConstGetItemSize(), c.itemSize);
        EXPECT_EQ(array.ConstGetArraySize(), static_cast<int>(c.strides.size()));
        ASSERT_EQ(array.ConstGetStrides().Length(), array.ConstGetArraySize());
        int elements = array.ConstGetArraySize() > 0 ? 1 : 0;
        for (int d = 0; d < array.ConstGetArraySize(); ++d) {
            EXPECT_EQ(array.ConstGetStrides()[d], c.strides[static_cast<std::size_t>(d)]);
            elements *= array.ConstGetDimension(d);
        }
        EXPECT_EQ(array.ConstGetNumElements(), elements);
        EXPECT_EQ(array.ConstGetData() == nullptr, elements == 0);
        EXPECT_EQ(array.ConstGetDimension(-1) + array.ConstGetDimension(99), 0);
        const std::unique_ptr<omu_PrimArray> copy(array.Copy());
        EXPECT_TRUE(*copy == array);
        EXPECT_EQ(copy->ConstGetData(), array.ConstGetData()) << "a copy shares the block";
    }
    EXPECT_EQ(omu_PrimArray::ItemSize(omu_PrimNumber::SHORT), 0);
    EXPECT_STREQ(omu_PrimArray::typeCode2string(kFloat), "omu_PrimNumber::FLOAT");
    EXPECT_STREQ(omu_PrimArray::typeCode2string(omu_PrimNumber::UINT), "");
    omu_PrimArray coded = Counting({1});
    coded.SetPyType('l');
    EXPECT_EQ(coded.AsString(0), "array([0], 'l')");
    EXPECT_TRUE(coded == Counting({1}));
    coded.SetPyType(omu_PrimNumber::SCHAR, 'b');
    EXPECT_EQ(coded.ConstGetPyType(), 'b');
    coded.SetPyType(kDouble, 'b');
    EXPECT_EQ(coded.ConstGetPyType(), 'd');
}

TEST(omu_PrimArray, ChecksIndices) {
    struct Case {
        Dims dimensions;
        int i, j, k, l;
        const char* message;
    };
    const Case cases[] = {
        {{2, 3}, 1, 2, -1, -1, ""},
        {{2, 3}, 1, -1, -1, -1, "less indices given than size of array (1<2)"},
        {{2, 3}, -1, 0, -1, -1, "less indices given than size of array (0<2)"},
        {{2, 3}, 2, 0, -1, -1, "index out of range, dimension 0 (2 >= 2)"},
        {{2, 3}, 1, 3, -1, -1, "index out of range, dimension 1 (3 >= 3)"},
        {{2, 3}, -2, 0, -1, -1, "index out of range, dimension 0 (-2 >= 2)"},
        {{2, 3}, 0, 0, 0, -1, "more indices given than size of array (3>2)"},
        {{2, 3}, 0, 0, -1, 5, "more indices given than size of array (4>2)"},
        {{1, 1, 1, 1, 2}, 0, 0, 0, 0, "less indices given than size of array (4<5)"},
        {{0}, 0, -1, -1, -1, "index out of range, dimension 0 (0 >= 0)"},
        {{}, 0, -1, -1, -1, "more indices given than size of array (1>0)"},
        {{}, -1, -1, -1, -1, "PrimArray ConstGetNumericItem failed"},
    };
    for (const Case& c : cases) {
        omu_PrimArray array = Counting(c.dimensions);
        const auto failures = {MessageOf([&] { return array.ConstGetInt(c.i, c.j, c.k, c.l); }),
                               MessageOf([&] { return array.ConstGetItem(c.i, c.j, c.k, c.l); }),
                               MessageOf([&] { array.SetItem(I(7), c.i, c.j, c.k, c.l); })};
        for (const cow_String& failure : failures) EXPECT_EQ(failure, c.message);
    }
    EXPECT_EQ(Counting({2, 3}).ConstGetInt(1, 2), 5);
    EXPECT_EQ(Counting({2, 2, 2, 2}).ConstGetInt(1, 0, 1, 1), 11);
}

TEST(omu_PrimArray, ConvertsWhatIsReadAndWritten) {
    omu_PrimArray integers = Counting({4});
    integers.SetItem(D(2.5), 0);
    integers.SetItem(D(-1e300), 1);
    integers.SetItem(U(4000000000u), 2);
    integers.SetItem(D(std::numeric_limits<double>::quiet_NaN()), 3);
    EXPECT_EQ(integers.AsString(0), "array([2, -2147483648, 2147483647, 0], 'i')");
    EXPECT_EQ(integers.ConstGetItem(0).Type(), 'i');
    omu_PrimArray singles = Array<float>({2}, {0, 0});
    singles.SetItem(D(1e300), 0);
    singles.SetItem(U(4000000000u), 1);
    EXPECT_EQ(singles.AsString(0), "array([inf.0, 4000000000.0], 'f')");
    EXPECT_EQ(singles.ConstGetInt(0), kLargest);
    const double elements[] = {-3.7, 0};
    std::vector<char> odd(17);
    std::memcpy(&odd[1], elements, sizeof elements);
    const int extent = 2;
    const omu_PrimArray doubles(1, &extent, kDouble, &odd[1]);
    EXPECT_EQ(doubles.ConstGetInt(0), -3);
    EXPECT_EQ(doubles.ConstGetDouble(0), -3.7);
    EXPECT_EQ(doubles.ConstGetItem(0).DataType(), kDouble);
}

TEST(omu_PrimArray, IsWrittenWithoutItsCopies) {
    const omu_PrimArray a = Counting({2, 2});
    omu_PrimArray b = a;
    omu_PrimArray c;
    c = b;
    EXPECT_EQ(c.ConstGetData(), a.ConstGetData());
    b.SetItem(I(9), 0, 0);
    EXPECT_EQ(a.ConstGetInt(0, 0) + c.ConstGetInt(0, 0), 0);
    EXPECT_EQ(b.ConstGetInt(0, 0), 9);
    const char* const own = b.ConstGetData();
    b.SetItem(I(8), 1, 1);
    EXPECT_EQ(b.ConstGetData(), own) << "what is private is written in place";
    const omu_Primitive* const first = a.Index(0);
    const omu_Primitive* const second = a.Index(1);
    EXPECT_EQ(a.Index(0), first);
    EXPECT_EQ(first->AsString(0), "array([0, 1], 'i')");
    EXPECT_EQ(second->AsString(0), "array([2, 3], 'i')");
    EXPECT_EQ(b.Index(0)->AsString(0), "array([9, 1], 'i')");
    b.SetItem(I(1), 0, 0);
    EXPECT_EQ(b.Index(0)->AsString(0), "array([1, 1], 'i')");
    b = a;
    EXPECT_EQ(b.Index(0)->AsString(0), "array([0, 1], 'i')");
    b = static_cast<const omu_PrimArray&>(*b.Index(1));
    EXPECT_EQ(b.AsString(0), "array([2, 3], 'i')") << "one of its own objects";
    b.SetItem(static_cast<const omu_PrimNumber&>(*b.Index(1)), 0);
    EXPECT_EQ(b.AsString(0), "array([3, 3], 'i')");
}

std::size_t largestRequest = 0;

TEST(omu_PrimArray, RefusesFormsBeforeAnythingIsAllocated) {
    struct Case {
        Dims dimensions;
        omu_PrimNumber::DataTypeEnm type;
        const char* message;
    };
    constexpr char negative[] = "PrimArray negative dimensions are not allowed";
    const Case cases[] = {
        {{65536, 65536}, kInt, kCannotAllocate},
        {{46341, 46341}, kInt, kCannotAllocate},
        {{2, 300000000}, kDouble, kCannotAllocate},
        {{0, kLargest, kLargest}, kInt, kCannotAllocate},
        {{kLargest, kLargest, kLargest}, kDouble, kCannotAllocate},
        {{kLargest, kLargest, -1}, kInt, negative},
        {{-1, -1}, kInt, negative},
        {Dims(257, 1), kInt, kCannotAllocate},
        {{-1}, omu_PrimNumber::UINT, "PrimArray only INT, FLOAT, DOUBLE allowed"},
        {{1}, omu_PrimNumber::DataTypeEnm(99), "PrimArray only INT, FLOAT, DOUBLE allowed"},
    };
    const double element = 0;
    for (const Case& c : cases) {
        largestRequest = 0;
        const mem_FailureHook before = mem_SetFailureHook([](std::size_t bytes) {
            largestRequest = std::max(largestRequest, bytes);
            return false;
        });
        const cow_String failure = MessageOf([&] {
            omu_PrimArray(static_cast<int>(c.dimensions.size()), c.dimensions.data(), c.type,
                          &element);
        });
        mem_SetFailureHook(before);
        EXPECT_EQ(failure, c.message);
        EXPECT_LT(largestRequest, 200u) << "only the message";
    }
    EXPECT_EQ(MessageOf([&] { omu_PrimArray(-1, nullptr, &element); }), negative);
    EXPECT_EQ(MessageOf([] { omu_PrimArray(-1); }), negative);
    EXPECT_EQ(MessageOf([] { omu_PrimArray(257); }), kCannotAllocate);
    EXPECT_EQ(MessageOf([&] { omu_PrimArray(1, nullptr, &element); }), "omu_PrimArray ctor failed");
    EXPECT_THROW(static_cast<void>(Counting({kLargest, 0}).AsString(0)), std::length_error);
}

TEST(omu_PrimArray, ReportsExhaustedMemoryWithItsOwnText) {
    const omu_PrimArray a = Counting({63});
    omu_PrimArray b = a;
    const mem_FailureHook before = mem_SetFailureHook([](std::size_t n) { return n == 252; });
    const cow_String construction = MessageOf([] { Counting({63}); });
    const cow_String writing = MessageOf([&] { b.SetItem(I(1), 0); });
    const cow_String nested = MessageOf([&] { omu_PrimArray(List(a)); });
    mem_SetFailureHook(before);
    EXPECT_EQ(construction, kCannotAllocate);
    EXPECT_EQ(writing, kCannotAllocate);
    EXPECT_EQ(nested, "omu_PrimArray from sequence failed - DimsAndData");
    EXPECT_TRUE(a == b);
}

TEST(omu_PrimArray, FirstDimensionHasItsOwnMessages) {
    EXPECT_EQ(MessageOf([] { return omu_PrimArray().Index(0); }),
              "PrimArray index out of bounds: nd<1");
    for (const Dims& dimensions : {Dims{0}, Dims{0, 3}, Dims{2}, Dims{2, 3}}) {
        const omu_PrimArray array = Counting(dimensions);
        EXPECT_EQ(MessageOf([&] { return array.Index(2); }), "PrimArray index out of bounds: [2]");
        EXPECT_EQ(MessageOf([&] { return array.Index(-1); }),
                  "PrimArray index out of bounds: [-1]");
    }
    EXPECT_EQ(Counting({2, 0}).Index(1)->AsString(0), "array([], 'i')");
}

TEST(omu_PrimArray, IsMadeOfNestedSequences) {
    const cow_String dimensions = "omu_PrimArray from sequence failed - dimensions. ";
    const cow_String values = "omu_PrimArray from sequence failed - copyValues";
    EXPECT_EQ(TextFrom(List(I(1), I(2), I(3))), "array([1, 2, 3], 'i')");
    EXPECT_EQ(TextFrom(List(List(I(1)), List(D(2)))), "array([[1.0], [2.0]], 'd')");
    EXPECT_EQ(TextFrom(List(F(0.5f), I(1))), "array([0.5, 1.0], 'f')");
    EXPECT_EQ(TextFrom(List(F(0.5f), I(1), D(0.1))), "array([0.5, 1.0, 0.1], 'd')");
    EXPECT_EQ(TextFrom(List(D(-0.0))), "array([-0.0], 'd')");
    EXPECT_EQ(TextFrom(List(U(7), I(3))), "array([7, 3], 'i')");
    EXPECT_EQ(TextFrom(List(U(4000000000u), I(1))), values);
    EXPECT_EQ(TextFrom(List(U(4000000000u), D(0.5))), "array([4000000000.0, 0.5], 'd')");
    EXPECT_EQ(TextFrom(List(Counting({2}), List(D(0.5), I(1)))),
              "array([[0.0, 1.0], [0.5, 1.0]], 'd')");
    EXPECT_EQ(TextFrom(List(List(I(1), I(2), I(3)), List(I(1), I(2)))),
              dimensions + "different dims in child. dimThis=2, j=0");
    EXPECT_EQ(TextFrom(List(List(List(I(1))), List(List(I(1), I(2))))),
              dimensions + "different dims in child. dimThis=2, j=1");
    EXPECT_EQ(TextFrom(List(I(1), List(I(2)))),
              dimensions + "different num dims in child. nd=0, ndTemp=1, i=1");
    EXPECT_EQ(TextFrom(List(Counting({1, 1}), Counting({1, 1}), Counting({1}))),
              dimensions + "different num dims in child. nd=2, ndTemp=1, i=2");
    EXPECT_EQ(TextFrom(List(S("1"))), dimensions + "Child not PrimSequence or PrimNumber");
    omu_PrimList deepest = List(I(1));
    for (int depth = 2; depth <= 256; ++depth) deepest = List(deepest);
    const omu_PrimArray deep(deepest);
    EXPECT_EQ(deep.ConstGetArraySize(), 256);
    EXPECT_EQ(deep.AsString(0), "array(" + deepest.AsString(0) + ", 'i')");
    EXPECT_THROW(List(deep), omu_ValueErrorException) << "as deep as what it was made of";
}

// Random forms through nested tuples, slices, joins and repetitions, against the flat elements.
TEST(omu_PrimArray, AgreesWithTheFlatElements) {
    test_Random random(3);
    for (int round = 0; round < 60; ++round) {
        Dims dimensions(static_cast<std::size_t>(1 + random.Below(4)));
        for (int& extent : dimensions) extent = 1 + random.Below(4);
        const int count =
            std::accumulate(dimensions.begin(), dimensions.end(), 1, std::multiplies());
        std::vector<double> elements(static_cast<std::size_t>(count));
        for (double& element : elements) element = random.Below(1000) / 8.0;
        const omu_PrimArray array = Array(dimensions, elements);
        const std::size_t row = elements.size() / static_cast<std::size_t>(dimensions[0]);
        const auto rows = [&](int first, int last) {
            const auto start = elements.begin();
            const auto at = [&](int r) { return start + static_cast<std::ptrdiff_t>(row) * r; };
            Dims some = dimensions;
            some[0] = last - first;
            std::vector<double> part(at(first), at(last));
            part.push_back(0);  // so that it has data also without rows
            return Array(some, part);
        };
        const int length = array.Length();
        const int cut = random.Below(length + 1);
        const auto is = [](const omu_Primitive& expected, omu_PrimSequence* made) {
            return expected == *std::unique_ptr<omu_PrimSequence>(made);
        };
        const omu_PrimTuple nested(array);
        EXPECT_TRUE(omu_PrimArray(nested) == array);
        EXPECT_TRUE(is(rows(0, cut), array.Slice(-3, cut)));
        EXPECT_TRUE(is(rows(cut, length), array.Slice(cut, 99)));
        EXPECT_TRUE(is(rows(cut, cut), array.Slice(cut, -3)));
        EXPECT_TRUE(is(array, rows(0, cut).Concat(rows(cut, length))));
        const std::unique_ptr<omu_PrimArray> twice(array.Repeat(2));
        EXPECT_TRUE(is(*twice, array.Concat(nested)));
        EXPECT_TRUE(is(array, twice->Slice(length, 2 * length)));
        int index = 0;
        EXPECT_TRUE(nested.ForEachElement([&](const omu_Primitive& element, int i) {
            EXPECT_EQ(i, index++);
            return element == *array.Index(i);
        }));
        EXPECT_EQ(index, length);
    }
}

TEST(omu_PrimArray, JoinsAsTheWiderTypeOrRefuses) {
    const omu_PrimArray integers = Counting({2});
    EXPECT_EQ(TextOf(integers.Concat(Array<float>({1}, {0.5f}))), "array([0.0, 1.0, 0.5], 'f')");
    EXPECT_EQ(TextOf(integers.Concat(List(D(0.5)))), "array([0.0, 1.0, 0.5], 'd')");
    EXPECT_EQ(TextOf(List(I(7)).Concat(integers)), "[7, 0, 1]");
    EXPECT_EQ(TextOf(integers.Concat(Counting({0}))), "array([0, 1], 'i')");
    EXPECT_EQ(TextOf(integers.Repeat(-1)), "array([], 'i')");
    EXPECT_EQ(TextOf(omu_PrimArray().Repeat(3)), "array([], 'i')");
    EXPECT_EQ(MessageOf([&] { return integers.Repeat(kLargest); }), kCannotAllocate);
    EXPECT_EQ(MessageOf([&] { return integers.Repeat(300000000); }), kCannotAllocate);
    const omu_PrimArray square = Counting({2, 2});
    for (const omu_PrimArray& other : {integers, Counting({2, 1}), Counting({2, 2, 2})}) {
        EXPECT_EQ(MessageOf([&] { return square.Concat(other); }),
                  "PrimArray arrays of different dimensions can't be joined");
    }
    EXPECT_THROW(omu_PrimTuple(Counting({kLargest, 0})), omu_ValueErrorException);
}

TEST(omu_PrimArray, EqualityComparesElementsByValueAndLogsTheCause) {
    typ_DebugFlags::SetLevel(19, 2);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto logOf = [](const omu_PrimArray& a, const omu_PrimArray& b) {
        bool isEqual = false;
        const std::string log = PrintedBy([&] { isEqual = a == b; });
        EXPECT_EQ(isEqual, log.empty()) << log;
        return log;
    };
    EXPECT_EQ(logOf(Array<double>({2}, {0.0, 1}), Array<double>({2}, {-0.0, 1})), "");
    EXPECT_EQ(logOf(Counting({2}), Counting({2, 1})), "PrimArray. different numDims\n");
    EXPECT_EQ(logOf(Counting({2, 1}), Counting({1, 2})), "PrimArray. different dim\n");
    EXPECT_EQ(logOf(Counting({1}), Array<float>({1}, {0})), "PrimArray. different typeCode\n");
    EXPECT_EQ(logOf(Array<double>({2}, {1, nan}), Array<double>({2}, {1, nan})),
              "PrimArray. different Index(1). nan.0 != nan.0\n");
    EXPECT_EQ(logOf(Counting({2, 2}), Array<int>({2, 2}, {0, 1, 2, 4})),
              "PrimArray. different Index(1). array([2, 3], 'i') != array([2, 4], 'i')\n");
    typ_DebugFlags::SetLevel(19, 1);
    EXPECT_EQ(PrintedBy([] { EXPECT_FALSE(Counting({2}) == Counting({3})); }), "");
    typ_DebugFlags::SetLevel(19, 0);
}

/// `text` with the numbers of the blocks behind `last` for A, B and C.
std::string Numbered(std::string text, int last) {
    for (const char block : {'A', 'B', 'C'}) {
        const std::string name = std::string("##") + block;
        const cow_String serial = atr("##%03d", last + 1 + (block - 'A'));
        for (std::size_t at = 0; (at = text.find(name, at)) != std::string::npos; ++at) {
            text.replace(at, name.size(), serial.View());
        }
    }
    return text;
}

TEST(omu_PrimArray, TracesConstructionBlocksAndCodes) {
    const int last = omu_PrimArrayData(0).SerialNumber();
    test_SetVariable("ZRX_DBG_PRIMARRAY", "1");
    const std::string trace = PrintedBy([] {
        {
            const omu_PrimArray a(List(I(1), D(2)));
            omu_PrimArray b;
            b = a;
            b.SetPyType('x');
            const int extent = 0;
            const omu_PrimArray c(1, &extent, kFloat, &extent);
        }
        omu_PrimArrayData(nullptr, 8);
    });
    test_SetVariable("ZRX_DBG_PRIMARRAY", nullptr);
    EXPECT_EQ(trace,
              Numbered("omu_PrimArray() 6\n"
                       "getDimensionsFromSequence() nd=1, i=0, tc set to omu_PrimNumber::INT\n"
                       "    getDimensionsFromSequence() tc changed to omu_PrimNumber::DOUBLE\n"
                       "omu_PrimArrayData() ##A  sz:16\n"
                       "omu_PrimArray::SetPyType(omu_PrimNumber::DOUBLE) -> pyType:'d'\n"
                       "omu_PrimArray() 5\n"
                       "omu_PrimArray=() #000 omu_PrimNumber::DOUBLE -> ##A\n"
                       "omu_PrimArray::SetPyType(omu_PrimNumber::DOUBLE) -> pyType:'x'\n"
                       "omu_PrimArray() 4\n"
                       "omu_PrimArrayData() ##B  NULL\n"
                       "omu_PrimArray::SetPyType(omu_PrimNumber::FLOAT) -> pyType:'f'\n"
                       "omu_PrimArray() 41\n"
                       "omu_PrimArray() destructor\n"
                       "omu_PrimArrayData() deleting ##B  NULL\n"
                       "omu_PrimArray() destructor\n"
                       "omu_PrimArray() destructor\n"
                       "omu_PrimArrayData() deleting ##A  sz:16\n"
                       "omu_PrimArrayData() ##C  NULL\n"
                       "omu_PrimArrayData() deleting ##C NOT sz or NULL!\n",
                       last));
}

TEST(omu_PrimArray_Kept, ComparisonWithAnotherKindPrints) {
    testing::internal::CaptureStdout();
    EXPECT_FALSE(Counting({1}) == List(I(0)));
    EXPECT_FALSE(List(I(0)) == Counting({1}));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "PrimArray. different types\n");
}

TEST(omu_PrimArray_Kept, NoDataIsRefusedWithoutElementsToo) {
    const int none = 0;
    EXPECT_EQ(MessageOf([&] { omu_PrimArray(1, &none, static_cast<const int*>(nullptr)); }),
              "omu_PrimArray ctor failed - no data");
}

TEST(omu_PrimArray_Kept, NestedSequencesWithoutNumbersAreRefused) {
    for (const omu_PrimList& empty : {List(), List(List(), List()), List(Counting({0}))}) {
        EXPECT_EQ(TextFrom(empty), "omu_PrimArray from sequence failed - DimsAndData");
    }
}

TEST(omu_PrimArray_Kept, TruthValuesAreNoNumbers) {
    EXPECT_EQ(TextFrom(List(List(I(1)), omu_PrimBoolean(true))),
              "omu_PrimArray from sequence failed - dimensions. "
              "Child not PrimSequence or PrimNumber");
}

TEST(omu_PrimArray_Kept, IntegersWithSinglesBecomeSingles) {
    EXPECT_EQ(TextFrom(List(I(16777217), F(0.5f))), "array([16777216.0, 0.5], 'f')");
}

TEST(omu_PrimArray_Kept, TheFirstElementOfNoneHasItsOwnMessage) {
    for (const Dims& dimensions : {Dims{0}, Dims{0, 3}}) {
        const omu_PrimArray array = Counting(dimensions);
        EXPECT_EQ(MessageOf([&] { return array.Index(0); }),
                  "PrimArray ConstGetNumericItem failed");
        EXPECT_EQ(MessageOf([&] { return array.Index(1); }), "PrimArray index out of bounds: [1]");
    }
}

}  // namespace
