// Loads the library at run time into a program that holds the foundation up itself.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "foundation/alloc/mem_Alloc.h"
#include "foundation/coreutils/KTSBasCoreUtils.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/KTSBasShared.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "testing/test_Rounds.h"

namespace {

constexpr char kLibrary[] = KTSOVUGEOM_LIBRARY;

TEST(KTSOvuGeomLoad, UnloadingDetachesAndLeavesNoPointerInTheFoundation) {
    int count = 0;
    KTSBasCoreUtils_initialize(count);
    KTSBasShared_initialize(count);
    cls_MetadataRegistrar& registrar = omi_Singleton<cls_MetadataRegistrar>::Instance();
    (void)registrar.ClassRegistrar();
    const std::size_t blocks = mem_LiveBlocks();
    for (int i = 0; i < test_Rounds(1000); ++i) {
        void* library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        ASSERT_EQ(typ_ArchCompTable::RowCount(778), 15);
        ASSERT_NE(registrar.ClassRegistrar().Find(typ_TypeId(778, 1)), nullptr);
        ASSERT_EQ(dlclose(library), 0);
        ASSERT_EQ(dlopen(kLibrary, RTLD_NOW | RTLD_NOLOAD), nullptr);
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
