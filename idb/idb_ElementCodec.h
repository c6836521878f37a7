#pragma once

#include <bit>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "cow/cow_List.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/bio_Ofilter.h"

/// How the elements of primitive collections stand in a stream: each through the filter's typed
/// write, so a list of numbers is one run of bytes.
template <class T>
class idb_ElementCodec {
    static_assert(std::is_same_v<T, bool> || std::is_same_v<T, int> ||
                      std::is_same_v<T, unsigned> || std::is_same_v<T, float> ||
                      std::is_same_v<T, double>,
                  "elements are bool, int, unsigned int, float, double or cow_String");

  public:
    /// Bytes that an element takes.
    static constexpr std::size_t kSmallestSize = std::is_same_v<T, bool> ? 1 : sizeof(T);
    [[nodiscard]] static std::size_t SizeOf(const T&) noexcept { return kSmallestSize; }

    static void Write(bio_Buffer& out, const T& value) { out.Write(value); }
    static void Write(bio_Buffer& out, const T* values, std::size_t n) {
        if constexpr (kIsRaw) {
            out.WriteBytes(values, n * sizeof(T));
        } else {
            for (std::size_t i = 0; i < n; ++i) out.Write(values[i]);
        }
    }

    [[nodiscard]] static T Read(bio_Ifilter& filter) {
        if constexpr (std::is_same_v<T, bool>) {
            return filter.ReadBool();
        } else if constexpr (std::is_same_v<T, int>) {
            return filter.ReadInt();
        } else if constexpr (std::is_same_v<T, unsigned>) {
            return filter.ReadUnsigned();
        } else if constexpr (std::is_same_v<T, float>) {
            return filter.ReadFloat();
        } else {
            return filter.ReadDouble();
        }
    }
    /// The next `count` elements. REQUIRES: the stream holds them.
    [[nodiscard]] static cow_List<T> ReadList(bio_Ifilter& filter, int count);

  private:
    /// The elements in memory are their bytes in the stream.
    static constexpr bool kIsRaw =
        std::endian::native == std::endian::little && !std::is_same_v<T, bool>;
};

template <>
class idb_ElementCodec<cow_String> {
  public:
    static constexpr std::size_t kSmallestSize = sizeof(int);
    [[nodiscard]] static std::size_t SizeOf(const cow_String& value) noexcept {
        return sizeof(int) + value.View().size();
    }

    static void Write(bio_Buffer& out, const cow_String& value) {
        out.Write(value.Length());
        out.WriteBytes(value.Characters(), value.View().size());
    }
    static void Write(bio_Buffer& out, const cow_String* values, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i) Write(out, values[i]);
    }
    [[nodiscard]] static cow_String Read(bio_Ifilter& filter) { return filter.ReadString(); }
    [[nodiscard]] static cow_List<cow_String> ReadList(bio_Ifilter& filter, int count) {
        auto list = cow_List<cow_String>::WithSizeHint(count);
        for (int i = 0; i < count; ++i) list.Append(filter.ReadString());
        return list;
    }
};

template <class T>
cow_List<T> idb_ElementCodec<T>::ReadList(bio_Ifilter& filter, int count) {
    auto list = cow_List<T>::WithSizeHint(count);
    if constexpr (kIsRaw) {
        list.SetFrom(count, [&filter](T* slots, int, int n) {
            filter.ReadBytes(slots, static_cast<std::size_t>(n) * sizeof(T));
        });
    } else {
        for (int i = 0; i < count; ++i) list.Append(Read(filter));
    }
    return list;
}
