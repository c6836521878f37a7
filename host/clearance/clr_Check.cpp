#include "host/clearance/clr_Check.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <tuple>

#include "gsl/gsl_BBox.h"

namespace {

using Bodies = std::vector<std::unique_ptr<clr_Body>>;  // none for a part without area

/// Runs `task(i)` for every i below `count` on the threads of the machine, and `onDone(done)` now
/// and then on the calling one. The first exception of a task, or one of `onDone`, ends the work
/// and is thrown here.
void ForEachInParallel(std::size_t count, const std::function<void(std::size_t)>& task,
                       const std::function<void(std::size_t)>& onDone) {
    constexpr std::chrono::milliseconds kReport(100);
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> done = 0;
    std::mutex mutex;
    std::condition_variable ended;
    std::exception_ptr failure;
    const unsigned threadCount = std::max(std::thread::hardware_concurrency(), 1u);
    unsigned running = threadCount;
    const auto work = [&] {
        try {
            for (std::size_t i = next++; i < count; i = next++) {
                task(i);
                ++done;
            }
        } catch (...) {
            const std::scoped_lock lock(mutex);
            if (!failure) failure = std::current_exception();
            next = count;
        }
        const std::scoped_lock lock(mutex);
        if (--running == 0) ended.notify_one();
    };
    {
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < threadCount; ++i) threads.emplace_back(work);
        std::unique_lock lock(mutex);
        try {
            while (!ended.wait_for(lock, kReport, [&] { return running == 0; })) onDone(done);
        } catch (...) {
            next = count;
            throw;
        }
    }
    if (failure) std::rethrow_exception(failure);
}

/// The numbers of the parts in the order of their names.
std::vector<std::size_t> OrderedByName(const std::vector<hst_Part>& parts) {
    std::vector<std::size_t> order(parts.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return parts[a].Name() < parts[b].Name(); });
    return order;
}

bool IsIgnored(const clr_IgnoredPairs& ignored, const std::string& a, const std::string& b) {
    if (ignored.empty()) return false;
    return ignored.contains({a, b}) || ignored.contains({b, a});
}

/// What there is to decide.
struct Work {
    std::vector<clr_Finding> pairs;  ///< whose boxes are near enough for more than a clear pair
    std::size_t clearPairs = 0;      ///< all others
};

/// The pairs of parts that are not ignored; those to decide with the costly ones first, so that no
/// thread is left with one at the end.
Work WorkOf(const std::vector<hst_Part>& parts, const Bodies& bodies, const clr_Lengths& lengths,
            const clr_IgnoredPairs& ignored) {
    Work work;
    const double reach = std::max(lengths.gap, lengths.touch);
    const std::vector<std::size_t> order = OrderedByName(parts);
    for (auto first = order.begin(); first != order.end(); ++first) {
        for (auto second = first + 1; second != order.end(); ++second) {
            if (!bodies[*first] || !bodies[*second]) continue;
            if (IsIgnored(ignored, parts[*first].Name(), parts[*second].Name())) continue;
            if (std::sqrt(bodies[*first]->Box().DistanceSq(bodies[*second]->Box())) > reach) {
                ++work.clearPairs;
            } else {
                work.pairs.push_back({*first, *second, {}});
            }
        }
    }
    const auto cost = [&](const clr_Finding& pair) {
        return parts[pair.first].TriangleCount() + parts[pair.second].TriangleCount();
    };
    std::stable_sort(work.pairs.begin(), work.pairs.end(),
                     [&](const clr_Finding& a, const clr_Finding& b) { return cost(a) > cost(b); });
    return work;
}

void SortForReport(std::vector<clr_Finding>& pairs, const std::vector<hst_Part>& parts) {
    const auto key = [&](const clr_Finding& pair) {
        const bool isCrossing = pair.result.kind == clr_Kind::Crossing;
        const double length = isCrossing ? -pair.result.length : pair.result.length;
        return std::tuple<clr_Kind, double, const std::string&, const std::string&>(
            pair.result.kind, length, parts[pair.first].Name(), parts[pair.second].Name());
    };
    std::sort(pairs.begin(), pairs.end(),
              [&](const clr_Finding& a, const clr_Finding& b) { return key(a) < key(b); });
}

}  // namespace

std::size_t clr_Report::Count(clr_Kind kind) const {
    return static_cast<std::size_t>(
        std::count_if(pairs.begin(), pairs.end(),
                      [kind](const clr_Finding& pair) { return pair.result.kind == kind; }));
}

bool clr_Report::HasFindings() const {
    return std::any_of(pairs.begin(), pairs.end(),
                       [](const clr_Finding& pair) { return pair.result.IsFinding(); });
}

clr_Report clr_Check(const std::vector<hst_Part>& parts, const clr_Lengths& lengths,
                     const clr_IgnoredPairs& ignored,
                     const std::function<void(std::size_t, std::size_t)>& onProgress) {
    clr_Report report;
    report.lengths = lengths;
    Bodies bodies(parts.size());
    ForEachInParallel(
        parts.size(),
        [&](std::size_t i) {
            if (clr_Body::HasArea(parts[i])) bodies[i] = std::make_unique<clr_Body>(parts[i]);
        },
        [](std::size_t) {});
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!bodies[i]) report.flat.insert(parts[i].Name());
    }

    Work work = WorkOf(parts, bodies, lengths, ignored);
    std::vector<clr_Finding>& pairs = work.pairs;
    report.pairsChecked = pairs.size() + work.clearPairs;
    ForEachInParallel(
        pairs.size(),
        [&](std::size_t i) {
            clr_Finding& pair = pairs[i];
            pair.result = clr_CheckPair(*bodies[pair.first], *bodies[pair.second], lengths);
        },
        [&](std::size_t done) { onProgress(done, pairs.size()); });
    for (const clr_Finding& pair : pairs) {
        if (pair.result.firstUnclear) report.unclear.insert(parts[pair.first].Name());
        if (pair.result.secondUnclear) report.unclear.insert(parts[pair.second].Name());
        if (pair.result.kind != clr_Kind::Clear) report.pairs.push_back(pair);
    }
    SortForReport(report.pairs, parts);
    return report;
}

double clr_DefaultTouch(const std::vector<hst_Part>& parts) {
    constexpr double kOfDiagonal = 1e-6;
    gsl_BBox box;
    for (const hst_Part& part : parts) box.Add(part.PlacedBox());
    return box.IsEmpty() ? 0 : kOfDiagonal * box.Size();
}
