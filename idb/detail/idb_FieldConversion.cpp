#include "idb/detail/idb_FieldConversion.h"

#include <bit>
#include <charconv>

#include "foundation/shared/bio_Buffer.h"
#include "foundation/shared/cls_ClassMetadata.h"

namespace {

template <class T>
void StoreInteger(std::byte* place, const idb_Number& number) noexcept {
    bio_Buffer::Put(place, static_cast<std::uint32_t>(idb_NumberAs<T>(number)));
}

template <class T>
bool Parse(std::string_view text, T& value) noexcept {
    const char* const end = text.data() + text.size();
    const auto [stop, fault] = std::from_chars(text.data(), end, value);
    return fault == std::errc() && stop == end && !text.empty();
}

}  // namespace

void idb_StoreNumber(int kind, std::byte* place, const idb_Number& number) noexcept {
    switch (kind) {
        case cls_KIND_BOOL:
            return StoreInteger<bool>(place, number);
        case cls_KIND_CHAR:
            return StoreInteger<signed char>(place, number);
        case cls_KIND_UNSIGNED_CHAR:
            return StoreInteger<unsigned char>(place, number);
        case cls_KIND_SHORT:
            return StoreInteger<short>(place, number);
        case cls_KIND_UNSIGNED_SHORT:
            return StoreInteger<unsigned short>(place, number);
        case cls_KIND_UNSIGNED_INT:
            return StoreInteger<std::uint32_t>(place, number);
        case cls_KIND_FLOAT:
            return bio_Buffer::Put(place,
                                   std::bit_cast<std::uint32_t>(idb_NumberAs<float>(number)));
        case cls_KIND_DOUBLE:
            return bio_Buffer::Put(place,
                                   std::bit_cast<std::uint64_t>(idb_NumberAs<double>(number)));
        default:
            return StoreInteger<std::int32_t>(place, number);
    }
}

idb_Number idb_LoadNumber(int kind, const std::byte* place) noexcept {
    const std::uint32_t word = bio_Buffer::Get32(place);
    switch (kind) {
        case cls_KIND_BOOL:
            return idb_NumberOf(word != 0);
        case cls_KIND_UNSIGNED_CHAR:
        case cls_KIND_UNSIGNED_SHORT:
        case cls_KIND_UNSIGNED_INT:
            return idb_NumberOf(word);
        case cls_KIND_FLOAT:
            return idb_NumberOf(std::bit_cast<float>(word));
        case cls_KIND_DOUBLE:
            return idb_NumberOf(std::bit_cast<double>(bio_Buffer::Get64(place)));
        default:
            return idb_NumberOf(static_cast<std::int32_t>(word));
    }
}

cow_String idb_TextOf(const idb_Number& number) {
    char text[32];
    const auto result = number.isReal ? std::to_chars(text, std::end(text), number.real)
                                      : std::to_chars(text, std::end(text), number.integer);
    return std::string_view(text, static_cast<std::size_t>(result.ptr - text));
}

idb_Number idb_ParseNumber(std::string_view text) noexcept {
    idb_Number number;
    if (Parse(text, number.integer)) return number;
    if (Parse(text, number.real)) {
        number.isReal = true;
        return number;
    }
    return {};
}
