#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Collections.h"

struct idb_BuiltObject;

/// The objects of a collection, each built by the constructor that its class registered and held
/// until it is taken. What is left at the end is destroyed by the function that its class
/// registered; a class without one leaves the object and a translated warning.
///
/// In the stream a collection of objects is the count, the columns and the objects' records, in a
/// map each after its key.
template <class Interface>
class idb_ReadObjects : public Interface {
  public:
    ~idb_ReadObjects() override;
    idb_ReadObjects(const idb_ReadObjects&) = delete;
    idb_ReadObjects& operator=(const idb_ReadObjects&) = delete;

    [[nodiscard]] int Size() const override;
    [[nodiscard]] int Columns() const override { return columns; }
    bool Next() override;
    [[nodiscard]] std::uint32_t ClassId() const override;
    [[nodiscard]] const void* ConstGet(std::uint32_t classId) const override;
    [[nodiscard]] void* ReadObjPtr(std::uint32_t classId, bool& isFirst) override;
    [[nodiscard]] void* ReadObjValue(std::uint32_t classId) override;
    [[nodiscard]] std::shared_ptr<cls_CowHolder> ReadObjCow(std::uint32_t classId,
                                                            cls_CowAdopt adopt) override;

  protected:
    idb_ReadObjects(bio_Ifilter& stream, const cls_ClassRegistrar& classes);
    /// Reads the count, for elements of `smallestElement` bytes or more, and the columns.
    [[nodiscard]] int ReadHead(bio_Ifilter& stream, std::size_t smallestElement);
    void ReadElement(std::uint32_t expectedClassId);
    void Swap(int a, int b) noexcept;
    /// Destroys the elements from `newSize` on.
    void Shrink(int newSize) noexcept;
    [[nodiscard]] int Position() const noexcept { return position; }
    void MoveTo(int newPosition) noexcept { position = newPosition; }

  private:
    struct Objects;

    [[nodiscard]] idb_BuiltObject* Current() const;

    std::unique_ptr<Objects> objects;
    int columns = 1;
    int position = -1;
};

extern template class KTSOVUGEOM_API idb_ReadObjects<cls_ReadObjCollection>;
extern template class KTSOVUGEOM_API idb_ReadObjects<cls_ReadListObj>;
extern template class KTSOVUGEOM_API idb_ReadObjects<cls_ReadMapObj<int>>;
extern template class KTSOVUGEOM_API idb_ReadObjects<cls_ReadMapObj<cow_String>>;

/// Reads a list of objects.
class KTSOVUGEOM_API idb_ReadListObj : public idb_ReadObjects<cls_ReadListObj> {
  public:
    /// Reads the collection, of objects that are expected to be of `expectedClassId` (2: any).
    idb_ReadListObj(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                    std::uint32_t expectedClassId);
};

/// Reads a map from `K` (int or `cow_String`) to objects and walks it in the order of the stream. A
/// repeated key keeps its first place and its last object.
template <class K>
class idb_ReadMapObj : public idb_ReadObjects<cls_ReadMapObj<K>> {
  public:
    /// Reads the collection, of objects that are expected to be of `expectedClassId` (2: any).
    idb_ReadMapObj(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                   std::uint32_t expectedClassId);
    /// The key at the position; a default key where there is none.
    [[nodiscard]] K Key() const override;

  private:
    void UniteRepeated();

    cow_List<K> keys;
};
using idb_ReadMapInt2Obj = idb_ReadMapObj<int>;
using idb_ReadMapString2Obj = idb_ReadMapObj<cow_String>;

/// Reads one object's record and stands at it.
class KTSOVUGEOM_API idb_ReadProxy : public idb_ReadObjects<cls_ReadObjCollection> {
  public:
    idb_ReadProxy(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                  std::uint32_t expectedClassId);
};

/// Reads a run of raw bytes: the count, the columns and the bytes.
class KTSOVUGEOM_API idb_ReadBlob : public cls_ReadBlob {
  public:
    explicit idb_ReadBlob(bio_Ifilter& stream);
    [[nodiscard]] int Size() const override { return size; }
    [[nodiscard]] const std::byte* Data() const override { return data; }

  private:
    int size;
    const std::byte* data = nullptr;
};

extern template class KTSOVUGEOM_API idb_ReadMapObj<int>;
extern template class KTSOVUGEOM_API idb_ReadMapObj<cow_String>;
