#include "idb/idb_MementoWrite.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <span>
#include <utility>

#include "cow/cow_COW.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/nex_Exception.h"
#include "idb/detail/idb_CollectionKind.h"
#include "idb/detail/idb_FieldConversion.h"
#include "idb/detail/idb_NestedWriter.h"
#include "idb/detail/idb_RecordLayout.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_MapPrim.h"
#include "idb/idb_WriteObjCollections.h"

namespace {

/// Records of one stream: shared objects repeat their bodies, so that a few levels of sharing can
/// double without end.
constexpr std::int64_t kMostRecords = std::int64_t{1} << 26;

/// Class id and flag.
constexpr std::size_t kHeadSize = sizeof(std::uint32_t) + 1;

void FailFor(bio_Ofilter& filter, const cow_String& message) {
    std::fputs((message + "\n").Characters(), stderr);
    filter.Fail(std::make_exception_ptr(nex_PrimException(message)));
}

/// A memento whose record has a place in a section.
class NestedMemento final : public idb_MementoWrite, private idb_OpenWriter {
  public:
    NestedMemento(idb_Section& target, bio_Ofilter& stream, const cls_ClassRegistrar& classes,
                  const idb_NestedRecord& record)
        : idb_MementoWrite(stream, classes, record), idb_OpenWriter(target) {}
    ~NestedMemento() override { End(); }

    void Flush() override { End(); }

  private:
    void Complete(idb_PendingBytes& out) override { CompleteInto(out); }
};

}  // namespace

std::unique_ptr<cls_WriteVisitor> idb_NestRecord(idb_Section& section, bio_Ofilter& filter,
                                                 const cls_ClassRegistrar& registrar,
                                                 const idb_NestedRecord& record) {
    if (filter.Failed()) return nullptr;
    if (record.depth > bio_MaxDepth) {
        FailFor(filter,
                atr("Error writing stream: records nested more than %d deep", bio_MaxDepth));
        return nullptr;
    }
    if (idb_StreamLayouts::CountRecord(filter.State()) > kMostRecords) {
        FailFor(filter, "Error writing stream: too many records");
        return nullptr;
    }
    return std::make_unique<NestedMemento>(section, filter, registrar, record);
}

void idb_NestNull(idb_Section& section) {
    bio_Buffer& place = section.Next().Tail(sizeof idb_NULL_CLASS + 1);
    place.Write(idb_NULL_CLASS);
    place.Write(false);
}

idb_MementoWrite::idb_MementoWrite(bio_Ofilter& stream, const cls_ClassRegistrar& classes,
                                   std::uint32_t objectClassId, const void* object,
                                   bool needsDeletion, const cls_Uid& objectUid)
    : idb_MementoWrite(
          stream, classes,
          {.classId = objectClassId, .hasValue = object != nullptr, .uid = objectUid}) {
    deletesNested = needsDeletion;
    idb_StreamLayouts::BeginRecords(filter.State());
}

idb_MementoWrite::idb_MementoWrite(bio_Ofilter& stream, const cls_ClassRegistrar& classes,
                                   const idb_NestedRecord& record)
    : filter(stream),
      registrar(classes),
      classId(record.classId),
      role(record.role),
      hasValue(record.hasValue),
      collectionType(record.type),
      depth(record.depth),
      uid(record.uid),
      layout(idb_StreamLayouts::Find(stream.State(), classes, record.classId)) {
    if (!layout || role == idb_RecordRoleEnm::Collection) return;
    if (collectionType == cls_NO_COLLECTION) collectionType = layout->CollectionType();
    if (idb_HasOwnBody(classId)) return;
    fixedBlock.SetSize(layout->FixedSize());
    strings.SetSize(layout->StringCount());
}

idb_MementoWrite::~idb_MementoWrite() = default;

const idb_FieldLayout* idb_MementoWrite::Find(const cls_FieldHandle& field) const {
    return layout ? layout->Find(field.Name()) : nullptr;
}

bool idb_MementoWrite::FieldIsPresent(const cls_FieldHandle& field) const {
    return Find(field) != nullptr;
}

void idb_MementoWrite::CheckCollectionType(cls_CollectionType type,
                                           const cow_String& fieldName) const {
    const idb_FieldLayout* const found = Find(fieldName.View());
    const cls_CollectionType known = found    ? found->collectionType
                                     : layout ? layout->CollectionType()
                                              : cls_NO_COLLECTION;
    if (known == type) return;
    std::fputs(atr("Error in collections types have: %d looking for: %d %s\n",
                   static_cast<int>(known), static_cast<int>(type), fieldName)
                   .Characters(),
               stderr);
}

// Fields.

template <class T>
void idb_MementoWrite::WriteNumberField(const cls_FieldHandle& field, const T& value) {
    const idb_FieldLayout* const found = Find(field);
    if (!found || found->storage == idb_StorageEnm::Nested) return;
    const auto place = static_cast<std::size_t>(found->place);
    hasValue = true;
    if (found->storage == idb_StorageEnm::String) {
        if (!strings.IsEmpty()) strings[place] = idb_TextOf(idb_NumberOf(value));
    } else if (!fixedBlock.IsEmpty()) {
        idb_StoreField(found->kind, fixedBlock.Data() + place, value);
    }
}

void idb_MementoWrite::Write(const cls_FieldHandle& field, const bool& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const char& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const signed char& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const unsigned char& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const short& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const unsigned short& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const int& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const unsigned& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const float& value) {
    WriteNumberField(field, value);
}
void idb_MementoWrite::Write(const cls_FieldHandle& field, const double& value) {
    WriteNumberField(field, value);
}

void idb_MementoWrite::Write(const cls_FieldHandle& field, const cow_String& value) {
    const idb_FieldLayout* const found = Find(field);
    if (!found || found->storage == idb_StorageEnm::Nested) return;
    const auto place = static_cast<std::size_t>(found->place);
    hasValue = true;
    if (found->storage == idb_StorageEnm::String) {
        if (!strings.IsEmpty()) strings[place] = value;
    } else if (!fixedBlock.IsEmpty()) {
        idb_StoreNumber(found->kind, fixedBlock.Data() + place, idb_ParseNumber(value.View()));
    }
}

void idb_MementoWrite::WriteEnumAsInt(const cls_FieldHandle& field, int value) {
    WriteNumberField(field, value);
}

// Nested records.

idb_Section& idb_MementoWrite::Nested() {
    hasValue = true;
    if (!nested) nested = std::make_unique<idb_Section>(filter);
    return *nested;
}

void idb_MementoWrite::WriteNullObj(const cls_FieldHandle& field) {
    const idb_FieldLayout* const found = Find(field);
    if (!found || found->storage != idb_StorageEnm::Nested || isFlushed) return;
    idb_NestNull(Nested());
}

std::unique_ptr<cls_WriteVisitor> idb_MementoWrite::MakeNested(const cls_FieldHandle& field,
                                                               std::uint32_t nestedClassId,
                                                               const cls_Uid& nestedUid,
                                                               bool nestedHasValue) {
    const idb_FieldLayout* const found = Find(field);
    if (!found || found->storage != idb_StorageEnm::Nested || isFlushed) return nullptr;
    idb_NestedRecord record{.classId = nestedClassId,
                            .hasValue = nestedHasValue && nestedClassId != idb_NULL_CLASS,
                            .uid = nestedUid,
                            .depth = depth + 1};
    if (found->kind == cls_KIND_COLLECTION) {
        record.classId = found->classId;
        record.uid = cls_Uid();
        record.role = idb_RecordRoleEnm::Collection;
        record.type = found->collectionType;
        record.depth = depth;
    }
    return idb_NestRecord(Nested(), filter, registrar, record);
}

std::unique_ptr<cls_WriteVisitor> idb_MementoWrite::MakeWriteObj(
    const cls_FieldHandle& field, std::uint32_t nestedClassId, const cls_Uid& nestedUid,
    const cow_COW<int, cow_Direct<int>>* cow) {
    return MakeNested(field, nestedClassId, nestedUid, !cow || cow->HasValue());
}

std::unique_ptr<cls_WriteVisitor> idb_MementoWrite::MakeWriteObjWithPtr(
    const cls_FieldHandle& field, std::uint32_t nestedClassId, const cls_Uid& nestedUid,
    const void* object) {
    return MakeNested(field, nestedClassId, nestedUid, object != nullptr);
}

std::unique_ptr<cls_WriteVisitor> idb_MementoWrite::MakeBaseWriteObj(std::uint32_t baseClassId,
                                                                     const cls_Uid& baseUid) {
    if (!layout || isFlushed) return nullptr;
    return idb_NestRecord(
        Nested(), filter, registrar,
        {.classId = baseClassId, .uid = baseUid, .role = idb_RecordRoleEnm::Base, .depth = depth});
}

// Collections.

template <class Writer, class... Arguments>
std::unique_ptr<Writer> idb_MementoWrite::MakeWriter(const idb_CollectionKind& kind,
                                                     Arguments&&... arguments) {
    if (isFlushed || filter.Failed()) return nullptr;
    if (!idb_HasOwnBody(classId) && !kind.AcceptForWriting(collectionType)) return nullptr;
    return std::make_unique<idb_NestedWriter<Writer>>(Nested(),
                                                      std::forward<Arguments>(arguments)...);
}

std::unique_ptr<cls_WriteListPrim<bool>> idb_MementoWrite::MakeWriteListPrim(bool, int columns) {
    return MakeWriter<idb_WriteListPrim<bool>>(idb_ListOf<bool>, columns);
}
std::unique_ptr<cls_WriteListPrim<int>> idb_MementoWrite::MakeWriteListPrim(int, int columns) {
    return MakeWriter<idb_WriteListPrim<int>>(idb_ListOf<int>, columns);
}
std::unique_ptr<cls_WriteListPrim<unsigned>> idb_MementoWrite::MakeWriteListPrim(unsigned,
                                                                                 int columns) {
    return MakeWriter<idb_WriteListPrim<unsigned>>(idb_ListOf<unsigned>, columns);
}
std::unique_ptr<cls_WriteListPrim<float>> idb_MementoWrite::MakeWriteListPrim(float, int columns) {
    return MakeWriter<idb_WriteListPrim<float>>(idb_ListOf<float>, columns);
}
std::unique_ptr<cls_WriteListPrim<double>> idb_MementoWrite::MakeWriteListPrim(double,
                                                                               int columns) {
    return MakeWriter<idb_WriteListPrim<double>>(idb_ListOf<double>, columns);
}
std::unique_ptr<cls_WriteListPrim<cow_String>> idb_MementoWrite::MakeWriteListPrim(
    const cow_String&, int columns) {
    return MakeWriter<idb_WriteListPrim<cow_String>>(idb_ListOf<cow_String>, columns);
}

std::unique_ptr<cls_WriteMapPrim<cow_String, double>> idb_MementoWrite::MakeWriteMapString2Prim(
    double, int columns) {
    return MakeWriter<idb_WriteMapString2Prim<double>>(idb_MapOf<cow_String, double>, columns);
}
std::unique_ptr<cls_WriteMapPrim<cow_String, float>> idb_MementoWrite::MakeWriteMapString2Prim(
    float, int columns) {
    return MakeWriter<idb_WriteMapString2Prim<float>>(idb_MapOf<cow_String, float>, columns);
}
std::unique_ptr<cls_WriteMapPrim<cow_String, int>> idb_MementoWrite::MakeWriteMapString2Prim(
    int, int columns) {
    return MakeWriter<idb_WriteMapString2Prim<int>>(idb_MapOf<cow_String, int>, columns);
}
std::unique_ptr<cls_WriteMapPrim<cow_String, cow_String>> idb_MementoWrite::MakeWriteMapString2Prim(
    const cow_String&, int columns) {
    return MakeWriter<idb_WriteMapString2Prim<cow_String>>(idb_MapOf<cow_String, cow_String>,
                                                           columns);
}
std::unique_ptr<cls_WriteMapPrim<cow_String, unsigned>> idb_MementoWrite::MakeWriteMapString2Prim(
    unsigned, int columns) {
    return MakeWriter<idb_WriteMapString2Prim<unsigned>>(idb_MapOf<cow_String, unsigned>, columns);
}

std::unique_ptr<cls_WriteMapPrim<int, double>> idb_MementoWrite::MakeWriteMapInt2Prim(double,
                                                                                      int columns) {
    return MakeWriter<idb_WriteMapInt2Prim<double>>(idb_MapOf<int, double>, columns);
}
std::unique_ptr<cls_WriteMapPrim<int, float>> idb_MementoWrite::MakeWriteMapInt2Prim(float,
                                                                                     int columns) {
    return MakeWriter<idb_WriteMapInt2Prim<float>>(idb_MapOf<int, float>, columns);
}
std::unique_ptr<cls_WriteMapPrim<int, int>> idb_MementoWrite::MakeWriteMapInt2Prim(int,
                                                                                   int columns) {
    return MakeWriter<idb_WriteMapInt2Prim<int>>(idb_MapOf<int, int>, columns);
}
std::unique_ptr<cls_WriteMapPrim<int, cow_String>> idb_MementoWrite::MakeWriteMapInt2Prim(
    const cow_String&, int columns) {
    return MakeWriter<idb_WriteMapInt2Prim<cow_String>>(idb_MapOf<int, cow_String>, columns);
}
std::unique_ptr<cls_WriteMapPrim<int, unsigned>> idb_MementoWrite::MakeWriteMapInt2Prim(
    unsigned, int columns) {
    return MakeWriter<idb_WriteMapInt2Prim<unsigned>>(idb_MapOf<int, unsigned>, columns);
}
std::unique_ptr<cls_WriteMapPrim<int, int>> idb_MementoWrite::MakeWriteIntTableInt(int columns) {
    return MakeWriter<idb_WriteMapInt2Prim<int>>(idb_MapOf<int, int>, columns);
}

std::unique_ptr<cls_WriteListObj> idb_MementoWrite::MakeWriteListObj(int columns) {
    return MakeWriter<idb_WriteListObj>(idb_ListOf<idb_Objects>, filter, registrar, columns, depth,
                                        false);
}
std::unique_ptr<cls_WriteMapObj<cow_String>> idb_MementoWrite::MakeWriteMapString2Obj(int columns) {
    return MakeWriter<idb_WriteMapString2Obj>(idb_MapOf<cow_String, idb_Objects>, filter, registrar,
                                              columns, depth, false);
}
std::unique_ptr<cls_WriteMapObj<int>> idb_MementoWrite::MakeWriteMapInt2Obj(int columns) {
    return MakeWriter<idb_WriteMapInt2Obj>(idb_MapOf<int, idb_Objects>, filter, registrar, columns,
                                           depth, false);
}
std::unique_ptr<cls_WriteBlob> idb_MementoWrite::MakeAgentBlob() {
    return MakeWriter<idb_WriteBlob>(idb_Blob);
}

// The record.

bool idb_MementoWrite::EndsAtHead() const noexcept {
    if (!hasValue || classId == idb_NULL_CLASS) return true;
    return !layout && role != idb_RecordRoleEnm::Collection && classId != idb_JAGGED_ARRAY_CLASS;
}

std::size_t idb_MementoWrite::RecordSize() const noexcept {
    if (EndsAtHead()) return kHeadSize;
    std::size_t size = kHeadSize + sizeof(int) + fixedBlock.Size();
    for (const cow_String& text : strings) size += sizeof(int) + text.View().size();
    return size;
}

void idb_MementoWrite::PutRecord(bio_Buffer& out, int number) const {
    std::byte* place = out.Extend(RecordSize());
    bio_Buffer::Put(place, classId);
    place[sizeof classId] = std::byte{hasValue && classId != idb_NULL_CLASS};
    if (EndsAtHead()) return;
    bio_Buffer::Put(place + kHeadSize, static_cast<std::uint32_t>(number));
    place = std::copy(fixedBlock.begin(), fixedBlock.end(), place + kHeadSize + sizeof number);
    for (const cow_String& text : strings) {
        const auto characters = std::as_bytes(std::span(text.View()));
        bio_Buffer::Put(place, static_cast<std::uint32_t>(characters.size()));
        place = std::copy(characters.begin(), characters.end(), place + sizeof(std::uint32_t));
    }
}

void idb_MementoWrite::CompleteInto(idb_PendingBytes& out) {
    isFlushed = true;
    idb_PendingBytes* const records = nested ? &nested->Complete() : nullptr;
    bio_Buffer& tail = out.Tail(RecordSize());
    if (!EndsAtHead()) out.NoteNumber(tail.Size() + kHeadSize, uid);
    PutRecord(tail, 0);
    if (records && !EndsAtHead()) out.Append(std::move(*records));
}

void idb_MementoWrite::Flush() {
    if (isFlushed) return;
    isFlushed = true;
    const std::size_t start = filter.Size();
    try {
        filter.RethrowFailure();
        idb_PendingBytes* const records = nested ? &nested->Complete() : nullptr;
        filter.RethrowFailure();
        PutRecord(filter.Sink(), EndsAtHead() ? 0 : filter.ReferenceNumber(uid));
        if (records && !EndsAtHead()) records->EmitTo(filter);
    } catch (...) {
        filter.Sink().Truncate(start);
        filter.Fail(std::current_exception());
        throw;
    }
}
