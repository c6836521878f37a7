#pragma once

#include "foundation/shared/KTSBasSharedExport.h"

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
};

/// The writer of a list of primitive values.
template <class T>
class cls_WriteListPrim : public cls_WriteCollectionBase {
  public:
    /// Appends one element.
    virtual void Write(const T& value) = 0;
    /// Appends the `n` elements of `values`.
    virtual void Write(const T* values, int n) = 0;
};

/// The reader of a map from `K` (int or cow_String) to a primitive value.
template <class K, class T>
class cls_ReadMapPrim : public cls_ReadCollectionBase {
  public:
    /// The key and the value of the entry at the position.
    [[nodiscard]] virtual K Key() const = 0;
    [[nodiscard]] virtual T Read() = 0;
};

/// The writer of a map from `K` (int or cow_String) to a primitive value.
template <class K, class T>
class cls_WriteMapPrim : public cls_WriteCollectionBase {
  public:
    /// Adds an entry; a repeated key keeps the last value.
    virtual void Write(const K& key, const T& value) = 0;
};
