#include "host/import/imp_Format.h"

#include <gtest/gtest.h>

#include "host/import/imp_ThreeMfNames.h"
#include "host/import/imp_VertexWelder.h"

namespace {

TEST(imp_Format, TellsGivenNamesFromMadeUpOnes) {
    using enum imp_FormatEnm;
    const struct {
        imp_FormatEnm format;
        const char* name;
        bool isRoot;
        const char* given;
    } nodes[] = {
        {Gltf2, "nodes[12]", false, ""},
        {Gltf2, "nodes[a]", false, "nodes[a]"},
        {Gltf2, "nodes[]", false, "nodes[]"},
        {Gltf2, "ROOT", true, ""},
        {Gltf2, "ROOT", false, "ROOT"},
        {Obj, "model.obj", true, ""},
        {Obj, "defaultobject", false, ""},
        {Obj, "lid", false, "lid"},
        {Stl, "<STL_BINARY>", true, ""},
        {Collada, "$ColladaAutoName$_3", false, ""},
        {Ifc, "IfcWall_Wand_Nord_1Qvf0xqDT4HXo8jI81mHB$", false, "Wand_Nord"},
        {Ifc, "IfcWall_Unnamed_1Qvf0xqDT4HXo8jI81mHB$", false, ""},
        {Ifc, "IfcMappedItem", false, ""},
        {Ifc, "$RelAggregates", false, ""},
    };
    for (const auto& node : nodes) {
        EXPECT_EQ(imp_GivenNodeName(node.format, node.name, node.isRoot, false), node.given)
            << node.name;
    }
    EXPECT_EQ(imp_GivenMeshName(Gltf2, "rod-1-0", true), "rod-1");
    EXPECT_EQ(imp_GivenMeshName(Gltf2, "rod-1", false), "rod-1");
    EXPECT_EQ(imp_GivenMeshName(Gltf2, "meshes[3]-0", true), "");
}

TEST(imp_ThreeMfNames, FindsTheNamesOfObjects) {
    const imp_ObjectNames names = imp_FindObjectNames(
        "<model><resources><objects name='no'/><object id = \"2\" name=\"A &amp; B &#x41;&#66;\">"
        "<object name='>' type=\"model\" id='3'/><object id=\"4\"/><object id=\"5\" name=\"cut");
    const imp_ObjectNames expected = {{2, "A & B AB"}, {3, ">"}};
    EXPECT_EQ(names, expected);
    EXPECT_TRUE(imp_ReadThreeMfNames("no such file").empty());
}

TEST(imp_VertexWelder, GivesEqualPositionsOneNumber) {
    imp_VertexWelder welder;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 1000; ++i) {
            EXPECT_EQ(welder.Add(static_cast<float>(i % 10), static_cast<float>(i / 10), -0.0f), i);
        }
    }
    EXPECT_EQ(welder.Add(3, 1, 0), 13);
    EXPECT_EQ(welder.TakePositions().size(), 3000u);
}

}  // namespace
