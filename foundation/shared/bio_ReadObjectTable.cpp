#include "foundation/shared/bio_ReadObjectTable.h"

const bio_ReadObject* bio_ReadObjectTable::Find(int number) const noexcept {
    if (number == 0 || objects.empty() || objects.rbegin()->first < number) return nullptr;
    const auto found = objects.find(number);
    return found == objects.end() ? nullptr : &found->second;
}

void bio_ReadObjectTable::Set(int number, bio_ReadObject object) {
    const bool isLast = objects.empty() || objects.rbegin()->first < number;
    const auto hint = isLast ? objects.end() : objects.lower_bound(number);
    objects.insert_or_assign(hint, number, std::move(object));
}

void bio_ReadObjectTable::BeginObject(int number, std::uint32_t classId) {
    Set(number, {nullptr, classId, bio_ReadStateEnm::Reading, nullptr});
}

void bio_ReadObjectTable::EndObject(int number) noexcept {
    const auto found = objects.find(number);
    if (found != objects.end() && found->second.state == bio_ReadStateEnm::Reading) {
        objects.erase(found);
    }
}

void bio_ReadObjectTable::SetObject(int number, std::uint32_t classId, void* object) {
    handedOut.push_back(number);
    Set(number, {object, classId, bio_ReadStateEnm::Pointer, nullptr});
}

void bio_ReadObjectTable::SetShared(int number, std::uint32_t classId, void* object,
                                    std::shared_ptr<cls_CowHolder> holder) {
    Set(number, {object, classId, bio_ReadStateEnm::Shared, std::move(holder)});
}

void bio_ReadObjectTable::ForgetPointers(std::size_t begin, std::size_t end) noexcept {
    for (std::size_t i = begin; i < end; ++i) {
        const auto found = objects.find(handedOut[i]);
        if (found != objects.end() && found->second.state == bio_ReadStateEnm::Pointer) {
            objects.erase(found);
        }
    }
}
