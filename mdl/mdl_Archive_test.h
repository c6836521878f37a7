#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "foundation/shared/bio_Ofilter.h"
#include "idb/idb_Archive.h"
#include "mdl/KTSOvuMdl.h"
#include "omu/KTSOvuOmu.h"
#include "testing/test_Hex.h"

// The records of the module's classes as bytes.

using test_Stream = std::vector<std::byte>;

/// The module and what it stands on, brought up for one test.
class test_MdlModule {
  public:
    test_MdlModule() {
        KTSOvuOmu_initialize(count);
        KTSOvuMdl_initialize(count);
    }
    ~test_MdlModule() {
        KTSOvuMdl_finalize(count);
        KTSOvuOmu_finalize(count);
    }

  private:
    int count = 0;
};

template <class T>
test_Stream test_Save(const T& object, const cls_Uid& uid = cls_Uid()) {
    bio_Ofilter out;
    idb_SaveObject(out, object, uid);
    return test_Stream(out.Data(), out.Data() + out.Size());
}

/// The object that was read; null for a record that was refused.
template <class T>
std::unique_ptr<T> test_Load(const test_Stream& bytes) {
    idb_LoadFault fault;
    return idb_LoadObject<T>(bytes.data(), bytes.size(), T::TypeId(), fault);
}

/// As `test_Load` also for a record that was refused in the end: what the reading constructor made
/// of it, and the lines on standard error.
template <class T>
std::unique_ptr<T> test_LoadDamaged(const test_Stream& bytes, std::string& lines) {
    std::unique_ptr<T> object;
    idb_LoadFault fault;
    testing::internal::CaptureStderr();
    static_cast<void>(idb_LoadRecord(
        bytes.data(), bytes.size(), T::TypeId(),
        [&object](cls_ReadVisitor& visitor) { object = std::make_unique<T>(visitor); }, fault));
    lines = testing::internal::GetCapturedStderr();
    return object;
}
