#include "host/import/imp_ChildProcess.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <cstring>
#include <new>

#include "host/import/imp_PartStream.h"
#include "host/model/hst_Error.h"
#include "host/tests/host_TestModels.h"

namespace {

using ::testing::HasSubstr;

constexpr imp_Limits kLimits{512, 20};
constexpr std::uint64_t kPlenty = 1 << 20;

/// What a reader of parts says to a child that does `work`.
std::string Refusal(const std::function<int(int)>& work, imp_Limits limits = kLimits) {
    imp_ChildProcess child(limits, work);
    try {
        (void)imp_PartReader(child, "f", kPlenty).ReadAll();
    } catch (const hst_Error& error) {
        return error.what();
    }
    return "nothing";
}

imp_RawPart RawTriangle() {
    return {
        "a\n", {{1, 0, 0, 5}, {0, 1, 0, 0}, {0, 0, 1, 0}}, {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}};
}

TEST(imp_ChildProcess, HandsPartsOver) {
    imp_ChildProcess child(kLimits, [](int pipe) {
        imp_PartWriter writer(pipe);
        writer.Progress(0.5);
        writer.Part(RawTriangle());
        writer.End();
        return 0;
    });
    imp_PartReader reader(child, "f", kPlenty);
    double progress = 0;
    reader.OnProgress([&](double done) { progress = done; });
    const std::vector<hst_Part> parts = reader.ReadAll();
    ASSERT_EQ(parts.size(), 1u);
    EXPECT_EQ(parts[0].Name(), "a");
    EXPECT_EQ(parts[0].PlacedBox().High().GetX(), 6);
    EXPECT_EQ(progress, 0.5);
}

TEST(imp_ChildProcess, EndsWorkThatHangsOrCrashes) {
    const imp_Limits oneSecond{512, 1};
    const std::string late = "f: it took longer than 1 s (--time-limit)";
    EXPECT_EQ(Refusal([](int) { return pause(); }, oneSecond), late);
    EXPECT_EQ(Refusal(
                  [](int) {
                      for (volatile unsigned spin = 0;;) spin = spin + 1;
                      return 0;
                  },
                  oneSecond),
              late);
    EXPECT_THAT(Refusal([](int) { return raise(SIGKILL); }), HasSubstr("its reader died: Killed"));
    EXPECT_EQ(Refusal([](int) { return 3; }), "f: its reader gave up");
    EXPECT_EQ(Refusal([](int) { return 0; }), "f: its reader ended half-way");
}

TEST(imp_ChildProcess, LimitsMemory) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer takes the whole address space";
#endif
    const auto allocate = [](int) {
        volatile char* block = new (std::nothrow) char[std::size_t{1} << 30];
        return block ? 0 : 7;
    };
    EXPECT_EQ(Refusal(allocate), "f: its reader gave up");
    EXPECT_EQ(Refusal(allocate, {2048, 20}), "f: its reader ended half-way");
}

// The child is trusted with nothing: whatever a crashed reader may leave in the pipe is refused.
TEST(imp_PartReader, RefusesWhatIsNoStreamOfParts) {
    const auto part = [](auto change) {
        return [change](int pipe) {
            imp_RawPart raw = RawTriangle();
            change(raw);
            imp_PartWriter writer(pipe);
            writer.Part(raw);
            writer.End();
            return 0;
        };
    };
    const auto bytes = [](std::string text) {
        return [text](int pipe) { return imp_WriteAll(pipe, text.data(), text.size()) ? 0 : 1; };
    };
    const auto later = [](imp_RawPart&) {};
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const struct {
        std::function<int(int)> work;
        const char* cause;
    } cases[] = {
        {part([](imp_RawPart& raw) { raw.triangles[1] = 3; }),
         "part 'a': triangle 0 names vertex 3"},
        {part([](imp_RawPart& raw) { raw.triangles[1] = -1; }), "part 'a': triangle 0 names"},
        {part([](imp_RawPart& raw) { raw.triangles.clear(); }), "part 'a': it has no triangles"},
        {part([](imp_RawPart& raw) { raw.triangles.pop_back(); }), "a list of it is cut short"},
        {part([nan](imp_RawPart& raw) { raw.positions[4] = nan; }),
         "part 'a': it has a coordinate"},
        {part([](imp_RawPart& raw) { raw.placement[0][3] = 1 / 0.0; }), "placement is not finite"},
        {part([](imp_RawPart& raw) { raw.name = "\t "; }), "its name is no line of text"},
        {part([](imp_RawPart& raw) { raw.triangles.resize(kPlenty); }), "--memory-limit"},
        {bytes("garbage"), "no message"},
        {bytes(std::string("\x03\xFF\xFF\xFF\xFF", 5)), "impossible length"},
        {bytes(std::string("\x04\x01\x00\x00\x00", 5)), "lost parts"},
        {bytes(std::string("\x04\x00\x00\x00\x00more", 9)), "wrote more"},
        {bytes(std::string("\x02\x01", 2)), "half-way"},
    };
    for (const auto& garbage : cases) EXPECT_THAT(Refusal(garbage.work), HasSubstr(garbage.cause));
    EXPECT_EQ(Refusal(part(later)), "nothing");
}

}  // namespace
