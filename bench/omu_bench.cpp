// Reading the arguments of a scripting command, without the interpreter.

#include <benchmark/benchmark.h>

#include <cstdio>

#include "bench/bench_Ratios.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_TypeErrorException.h"

namespace {

/// A call with three positional and three keyword arguments, the last of the kind `last` makes.
template <class Last>
omu_Arguments Call(const Last& last) {
    omu_Arguments call;
    call.Put(1.5);
    call.Put(2);
    call.Put("name");
    call.Put(true, "visible");
    call.Put(7, "count");
    call.Put(last, "size");
    return call;
}

/// What a command does with the call.
void ReadSix(omu_Arguments& call) {
    double width = 0, size = 0;
    int index = 0, count = 0;
    bool visible = false;
    cow_String name;
    call.Begin();
    call.Get(width, "width");
    call.Get(index, "index");
    call.Get(name, "name");
    call.Optional();
    call.Get(visible, "visible");
    call.Get(count, "count");
    call.Get(size, "size");
    call.End();
    benchmark::DoNotOptimize(width + size + index + count + visible);
}

void BM_ReadSixArguments(benchmark::State& state) {
    omu_Arguments call = Call(0.25);
    for (auto _ : state) ReadSix(call);
}
BENCHMARK(BM_ReadSixArguments);

void BM_RefuseSixArguments(benchmark::State& state) {
    omu_Arguments call = Call("wide");
    for (auto _ : state) {
        try {
            ReadSix(call);
        } catch (const omu_TypeErrorException& refused) {
            benchmark::DoNotOptimize(&refused);
        }
    }
}
BENCHMARK(BM_RefuseSixArguments);

void BM_BuildSixArguments(benchmark::State& state) {
    for (auto _ : state) {
        omu_Arguments call = Call(0.25);
        benchmark::DoNotOptimize(&call);
    }
}
BENCHMARK(BM_BuildSixArguments);

}  // namespace

int main(int argc, char** argv) {
    constexpr double limitNs = 1000;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    bench_MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const double measuredNs = reporter.Median("BM_ReadSixArguments");
    if (measuredNs == 0) return 0;  // left out by a filter
    const bool holds = measuredNs <= limitNs;
    std::printf("\nSix arguments read in %.0f ns, limit %.0f ns%s\n", measuredNs, limitNs,
                holds ? "" : "  EXCEEDED");
    return holds ? 0 : 1;
}
