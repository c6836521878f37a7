#include "idb/idb_Archive.h"

#include <exception>
#include <new>

#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/bio_Ifilter.h"
#include "idb/detail/idb_RecordLayout.h"
#include "idb/idb_MementoRead.h"
#include "idb/idb_MementoWrite.h"

namespace {

cow_String ClassText(std::uint32_t classId, const cls_ClassRegistrar& registrar) {
    const cls_ClassMetadata* const metadata = registrar.Find(classId);
    const cow_String name =
        metadata ? cow_String(metadata->Name().View()) : typ_ArchCompTable::Name(classId);
    return name.IsEmpty() ? atr("class %x", static_cast<unsigned>(classId)) : name;
}

/// What the record says of itself before its object is built.
idb_LoadFault FaultOfHead(const bio_Ifilter& filter, const idb_MementoRead& record,
                          std::uint32_t storedId, std::uint32_t expectedId,
                          const cls_ClassRegistrar& registrar) {
    if (filter.Failed()) return {idb_LoadStatusEnm::Truncated, "the record is truncated"};
    if (filter.Faulty()) {
        return {idb_LoadStatusEnm::WrongClass,
                atr("the record is of %s, not of %s", ClassText(storedId, registrar),
                    ClassText(expectedId, registrar))};
    }
    if (!record.HasValue() || storedId == idb_NULL_CLASS) {
        return {idb_LoadStatusEnm::NullObject, "the record holds no object"};
    }
    if (!registrar.Find(record.ClassId())) {
        return {idb_LoadStatusEnm::UnknownClass,
                atr("the record is of an unknown %s", ClassText(storedId, registrar))};
    }
    return {};
}

/// What shows once the object was built.
idb_LoadFault FaultOfBody(const bio_Ifilter& filter) {
    if (filter.Failed()) {
        return {idb_LoadStatusEnm::Truncated, "the record is truncated or counts wrongly"};
    }
    if (filter.Faulty()) return {idb_LoadStatusEnm::Damaged, "the record is damaged"};
    if (filter.Remaining() > 0) {
        return {idb_LoadStatusEnm::TrailingBytes, "bytes follow the record"};
    }
    return {};
}

}  // namespace

const cls_ClassRegistrar& idb_RegisteredClasses() {
    return omi_Singleton<cls_MetadataRegistrar>::Instance().ClassRegistrar();
}

void idb_SaveRecord(bio_Ofilter& out, std::uint32_t classId, const void* object, const cls_Uid& uid,
                    const std::function<void(cls_WriteVisitor&)>& write,
                    const cls_ClassRegistrar& registrar) {
    idb_MementoWrite memento(out, registrar, classId, object, true, uid);
    write(memento);
    memento.Flush();
}

std::uint32_t idb_ClassOfRecord(const void* bytes, std::size_t size) {
    return bio_Ifilter(bytes, size).PeekUnsigned(0);
}

bool idb_LoadRecord(const void* bytes, std::size_t size, std::uint32_t classId,
                    const std::function<void(cls_ReadVisitor&)>& read, idb_LoadFault& fault,
                    const cls_ClassRegistrar& registrar) {
    bio_Ifilter filter(bytes, size);
    const std::uint32_t storedId = filter.PeekUnsigned(0);
    idb_MementoRead record(filter, registrar, classId);
    fault = FaultOfHead(filter, record, storedId, classId, registrar);
    if (fault.status != idb_LoadStatusEnm::Loaded) return false;
    try {
        read(record);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& refusal) {
        fault = {idb_LoadStatusEnm::Damaged, refusal.what()};
        return false;
    }
    fault = FaultOfBody(filter);
    return fault.status == idb_LoadStatusEnm::Loaded;
}

idb_ObjectPtr idb_LoadAnyObject(const void* bytes, std::size_t size, std::uint32_t classId,
                                idb_LoadFault& fault, const cls_ClassRegistrar& registrar) {
    idb_ObjectPtr object;
    bool isBuildable = true;
    const auto read = [&](cls_ReadVisitor& visitor) {
        const cls_CtorFunction build = registrar.Find(visitor.ClassId())->Ctor();
        isBuildable = build != nullptr;
        if (!isBuildable) return;
        object = idb_ObjectPtr(build(visitor), {&registrar, visitor.ClassId()});
    };
    const bool isLoaded = idb_LoadRecord(bytes, size, classId, read, fault, registrar);
    if (!isBuildable) {
        fault = {idb_LoadStatusEnm::UnknownClass,
                 atr("objects of %s cannot be built",
                     ClassText(idb_ClassOfRecord(bytes, size), registrar))};
    }
    return isLoaded && isBuildable ? std::move(object) : idb_ObjectPtr();
}
