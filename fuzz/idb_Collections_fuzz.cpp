#include <cstdint>
#include <cstring>

#include "fuzz/fuzz_Check.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_MapPrim.h"
#include "idb/idb_ReadObjCollections.h"
#include "testing/test_ArchiveClasses.h"

// Any bytes as the body of any collection, which the first byte selects: walking ends after Size()
// elements, and what was read writes to a stream that reads and writes the same again.

namespace {

template <class Reader, class Writer, class Content>
bio_Ofilter Rewrite(const void* bytes, std::size_t size, const Content& content) {
    bio_Ifilter in(bytes, size);
    Reader reader(in);
    int walked = 0;
    while (reader.Next()) {
        static_cast<void>(reader.Read());
        ++walked;
    }
    fuzz_Check(walked == reader.Size() && !reader.Next(), "Size() elements");
    bio_Ofilter out;
    Writer(out, reader.Columns()).Write(content(reader));
    return out;
}

template <class Reader, class Writer, class Content>
void CheckStable(const void* bytes, std::size_t size, const Content& content) {
    bio_Ofilter first;
    {
        const fuzz_MemoryBound bound(size);
        bio_Ifilter in(bytes, size);
        const Reader reader(in);
    }
    first = Rewrite<Reader, Writer>(bytes, size, content);
    const bio_Ofilter second = Rewrite<Reader, Writer>(first.Data(), first.Size(), content);
    fuzz_Check(first.Size() == second.Size() &&
                   std::memcmp(first.Data(), second.Data(), first.Size()) == 0,
               "a collection writes as it was written");
}

template <class T>
void List(const void* bytes, std::size_t size) {
    CheckStable<idb_ReadListPrim<T>, idb_WriteListPrim<T>>(
        bytes, size, [](const auto& reader) { return reader.ConstGetList(); });
}

template <class K, class T>
void Map(const void* bytes, std::size_t size) {
    CheckStable<idb_ReadMapPrim<K, T>, idb_WriteMapPrim<K, T>>(
        bytes, size, [](const auto& reader) { return reader.ConstGetMap(); });
}

template <class Reader>
void Objects(const void* bytes, std::size_t size) {
    static const test_Classes classes;
    const fuzz_MemoryBound bound(size);
    bio_Ifilter in(bytes, size);
    Reader reader(in, classes, 2);
    int walked = 0;
    bool isFirst = false;
    for (; reader.Next(); ++walked) {
        if (walked % 2 != 0) continue;
        const auto* node = static_cast<test_Node*>(reader.ReadObjPtr(test_Node::TypeId(), isFirst));
        if (isFirst) delete node;
        break;
    }
    fuzz_Check(walked <= reader.Size(), "Size() elements");
}

using Target = void (*)(const void*, std::size_t);
constexpr Target targets[] = {
    &List<bool>,
    &List<int>,
    &List<unsigned>,
    &List<float>,
    &List<double>,
    &List<cow_String>,
    &Map<int, double>,
    &Map<int, float>,
    &Map<int, int>,
    &Map<int, cow_String>,
    &Map<int, unsigned>,
    &Map<cow_String, double>,
    &Map<cow_String, float>,
    &Map<cow_String, int>,
    &Map<cow_String, cow_String>,
    &Map<cow_String, unsigned>,
    &Objects<idb_ReadListObj>,
    &Objects<idb_ReadMapInt2Obj>,
    &Objects<idb_ReadMapString2Obj>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    targets[data[0] % std::size(targets)](data + 1, size - 1);
    fuzz_Check(test_Node::living == 0, "every object was destroyed");
    return 0;
}
