/* A plain C program that loads the library at run time and uses its undecorated entries. */

#include "frame/KTSOvuGeomC.h"

#include <stdio.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#if defined(_WIN32)

typedef HMODULE Library;
typedef FARPROC Address;

static Library Open(void) { return LoadLibraryA(KTSOVUGEOM_LIBRARY); }
static int Close(Library library) { return FreeLibrary(library) != 0; }
static Address Find(Library library, const char* name) { return GetProcAddress(library, name); }

#else

typedef void* Library;
typedef void* Address;

static Library Open(void) { return dlopen(KTSOVUGEOM_LIBRARY, RTLD_NOW); }
static int Close(Library library) { return dlclose(library) == 0; }
static Address Find(Library library, const char* name) { return dlsym(library, name); }

#endif

/* Whatever the loader answers has the representation of the function's own type. */
typedef union {
    Address address;
    unsigned (*initialize)(void);
    void (*finalize)(void);
} Entry;

/* Loads the library, counts three uses, unloads it; what is wrong with it, or nothing. */
static const char* LoadAndUse(void) {
    const Library library = Open();
    Entry initialize, finalize;
    int call;
    if (!library) return "does not load";
    initialize.address = Find(library, "KTSOvuGeom_initializeC");
    finalize.address = Find(library, "KTSOvuGeom_finalizeC");
    if (!initialize.address || !finalize.address) return "has not all entry points";
    for (call = 0; call < 3; ++call) {
        if (initialize.initialize() != 2) return "does not count the user beside the loader";
        finalize.finalize();
    }
    return Close(library) ? NULL : "does not unload";
}

int main(void) {
    int round;
    for (round = 0; round < 2; ++round) {
        const char* fault = LoadAndUse();
        if (!fault) continue;
        fprintf(stderr, "%s %s\n", KTSOVUGEOM_LIBRARY, fault);
        return 1;
    }
    return 0;
}
