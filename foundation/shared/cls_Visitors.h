#pragma once

#include <cstdint>
#include <memory>

#include "foundation/coreutils/cow_Forward.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_Collections.h"
#include "foundation/shared/cls_FieldHandle.h"
#include "foundation/shared/cls_Uid.h"

/// What an object's `DBWrite` talks to: takes the fields by name and hands out writers for its base
/// part, its objects and its collections. Storage implements it; persistent classes know only this
/// interface. A field that the metadata of the class does not name is ignored.
///
/// A nested writer belongs to the caller, is filled and then destroyed; its record keeps the place
/// at which it was made. Null answers mean that the field takes no such writer (a line was
/// printed).
class KTSBASSHARED_API cls_WriteVisitor {
  public:
    virtual ~cls_WriteVisitor();

    virtual void Write(const cls_FieldHandle& field, const bool& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const char& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const signed char& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const unsigned char& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const short& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const unsigned short& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const int& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const unsigned& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const float& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const double& value) = 0;
    virtual void Write(const cls_FieldHandle& field, const cow_String& value) = 0;
    /// Writes an enumerator as the decimal text of its value.
    virtual void WriteEnumAsInt(const cls_FieldHandle& field, int value) = 0;
    /// Writes the object field as null.
    virtual void WriteNullObj(const cls_FieldHandle& field) = 0;

    /// The writer of the object in `field`, of class `classId`, with the identity `uid`
    /// (unallocated: none). `cow` tells a handle whose null makes the record null; a null pointer
    /// says nothing. For a collection field: its body, filled through `MakeWriteList...`.
    virtual std::unique_ptr<cls_WriteVisitor> MakeWriteObj(
        const cls_FieldHandle& field, std::uint32_t classId, const cls_Uid& uid,
        const cow_COW<int, cow_Direct<int>>* cow = nullptr) = 0;
    /// As `MakeWriteObj` for an object held by pointer; a null `object` makes the record null.
    virtual std::unique_ptr<cls_WriteVisitor> MakeWriteObjWithPtr(const cls_FieldHandle& field,
                                                                  std::uint32_t classId,
                                                                  const cls_Uid& uid,
                                                                  const void* object) = 0;
    /// The writer of the object's base part, of class `classId`; the first nested record.
    virtual std::unique_ptr<cls_WriteVisitor> MakeBaseWriteObj(std::uint32_t classId,
                                                               const cls_Uid& uid) = 0;

    /// True when the metadata of the class names `field`.
    [[nodiscard]] virtual bool FieldIsPresent(const cls_FieldHandle& field) const = 0;

    /// The writers of a collection body; the number of columns is kept with a list. `tag` only
    /// selects the element type.
    virtual std::unique_ptr<cls_WriteListPrim<bool>> MakeWriteListPrim(bool tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<int>> MakeWriteListPrim(int tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<unsigned>> MakeWriteListPrim(unsigned tag,
                                                                           int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<float>> MakeWriteListPrim(float tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<double>> MakeWriteListPrim(double tag,
                                                                         int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<cow_String>> MakeWriteListPrim(const cow_String& tag,
                                                                             int columns) = 0;
};

/// What a reading constructor talks to: gives the fields by name, in any order, and hands out
/// readers for the base part, the objects and the collections, in the order in which they were
/// written. `Read` leaves its output untouched when the field is not there.
class KTSBASSHARED_API cls_ReadVisitor {
  public:
    virtual ~cls_ReadVisitor();

    virtual void Read(const cls_FieldHandle& field, bool& value) = 0;
    virtual void Read(const cls_FieldHandle& field, char& value) = 0;
    virtual void Read(const cls_FieldHandle& field, signed char& value) = 0;
    virtual void Read(const cls_FieldHandle& field, unsigned char& value) = 0;
    virtual void Read(const cls_FieldHandle& field, short& value) = 0;
    virtual void Read(const cls_FieldHandle& field, unsigned short& value) = 0;
    virtual void Read(const cls_FieldHandle& field, int& value) = 0;
    virtual void Read(const cls_FieldHandle& field, unsigned& value) = 0;
    virtual void Read(const cls_FieldHandle& field, float& value) = 0;
    virtual void Read(const cls_FieldHandle& field, double& value) = 0;
    virtual void Read(const cls_FieldHandle& field, cow_String& value) = 0;
    /// The value of an enumerator written with `WriteEnumAsInt`; 0 when the text is no integer.
    [[nodiscard]] virtual int ReadEnumAsInt(const cls_FieldHandle& field) = 0;

    /// The class of the object that the record holds.
    [[nodiscard]] virtual std::uint32_t ClassId() const = 0;
    /// False when the record holds a null object.
    [[nodiscard]] virtual bool HasValue() const = 0;
    [[nodiscard]] virtual bool FieldIsPresent(const cls_FieldHandle& field) const = 0;

    /// The reader of the next nested record, for the object or the collection in `field`.
    virtual std::unique_ptr<cls_ReadVisitor> MakeReadObj(const cls_FieldHandle& field) = 0;
    /// The reader of the base part.
    virtual std::unique_ptr<cls_ReadVisitor> MakeBaseReadObj() = 0;
    /// Reads the object in `field` through the constructor that its class registered and hands it
    /// to the caller; null for a null record or an object that is not a `classId`.
    virtual void* ReadObjPtr(const cls_FieldHandle& field, std::uint32_t classId) = 0;

    /// The readers of a collection body; null (and a line on standard error) when the record's
    /// collection is of another type. `tag` only selects the element type.
    virtual std::unique_ptr<cls_ReadListPrim<bool>> MakeReadListPrim(bool tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<int>> MakeReadListPrim(int tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<unsigned>> MakeReadListPrim(unsigned tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<float>> MakeReadListPrim(float tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<double>> MakeReadListPrim(double tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<cow_String>> MakeReadListPrim(
        const cow_String& tag) = 0;
};

/// Writes `object`, embedded in its owner, as the object field `field`. An embedded value has no
/// identity in the stream unless `uid` gives one.
template <class T>
void cls_WriteEmbedded(cls_WriteVisitor& visitor, const cls_FieldHandle& field, const T& object,
                       const cls_Uid& uid = cls_Uid()) {
    if (auto nested = visitor.MakeWriteObj(field, object.TypeId(), uid)) object.DBWrite(*nested);
}

/// Reads the object field `field` into a new `T`; a default `T` when the record is null.
template <class T>
[[nodiscard]] T cls_ReadEmbedded(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    auto nested = visitor.MakeReadObj(field);
    return nested && nested->HasValue() ? T(*nested) : T();
}
