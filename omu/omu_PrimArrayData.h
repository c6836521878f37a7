#pragma once

#include "cow/KTSOvuGeomExport.h"

/// The block of memory that holds the elements of one or more arrays. Every block has a serial
/// number, counted from 1 over the process (any thread may make blocks); with `ZRX_DBG_PRIMARRAY`
/// set, its life is traced on standard error.
class KTSOVUGEOM_API omu_PrimArrayData {
  public:
    /// A block of `sizeBytes` undefined bytes; none for 0. Exhausted memory throws
    /// `std::bad_alloc`.
    explicit omu_PrimArrayData(int sizeBytes);
    /// Adopts `block`, which `mem_Malloc` made for `sizeBytes` bytes, or null.
    omu_PrimArrayData(char* block, int sizeBytes) noexcept;
    omu_PrimArrayData(const omu_PrimArrayData&) = delete;
    omu_PrimArrayData& operator=(const omu_PrimArrayData&) = delete;
    ~omu_PrimArrayData();

    /// The bytes, aligned for any element; null when there are none.
    [[nodiscard]] const char* ConstGet() const noexcept { return bytes; }
    [[nodiscard]] char* Get() noexcept { return bytes; }
    [[nodiscard]] int Size() const noexcept { return size; }
    [[nodiscard]] int SerialNumber() const noexcept { return serialNumber; }

  private:
    char* bytes;
    int size;
    int serialNumber;
};
