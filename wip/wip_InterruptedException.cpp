#include "wip/wip_InterruptedException.h"

wip_InterruptedException::wip_InterruptedException() noexcept = default;

wip_InterruptedException::wip_InterruptedException(const wip_InterruptedException&) noexcept =
    default;

wip_InterruptedException& wip_InterruptedException::operator=(
    const wip_InterruptedException&) noexcept = default;

wip_InterruptedException::~wip_InterruptedException() = default;

void wip_InterruptedException::Propagate() const { throw wip_InterruptedException(*this); }

const char* wip_InterruptedException::what() const noexcept { return "interrupted"; }
