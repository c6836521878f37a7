#pragma once

#include <concepts>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "ann/annC_Anchor.h"
#include "ann/annC_Annotation.h"
#include "ann/annC_InterfaceObj.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_CmdExceptions.h"

/// How scripts reach the members and methods of annotations: each class has one table of its
/// members and one of its methods.

/// A point among arguments: a sequence of two numbers.
[[nodiscard]] bool omu_Convert(const omu_Primitive& value, annC_Point2D& out);
template <>
inline constexpr const char* omu_ExpectedWord<annC_Point2D> = "sequence of Doubles";

/// An anchor among arguments: the name of a position, three numbers for a point of the model, or
/// two for one of the viewport. Null when none is given.
struct annC_AnchorArgument {
    std::unique_ptr<annC_Anchor> anchor;
};
[[nodiscard]] bool omu_Convert(const omu_Primitive& value, annC_AnchorArgument& out,
                               omu_TypeFault& fault);

/// Whether an argument is given, of whatever type.
struct annC_GivenArgument {
    bool isGiven = false;
};
[[nodiscard]] bool omu_Convert(const omu_Primitive& value, annC_GivenArgument& out,
                               omu_TypeFault& fault);

/// The value of an anchor for scripts.
[[nodiscard]] annC_InterfaceObj::Result annC_AnchorPrim(const annC_Anchor& anchor);
/// The value of a point for scripts.
[[nodiscard]] annC_InterfaceObj::Result annC_PointPrim(const annC_Point2D& point);

/// The next argument of a command, by its position or by its keyword.
class annC_Argument {
  public:
    annC_Argument(omu_Arguments& all, const cow_String& name) : arguments(all), keyword(name) {}

    /// The value that is given, else `current`.
    template <omu_GetType T>
    [[nodiscard]] T operator()(T current) const {
        arguments.Get(current, keyword);
        return current;
    }

  private:
    omu_Arguments& arguments;
    const cow_String& keyword;
};

/// A member of an annotation; without `set` it only reports.
template <class Annotation>
struct annC_Member {
    std::string_view name;
    annC_InterfaceObj::Result (*get)(const Annotation& annotation);
    void (*set)(Annotation& annotation, const annC_Argument& argument) = nullptr;
};

/// A method of an interface object.
template <class Object>
struct annC_Method {
    std::string_view name;
    annC_InterfaceObj::Result (*call)(Object& object, omu_Arguments& arguments);
};

/// The names in a table of members or methods.
template <class Row, std::size_t n>
[[nodiscard]] cow_List<cow_String> annC_NamesOf(const Row (&table)[n]) {
    cow_List<cow_String> names;
    for (const Row& row : table) names.Append(row.name);
    return names;
}

/// The row of `name`; null when there is none.
template <class Row, std::size_t n>
[[nodiscard]] const Row* annC_FindRow(const Row (&table)[n], const cow_String& name) {
    for (const Row& row : table) {
        if (row.name == name.View()) return &row;
    }
    return nullptr;
}

/// A copy of `current` with the members that the remaining arguments give, in the order of the
/// table. Raises the first fault of the arguments, then `omu_AccessErrorException` for a member
/// that only reports.
template <class Annotation, std::size_t n>
[[nodiscard]] Annotation annC_WithArguments(const annC_Member<Annotation> (&table)[n],
                                            const Annotation& current, omu_Arguments& arguments) {
    Annotation changed(current);
    cow_String refused;
    arguments.Optional();
    for (const annC_Member<Annotation>& member : table) {
        const cow_String name(member.name);
        const annC_Argument argument(arguments, name);
        if (member.set) {
            member.set(changed, argument);
        } else if (argument(annC_GivenArgument()).isGiven) {
            refused = name;
        }
    }
    arguments.End();
    if (!refused.IsEmpty()) {
        KTSBasThrow(omu_AccessErrorException(atr("%s cannot be set", refused)));
    }
    return changed;
}
