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

/* A function and an object pointer have one representation on both systems. */
typedef union {
    void* address;
    InitializeFunction initialize;
    FinalizeFunction finalize;
} Entry;

static Entry Load(const char* name) {
    Entry entry;
#if defined(_WIN32)
    HMODULE library = LoadLibraryA(KTSOVUGEOM_LIBRARY);
    entry.address = library ? (void*)GetProcAddress(library, name) : NULL;
#else
    void* library = dlopen(KTSOVUGEOM_LIBRARY, RTLD_NOW);
    entry.address = library ? dlsym(library, name) : NULL;
#endif
    return entry;
}

int main(void) {
    const Entry initialize = Load("KTSOvuGeom_initializeC");
    const Entry finalize = Load("KTSOvuGeom_finalizeC");
    unsigned users;
    int call;
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
    return 0;
}
