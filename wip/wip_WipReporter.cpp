#include "wip/wip_WipReporter.h"

#include "wip/wip_WIP.h"

// Asking for the instance would create it anew after the shut-down.
wip_WipReporter::~wip_WipReporter() {
    if (omi_Singleton<wip_WIP>::Exists()) wip_WIP::Instance().RemoveWipReporter(this);
}

void wip_WipReporter::CommandDone() {}

bool wip_WipReporter::Interrupted() { return false; }
