#include "foundation/coreutils/cow_String.h"

#include <climits>
#include <cstring>
#include <new>
#include <stdexcept>

#include "foundation/alloc/mem_Alloc.h"

cow_String::cow_String(const char* text) : cow_String(std::string_view(text ? text : "")) {}

cow_String::cow_String(std::string_view text) : rep(text.empty() ? nullptr : NewRep(text, {})) {}

cow_String::Rep* cow_String::Adopt(char* buffer, int length) {
    if (!buffer || length <= 0) {
        mem_Free(buffer);
        return nullptr;
    }
    return new (mem_Malloc(sizeof(Rep))) Rep{1, length, buffer};
}

cow_String::Rep* cow_String::NewRep(std::string_view a, std::string_view b) {
    if (a.size() > INT_MAX || b.size() > INT_MAX - a.size()) {
        throw std::length_error("cow_String: text too long");
    }
    const std::size_t length = a.size() + b.size();
    void* const block = mem_Malloc(sizeof(Rep) + length + 1);
    char* const characters = static_cast<char*>(block) + sizeof(Rep);
    if (!a.empty()) std::memcpy(characters, a.data(), a.size());
    if (!b.empty()) std::memcpy(characters + a.size(), b.data(), b.size());
    characters[length] = '\0';
    return new (block) Rep{1, static_cast<int>(length), characters};
}

cow_String cow_String::Concatenated(std::string_view a, std::string_view b) {
    return a.empty() && b.empty() ? cow_String() : cow_String(NewRep(a, b));
}

void cow_String::Delete(Rep* unused) noexcept {
    const bool adopted = unused->characters != reinterpret_cast<char*>(unused + 1);
    if (adopted) mem_Free(unused->characters);
    mem_Free(unused);
}

cow_AdoptedString::cow_AdoptedString(char* buffer, int length)
    : cow_String(Adopt(buffer, length)) {}
