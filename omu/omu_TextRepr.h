#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/omi_Singleton.h"

class omu_InterfaceObj;

/// The process-wide settings of the texts that `repr` shows. Two of them, the elements of a
/// sequence and the size of a text, hold for tuples and lists; the others hold for the members of
/// interface objects. The text of a number is fixed and obeys none. Setters store what they get.
class KTSOVUGEOM_API omu_TextRepr {
  public:
    [[nodiscard]] static omu_TextRepr& Instance();

    void SetSimpleStyle(int style) noexcept { simpleStyle = style; }
    /// Kept: true only when the style is exactly 1; other values than 0 count as off, where one
    /// would expect them to count as on. Hosts store further styles of their own in it.
    [[nodiscard]] bool IsSimpleStyle() const noexcept { return simpleStyle == 1; }
    void SetMaxRecursion(int levels) noexcept { maxRecursion = levels; }
    [[nodiscard]] int GetMaxRecursion() const noexcept { return maxRecursion; }
    void SetMaxElementsInSequence(int count) noexcept { maxElementsInSequence = count; }
    [[nodiscard]] int GetMaxElementsInSequence() const noexcept { return maxElementsInSequence; }
    /// Zero or less is no limit.
    void SetMaxReprStringSizeMB(int size) noexcept { maxReprStringSizeMB = size; }
    [[nodiscard]] int GetMaxReprStringSizeMB() const noexcept { return maxReprStringSizeMB; }
    void SetZeroTolerance(double tolerance) noexcept { zeroTolerance = tolerance; }
    [[nodiscard]] double GetZeroTolerance() const noexcept { return zeroTolerance; }
    void SetSignificantDigits(int digits) noexcept { significantDigits = digits; }
    [[nodiscard]] int GetSignificantDigits() const noexcept { return significantDigits; }
    /// The text for a member past the recursion limit; its first "%s" stands for the type name.
    void SetMaxRecursionString(const cow_String& text) noexcept { maxRecursionString = text; }
    /// That text for `object`: the first "%s" replaced, all else as it stands; "" for null.
    [[nodiscard]] cow_String GetMaxRecursionString(const omu_InterfaceObj* object) const;
    void SetSortedMembersMethods(bool sorted) noexcept { sortedMembersMethods = sorted; }
    [[nodiscard]] bool GetSortedMembersMethods() const noexcept { return sortedMembersMethods; }

  private:
    friend class omi_Singleton<omu_TextRepr>;
    friend class omi_SingletonBase<omu_TextRepr>;
    static omu_TextRepr* singleton;
    omu_TextRepr();
    ~omu_TextRepr();

    int simpleStyle = 0;
    int maxRecursion = 1;
    int maxElementsInSequence = 2147483647;
    int maxReprStringSizeMB = 1;
    double zeroTolerance = 1e-06;
    int significantDigits = 3;
    cow_String maxRecursionString = "%s object";
    /// Without a meaning; keeps its place.
    [[maybe_unused]] bool reserved = false;
    bool sortedMembersMethods = true;
};
