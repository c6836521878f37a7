/* Loads the library whose path is the argument and calls its undecorated entry points from C. */

#include <frame/KTSOvuGeomC.h>
#include <stdint.h>
#include <stdio.h>

#if defined(_WIN32)
#include <windows.h>
typedef HMODULE library_handle;
typedef FARPROC address;
static library_handle load(const char* path) { return LoadLibraryA(path); }
static address look_up(library_handle of, const char* name) { return GetProcAddress(of, name); }
static int unload(library_handle loaded) { return FreeLibrary(loaded) != 0; }
#else
#include <dlfcn.h>
typedef void* library_handle;
typedef void* address;
static library_handle load(const char* path) { return dlopen(path, RTLD_NOW); }
static address look_up(library_handle of, const char* name) { return dlsym(of, name); }
static int unload(library_handle loaded) { return dlclose(loaded) == 0; }
#endif

static library_handle library;
static int failures = 0;

static void expect(int holds, const char* what) {
    if (holds) return;
    fprintf(stderr, "not so: %s\n", what);
    ++failures;
}

/* Sets the function pointer at `function` to the entry point `name`; false when there is none. */
static int find(const char* name, void* function) {
    const address found = look_up(library, name);
    *(address*)function = found;
    expect(found != NULL, name);
    return found != NULL;
}

static void call_start_and_end(void) {
    unsigned (*initialize)(void);
    void (*finalize)(void);
    if (!find("KTSOvuGeom_initializeC", &initialize) || !find("KTSOvuGeom_finalizeC", &finalize))
        return;
    expect(initialize() == 2, "the loader holds one use, this program the second");
    expect(initialize() == 3, "a nested use counts");
    finalize();
    finalize();
    expect(initialize() == 2, "matched pairs leave the count");
    finalize();
}

static void call_rotations(void) {
    void (*matrix_of_quaternion)(const double*, double*, int32_t*);
    void (*matrix_of_vector)(double*, const double*, const double*);
    double matrix[9];
    double no_rotation[3] = {0, 0, 0}, tolerance = 1e-9, half_turn_about_z[4] = {0, 0, 1, 0};
    int32_t flag = -1;
    if (find("ktsovuutf_quat2rot3d", &matrix_of_quaternion)) {
        matrix_of_quaternion(half_turn_about_z, matrix, &flag);
        expect(flag == 0, "a unit quaternion is accepted");
        expect(matrix[0] == -1 && matrix[4] == -1 && matrix[8] == 1, "a half turn about z");
    }
    if (find("ktsovu_rotmatfromrotvect", &matrix_of_vector)) {
        matrix_of_vector(matrix, no_rotation, &tolerance);
        expect(matrix[0] == 1 && matrix[1] == 0 && matrix[8] == 1, "no rotation is the identity");
    }
}

static void find_the_rest(void) {
    static const char* const names[] = {
        "HSVToRGB", "RGBToHSV", "CMYToRGB", "RGBToCMY", "MixHSV",
        "MixRGB",   "PctToHSV", "PctToRGB", "RGBDist",  "g3d_Camera_SetTargetRotate"};
    void (*function)(void);
    for (unsigned i = 0; i < sizeof names / sizeof *names; ++i) find(names[i], &function);
}

int main(int argc, char** argv) {
    library = argc == 2 ? load(argv[1]) : NULL;
    if (!library) {
        fputs(argc == 2 ? "the library does not load\n" : "usage: entries LIBRARY\n", stderr);
        return 2;
    }
    call_start_and_end();
    call_rotations();
    find_the_rest();
    expect(unload(library), "the library unloads");
    return failures;
}
