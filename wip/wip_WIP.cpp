#include "wip/wip_WIP.h"

constinit wip_WIP* wip_WIP::singleton = nullptr;

wip_WIP::wip_WIP() = default;

wip_WIP::~wip_WIP() = default;

wip_WIP& wip_WIP::Instance() { return omi_Singleton<wip_WIP>::Instance(); }
