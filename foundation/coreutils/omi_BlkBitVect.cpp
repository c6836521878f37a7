#include "foundation/coreutils/omi_BlkBitVect.h"

#include <algorithm>

bool omi_BlkBitVect::Block::IsZero() const noexcept {
    return (words[0] | words[1] | words[2] | words[3]) == 0;
}

std::size_t omi_BlkBitVect::LowerBound(unsigned number) const noexcept {
    const auto place =
        std::lower_bound(blocks.begin(), blocks.end(), number,
                         [](const Block& block, unsigned n) { return block.number < n; });
    return static_cast<std::size_t>(place - blocks.begin());
}

const omi_BlkBitVect::Block* omi_BlkBitVect::Find(unsigned number) const noexcept {
    const std::size_t place = LowerBound(number);
    if (place == blocks.size() || blocks[place].number != number) return nullptr;
    return &blocks[place];
}

void omi_BlkBitVect::Locate(unsigned number) {
    if (blocks.empty() || blocks.back().number < number) {
        blocks.push_back(Block{number, {}});
        recent = blocks.size() - 1;
        return;
    }
    const std::size_t place = LowerBound(number);
    if (blocks[place].number != number) {
        blocks.insert(blocks.begin() + static_cast<std::ptrdiff_t>(place), Block{number, {}});
    }
    recent = place;
}

bool omi_BlkBitVect::Test(unsigned bit) const noexcept {
    const Block* block = Find(bit / blockBits);
    return block && (block->words[WordOf(bit)] & MaskOf(bit)) != 0;
}

std::uint64_t omi_BlkBitVect::Word(unsigned index) const noexcept {
    const Block* block = Find(index / blockWords);
    return block ? block->words[index % blockWords] : 0;
}

std::size_t omi_BlkBitVect::Count() const noexcept {
    std::size_t count = 0;
    for (const Block& block : blocks) {
        for (const std::uint64_t word : block.words) {
            count += static_cast<std::size_t>(std::popcount(word));
        }
    }
    return count;
}

unsigned omi_BlkBitVect::Last() const noexcept {
    const Block& block = blocks.back();
    unsigned word = blockWords - 1;
    while (block.words[word] == 0) --word;
    return block.number * blockBits + word * wordBits +
           static_cast<unsigned>(std::bit_width(block.words[word])) - 1;
}

bool omi_BlkBitVect::Contains(const omi_BlkBitVect& other) const noexcept {
    auto mine = blocks.begin();
    for (const Block& theirs : other.blocks) {
        while (mine != blocks.end() && mine->number < theirs.number) ++mine;
        if (mine == blocks.end() || mine->number != theirs.number) return false;
        for (unsigned word = 0; word < blockWords; ++word) {
            if ((theirs.words[word] & ~mine->words[word]) != 0) return false;
        }
    }
    return true;
}

void omi_BlkBitVect::ClearByLookup(unsigned bit) noexcept {
    const unsigned number = bit / blockBits;
    const std::size_t place = LowerBound(number);
    if (place == blocks.size() || blocks[place].number != number) return;
    recent = place;
    blocks[place].words[WordOf(bit)] &= ~MaskOf(bit);
    if (blocks[place].IsZero()) blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(place));
}

std::size_t omi_BlkBitVect::MissingBlocks(const omi_BlkBitVect& other) const noexcept {
    std::size_t missing = 0;
    auto mine = blocks.begin();
    for (const Block& theirs : other.blocks) {
        while (mine != blocks.end() && mine->number < theirs.number) ++mine;
        if (mine == blocks.end() || mine->number != theirs.number) ++missing;
    }
    return missing;
}

omi_BlkBitVect& omi_BlkBitVect::operator|=(const omi_BlkBitVect& other) {
    const std::size_t missing = MissingBlocks(other);
    std::size_t from = blocks.size();
    if (missing != 0) blocks.resize(from + missing);
    // Merged from the back, so that every block moves at most once and none is overwritten.
    std::size_t to = blocks.size();
    for (std::size_t left = other.blocks.size(); left != 0; --left) {
        const Block& theirs = other.blocks[left - 1];
        while (from != 0 && blocks[from - 1].number > theirs.number) blocks[--to] = blocks[--from];
        if (from != 0 && blocks[from - 1].number == theirs.number) {
            Block merged = blocks[--from];
            for (unsigned word = 0; word < blockWords; ++word) {
                merged.words[word] |= theirs.words[word];
            }
            blocks[--to] = merged;
        } else {
            blocks[--to] = theirs;
        }
    }
    return *this;
}
