#include "host/store/hst_Database.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"
#include "host/tests/host_TestModels.h"

namespace {

std::vector<std::string> Names(const std::vector<hst_Part>& parts) {
    std::vector<std::string> names;
    for (const hst_Part& part : parts) names.push_back(part.Name());
    return names;
}

std::vector<hst_Part> Assembly(int size, float x) {
    std::vector<hst_Part> parts;
    for (int i = 0; i < size; ++i) parts.push_back(host_Tetrahedron("p" + std::to_string(i), x));
    return parts;
}

void Save(const std::string& path, const std::vector<hst_Part>& parts) {
    hst_Database(path, hst_Database::Access::Write).Replace(parts, nullptr, [](std::size_t) {});
}

std::vector<hst_Part> Load(const std::string& path) {
    return hst_Database(path, hst_Database::Access::Read).Load().parts;
}

TEST(hst_Database, KeepsEveryBitAndTheOrderOfParts) {
    const hst_ClassRegistration classes;
    const host_TemporaryFolder folder;
    const std::string path = folder.Path("a.db");
    gsl_Matrix placement;
    placement.SetRow(0, gsl_Vector(0.1, 1e-300, -0.0));
    placement.SetTranslation(gsl_Vector(1 / 3.0, -7, 1e300));
    const std::vector<hst_Part> saved = {
        host_Tetrahedron("z", 1e-45f),
        host_Tetrahedron("Gelände", 3),
        {"a", placement, {0.1f, 2, 3, 4, 5, 6, 7, 8, 9}, {2, 0, 1, 0, 0, 0}}};
    Save(path, saved);
    const std::vector<hst_Part> loaded = Load(path);
    EXPECT_EQ(Names(loaded), Names(saved));
    ASSERT_EQ(loaded.size(), 3u);
    double before[4][4];
    double after[4][4];
    saved[2].Placement().AsArray(before);
    loaded[2].Placement().AsArray(after);
    EXPECT_EQ(std::memcmp(before, after, sizeof before), 0);
    EXPECT_EQ(loaded[0].PlacedVertex(1).GetX(), static_cast<double>(1e-45f));
    EXPECT_EQ(loaded[2].Triangle(1), (std::array<int, 3>{0, 0, 0}));
    EXPECT_EQ(loaded[2].VertexCount(), 3);
}

// The saver is killed at moments all over its work; the file holds the one state or the other.
TEST(hst_Database, HoldsOldOrNewPartsAfterACrash) {
    const hst_ClassRegistration classes;
    const host_TemporaryFolder folder;
    const std::string path = folder.Path("a.db");
    const std::vector<hst_Part> small = Assembly(2, 1);
    const std::vector<hst_Part> large = Assembly(300, 2);
    Save(path, small);
    for (int round = 0; round < 40; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (;;) {
                Save(path, large);
                Save(path, small);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + 700 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::vector<hst_Part> parts = Load(path);
        ASSERT_TRUE(parts.size() == small.size() || parts.size() == large.size()) << parts.size();
        EXPECT_EQ(parts.back().PlacedVertex(1).GetX(), parts.size() == small.size() ? 1 : 2);
    }
}

TEST(hst_Database, UndoesASaveThatFails) {
    const hst_ClassRegistration classes;
    const host_TemporaryFolder folder;
    const std::string path = folder.Path("a.db");
    const std::vector<hst_Part> twice = {host_Tetrahedron("p", 1), host_Tetrahedron("p", 1)};
    EXPECT_THROW(Save(path, twice), hst_Error);
    EXPECT_FALSE(std::filesystem::exists(path));
    Save(path, Assembly(3, 1));
    EXPECT_THROW(Save(path, twice), hst_Error);
    EXPECT_EQ(Load(path).size(), 3u);
    folder.Write("empty.db", "");  // what a crash in the first save leaves
    EXPECT_THROW(Load(folder.Path("empty.db")), hst_Error);
    Save(folder.Path("empty.db"), Assembly(1, 1));
    EXPECT_EQ(Load(folder.Path("empty.db")).size(), 1u);
}

TEST(hst_PartName, MakesNamesPrintableAndUnique) {
    const struct {
        std::string text;
        const char* clean;
    } cases[] = {
        {" lid\t", "lid"},
        {"a\nb", "a b"},
        {std::string("a\0b", 3), "a b"},
        {"\xC2\x85x", "x"},
        {"\xFF\xC3", "\uFFFD\uFFFD"},
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
        {"日本", "日本"},
        {"\x1b[2J", "[2J"},
    };
    for (const auto& name : cases) {
        EXPECT_EQ(hst_CleanName(name.text), name.clean);
        EXPECT_EQ(hst_CleanName(name.clean), name.clean);
    }
    EXPECT_EQ(hst_DisplayWidth("Gela\u0308nde 日本"), 12);
    std::vector<hst_Part> parts;
    for (const char* name : {"a", "b", "a", "a#2", "a", "a#2"}) {
        parts.push_back(host_Tetrahedron(name, 1));
    }
    EXPECT_EQ(hst_MakeNamesUnique(parts), 3);
    EXPECT_THAT(Names(parts), ::testing::ElementsAre("a", "b", "a#3", "a#2", "a#4", "a#2#2"));
}

}  // namespace
