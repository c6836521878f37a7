#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/shared/KTSBasException.h"

/// The user stopped the operation. It is no fault of a command, so that no handler of such faults
/// swallows it; the host's boundary to scripts turns it into Python's KeyboardInterrupt.
class KTSOVUGEOM_API wip_InterruptedException final : public KTSBasException {
  public:
    wip_InterruptedException() noexcept;
    wip_InterruptedException(const wip_InterruptedException&) noexcept;
    wip_InterruptedException& operator=(const wip_InterruptedException&) noexcept;
    ~wip_InterruptedException() override;

    [[noreturn]] void Propagate() const override;
    /// "interrupted".
    [[nodiscard]] const char* what() const noexcept override;
};
