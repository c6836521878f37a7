#include "foundation/coreutils/typ_DebugFlags.h"

namespace {

constinit int levels[typ_DebugFlags::kCount] = {};

bool IsFlag(int flag) { return flag >= 0 && flag < typ_DebugFlags::kCount; }

}  // namespace

int typ_DebugFlags::Level(int flag) noexcept { return IsFlag(flag) ? levels[flag] : 0; }

void typ_DebugFlags::SetLevel(int flag, int level) noexcept {
    if (IsFlag(flag)) levels[flag] = level;
}
