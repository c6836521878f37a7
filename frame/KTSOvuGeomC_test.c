/* A plain C program that loads the library at run time and uses its undecorated entries. */

#include "frame/KTSOvuGeomC.h"

#include <stdio.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

typedef unsigned (*InitializeFunction)(void);
typedef void (*FinalizeFunction)(void);

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
    InitializeFunction initialize;
    FinalizeFunction finalize;
} Entry;

/* Loads the library, counts three uses, unloads it; 0 when all was as expected. */
static int LoadAndUse(void) {
    const Library library = Open();
    Entry initialize, finalize;
    unsigned users;
    int call;
    if (!library) {
        fprintf(stderr, "%s does not load\n", KTSOVUGEOM_LIBRARY);
        return 1;
    }
    initialize.address = Find(library, "KTSOvuGeom_initializeC");
    finalize.address = Find(library, "KTSOvuGeom_finalizeC");
    if (!initialize.address || !finalize.address) {
        fprintf(stderr, "%s: entry points missing\n", KTSOVUGEOM_LIBRARY);
        return 1;
    }
    for (call = 0; call < 3; ++call) {
        users = initialize.initialize();
        if (users != 2) {
            fprintf(stderr, "KTSOvuGeom_initializeC returned %u instead of 2\n", users);
            return 1;
        }
        finalize.finalize();
    }
    if (!Close(library)) {
        fprintf(stderr, "%s does not unload\n", KTSOVUGEOM_LIBRARY);
        return 1;
    }
    return 0;
}

int main(void) { return LoadAndUse() || LoadAndUse(); }
