#include <cstdint>
#include <cstring>

#include "fuzz/fuzz_Check.h"
#include "idb/idb_Archive.h"
#include "testing/test_ArchiveClasses.h"

// Any bytes as the record of any class: nothing crashes, hangs, leaks or takes too much memory, and
// what loads saves to a stream that loads and saves the same again.

namespace {

void Write(std::uint32_t classId, const void* object, cls_WriteVisitor& visitor) {
    if (classId == test_Mixed::TypeId()) static_cast<const test_Mixed*>(object)->DBWrite(visitor);
    if (classId == test_Node::TypeId()) static_cast<const test_Node*>(object)->DBWrite(visitor);
    if (classId == test_Bag::TypeId()) static_cast<const test_Bag*>(object)->DBWrite(visitor);
    if (classId == test_Owner::TypeId()) static_cast<const test_Owner*>(object)->DBWrite(visitor);
}

bio_Ofilter Save(const idb_ObjectPtr& object, const cls_ClassRegistrar& classes) {
    bio_Ofilter out;
    const std::uint32_t classId = object.get_deleter().classId;
    idb_SaveRecord(
        out, classId, object.get(), cls_Uid(),
        [&](cls_WriteVisitor& visitor) { Write(classId, object.get(), visitor); }, classes);
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test_Classes classes;
    idb_LoadFault fault;
    idb_ObjectPtr object;
    {
        const fuzz_MemoryBound bound(size);
        object = idb_LoadAnyObject(data, size, 2, fault, classes);
    }
    if (object) {
        const bio_Ofilter first = Save(object, classes);
        const idb_ObjectPtr again =
            idb_LoadAnyObject(first.Data(), first.Size(), 2, fault, classes);
        fuzz_Check(again != nullptr, "what was saved loads");
        const bio_Ofilter second = Save(again, classes);
        fuzz_Check(first.Size() == second.Size() &&
                       std::memcmp(first.Data(), second.Data(), first.Size()) == 0,
                   "a loaded object saves as it was saved");
    }
    object.reset();
    fuzz_Check(test_Node::living == 0, "every object was destroyed");
    return 0;
}
