#pragma once

#include <memory>
#include <vector>

#include "omu/omu_ArgumentTypes.h"
#include "omu/omu_NewPrimitive.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimTuple.h"

class nex_Exception;
class omu_InterfaceObj;
class omu_KeywordTypeErrorException;
class omu_PyObjectWrapper;

/// The arguments of a scripting command: positional ones, which are the elements of the tuple, and
/// keyword ones. The command reads them in the order of its signature and then calls `End`, which
/// raises the one exception that describes the first fault:
///
///     double width = 0;
///     int count = 1;
///     arguments.Get(width, "width");
///     arguments.Optional();
///     arguments.Get(count, "count");
///     arguments.End();
///
/// No `Get` raises. One that finds no argument, or one of the wrong type, leaves its variable
/// alone; after the first fault all further ones only count, so the variables hold what was given
/// once `End` has returned. What depends on them comes after it: tests of names and ranges, and
/// reading the tuples that were handed out (an outer fault leaves them empty, and their own `End`
/// would tell of the wrong fault).
///
/// A tuple that is handed out is read in the same way. It knows where it sits in the call, so its
/// messages name the element: "points[3][0]; found string, expecting float". Its counts have no
/// place: pass `ConstGetNestedErrorStr()` to its `End`.
///
/// A type that differs from call to call is read by trying one after the other:
///
///     arguments.Get(number, "size");
///     if (arguments.ErrorOnPrevious() && arguments.Alternative()) arguments.Get(text, "size");
///
/// As a value it is the tuple of its positional arguments: text and equality are theirs.
///
/// Kept: an argument given twice counts twice, so that with a free optional place `(1, a=9)` for
/// (a, b=) gives a = 1 and the 9 is lost; one would have expected a fault. Scripts repeat arguments
/// that a newer signature takes by position.
///
/// Kept: a missing keyword hides the wrong types behind it: `(b="x")` for the integers (a, b)
/// raises "not all required arguments specified; expected 2, got 1", where one would have expected
/// "b; found string, expecting int". Scripts that probe for a signature rely on the count.
///
/// Kept: an integer beyond the range of the variable, such as 300 for a `signed char`, raises
/// "arg1; found int, expecting int"; one would have expected the range. Scripts tell it from a
/// "RangeError", which is about the meaning of a value.
class KTSOVUGEOM_API omu_Arguments : public omu_PrimTuple {
  public:
    using Keywords = omu_PrimDictionary<cow_String>;

    /// No arguments. All constructors leave the object ready for reading.
    omu_Arguments() = default;
    /// The elements of `positional` and the entries of `keywordValues`, in their order.
    explicit omu_Arguments(const omu_PrimTuple& positional, const Keywords& keywordValues = {});
    /// Reads the record of a call, ready for reading from its start.
    explicit omu_Arguments(cls_ReadVisitor& visitor);
    omu_Arguments(const omu_Arguments&) = default;
    omu_Arguments& operator=(const omu_Arguments&) = default;

    [[nodiscard]] const Keywords& ConstGetKeywords() const noexcept { return keywords; }

    /// Adds a value at the end of the positional arguments, or as the keyword argument `keyword`
    /// (in place of one that is there), and begins anew. For calls that the application makes.
    template <omu_PutType T>
    void Put(const T& value) {
        Put(omu_NewPrimitive(value));
    }
    template <omu_PutType T>
    void Put(const T& value, const cow_String& keyword) {
        Put(omu_NewPrimitive(value), keyword);
    }
    /// As above with a primitive that is taken over, also when it is refused: null raises
    /// `omu_GenericTypeErrorException`, nesting beyond what is allowed `omu_ValueErrorException`.
    void Put(std::unique_ptr<omu_Primitive> value);
    void Put(std::unique_ptr<omu_Primitive> value, const cow_String& keyword);

    /// Starts reading from the first argument, with required ones. The names of deprecated
    /// arguments used so far stay.
    void Begin();

    /// Reads the next argument: by its position while positional ones remain, else by `keyword`;
    /// without one it can be given by position only. Any sequence is handed out to a tuple, to be
    /// read from its start.
    template <omu_GetType T>
    void Get(T& value) {
        ReadInto(value, nullptr);
    }
    template <omu_GetType T>
    void Get(T& value, const cow_String& keyword) {
        ReadInto(value, &keyword);
    }
    /// Reads an application object whose type name is `typeName`: answers the argument, which
    /// stays that of the call, or `byDefault` when there is none or another one.
    const omu_InterfaceObj* Get(const char* typeName, const cow_String& keyword,
                                const omu_InterfaceObj* byDefault);
    /// Reads an object of the interpreter, likewise.
    const omu_PyObjectWrapper* Get(const cow_String& keyword, const omu_PyObjectWrapper* byDefault);

    /// As `Get(value, keyword)` for an argument that is kept for compatibility; `replacement` is
    /// the one to use instead. `keyword` is noted as used when the argument was read by it.
    template <omu_GetType T>
    void DeprecatedGet(T& value, const cow_String& keyword,
                       [[maybe_unused]] const cow_String& replacement) {
        if (ReadInto(value, &keyword) == Source::Keyword) AddDeprecatedArgUsed(keyword);
    }
    /// True, and `keyword` is noted as used, when it was given. Counts nothing.
    bool DeprecatedCheck(const cow_String& keyword);
    /// Withdraws the last `Get` in favour of the deprecated `keyword`, which is then read by a
    /// `Get` of its own and noted as used. False, and nothing is changed, when it was not given or
    /// is consumed, or nothing can be withdrawn:
    ///
    ///     arguments.Get(value, "size");
    ///     if (arguments.ErrorOnPrevious() && arguments.DeprecatedAlternative("length")) {
    ///         arguments.Get(value, "length");
    ///     }
    bool DeprecatedAlternative(const cow_String& keyword);
    /// Notes that the deprecated argument `keyword` was used; each name once.
    void AddDeprecatedArgUsed(const cow_String& keyword);
    [[nodiscard]] const cow_List<cow_String>& DeprecatedArgsUsed() const noexcept {
        return deprecatedUsed;
    }

    /// Withdraws the last `Get`, so that the same argument can be read as another type; true when
    /// there was one to withdraw. It undoes the one that found a fault or no optional argument; of
    /// the others only those by position, while no fault is recorded.
    bool Alternative();
    /// True when `End` would raise if no argument were read any more; so also in the middle of a
    /// good call.
    [[nodiscard]] bool Error() const;
    /// True when the last `Get` found a fault, or an optional argument missing.
    [[nodiscard]] bool ErrorOnPrevious() const;

    /// Raises the first fault, if any: a keyword that was not read (`omu_KeywordErrorException`), a
    /// wrong type (`omu_ArgTypeErrorException`, `omu_KeywordTypeErrorException`), missing and then
    /// surplus arguments (`omu_ArgNumberErrorException`). Changes nothing, so that a second call
    /// raises the same. `context` opens the message, except of wrong types.
    void End(const cow_String& context = {}) const;
    /// The exception that `End` would raise, null for none. Raising takes several times as long as
    /// the rest of a call, so boundaries ask for the exception instead.
    [[nodiscard]] std::unique_ptr<nex_Exception> Fault(const cow_String& context = {}) const;

    [[nodiscard]] omu_PrimNesting Nesting() const noexcept override;
    [[nodiscard]] omu_Arguments* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes the tuple and "_keywords".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:42.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 42);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    enum class Source { None, Position, Keyword };
    /// What the latest `Get` did besides what the tuple knows, to undo it.
    struct LatestGet {
        bool wasMissing = false;  ///< required, and found neither position nor keyword
        int keyword = -1;         ///< index of the keyword that it consumed
    };

    /// True right after `Begin()`: what is added then needs no new beginning.
    [[nodiscard]] bool IsUnread() const noexcept { return numGets == 0 && !isOptional; }
    /// Reads one argument; where its value came from, `None` when there was no good one. A null
    /// `keyword` is none.
    template <class T>
    Source ReadInto(T& value, const cow_String* keyword) {
        if constexpr (std::derived_from<T, omu_PrimTuple>) {
            return ReadTuple(value, keyword);
        } else {
            return Read(omu_ArgumentTarget(value), keyword);
        }
    }
    Source ReadTuple(omu_PrimTuple& value, const cow_String* keyword);
    Source Read(const omu_ArgumentTarget& target, const cow_String* keyword);
    Source ReadUncounted(const omu_ArgumentTarget& target, const cow_String* keyword,
                         int pendingIndex);
    /// The index of `keyword` when it was given and is not consumed yet; else -1.
    [[nodiscard]] int PendingIndex(const cow_String* keyword) const;
    void Count(int pendingIndex);
    void ClearKeywordFault();
    /// Calls `use` with the exception for the first fault, unless there is none.
    template <class Use>
    void UseFault(const cow_String& context, const Use& use) const;
    [[nodiscard]] omu_KeywordTypeErrorException KeywordFault() const;

    Keywords keywords;
    std::vector<bool> pending;  ///< by index of the keyword: given and not yet consumed
    int pendingCount = 0;
    int requiredKeywords = 0;  ///< consumed ones
    int missing = 0;           ///< required `Get`s that found neither position nor keyword
    int optionalMiss = 0;      ///< number of the `Get` that found its optional keyword missing
    bool faultOnKeyword = false;
    cow_String faultKeyword;
    LatestGet latest;
    cow_List<cow_String> deprecatedUsed;
};
