#pragma once

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_Primitive.h"

class omu_PrimEnumBase;

/// `text` as scripts show it, between quotes: backslashes doubled, except one in front of a byte of
/// 128 or more; double quotes around a text with single quotes and no double quote, else single
/// quotes, with a backslash before each one inside; newlines as backslash and n. All other bytes
/// stay as they are.
///
/// Kept: "\" in front of a character beyond ASCII stays single, and carriage returns and tabs stay
/// raw, where one would expect what Python writes; the text is for readers, and scripts that parse
/// it know these forms.
[[nodiscard]] KTSOVUGEOM_API cow_String omu_Quoted(const cow_String& text);

/// A text, tag `s`: UTF-8 by convention; equal to another `s` of the same bytes only.
class KTSOVUGEOM_API omu_PrimString : public omu_Primitive {
  public:
    omu_PrimString() noexcept : omu_Primitive(omu_PrimTag::kString) {}
    explicit omu_PrimString(const cow_String& text) noexcept
        : omu_Primitive(omu_PrimTag::kString), value(text) {}
    /// The decimal text of the number.
    explicit omu_PrimString(int number);
    explicit omu_PrimString(unsigned int number);
    /// The current name of the enumeration.
    explicit omu_PrimString(const omu_PrimEnumBase& enumeration);
    /// Reads the record of a text.
    explicit omu_PrimString(cls_ReadVisitor& visitor);

    /// The text without quotes.
    [[nodiscard]] const cow_String& Value() const noexcept { return value; }
    /// The characters from `first` up to `last` exclusive. Characters are code points (a malformed
    /// byte is one); bounds outside the text are brought into it, as by `cow_List::Slice`.
    [[nodiscard]] omu_PrimString Slice(int first, int last) const;

    /// "string".
    [[nodiscard]] cow_String TypeString() const override;
    /// The text in quotes, see `omu_Quoted`.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimString* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "_value".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:25.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 25);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String value;
};

/// A text that is translated when it is displayed, tag `l`; equal to another `l` of the same
/// untranslated text only, never to an `s`.
class KTSOVUGEOM_API omu_PrimTranslatedString : public omu_Primitive {
  public:
    omu_PrimTranslatedString() noexcept : omu_Primitive(omu_PrimTag::kTranslatedString) {}
    explicit omu_PrimTranslatedString(const atr_String& text) noexcept
        : omu_Primitive(omu_PrimTag::kTranslatedString), value(text) {}
    /// Reads the record of a text.
    explicit omu_PrimTranslatedString(cls_ReadVisitor& visitor);

    [[nodiscard]] const atr_String& Value() const noexcept { return value; }

    /// "tran_string".
    [[nodiscard]] cow_String TypeString() const override;
    /// The translated text in quotes, see `omu_Quoted`.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimTranslatedString* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes the untranslated text as "_value".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:26.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 26);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    atr_String value;
};
