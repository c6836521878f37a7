#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>

#include "omu/omu_PrimArrayData.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimSequence.h"

/// A dense array of numbers of one type in any number of dimensions, tag `o`, which the interpreter
/// sees as an array object with a one-letter element code.
///
/// Elements are `INT`, `FLOAT` or `DOUBLE` and lie row by row (the last index runs fastest) in one
/// block of native numbers without gaps. As a sequence it has the elements of its first dimension:
/// numbers of a one-dimensional array, else arrays of one dimension less. Arrays have at most
/// `kMaxDimensions` dimensions and 2147483647 bytes; what asks for more is refused before anything
/// is allocated. Without dimensions an array has no elements either.
///
/// A copy shares the block and costs a few increments; `SetItem` first makes the block private. The
/// objects that `Index` answers are made on demand and kept until the array is written, assigned or
/// destroyed, so `ForEachElement` and `ConstGetItem` are better for reading many. Two arrays are
/// equal when dimensions, extents, element types and all elements are; a NaN equals nothing, the
/// element code does not count.
///
/// Every failure raises `omu_ValueErrorException`, and no half-built array is left behind. With
/// `ZRX_DBG_PRIMARRAY` set, construction, assignment and the life of blocks are traced on standard
/// error.
///
/// Kept: comparing an array with a primitive of another kind prints "PrimArray. different types" on
/// standard output, where one would expect no output or a trace. Journals of scripts are compared
/// with it.
///
/// Kept: a null pointer to the data is refused also when there are no elements, where one would
/// expect an empty array. Callers detect unset buffers by it.
///
/// Kept: nested sequences without any number are refused, where one would expect an empty array of
/// some type. Scripts name the type of an empty array.
///
/// Kept: truth values are refused in nested sequences, where one would expect 0 and 1 as in a
/// number. Scripts rely on the fault to find misplaced flags.
///
/// Kept: integers mixed with `FLOAT` numbers become `FLOAT` and so lose what exceeds 24 bits, where
/// one would expect `DOUBLE`. The size of single-precision results depends on it.
///
/// Kept: `Index(0)` of an array whose first extent is 0 raises another message than any other
/// index, where one would expect it to be out of bounds as they are. Scripts that read the first
/// element unasked tell empty arrays by it.
class KTSOVUGEOM_API omu_PrimArray : public omu_PrimSequence {
  public:
    using DataTypeEnm = omu_PrimNumber::DataTypeEnm;
    static constexpr int kMaxDimensions = omu_PrimNesting::kMaxDepth;

    /// The array without dimensions.
    omu_PrimArray() : omu_PrimArray(0) {}
    /// An array of `INT` without elements: all extents are 0.
    explicit omu_PrimArray(int numDimensions);
    /// A copy of the elements at `data`, as many as the `numDimensions` extents say.
    omu_PrimArray(int numDimensions, const int* dimensions, const int* data);
    omu_PrimArray(int numDimensions, const int* dimensions, const float* data);
    omu_PrimArray(int numDimensions, const int* dimensions, const double* data);
    /// The same of native elements of `type` at `data`, which need not be aligned.
    omu_PrimArray(int numDimensions, const int* dimensions, DataTypeEnm type, const void* data);
    /// The array of nested sequences of numbers, which must be of the same form at every depth; its
    /// type is the widest of `INT` < `FLOAT` < `DOUBLE` that a number has.
    explicit omu_PrimArray(const omu_PrimSequence& sequence);
    /// Reads the record of an array. One that contradicts itself becomes the array without
    /// dimensions (and a line on standard error).
    explicit omu_PrimArray(cls_ReadVisitor& visitor);
    /// Shares the block of `other`.
    omu_PrimArray(const omu_PrimArray& other);
    ~omu_PrimArray() override;
    /// Shares the block of `other`.
    omu_PrimArray& operator=(const omu_PrimArray& other);

    /// The extent of dimension `d`, counted from 0; 0 when there is no such dimension.
    [[nodiscard]] int ConstGetDimension(int d) const noexcept;
    /// Number of dimensions.
    [[nodiscard]] int ConstGetArraySize() const noexcept { return numDims; }
    [[nodiscard]] int ConstGetNumElements() const noexcept { return numElements; }
    /// The extents, and the bytes from one index to the next, of each dimension.
    [[nodiscard]] const cow_List<int>& ConstGetExtents() const noexcept { return extents; }
    [[nodiscard]] const cow_List<int>& ConstGetStrides() const noexcept { return strides; }
    /// The elements, null when there are none; valid until the array is written, assigned or
    /// destroyed.
    [[nodiscard]] const char* ConstGetData() const noexcept;
    [[nodiscard]] DataTypeEnm ConstGetPrimNumberType() const noexcept { return elementType; }
    /// Size of an element in bytes.
    [[nodiscard]] int ConstGetItemSize() const noexcept { return ItemSize(elementType); }
    /// 4 for `INT` and `FLOAT`, 8 for `DOUBLE`, 0 for any other type.
    [[nodiscard]] static int ItemSize(DataTypeEnm type) noexcept;
    /// "omu_PrimNumber::INT", "omu_PrimNumber::FLOAT", "omu_PrimNumber::DOUBLE"; "" for any other
    /// type.
    [[nodiscard]] static const char* typeCode2string(DataTypeEnm type) noexcept;

    /// The element code: `i`, `f` or `d` unless it was set.
    [[nodiscard]] char ConstGetPyType() const noexcept { return pyType; }
    /// Sets the code of `type`; `codeOfOthers` for a type that is none of the three.
    void SetPyType(DataTypeEnm type, int codeOfOthers);
    /// Sets the code itself, which is only shown.
    void SetPyType(int code);

    /// The element at up to four indices, converted: truncated toward zero and saturated for `int`.
    /// -1 means that an index is not given. Too few or too many indices, as for any array of more
    /// than four dimensions, and an index out of range raise.
    [[nodiscard]] int ConstGetInt(int i = -1, int j = -1, int k = -1, int l = -1) const;
    [[nodiscard]] double ConstGetDouble(int i = -1, int j = -1, int k = -1, int l = -1) const;
    [[nodiscard]] omu_PrimNumber ConstGetItem(int i = -1, int j = -1, int k = -1, int l = -1) const;
    /// Writes an element; the number is converted as `ConstGetInt` does, or rounded to `float`.
    void SetItem(const omu_PrimNumber& item, int i = -1, int j = -1, int k = -1, int l = -1);

    /// The extent of the first dimension.
    [[nodiscard]] int Length() const noexcept override { return ConstGetDimension(0); }
    [[nodiscard]] const omu_Primitive* Index(int index) const override;
    bool ForEachElement(const ElementUse& use) const override;
    [[nodiscard]] cow_List<omu_PrimHandle> Elements() const override;
    [[nodiscard]] omu_PrimArray* Slice(int first, int last) const override;
    /// Joins along the first dimension, as the wider of both types; the other extents must agree.
    /// `other` that is no array is made one.
    [[nodiscard]] omu_PrimArray* Concat(const omu_PrimSequence& other) const override;
    [[nodiscard]] omu_PrimArray* Repeat(int count) const override;

    /// "omu_PrimArray".
    [[nodiscard]] cow_String TypeString() const override;
    /// "array([[1, 2], [3, 4]], 'i')", without dimensions "array([], 'i')"; never cut. A text of
    /// 2 GiB or more throws `std::length_error`.
    [[nodiscard]] cow_String AsString(int flag) const override;
    /// Level 2 of debug flag 19 logs the cause of a difference on standard error.
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimArray* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// As deep as it has dimensions. Every inner array is a node, and every 16 elements are: plain
    /// numbers are that much cheaper to walk than objects.
    [[nodiscard]] omu_PrimNesting Nesting() const noexcept override;
    /// Writes "_dataType", "_pyType" and "_dims", and the elements row by row as "_ints", "_floats"
    /// or "_doubles".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:35.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 35);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    using Block = cow_CountedHld<omu_PrimArrayData>;

    void FromPointers(int numDimensions, const int* dimensions, DataTypeEnm type, const void* data);
    /// Gives the array its form and a block: a copy of the elements at `source`, or undefined ones
    /// when it is null.
    void FromDimsAndData(std::span<const int> dimensions, DataTypeEnm type, const void* source);
    void FromSequence(const omu_PrimSequence& sequence);
    [[nodiscard]] static omu_PrimArray FromRecord(cls_ReadVisitor& visitor);
    void ShowCode(int code, DataTypeEnm type);
    template <class T>
    void ReadElements(cls_ReadVisitor& visitor, std::span<const int> dimensions);
    template <class T>
    void WriteElements(cls_WriteVisitor& visitor) const;

    /// The address of the element at the indices, checked.
    [[nodiscard]] const char* ItemAddress(int i, int j, int k, int l) const;
    void checkArrayIndices(std::span<const int> indices) const;
    /// The address of element `index` of the first dimension, checked.
    [[nodiscard]] const char* Index2Ptr(int index) const;
    [[nodiscard]] omu_PrimHandle ElementAt(int index) const;
    [[nodiscard]] omu_PrimArray SubArray(int index) const;
    /// The part from `first` up to but not including `last` along the first dimension. REQUIRES:
    /// 0 <= `first` <= `last` <= `Length()`.
    [[nodiscard]] omu_PrimArray SpecialSlice(int first, int last) const;
    [[nodiscard]] omu_PrimArray Joined(const omu_PrimArray& other) const;
    /// This form with another first extent, and a block of undefined elements of `type`. A first
    /// extent that is too large is refused.
    [[nodiscard]] omu_PrimArray WithLength(std::int64_t length, DataTypeEnm type) const;
    [[nodiscard]] char* OwnData();
    [[nodiscard]] int SerialNumber() const noexcept;
    void AppendText(std::string& text, int dimension, const char*& element) const;
    [[nodiscard]] int FirstDifference(const omu_PrimArray& other) const noexcept;

    int numDims = 0;
    cow_List<int> extents;
    cow_List<int> strides;  ///< in bytes
    Block data;
    DataTypeEnm elementType = omu_PrimNumber::INT;
    char pyType = 'i';
    int numElements = 0;
    /// The objects that `Index` answered; not a part of the value.
    mutable std::unordered_map<int, omu_PrimHandle> handedOut;
};
