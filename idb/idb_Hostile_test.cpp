#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "foundation/alloc/mem_Alloc.h"
#include "idb/idb_Archive.h"
#include "idb/idb_ListPrim.h"
#include "idb/idb_MapPrim.h"
#include "idb/idb_ReadObjCollections.h"
#include "testing/test_ArchiveClasses.h"
#include "testing/test_FailingAllocator.h"

// Streams that no writer wrote, and memory that runs out.

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;
using Stream = std::vector<std::byte>;

std::vector<Stream> SoundStreams(const test_Classes& classes) {
    std::vector<Stream> streams;
    const auto add = [&](const auto& object, const cls_Uid& uid) {
        bio_Ofilter out;
        idb_SaveObject(out, object, uid, classes);
        streams.emplace_back(out.Data(), out.Data() + out.Size());
    };
    test_Mixed mixed;
    mixed.text = "text";
    add(mixed, cls_Uid());
    test_Owner owner;
    owner.uid = cls_Uid::AllocateUid();
    test_Node node(1);
    node.uid = cls_Uid::AllocateUid();
    owner.seen = {&node, &node};
    owner.owned = std::make_unique<test_Node>(2);
    add(owner, owner.uid);
    add(test_FullBag(), cls_Uid());
    return streams;
}

idb_LoadStatusEnm Load(const Stream& stream, std::size_t size, const test_Classes& classes) {
    // Exactly as large as the stream, so that a sanitizer sees a read past the end.
    const std::vector<std::byte> bytes(stream.begin(),
                                       stream.begin() + static_cast<std::ptrdiff_t>(size));
    idb_LoadFault fault;
    const idb_ObjectPtr object = idb_LoadAnyObject(bytes.data(), size, 2, fault, classes);
    EXPECT_EQ(object != nullptr, fault.status == idb_LoadStatusEnm::Loaded);
    return fault.status;
}

TEST(idb_Hostile, RefusesEveryTruncation) {
    const test_Classes classes;
    CaptureStderr();
    for (const Stream& stream : SoundStreams(classes)) {
        EXPECT_EQ(Load(stream, stream.size(), classes), idb_LoadStatusEnm::Loaded);
        for (std::size_t size = 0; size < stream.size(); ++size) {
            EXPECT_NE(Load(stream, size, classes), idb_LoadStatusEnm::Loaded) << size;
        }
    }
    GetCapturedStderr();
    EXPECT_EQ(test_Node::living, 0);
}

TEST(idb_Hostile, SurvivesEveryChangedByte) {
    const test_Classes classes;
    CaptureStderr();
    for (const Stream& stream : SoundStreams(classes)) {
        for (std::size_t at = 0; at < stream.size(); ++at) {
            for (const unsigned mask : {0x01u, 0x02u, 0x80u, 0xFFu}) {
                Stream changed = stream;
                changed[at] ^= static_cast<std::byte>(mask);
                Load(changed, changed.size(), classes);
            }
            // A number or count of 2^31 - 1, and one of -1.
            for (const std::uint32_t word : {0x7FFFFFFFu, 0xFFFFFFFFu}) {
                Stream changed = stream;
                std::memcpy(changed.data() + at, &word,
                            std::min<std::size_t>(4, stream.size() - at));
                Load(changed, changed.size(), classes);
            }
        }
    }
    GetCapturedStderr();
    EXPECT_EQ(test_Node::living, 0);
}

std::size_t largestRequest;
bool NoteRequest(std::size_t bytes) {
    largestRequest = std::max(largestRequest, bytes);
    return false;
}

/// The size that a reader finds in `count`, columns and 64 zero bytes.
template <class Reader>
int SizeRead(int count) {
    static const test_Classes classes;
    bio_Ofilter out;
    out.Write(count);
    out.Write(1);
    for (int i = 0; i < 16; ++i) out.Write(0);
    bio_Ifilter in(out.Data(), out.Size());
    if constexpr (std::is_constructible_v<Reader, bio_Ifilter&>) {
        return Reader(in).Size();
    } else {
        return Reader(in, classes, 2).Size();
    }
}

TEST(idb_Hostile, RefusesCountsThatTheStreamCannotHold) {
    static_cast<void>(SizeRead<idb_ReadListObj>(0));  // makes the classes
    largestRequest = 0;
    const mem_FailureHook before = mem_SetFailureHook(&NoteRequest);
    for (const int count : {17, 0x7FFFFFFF}) {
        const std::string line = "Error reading stream: " + std::to_string(count) +
                                 " elements expected, 68 bytes left\n";
        for (const auto read :
             {&SizeRead<idb_ReadListPrim<int>>, &SizeRead<idb_ReadListPrim<cow_String>>,
              &SizeRead<idb_ReadMapInt2Prim<float>>, &SizeRead<idb_ReadMapString2Prim<double>>,
              &SizeRead<idb_ReadListObj>, &SizeRead<idb_ReadMapInt2Obj>,
              &SizeRead<idb_ReadMapString2Obj>}) {
            CaptureStderr();
            EXPECT_EQ(read(count), 0);
            EXPECT_EQ(GetCapturedStderr(), line);
        }
    }
    EXPECT_EQ(SizeRead<idb_ReadListPrim<double>>(-1), 0);
    EXPECT_EQ(SizeRead<idb_ReadBlob>(64), 64);
    EXPECT_EQ(SizeRead<idb_ReadListPrim<bool>>(64), 64);
    EXPECT_EQ(SizeRead<idb_ReadListPrim<double>>(8), 8);
    mem_SetFailureHook(before);
    EXPECT_LT(largestRequest, 4096u);
}

// Every request to the allocator fails once: nothing leaks, nothing half made comes out, and the
// stream is left as it was.
TEST(idb_Hostile, IsWholeOrNothingWhenMemoryRunsOut) {
    const test_Classes classes;
    const test_Bag bag = test_FullBag();
    bio_Ofilter whole;
    idb_SaveObject(whole, bag, cls_Uid(), classes);
    bool hasFailed = true;
    for (int n = 1; hasFailed; ++n) {
        bio_Ofilter out;
        out.Write(7);
        const test_FailingAllocator failing(n);
        try {
            idb_SaveObject(out, bag, cls_Uid(), classes);
            hasFailed = test_FailingAllocator::HasFailed();
            EXPECT_FALSE(hasFailed) << "a failure was lost, request " << n;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(out.Size(), sizeof(int));
        }
    }
    hasFailed = true;
    const int living = test_Node::living;
    for (int n = 1; hasFailed; ++n) {
        const std::size_t blocks = mem_LiveBlocks();
        const test_FailingAllocator failing(n);
        try {
            idb_LoadFault fault;
            const idb_ObjectPtr object =
                idb_LoadAnyObject(whole.Data(), whole.Size(), 2, fault, classes);
            hasFailed = test_FailingAllocator::HasFailed();
            EXPECT_TRUE(object) << "request " << n;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(mem_LiveBlocks(), blocks) << "request " << n;
            EXPECT_EQ(test_Node::living, living);
        }
    }
}

}  // namespace
