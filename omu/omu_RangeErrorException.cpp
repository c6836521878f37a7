#include "omu/omu_RangeErrorException.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "omu/detail/omu_MessagePiece.h"

namespace {

constexpr cls_FieldHandle kHigherText("m_HigherLimitAsString");
constexpr cls_FieldHandle kHigherQualifier("m_HigherLimitQualifier");
constexpr cls_FieldHandle kKeyword("m_Keyword");
constexpr cls_FieldHandle kKeywordType("m_KeywordType");
constexpr cls_FieldHandle kLowerText("m_LowerLimitAsString");
constexpr cls_FieldHandle kLowerQualifier("m_LowerLimitQualifier");

constexpr char kMustBe[] = "%s must be ";
constexpr char kMustBeInteger[] = "%s must be an Integer ";
constexpr char kMustBeFloat[] = "%s must be a Float ";
constexpr char kInTheRange[] = "in the range: %s%s%s%s%s";

omu_RangeQualifierEnm ReadQualifier(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    return static_cast<omu_RangeQualifierEnm>(visitor.ReadEnumAsInt(field));
}

}  // namespace

omu_RangeErrorException::omu_RangeErrorException(cls_ReadVisitor& visitor) {
    visitor.Read(kKeyword, keyword);
    visitor.Read(kKeywordType, keywordType);
    visitor.Read(kLowerText, lower.text);
    lower.qualifier = ReadQualifier(visitor, kLowerQualifier);
    visitor.Read(kHigherText, higher.text);
    higher.qualifier = ReadQualifier(visitor, kHigherQualifier);
}

const char* omu_RangeErrorException::PythonType() const { return "RangeError"; }

cow_String omu_RangeErrorException::JournalMessage(KTSBasStringMode mode) const {
    const cow_String head = omu_MessagePiece(mode,
                                             keywordType == kInteger ? kMustBeInteger
                                             : keywordType == kFloat ? kMustBeFloat
                                                                     : kMustBe,
                                             keyword);
    if (lower.qualifier > omu_LIMIT_EXCLUDED || higher.qualifier > omu_LIMIT_EXCLUDED) return head;
    const bool withLower = lower.qualifier == omu_LIMIT_INCLUDED;
    const bool withHigher = higher.qualifier == omu_LIMIT_INCLUDED;
    if (lower.qualifier == omu_NO_LIMIT) return head + (withHigher ? "<= " : "< ") + higher.text;
    if (higher.qualifier == omu_NO_LIMIT) return head + (withLower ? ">= " : "> ") + lower.text;
    return head + omu_MessagePiece(mode, kInTheRange, lower.text, withLower ? " <= " : " < ",
                                   keyword, withHigher ? " <= " : " < ", higher.text);
}

void omu_RangeErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kHigherText, higher.text);
    visitor.WriteEnumAsInt(kHigherQualifier, static_cast<int>(higher.qualifier));
    visitor.Write(kKeyword, keyword);
    visitor.Write(kKeywordType, keywordType);
    visitor.Write(kLowerText, lower.text);
    visitor.WriteEnumAsInt(kLowerQualifier, static_cast<int>(lower.qualifier));
}

void omu_RangeErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("omu_RangeErrorException", TypeId(), &Ctor);
    metadata.SetCowDtor(&CowDtor)
        .AddAttribute(kHigherText.Name(), cls_KIND_STRING)
        .AddAttribute(kHigherQualifier.Name(), cls_KIND_ENUM)
        .AddAttribute(kKeyword.Name(), cls_KIND_STRING)
        .AddAttribute(kKeywordType.Name(), cls_KIND_INT)
        .AddAttribute(kLowerText.Name(), cls_KIND_STRING)
        .AddAttribute(kLowerQualifier.Name(), cls_KIND_ENUM);
    registrar.AddClass(metadata);
}
