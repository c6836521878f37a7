#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "foundation/coreutils/omi_Allocator.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_CowHolder.h"

/// How far the object behind a reference number has come.
enum class bio_ReadStateEnm : std::uint8_t {
    Reading,  ///< its record is being read
    Pointer,  ///< read, and handed out by pointer
    Shared,   ///< read, and held by a handle of this table
};

/// An object read from a stream.
struct bio_ReadObject {
    void* object = nullptr;
    std::uint32_t classId = 0;
    bio_ReadStateEnm state = bio_ReadStateEnm::Reading;
    std::shared_ptr<cls_CowHolder> holder;  ///< null for an object that was handed out by pointer
};

/// The objects read from one stream by their reference numbers. The class is kept with the object,
/// so that a number which names an object of another class is found out. Numbers are arbitrary, and
/// 0 stands for no object. A tree: whatever numbers a stream chooses, it takes the same time and
/// memory for each; those in ascending order, as a writer gives them, are found at its end.
class KTSBASSHARED_API bio_ReadObjectTable {
  public:
    /// The object of `number`; null when it is unknown.
    [[nodiscard]] const bio_ReadObject* Find(int number) const noexcept;
    /// Enters `number`, which is unknown, as being read.
    void BeginObject(int number, std::uint32_t classId);
    /// The record of `number` was read and became no object of its own: forgets it if it is still
    /// being read.
    void EndObject(int number) noexcept;
    /// The record of `number` became `object`, which is handed out by pointer.
    void SetObject(int number, std::uint32_t classId, void* object);
    /// The record of `number` became `object`, which `holder` holds.
    void SetShared(int number, std::uint32_t classId, void* object,
                   std::shared_ptr<cls_CowHolder> holder);

    /// The place in the order of handing out by pointer.
    [[nodiscard]] std::size_t Mark() const noexcept { return handedOut.size(); }
    /// Forgets the objects that were handed out by pointer from `begin` up to `end`: they live no
    /// longer than what they were handed to.
    void ForgetPointers(std::size_t begin, std::size_t end) noexcept;

  private:
    using Entry = std::pair<const int, bio_ReadObject>;

    void Set(int number, bio_ReadObject object);

    std::map<int, bio_ReadObject, std::less<>, omi_Allocator<Entry>> objects;
    std::vector<int, omi_Allocator<int>> handedOut;
};
