#include <gmock/gmock.h>
#include <pty.h>
#include <sqlite3.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>

#include "host/tests/host_DebianModels.h"
#include "host/tests/host_Process.h"

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kTwoBoxes =
    "v 0 0 0\nv 2 0 0\nv 0 3 0\nv 0 0 1e6\nv nan 0 0\n"
    "o wedge\nf 1 2 3\nf 1 2 4\nf 1 1 1\no sheet\nf 2 3 4\n";

void ExpectRefused(const host_Outcome& outcome, const std::string& file, const std::string& cause) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    const std::size_t lastLine = outcome.err.rfind("ktsovu: ");
    ASSERT_NE(lastLine, std::string::npos) << outcome.err;
    const std::string line = outcome.err.substr(lastLine);
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
    EXPECT_THAT(line, HasSubstr(file));
    EXPECT_THAT(line, HasSubstr(cause));
}

void Execute(const std::string& database, const char* sql) {
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(database.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection);
    sqlite3_close(connection);
}

int Number(const std::string& database, const char* sql) {
    sqlite3* connection = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open(database.c_str(), &connection);
    sqlite3_prepare_v2(connection, sql, -1, &statement, nullptr);
    const int number =
        sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : -1;
    sqlite3_finalize(statement);
    sqlite3_close(connection);
    return number;
}

TEST(ktsovu, PrintsTheTableOfAModelAndOfItsDatabase) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("two.obj", kTwoBoxes);
    const std::string database = folder.Path("two.db");
    const host_Outcome inspected = host_Run({"inspect", model, "--save", database});
    const std::string rule(111, '-');
    const std::string box =
        "      0      0      0       2       3  1000000   1000000         1         2    500000\n";
    EXPECT_EQ(inspected.out,
              "part            triangles  low x  low y  low z  high x  high y   high z  diagonal"
              "  centre x  centre y  centre z\n" +
                  rule + "\nwedge                   3" + box + "sheet                   1" + box +
                  rule + "\ntotal: 2 parts          4" + box);
    EXPECT_EQ(inspected.err, "");
    EXPECT_EQ(inspected.status, 0);
    EXPECT_EQ(host_Run({"show", database}).out, inspected.out);

    const host_Outcome json = host_Run({"inspect", "--json", model});
    EXPECT_EQ(host_Run({"show", "--json", database}).out, json.out);
    const auto parsed = nlohmann::json::parse(json.out);
    EXPECT_EQ(parsed["parts"][0]["name"], "wedge");
    EXPECT_EQ(parsed["parts"][1]["high"], nlohmann::json({2.0, 3.0, 1e6}));
    EXPECT_EQ(parsed["total"]["triangles"], 4);
}

TEST(ktsovu, KeepsTheNamesPlacementsAndUnitsOfAFile) {
    const host_TemporaryFolder folder;
    const auto collada = [](const std::string& nodes) {
        return R"(<?xml version="1.0"?><COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema"
 version="1.4.1"><asset><unit meter="0.001"/><up_axis>Z_UP</up_axis></asset><library_geometries>
<geometry id="g"><mesh><source id="p"><float_array id="a" count="9">0 0 0 1 0 0 0 1 0</float_array>
<technique_common><accessor source="#a" count="3" stride="3"><param name="X" type="float"/>
<param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices><triangles count="1">
<input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles></mesh></geometry>
</library_geometries><library_visual_scenes><visual_scene id="s">)" +
               nodes +
               "</visual_scene></library_visual_scenes><scene>"
               "<instance_visual_scene url=\"#s\"/></scene></COLLADA>";
    };
    const std::string triangle = "<instance_geometry url=\"#g\"/></node>";
    const std::string model =
        folder.Write("c.dae", collada("<node name=\"group\"><translate>10 0 0</translate>"
                                      "<node name=\"bolt &lt;1&gt;\"><translate>0 5 0</translate>" +
                                      triangle + "<node><rotate>0 0 1 90</rotate>" + triangle +
                                      "<node name=\"bolt &lt;1&gt;\">" + triangle + "</node>"));
    const auto parts = nlohmann::json::parse(host_Run({"inspect", "--json", model}).out)["parts"];
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0]["name"], "bolt <1>");
    EXPECT_EQ(parts[0]["low"], nlohmann::json({10.0, 5.0, 0.0}));
    EXPECT_EQ(parts[1]["name"], "g");
    EXPECT_NEAR(parts[1]["low"][0].get<double>(), 9.0, 1e-6);
    EXPECT_EQ(parts[2]["name"], "bolt <1>#2");
    EXPECT_EQ(parts[2]["placement"][0], nlohmann::json({1.0, 0.0, 0.0, 10.0}));
}

TEST(ktsovu, RefusesBadModelsAndWritesNothing) {
    const host_TemporaryFolder folder;
    const struct {
        const char* file;
        const char* bytes;  // null: no such file
        const char* cause;
    } cases[] = {
        {"none.stl", nullptr, "no such file"},
        {"text.txt", "no mesh at all", "in none of the formats"},
        {"points.obj", "v 0 0 0\nv 1 1 1\n", "it has no triangles"},
        {"nan.off", "OFF\n3 1 0\n0 0 0\nnan 0 0\n0 1 0\n3 0 1 2\n",
         "part 'part': it has a coordinate"},
        {"index.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n", "vertex index out of range"},
        // A format that the importer library would read.
        {"other.raw", "0 0 0 1 0 0 0 1 0\n", "in none of the formats"},
        {"", "", "is a directory"},
    };
    const std::string sound = folder.Write("sound.obj", kTwoBoxes);
    for (const auto& bad : cases) {
        SCOPED_TRACE(bad.file);
        const std::string model = folder.Path(bad.file);
        if (bad.bytes && *bad.file) folder.Write(bad.file, bad.bytes);
        const std::string database = folder.Path("new.db");
        ExpectRefused(host_Run({"inspect", sound, model, "--save", database}), model, bad.cause);
        EXPECT_FALSE(std::filesystem::exists(database));
    }
}

TEST(ktsovu, DrawsAPictureOfAModelAndTheSameOfItsDatabase) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("two.obj", kTwoBoxes);
    const std::string database = folder.Path("two.db");
    folder.Write("model.png", "what was there");
    const auto draw = [&](std::vector<std::string> arguments, const std::string& picture) {
        arguments.insert(arguments.end(), {"--picture", folder.Path(picture)});
        const host_Outcome outcome = host_Run(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return host_ReadFile(folder.Path(picture));
    };
    const std::string png = draw({"inspect", model, "--save", database}, "model.png");
    EXPECT_THAT(png, StartsWith("\x89PNG"));
    EXPECT_EQ(draw({"show", database, "--view", "iso"}, "saved.PNG"), png);
    EXPECT_NE(draw({"show", database, "--view", "left"}, "left.png"), png);
    EXPECT_THAT(draw({"show", database}, "saved.svg"), HasSubstr("width=\"1600px\""));
    const std::string parse =
        "python3 -c 'import sys, xml.dom.minidom as xml; "
        "xml.parse(sys.argv[1])' ";
    EXPECT_EQ(std::system((parse + folder.Path("saved.svg")).c_str()), 0);
    EXPECT_EQ(folder.FileCount(), 6);  // nothing but these and the model
}

TEST(ktsovu, RefusesPicturesThatCannotBeWritten) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("two.obj", kTwoBoxes);
    std::filesystem::create_directory(folder.Path("folder.svg"));
    const std::pair<const char*, const char*> cases[] = {{"a.jpg", "ends in .png or .svg"},
                                                         {"png", "ends in .png or .svg"},
                                                         {"folder.svg", "is a directory"},
                                                         {"no/such.png", "there is no folder"},
                                                         {"/proc/a.png", "cannot be written"}};
    for (const auto& [picture, cause] : cases) {
        ExpectRefused(host_Run({"inspect", model, "--picture", folder.Path(picture), "--save",
                                folder.Path("new.db")}),
                      picture, cause);
    }
    const std::string bad = folder.Write("bad.obj", "v 0 0 0\n");
    ExpectRefused(host_Run({"inspect", bad, "--picture", folder.Path("a.png")}), bad, "");
    EXPECT_EQ(folder.FileCount(), 3);
}

TEST(ktsovu, RefusesWrongUsage) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"frobnicate"},
        {"inspect"},
        {"inspect", "a", "--time-limit", "0"},
        {"inspect", "a", "--view", "top"},
        {"inspect", "a", "--picture", "a.png", "--view", "sideways"},
        {"show"},
        {"show", "a.db", "b.db"},
        {"inspect", "--frobnicate"},
        {"--frobnicate"}};
    for (const auto& arguments : cases) ExpectRefused(host_Run(arguments), "", "'ktsovu --help'");
    const host_Outcome help = host_Run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("Exit status: 0"));
    EXPECT_THAT(host_Run({"inspect", "--help"}).out, HasSubstr("default: 2048 plus 16"));
    EXPECT_THAT(host_Run({"--version"}).out, StartsWith("ktsovu 1."));
}

TEST(ktsovu, RefusesDatabasesThatAreNotItsOwnAndLeavesThemAlone) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("sound.obj", kTwoBoxes);
    const std::string text = folder.Write("text.db", std::string(4096, 'x'));
    const std::string foreign = folder.Path("foreign.db");
    Execute(foreign, "CREATE TABLE objects (id INTEGER PRIMARY KEY)");
    const std::string shadow = folder.Path("shadow.db");  // our mark, somebody else's tables
    Execute(shadow,
            "PRAGMA application_id = 1263498869; PRAGMA user_version = 1;"
            "CREATE VIEW objects AS SELECT 1 AS id, 'part/a' AS name");
    for (const std::string& database : {text, foreign, shadow}) {
        const std::string before = host_ReadFile(database);
        ExpectRefused(host_Run({"inspect", model, "--save", database}), database, "database");
        ExpectRefused(host_Run({"show", database}), database, "database");
        EXPECT_EQ(host_ReadFile(database), before);
    }
    ExpectRefused(host_Run({"show", folder.Path("none.db")}), "none.db", "no such file");
    ExpectRefused(host_Run({"inspect", model, "--save", folder.Path("no/such.db")}), "such.db",
                  "there is no folder");
}

TEST(ktsovu, ReplacesSavedPartsAndLeavesOtherObjects) {
    const host_TemporaryFolder folder;
    const std::string database = folder.Path("a.db");
    const std::string first = folder.Write("first.obj", kTwoBoxes);
    const std::string second =
        folder.Write("second.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n");
    host_Run({"inspect", first, "--save", database});
    Execute(database, "INSERT INTO objects (name, class_id, memento) VALUES ('mine', 7, x'00')");
    const host_Outcome inspected = host_Run({"inspect", second, "--save", database});
    EXPECT_EQ(inspected.status, 0) << inspected.err;
    EXPECT_EQ(host_Run({"show", database}).out, inspected.out);
    EXPECT_EQ(Number(database, "SELECT count(*) FROM objects"), 2);
    EXPECT_EQ(Number(database, "SELECT class_id FROM objects WHERE name = 'mine'"), 7);
}

// Every single byte of a memento counts: a part that is not the one saved is told from it.
TEST(ktsovu, RefusesGarbledAndTruncatedMementos) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("sound.obj", kTwoBoxes);
    const std::string database = folder.Path("a.db");
    host_Run({"inspect", model, "--save", database});
    const std::string sound = host_ReadFile(database);
    const char* damages[] = {
        "UPDATE objects SET memento = substr(memento, 1, length(memento) - 1) WHERE id = 2",
        "UPDATE objects SET memento = x'' WHERE id = 2",
        "UPDATE objects SET memento = memento || x'00' WHERE id = 2",
        "UPDATE objects SET class_id = 7 WHERE id = 2",
        "UPDATE objects SET name = 'part/other' WHERE id = 2",
        "UPDATE objects SET memento = (SELECT memento FROM objects WHERE id = 1) WHERE id = 2",
    };
    for (const char* damage : damages) {
        SCOPED_TRACE(damage);
        Execute(database, damage);
        ExpectRefused(host_Run({"show", database}), database, "part '");
        folder.Write("a.db", sound);
    }
    const std::size_t place = sound.find("part/sheet");
    ASSERT_NE(place, std::string::npos);
    std::mt19937 random(1);
    for (std::size_t i = place + 20; i < place + 180; i += 1 + random() % 8) {
        std::string garbled = sound;
        garbled[i] = static_cast<char>(garbled[i] ^ (1u << random() % 8));
        folder.Write("a.db", garbled);
        SCOPED_TRACE(i - place);
        ExpectRefused(host_Run({"show", database}), database, "part 'sheet': ");
    }
}

TEST(ktsovu, SurvivesGarbledDatabaseFiles) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("sound.obj", kTwoBoxes);
    const std::string database = folder.Path("a.db");
    const std::string table = host_Run({"inspect", model, "--save", database}).out;
    const std::string sound = host_ReadFile(database);
    std::mt19937 random(2);
    for (int round = 0; round < 60; ++round) {
        std::string garbled = sound.substr(0, round % 3 ? sound.size() : random() % sound.size());
        for (int i = 0; i < 8 && !garbled.empty(); ++i) {
            garbled[random() %
                    (round % 2 ? garbled.size() : std::min<std::size_t>(garbled.size(), 200))] =
                static_cast<char>(random());
        }
        folder.Write("a.db", garbled);
        const host_Outcome shown = host_Run({"show", database});
        if (shown.status == 0) {
            EXPECT_EQ(shown.out, table);
        } else {
            ExpectRefused(shown, database, "");
        }
    }
}

TEST(ktsovu, ShowsProgressOnATerminalOnly) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("sound.obj", kTwoBoxes);
    EXPECT_EQ(host_Run({"inspect", model}).err, "");
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl(KTSOVU_PROGRAM, "ktsovu", "inspect", model.c_str(), nullptr);
        _exit(127);
    }
    std::string shown;
    char block[4096];
    for (ssize_t got; (got = read(terminal, block, sizeof block)) > 0;) {
        shown.append(block, static_cast<std::size_t>(got));
    }
    waitpid(child, nullptr, 0);
    close(terminal);
    EXPECT_THAT(shown, StartsWith("\r\x1b[Kreading "));
    EXPECT_THAT(shown, HasSubstr("\r\x1b[Kpart "));  // the line is gone before the table
}

TEST(ktsovu, ReadsTheEngine) {
    KTSOVU_REQUIRE_MODELS(models);
    const host_TemporaryFolder folder;
    const std::string engine = host_Engine(models);
    const std::string database = folder.Path("engine.db");
    const host_Outcome inspected = host_Run({"inspect", engine, "--save", database});
    EXPECT_THAT(inspected.out, HasSubstr("\ntotal: 67 parts                121496  "));
    EXPECT_THAT(inspected.out, HasSubstr("\nPiston_123-844_0_Parts_1#2       4428  "));
    EXPECT_EQ(host_Run({"show", database}).out, inspected.out);
    EXPECT_EQ(host_Run({"show", database, "--json"}).out,
              host_Run({"inspect", engine, "--json"}).out);
}

TEST(ktsovu, ReadsAndRefusesTheModelsOfEveryFormat) {
    KTSOVU_REQUIRE_MODELS(models);
    const struct {
        const char* file;
        const char* name;
        int triangles;  // 0: refused
    } cases[] = {
        {"STL/Spider_binary.stl", "part", 1368},
        {"STL/sphereWithHole.stl", "tinysphere_withhole", 285},
        {"STL/triangle_with_empty_solid.stl", "testTriangle", 1},
        {"PLY/cube.ply", "part", 12},
        {"PLY/points.ply", "", 0},
        {"OBJ/box.obj", "1", 12},
        {"OBJ/testmixed.obj", "part", 12},
        {"OFF/Wuson.off", "part", 3732},
        {"3MF/box.3mf", "part", 12},
        {"Collada/duck.dae", "LOD3sp", 4212},
        {"Collada/cameras.dae", "", 0},
        {"IFC/AC14-FZK-Haus.ifc", "Gelände", 35906},
        {"glTF2/BoxWithInfinites-glTF-Binary/BoxWithInfinites.glb", "", 0},
        {"FBX/box.fbx", "", 0},
        {"invalid/malformed2.obj", "-1", 10},
    };
    for (const auto& model : cases) {
        SCOPED_TRACE(model.file);
        const std::string path = models + '/' + model.file;
        const host_Outcome outcome = host_Run({"inspect", "--json", path});
        if (model.triangles == 0) {
            ExpectRefused(outcome, path, "");
            continue;
        }
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        const auto table = nlohmann::json::parse(outcome.out);
        EXPECT_EQ(table["parts"][0]["name"], model.name);
        EXPECT_EQ(table["total"]["triangles"], model.triangles);
    }
    for (const auto& entry : std::filesystem::directory_iterator(models + "/invalid")) {
        const std::string path = entry.path();
        if (path.ends_with("malformed2.obj")) continue;
        ExpectRefused(host_Run({"inspect", "--memory-limit", "512", "--time-limit", "20", path}),
                      path, "");
    }
}

}  // namespace
