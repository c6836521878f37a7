#include "omu/omu_TypeErrorException.h"

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "omu/detail/omu_MessagePiece.h"

namespace {

constexpr cls_FieldHandle kArgNum("m_ArgNum");
constexpr cls_FieldHandle kContext("m_Context");
constexpr cls_FieldHandle kExpected("m_Expected");
constexpr cls_FieldHandle kExpecting("m_Expecting");
constexpr cls_FieldHandle kFound("m_Found");
constexpr cls_FieldHandle kKeyword("m_Keyword");
constexpr cls_FieldHandle kKeywordType("m_KeywordType");
constexpr cls_FieldHandle kNestingStr("m_NestingStr");

/// The metadata of the exception class `Class` without its fields.
template <class Class>
cls_ClassMetadata Describe(const char* name) {
    cls_ClassMetadata metadata(name, Class::TypeId(), &Class::Ctor);
    metadata.SetCowDtor(&Class::CowDtor);
    return metadata;
}

cow_String FoundExpecting(KTSBasStringMode mode, const cow_String& found,
                          const cow_String& expecting) {
    return omu_MessagePiece(mode, "; found %s, expecting %s", found, expecting);
}

}  // namespace

omu_TypeErrorException::omu_TypeErrorException(cls_ReadVisitor&) {}

const char* omu_TypeErrorException::PythonType() const { return "TypeError"; }

cow_String omu_TypeErrorException::JournalMessage(KTSBasStringMode) const { return {}; }

void omu_TypeErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(Describe<omu_TypeErrorException>("omu_TypeErrorException"));
}

omu_ArgNumberErrorException::omu_ArgNumberErrorException(cls_ReadVisitor& visitor) {
    visitor.Read(kExpected, expectedCount);
    visitor.Read(kFound, foundCount);
    visitor.Read(kContext, context);
}

cow_String omu_ArgNumberErrorException::JournalMessage(KTSBasStringMode mode) const {
    const char* const fault =
        expectedCount >= foundCount ? "not all required arguments specified" : "too many arguments";
    return (context.IsEmpty() ? cow_String() : context + "; ") + omu_MessagePiece(mode, fault) +
           omu_MessagePiece(mode, "; expected %d, got %d", expectedCount, foundCount);
}

void omu_ArgNumberErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kContext, context);
    visitor.Write(kExpected, expectedCount);
    visitor.Write(kFound, foundCount);
}

void omu_ArgNumberErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(Describe<omu_ArgNumberErrorException>("omu_ArgNumberErrorException")
                           .AddAttribute(kContext.Name(), cls_KIND_STRING)
                           .AddAttribute(kExpected.Name(), cls_KIND_INT)
                           .AddAttribute(kFound.Name(), cls_KIND_INT));
}

omu_ArgTypeErrorException::omu_ArgTypeErrorException(cls_ReadVisitor& visitor) {
    visitor.Read(kArgNum, argNumber);
    visitor.Read(kExpecting, expectedType);
    visitor.Read(kFound, foundType);
    visitor.Read(kNestingStr, nestingText);
}

cow_String omu_ArgTypeErrorException::JournalMessage(KTSBasStringMode mode) const {
    const cow_String place =
        nestingText.IsEmpty() ? omu_MessagePiece(mode, "arg%d", argNumber)
                              : nestingText + atr("[%d]", static_cast<std::int64_t>(argNumber) - 1);
    return place + FoundExpecting(mode, foundType, expectedType);
}

void omu_ArgTypeErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kArgNum, argNumber);
    visitor.Write(kExpecting, expectedType);
    visitor.Write(kFound, foundType);
    visitor.Write(kNestingStr, nestingText);
}

void omu_ArgTypeErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(Describe<omu_ArgTypeErrorException>("omu_ArgTypeErrorException")
                           .AddAttribute(kArgNum.Name(), cls_KIND_INT)
                           .AddAttribute(kExpecting.Name(), cls_KIND_STRING)
                           .AddAttribute(kFound.Name(), cls_KIND_STRING)
                           .AddAttribute(kNestingStr.Name(), cls_KIND_STRING));
}

omu_KeywordErrorException::omu_KeywordErrorException(cls_ReadVisitor& visitor) {
    visitor.Read(kContext, context);
    visitor.Read(kKeyword, keyword);
}

cow_String omu_KeywordErrorException::JournalMessage(KTSBasStringMode mode) const {
    return omu_MessagePiece(mode, "%skeyword error on %s", context, keyword);
}

void omu_KeywordErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kContext, context);
    visitor.Write(kKeyword, keyword);
}

void omu_KeywordErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(Describe<omu_KeywordErrorException>("omu_KeywordErrorException")
                           .AddAttribute(kContext.Name(), cls_KIND_STRING)
                           .AddAttribute(kKeyword.Name(), cls_KIND_STRING));
}

omu_KeywordTypeErrorException::omu_KeywordTypeErrorException(cls_ReadVisitor& visitor) {
    visitor.Read(kKeyword, keyword);
    visitor.Read(kKeywordType, expectedType);
    visitor.Read(kFound, foundType);
    visitor.Read(kNestingStr, nestingText);
}

cow_String omu_KeywordTypeErrorException::JournalMessage(KTSBasStringMode mode) const {
    return (nestingText.IsEmpty() ? keyword : nestingText) +
           FoundExpecting(mode, foundType, expectedType);
}

void omu_KeywordTypeErrorException::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kFound, foundType);
    visitor.Write(kKeyword, keyword);
    visitor.Write(kKeywordType, expectedType);
    visitor.Write(kNestingStr, nestingText);
}

void omu_KeywordTypeErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(Describe<omu_KeywordTypeErrorException>("omu_KeywordTypeErrorException")
                           .AddAttribute(kFound.Name(), cls_KIND_STRING)
                           .AddAttribute(kKeyword.Name(), cls_KIND_STRING)
                           .AddAttribute(kKeywordType.Name(), cls_KIND_STRING)
                           .AddAttribute(kNestingStr.Name(), cls_KIND_STRING));
}

omu_GenericTypeErrorException::omu_GenericTypeErrorException(cls_ReadVisitor&) {}

cow_String omu_GenericTypeErrorException::JournalMessage(KTSBasStringMode mode) const {
    return omu_MessagePiece(mode, "illegal argument type for built-in operation");
}

void omu_GenericTypeErrorException::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(Describe<omu_GenericTypeErrorException>("omu_GenericTypeErrorException"));
}
