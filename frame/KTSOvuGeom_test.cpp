#include "frame/KTSOvuGeom.h"

#include <gtest/gtest.h>

#include <new>

#include "foundation/alloc/mem_Alloc.h"
#include "foundation/basicutils/KTSBasOmniSSELevel.h"
#include "foundation/coreutils/omi_Singleton.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "testing/test_Environment.h"
#include "testing/test_FailingAllocator.h"

namespace {

/// Takes the loader's use away for the test, so that the library is down.
class KTSOvuGeomDown : public testing::Test {
  protected:
    void SetUp() override { KTSOvuGeom_finalize(loaderCount); }
    void TearDown() override { KTSOvuGeom_initialize(loaderCount); }

    static void ExpectNothingLeft() {
        EXPECT_EQ(mem_LiveBlocks(), 0u);
        EXPECT_EQ(omi_SingletonRegistry::Size(), 0);
        constexpr unsigned short components[] = {10, 19, 31, 35, 36, 778, 848};
        for (const unsigned short component : components) {
            EXPECT_EQ(typ_ArchCompTable::RowCount(component), 0) << component;
        }
    }

    int loaderCount = 14;
};

TEST(KTSOvuGeom, ClassTablesStandComplete) {
    const struct {
        unsigned short component;
        int rows;
    } tables[] = {{10, 27}, {19, 51}, {36, 4}, {778, 15}, {848, 9}};
    for (const auto& table : tables) {
        EXPECT_EQ(typ_ArchCompTable::RowCount(table.component), table.rows);
        EXPECT_EQ(typ_ArchCompTable::Kind(typ_TypeId(table.component, 0)), typ_EMPTY_ROW);
    }
    const struct {
        std::uint32_t component, row;
        const char* name;
        std::uint32_t kind, parent;
    } classes[] = {
        {778, 3, "gsl_Vector", 7, typ_TypeId(778, 1)},
        {778, 9, "gsl_ArrayPoint", 7, 1},
        {778, 12, "gsl_ModelSegmentArray", 7, 1},
        {36, 1, "g3d_Vector", 7, 1},
        {36, 3, "g3d_ColorErrorException", 4, typ_TypeId(31, 3)},
        {848, 3, "annC_AnnotationContainer", 7, typ_TypeId(10, 1)},
        {848, 5, "annC_Text", 7, typ_TypeId(848, 2)},
        {848, 7, "annC_ViewportAnchor", 7, typ_TypeId(848, 1)},
        {10, 1, "mdl_Extension", 7, 1},
        {10, 2, "", 0, 1},
        {10, 12, "", 0, 1},
        {10, 13, "mdl_Repository", 7, typ_TypeId(10, 1)},
        {10, 15, "mdl_PropBool", 7, 1},
        {10, 26, "mdl_PropDoubleArray", 7, 1},
        {19, 1, "omu_TypeErrorException", 4, typ_TypeId(31, 3)},
        {19, 6, "omu_GenericTypeErrorException", 4, typ_TypeId(19, 1)},
        {19, 17, "omu_PyCorvixException", 4, typ_TypeId(31, 3)},
        {19, 18, "omu_PrimDictionaryBase", 7, typ_TypeId(19, 21)},
        {19, 19, "omu_GuiAccessErrorException", 4, typ_TypeId(31, 3)},
        {19, 20, "omu_FontErrorException", 4, typ_TypeId(31, 3)},
        {19, 21, "omu_Primitive", 7, 1},
        {19, 41, "omu_PrimIntDictionary", 7, typ_TypeId(19, 18)},
        {19, 50, "", 0, 1},
    };
    for (const auto& expected : classes) {
        const std::uint32_t id = typ_TypeId(expected.component, expected.row);
        EXPECT_EQ(typ_ArchCompTable::Name(id), expected.name);
        EXPECT_EQ(typ_ArchCompTable::Kind(id), expected.kind) << expected.name;
        EXPECT_EQ(typ_ArchCompTable::Parent(id), expected.parent) << expected.name;
    }
    EXPECT_EQ(typ_TypeId(778, 1), 50987009u);
    EXPECT_TRUE(typ_ArchCompTable::IsParent(typ_TypeId(19, 21), typ_TypeId(19, 42)));
}

TEST_F(KTSOvuGeomDown, ShutDownLeavesNothingAndAStartBringsAllBack) {
    EXPECT_EQ(loaderCount, 0);
    ExpectNothingLeft();
    int count = 0;
    KTSOvuGeom_initialize(count);
    EXPECT_EQ(count, 14);
    EXPECT_EQ(typ_ArchCompTable::RowCount(778), 15);
    (void)omi_Singleton<cls_MetadataRegistrar>::Instance().ClassRegistrar();
    KTSOvuGeom_finalize(count);
    EXPECT_EQ(count, 0);
    ExpectNothingLeft();
}

TEST_F(KTSOvuGeomDown, AStartWithoutMemoryIsUndone) {
    int failures = 0;
    for (bool started = false; !started; ++failures) {
        int count = 0;
        try {
            const test_FailingAllocator failingAllocator(failures + 1);
            KTSOvuGeom_initialize(count);
            started = true;
            KTSOvuGeom_finalize(count);
        } catch (const std::bad_alloc&) {
        }
        EXPECT_EQ(count, 0);
        ExpectNothingLeft();
    }
    EXPECT_GT(failures, 50);
}

TEST_F(KTSOvuGeomDown, TheStartForcesTheProcessorLevelOfTheEnvironment) {
    test_SetVariable("ZRX_SSE_LEVEL", "SSE42");
    int count = 0;
    KTSOvuGeom_initialize(count);
    KTSOvuGeom_finalize(count);
    test_SetVariable("ZRX_SSE_LEVEL", nullptr);
    test_SetVariable("ZRX_SSE_LEVEL_NOTIFIED", nullptr);
    EXPECT_EQ(KTSBasOmniFeatureIndicator(), 2u * KTSBAS_CPU_SSE42 - 1);
}

}  // namespace
