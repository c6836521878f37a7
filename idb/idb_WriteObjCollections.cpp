#include "idb/idb_WriteObjCollections.h"

#include <climits>
#include <exception>
#include <new>
#include <utility>

#include "idb/detail/idb_NestedWriter.h"
#include "idb/detail/idb_RecordLayout.h"
#include "idb/idb_ElementCodec.h"

template <class Interface>
struct idb_WriteObjects<Interface>::Elements {
    bio_Ofilter& filter;
    const cls_ClassRegistrar& registrar;
    int columns;
    int depth;
    bool writesItself;
    int count = 0;
    idb_Section section{filter};
};

template <class Interface>
idb_WriteObjects<Interface>::idb_WriteObjects(bio_Ofilter& filter,
                                              const cls_ClassRegistrar& registrar, int columns,
                                              int depth, bool writesItself)
    : elements(new Elements{filter, registrar, columns, depth, writesItself}) {
    if (writesItself) idb_StreamLayouts::BeginRecords(filter.State());
}

template <class Interface>
idb_WriteObjects<Interface>::~idb_WriteObjects() {
    if (!elements->writesItself || elements->filter.Failed()) return;
    const std::size_t start = elements->filter.Size();
    try {
        idb_PendingBytes bytes;
        CompleteInto(bytes);
        bytes.EmitTo(elements->filter);
    } catch (...) {
        elements->filter.Sink().Truncate(start);
        elements->filter.Fail(std::current_exception());
    }
}

template <class Interface>
std::unique_ptr<cls_WriteVisitor> idb_WriteObjects<Interface>::MakeElement(std::uint32_t classId,
                                                                           const cls_Uid& uid,
                                                                           const void* object) {
    auto writer = idb_NestRecord(elements->section, elements->filter, elements->registrar,
                                 {.classId = classId,
                                  .hasValue = object != nullptr,
                                  .uid = uid,
                                  .depth = elements->depth + 1});
    if (writer) ++elements->count;
    return writer;
}

template <class Interface>
void idb_WriteObjects<Interface>::AddNull() {
    idb_NestNull(elements->section);
    ++elements->count;
}

template <class Interface>
bio_Buffer& idb_WriteObjects<Interface>::KeyPlace(std::size_t size) {
    return elements->section.Next().Tail(size);
}

template <class Interface>
void idb_WriteObjects<Interface>::CompleteInto(idb_PendingBytes& out) {
    idb_PendingBytes& records = elements->section.Complete();
    bio_Buffer& head = out.Tail(2 * sizeof(int));
    head.Write(elements->count);
    head.Write(elements->columns);
    out.Append(std::move(records));
}

std::unique_ptr<cls_WriteVisitor> idb_WriteListObj::MakeWriteObj(std::uint32_t classId,
                                                                 const cls_Uid& uid,
                                                                 const void* object) {
    return MakeElement(classId, uid, object);
}

void idb_WriteListObj::WriteNullObj() { AddNull(); }

template <class K>
void idb_WriteMapObj<K>::WriteKey(const K& key) {
    idb_ElementCodec<K>::Write(this->KeyPlace(idb_ElementCodec<K>::SizeOf(key)), key);
}

template <class K>
std::unique_ptr<cls_WriteVisitor> idb_WriteMapObj<K>::MakeWriteObj(const K& key,
                                                                   std::uint32_t classId,
                                                                   const cls_Uid& uid,
                                                                   const void* object) {
    WriteKey(key);
    return this->MakeElement(classId, uid, object);
}

template <class K>
void idb_WriteMapObj<K>::WriteNullObj(const K& key) {
    WriteKey(key);
    this->AddNull();
}

idb_WriteBlob::~idb_WriteBlob() {
    if (!target || target->Failed()) return;
    try {
        target->Sink().Reserve(ByteSize());
        Put(target->Sink());
    } catch (...) {
        target->Fail(std::current_exception());
    }
}

void idb_WriteBlob::Write(const void* added, int n) {
    if (n > INT_MAX - static_cast<int>(bytes.Size())) throw std::bad_alloc();
    if (n > 0) bytes.WriteBytes(added, static_cast<std::size_t>(n));
}

void idb_WriteBlob::Put(bio_Buffer& out) const {
    out.Write(static_cast<int>(bytes.Size()));
    out.Write(1);
    out.WriteBytes(bytes.Data(), bytes.Size());
}

template class idb_WriteObjects<cls_WriteListObj>;
template class idb_WriteObjects<cls_WriteMapObj<int>>;
template class idb_WriteObjects<cls_WriteMapObj<cow_String>>;
template class idb_WriteMapObj<int>;
template class idb_WriteMapObj<cow_String>;
