#include <cstdint>
#include <cstdio>
#include <deque>
#include <iterator>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/bench_Ratios.h"
#include "cow/cow_List.h"
#include "cow/cow_Map.h"

#if defined(BENCH_HAS_QT6)
#include <QHash>
#include <QList>
#include <QMap>
#endif

namespace {

constexpr int million = 1000000;

struct Point40 {
    double x, y, z;
    std::uint64_t id;
    double weight;
};

template <class T>
T Value(int i) {
    if constexpr (std::is_same_v<T, Point40>) {
        return {1.0 * i, 2.0, 3.0, static_cast<std::uint64_t>(i), 1.0};
    } else {
        return T(i);
    }
}

/// `n` different keys in random order, the same on every run.
std::vector<int> RandomKeys(int n) {
    std::mt19937_64 engine(20);
    std::vector<int> keys(static_cast<std::size_t>(n));
    // An odd factor permutes the 32-bit integers, and the shift mixes the low bits.
    for (std::size_t i = 0; i < keys.size(); ++i) {
        std::uint32_t key = static_cast<std::uint32_t>(i) * 2654435761u;
        key ^= key >> 15;
        keys[i] = static_cast<int>(key * 2246822519u);
    }
    for (std::size_t i = keys.size(); i > 1; --i) std::swap(keys[i - 1], keys[engine() % i]);
    return keys;
}

std::vector<int> RandomIndices() {
    std::vector<int> indices(million);
    std::iota(indices.begin(), indices.end(), 0);
    std::mt19937_64 engine(21);
    for (std::size_t i = indices.size(); i > 1; --i) {
        std::swap(indices[i - 1], indices[engine() % i]);
    }
    return indices;
}

std::vector<int> AscendingKeys(int n) {
    std::vector<int> keys(static_cast<std::size_t>(n));
    std::iota(keys.begin(), keys.end(), 0);
    return keys;
}

template <class S>
std::vector<S> PartNames(int n) {
    std::vector<S> names;
    char name[16];
    for (int i = 0; i < n; ++i) {
        std::snprintf(name, sizeof name, "Part-%06d", i);
        names.push_back(S(name));
    }
    return names;
}

// Lists: one way to spell each operation for every container.

template <class C, class T>
void Append(C& container, const T& x) {
    if constexpr (requires { container.Append(x); }) {
        container.Append(x);
    } else {
        container.push_back(x);
    }
}

template <class T>
struct Hinted {
    static cow_List<T> Make() { return cow_List<T>::WithSizeHint(million); }
};
template <class T>
struct Reserved {
    static std::vector<T> Make() {
        std::vector<T> vector;
        vector.reserve(million);
        return vector;
    }
};
template <class C>
struct Plain {
    static C Make() { return C(); }
};

template <class Maker, class T>
void AppendMillion(benchmark::State& state) {
    for (auto _ : state) {
        auto container = Maker::Make();
        for (int i = 0; i < million; ++i) Append(container, Value<T>(i));
        benchmark::DoNotOptimize(container);
    }
}

template <class Maker>
auto MillionInts() {
    auto container = Maker::Make();
    for (int i = 0; i < million; ++i) Append(container, i);
    return container;
}

/// One loop for all that lies side by side: a loop of four instructions takes up to twice as long
/// where the compiler happens to put it across a cache line.
[[gnu::noinline]] int SumOf(const int* first, const int* last) {
    int sum = 0;
    for (; first != last; ++first) sum += *first;
    return sum;
}

template <class Maker>
void Sum(benchmark::State& state) {
    const auto container = MillionInts<Maker>();
    for (auto _ : state) {
        int sum = 0;
        if constexpr (requires { container.Layout(); }) {
            container.ForEachSpan(
                [&sum](auto span) { sum += SumOf(span.data(), span.data() + span.size()); });
        } else if constexpr (requires { container.data(); }) {
            sum = SumOf(container.data(), container.data() + container.size());
        } else {
            for (const int x : container) sum += x;
        }
        benchmark::DoNotOptimize(sum);
    }
}

template <class Maker>
void RangeFor(benchmark::State& state) {
    const auto container = MillionInts<Maker>();
    for (auto _ : state) {
        int sum = 0;
        for (const int x : container) sum += x;
        benchmark::DoNotOptimize(sum);
    }
}

template <class Maker>
void RandomRead(benchmark::State& state) {
    const auto container = MillionInts<Maker>();
    const std::vector<int> indices = RandomIndices();
    for (auto _ : state) {
        int sum = 0;
        for (const int i : indices) {
            if constexpr (requires { container.UncheckedConstGet(i); }) {
                sum += container.UncheckedConstGet(i);
            } else {
                sum += container[static_cast<std::uint32_t>(i)];
            }
        }
        benchmark::DoNotOptimize(sum);
    }
}

template <class Maker>
void Copy(benchmark::State& state) {
    const auto container = MillionInts<Maker>();
    for (auto _ : state) {
        auto copy(container);
        benchmark::DoNotOptimize(copy);
    }
}

template <class Maker>
void CopyAndWrite(benchmark::State& state) {
    const auto container = MillionInts<Maker>();
    int i = 0;
    for (auto _ : state) {
        auto copy(container);
        i = (i + 7919) % million;
        if constexpr (requires { copy.Get(i); }) {
            copy.Get(i) = i;
        } else {
            copy[static_cast<std::uint32_t>(i)] = i;
        }
        benchmark::DoNotOptimize(copy);
    }
}

// Maps.

template <class M, class K>
void Insert(M& map, const K& key, int value) {
    if constexpr (requires { map.Insert(key, value); }) {
        map.Insert(key, value);
    } else if constexpr (requires { map.constFind(key); }) {
        map.insert(key, value);
    } else {
        map.emplace(key, value);
    }
}

template <class M, class K>
int Find(const M& map, const K& key) {
    if constexpr (requires { map.ConstGet(key); }) {
        return map.ConstGet(key);
    } else if constexpr (requires { map.constFind(key).value(); }) {
        return map.constFind(key).value();
    } else {
        return map.find(key)->second;
    }
}

template <class M, class K>
M Filled(const std::vector<K>& keys) {
    M map;
    for (const K& key : keys) Insert(map, key, 1);
    return map;
}

template <class M, class K>
void InsertAll(benchmark::State& state, const std::vector<K>& keys) {
    for (auto _ : state) {
        M map = Filled<M>(keys);
        benchmark::DoNotOptimize(map);
    }
}

template <class M, class K>
void FindAll(benchmark::State& state, const std::vector<K>& keys) {
    const M map = Filled<M>(keys);
    std::vector<K> sought = keys;
    std::mt19937_64 engine(22);
    for (std::size_t i = sought.size(); i > 1; --i) std::swap(sought[i - 1], sought[engine() % i]);
    for (auto _ : state) {
        int sum = 0;
        for (const K& key : sought) sum += Find(map, key);
        benchmark::DoNotOptimize(sum);
    }
}

template <class M>
void CopyAndInsert(benchmark::State& state) {
    const std::vector<int> keys = RandomKeys(200000);
    M map;
    for (std::size_t i = 0; i < 100000; ++i) Insert(map, keys[i], 1);
    std::size_t next = 100000;
    for (auto _ : state) {
        M copy(map);
        Insert(copy, keys[next], 1);
        next = next + 1 == keys.size() ? 100000 : next + 1;
        benchmark::DoNotOptimize(copy);
    }
}

using benchmark::RegisterBenchmark;

template <class Maker>
void RegisterList(const std::string& name) {
    RegisterBenchmark(("append ints: " + name).c_str(), AppendMillion<Maker, int>);
    RegisterBenchmark(("sum: " + name).c_str(), Sum<Maker>);
    RegisterBenchmark(("random read: " + name).c_str(), RandomRead<Maker>);
    RegisterBenchmark(("copy: " + name).c_str(), Copy<Maker>);
    RegisterBenchmark(("copy and write: " + name).c_str(), CopyAndWrite<Maker>);
}

template <class M>
void RegisterIntMap(const std::string& name) {
    for (const int n : {10000, million}) {
        const std::string suffix = std::string(n == million ? " 1M: " : " 10k: ") + name;
        RegisterBenchmark(("insert random" + suffix).c_str(),
                          [n](auto& state) { InsertAll<M>(state, RandomKeys(n)); });
        RegisterBenchmark(("find random" + suffix).c_str(),
                          [n](auto& state) { FindAll<M>(state, RandomKeys(n)); });
    }
    RegisterBenchmark(("insert ascending 1M: " + name).c_str(),
                      [](auto& state) { InsertAll<M>(state, AscendingKeys(million)); });
    RegisterBenchmark(("find ascending 1M: " + name).c_str(),
                      [](auto& state) { FindAll<M>(state, AscendingKeys(million)); });
    RegisterBenchmark(("copy and insert 100k: " + name).c_str(), CopyAndInsert<M>);
}

template <class M, class S>
void RegisterStringMap(const std::string& name) {
    RegisterBenchmark(("insert part names 20k: " + name).c_str(),
                      [](auto& state) { InsertAll<M>(state, PartNames<S>(20000)); });
    RegisterBenchmark(("find part names 20k: " + name).c_str(),
                      [](auto& state) { FindAll<M>(state, PartNames<S>(20000)); });
}

void RegisterAll() {
    RegisterList<Plain<cow_List<int>>>("cow_List");
    RegisterList<Hinted<int>>("cow_List hinted");
    RegisterList<Plain<std::vector<int>>>("std::vector");
    RegisterList<Reserved<int>>("std::vector reserved");
    RegisterList<Plain<std::deque<int>>>("std::deque");
    RegisterBenchmark("range-for: cow_List", RangeFor<Plain<cow_List<int>>>);
    RegisterBenchmark("range-for: std::vector", RangeFor<Plain<std::vector<int>>>);
    RegisterBenchmark("append points: cow_List", AppendMillion<Plain<cow_List<Point40>>, Point40>);
    RegisterBenchmark("append points: cow_List hinted", AppendMillion<Hinted<Point40>, Point40>);
    RegisterBenchmark("append points: std::vector",
                      AppendMillion<Plain<std::vector<Point40>>, Point40>);
    RegisterBenchmark("append points: std::deque",
                      AppendMillion<Plain<std::deque<Point40>>, Point40>);
    RegisterIntMap<cow_Map<int, int>>("cow_Map");
    RegisterIntMap<std::map<int, int>>("std::map");
    RegisterIntMap<std::unordered_map<int, int>>("std::unordered_map");
    RegisterStringMap<cow_Map<cow_String, int>, cow_String>("cow_Map");
    RegisterStringMap<std::map<std::string, int>, std::string>("std::map");
    RegisterStringMap<std::unordered_map<std::string, int>, std::string>("std::unordered_map");
#if defined(BENCH_HAS_QT6)
    RegisterList<Plain<QList<int>>>("QList");
    RegisterBenchmark("append points: QList", AppendMillion<Plain<QList<Point40>>, Point40>);
    RegisterIntMap<QMap<int, int>>("QMap");
    RegisterIntMap<QHash<int, int>>("QHash");
#endif
}

constexpr bench_Ratio ratios[] = {
    {"append ints: cow_List", "append ints: std::vector", 3},
    {"append ints: cow_List hinted", "append ints: std::vector", 1.5},
    {"append points: cow_List", "append points: std::vector", 0.5},
    {"sum: cow_List", "sum: std::vector", 1.2},
    {"sum: cow_List hinted", "sum: std::vector", 1.2},
    {"random read: cow_List hinted", "random read: std::vector", 2.5},
    {"random read: cow_List", "random read: std::vector", 5},
    {"copy: cow_List", "copy: QList", 1},
    {"copy and write: cow_List", "copy and write: QList", 0.9},
    {"copy and write: cow_List hinted", "copy and write: QList", 0.2},
    {"insert random 10k: cow_Map", "insert random 10k: std::map", 1},
    {"insert random 1M: cow_Map", "insert random 1M: std::map", 1},
    {"find random 10k: cow_Map", "find random 10k: std::map", 1.1},
    {"find random 1M: cow_Map", "find random 1M: std::map", 1.4},
    {"copy and insert 100k: cow_Map", "copy and insert 100k: std::map", 0.01},
    {"copy and insert 100k: cow_Map", "copy and insert 100k: QMap", 0.01},
    {"copy and insert 100k: cow_Map", "copy and insert 100k: QHash", 0.01},
};

}  // namespace

int main(int argc, char** argv) {
    RegisterAll();
    return bench_Main(argc, argv, ratios);
}
