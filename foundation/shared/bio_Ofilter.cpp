#include "foundation/shared/bio_Ofilter.h"

bio_FilterState::~bio_FilterState() = default;

bio_Ofilter::bio_Ofilter(std::size_t capacity) { sink.Reserve(capacity); }

bio_Ofilter::~bio_Ofilter() = default;

bio_Ofilter::bio_Ofilter(bio_Ofilter&&) noexcept = default;

bio_Ofilter& bio_Ofilter::operator=(bio_Ofilter&&) noexcept = default;

void bio_Ofilter::Write(const cow_String& value) {
    if (Failed()) return;
    const std::string_view text = value.View();
    sink.Reserve(sizeof(int) + text.size());
    sink.Write(value.Length());
    sink.WriteBytes(text.data(), text.size());
}

void bio_Ofilter::Clear() noexcept {
    sink.Truncate(0);
    numbers.clear();
    failure = nullptr;
}

int bio_Ofilter::ReferenceNumber(const cls_Uid& uid) {
    if (!uid.IsAllocated()) return 0;
    return numbers.try_emplace(uid, static_cast<int>(numbers.size()) + 1).first->second;
}

void bio_Ofilter::Fail(std::exception_ptr cause) noexcept {
    if (!failure) failure = std::move(cause);
}

void bio_Ofilter::RethrowFailure() const {
    if (failure) std::rethrow_exception(failure);
}
