#include "foundation/shared/bio_ReadObjectTable.h"

#include <random>
#include <utility>

namespace {
constexpr std::size_t kSmallestTable = 16;
}

// Open addressing over a power of two of slots. The numbers come from the stream, so they are mixed
// (the finisher of splitmix64) with a seed that whoever made the stream cannot know. A forgotten
// number keeps its slot, so that searches run on behind it.
std::size_t bio_ReadObjectTable::SlotOf(int number) const noexcept {
    std::uint64_t mixed = seed + static_cast<std::uint32_t>(number);
    mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBu;
    std::size_t slot = (mixed ^ mixed >> 31) & (slots.size() - 1);
    while (slots[slot].number != 0 && slots[slot].number != number) {
        slot = (slot + 1) & (slots.size() - 1);
    }
    return slot;
}

void bio_ReadObjectTable::GrowTable() {
    if (slots.empty()) {
        std::random_device source;
        seed = static_cast<std::uint64_t>(source()) << 32 | source();
    }
    const std::size_t wanted = slots.empty() ? kSmallestTable : slots.size() * 2;
    decltype(slots) old(wanted);
    old.swap(slots);
    for (const bio_ReadObject& object : old) {
        if (object.number != 0) slots[SlotOf(object.number)] = object;
    }
}

const bio_ReadObject* bio_ReadObjectTable::Find(int number) const noexcept {
    if (number == 0 || slots.empty()) return nullptr;
    const bio_ReadObject& found = slots[SlotOf(number)];
    return found.state == bio_ReadStateEnm::Unknown ? nullptr : &found;
}

void bio_ReadObjectTable::BeginObject(int number, std::uint32_t classId) {
    if (slots.empty() || (used + 1) * 8 > slots.size() * 7) GrowTable();
    bio_ReadObject& slot = slots[SlotOf(number)];
    if (slot.number == 0) ++used;
    slot = {nullptr, classId, number, bio_ReadStateEnm::Reading};
}

void bio_ReadObjectTable::EndObject(int number) noexcept {
    const bio_ReadObject* found = Find(number);
    if (found && found->state == bio_ReadStateEnm::Reading) Forget(number);
}

void bio_ReadObjectTable::SetObject(int number, std::uint32_t classId, void* object) {
    handedOut.push_back(number);
    slots[SlotOf(number)] = {object, classId, number, bio_ReadStateEnm::Pointer};
}

void bio_ReadObjectTable::SetShared(int number, std::uint32_t classId, void* object,
                                    std::shared_ptr<cls_CowHolder> holder) {
    holders[number] = std::move(holder);
    slots[SlotOf(number)] = {object, classId, number, bio_ReadStateEnm::Shared};
}

std::shared_ptr<cls_CowHolder> bio_ReadObjectTable::Holder(int number) const {
    const auto found = holders.find(number);
    return found == holders.end() ? nullptr : found->second;
}

void bio_ReadObjectTable::Forget(int number) noexcept {
    bio_ReadObject& slot = slots[SlotOf(number)];
    slot.object = nullptr;
    slot.state = bio_ReadStateEnm::Unknown;
}

void bio_ReadObjectTable::ForgetPointers(std::size_t begin, std::size_t end) noexcept {
    for (std::size_t i = begin; i < end; ++i) {
        const bio_ReadObject* const found = Find(handedOut[i]);
        if (found && found->state == bio_ReadStateEnm::Pointer) Forget(handedOut[i]);
    }
}
