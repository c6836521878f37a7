#include "mdl/mdl_PropAttr.h"

#include <cstdio>
#include <iterator>
#include <memory>

#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "foundation/shared/nex_Exception.h"

namespace {

constexpr cls_FieldHandle kValue("val");
constexpr cls_FieldHandle kState("state");

/// What a propagation status makes of an attribute.
struct StatusRule {
    mdl_PropStateEnm state;
    bool isDerived;  ///< comes from a base state, modes, a frequency extraction or a computation
};

/// By the number of the status.
constexpr StatusRule kStatusRules[] = {
    {mdl_UNSET, false},           // NOT_YET_ACTIVE
    {mdl_UNCHANGED, false},       // CREATED
    {mdl_UNCHANGED, false},       // PROPAGATED
    {mdl_UNCHANGED, false},       // MODIFIED
    {mdl_FREED, false},           // DEACTIVATED
    {mdl_FREED, false},           // NO_LONGER_ACTIVE
    {mdl_NOT_APPLICABLE, false},  // TYPE_NOT_APPLICABLE
    {mdl_NOT_APPLICABLE, false},  // INSTANCE_NOT_APPLICABLE
    {mdl_UNCHANGED, true},        // BUILT_INTO_BASE_STATE
    {mdl_UNCHANGED, true},        // PROPAGATED_FROM_BASE_STATE
    {mdl_UNCHANGED, true},        // MODIFIED_FROM_BASE_STATE
    {mdl_FREED, true},            // DEACTIVATED_FROM_BASE_STATE
    {mdl_UNCHANGED, true},        // BUILT_INTO_MODES
    {mdl_COMP_DEFAULT, true},     // COMPUTED
    {mdl_UNCHANGED, true},        // PROPAGATED_FROM_COMPUTED
    {mdl_ABS_DEFAULT, false},     // RESET_TO_INITIAL
    {mdl_UNCHANGED, true},        // PROPAGATED_FROM_FREQUENCY
};
static_assert(std::size(kStatusRules) == mdl_PROPAGATED_FROM_FREQUENCY + 1);

/// The state after `status`. Raises when an attribute with or without a value refuses it.
mdl_PropStateEnm StateAfter(mdl_PropagationStatusEnm status, bool acceptsDerived, bool hasValue,
                            const cow_String& attribute) {
    const int number = status;
    if (number >= 0 && number < static_cast<int>(std::size(kStatusRules))) {
        const StatusRule& rule = kStatusRules[number];
        const bool isInMode = acceptsDerived || !rule.isDerived;
        if (isInMode && (hasValue || !mdl_HasValue(rule.state))) return rule.state;
    }
    KTSBasThrow(nex_PrimException(
        atr_translate("Invalid propagation status for '%s' attribute.", attribute)));
}

mdl_PropStateEnm ReadState(cls_ReadVisitor& visitor) {
    cow_String name;
    visitor.Read(kState, name);
    mdl_PropStateEnm state = mdl_INVALID;
    if (!mdl_Find(name.View(), state)) {
        std::fputs(atr("Error reading attribute: no state is named '%s'\n", name).Characters(),
                   stderr);
    }
    return state;
}

// Numbers and texts are fields of the record, collections have a record of their own.

template <class T>
void WriteValue(cls_WriteVisitor& visitor, const T& value) {
    visitor.Write(kValue, value);
}

template <class T>
void WriteValue(cls_WriteVisitor& visitor, const cow_List<T>& list) {
    const auto body = visitor.MakeWriteObj(kValue, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListPrim(T(), 1) : nullptr;
    if (writer) writer->Write(list);
}

template <class T>
void WriteValue(cls_WriteVisitor& visitor, const mdl_1DArray<T>& array) {
    WriteValue(visitor, array.List());
}

void WriteValue(cls_WriteVisitor& visitor, const mdl_JaggedArray& array) {
    cls_WriteEmbedded(visitor, kValue, array);
}

void WriteValue(cls_WriteVisitor& visitor, const cow_List<mdl_JaggedArray>& list) {
    const auto body = visitor.MakeWriteObj(kValue, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListObj(1) : nullptr;
    if (!writer) return;
    for (const mdl_JaggedArray& array : list) {
        const auto record = writer->MakeWriteObj(array.TypeId(), cls_Uid(), &array);
        if (record) array.DBWrite(*record);
    }
}

template <class T>
void ReadValue(cls_ReadVisitor& visitor, T& value) {
    visitor.Read(kValue, value);
}

template <class T>
void ReadValue(cls_ReadVisitor& visitor, cow_List<T>& list) {
    const auto body = visitor.MakeReadObj(kValue);
    const auto reader = body ? body->MakeReadListPrim(T()) : nullptr;
    if (reader) list = reader->ConstGetList();
}

template <class T>
void ReadValue(cls_ReadVisitor& visitor, mdl_1DArray<T>& array) {
    cow_List<T> list;
    ReadValue(visitor, list);
    array = mdl_1DArray<T>(list);
}

void ReadValue(cls_ReadVisitor& visitor, mdl_JaggedArray& array) {
    array = cls_ReadEmbedded<mdl_JaggedArray>(visitor, kValue);
}

// A null record takes 5 bytes, an array in memory many times as much: an array has to be there.
void ReadValue(cls_ReadVisitor& visitor, cow_List<mdl_JaggedArray>& list) {
    const auto body = visitor.MakeReadObj(kValue);
    const auto reader = body ? body->MakeReadListObj() : nullptr;
    if (!reader) return;
    while (reader->Next()) {
        const auto* const array =
            static_cast<const mdl_JaggedArray*>(reader->ConstGet(mdl_JaggedArray::TypeId()));
        if (array) list.Append(*array);
    }
    const int missing = reader->Size() - list.Length();
    if (missing == 0) return;
    std::fputs(
        atr("Error reading attribute: %d of %d arrays are missing\n", missing, reader->Size())
            .Characters(),
        stderr);
}

/// Describes the class that is registered together with the attribute of `V`.
template <class V>
void DescribeCompanion(cls_ClassRegistrar& registrar) {
    if constexpr (std::same_as<V, bool> || std::same_as<V, double> || std::same_as<V, cow_String>) {
        mdl_PropAttr<mdl_1DArray<V>>::InitializeMetadata(registrar);
    } else if constexpr (std::same_as<V, mdl_JaggedArray>) {
        mdl_PropAttr<cow_List<V>>::InitializeMetadata(registrar);
    }
}

}  // namespace

template <class V>
mdl_PropAttr<V>::mdl_PropAttr(cls_ReadVisitor& visitor) : state(ReadState(visitor)) {
    V read{};
    ReadValue(visitor, read);
    if (HasValue()) value = read;
}

template <class V>
void mdl_PropAttr<V>::SetStatus(const cow_String& name, mdl_PropagationStatusEnm status,
                                bool acceptsDerived) {
    const mdl_PropStateEnm next = StateAfter(status, acceptsDerived, HasValue(), name);
    if (!mdl_HasValue(next)) value = V{};
    state = next;
}

template <class V>
void mdl_PropAttr<V>::DBWrite(cls_WriteVisitor& visitor) const {
    WriteValue(visitor, value);
    visitor.Write(kState, cow_String(mdl_NameOf(state)));
}

template <class V>
void mdl_PropAttr<V>::InitializeMetadata(cls_ClassRegistrar& registrar) {
    constexpr const mdl_PropClass& known = mdl_PropClassOf<V>;
    cls_ClassMetadata metadata(known.name, known.typeId, &Ctor);
    metadata.SetCowDtor(&CowDtor)
        .AddAttribute(kValue.Name(), known.valueKind, known.objectClass, known.collectionType)
        .AddAttribute(kState.Name(), cls_KIND_ENUM);
    registrar.AddClass(metadata);
    DescribeCompanion<V>(registrar);
}

template class mdl_PropAttr<bool>;
template class mdl_PropAttr<int>;
template class mdl_PropAttr<double>;
template class mdl_PropAttr<cow_String>;
template class mdl_PropAttr<cow_List<int>>;
template class mdl_PropAttr<cow_List<cow_String>>;
template class mdl_PropAttr<mdl_1DArray<int>>;
template class mdl_PropAttr<mdl_JaggedArray>;
template class mdl_PropAttr<cow_List<mdl_JaggedArray>>;
template class mdl_PropAttr<mdl_1DArray<bool>>;
template class mdl_PropAttr<mdl_1DArray<cow_String>>;
template class mdl_PropAttr<mdl_1DArray<double>>;
