#include "frame/detail/KTSOvuGeomLoader.h"

#if defined(_WIN32)

#include <windows.h>

static_assert(DLL_PROCESS_DETACH == static_cast<unsigned>(KTSOvuGeomLoaderReason::ProcessDetach));
static_assert(DLL_PROCESS_ATTACH == static_cast<unsigned>(KTSOvuGeomLoaderReason::ProcessAttach));

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    KTSOvuGeom_LoaderEvent(static_cast<KTSOvuGeomLoaderReason>(reason));
    return TRUE;
}

#else

namespace {

[[gnu::constructor]] void Attach() {
    KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ProcessAttach);
}

[[gnu::destructor]] void Detach() { KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason::ProcessDetach); }

}  // namespace

#endif
