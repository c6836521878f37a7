#pragma once

/// Why the loader of the operating system calls the library, in the numbers of Windows.
enum class KTSOvuGeomLoaderReason : unsigned {
    ProcessDetach = 0,
    ProcessAttach = 1,
    ThreadAttach = 2,
    ThreadDetach = 3,
};

/// What happens when a process attaches to the library (one use on the loader's own count) and
/// detaches from it (that use is taken away). Other reasons do nothing. The loader is told of no
/// failure: a start-up that throws is undone, and a client may try again.
void KTSOvuGeom_LoaderEvent(KTSOvuGeomLoaderReason reason) noexcept;
