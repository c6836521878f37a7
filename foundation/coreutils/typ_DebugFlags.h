#pragma once

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"

/// The levels of the application's numbered debug flags, which switch diagnostics on and never
/// change behaviour. All are 0, off, until the host sets them, which it does before other threads
/// run.
class KTSBASCOREUTILS_API typ_DebugFlags {
  public:
    static constexpr int kCount = 256;

    /// The level of `flag`; 0 for a number that is none.
    [[nodiscard]] static int Level(int flag) noexcept;
    /// Sets the level of `flag`; nothing for a number that is none.
    static void SetLevel(int flag, int level) noexcept;
};
