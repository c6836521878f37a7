#include <gmock/gmock.h>
#include <signal.h>
#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <thread>

#include "host/tests/host_Process.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A cube of an OBJ file.
struct Cube {
    const char* name;
    double low[3];
    double size;
};

std::string Obj(const std::vector<Cube>& cubes) {
    std::ostringstream text;
    int first = 1;
    for (const Cube& cube : cubes) {
        text << "o " << cube.name << '\n';
        for (int i = 0; i < 8; ++i) {
            text << 'v';
            for (int axis = 0; axis < 3; ++axis) {
                text << ' ' << cube.low[axis] + (i >> axis & 1 ? cube.size : 0);
            }
            text << '\n';
        }
        for (const auto& face : {std::array{0, 2, 3, 1},
                                 {4, 5, 7, 6},
                                 {0, 1, 5, 4},
                                 {2, 6, 7, 3},
                                 {0, 4, 6, 2},
                                 {1, 3, 7, 5}}) {
            text << 'f';
            for (const int corner : face) text << ' ' << first + corner;
            text << '\n';
        }
        first += 8;
    }
    return text.str();
}

// pin in block by 1; ball in block; shelf on block; near 0.5 from block; far from all.
const std::vector<Cube> kAssembly = {{"block", {0, 0, 0}, 8},   {"pin", {7, 2, 2}, 2},
                                     {"ball", {2, 2, 2}, 2},    {"shelf", {0, 0, 8}, 8},
                                     {"near", {-2.5, 0, 0}, 2}, {"far", {90, 0, 0}, 2}};

std::vector<std::string> Kinds(const nlohmann::json& result) {
    std::vector<std::string> kinds;
    for (const auto& pair : result["pairs"]) {
        const auto& length = pair[pair["kind"] == "crossing" ? "depth" : "clearance"];
        kinds.push_back(pair["kind"].get<std::string>() + ' ' + pair["first"].get<std::string>() +
                        ' ' + pair["second"].get<std::string>() + ' ' + length.dump());
    }
    return kinds;
}

TEST(ktsovu_clearance, ReportsEachKindOnceInOrderAndKeepsTheReport) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("a.obj", Obj(kAssembly));
    const std::string database = folder.Path("a.db");
    const host_Outcome checked = host_Run({"clearance", model, "--gap", "1", "--json", "--save",
                                           database, "--picture", folder.Path("a.png")});
    EXPECT_EQ(checked.status, 1) << checked.err;
    const auto result = nlohmann::json::parse(checked.out);
    EXPECT_THAT(Kinds(result), ElementsAre("crossing block pin 1", "enclosed ball block 2",
                                           "touching block shelf 0", "tooClose block near 0.5"));
    EXPECT_EQ(result["counts"]["enclosed"], 1);
    EXPECT_EQ(result["pairsChecked"], 15);
    EXPECT_EQ(result["pairs"][3]["onFirst"][0], 0.0);
    EXPECT_EQ(result["pairs"][3]["onSecond"][0], -0.5);

    const host_Outcome shown =
        host_Run({"show", database, "--json", "--picture", folder.Path("b.png")});
    EXPECT_EQ(shown.status, 1);
    EXPECT_EQ(shown.out, checked.out);
    EXPECT_EQ(host_ReadFile(folder.Path("b.png")), host_ReadFile(folder.Path("a.png")));
    EXPECT_EQ(host_Run({"show", database, "--picture", folder.Path("a.svg")}).status, 1);
    const std::string parse = folder.Write("parse.py",
                                           "import sys, xml.etree.ElementTree as tree\n"
                                           "print(len(tree.parse(sys.argv[1]).getroot()) > 0)\n");
    EXPECT_EQ(host_Run({"run", parse, folder.Path("a.svg")}).out, "True\n");

    const std::string table = host_Run({"show", database}).out;
    EXPECT_THAT(table, HasSubstr("total: 15 pairs of 6 parts: 1 crossing, 1 enclosed, 1 touching, "
                                 "1 too close\n"));
    EXPECT_EQ(host_Run({"inspect", model, "--save", database}).status, 0);
    EXPECT_EQ(host_Run({"show", database}).status, 0) << "the old check is gone";
}

TEST(ktsovu_clearance, HonoursEveryOption) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("a.obj", Obj(kAssembly));
    const struct {
        std::vector<std::string> options;
        int status;
        std::vector<std::string> kinds;
    } cases[] = {
        {{}, 1, {"crossing block pin 1", "enclosed ball block 2", "touching block shelf 0"}},
        {{"--ignore", "pin:block", "--ignore", "block:ball"}, 0, {"touching block shelf 0"}},
        {{"--touch", "1", "--ignore", "block:ball"},
         0,
         {"touching block pin 0", "touching block shelf 0", "touching block near 0.5"}},
        {{"--move", "pin=1,0,0", "--move", "ball=0,-20,0,0,0,45", "--move", "shelf=0,0,0.25",
          "--gap", "0.5"},
         1,
         {"touching block pin 0", "tooClose block shelf 0.25"}},
    };
    for (const auto& c : cases) {
        std::vector<std::string> arguments = {"clearance", model, "--json"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const host_Outcome outcome = host_Run(arguments);
        EXPECT_EQ(outcome.status, c.status) << outcome.err;
        EXPECT_EQ(Kinds(nlohmann::json::parse(outcome.out)), c.kinds);
    }
}

TEST(ktsovu_clearance, WarnsOfWhatTheResultDoesWithout) {
    const host_TemporaryFolder folder;
    const std::string model =
        folder.Write("a.obj", Obj({{"cube", {0, 0, 0}, 1}, {"cube", {5, 0, 0}, 1}}) +
                                  "v 0 0 0\nv 1 0 0\nv 2 0 0\no line\nf 17 18 19\n");
    const host_Outcome outcome = host_Run({"clearance", model, model});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("warning: 2 parts have the names of others; they bear"));
    EXPECT_THAT(outcome.err, HasSubstr("no triangle has an area: 'line', 'line#2'"));
}

TEST(ktsovu_clearance, RefusesBadInputAndWritesNothing) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("a.obj", Obj(kAssembly));
    const std::string flat = folder.Write("flat.obj", "v 0 0 0\nv 1 0 0\nv 2 0 0\nf 1 2 3\n");
    const struct {
        std::vector<std::string> arguments;
        const char* cause;
    } cases[] = {
        {{model, "--gap=-1"}, "--gap: takes a length that is finite and not negative"},
        {{model, "--touch", "nan"}, "--touch: takes a length"},
        {{model, "--gap", "inf"}, "--gap: takes a length"},
        {{model, "--move", "pim=1,2,3"}, "there is no part 'pim'; the nearest are 'pin',"},
        {{model, "--ignore", "block:balls"}, "there is no part 'balls'; the nearest are 'ball',"},
        {{flat}, "no part has a surface with an area"},
        {{folder.Path("none.stl")}, "no such file"},
    };
    const std::string database = folder.Path("new.db");
    for (const auto& c : cases) {
        std::vector<std::string> arguments = {"clearance", "--save", database, "--picture",
                                              folder.Path("new.png")};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const host_Outcome outcome = host_Run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr(c.cause));
        EXPECT_FALSE(std::filesystem::exists(database));
        EXPECT_FALSE(std::filesystem::exists(folder.Path("new.png")));
    }
}

// Interrupted at moments all over its work, it leaves nothing, or all.
TEST(ktsovu_clearance, LeavesNothingHalfWrittenAfterCtrlC) {
    const host_TemporaryFolder folder;
    const host_TemporaryFolder output;
    std::vector<Cube> cubes;
    std::vector<std::string> names;
    for (int i = 0; i < 300; ++i) names.push_back("c" + std::to_string(i));
    for (int i = 0; i < 300; ++i)
        cubes.push_back({names[static_cast<std::size_t>(i)].c_str(), {0.9 * i, 0, 0}, 1});
    const std::string model = folder.Write("a.obj", Obj(cubes));
    int interrupted = 0;
    for (int round = 0; round < 24; ++round) {
        const host_TemporaryFolder target;
        const pid_t child = host_Start(
            {"clearance", model, "--save", target.Path("a.db"), "--picture", target.Path("a.png")},
            output);
        std::this_thread::sleep_for(std::chrono::milliseconds(15 * round));
        kill(child, SIGINT);
        int status = 0;
        waitpid(child, &status, 0);
        const bool isInterrupted = WIFSIGNALED(status) && WTERMSIG(status) == SIGINT;
        EXPECT_TRUE(isInterrupted || (WIFEXITED(status) && WEXITSTATUS(status) == 1)) << status;
        std::set<std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(target.Path(""))) {
            files.insert(entry.path().filename().string());
        }
        EXPECT_THAT(files, testing::AnyOf(testing::IsEmpty(), ElementsAre("a.db", "a.png")));
        interrupted += isInterrupted;
    }
    EXPECT_GT(interrupted, 0);
}

TEST(ktsovu_clearance, RefusesAGarbledCheck) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("a.obj", Obj(kAssembly));
    const std::string database = folder.Path("a.db");
    for (const char* sql : {"DELETE FROM objects WHERE name = 'check/record'",
                            "UPDATE objects SET class_id = 7 WHERE name = 'check/results'",
                            "UPDATE objects SET memento = substr(memento, 1, 40) WHERE name = "
                            "'check/annotations'",
                            "DELETE FROM objects WHERE name = 'part/ball'"}) {
        ASSERT_EQ(host_Run({"clearance", model, "--save", database}).status, 1);
        sqlite3* connection = nullptr;
        ASSERT_EQ(sqlite3_open(database.c_str(), &connection), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(connection);
        const host_Outcome outcome = host_Run({"show", database});
        EXPECT_EQ(outcome.status, 2) << sql;
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr(database + ": "));
    }
}

TEST(ktsovu_diff, TellsNewGoneAndChangedFindings) {
    const host_TemporaryFolder folder;
    const std::string model = folder.Write("a.obj", Obj(kAssembly));
    const auto check = [&](const std::string& name, std::vector<std::string> options) {
        options.insert(options.begin(),
                       {"clearance", model, "--gap", "1", "--save", folder.Path(name)});
        return host_Run(options).status;
    };
    ASSERT_EQ(check("old.db", {}), 1);
    ASSERT_EQ(check("same.db", {"--move", "far=1,0,0"}), 1);
    ASSERT_EQ(check("new.db", {"--move", "pin=0.5,0,0", "--move", "ball=0,-20,0", "--move",
                               "shelf=0,0,0.25"}),
              1);
    const host_Outcome same = host_Run({"diff", folder.Path("old.db"), folder.Path("same.db")});
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.out, "total: 0 differences\n");
    const host_Outcome changed = host_Run({"diff", folder.Path("old.db"), folder.Path("new.db")});
    EXPECT_EQ(changed.status, 1);
    EXPECT_THAT(changed.out, HasSubstr("\ngone     ball    block"));
    EXPECT_THAT(changed.out, HasSubstr("\nchanged  block   pin     crossing 1.000000"));
    EXPECT_THAT(changed.out, HasSubstr("\nnew      block   shelf"));
    EXPECT_THAT(changed.out, HasSubstr("\ntotal: 3 differences\n"));
    ASSERT_EQ(host_Run({"inspect", model, "--save", folder.Path("old.db")}).status, 0);
    const host_Outcome none = host_Run({"diff", folder.Path("old.db"), folder.Path("new.db")});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, HasSubstr("old.db: holds no clearance check"));
}

}  // namespace
