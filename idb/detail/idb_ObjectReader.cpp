#include "idb/detail/idb_ObjectReader.h"

#include <cstdio>
#include <exception>
#include <utility>

#include "foundation/coreutils/atr_String.h"
#include "idb/detail/idb_RecordLayout.h"
#include "idb/idb_MementoRead.h"

namespace {

template <class Number>
void ReportNumber(bio_Ifilter& filter, const char* format, Number number) {
    std::fputs(atr(format, number).Characters(), stderr);
    filter.MarkFaulty();
}

}  // namespace

void idb_ReportNotInherited(bio_Ifilter& filter, std::uint32_t classId, std::uint32_t requested) {
    // Without a line end: readers of the log rely on the text as it always was.
    std::fputs(atr("Error reading object ptr for %x does not inherit from %x", classId, requested)
                   .Characters(),
               stderr);
    filter.MarkFaulty();
}

idb_BuiltObject idb_ObjectReader::Build(std::uint32_t expectedClassId) const {
    idb_BuiltObject built;
    built.partsBegin = static_cast<std::uint32_t>(filter->Objects().Mark());
    try {
        idb_MementoRead record(*filter, *registrar, expectedClassId);
        if (!record.HasValue()) return built;
        built.classId = record.ClassId();
        built.number = record.DbId();
        const idb_RecordLayout* const layout =
            idb_StreamLayouts::Find(filter->State(), *registrar, built.classId);
        if (!layout || !layout->Ctor()) {
            ReportNumber(*filter, "Error reading object: class %x has no constructor\n",
                         built.classId);
            if (layout || built.classId == idb_JAGGED_ARRAY_CLASS) filter->Fail();
            return built;
        }
        built.object = layout->Ctor()(record);
    } catch (...) {
        filter->Objects().ForgetPointers(built.partsBegin, filter->Objects().Mark());
        throw;
    }
    built.partsEnd = static_cast<std::uint32_t>(filter->Objects().Mark());
    return built;
}

// The parts that the object was handed by pointer die with it, or at a time that only its owner
// knows, so the stream must not hand them out again.
void idb_ObjectReader::ForgetParts(const idb_BuiltObject& built) const noexcept {
    filter->Objects().ForgetPointers(built.partsBegin, built.partsEnd);
}

void idb_ObjectReader::Destroy(idb_BuiltObject& built) const noexcept {
    if (!built.object) return;
    ForgetParts(built);
    try {
        registrar->DeleteCow(built.classId, std::exchange(built.object, nullptr));
    } catch (const std::exception&) {
        // Only the warning of a class without destructor function can fail, for want of memory.
        filter->MarkFaulty();
    }
}

bool idb_ObjectReader::IsA(const idb_BuiltObject& built, std::uint32_t requested) const {
    if (!built.object) return false;
    if (requested == idb_ANY_CLASS || registrar->IsObjectOf(built.classId, requested)) return true;
    if (registrar->IsKindOf(built.classId, requested)) {
        ReportNumber(*filter, "Error reading object: class %x has its parent in records only\n",
                     built.classId);
    } else {
        idb_ReportNotInherited(*filter, built.classId, requested);
    }
    return false;
}

const bio_ReadObject* idb_ObjectReader::Known(const idb_BuiltObject& built, bool& isFit) const {
    isFit = true;
    const bio_ReadObject* const known = filter->Objects().Find(built.number);
    if (!known) return nullptr;
    if (known->state == bio_ReadStateEnm::Reading) {
        ReportNumber(*filter, "Error reading object: number %d refers to an unfinished object\n",
                     built.number);
        isFit = false;
    } else if (known->classId != built.classId) {
        idb_ReportNotInherited(*filter, known->classId, built.classId);
        isFit = false;
    }
    return known;
}

void* idb_ObjectReader::TakePointer(idb_BuiltObject& built, std::uint32_t requested,
                                    bool& isFirst) const {
    isFirst = false;
    if (!IsA(built, requested)) return nullptr;
    bool isFit = true;
    if (const bio_ReadObject* const known = Known(built, isFit)) {
        void* const first = isFit ? known->object : nullptr;
        Destroy(built);
        return first;
    }
    if (built.number != 0) {
        filter->Objects().SetObject(built.number, built.classId, built.object);
    }
    isFirst = true;
    return std::exchange(built.object, nullptr);
}

void* idb_ObjectReader::TakeValue(idb_BuiltObject& built, std::uint32_t requested) const {
    if (!IsA(built, requested)) return nullptr;
    ForgetParts(built);
    return std::exchange(built.object, nullptr);
}

std::shared_ptr<cls_CowHolder> idb_ObjectReader::TakeCow(idb_BuiltObject& built,
                                                         std::uint32_t requested,
                                                         cls_CowAdopt adopt) const {
    if (!IsA(built, requested)) return nullptr;
    bool isFit = true;
    if (const bio_ReadObject* const known = Known(built, isFit)) {
        auto holder = isFit ? known->holder : nullptr;
        if (isFit && !holder) {
            ReportNumber(*filter,
                         "Error reading object: number %d was handed out by pointer before\n",
                         built.number);
        }
        Destroy(built);
        return holder;
    }
    auto holder = adopt(built.object);
    void* const adopted = std::exchange(built.object, nullptr);
    if (built.number != 0) {
        filter->Objects().SetShared(built.number, built.classId, adopted, holder);
    } else {
        ForgetParts(built);
    }
    return holder;
}
