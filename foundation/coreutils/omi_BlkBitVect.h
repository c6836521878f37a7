#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"
#include "foundation/coreutils/omi_Allocator.h"

/// A set of unsigned numbers as a bit vector kept in blocks.
///
/// Only blocks with a set bit exist (256 bits in 40 bytes, side by side in ascending order), so a
/// few high numbers cost a few blocks. Numbers that come in ascending order, or near the one
/// before, are set in constant time; any other access is a binary search over the blocks, and a new
/// block shifts those behind it. A copy copies the blocks. Two vectors are equal when the same bits
/// are set. The storage is the foundation allocator's; an operation that throws leaves the vector
/// as it was. Reading is safe from several threads, changing is not.
class KTSBASCOREUTILS_API omi_BlkBitVect {
  public:
    class Iterator;

    static constexpr unsigned wordBits = 64;

    /// The empty set; allocates nothing.
    omi_BlkBitVect() noexcept = default;

    [[nodiscard]] bool Test(unsigned bit) const noexcept;
    [[nodiscard]] bool IsEmpty() const noexcept { return blocks.empty(); }
    /// Number of set bits.
    [[nodiscard]] std::size_t Count() const noexcept;
    /// The greatest set bit; the set is not empty.
    [[nodiscard]] unsigned Last() const noexcept;
    /// Bits 64 * `index` to 64 * `index` + 63, the lowest in the lowest place.
    [[nodiscard]] std::uint64_t Word(unsigned index) const noexcept;
    /// True when every bit of `other` is set here. Compares whole words and stops at the first that
    /// differs.
    [[nodiscard]] bool Contains(const omi_BlkBitVect& other) const noexcept;

    void Set(unsigned bit);
    void Clear(unsigned bit) noexcept;
    void ClearAll() noexcept { blocks.clear(); }

    /// Sets every bit of `other`: one walk over the blocks of both.
    omi_BlkBitVect& operator|=(const omi_BlkBitVect& other);
    friend bool operator==(const omi_BlkBitVect& a, const omi_BlkBitVect& b) noexcept {
        return a.blocks == b.blocks;
    }

    /// The set bits in ascending order. A change of the vector ends the walk.
    [[nodiscard]] Iterator begin() const noexcept;
    [[nodiscard]] std::default_sentinel_t end() const noexcept { return {}; }

  private:
    static constexpr unsigned blockWords = 4;
    static constexpr unsigned blockBits = blockWords * wordBits;

    struct Block {
        unsigned number;  ///< bit / blockBits
        std::uint64_t words[blockWords];

        [[nodiscard]] bool IsZero() const noexcept;
        friend bool operator==(const Block&, const Block&) noexcept = default;
    };

    static constexpr unsigned WordOf(unsigned bit) noexcept { return bit / wordBits % blockWords; }
    static constexpr std::uint64_t MaskOf(unsigned bit) noexcept {
        return std::uint64_t{1} << (bit % wordBits);
    }
    /// Index of the first block whose number is not below `number`.
    [[nodiscard]] std::size_t LowerBound(unsigned number) const noexcept;
    [[nodiscard]] const Block* Find(unsigned number) const noexcept;
    /// Makes `recent` the index of block `number`, which is added when missing.
    void Locate(unsigned number);
    void ClearByLookup(unsigned bit) noexcept;
    /// Number of blocks of `other` that are missing here.
    [[nodiscard]] std::size_t MissingBlocks(const omi_BlkBitVect& other) const noexcept;

    std::vector<Block, omi_Allocator<Block>> blocks;
    /// Where the last change was; may be out of range.
    std::size_t recent = 0;
};

/// Walks over the set bits.
class omi_BlkBitVect::Iterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = unsigned;
    using difference_type = std::ptrdiff_t;
    using pointer = const unsigned*;
    using reference = unsigned;

    Iterator(const Block* first, const Block* last) noexcept : block(first), blockEnd(last) {
        if (block != blockEnd) Enter();
    }

    [[nodiscard]] unsigned operator*() const noexcept {
        return base + static_cast<unsigned>(std::countr_zero(bits));
    }
    Iterator& operator++() noexcept {
        bits &= bits - 1;
        if (bits == 0) Advance();
        return *this;
    }
    void operator++(int) noexcept { ++*this; }
    friend bool operator==(const Iterator& it, std::default_sentinel_t) noexcept {
        return it.block == it.blockEnd;
    }

  private:
    void Enter() noexcept {
        word = 0;
        base = block->number * blockBits;
        bits = block->words[0];
        if (bits == 0) Advance();
    }
    /// To the next word with a set bit; every block has one.
    void Advance() noexcept {
        while (++word < blockWords) {
            bits = block->words[word];
            base += wordBits;
            if (bits != 0) return;
        }
        if (++block != blockEnd) Enter();
    }

    const Block* block;
    const Block* blockEnd;
    std::uint64_t bits = 0;
    unsigned word = 0;
    unsigned base = 0;
};

inline omi_BlkBitVect::Iterator omi_BlkBitVect::begin() const noexcept {
    return Iterator(blocks.data(), blocks.data() + blocks.size());
}

inline void omi_BlkBitVect::Set(unsigned bit) {
    const unsigned number = bit / blockBits;
    if (recent >= blocks.size() || blocks[recent].number != number) Locate(number);
    blocks[recent].words[WordOf(bit)] |= MaskOf(bit);
}

inline void omi_BlkBitVect::Clear(unsigned bit) noexcept {
    const unsigned number = bit / blockBits;
    if (blocks.empty() || number > blocks.back().number) return;
    if (recent < blocks.size() && blocks[recent].number == number &&
        (blocks[recent].words[WordOf(bit)] & MaskOf(bit)) == 0) {
        return;
    }
    ClearByLookup(bit);
}
