#include "omu/omu_ReturnPrim.h"

#include <gtest/gtest.h>

#include "omu/omu_Values_test.h"

using omu_test::TextOf;

TEST(omu_ReturnPrim, MakesTuplesAndDictionaries) {
    EXPECT_EQ(TextOf(omu_ReturnPrim(7)), "7");
    EXPECT_EQ(TextOf(omu_ReturnPrim(7.0)), "7.0");
    EXPECT_EQ(TextOf(omu_ReturnPrim(cow_List<int>(1, -2))), "(1, -2)");
    EXPECT_EQ(TextOf(omu_ReturnPrim(cow_List<double>(1.0))), "(1.0,)");
    EXPECT_EQ(TextOf(omu_ReturnPrim(cow_List<cow_String>())), "()");
    EXPECT_EQ(TextOf(omu_ReturnPrim(cow_2DArray<int>(2, 1))), "((0,), (0,))");
    cow_2DArray<cow_String> names(1, 2);
    names.Get(0, 1) = "it's";
    EXPECT_EQ(TextOf(omu_ReturnPrim(names)), R"((('', "it's"),))");
    cow_2DArray<double> values(1, 2);
    values.Get(0, 1) = 0.5;
    cow_Map<cow_String, cow_2DArray<double>> map;
    map.Insert("x", values);
    EXPECT_EQ(TextOf(omu_ReturnPrim(map)), "{'x': ((0.0, 0.5),)}");
}
