#include "g3d/KTSOvuG3d.h"

#include <gtest/gtest.h>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "g3d/g3d_ColorMap.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_Vector.h"

TEST(KTSOvuG3d, RegistersItsClassesOnceAndLeavesNothingBehind) {
    using Registrar = omi_Singleton<cls_MetadataRegistrar>;
    for (int round = 0; round < 2; ++round) {
        int count = 0;
        KTSOvuG3d_initialize(count);
        KTSOvuG3d_initialize(count);
        EXPECT_EQ(count, 1);
        EXPECT_TRUE(omi_Singleton<g3d_ColorMap>::Exists());
        EXPECT_EQ(g3d_ColorMap::Instance().Size(), 28);
        g3d_ColorMap::Instance().Add("Mine", {});
        EXPECT_EQ(typ_ArchCompTable::RowCount(36), 4);
        EXPECT_EQ(typ_ArchCompTable::Name(g3d_Vector::TypeId()), "g3d_Vector");
        EXPECT_EQ(typ_ArchCompTable::Name(g3d_Point::TypeId()), "g3d_Point");
        EXPECT_EQ(typ_ArchCompTable::Parent(typ_TypeId(36, 3)), typ_TypeId(31, 3));

        cls_MetadataRegistrar& registrar = Registrar::Instance();
        EXPECT_EQ(registrar.Size(), 3);
        EXPECT_EQ(registrar.Flags(&g3d_Point::InitializeMetadata), 4u);
        EXPECT_EQ(registrar.Flags(&g3d_Vector::InitializeMetadata), 4u);
        const cls_ClassMetadata* font = registrar.ClassRegistrar().Find("omu_FontErrorException");
        ASSERT_NE(font, nullptr);
        EXPECT_EQ(font->TypeId(), typ_TypeId(19, 20));
        const cls_ClassMetadata* point = registrar.ClassRegistrar().Find(g3d_Point::TypeId());
        ASSERT_NE(point, nullptr);
        ASSERT_EQ(point->Attributes().size(), 4u);
        EXPECT_EQ(point->Attributes()[0].name, "_w");
        EXPECT_EQ(point->Attributes()[0].kind, cls_KIND_FLOAT);

        KTSOvuG3d_finalize(count);
        EXPECT_EQ(count, 1);
        EXPECT_EQ(registrar.Size(), 3);
        KTSOvuG3d_finalize(count);
        EXPECT_EQ(count, 0);
        EXPECT_FALSE(omi_Singleton<g3d_ColorMap>::Exists());
        EXPECT_EQ(typ_ArchCompTable::RowCount(36), 0);
        EXPECT_EQ(registrar.Size(), 0);
        omi_SingletonBase<cls_MetadataRegistrar>::Finalize();
    }
}
