#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "foundation/coreutils/cow_Forward.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_CowHolder.h"
#include "foundation/shared/cls_Uid.h"

class cls_WriteVisitor;

/// The reader of a collection: it holds the whole collection and walks it.
class KTSBASSHARED_API cls_ReadCollectionBase {
  public:
    virtual ~cls_ReadCollectionBase();
    /// Number of elements or entries.
    [[nodiscard]] virtual int Size() const = 0;
    /// Number of columns that the writer gave (1 for a plain list).
    [[nodiscard]] virtual int Columns() const = 0;
    /// Advances the position (-1 at first) by one and tells whether it is still below `Size()`.
    virtual bool Next() = 0;
};

/// The writer of a collection: it gathers, and its destruction completes the record.
class KTSBASSHARED_API cls_WriteCollectionBase {
  public:
    virtual ~cls_WriteCollectionBase();
    /// Tells whether the owner of the writer must delete it.
    [[nodiscard]] virtual bool NeedsDeletion() const = 0;
};

/// The reader of a list of primitive values.
template <class T>
class cls_ReadListPrim : public cls_ReadCollectionBase {
  public:
    /// The element at the position. Before the first `Next()` this ends the process.
    virtual T Read() = 0;
    /// Copies `n` elements from the position on into `out` and advances the position by n.
    ///
    /// Kept: the bound is strict. When position + n >= `Size()` nothing is read and the answer is 0
    /// (else 1), so a block never takes the last element: after a block, call `Read()` directly for
    /// the element at the new position. Readers of stored files rely on the arithmetic.
    virtual int Read(T* out, int n) = 0;
    /// The whole list; a copy shares its blocks.
    [[nodiscard]] virtual const cow_List<T>& ConstGetList() const = 0;
};

/// The writer of a list of primitive values.
template <class T>
class cls_WriteListPrim : public cls_WriteCollectionBase {
  public:
    /// Appends one element.
    virtual void Write(const T& value) = 0;
    /// Appends the `n` elements of `values`.
    virtual void Write(const T* values, int n) = 0;
    /// Appends the elements of `values`; a writer that holds none yet shares the blocks.
    virtual void Write(const cow_List<T>& values) = 0;
};

/// The reader of a map from `K` (int or cow_String) to a primitive value.
template <class K, class T>
class cls_ReadMapPrim : public cls_ReadCollectionBase {
  public:
    /// The key and the value of the entry at the position.
    [[nodiscard]] virtual K Key() const = 0;
    [[nodiscard]] virtual T Read() = 0;
    /// The whole map; a copy shares its nodes.
    [[nodiscard]] virtual const cow_Map<K, T>& ConstGetMap() const = 0;
};

/// The writer of a map from `K` (int or cow_String) to a primitive value.
template <class K, class T>
class cls_WriteMapPrim : public cls_WriteCollectionBase {
  public:
    /// Adds an entry; a repeated key keeps the last value.
    virtual void Write(const K& key, const T& value) = 0;
    /// Adds every entry of `map`; a writer that holds none yet shares the nodes.
    virtual void Write(const cow_Map<K, T>& map) = 0;
};

/// The reader of a collection of objects. It has built every object through the constructor that
/// its class registered, and destroys those that nobody took. Outside the positions 0 to
/// `Size()` - 1, for a null record and for an object that is not a `classId`, the answers are null.
class KTSBASSHARED_API cls_ReadObjCollection : public cls_ReadCollectionBase {
  public:
    /// The class of the object at the position, 0 for a null record.
    [[nodiscard]] virtual std::uint32_t ClassId() const = 0;
    /// The object at the position, which stays the reader's.
    [[nodiscard]] virtual const void* ConstGet(std::uint32_t classId) const = 0;
    /// Hands the object at the position to the caller, as `cls_ReadVisitor::ReadObjPtr` does.
    [[nodiscard]] virtual void* ReadObjPtr(std::uint32_t classId, bool& isFirst) = 0;
    /// Hands an object of its own to the caller, as `cls_ReadVisitor::ReadObjValue` does.
    [[nodiscard]] virtual void* ReadObjValue(std::uint32_t classId) = 0;
    /// The object in a handle, as `cls_ReadVisitor::ReadObjCow` does.
    [[nodiscard]] virtual std::shared_ptr<cls_CowHolder> ReadObjCow(std::uint32_t classId,
                                                                    cls_CowAdopt adopt) = 0;
};

/// The reader of a list of objects.
class KTSBASSHARED_API cls_ReadListObj : public cls_ReadObjCollection {};

/// The reader of a map from `K` (int or cow_String) to objects, in the order of the stream.
template <class K>
class cls_ReadMapObj : public cls_ReadObjCollection {
  public:
    /// The key of the entry at the position.
    [[nodiscard]] virtual K Key() const = 0;
};

/// The writer of a list of objects.
class KTSBASSHARED_API cls_WriteListObj : public cls_WriteCollectionBase {
  public:
    /// The writer of the next element, of class `classId` with the identity `uid`; a null `object`
    /// makes the element null.
    virtual std::unique_ptr<cls_WriteVisitor> MakeWriteObj(std::uint32_t classId,
                                                           const cls_Uid& uid,
                                                           const void* object) = 0;
    /// Appends a null element.
    virtual void WriteNullObj() = 0;
};

/// The writer of a map from `K` (int or cow_String) to objects. Entries are kept in the order of
/// the calls; a reader takes the last of a repeated key.
template <class K>
class cls_WriteMapObj : public cls_WriteCollectionBase {
  public:
    /// The writer of the object under `key`, of class `classId` with the identity `uid`; a null
    /// `object` makes it null.
    virtual std::unique_ptr<cls_WriteVisitor> MakeWriteObj(const K& key, std::uint32_t classId,
                                                           const cls_Uid& uid,
                                                           const void* object) = 0;
    /// Adds a null object under `key`.
    virtual void WriteNullObj(const K& key) = 0;
};

/// The reader of a run of raw bytes.
class KTSBASSHARED_API cls_ReadBlob {
  public:
    virtual ~cls_ReadBlob();
    [[nodiscard]] virtual int Size() const = 0;
    /// The bytes, valid as long as the stream's memory.
    [[nodiscard]] virtual const std::byte* Data() const = 0;
};

/// The writer of a run of raw bytes.
class KTSBASSHARED_API cls_WriteBlob : public cls_WriteCollectionBase {
  public:
    /// Appends `n` bytes.
    virtual void Write(const void* bytes, int n) = 0;
};
