#pragma once

#include <cstddef>
#include <vector>

#include "foundation/shared/bio_Ofilter.h"

/// Bytes of a record that cannot go to the stream yet, with the places of the reference numbers,
/// which are given out when the bytes reach the stream. Long runs change hands without a copy.
class idb_PendingBytes {
  public:
    [[nodiscard]] bool IsEmpty() const noexcept { return chunks.empty(); }

    /// The end of the bytes, to append about `expected` bytes at; valid until the next call.
    [[nodiscard]] bio_Buffer& Tail(std::size_t expected);
    /// The number of `uid` is put at `offset` of what `Tail` gave last; none for an unallocated
    /// one.
    void NoteNumber(std::size_t offset, const cls_Uid& uid);
    /// Moves all bytes of `other` behind these.
    void Append(idb_PendingBytes&& other);
    /// Moves the bytes to the stream, which numbers the identities in their order.
    void EmitTo(bio_Ofilter& filter);

  private:
    struct NumberPlace {
        std::size_t chunk;
        std::size_t offset;
        cls_Uid uid;
    };

    std::vector<bio_Buffer> chunks;
    std::vector<NumberPlace> numbers;
};
