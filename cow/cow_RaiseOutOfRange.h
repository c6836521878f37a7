#pragma once

#include <cstdlib>

/// Ends the process at once (abort): an index outside a container, or a key that is not in a map,
/// is a programming error and not a condition to recover from. `index` is there for the debugger.
///
/// Kept: no message is printed and no exception is thrown, where one would have expected
/// `std::out_of_range`; callers rely on an index error never being caught and carried on with.
[[noreturn]] inline void RaiseOutOfRange([[maybe_unused]] int index) noexcept { std::abort(); }
