// Mementos and collections: a million doubles against memcpy, and 100,000 small objects of a class
// hierarchy against the archives of cereal and of Boost, which write them by pointers to their base
// class. Every stream is memory that is there already.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <istream>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

#include "bench/bench_Ratios.h"
#include "cow/cow_List.h"
#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_ReadObjCollections.h"
#include "idb/idb_WriteObjCollections.h"

#if defined(BENCH_HAS_CEREAL)
#include <cereal/archives/binary.hpp>
#include <cereal/types/base_class.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/polymorphic.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#endif
#if defined(BENCH_HAS_BOOST)
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/archive/polymorphic_binary_iarchive.hpp>
#include <boost/archive/polymorphic_binary_oarchive.hpp>
#include <boost/serialization/base_object.hpp>
#include <boost/serialization/export.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/unique_ptr.hpp>
#include <boost/serialization/vector.hpp>
#endif

namespace {

constexpr int million = 1000000;
constexpr int objectCount = 100000;
constexpr std::size_t objectRoom = std::size_t{objectCount} * 128;

// Lists.

std::vector<double> Doubles() {
    std::vector<double> values(million);
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = 0.5 * static_cast<double>(i);
    return values;
}

void MemcpyThere(benchmark::State& state) {
    const std::vector<double> values = Doubles();
    std::vector<double> stream(values.size());
    for (auto _ : state) {
        std::memcpy(stream.data(), values.data(), values.size() * sizeof(double));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MemcpyThere)->Unit(benchmark::kMicrosecond);

void MemcpyThereAndBack(benchmark::State& state) {
    const std::vector<double> values = Doubles();
    std::vector<double> stream(values.size());
    std::vector<double> back(values.size());
    for (auto _ : state) {
        std::memcpy(stream.data(), values.data(), values.size() * sizeof(double));
        benchmark::ClobberMemory();
        std::memcpy(back.data(), stream.data(), values.size() * sizeof(double));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(MemcpyThereAndBack)->Unit(benchmark::kMicrosecond);

void WriteList(bio_Ofilter& out, const cow_List<double>& list) {
    out.Clear();
    idb_WriteListPrim<double>(out, 1).Write(list);
}

/// The list by a block, and its last element by itself.
void ReadList(const bio_Ofilter& stream, std::vector<double>& back) {
    bio_Ifilter in(stream.Data(), stream.Size());
    idb_ReadListPrim<double> reader(in);
    reader.Next();
    if (reader.Read(back.data(), million - 1) == 1) back.back() = reader.Read();
}

void DoublesWritten(benchmark::State& state) {
    const cow_List<double> list(Doubles().data(), million);
    bio_Ofilter out(million * sizeof(double) + 64);
    for (auto _ : state) {
        WriteList(out, list);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(DoublesWritten)->Unit(benchmark::kMicrosecond);

void DoublesWrittenAndRead(benchmark::State& state) {
    const std::vector<double> values = Doubles();
    const cow_List<double> list(values.data(), million);
    bio_Ofilter out(million * sizeof(double) + 64);
    std::vector<double> back(values.size());
    for (auto _ : state) {
        WriteList(out, list);
        ReadList(out, back);
        benchmark::ClobberMemory();
    }
    if (back != values) state.SkipWithError("the list read is not the list written");
}
BENCHMARK(DoublesWrittenAndRead)->Unit(benchmark::kMicrosecond);

// Objects. One hierarchy for each way of archiving, alike but for the string's type.

struct Values {
    double x, y, z, weight;
    int row, group;
};

Values ValuesOf(int i) { return {1.0 * i, 2.0 * i, 3.0 * i, 0.5 * i, i, i % 7}; }

std::string NameOf(int i) {
    char name[16];
    std::snprintf(name, sizeof name, "Part-%06d", i);
    return name;
}

template <class Base, class Item>
std::vector<std::unique_ptr<Base>> MakeItems() {
    std::vector<std::unique_ptr<Base>> items;
    for (int i = 0; i < objectCount; ++i) {
        auto item = std::make_unique<Item>();
        item->values = ValuesOf(i);
        item->name = NameOf(i).c_str();
        items.push_back(std::move(item));
    }
    return items;
}

template <class Item, class Base>
bool IsSound(const std::vector<std::unique_ptr<Base>>& items) {
    if (items.size() != objectCount) return false;
    for (int i = 0; i < objectCount; i += 9999) {
        const auto* item = dynamic_cast<const Item*>(items[static_cast<std::size_t>(i)].get());
        const bool isEqual = item && item->values.z == 3.0 * i && item->values.group == i % 7 &&
                             item->name == NameOf(i).c_str();
        if (!isEqual) return false;
    }
    return true;
}

struct Base {
    virtual ~Base() = default;
    [[nodiscard]] virtual std::uint32_t DynTypeId() const = 0;
    virtual void DBWrite(cls_WriteVisitor& visitor) const = 0;
};

struct Item : Base {
    static constexpr std::uint32_t TypeId() { return 0x7FF10001; }

    Item() = default;
    explicit Item(cls_ReadVisitor& visitor) {
        visitor.Read("_x", values.x);
        visitor.Read("_y", values.y);
        visitor.Read("_z", values.z);
        visitor.Read("_weight", values.weight);
        visitor.Read("_row", values.row);
        visitor.Read("_group", values.group);
        visitor.Read("_name", name);
    }
    [[nodiscard]] std::uint32_t DynTypeId() const override { return TypeId(); }
    void DBWrite(cls_WriteVisitor& visitor) const override {
        visitor.Write("_x", values.x);
        visitor.Write("_y", values.y);
        visitor.Write("_z", values.z);
        visitor.Write("_weight", values.weight);
        visitor.Write("_row", values.row);
        visitor.Write("_group", values.group);
        visitor.Write("_name", name);
    }
    static void Describe(cls_ClassRegistrar& registrar) {
        cls_ClassMetadata metadata("Item", TypeId(), [](cls_ReadVisitor& visitor) -> void* {
            return static_cast<Base*>(new Item(visitor));
        });
        for (const char* field : {"_x", "_y", "_z", "_weight"}) {
            metadata.AddAttribute(field, cls_KIND_DOUBLE);
        }
        metadata.AddAttribute("_row", cls_KIND_INT)
            .AddAttribute("_group", cls_KIND_INT)
            .AddAttribute("_name", cls_KIND_STRING)
            .SetCowDtor([](void* object) { delete static_cast<Base*>(object); });
        registrar.AddClass(metadata);
    }

    Values values{};
    cow_String name;
};
using Items = std::vector<std::unique_ptr<Base>>;

const cls_ClassRegistrar& Classes() {
    static const auto classes = [] {
        auto made = std::make_unique<cls_ClassRegistrar>();
        Item::Describe(*made);
        return made;
    }();
    return *classes;
}

void WriteItems(bio_Ofilter& out, const Items& items) {
    out.Clear();
    idb_WriteListObj writer(out, Classes(), 1);
    for (const auto& item : items) {
        const auto record = writer.MakeWriteObj(item->DynTypeId(), cls_Uid(), item.get());
        if (record) item->DBWrite(*record);
    }
}

Items ReadItems(const bio_Ofilter& stream) {
    bio_Ifilter in(stream.Data(), stream.Size());
    idb_ReadListObj reader(in, Classes(), Item::TypeId());
    Items items;
    items.reserve(static_cast<std::size_t>(reader.Size()));
    while (reader.Next()) {
        items.emplace_back(static_cast<Base*>(reader.ReadObjValue(Item::TypeId())));
    }
    return items;
}

void ObjectsWritten(benchmark::State& state) {
    const Items items = MakeItems<Base, Item>();
    bio_Ofilter out(objectRoom);
    for (auto _ : state) WriteItems(out, items);
}
BENCHMARK(ObjectsWritten)->Unit(benchmark::kMillisecond);

void ObjectsRead(benchmark::State& state) {
    bio_Ofilter out(objectRoom);
    WriteItems(out, MakeItems<Base, Item>());
    Items items;
    for (auto _ : state) items = ReadItems(out);
    if (!IsSound<Item>(items)) state.SkipWithError("the objects read are not those written");
}
BENCHMARK(ObjectsRead)->Unit(benchmark::kMillisecond);

#if defined(BENCH_HAS_CEREAL) || defined(BENCH_HAS_BOOST)

/// A stream in memory that is there already.
class MemoryStream : public std::streambuf {
  public:
    explicit MemoryStream(std::vector<char>& bytes) {
        setp(bytes.data(), bytes.data() + bytes.size());
        setg(bytes.data(), bytes.data(), bytes.data() + bytes.size());
    }
};

/// The objects by `Write(std::streambuf&, items)`.
template <class Peer>
void PeerWritten(benchmark::State& state) {
    const auto items = MakeItems<typename Peer::Base, typename Peer::Item>();
    std::vector<char> bytes(objectRoom);
    for (auto _ : state) {
        MemoryStream stream(bytes);
        Peer::Write(stream, items);
        benchmark::ClobberMemory();
    }
}

/// The objects by `Read(std::streambuf&, items)`.
template <class Peer>
void PeerRead(benchmark::State& state) {
    auto items = MakeItems<typename Peer::Base, typename Peer::Item>();
    std::vector<char> bytes(objectRoom);
    MemoryStream out(bytes);
    Peer::Write(out, items);
    for (auto _ : state) {
        MemoryStream stream(bytes);
        typename Peer::Items read;
        Peer::Read(stream, read);
        items = std::move(read);
    }
    if (!IsSound<typename Peer::Item>(items)) state.SkipWithError("the objects differ");
}

#endif

}  // namespace

#if defined(BENCH_HAS_CEREAL)

namespace bench_cereal {

struct Base {
    virtual ~Base() = default;
    template <class Archive>
    void serialize(Archive&) {}
};

struct Item : Base {
    template <class Archive>
    void serialize(Archive& archive) {
        archive(cereal::base_class<Base>(this), values.x, values.y, values.z, values.weight,
                values.row, values.group, name);
    }

    Values values{};
    std::string name;
};

struct Peer {
    using Base = bench_cereal::Base;
    using Item = bench_cereal::Item;
    using Items = std::vector<std::unique_ptr<Base>>;

    static void Write(std::streambuf& stream, const Items& items) {
        std::ostream out(&stream);
        cereal::BinaryOutputArchive archive(out);
        archive(items);
    }
    static void Read(std::streambuf& stream, Items& items) {
        std::istream in(&stream);
        cereal::BinaryInputArchive archive(in);
        archive(items);
    }
};

}  // namespace bench_cereal

CEREAL_REGISTER_TYPE(bench_cereal::Item)

namespace {
void CerealWritten(benchmark::State& state) { PeerWritten<bench_cereal::Peer>(state); }
BENCHMARK(CerealWritten)->Unit(benchmark::kMillisecond);
void CerealRead(benchmark::State& state) { PeerRead<bench_cereal::Peer>(state); }
BENCHMARK(CerealRead)->Unit(benchmark::kMillisecond);
}  // namespace

#endif

#if defined(BENCH_HAS_BOOST)

namespace bench_boost {

struct Base {
    virtual ~Base() = default;
    template <class Archive>
    void serialize(Archive&, unsigned) {}
};

struct Item : Base {
    template <class Archive>
    void serialize(Archive& archive, unsigned) {
        archive& boost::serialization::base_object<Base>(*this);
        archive& values.x& values.y& values.z& values.weight& values.row& values.group& name;
    }

    Values values{};
    std::string name;
};

/// Over either kind of Boost's binary archives: that of a known type, and that behind an interface.
template <class Output, class Input>
struct Peer {
    using Base = bench_boost::Base;
    using Item = bench_boost::Item;
    using Items = std::vector<std::unique_ptr<Base>>;

    static void Write(std::streambuf& stream, const Items& items) {
        std::ostream out(&stream);
        Output archive(out);
        archive << items;
    }
    static void Read(std::streambuf& stream, Items& items) {
        std::istream in(&stream);
        Input archive(in);
        archive >> items;
    }
};
using Direct = Peer<boost::archive::binary_oarchive, boost::archive::binary_iarchive>;
using Polymorphic =
    Peer<boost::archive::polymorphic_binary_oarchive, boost::archive::polymorphic_binary_iarchive>;

}  // namespace bench_boost

BOOST_CLASS_EXPORT(bench_boost::Item)

namespace {
void BoostWritten(benchmark::State& state) { PeerWritten<bench_boost::Direct>(state); }
BENCHMARK(BoostWritten)->Unit(benchmark::kMillisecond);
void BoostRead(benchmark::State& state) { PeerRead<bench_boost::Direct>(state); }
BENCHMARK(BoostRead)->Unit(benchmark::kMillisecond);
void BoostPolymorphicWritten(benchmark::State& state) {
    PeerWritten<bench_boost::Polymorphic>(state);
}
BENCHMARK(BoostPolymorphicWritten)->Unit(benchmark::kMillisecond);
void BoostPolymorphicRead(benchmark::State& state) { PeerRead<bench_boost::Polymorphic>(state); }
BENCHMARK(BoostPolymorphicRead)->Unit(benchmark::kMillisecond);
}  // namespace

#endif

namespace {

constexpr bench_Ratio kRatios[] = {
    {"DoublesWritten", "MemcpyThere", 2},
    {"DoublesWrittenAndRead", "MemcpyThereAndBack", 2},
    {"ObjectsWritten", "CerealWritten", 1},
    {"ObjectsRead", "CerealRead", 1},
    {"ObjectsWritten", "BoostWritten", 1},
    {"ObjectsRead", "BoostRead", 1},
    {"ObjectsWritten", "BoostPolymorphicWritten", 1},
    {"ObjectsRead", "BoostPolymorphicRead", 1},
};

}  // namespace

int main(int argc, char** argv) { return bench_Main(argc, argv, kRatios); }
