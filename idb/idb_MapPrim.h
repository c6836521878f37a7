#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>

#include "cow/cow_Map.h"
#include "cow/cow_MapLoader.h"
#include "foundation/shared/cls_Collections.h"
#include "idb/idb_ElementCodec.h"

/// Reads a map from `K` to primitive values: its constructor takes the whole collection from the
/// stream (count, columns, keys each with its value), and everything afterwards walks the map.
///
/// A repeated key keeps its last value, and `Size()` is the number of entries in the map. A count
/// that the rest of the stream cannot hold gives the empty map; so do string keys made to cost time
/// out of all proportion to their number (a line on standard error each).
template <class K, class T, class Map = cow_Map<K, T>>
class idb_ReadMapPrim : public cls_ReadMapPrim<K, T> {
  public:
    explicit idb_ReadMapPrim(bio_Ifilter& filter);

    [[nodiscard]] int Size() const override { return map.Size(); }
    [[nodiscard]] int Columns() const override { return columns; }
    bool Next() override;
    /// Before the first `Next()` and after the last entry these give a default key or value.
    [[nodiscard]] K Key() const override { return HasEntry() ? walk.CurrentKey() : K(); }
    [[nodiscard]] T Read() override { return HasEntry() ? walk.CurrentValue() : T(); }
    [[nodiscard]] const Map& ConstGetMap() const override { return map; }

  private:
    [[nodiscard]] bool HasEntry() const { return isStarted && !walk.IsDone(); }

    Map map;
    int columns = 1;
    cow_ConstMapIterator<K, T> walk{map};
    bool isStarted = false;
};

/// Writes a map from `K` to primitive values: gathers the entries, and its destructor writes the
/// collection in the map's order of iteration. The destructor never throws: what fails there is
/// kept in the filter.
template <class K, class T, class Map = cow_Map<K, T>>
class idb_WriteMapPrim : public cls_WriteMapPrim<K, T> {
  public:
    /// Writes to `filter`, which outlives the writer.
    idb_WriteMapPrim(bio_Ofilter& filter, int columnCount)
        : target(&filter), columns(columnCount) {}
    ~idb_WriteMapPrim() override;
    idb_WriteMapPrim(const idb_WriteMapPrim&) = delete;
    idb_WriteMapPrim& operator=(const idb_WriteMapPrim&) = delete;

    void Write(const K& key, const T& value) override { map.Insert(key, value); }
    void Write(const Map& entries) override;
    [[nodiscard]] bool NeedsDeletion() const override { return true; }

  protected:
    /// A writer whose bytes are asked for with `Put`.
    explicit idb_WriteMapPrim(int columnCount) : target(nullptr), columns(columnCount) {}
    [[nodiscard]] std::size_t ByteSize() const;
    void Put(bio_Buffer& out) const;

  private:
    Map map;
    bio_Ofilter* target;
    int columns;
};

/// The readers and writers of maps from integers and from strings.
template <class T, class Map = cow_Map<int, T>>
using idb_ReadMapInt2Prim = idb_ReadMapPrim<int, T, Map>;
template <class T, class Map = cow_Map<cow_String, T>>
using idb_ReadMapString2Prim = idb_ReadMapPrim<cow_String, T, Map>;
template <class T, class Map = cow_Map<int, T>>
using idb_WriteMapInt2Prim = idb_WriteMapPrim<int, T, Map>;
template <class T, class Map = cow_Map<cow_String, T>>
using idb_WriteMapString2Prim = idb_WriteMapPrim<cow_String, T, Map>;

/// The steps that building a map of string keys may take: those of its own order of iteration cost
/// none, others some levels each.
inline constexpr std::int64_t idb_MapStepsPerByte = 64;
inline constexpr std::int64_t idb_MapStepsFree = 1 << 20;

template <class K, class T, class Map>
idb_ReadMapPrim<K, T, Map>::idb_ReadMapPrim(bio_Ifilter& filter) {
    using KeyCodec = idb_ElementCodec<K>;
    using ValueCodec = idb_ElementCodec<T>;
    const int count =
        filter.ReadCount(KeyCodec::kSmallestSize + ValueCodec::kSmallestSize, sizeof(int));
    columns = filter.ReadInt();
    const auto bytes = static_cast<std::int64_t>(filter.Remaining());
    cow_MapLoader<K, T> loader(bytes * idb_MapStepsPerByte + idb_MapStepsFree);
    for (int i = 0; i < count && !filter.Failed(); ++i) {
        const K key = KeyCodec::Read(filter);
        const T value = ValueCodec::Read(filter);
        if (filter.Failed()) break;
        if (!loader.Insert(key, value)) {
            filter.FailWith("Error reading stream: string keys out of a map's order\n");
            return;
        }
    }
    map = loader.Take();
    walk = cow_ConstMapIterator<K, T>(map);
}

template <class K, class T, class Map>
bool idb_ReadMapPrim<K, T, Map>::Next() {
    if (isStarted) {
        walk.Next();
    } else {
        isStarted = true;
    }
    return !walk.IsDone();
}

template <class K, class T, class Map>
idb_WriteMapPrim<K, T, Map>::~idb_WriteMapPrim() {
    if (!target || target->Failed()) return;
    try {
        target->Sink().Reserve(ByteSize());
        Put(target->Sink());
    } catch (...) {
        target->Fail(std::current_exception());
    }
}

template <class K, class T, class Map>
void idb_WriteMapPrim<K, T, Map>::Write(const Map& entries) {
    if (map.IsEmpty()) {
        map = entries;
        return;
    }
    for (const auto& [key, value] : entries) map.Insert(key, value);
}

template <class K, class T, class Map>
std::size_t idb_WriteMapPrim<K, T, Map>::ByteSize() const {
    std::size_t size = 2 * sizeof(int);
    for (const auto& [key, value] : map) {
        size += idb_ElementCodec<K>::SizeOf(key) + idb_ElementCodec<T>::SizeOf(value);
    }
    return size;
}

template <class K, class T, class Map>
void idb_WriteMapPrim<K, T, Map>::Put(bio_Buffer& out) const {
    out.Write(map.Size());
    out.Write(columns);
    for (const auto& [key, value] : map) {
        idb_ElementCodec<K>::Write(out, key);
        idb_ElementCodec<T>::Write(out, value);
    }
}
