// Arrays of the scripting model: made of a buffer and of nested values, shown and compared.

#include <cstring>
#include <memory>
#include <numeric>
#include <vector>

#include "bench/bench_Ratios.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimTuple.h"

namespace {

constexpr int kMillion = 1000000;

std::vector<double> Elements() {
    std::vector<double> elements(kMillion);
    std::iota(elements.begin(), elements.end(), 0.5);
    return elements;
}

void BM_Memcpy(benchmark::State& state) {
    const std::vector<double> source = Elements();
    std::vector<double> target(source.size());
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), source.size() * sizeof(double));
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Memcpy);

void BM_ArrayOfBuffer(benchmark::State& state) {
    const std::vector<double> source = Elements();
    const int extent = kMillion;
    for (auto _ : state) {
        const omu_PrimArray array(1, &extent, source.data());
        benchmark::DoNotOptimize(array.ConstGetData());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_ArrayOfBuffer);

omu_PrimArray Table() {
    const std::vector<double> source = Elements();
    const int extents[] = {kMillion / 4, 4};
    return {2, extents, source.data()};
}

void BM_ArrayOfNestedTuples(benchmark::State& state) {
    const omu_PrimTuple rows{Table()};
    std::vector<omu_PrimHandle> nested;
    for (int r = 0; r < rows.Length(); ++r) {
        const auto& row = static_cast<const omu_PrimSequence&>(*rows.Index(r));
        nested.emplace_back(new omu_PrimTuple(row));
    }
    const omu_PrimTuple tuple(
        cow_List<omu_PrimHandle>(nested.data(), static_cast<int>(nested.size())));
    for (auto _ : state) {
        const omu_PrimArray array(tuple);
        benchmark::DoNotOptimize(array.ConstGetData());
    }
}
BENCHMARK(BM_ArrayOfNestedTuples)->Unit(benchmark::kMillisecond);

void BM_TextOfArray(benchmark::State& state) {
    const omu_PrimArray array = Table();
    for (auto _ : state) benchmark::DoNotOptimize(array.AsString(0).Length());
}
BENCHMARK(BM_TextOfArray)->Unit(benchmark::kMillisecond);

void BM_EqualArrays(benchmark::State& state) {
    const omu_PrimArray array = Table();
    const std::unique_ptr<omu_PrimArray> other(array.Repeat(1));
    for (auto _ : state) {
        bool isEqual = array == *other;
        benchmark::DoNotOptimize(isEqual);
    }
}
BENCHMARK(BM_EqualArrays);

constexpr bench_Ratio kRatios[] = {{"BM_ArrayOfBuffer", "BM_Memcpy", 2}};

}  // namespace

int main(int argc, char** argv) { return bench_Main(argc, argv, kRatios); }
