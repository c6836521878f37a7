#pragma once

#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/shared/bio_Ofilter.h"

// Streams as tests state them.

/// Bytes from hexadecimal digits and quoted texts, with blanks as one likes: "10000a00 01 'UNSET'".
inline std::vector<std::byte> test_Bytes(std::string_view text) {
    std::vector<std::byte> bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\'') {
            while (text[++i] != '\'') bytes.push_back(static_cast<std::byte>(text[i]));
        } else if (std::isxdigit(static_cast<unsigned char>(text[i]))) {
            const int value = std::stoi(std::string(text.substr(i++, 2)), nullptr, 16);
            bytes.push_back(static_cast<std::byte>(value));
        }
    }
    return bytes;
}

/// Bytes as text, two lower-case digits each: those of a stream, or of `text` as above.
inline std::string test_Hex(const std::byte* bytes, std::size_t size) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = std::to_integer<unsigned>(bytes[i]);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}
inline std::string test_Hex(const bio_Ofilter& out) { return test_Hex(out.Data(), out.Size()); }
inline std::string test_Hex(std::string_view text) {
    const std::vector<std::byte> bytes = test_Bytes(text);
    return test_Hex(bytes.data(), bytes.size());
}
