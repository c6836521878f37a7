#pragma once

#include "cow/cow_List.h"

/// A growable list of arrays of integers of any lengths, as ragged arguments are read into. A copy
/// costs an increment and shares all rows until one is written.
using omu_ListArrayInt = cow_List<cow_List<int>>;
