#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/shared/bio_Ofilter.h"

/// The bytes of a stream as text, two lower-case digits each, and back: streams as tests state
/// them.
inline std::string test_Hex(const bio_Ofilter& out) {
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < out.Size(); ++i) {
        const auto byte = std::to_integer<unsigned>(out.Data()[i]);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

inline std::vector<std::byte> test_Bytes(std::string_view hex) {
    std::vector<std::byte> bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes.push_back(
            static_cast<std::byte>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    }
    return bytes;
}
