#include "host/import/imp_ThreeMfNames.h"

#include <unzip.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <memory>

namespace {

constexpr std::string_view kBlank = " \t\r\n";

struct CloseArchive {
    void operator()(void* archive) const { unzClose(archive); }
};

/// Reads the current file of the archive.
std::string ReadCurrentFile(void* archive) {
    std::string text;
    if (unzOpenCurrentFile(archive) != UNZ_OK) return text;
    char block[1 << 16];
    int got = 0;
    while ((got = unzReadCurrentFile(archive, block, sizeof block)) > 0) {
        text.append(block, static_cast<std::size_t>(got));
    }
    unzCloseCurrentFile(archive);
    return text;
}

bool IsModelPart(void* archive) {
    char name[512] = "";
    unz_file_info64 info;
    unzGetCurrentFileInfo64(archive, &info, name, sizeof name - 1, nullptr, 0, nullptr, 0);
    return std::string_view(name).ends_with(".model");
}

void AppendUtf8(std::string& text, unsigned code) {
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    const int following = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    text += static_cast<char>(kLead[following] | code >> (6 * following));
    for (int i = following; i-- > 0;) {
        text += static_cast<char>(0x80 | (code >> (6 * i) & 0x3F));
    }
}

/// What an XML reference ("amp", "#38", "#x26") stands for; nothing for an unknown one.
std::string ReferencedText(std::string_view reference) {
    struct Entity {
        std::string_view name;
        char character;
    };
    static constexpr Entity kEntities[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (const Entity& entity : kEntities) {
        if (entity.name == reference) return std::string(1, entity.character);
    }
    std::string text;
    if (!reference.starts_with('#')) return text;
    const bool isHex = reference.starts_with("#x");
    const char* end = reference.data() + reference.size();
    unsigned code = 0;
    const auto read =
        std::from_chars(reference.data() + (isHex ? 2 : 1), end, code, isHex ? 16 : 10);
    if (read.ptr == end && code <= 0x10FFFF) AppendUtf8(text, code);
    return text;
}

std::string Unescaped(std::string_view value) {
    std::string text;
    while (!value.empty()) {
        const std::size_t end = value.front() == '&' ? value.find(';') : std::string_view::npos;
        if (end == std::string_view::npos) {
            text += value.front();
            value.remove_prefix(1);
        } else {
            text += ReferencedText(value.substr(1, end - 1));
            value.remove_prefix(end + 1);
        }
    }
    return text;
}

/// Takes the next `name="value"` from the head of a tag's rest; false at the end of the tag.
bool TakeAttribute(std::string_view& rest, std::string_view& name, std::string_view& value) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlank), rest.size()));
    const std::size_t equals = rest.find('=');
    if (rest.empty() || rest.front() == '>' || rest.front() == '/' ||
        equals == std::string_view::npos) {
        return false;
    }
    name = rest.substr(0, equals);
    name = name.substr(0, name.find_last_not_of(kBlank) + 1);
    rest.remove_prefix(equals + 1);
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlank), rest.size()));
    if (rest.empty()) return false;
    const std::size_t close = rest.find(rest.front(), 1);
    if (close == std::string_view::npos) return false;
    value = rest.substr(1, close - 1);
    rest.remove_prefix(close + 1);
    return true;
}

}  // namespace

imp_ObjectNames imp_FindObjectNames(std::string_view modelXml) {
    constexpr std::string_view kTag = "<object";
    imp_ObjectNames names;
    for (;;) {
        const std::size_t tag = modelXml.find(kTag);
        if (tag == std::string_view::npos) return names;
        modelXml.remove_prefix(tag + kTag.size());
        if (modelXml.empty() || kBlank.find(modelXml.front()) == std::string_view::npos) continue;
        int id = 0;
        std::string objectName;
        std::string_view name;
        std::string_view value;
        while (TakeAttribute(modelXml, name, value)) {
            if (name == "id") std::from_chars(value.data(), value.data() + value.size(), id);
            if (name == "name") objectName = Unescaped(value);
        }
        if (!objectName.empty()) names.emplace(id, objectName);
    }
}

imp_ObjectNames imp_ReadThreeMfNames(const std::string& path) {
    const std::unique_ptr<void, CloseArchive> archive(unzOpen64(path.c_str()));
    if (!archive) return {};
    for (int found = unzGoToFirstFile(archive.get()); found == UNZ_OK;
         found = unzGoToNextFile(archive.get())) {
        if (IsModelPart(archive.get())) return imp_FindObjectNames(ReadCurrentFile(archive.get()));
    }
    return {};
}
