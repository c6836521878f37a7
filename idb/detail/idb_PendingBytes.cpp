#include "idb/detail/idb_PendingBytes.h"

#include <algorithm>
#include <utility>

namespace {
/// A run of this many bytes becomes a chunk of its own instead of being copied to the tail.
constexpr std::size_t kLongRun = 4096;
}  // namespace

bio_Buffer& idb_PendingBytes::Tail(std::size_t expected) {
    if (chunks.empty()) {
        chunks.emplace_back().Reserve(expected);
    } else {
        const bio_Buffer& last = chunks.back();
        const bool isFull = last.Capacity() - last.Size() < expected &&
                            (last.Size() >= kLongRun || expected >= kLongRun);
        if (isFull) chunks.emplace_back().Reserve(std::max(expected, kLongRun));
    }
    return chunks.back();
}

void idb_PendingBytes::NoteNumber(std::size_t offset, const cls_Uid& uid) {
    if (uid.IsAllocated()) numbers.push_back({chunks.size() - 1, offset, uid});
}

void idb_PendingBytes::Append(idb_PendingBytes&& other) {
    if (other.IsEmpty()) return;
    if (IsEmpty()) {
        *this = std::move(other);
        return;
    }
    numbers.reserve(numbers.size() + other.numbers.size());
    auto place = other.numbers.begin();
    for (std::size_t i = 0; i < other.chunks.size(); ++i) {
        bio_Buffer& chunk = other.chunks[i];
        std::size_t before = 0;
        if (chunk.Size() >= kLongRun) {
            chunks.push_back(std::move(chunk));
        } else {
            bio_Buffer& tail = Tail(chunk.Size());
            before = tail.Size();
            tail.WriteBytes(chunk.Data(), chunk.Size());
        }
        for (; place != other.numbers.end() && place->chunk == i; ++place) {
            numbers.push_back({chunks.size() - 1, before + place->offset, place->uid});
        }
    }
    other.chunks.clear();
    other.numbers.clear();
}

void idb_PendingBytes::EmitTo(bio_Ofilter& filter) {
    auto place = numbers.begin();
    for (std::size_t i = 0; i < chunks.size(); ++i) {
        const std::size_t start = filter.Size();
        filter.WriteBytes(chunks[i].Data(), chunks[i].Size());
        for (; place != numbers.end() && place->chunk == i; ++place) {
            const int number = filter.ReferenceNumber(place->uid);
            bio_Buffer::Put(filter.Sink().Extend(0) - (filter.Size() - start) + place->offset,
                            static_cast<std::uint32_t>(number));
        }
    }
}
