#include "idb/idb_MementoRead.h"

#include <cstdio>

#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "idb/detail/idb_CollectionKind.h"
#include "idb/detail/idb_FieldConversion.h"
#include "idb/detail/idb_ObjectReader.h"
#include "idb/detail/idb_RecordLayout.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_MapPrim.h"
#include "idb/idb_ReadObjCollections.h"

idb_MementoRead::idb_MementoRead(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                                 std::uint32_t expectedClassId, cls_CollectionType type)
    : idb_MementoRead(stream, classes, expectedClassId, type, Role::Object) {}

idb_MementoRead::idb_MementoRead(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                                 std::uint32_t expectedClassId, cls_CollectionType type,
                                 Role recordRole)
    : filter(stream),
      registrar(classes),
      classId(expectedClassId),
      collectionType(type),
      role(recordRole),
      uid(cls_Uid::AllocateUid()) {
    ReadRecord();
}

idb_MementoRead::~idb_MementoRead() {
    if (isBegun) filter.Objects().EndObject(number);
    if (isEntered) filter.LeaveRecord();
}

void idb_MementoRead::ReadRecord() {
    const std::uint32_t storedId = filter.ReadUnsigned();
    hasValue = filter.ReadBool();
    if (filter.Failed()) {
        hasValue = false;
        return;
    }
    TakeClass(storedId);
    // A null record that names no class leaves the expected one.
    if (storedId == idb_NULL_CLASS && hasValue) classId = storedId;
    if (hasValue && role == Role::Object) {
        isEntered = filter.EnterRecord();
        hasValue = isEntered;
    }
    if (!hasValue) return;
    if (classId != idb_NULL_CLASS) {
        layout = idb_StreamLayouts::Find(filter.State(), registrar, classId);
    }
    const bool isCollection = role == Role::Collection || collectionType != cls_NO_COLLECTION;
    hasBody =
        layout || isCollection || classId == idb_NULL_CLASS || classId == idb_JAGGED_ARRAY_CLASS;
    if (!hasBody) return;
    ReadNumber();
    if (!layout || role == Role::Collection) return;
    if (collectionType == cls_NO_COLLECTION) collectionType = layout->CollectionType();
    if (!idb_HasOwnBody(classId)) ReadFields();
}

void idb_MementoRead::TakeClass(std::uint32_t storedId) {
    if (storedId == idb_NULL_CLASS || storedId == classId) return;
    const std::uint32_t expected = classId;
    if (expected == idb_ANY_CLASS || registrar.IsKindOf(storedId, expected)) {
        // A collection names the class of its elements, which stays the one of the field.
        if (role != Role::Collection) classId = storedId;
        return;
    }
    const cow_String ids = atr("Error constructing object for %x does not inherit from %x\n",
                               static_cast<unsigned>(storedId), static_cast<unsigned>(expected));
    const cow_String names =
        atr("Error constructing object for %s does not inherit from %s\n",
            typ_ArchCompTable::Name(storedId), typ_ArchCompTable::Name(expected));
    std::fputs(ids.Characters(), stderr);
    std::fputs(names.Characters(), stderr);
    filter.MarkFaulty();
}

void idb_MementoRead::ReadNumber() {
    number = filter.ReadInt();
    if (number == 0) return;
    isKnown = filter.Objects().Find(number) != nullptr;
    if (isKnown || role != Role::Object) return;
    filter.Objects().BeginObject(number, classId);
    isBegun = true;
}

void idb_MementoRead::ReadFields() {
    fixedBlock = filter.Take(layout->FixedSize());
    if (!fixedBlock) {
        zeros.resize(layout->FixedSize());
        fixedBlock = zeros.data();
    }
    strings.SetSize(layout->StringCount());
    for (std::string_view& text : strings) text = filter.ReadStringView();
}

void* idb_MementoRead::getObjectPtr() const {
    const bio_ReadObject* const known = filter.Objects().Find(number);
    if (!known || known->classId == classId) return known ? known->object : nullptr;
    idb_ReportNotInherited(filter, known->classId, classId);
    return nullptr;
}

const idb_FieldLayout* idb_MementoRead::Find(const cls_FieldHandle& field) const {
    return layout ? layout->Find(field.Name()) : nullptr;
}

bool idb_MementoRead::FieldIsPresent(const cls_FieldHandle& field) const {
    const cls_ClassMetadata* const metadata = registrar.Find(classId);
    return metadata && metadata->FindAttribute(field.Name());
}

bool idb_MementoRead::DataIsPresent(const cls_FieldHandle& field) const {
    return hasValue && FieldIsPresent(field);
}

bool idb_MementoRead::ObjIsPresent(const cls_FieldHandle& field) const {
    return DataIsPresent(field) && filter.PeekUnsigned(0) != idb_NULL_CLASS &&
           filter.PeekBool(sizeof(std::uint32_t));
}

// Fields.

template <class T>
void idb_MementoRead::ReadNumberField(const cls_FieldHandle& field, T& value) {
    const idb_FieldLayout* const found = Find(field);
    if (!found) return;
    const auto place = static_cast<std::size_t>(found->place);
    if (found->storage == idb_StorageEnm::String) {
        if (!strings.IsEmpty()) value = idb_NumberAs<T>(idb_ParseNumber(strings[place]));
    } else if (found->storage != idb_StorageEnm::Nested && fixedBlock) {
        value = idb_LoadField<T>(found->kind, fixedBlock + place);
    }
}

void idb_MementoRead::Read(const cls_FieldHandle& field, bool& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, char& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, signed char& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, unsigned char& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, short& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, unsigned short& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, int& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, unsigned& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, float& value) {
    ReadNumberField(field, value);
}
void idb_MementoRead::Read(const cls_FieldHandle& field, double& value) {
    ReadNumberField(field, value);
}

void idb_MementoRead::Read(const cls_FieldHandle& field, cow_String& value) {
    const idb_FieldLayout* const found = Find(field);
    if (!found) return;
    const auto place = static_cast<std::size_t>(found->place);
    if (found->storage == idb_StorageEnm::String) {
        if (!strings.IsEmpty()) value = strings[place];
    } else if (found->storage != idb_StorageEnm::Nested && fixedBlock) {
        value = idb_TextOf(idb_LoadNumber(found->kind, fixedBlock + place));
    }
}

int idb_MementoRead::ReadEnumAsInt(const cls_FieldHandle& field) {
    int value = 0;
    ReadNumberField(field, value);
    return value;
}

// Objects.

std::unique_ptr<cls_ReadVisitor> idb_MementoRead::MakeReadObj(const cls_FieldHandle& field) {
    const idb_FieldLayout* const found = Find(field);
    if (!found || found->storage != idb_StorageEnm::Nested) return nullptr;
    const bool isCollection = found->kind == cls_KIND_COLLECTION;
    const std::uint32_t expected =
        isCollection || found->classId != 0 ? found->classId : idb_ANY_CLASS;
    return std::unique_ptr<cls_ReadVisitor>(
        new idb_MementoRead(filter, registrar, expected, found->collectionType,
                            isCollection ? Role::Collection : Role::Object));
}

std::unique_ptr<cls_ReadVisitor> idb_MementoRead::MakeBaseReadObj() {
    if (!hasValue) return nullptr;
    return std::unique_ptr<cls_ReadVisitor>(
        new idb_MementoRead(filter, registrar, idb_ANY_CLASS, cls_NO_COLLECTION, Role::Base));
}

std::uint32_t idb_MementoRead::ObjectClass(const cls_FieldHandle& field) const {
    const idb_FieldLayout* const found = Find(field);
    if (!found || found->storage != idb_StorageEnm::Nested || found->kind == cls_KIND_COLLECTION) {
        return 0;
    }
    return found->classId != 0 ? found->classId : idb_ANY_CLASS;
}

void* idb_MementoRead::ReadObjPtr(const cls_FieldHandle& field, std::uint32_t requested,
                                  bool& isFirst) {
    isFirst = false;
    const std::uint32_t expected = ObjectClass(field);
    if (expected == 0) return nullptr;
    idb_HeldObject held(idb_ObjectReader(filter, registrar), expected);
    return held.Reader().TakePointer(held.Built(), requested, isFirst);
}

void* idb_MementoRead::ReadObjValue(const cls_FieldHandle& field, std::uint32_t requested) {
    const std::uint32_t expected = ObjectClass(field);
    if (expected == 0) return nullptr;
    idb_HeldObject held(idb_ObjectReader(filter, registrar), expected);
    return held.Reader().TakeValue(held.Built(), requested);
}

std::shared_ptr<cls_CowHolder> idb_MementoRead::ReadObjCow(const cls_FieldHandle& field,
                                                           std::uint32_t requested,
                                                           cls_CowAdopt adopt) {
    const std::uint32_t expected = ObjectClass(field);
    if (expected == 0) return nullptr;
    idb_HeldObject held(idb_ObjectReader(filter, registrar), expected);
    return held.Reader().TakeCow(held.Built(), requested, adopt);
}

std::unique_ptr<cls_ReadObjCollection> idb_MementoRead::MakeAgentProxy(const cls_FieldHandle& field,
                                                                       std::uint32_t requested) {
    if (ObjectClass(field) == 0) return nullptr;
    return std::make_unique<idb_ReadProxy>(filter, registrar, requested);
}

// Collections.

std::uint32_t idb_MementoRead::ElementClass() const noexcept {
    return role == Role::Collection && classId != 0 ? classId : idb_ANY_CLASS;
}

template <class Reader, class... Arguments>
std::unique_ptr<Reader> idb_MementoRead::MakeReader(const idb_CollectionKind& kind,
                                                    const Arguments&... arguments) {
    if (!idb_HasOwnBody(classId) && !kind.AcceptForReading(collectionType)) {
        filter.MarkFaulty();
        return nullptr;
    }
    return hasBody ? std::make_unique<Reader>(filter, arguments...) : nullptr;
}

std::unique_ptr<cls_ReadListPrim<bool>> idb_MementoRead::MakeReadListPrim(bool) {
    return MakeReader<idb_ReadListPrim<bool>>(idb_ListOf<bool>);
}
std::unique_ptr<cls_ReadListPrim<int>> idb_MementoRead::MakeReadListPrim(int) {
    return MakeReader<idb_ReadListPrim<int>>(idb_ListOf<int>);
}
std::unique_ptr<cls_ReadListPrim<unsigned>> idb_MementoRead::MakeReadListPrim(unsigned) {
    return MakeReader<idb_ReadListPrim<unsigned>>(idb_ListOf<unsigned>);
}
std::unique_ptr<cls_ReadListPrim<float>> idb_MementoRead::MakeReadListPrim(float) {
    return MakeReader<idb_ReadListPrim<float>>(idb_ListOf<float>);
}
std::unique_ptr<cls_ReadListPrim<double>> idb_MementoRead::MakeReadListPrim(double) {
    return MakeReader<idb_ReadListPrim<double>>(idb_ListOf<double>);
}
std::unique_ptr<cls_ReadListPrim<cow_String>> idb_MementoRead::MakeReadListPrim(const cow_String&) {
    return MakeReader<idb_ReadListPrim<cow_String>>(idb_ListOf<cow_String>);
}

std::unique_ptr<cls_ReadMapPrim<cow_String, double>> idb_MementoRead::MakeReadMapString2Prim(
    double) {
    return MakeReader<idb_ReadMapString2Prim<double>>(idb_MapOf<cow_String, double>);
}
std::unique_ptr<cls_ReadMapPrim<cow_String, float>> idb_MementoRead::MakeReadMapString2Prim(float) {
    return MakeReader<idb_ReadMapString2Prim<float>>(idb_MapOf<cow_String, float>);
}
std::unique_ptr<cls_ReadMapPrim<cow_String, int>> idb_MementoRead::MakeReadMapString2Prim(int) {
    return MakeReader<idb_ReadMapString2Prim<int>>(idb_MapOf<cow_String, int>);
}
std::unique_ptr<cls_ReadMapPrim<cow_String, cow_String>> idb_MementoRead::MakeReadMapString2Prim(
    const cow_String&) {
    return MakeReader<idb_ReadMapString2Prim<cow_String>>(idb_MapOf<cow_String, cow_String>);
}
std::unique_ptr<cls_ReadMapPrim<cow_String, unsigned>> idb_MementoRead::MakeReadMapString2Prim(
    unsigned) {
    return MakeReader<idb_ReadMapString2Prim<unsigned>>(idb_MapOf<cow_String, unsigned>);
}

std::unique_ptr<cls_ReadMapPrim<int, double>> idb_MementoRead::MakeReadMapInt2Prim(double) {
    return MakeReader<idb_ReadMapInt2Prim<double>>(idb_MapOf<int, double>);
}
std::unique_ptr<cls_ReadMapPrim<int, float>> idb_MementoRead::MakeReadMapInt2Prim(float) {
    return MakeReader<idb_ReadMapInt2Prim<float>>(idb_MapOf<int, float>);
}
std::unique_ptr<cls_ReadMapPrim<int, int>> idb_MementoRead::MakeReadMapInt2Prim(int) {
    return MakeReader<idb_ReadMapInt2Prim<int>>(idb_MapOf<int, int>);
}
std::unique_ptr<cls_ReadMapPrim<int, cow_String>> idb_MementoRead::MakeReadMapInt2Prim(
    const cow_String&) {
    return MakeReader<idb_ReadMapInt2Prim<cow_String>>(idb_MapOf<int, cow_String>);
}
std::unique_ptr<cls_ReadMapPrim<int, unsigned>> idb_MementoRead::MakeReadMapInt2Prim(unsigned) {
    return MakeReader<idb_ReadMapInt2Prim<unsigned>>(idb_MapOf<int, unsigned>);
}
std::unique_ptr<cls_ReadMapPrim<int, int>> idb_MementoRead::MakeReadIntTableInt(int) {
    return MakeReader<idb_ReadMapInt2Prim<int>>(idb_MapOf<int, int>);
}

std::unique_ptr<cls_ReadListObj> idb_MementoRead::MakeReadListObj() {
    return MakeReader<idb_ReadListObj>(idb_ListOf<idb_Objects>, registrar, ElementClass());
}
std::unique_ptr<cls_ReadMapObj<cow_String>> idb_MementoRead::MakeReadMapString2Obj() {
    return MakeReader<idb_ReadMapString2Obj>(idb_MapOf<cow_String, idb_Objects>, registrar,
                                             ElementClass());
}
std::unique_ptr<cls_ReadMapObj<int>> idb_MementoRead::MakeReadMapInt2Obj() {
    return MakeReader<idb_ReadMapInt2Obj>(idb_MapOf<int, idb_Objects>, registrar, ElementClass());
}
std::unique_ptr<cls_ReadBlob> idb_MementoRead::MakeAgentBlob() {
    return MakeReader<idb_ReadBlob>(idb_Blob);
}
