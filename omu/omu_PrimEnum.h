#pragma once

#include <concepts>
#include <type_traits>

#include "omu/omu_PrimEnumBase.h"
#include "omu/omu_SymbolicConstantTable.h"

/// The names of the enumeration `ENUMTYPE`: the owner of the enumeration specialises this with
///   static constexpr omu_EnumEntry kEntries[] = {{"NAME", value}, ..., {}};
template <class ENUMTYPE, int kind>
struct omu_PrimEnumNames;

/// The primitive of an enumeration of the application: an `ENUMTYPE` that has a name. `kind` is 1,
/// and 2 for truth values.
///
/// A value that is not permitted raises `omu_ValueErrorException`; the `SetValue`s answer false and
/// keep the value instead.
///
/// Kept: `Value(int)` takes an index into the stored names and `Name(int)` a value, where one would
/// expect the two to undo each other; menus are filled by `Value`, stored values shown by `Name`.
template <class ENUMTYPE, int kind>
class omu_PrimEnum : public omu_PrimEnumBase {
    static constexpr const omu_EnumEntry* kNames = omu_PrimEnumNames<ENUMTYPE, kind>::kEntries;

  public:
    /// The first stored value; 0 for an enumeration without names.
    omu_PrimEnum() noexcept : omu_PrimEnum(kNames) {}
    /// (Exactly the enumeration: nothing converts.)
    template <std::same_as<ENUMTYPE> Enumerator>
    explicit omu_PrimEnum(Enumerator enumerator)
        : omu_PrimEnumBase(kNames, Require(kNames, NumberOf(enumerator))) {}
    explicit omu_PrimEnum(const cow_String& name)
        : omu_PrimEnumBase(kNames, Require(kNames, name, Origin::String)) {}
    /// Null is the empty name.
    explicit omu_PrimEnum(const char* name) : omu_PrimEnum(cow_String(name)) {}
    /// The value that the name of `other` has here; its number plays no part.
    explicit omu_PrimEnum(const omu_PrimEnumBase& other)
        : omu_PrimEnumBase(kNames, Require(kNames, other.CurrentName(), Origin::Enumeration)) {}
    /// Reads the record of an enumeration.
    ///
    /// Kept: a name that is not permitted raises, where one would expect the first value and a line
    /// on standard error, as for other damaged fields; a model with an unknown mode is refused as a
    /// whole, and its loader holds what it has built so that nothing leaks.
    explicit omu_PrimEnum(cls_ReadVisitor& visitor)
        : omu_PrimEnumBase(kNames, Require(kNames, ReadName(visitor), Origin::Record)) {}

    /// The name of `value`, "" when it has none.
    [[nodiscard]] static cow_String Name(int value) {
        const omu_EnumEntry* const entry = Find(kNames, value);
        return entry ? entry->name : "";
    }
    /// The enumerator at `index` among the stored names; the enumerator 0 outside.
    [[nodiscard]] static ENUMTYPE Value(int index) noexcept {
        for (int i = 0; index >= 0 && kNames[i].name; ++i) {
            if (i == index) return static_cast<ENUMTYPE>(kNames[i].value);
        }
        return static_cast<ENUMTYPE>(0);
    }

    /// The current value.
    [[nodiscard]] ENUMTYPE Enumerator() const noexcept {
        return static_cast<ENUMTYPE>(static_cast<std::int32_t>(EnumValue()));
    }
    explicit operator bool() const noexcept requires(kind == 2) { return Enumerator(); }
    /// Takes the value; false, and the old one is kept, when it is not permitted. (Exactly the
    /// enumeration: nothing converts.)
    template <std::same_as<ENUMTYPE> Value>
    bool SetValue(Value enumerator) noexcept {
        return SetNumber(NumberOf(enumerator));
    }
    /// Null is the empty name.
    bool SetValue(const char* name) { return SetName(name); }

    [[nodiscard]] omu_PrimEnum* Copy() const override { return new omu_PrimEnum(*this); }

  protected:
    /// The first value of other names for the same enumeration.
    explicit omu_PrimEnum(const omu_EnumEntry* names) noexcept
        : omu_PrimEnumBase(names, static_cast<std::uint32_t>(names->value)) {}

  private:
    static std::int32_t NumberOf(ENUMTYPE enumerator) noexcept {
        return static_cast<std::int32_t>(enumerator);
    }
};

/// Adds the names of ordinary enumerations to the symbolic constants.
template <class... Enumerations>
void omu_RegisterEnumerations() {
    (omu_RegisterConstants(omu_PrimEnumNames<Enumerations, 1>::kEntries), ...);
}

/// The pairs of names that stand for a truth value, each with the family that it belongs to.
struct omu_OnOffNames {
    static constexpr const char* kFamily = "ON_OFF";
    static constexpr omu_EnumEntry kEntries[] = {{"ON", 1}, {"OFF", 0}, {}};
};
struct omu_TrueFalseNames {
    static constexpr const char* kFamily = "TRUE_FALSE";
    static constexpr omu_EnumEntry kEntries[] = {{"TRUE", 1}, {"FALSE", 0}, {}};
};
struct omu_YesNoNames {
    static constexpr const char* kFamily = "ON_OFF";
    static constexpr omu_EnumEntry kEntries[] = {{"YES", 1}, {"NO", 0}, {}};
};

template <>
struct omu_PrimEnumNames<bool, 2> : omu_OnOffNames {};

/// A boolean constant by one pair of names, the true one at first.
template <class Names>
class omu_BooleanConst : public omu_PrimEnum<bool, 2> {
  public:
    omu_BooleanConst() noexcept : omu_PrimEnum(Names::kEntries) {}
    /// (Exactly `bool`: nothing converts.)
    template <std::same_as<bool> Boolean>
    explicit omu_BooleanConst(Boolean value) : omu_BooleanConst() {
        SetValue(value);
    }
    /// A name outside the pair raises `omu_ValueErrorException`.
    explicit omu_BooleanConst(const cow_String& name) : omu_BooleanConst() {
        SetNumberOf(name, Origin::String);
    }
    explicit omu_BooleanConst(const char* name) : omu_BooleanConst(cow_String(name)) {}
    explicit omu_BooleanConst(const omu_PrimEnumBase& other) : omu_BooleanConst() {
        SetNumberOf(other.CurrentName(), Origin::Enumeration);
    }
    explicit omu_BooleanConst(cls_ReadVisitor& visitor) : omu_BooleanConst() {
        SetNumberOf(ReadName(visitor), Origin::Record);
    }

    [[nodiscard]] static constexpr const char* Family() noexcept { return Names::kFamily; }
    /// The name of `value` in this pair, "" when it is neither 0 nor 1.
    [[nodiscard]] static cow_String Name(int value) {
        const omu_EnumEntry* const entry = Find(Names::kEntries, value);
        return entry ? entry->name : "";
    }

    [[nodiscard]] omu_BooleanConst* Copy() const override { return new omu_BooleanConst(*this); }

  private:
    void SetNumberOf(const cow_String& name, Origin origin) {
        SetValue(Require(Names::kEntries, name, origin) != 0);
    }
};

using omu_OnOffConst = omu_BooleanConst<omu_OnOffNames>;
using omu_TrueFalseConst = omu_BooleanConst<omu_TrueFalseNames>;
using omu_YesNoConst = omu_BooleanConst<omu_YesNoNames>;
