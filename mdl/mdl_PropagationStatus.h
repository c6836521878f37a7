#pragma once

#include <string_view>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"

/// How an object of one analysis step came from the step before.
enum mdl_PropagationStatusEnm : int {
    mdl_NOT_YET_ACTIVE = 0,
    mdl_CREATED = 1,
    mdl_PROPAGATED = 2,
    mdl_MODIFIED = 3,
    mdl_DEACTIVATED = 4,
    mdl_NO_LONGER_ACTIVE = 5,
    mdl_TYPE_NOT_APPLICABLE = 6,
    mdl_INSTANCE_NOT_APPLICABLE = 7,
    mdl_BUILT_INTO_BASE_STATE = 8,
    mdl_PROPAGATED_FROM_BASE_STATE = 9,
    mdl_MODIFIED_FROM_BASE_STATE = 10,
    mdl_DEACTIVATED_FROM_BASE_STATE = 11,
    mdl_BUILT_INTO_MODES = 12,
    mdl_COMPUTED = 13,
    mdl_PROPAGATED_FROM_COMPUTED = 14,
    mdl_RESET_TO_INITIAL = 15,
    mdl_PROPAGATED_FROM_FREQUENCY = 16,
};

/// Statuses of several steps.
using mdl_PropagationStatusList = cow_List<mdl_PropagationStatusEnm>;

/// What stands behind the value of an attribute. Archives keep the name, so the numbers are those
/// of this process alone.
enum mdl_PropStateEnm : int {
    mdl_UNSET,           ///< no value was given yet
    mdl_UNCHANGED,       ///< the value stands as it was given
    mdl_FREED,           ///< the value was given up
    mdl_NOT_APPLICABLE,  ///< the attribute has no meaning here
    mdl_INVALID,         ///< the state could not be told
    mdl_ABS_DEFAULT,     ///< the value is the one that is the default everywhere
    mdl_COMP_DEFAULT,    ///< the value is a default that was computed
};

/// True for the states in which an attribute has a value: `mdl_UNCHANGED`, `mdl_ABS_DEFAULT` and
/// `mdl_COMP_DEFAULT`.
[[nodiscard]] constexpr bool mdl_HasValue(mdl_PropStateEnm state) noexcept {
    return state == mdl_UNCHANGED || state == mdl_ABS_DEFAULT || state == mdl_COMP_DEFAULT;
}

/// The name, such as "NOT_YET_ACTIVE" or "UNSET"; "" for a number that has none.
[[nodiscard]] KTSOVUGEOM_API const char* mdl_NameOf(mdl_PropagationStatusEnm status) noexcept;
[[nodiscard]] KTSOVUGEOM_API const char* mdl_NameOf(mdl_PropStateEnm state) noexcept;
/// Puts the status or state of this name into the output; false, and the output is untouched, when
/// there is none.
KTSOVUGEOM_API bool mdl_Find(std::string_view name, mdl_PropagationStatusEnm& status) noexcept;
KTSOVUGEOM_API bool mdl_Find(std::string_view name, mdl_PropStateEnm& state) noexcept;
