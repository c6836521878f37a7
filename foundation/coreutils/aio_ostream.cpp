#include "foundation/coreutils/aio_ostream.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "foundation/alloc/mem_Alloc.h"
#include "foundation/coreutils/aio_FormatDouble.h"

namespace {

template <class Integer>
class DecimalText {
  public:
    explicit DecimalText(Integer value)
        : end(std::to_chars(buffer, buffer + sizeof buffer, value).ptr) {}
    std::string_view View() const { return std::string_view(buffer, end); }

  private:
    char buffer[12];
    const char* end;
};

}  // namespace

aio_ostream::~aio_ostream() = default;

aio_ostream& aio_ostream::operator<<(const char* text) {
    return *this << std::string_view(text ? text : "");
}

aio_ostream& aio_ostream::operator<<(std::string_view text) {
    if (!text.empty()) Put(text);
    return *this;
}

aio_ostream& aio_ostream::operator<<(const cow_String& text) { return *this << text.View(); }

aio_ostream& aio_ostream::operator<<(char character) {
    return *this << std::string_view(&character, 1);
}

aio_ostream& aio_ostream::operator<<(int value) { return *this << DecimalText(value).View(); }

aio_ostream& aio_ostream::operator<<(unsigned value) { return *this << DecimalText(value).View(); }

aio_ostream& aio_ostream::operator<<(double value) {
    return *this << aio_FormatDouble(value, aio_PRECISION);
}

aio_ostream& aio_ostream::Blanks(int count) {
    constexpr std::string_view blanks = "                                ";
    while (count > 0) {
        const std::string_view part = blanks.substr(0, static_cast<std::size_t>(count));
        Put(part);
        count -= static_cast<int>(part.size());
    }
    return *this;
}

aio_StringStream::~aio_StringStream() { mem_Free(buffer); }

cow_String aio_StringStream::Text() const { return std::string_view(buffer, length); }

void aio_StringStream::Put(std::string_view text) {
    if (text.size() > capacity - length) {
        const std::size_t grown = std::max(length + text.size(), 2 * capacity);
        buffer = static_cast<char*>(mem_Realloc(buffer, grown));
        capacity = grown;
    }
    std::memcpy(buffer + length, text.data(), text.size());
    length += text.size();
}

aio_StandardOutput::~aio_StandardOutput() = default;

void aio_StandardOutput::Put(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}
