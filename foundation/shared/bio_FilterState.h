#pragma once

#include "foundation/shared/KTSBasSharedExport.h"

/// What the user of a filter keeps with it for the time of the stream, such as what it worked out
/// about the classes that occur in it.
class KTSBASSHARED_API bio_FilterState {
  public:
    virtual ~bio_FilterState();
};
