#include "omu/omu_Arguments.h"

#include "foundation/shared/cls_Visitors.h"
#include "omu/omu_InterfaceObj.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PyObjectWrapper.h"
#include "omu/omu_TypeErrorException.h"

namespace {

constexpr cls_FieldHandle kKeywords("_keywords");

/// Reads a borrowed object: the argument itself, of class `Kind`.
template <class Kind>
struct Borrowed {
    const Kind* object;
    cow_String typeName;  ///< of the wanted object
};

bool omu_Convert(const omu_Primitive& value, Borrowed<omu_InterfaceObj>& out,
                 omu_TypeFault& fault) {
    if (value.IsType(omu_PrimTag::kInterfaceObj) && value.TypeString() == out.typeName) {
        out.object = static_cast<const omu_InterfaceObj*>(&value);
        return true;
    }
    fault = {value.TypeString(), out.typeName, {}};
    return false;
}

bool omu_Convert(const omu_Primitive& value, Borrowed<omu_PyObjectWrapper>& out,
                 omu_TypeFault& fault) {
    if (value.IsType(omu_PrimTag::kPyObject)) {
        out.object = static_cast<const omu_PyObjectWrapper*>(&value);
        return true;
    }
    fault = {value.TypeString(), out.typeName, {}};
    return false;
}

omu_PrimTuple ReadBase(cls_ReadVisitor& visitor) {
    const auto base = visitor.MakeBaseReadObj();
    return base ? omu_PrimTuple(*base) : omu_PrimTuple();
}

omu_PrimNesting NestingOf(const std::unique_ptr<omu_Primitive>& value) {
    if (!value) KTSBasThrow(omu_GenericTypeErrorException());
    return value->Nesting();
}

}  // namespace

omu_Arguments::omu_Arguments(const omu_PrimTuple& positional, const Keywords& keywordValues)
    : omu_PrimTuple(positional), keywords(keywordValues) {
    Nesting().Require();
    Begin();
}

omu_Arguments::omu_Arguments(cls_ReadVisitor& visitor)
    : omu_PrimTuple(ReadBase(visitor)), keywords(cls_ReadEmbedded<Keywords>(visitor, kKeywords)) {
    Nesting().Require();
    Begin();
}

void omu_Arguments::Put(std::unique_ptr<omu_Primitive> value) {
    Nesting().With(NestingOf(value)).Require();
    if (!IsUnread()) Begin();
    InsertElement(Length(), omu_PrimHandle(value.release()));
}

void omu_Arguments::Put(std::unique_ptr<omu_Primitive> value, const cow_String& keyword) {
    Nesting().With(omu_PrimNesting::OfEmptyContainer().With(NestingOf(value))).Require();
    if (!IsUnread()) Begin();
    pending.push_back(true);  // one too many, which nobody looks at, when the keyword is there
    keywords.Insert(keyword, value.release());
    pendingCount = keywords.Length();
}

void omu_Arguments::Begin() {
    omu_PrimTuple::Begin();
    pendingCount = keywords.Length();
    pending.assign(static_cast<std::size_t>(pendingCount), true);
    requiredKeywords = 0;
    missing = 0;
    optionalMiss = 0;
    ClearKeywordFault();
}

void omu_Arguments::ClearKeywordFault() {
    faultOnKeyword = false;
    faultKeyword = {};
}

int omu_Arguments::PendingIndex(const cow_String* keyword) const {
    if (!keyword || pendingCount == 0) return -1;
    const int index = keywords.IndexOf(*keyword);
    return index >= 0 && pending[static_cast<std::size_t>(index)] ? index : -1;
}

omu_Arguments::Source omu_Arguments::Read(const omu_ArgumentTarget& target,
                                          const cow_String* keyword) {
    const int pendingIndex = PendingIndex(keyword);
    const Source source =
        errorArg == 0 ? ReadUncounted(target, keyword, pendingIndex) : Source::None;
    Count(pendingIndex);
    return source;
}

omu_Arguments::Source omu_Arguments::ReadUncounted(const omu_ArgumentTarget& target,
                                                   const cow_String* keyword, int pendingIndex) {
    if (cursor < size) return Take(*Index(cursor), target) ? Source::Position : Source::None;
    if (!keyword) return Source::None;
    if (pendingIndex >= 0) {
        if (Take(keywords.ConstGetValue(pendingIndex), target)) return Source::Keyword;
    } else if (isOptional) {
        optionalMiss = numGets + 1;
        return Source::None;
    } else {
        errorArg = cursor + 1;
    }
    faultOnKeyword = true;
    faultKeyword = *keyword;
    return Source::None;
}

void omu_Arguments::Count(int pendingIndex) {
    latest = {false, pendingIndex};
    if (pendingIndex >= 0) {
        pending[static_cast<std::size_t>(pendingIndex)] = false;
        --pendingCount;
        if (!isOptional) ++requiredKeywords;
    } else if (!isOptional && cursor >= size) {
        latest.wasMissing = true;
        ++missing;
    }
    CountGet();
}

omu_Arguments::Source omu_Arguments::ReadTuple(omu_PrimTuple& value, const cow_String* keyword) {
    const cow_String place = PlaceOf(cursor + 1);
    const Source source = Read(omu_ArgumentTarget(value), keyword);
    if (source == Source::None) return source;
    const bool byName = source == Source::Keyword && ConstGetNestedErrorStr().IsEmpty();
    value.SetNestedErrorStr(byName ? *keyword : place);
    return source;
}

const omu_InterfaceObj* omu_Arguments::Get(const char* typeName, const cow_String& keyword,
                                           const omu_InterfaceObj* byDefault) {
    Borrowed<omu_InterfaceObj> borrowed{byDefault, typeName};
    Read(omu_ArgumentTarget(borrowed), &keyword);
    return borrowed.object;
}

const omu_PyObjectWrapper* omu_Arguments::Get(const cow_String& keyword,
                                              const omu_PyObjectWrapper* byDefault) {
    Borrowed<omu_PyObjectWrapper> borrowed{byDefault, omu_PyObjectWrapper().TypeString()};
    Read(omu_ArgumentTarget(borrowed), &keyword);
    return borrowed.object;
}

bool omu_Arguments::DeprecatedCheck(const cow_String& keyword) {
    if (!keywords.IsMember(keyword)) return false;
    AddDeprecatedArgUsed(keyword);
    return true;
}

bool omu_Arguments::DeprecatedAlternative(const cow_String& keyword) {
    if (PendingIndex(&keyword) < 0 || !Alternative()) return false;
    AddDeprecatedArgUsed(keyword);
    return true;
}

void omu_Arguments::AddDeprecatedArgUsed(const cow_String& keyword) {
    deprecatedUsed.AppendUnlessMember(keyword);
}

bool omu_Arguments::Alternative() {
    if (!canWithdraw) return false;
    if (ErrorOnPrevious()) {
        ClearFault();
        ClearKeywordFault();
        optionalMiss = 0;
    } else if (errorArg != 0 || numGets > size) {
        return false;
    }
    if (latest.wasMissing) --missing;
    if (latest.keyword >= 0) {
        pending[static_cast<std::size_t>(latest.keyword)] = true;
        ++pendingCount;
        if (lastWasRequired) --requiredKeywords;
    }
    StepBack();
    return true;
}

bool omu_Arguments::Error() const {
    const int found = size + keywords.Length();
    return pendingCount > 0 || errorArg != 0 || requiredKeywords + size < reqcount ||
           found > cursor || missing > 0;
}

bool omu_Arguments::ErrorOnPrevious() const {
    return canWithdraw && (errorArg == numGets || optionalMiss == numGets);
}

template <class Use>
void omu_Arguments::UseFault(const cow_String& context, const Use& use) const {
    for (int i = 0; pendingCount > 0 && i < keywords.Length(); ++i) {
        if (!pending[static_cast<std::size_t>(i)]) continue;
        return use(omu_KeywordErrorException(context, keywords.ConstGetKey(i)));
    }
    if (errorArg != 0 && !faultOnKeyword) return use(TypeFault());
    // A required keyword that was merely missing is left to the counts.
    const bool hasTypes = typeFound.View() != kUndetermined && typeExpected.View() != kUndetermined;
    if (errorArg != 0 && hasTypes) return use(KeywordFault());
    const int required = requiredKeywords + size;
    if (required < reqcount) return use(omu_ArgNumberErrorException(reqcount, required, context));
    const int found = size + keywords.Length();
    if (found > cursor) return use(omu_ArgNumberErrorException(cursor, found, context));
    // An argument given twice has paid for a missing one in both counts above.
    if (missing > 0) {
        return use(omu_ArgNumberErrorException(reqcount, reqcount - missing, context));
    }
}

void omu_Arguments::End(const cow_String& context) const {
    UseFault(context, [](const auto& fault) { KTSBasThrow(fault); });
}

std::unique_ptr<nex_Exception> omu_Arguments::Fault(const cow_String& context) const {
    std::unique_ptr<nex_Exception> first;
    UseFault(context, [&first](const auto& fault) { first = fault.Clone(); });
    return first;
}

omu_KeywordTypeErrorException omu_Arguments::KeywordFault() const {
    cow_String place = ConstGetNestedErrorStr();
    if (!place.IsEmpty()) {
        place = PlaceOf(errorArg);
    } else if (!faultPlace.empty()) {
        place = faultKeyword;
    }
    for (const int index : faultPlace) place = place + atr("[%d]", index);
    return {faultKeyword, typeExpected, typeFound, place};
}

omu_PrimNesting omu_Arguments::Nesting() const noexcept {
    return omu_PrimTuple::Nesting().With(keywords.Nesting());
}

omu_Arguments* omu_Arguments::Copy() const { return new omu_Arguments(*this); }

std::uint32_t omu_Arguments::TypeId() const { return kTypeId; }

void omu_Arguments::DBWrite(cls_WriteVisitor& visitor) const {
    if (const auto base = visitor.MakeBaseWriteObj(omu_PrimTuple::kTypeId, cls_Uid())) {
        omu_PrimTuple::DBWrite(*base);
    }
    cls_WriteEmbedded(visitor, kKeywords, keywords);
}

void omu_Arguments::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        omu_MetadataOf<omu_Arguments>("omu_Arguments", omu_PrimTuple::kTypeId)
            .AddAttribute(kKeywords.Name(), cls_KIND_EMBEDDED_OBJ, Keywords::kTypeId));
}
