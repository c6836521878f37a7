#include "omu/omu_PrimString.h"

#include <algorithm>
#include <string>

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimEnumBase.h"
#include "omu/omu_PrimVisitor.h"
#include "omu/omu_Utf8.h"

namespace {

constexpr cls_FieldHandle kValue("_value");

cow_String ReadText(cls_ReadVisitor& visitor) {
    cow_String text;
    visitor.Read(kValue, text);
    return text;
}

/// True when the backslash at `index` stands in front of a byte beyond ASCII.
bool IsBeforeHighByte(std::string_view text, std::size_t index) {
    return index + 1 < text.size() && static_cast<unsigned char>(text[index + 1]) >= 128;
}

/// `text` without its first `count` characters.
std::string_view WithoutCharacters(std::string_view text, int count) {
    for (int i = 0; i < count && !text.empty(); ++i) text.remove_prefix(omu_CharacterSize(text));
    return text;
}

}  // namespace

cow_String omu_Quoted(const cow_String& text) {
    const std::string_view bytes = text.View();
    const bool hasSingle = bytes.find('\'') != std::string_view::npos;
    const bool hasDouble = bytes.find('"') != std::string_view::npos;
    const char delimiter = hasSingle && !hasDouble ? '"' : '\'';
    std::string quoted(1, delimiter);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n') {
            quoted += "\\n";
            continue;
        }
        const bool isDoubled = bytes[i] == '\\' && !IsBeforeHighByte(bytes, i);
        if (isDoubled || (bytes[i] == '\'' && delimiter == '\'')) quoted += '\\';
        quoted += bytes[i];
    }
    quoted += delimiter;
    return cow_String(quoted);
}

omu_PrimString::omu_PrimString(int number) : omu_PrimString(atr("%d", number)) {}

omu_PrimString::omu_PrimString(unsigned int number) : omu_PrimString(atr("%u", number)) {}

omu_PrimString::omu_PrimString(const omu_PrimEnumBase& enumeration)
    : omu_PrimString(enumeration.CurrentName()) {}

omu_PrimString::omu_PrimString(cls_ReadVisitor& visitor) : omu_PrimString(ReadText(visitor)) {}

omu_PrimString omu_PrimString::Slice(int first, int last) const {
    const int from = std::max(first, 0);
    const std::string_view head = WithoutCharacters(value.View(), from);
    const std::string_view tail = WithoutCharacters(head, std::max(last, from) - from);
    return omu_PrimString(cow_String(head.substr(0, head.size() - tail.size())));
}

cow_String omu_PrimString::TypeString() const { return "string"; }

cow_String omu_PrimString::AsString(int) const { return omu_Quoted(value); }

bool omu_PrimString::operator==(const omu_Primitive& other) const {
    const auto* string = dynamic_cast<const omu_PrimString*>(&other);
    return string && value == string->value;
}

void omu_PrimString::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimString* omu_PrimString::Copy() const { return new omu_PrimString(*this); }

std::uint32_t omu_PrimString::TypeId() const { return kTypeId; }

void omu_PrimString::DBWrite(cls_WriteVisitor& visitor) const { visitor.Write(kValue, value); }

void omu_PrimString::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimString>("omu_PrimString")
                           .AddAttribute(kValue.Name(), cls_KIND_STRING));
}

omu_PrimTranslatedString::omu_PrimTranslatedString(cls_ReadVisitor& visitor)
    : omu_PrimTranslatedString(atr_String(ReadText(visitor))) {}

cow_String omu_PrimTranslatedString::TypeString() const { return "tran_string"; }

cow_String omu_PrimTranslatedString::AsString(int) const {
    return omu_Quoted(value.Text(KTSBasStringMode::Translated));
}

bool omu_PrimTranslatedString::operator==(const omu_Primitive& other) const {
    const auto* string = dynamic_cast<const omu_PrimTranslatedString*>(&other);
    return string && value == string->value;
}

void omu_PrimTranslatedString::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimTranslatedString* omu_PrimTranslatedString::Copy() const {
    return new omu_PrimTranslatedString(*this);
}

std::uint32_t omu_PrimTranslatedString::TypeId() const { return kTypeId; }

void omu_PrimTranslatedString::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kValue, value.Text());
}

void omu_PrimTranslatedString::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimTranslatedString>("omu_PrimTranslatedString")
                           .AddAttribute(kValue.Name(), cls_KIND_TRANSLATED_STRING));
}
