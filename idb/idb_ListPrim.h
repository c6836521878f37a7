#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <type_traits>

#include "cow/cow_List.h"
#include "foundation/shared/cls_Collections.h"
#include "idb/idb_ElementCodec.h"

/// Reads a list of primitive values: its constructor takes the whole collection from the stream
/// (count, columns, elements), and everything afterwards walks the list in memory.
///
/// A count that the rest of the stream cannot hold gives the empty list (and a line on standard
/// error). Copies of the list share its blocks.
template <class T, class List = cow_List<T>>
class idb_ReadListPrim : public cls_ReadListPrim<T> {
  public:
    explicit idb_ReadListPrim(bio_Ifilter& filter);

    [[nodiscard]] int Size() const override { return list.Length(); }
    [[nodiscard]] int Columns() const override { return columns; }
    bool Next() override;
    T Read() override { return last = list[position]; }
    int Read(T* out, int n) override;
    [[nodiscard]] const List& ConstGetList() const override { return list; }

  private:
    List list;
    T last{};
    int columns = 1;
    int position = -1;
};

/// Writes a list of primitive values: gathers the elements, and its destructor writes the
/// collection. The destructor never throws: what fails there is kept in the filter.
template <class T, class List = cow_List<T>>
class idb_WriteListPrim : public cls_WriteListPrim<T> {
  public:
    /// Writes to `filter`, which outlives the writer.
    idb_WriteListPrim(bio_Ofilter& filter, int columnCount)
        : target(&filter), columns(columnCount) {}
    ~idb_WriteListPrim() override;
    idb_WriteListPrim(const idb_WriteListPrim&) = delete;
    idb_WriteListPrim& operator=(const idb_WriteListPrim&) = delete;

    void Write(const T& value) override { list.Append(value); }
    void Write(const T* values, int n) override;
    void Write(const List& values) override;
    [[nodiscard]] bool NeedsDeletion() const override { return true; }

  protected:
    /// A writer whose bytes are asked for with `Put`.
    explicit idb_WriteListPrim(int columnCount) : target(nullptr), columns(columnCount) {}
    [[nodiscard]] std::size_t ByteSize() const;
    void Put(bio_Buffer& out) const;

  private:
    List list;
    bio_Ofilter* target;
    int columns;
};

template <class T, class List>
idb_ReadListPrim<T, List>::idb_ReadListPrim(bio_Ifilter& filter) {
    // The columns stand between the count and the elements that the count must leave room for.
    const int count = filter.ReadCount(idb_ElementCodec<T>::kSmallestSize, sizeof(int));
    columns = filter.ReadInt();
    if (count > 0) list = idb_ElementCodec<T>::ReadList(filter, count);
}

template <class T, class List>
bool idb_ReadListPrim<T, List>::Next() {
    if (position < Size()) ++position;
    return position < Size();
}

template <class T, class List>
int idb_ReadListPrim<T, List>::Read(T* out, int n) {
    if (n < 0 || static_cast<std::int64_t>(position) + n >= Size()) return 0;
    if (n == 0) return 1;
    int skipped = list.CheckIndex(position);
    int wanted = n;
    list.ForEachSpan([&](auto span) {
        const int first = std::min(skipped, static_cast<int>(span.size()));
        const int count = std::min(wanted, static_cast<int>(span.size()) - first);
        out = std::copy_n(span.data() + first, count, out);
        skipped -= first;
        wanted -= count;
    });
    position += n;
    return 1;
}

template <class T, class List>
idb_WriteListPrim<T, List>::~idb_WriteListPrim() {
    if (!target || target->Failed()) return;
    try {
        target->Sink().Reserve(ByteSize());
        Put(target->Sink());
    } catch (...) {
        target->Fail(std::current_exception());
    }
}

template <class T, class List>
void idb_WriteListPrim<T, List>::Write(const T* values, int n) {
    if (list.IsEmpty()) {
        list = List(values, n);
    } else {
        for (int i = 0; i < n; ++i) list.Append(values[i]);
    }
}

template <class T, class List>
void idb_WriteListPrim<T, List>::Write(const List& values) {
    if (list.IsEmpty()) {
        list = values;
    } else {
        list.Concatenate(values);
    }
}

template <class T, class List>
std::size_t idb_WriteListPrim<T, List>::ByteSize() const {
    std::size_t size = 2 * sizeof(int);
    if constexpr (std::is_same_v<T, cow_String>) {
        for (const T& element : list) size += idb_ElementCodec<T>::SizeOf(element);
    } else {
        size += static_cast<std::size_t>(list.Length()) * idb_ElementCodec<T>::kSmallestSize;
    }
    return size;
}

template <class T, class List>
void idb_WriteListPrim<T, List>::Put(bio_Buffer& out) const {
    out.Write(list.Length());
    out.Write(columns);
    list.ForEachSpan(
        [&out](auto span) { idb_ElementCodec<T>::Write(out, span.data(), span.size()); });
}
