#pragma once

#include "foundation/coreutils/atr_String.h"

/// The piece `key` of a message in the asked mode: looked up in the catalogue or as it stands, then
/// filled with the arguments. Pieces are joined after they are filled and never filled again, so
/// that texts of users may hold anything.
template <class... Arguments>
[[nodiscard]] cow_String omu_MessagePiece(KTSBasStringMode mode, const cow_String& key,
                                          const Arguments&... arguments) {
    return atr(atr_String(key).Text(mode).View(), arguments...);
}
