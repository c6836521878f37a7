// Colour conversion of a million colours there and back against Qt's colour class, one colour at a
// time, and the projection of a million points against the copying of as many bytes.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstring>
#include <random>
#include <vector>

#include "bench/bench_Ratios.h"
#include "g3d/g3d_Camera.h"
#include "g3d/g3d_ColorArray.h"
#include "g3d/g3d_ColorC.h"

#if defined(BENCH_HAS_QT6)
#include <QColor>
#endif

namespace {

constexpr std::size_t count = 1000000;

std::vector<unsigned short> RandomChannels() {
    std::mt19937 engine(7);
    std::vector<unsigned short> rgb(3 * count);
    for (unsigned short& channel : rgb) channel = static_cast<unsigned short>(engine() & 0xffffu);
    return rgb;
}

void ConvertArray(benchmark::State& state) {
    const std::vector<unsigned short> rgb = RandomChannels();
    std::vector<float> hsv(3 * count);
    std::vector<unsigned short> back(3 * count);
    for (auto _ : state) {
        g3d_ColorArray::RGBToHSV(hsv.data(), rgb.data(), count);
        g3d_ColorArray::HSVToRGB(back.data(), hsv.data(), count);
        benchmark::ClobberMemory();
    }
    if (back != rgb) state.SkipWithError("the colours did not come back");
}

void ConvertSingly(benchmark::State& state) {
    const std::vector<unsigned short> rgb = RandomChannels();
    std::vector<float> hsv(3 * count);
    std::vector<unsigned short> back(3 * count);
    for (auto _ : state) {
        for (std::size_t i = 0; i < 3 * count; i += 3) RGBToHSV(hsv.data() + i, rgb.data() + i);
        for (std::size_t i = 0; i < 3 * count; i += 3) HSVToRGB(back.data() + i, hsv.data() + i);
        benchmark::ClobberMemory();
    }
}

#if defined(BENCH_HAS_QT6)
void ConvertQColor(benchmark::State& state) {
    const std::vector<unsigned short> rgb = RandomChannels();
    std::vector<QColor> colors(count);
    for (std::size_t i = 0; i < count; ++i)
        colors[i] = QColor::fromRgba64(rgb[3 * i], rgb[3 * i + 1], rgb[3 * i + 2]);
    std::vector<QColor> back(count);
    for (auto _ : state) {
        for (std::size_t i = 0; i < count; ++i) back[i] = colors[i].toHsv().toRgb();
        benchmark::ClobberMemory();
    }
}
#endif

std::vector<g3d_Point> RandomPoints() {
    std::mt19937 engine(7);
    const auto coordinate = [&] { return static_cast<float>(engine() >> 8) * 0x1p-24f - 0.5f; };
    std::vector<g3d_Point> points;
    for (std::size_t i = 0; i < count; ++i)
        points.emplace_back(coordinate(), coordinate(), coordinate());
    return points;
}

void ProjectPoints(benchmark::State& state) {
    const std::vector<g3d_Point> points = RandomPoints();
    std::vector<g3d_Point> clip(count);
    g3d_Camera camera;
    g3d_XForm toClip;
    camera.Canned({{0, 0, 0}, 1}, g3d_VIEW_ISOMETRIC).SetLayerXForm(true, &toClip);
    for (auto _ : state) {
        toClip.Transform(clip.data(), points.data(), count);
        benchmark::ClobberMemory();
    }
}

/// The bound of the memory: the same bytes read and written, nothing computed.
void CopyPoints(benchmark::State& state) {
    const std::vector<g3d_Point> points = RandomPoints();
    std::vector<float> clip(4 * count);
    for (auto _ : state) {
        std::memcpy(clip.data(), points.data(), count * sizeof(g3d_Point));
        benchmark::ClobberMemory();
    }
}

void RegisterAll() {
    using benchmark::RegisterBenchmark;
    constexpr auto unit = benchmark::kMillisecond;
    RegisterBenchmark("RGB to HSV and back: arrays", ConvertArray)->Unit(unit);
    RegisterBenchmark("RGB to HSV and back: plain functions", ConvertSingly)->Unit(unit);
#if defined(BENCH_HAS_QT6)
    RegisterBenchmark("RGB to HSV and back: QColor", ConvertQColor)->Unit(unit);
#endif
    RegisterBenchmark("project points: g3d_XForm", ProjectPoints)->Unit(unit);
    RegisterBenchmark("project points: memcpy", CopyPoints)->Unit(unit);
}

constexpr bench_Ratio ratios[] = {
    {"RGB to HSV and back: arrays", "RGB to HSV and back: QColor", 0.25},
    {"RGB to HSV and back: arrays", "RGB to HSV and back: plain functions", 1},
    {"project points: g3d_XForm", "project points: memcpy", 2},
};

}  // namespace

int main(int argc, char** argv) {
    RegisterAll();
    return bench_Main(argc, argv, ratios);
}
