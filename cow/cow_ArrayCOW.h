#pragma once

#include "cow/cow_COW.h"

/// The copy-on-write handle for values held inside trees and dictionaries: `cow_COW` under the name
/// that such holders use.
template <class T, class Policy = cow_Direct<T>>
class cow_ArrayCOW : public cow_COW<T, Policy> {
  public:
    using cow_COW<T, Policy>::cow_COW;
    using cow_COW<T, Policy>::operator=;
};
