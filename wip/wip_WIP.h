#pragma once

#include "foundation/coreutils/omi_Singleton.h"
#include "wip/wip_Progress.h"
#include "wip/wip_WIPBase.h"

/// The reporting object of the process, with the progress stack of the operation that runs.
///
/// Created on first use and destroyed by the shut-down of the library; the registered reporter is
/// the host's and is registered anew after a restart.
class KTSOVUGEOM_API wip_WIP : public wip_WIPBase {
  public:
    [[nodiscard]] static wip_WIP& Instance();

    /// The progress stack of the process; `wip_ProgressObj` is the safe way to use it.
    [[nodiscard]] wip_Progress& Progress() noexcept { return progress; }

  private:
    friend class omi_Singleton<wip_WIP>;
    friend class omi_SingletonBase<wip_WIP>;
    static wip_WIP* singleton;
    wip_WIP();
    ~wip_WIP();

    wip_Progress progress;
};
