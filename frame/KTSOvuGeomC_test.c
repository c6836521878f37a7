/* A plain C program that loads libraries at run time and uses their undecorated entries: the
 * library itself, and its frame over stand-ins that tell who was called. */

#include "frame/KTSOvuGeomC.h"

#include <stdio.h>
#include <string.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#if defined(_WIN32)

typedef HMODULE Library;
typedef FARPROC Address;

static Library Open(const char* path) { return LoadLibraryA(path); }
static int Close(Library library) { return FreeLibrary(library) != 0; }
static Address Find(Library library, const char* name) { return GetProcAddress(library, name); }

#else

typedef void* Library;
typedef void* Address;

static Library Open(const char* path) { return dlopen(path, RTLD_NOW); }
static int Close(Library library) { return dlclose(library) == 0; }
static Address Find(Library library, const char* name) { return dlsym(library, name); }

#endif

/* Whatever the loader answers has the representation of the function's own type. */
typedef union {
    Address address;
    unsigned (*initialize)(void);
    void (*finalize)(void);
    void (*sendTrace)(void (*receiver)(char));
} Entry;

/* The order of the start-up, of the shut-down, and what the loader has done so far. */
static const char kUp[] = "BSCMWIVODGAU";
static const char kUpAndDown[] = "BSCMWIVODGAUuagdoviwmcsb";
static char trace[64];

static void Receive(char letter) {
    const size_t length = strlen(trace);
    if (length + 1 < sizeof trace) trace[length] = letter;
}

/* Three matched pairs of calls, each of which adds one use to the loader's; what is wrong, or
 * nothing. */
static const char* CountUses(Library library) {
    Entry initialize, finalize;
    int call;
    initialize.address = Find(library, "KTSOvuGeom_initializeC");
    finalize.address = Find(library, "KTSOvuGeom_finalizeC");
    if (!initialize.address || !finalize.address) return "has not all entry points";
    for (call = 0; call < 3; ++call) {
        if (initialize.initialize() != 2) return "does not count the user beside the loader";
        finalize.finalize();
    }
    return NULL;
}

static const char* Use(const char* path) {
    const Library library = Open(path);
    const char* const fault = library ? CountUses(library) : "does not load";
    if (fault) return fault;
    return Close(library) ? NULL : "does not unload";
}

/* The same for the traced frame: loading brings up, pairs do nothing, unloading brings down. */
static const char* Trace(const char* path) {
    const Library library = Open(path);
    Entry sendTrace;
    const char* fault;
    if (!library) return "does not load";
    sendTrace.address = Find(library, "test_SendTrace");
    if (!sendTrace.address) return "has no trace";
    memset(trace, 0, sizeof trace);
    sendTrace.sendTrace(Receive);
    fault = CountUses(library);
    if (fault) return fault;
    if (strcmp(trace, kUp) != 0) return "is not brought up in order by the loader";
    if (!Close(library)) return "does not unload";
    return strcmp(trace, kUpAndDown) == 0 ? NULL : "is not brought down in reverse order";
}

static int Twice(const char* (*load)(const char*), const char* path) {
    int round;
    for (round = 0; round < 2; ++round) {
        const char* const fault = load(path);
        if (!fault) continue;
        fprintf(stderr, "%s %s %s\n", path, fault, trace);
        return 1;
    }
    return 0;
}

int main(void) { return Twice(Use, KTSOVUGEOM_LIBRARY) || Twice(Trace, KTSOVUGEOM_ORDER_LIBRARY); }
