#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <span>
#include <string>
#include <vector>

/// A promise about two benchmarks of one program: the median of `ours` is at most `limit` times the
/// median of `peer`.
struct bench_Ratio {
    const char* ours;
    const char* peer;
    double limit;
};

/// Prints the usual table and keeps the processor time of every repetition, which other programs on
/// the machine disturb less than the elapsed time.
class bench_MedianReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                times[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }
    /// The median over the repetitions of benchmark `name`; 0 when it did not run.
    [[nodiscard]] double Median(const std::string& name) const {
        const auto found = times.find(name);
        if (found == times.end()) return 0;
        std::vector<double> sorted = found->second;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }

  private:
    std::map<std::string, std::vector<double>> times;
};

/// Prints each ratio beside its limit; false when one is exceeded. Ratios whose benchmarks did not
/// run (a peer that is not installed, a filter) are left out.
inline bool bench_PrintRatios(const bench_MedianReporter& reporter,
                              std::span<const bench_Ratio> ratios) {
    bool allHold = true;
    std::printf("\n%-44s %-40s %8s %8s\n", "Ratio of medians", "to", "measured", "limit");
    for (const bench_Ratio& ratio : ratios) {
        const double peer = reporter.Median(ratio.peer);
        const double ours = reporter.Median(ratio.ours);
        if (peer == 0 || ours == 0) continue;
        const double measured = ours / peer;
        const bool holds = measured <= ratio.limit;
        allHold = allHold && holds;
        std::printf("%-44s %-40s %8.4f %8.4g%s\n", ratio.ours, ratio.peer, measured, ratio.limit,
                    holds ? "" : "  EXCEEDED");
    }
    return allHold;
}

/// The main function of a benchmark program: five repetitions in random order unless the command
/// line says otherwise, then the table of ratios. The exit status is 1 when a limit is exceeded.
inline int bench_Main(int argc, char** argv, std::span<const bench_Ratio> ratios) {
    std::string repetitions = "--benchmark_repetitions=5";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments = {argv[0], repetitions.data(), interleaving.data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    bench_MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return bench_PrintRatios(reporter, ratios) ? 0 : 1;
}
