#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/bio_Buffer.h"
#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Collections.h"

class idb_PendingBytes;

/// Gathers the records of a collection of objects, and its destructor writes the collection (its
/// form is told at `idb_ReadObjects`). The destructor never throws: what fails there is kept in the
/// filter. Writers of elements that are still open then write nothing afterwards.
template <class Interface>
class idb_WriteObjects : public Interface {
  public:
    ~idb_WriteObjects() override;
    idb_WriteObjects(const idb_WriteObjects&) = delete;
    idb_WriteObjects& operator=(const idb_WriteObjects&) = delete;

    [[nodiscard]] bool NeedsDeletion() const override { return true; }

  protected:
    /// Writes to `filter` itself, or where `CompleteInto` is told to; the elements have `depth`
    /// object records above them. Filter and registrar outlive the writer.
    idb_WriteObjects(bio_Ofilter& filter, const cls_ClassRegistrar& registrar, int columns,
                     int depth, bool writesItself);

    std::unique_ptr<cls_WriteVisitor> MakeElement(std::uint32_t classId, const cls_Uid& uid,
                                                  const void* object);
    void AddNull();
    /// Memory for the key of the next element.
    [[nodiscard]] bio_Buffer& KeyPlace(std::size_t size);
    /// Appends the collection to `out`.
    void CompleteInto(idb_PendingBytes& out);

  private:
    struct Elements;

    std::unique_ptr<Elements> elements;
};

extern template class KTSOVUGEOM_API idb_WriteObjects<cls_WriteListObj>;
extern template class KTSOVUGEOM_API idb_WriteObjects<cls_WriteMapObj<int>>;
extern template class KTSOVUGEOM_API idb_WriteObjects<cls_WriteMapObj<cow_String>>;

/// Writes a list of objects.
class KTSOVUGEOM_API idb_WriteListObj : public idb_WriteObjects<cls_WriteListObj> {
  public:
    idb_WriteListObj(bio_Ofilter& filter, const cls_ClassRegistrar& registrar, int columns)
        : idb_WriteListObj(filter, registrar, columns, 0, true) {}

    std::unique_ptr<cls_WriteVisitor> MakeWriteObj(std::uint32_t classId, const cls_Uid& uid,
                                                   const void* object) override;
    void WriteNullObj() override;

  protected:
    using idb_WriteObjects::idb_WriteObjects;
};

/// Writes a map from `K` (int or `cow_String`) to objects.
template <class K>
class idb_WriteMapObj : public idb_WriteObjects<cls_WriteMapObj<K>> {
  public:
    idb_WriteMapObj(bio_Ofilter& filter, const cls_ClassRegistrar& registrar, int columns)
        : idb_WriteMapObj(filter, registrar, columns, 0, true) {}

    std::unique_ptr<cls_WriteVisitor> MakeWriteObj(const K& key, std::uint32_t classId,
                                                   const cls_Uid& uid, const void* object) override;
    void WriteNullObj(const K& key) override;

  protected:
    using idb_WriteObjects<cls_WriteMapObj<K>>::idb_WriteObjects;

  private:
    void WriteKey(const K& key);
};
using idb_WriteMapInt2Obj = idb_WriteMapObj<int>;
using idb_WriteMapString2Obj = idb_WriteMapObj<cow_String>;

/// Writes a run of raw bytes, 2 GiB at most (`std::bad_alloc` beyond); its destructor writes the
/// collection and never throws.
class KTSOVUGEOM_API idb_WriteBlob : public cls_WriteBlob {
  public:
    explicit idb_WriteBlob(bio_Ofilter& filter) : target(&filter) {}
    ~idb_WriteBlob() override;
    idb_WriteBlob(const idb_WriteBlob&) = delete;
    idb_WriteBlob& operator=(const idb_WriteBlob&) = delete;

    void Write(const void* added, int n) override;
    [[nodiscard]] bool NeedsDeletion() const override { return true; }

  protected:
    idb_WriteBlob() = default;
    [[nodiscard]] std::size_t ByteSize() const noexcept { return 2 * sizeof(int) + bytes.Size(); }
    void Put(bio_Buffer& out) const;

  private:
    bio_Buffer bytes;
    bio_Ofilter* target = nullptr;
};

extern template class KTSOVUGEOM_API idb_WriteMapObj<int>;
extern template class KTSOVUGEOM_API idb_WriteMapObj<cow_String>;
