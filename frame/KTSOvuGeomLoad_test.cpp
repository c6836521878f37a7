// Loads the library at run time into a program that holds the foundation up itself.

#include <gtest/gtest.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include "foundation/alloc/mem_Alloc.h"
#include "foundation/coreutils/KTSBasCoreUtils.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/KTSBasShared.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "testing/test_Rounds.h"

namespace {

constexpr char kLibrary[] = KTSOVUGEOM_LIBRARY;

#if defined(_WIN32)
auto Load() { return LoadLibraryA(kLibrary); }
bool Unload(HMODULE library) { return FreeLibrary(library) != 0; }
bool IsLoaded() { return GetModuleHandleA(kLibrary) != nullptr; }
#else
auto Load() { return dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL); }
bool Unload(void* library) { return dlclose(library) == 0; }
bool IsLoaded() { return dlopen(kLibrary, RTLD_NOW | RTLD_NOLOAD) != nullptr; }
#endif

TEST(KTSOvuGeomLoad, UnloadingDetachesAndLeavesNoPointerInTheFoundation) {
    int count = 0;
    KTSBasCoreUtils_initialize(count);
    KTSBasShared_initialize(count);
    cls_MetadataRegistrar& registrar = omi_Singleton<cls_MetadataRegistrar>::Instance();
    (void)registrar.ClassRegistrar();
    const std::size_t blocks = mem_LiveBlocks();
    for (int i = 0; i < test_Rounds(1000); ++i) {
        const auto library = Load();
        ASSERT_NE(library, nullptr) << kLibrary;
        ASSERT_EQ(typ_ArchCompTable::RowCount(778), 15);
        ASSERT_NE(registrar.ClassRegistrar().Find(typ_TypeId(778, 1)), nullptr);
        ASSERT_TRUE(Unload(library));
        ASSERT_FALSE(IsLoaded());
        ASSERT_EQ(typ_ArchCompTable::RowCount(778), 0);
        ASSERT_EQ(registrar.Size(), 0);
        ASSERT_EQ(registrar.ClassRegistrar().Find(typ_TypeId(778, 1)), nullptr);
        ASSERT_EQ(mem_LiveBlocks(), blocks);
    }
    KTSBasShared_finalize(count);
    KTSBasCoreUtils_finalize(count);
    EXPECT_EQ(count, 0);
}

}  // namespace
