#include "foundation/shared/bio_Ifilter.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "foundation/coreutils/atr_String.h"

bio_Ifilter::bio_Ifilter(const void* bytes, std::size_t size)
    : next(static_cast<const std::byte*>(bytes)), end(next + size) {}

bio_Ifilter::~bio_Ifilter() = default;

std::string_view bio_Ifilter::ReadStringView() {
    const int length = ReadInt();
    if (length <= 0) return {};
    const auto size = static_cast<std::size_t>(length);
    if (Remaining() < size) {
        FailFor("characters", length);
        return {};
    }
    return {reinterpret_cast<const char*>(Take(size)), size};
}

void bio_Ifilter::ReadBytes(void* out, std::size_t count) {
    if (count == 0) return;
    if (const std::byte* const taken = Take(count)) {
        std::memcpy(out, taken, count);
    } else {
        std::memset(out, 0, count);
    }
}

int bio_Ifilter::ReadCount(std::size_t smallestElement, std::size_t bytesBetween) {
    const int count = ReadInt();
    if (count <= 0) return 0;
    const std::size_t forElements = Remaining() - std::min(bytesBetween, Remaining());
    if (forElements / smallestElement < static_cast<std::size_t>(count)) {
        FailFor("elements", count);
        return 0;
    }
    return count;
}

bool bio_Ifilter::PeekBool(std::size_t offset) const noexcept {
    return offset < Remaining() && next[offset] != std::byte{0};
}

unsigned bio_Ifilter::PeekUnsigned(std::size_t offset) const noexcept {
    return offset <= Remaining() && Remaining() - offset >= 4 ? bio_Buffer::Get32(next + offset)
                                                              : 0;
}

void bio_Ifilter::Fail() noexcept {
    failed = true;
    next = end;
}

void bio_Ifilter::FailWith(const char* line) {
    if (!failed) std::fputs(line, stderr);
    Fail();
}

bool bio_Ifilter::EnterRecord() {
    if (depth >= bio_MaxDepth) {
        FailWith(atr("Error reading stream: records nested more than %d deep\n", bio_MaxDepth)
                     .Characters());
        return false;
    }
    ++depth;
    return true;
}

void bio_Ifilter::FailFor(const char* what, std::int64_t wanted) {
    if (failed) return;
    FailWith(atr("Error reading stream: %g %s expected, %g bytes left\n",
                 static_cast<double>(wanted), what, static_cast<double>(Remaining()))
                 .Characters());
}
