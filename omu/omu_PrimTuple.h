#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cow/cow_2DArray.h"
#include "cow/cow_Map.h"
#include "foundation/coreutils/atr_String.h"
#include "omu/omu_PrimSequence.h"

class omu_ArgTypeErrorException;
class omu_ArgumentTarget;

/// A sequence of any primitives that does not change, tag `(`; lists and the arguments of commands
/// derive from it.
///
/// Elements are shared between all sequences that hold them and only read; none is ever null. A
/// copy costs an increment. Equal to another sequence of the same tag with equal elements, each
/// compared by value (a NaN differs from itself). Nesting beyond what `omu_PrimNesting` allows is
/// refused by whatever builds a tuple.
///
/// A tuple is also a reader of itself as positional arguments: each `Get` reads the next element,
/// and `End` raises the first fault. Copies keep how far it was read; slices and the like start
/// anew. It is not part of the value, so equality ignores it.
class KTSOVUGEOM_API omu_PrimTuple : public omu_PrimSequence {
  public:
    /// The empty tuple.
    omu_PrimTuple() : omu_PrimTuple(cow_List<omu_PrimHandle>()) {}
    /// The tuple of `elements`. A null one raises `omu_GenericTypeErrorException`.
    explicit omu_PrimTuple(const cow_List<omu_PrimHandle>& elements)
        : omu_PrimTuple(omu_PrimTag::kTuple, elements) {}
    /// The elements of any sequence.
    explicit omu_PrimTuple(const omu_PrimSequence& sequence) : omu_PrimTuple(sequence.Elements()) {}
    /// Reads the record of a tuple. A null element becomes `None`, and counters that contradict the
    /// elements are brought into their range.
    explicit omu_PrimTuple(cls_ReadVisitor& visitor);
    omu_PrimTuple(const omu_PrimTuple& other) : omu_PrimTuple(omu_PrimTag::kTuple, other) {}
    omu_PrimTuple& operator=(const omu_PrimTuple&) = default;

    [[nodiscard]] int Length() const noexcept override { return primVector.Length(); }
    /// Outside of 0 to `Length()` - 1 it raises "Tuple Index returned NULL", for a list "List Index
    /// returned NULL".
    [[nodiscard]] const omu_Primitive* Index(int index) const override;
    bool ForEachElement(const ElementUse& use) const override;
    [[nodiscard]] cow_List<omu_PrimHandle> Elements() const override { return primVector; }
    [[nodiscard]] omu_PrimTuple* Slice(int first, int last) const override;
    [[nodiscard]] omu_PrimTuple* Concat(const omu_PrimSequence& other) const override;
    [[nodiscard]] omu_PrimTuple* Repeat(int count) const override;

    /// The whole tuple as a list, elements taken as typed arguments are (`omu_PrimConvert.h`). True
    /// when every element fits; else false, `out` is untouched, and `expected` is the word for what
    /// was wanted ("sequence of Integers").
    [[nodiscard]] bool AsListInt(cow_List<int>& out, cow_String& expected) const;
    [[nodiscard]] bool AsListFloat(cow_List<float>& out, cow_String& expected) const;
    [[nodiscard]] bool AsListDouble(cow_List<double>& out, cow_String& expected) const;
    [[nodiscard]] bool AsListBool(cow_List<bool>& out, cow_String& expected) const;
    [[nodiscard]] bool AsListString(cow_List<cow_String>& out, cow_String& expected) const;
    [[nodiscard]] bool AsListTranslatedString(cow_List<atr_String>& out,
                                              cow_String& expected) const;
    /// As above for sequences of the same length as the rows of a table; no rows give 0 x 0.
    [[nodiscard]] bool As2DArrayDouble(cow_2DArray<double>& out, cow_String& expected) const;
    [[nodiscard]] bool As2DArrayString(cow_2DArray<cow_String>& out, cow_String& expected) const;
    /// As above for pairs of a name and a number; the last of a repeated name counts.
    [[nodiscard]] bool AsMapString2Float(cow_Map<cow_String, float>& out,
                                         cow_String& expected) const;

    /// Starts reading from the first element, with required ones.
    void Begin();
    /// Reads the next element; one of another type is a fault, and after the first fault elements
    /// are only counted. (Types: `omu_ArgumentTypes.h`, which defines it.)
    template <class T>
    void Get(T& value);
    /// A sequence is handed out as a tuple of its own, to be read from its start.
    void Get(omu_PrimTuple& value);
    /// Every element read after this call is optional.
    void Optional() noexcept { isOptional = true; }
    /// Withdraws the last `Get`, so that the same element can be read as another type; true when
    /// there was one to withdraw.
    bool Alternative();
    /// True when `End` would raise if no element were read any more.
    [[nodiscard]] bool Error() const;
    /// True when the last `Get` found a fault.
    [[nodiscard]] bool ErrorOnPrevious() const;
    /// Raises the first fault, if any: a wrong type, else missing or surplus elements. `context`
    /// opens the message of the latter.
    void End(const cow_String& context = {}) const;
    /// Where the tuple sits inside an outer argument ("points[3]"), for messages; empty: nowhere.
    void SetNestedErrorStr(const cow_String& place) { nestedErrorStr = place; }
    [[nodiscard]] const cow_String& ConstGetNestedErrorStr() const noexcept {
        return nestedErrorStr;
    }

    /// "tuple".
    [[nodiscard]] cow_String TypeString() const override;
    /// "(1, 'a')", "(1,)", "()", each element by its `AsString`; never cut. A text of 2 GiB or more
    /// throws `std::length_error`.
    [[nodiscard]] cow_String AsString(int flag) const override;
    /// The same by `AsRepr`, cut as `omu_TextRepr` says: "..." stands for the rest of each sequence
    /// that is longer than allowed, or is still open when the text exceeds its size.
    [[nodiscard]] cow_String AsRepr() const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimTuple* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    [[nodiscard]] omu_PrimNesting Nesting() const noexcept override { return nesting; }
    /// Writes "primVector" and the state of reading: "argcount", "cursor", "errorArg",
    /// "isOptional", "numGets", "reqcount", "size", "typeExpected" and "typeFound".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:38.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 38);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    /// What `typeFound` and `typeExpected` are while there is no fault (in records:
    /// "Undetermined").
    static constexpr std::string_view kUndetermined = "";

    /// For the kinds that derive from the tuple, which have a tag of their own.
    omu_PrimTuple(char typeTag, const cow_List<omu_PrimHandle>& elements);
    omu_PrimTuple(char typeTag, const omu_PrimTuple& other);

    /// What `Slice`, `Concat` and `Repeat` are made of, for kinds with a result of their own.
    [[nodiscard]] cow_List<omu_PrimHandle> Joined(const omu_PrimSequence& other) const;
    [[nodiscard]] cow_List<omu_PrimHandle> Repeated(int count) const;

    /// Changes for the kinds that allow them: null raises `omu_GenericTypeErrorException`, a place
    /// that is none raises as `Index`, nesting that is not allowed `omu_ValueErrorException`; each
    /// leaves the elements as they were.
    void InsertElement(int index, const omu_PrimHandle& element);
    void SetElement(int index, const omu_PrimHandle& element);
    void RemoveElement(int index);

    /// Reads the next element into `target` and counts it; true when it was taken.
    bool Read(const omu_ArgumentTarget& target);
    /// Takes `argument` into `target` or records the fault; counts nothing.
    bool Take(const omu_Primitive& argument, const omu_ArgumentTarget& target);
    void CountGet();
    void StepBack();
    void ClearFault();
    /// The place of element `number`, from 1, in messages: "arg2", "points[1]".
    [[nodiscard]] cow_String PlaceOf(int number) const;
    /// The exception for a recorded type fault.
    [[nodiscard]] omu_ArgTypeErrorException TypeFault() const;

    /// The part of the element that the fault lies in. Assigned first, as that alone can fail.
    std::vector<int> faultPlace;
    int size = 0;      ///< elements that can be read; follows the length
    int cursor = 0;    ///< elements asked for
    int reqcount = 0;  ///< required ones of them
    int argcount = 0;  ///< moves with `numGets`; nothing reads it
    int numGets = 0;
    int errorArg = 0;  ///< number of the element with the fault, from 1; 0: none
    bool isOptional = false;
    bool canWithdraw = false;      ///< a `Get` stands that was not withdrawn
    bool lastWasRequired = false;  ///< what the last `Get` counted as
    cow_String typeFound;
    cow_String typeExpected;

  private:
    struct TextRules;
    /// Raises unless 0 <= `index` < `end`.
    void RequireIndex(int index, int end) const;
    void AppendText(std::string& text, const TextRules& rules) const;

    omu_PrimNesting nesting;
    cow_String nestedErrorStr;
    cow_List<omu_PrimHandle> primVector;  ///< assigned last: the source may be one of its elements
};
