#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "foundation/coreutils/omi_Allocator.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_CowHolder.h"

/// How far the object behind a reference number has come.
enum class bio_ReadStateEnm : std::uint8_t {
    Unknown,  ///< no object of this number was read, or it was forgotten
    Reading,  ///< its record is being read
    Pointer,  ///< read, and handed out by pointer
    Shared,   ///< read, and held by a handle of this table
};

/// An object read from a stream.
struct bio_ReadObject {
    void* object = nullptr;
    std::uint32_t classId = 0;
    int number = 0;
    bio_ReadStateEnm state = bio_ReadStateEnm::Unknown;
};

/// The objects read from one stream by their reference numbers. The class is kept with the object,
/// so that a number which names an object of another class is found out. Numbers are arbitrary (a
/// hash table), and 0 stands for no object.
class KTSBASSHARED_API bio_ReadObjectTable {
  public:
    /// The object of `number`; null when it is unknown.
    [[nodiscard]] const bio_ReadObject* Find(int number) const noexcept;
    /// Enters `number`, which is unknown, as being read.
    void BeginObject(int number, std::uint32_t classId);
    /// The record of `number` was read and became no object of its own: forgets it if it is still
    /// being read.
    void EndObject(int number) noexcept;
    /// The record of `number` became `object`, which is handed out. REQUIRES: `number` was begun.
    void SetObject(int number, std::uint32_t classId, void* object);
    /// `SetObject` for an object in a handle, which this table keeps.
    void SetShared(int number, std::uint32_t classId, void* object,
                   std::shared_ptr<cls_CowHolder> holder);
    /// The handle of `number`; null when it has none.
    [[nodiscard]] std::shared_ptr<cls_CowHolder> Holder(int number) const;

    /// The place in the order of handing out by pointer.
    [[nodiscard]] std::size_t Mark() const noexcept { return handedOut.size(); }
    /// Forgets the objects that were handed out by pointer from `begin` up to `end`: they live no
    /// longer than what they were handed to.
    void ForgetPointers(std::size_t begin, std::size_t end) noexcept;

  private:
    [[nodiscard]] std::size_t SlotOf(int number) const noexcept;
    void GrowTable();
    void Forget(int number) noexcept;

    std::vector<bio_ReadObject, omi_Allocator<bio_ReadObject>> slots;
    std::size_t used = 0;
    std::uint64_t seed = 0;
    std::vector<int, omi_Allocator<int>> handedOut;
    std::map<int, std::shared_ptr<cls_CowHolder>> holders;
};
