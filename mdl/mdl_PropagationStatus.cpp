#include "mdl/mdl_PropagationStatus.h"

#include <cstddef>
#include <iterator>

namespace {

constexpr const char* kStatusNames[] = {
    "NOT_YET_ACTIVE",
    "CREATED",
    "PROPAGATED",
    "MODIFIED",
    "DEACTIVATED",
    "NO_LONGER_ACTIVE",
    "TYPE_NOT_APPLICABLE",
    "INSTANCE_NOT_APPLICABLE",
    "BUILT_INTO_BASE_STATE",
    "PROPAGATED_FROM_BASE_STATE",
    "MODIFIED_FROM_BASE_STATE",
    "DEACTIVATED_FROM_BASE_STATE",
    "BUILT_INTO_MODES",
    "COMPUTED",
    "PROPAGATED_FROM_COMPUTED",
    "RESET_TO_INITIAL",
    "PROPAGATED_FROM_FREQUENCY",
};
static_assert(std::size(kStatusNames) == mdl_PROPAGATED_FROM_FREQUENCY + 1);

constexpr const char* kStateNames[] = {
    "UNSET", "UNCHANGED", "FREED", "NOT_APPLICABLE", "INVALID", "ABS_DEFAULT", "COMP_DEFAULT",
};
static_assert(std::size(kStateNames) == mdl_COMP_DEFAULT + 1);

template <std::size_t size>
const char* NameAt(const char* const (&names)[size], int number) noexcept {
    return number >= 0 && number < static_cast<int>(size) ? names[number] : "";
}

template <std::size_t size, class Enumeration>
bool FindIn(const char* const (&names)[size], std::string_view name, Enumeration& found) noexcept {
    for (std::size_t i = 0; i < size; ++i) {
        if (name != names[i]) continue;
        found = static_cast<Enumeration>(i);
        return true;
    }
    return false;
}

}  // namespace

const char* mdl_NameOf(mdl_PropagationStatusEnm status) noexcept {
    return NameAt(kStatusNames, status);
}

const char* mdl_NameOf(mdl_PropStateEnm state) noexcept { return NameAt(kStateNames, state); }

bool mdl_Find(std::string_view name, mdl_PropagationStatusEnm& status) noexcept {
    return FindIn(kStatusNames, name, status);
}

bool mdl_Find(std::string_view name, mdl_PropStateEnm& state) noexcept {
    return FindIn(kStateNames, name, state);
}
