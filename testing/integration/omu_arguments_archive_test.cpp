// Calls of scripting commands through the records of the archive, with the library as it is loaded.

#include <gtest/gtest.h>

#include <memory>

#include "foundation/shared/bio_Ofilter.h"
#include "idb/idb_Archive.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_TypeErrorException.h"

namespace {

/// What any reader of primitives gets for `call`.
std::unique_ptr<omu_Arguments> SavedAndLoaded(const omu_Arguments& call) {
    bio_Ofilter out;
    idb_SaveObject(out, call);
    idb_LoadFault fault;
    idb_ObjectPtr object = idb_LoadAnyObject(out.Data(), out.Size(), omu_Primitive::kTypeId, fault);
    EXPECT_EQ(fault.status, idb_LoadStatusEnm::Loaded) << fault.text.View();
    auto* const loaded =
        dynamic_cast<omu_Arguments*>(static_cast<omu_Primitive*>(object.release()));
    EXPECT_NE(loaded, nullptr);
    return std::unique_ptr<omu_Arguments>(loaded);
}

TEST(omu_ArgumentsArchive, CallsComeBackReadyForReading) {
    omu_Arguments call;
    call.Put(7);
    call.Put("name");
    call.Put(0.5, "size");
    call.Put(true, "visible");
    double wrong = 0;
    call.Get(wrong, "count");
    call.Get(wrong, "label");

    const auto loaded = SavedAndLoaded(call);
    EXPECT_TRUE(*loaded == call);
    EXPECT_TRUE(loaded->ConstGetKeywords() == call.ConstGetKeywords());
    int count = 0;
    cow_String label;
    double size = 0;
    bool visible = false;
    loaded->Get(count, "count");
    loaded->Get(label, "label");
    loaded->Get(size, "size");
    loaded->Get(visible, "visible");
    EXPECT_NO_THROW(loaded->End());
    EXPECT_EQ(count, 7);
    EXPECT_EQ(label, "name");
    EXPECT_EQ(size, 0.5);
    EXPECT_TRUE(visible);
}

TEST(omu_ArgumentsArchive, WhateverCanBePutComesBack) {
    omu_Arguments deepest;
    int calls = 1;
    const auto nested = [&deepest](bool byKeyword) {
        omu_Arguments outer;
        if (byKeyword) {
            outer.Put(deepest, "inner");
        } else {
            outer.Put(deepest);
        }
        return outer;
    };
    while (deepest.Nesting().depth + 2 <= omu_PrimNesting::kMaxDepth) {
        deepest = nested(++calls % 2 == 0);
    }
    EXPECT_GT(calls, 150);
    EXPECT_THROW(nested(true), omu_ValueErrorException);
    EXPECT_TRUE(*SavedAndLoaded(deepest) == deepest);
}

}  // namespace
