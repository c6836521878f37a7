#pragma once

#include <cstdint>
#include <memory>

#include "foundation/coreutils/cow_Forward.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_Collections.h"
#include "foundation/shared/cls_CowHolder.h"
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

    /// The writers of a collection body; the number of columns is kept with it. `tag` only selects
    /// the element type.
    virtual std::unique_ptr<cls_WriteListPrim<bool>> MakeWriteListPrim(bool tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<int>> MakeWriteListPrim(int tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<unsigned>> MakeWriteListPrim(unsigned tag,
                                                                           int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<float>> MakeWriteListPrim(float tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<double>> MakeWriteListPrim(double tag,
                                                                         int columns) = 0;
    virtual std::unique_ptr<cls_WriteListPrim<cow_String>> MakeWriteListPrim(const cow_String& tag,
                                                                             int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<cow_String, double>> MakeWriteMapString2Prim(
        double tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<cow_String, float>> MakeWriteMapString2Prim(
        float tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<cow_String, int>> MakeWriteMapString2Prim(
        int tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<cow_String, cow_String>> MakeWriteMapString2Prim(
        const cow_String& tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<cow_String, unsigned>> MakeWriteMapString2Prim(
        unsigned tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<int, double>> MakeWriteMapInt2Prim(double tag,
                                                                                int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<int, float>> MakeWriteMapInt2Prim(float tag,
                                                                               int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<int, int>> MakeWriteMapInt2Prim(int tag,
                                                                             int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<int, cow_String>> MakeWriteMapInt2Prim(
        const cow_String& tag, int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapPrim<int, unsigned>> MakeWriteMapInt2Prim(unsigned tag,
                                                                                  int columns) = 0;
    /// The writer of a table of integers by integer; its record is that of a map.
    virtual std::unique_ptr<cls_WriteMapPrim<int, int>> MakeWriteIntTableInt(int columns) = 0;

    virtual std::unique_ptr<cls_WriteListObj> MakeWriteListObj(int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapObj<cow_String>> MakeWriteMapString2Obj(int columns) = 0;
    virtual std::unique_ptr<cls_WriteMapObj<int>> MakeWriteMapInt2Obj(int columns) = 0;
    virtual std::unique_ptr<cls_WriteBlob> MakeAgentBlob() = 0;
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
    /// True when the metadata of the class names `field`.
    [[nodiscard]] virtual bool FieldIsPresent(const cls_FieldHandle& field) const = 0;
    /// `FieldIsPresent`, and the record has a value.
    [[nodiscard]] virtual bool DataIsPresent(const cls_FieldHandle& field) const = 0;
    /// True when the next nested record, that of the object in `field`, holds an object. Reads
    /// ahead and consumes nothing.
    [[nodiscard]] virtual bool ObjIsPresent(const cls_FieldHandle& field) const = 0;

    /// The reader of the next nested record, for the object or the collection in `field`.
    virtual std::unique_ptr<cls_ReadVisitor> MakeReadObj(const cls_FieldHandle& field) = 0;
    /// The reader of the base part.
    virtual std::unique_ptr<cls_ReadVisitor> MakeBaseReadObj() = 0;
    /// Reads the object in `field` through the constructor that its class registered; null for a
    /// null record, and for an object to which no pointer passes for one to a `classId`
    /// (`cls_ClassRegistrar::IsObjectOf`; a line on standard error). The first reference to an
    /// object of the stream hands it to the caller (`isFirst` true); every later one answers the
    /// same pointer as an alias that the caller must not destroy (`isFirst` false). Whoever was
    /// handed an object keeps it as long as the stream is read. Objects that belong to one owner
    /// are read with `ReadObjValue`, shared ones with `ReadObjCow`: neither depends on what a
    /// damaged stream says.
    virtual void* ReadObjPtr(const cls_FieldHandle& field, std::uint32_t classId,
                             bool& isFirst) = 0;
    void* ReadObjPtr(const cls_FieldHandle& field, std::uint32_t classId) {
        bool isFirst = false;
        return ReadObjPtr(field, classId, isFirst);
    }
    /// As `ReadObjPtr` without regard to identity: always a new object, owned by the caller.
    virtual void* ReadObjValue(const cls_FieldHandle& field, std::uint32_t classId) = 0;
    /// As `ReadObjPtr`, in a holder that `adopt` makes and all references to the object share; null
    /// (and a line on standard error) when the object was handed out by pointer before.
    /// `cls_ReadCow` gives the handle itself.
    virtual std::shared_ptr<cls_CowHolder> ReadObjCow(const cls_FieldHandle& field,
                                                      std::uint32_t classId,
                                                      cls_CowAdopt adopt) = 0;

    /// The readers of a collection body; null (and a line on standard error) when the record's
    /// collection is of another type. `tag` only selects the element type.
    virtual std::unique_ptr<cls_ReadListPrim<bool>> MakeReadListPrim(bool tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<int>> MakeReadListPrim(int tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<unsigned>> MakeReadListPrim(unsigned tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<float>> MakeReadListPrim(float tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<double>> MakeReadListPrim(double tag) = 0;
    virtual std::unique_ptr<cls_ReadListPrim<cow_String>> MakeReadListPrim(
        const cow_String& tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<cow_String, double>> MakeReadMapString2Prim(
        double tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<cow_String, float>> MakeReadMapString2Prim(
        float tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<cow_String, int>> MakeReadMapString2Prim(int tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<cow_String, cow_String>> MakeReadMapString2Prim(
        const cow_String& tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<cow_String, unsigned>> MakeReadMapString2Prim(
        unsigned tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<int, double>> MakeReadMapInt2Prim(double tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<int, float>> MakeReadMapInt2Prim(float tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<int, int>> MakeReadMapInt2Prim(int tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<int, cow_String>> MakeReadMapInt2Prim(
        const cow_String& tag) = 0;
    virtual std::unique_ptr<cls_ReadMapPrim<int, unsigned>> MakeReadMapInt2Prim(unsigned tag) = 0;
    /// The reader of a table of integers by integer; its record is that of a map.
    virtual std::unique_ptr<cls_ReadMapPrim<int, int>> MakeReadIntTableInt(int tag) = 0;

    virtual std::unique_ptr<cls_ReadListObj> MakeReadListObj() = 0;
    virtual std::unique_ptr<cls_ReadMapObj<cow_String>> MakeReadMapString2Obj() = 0;
    virtual std::unique_ptr<cls_ReadMapObj<int>> MakeReadMapInt2Obj() = 0;
    virtual std::unique_ptr<cls_ReadBlob> MakeAgentBlob() = 0;
    /// The object in `field`, read and held: a collection of the one object, at its position.
    virtual std::unique_ptr<cls_ReadObjCollection> MakeAgentProxy(const cls_FieldHandle& field,
                                                                  std::uint32_t classId) = 0;
};

/// The class id of `object` itself: `DynTypeId()` where its class has it, else `TypeId()`.
template <class T>
[[nodiscard]] std::uint32_t cls_ClassOf(const T& object) {
    if constexpr (requires { object.DynTypeId(); }) {
        return object.DynTypeId();
    } else {
        return object.TypeId();
    }
}

/// Writes `object`, embedded in its owner, as the object field `field`. An embedded value has no
/// identity in the stream unless `uid` gives one.
template <class T>
void cls_WriteEmbedded(cls_WriteVisitor& visitor, const cls_FieldHandle& field, const T& object,
                       const cls_Uid& uid = cls_Uid()) {
    if (auto nested = visitor.MakeWriteObj(field, object.TypeId(), uid)) object.DBWrite(*nested);
}

/// Writes the object that the copy-on-write `handle` holds as the object field `field`, with the
/// identity `uid`; null for a null handle.
template <class Handle>
void cls_WriteCow(cls_WriteVisitor& visitor, const cls_FieldHandle& field, const Handle& handle,
                  const cls_Uid& uid = cls_Uid()) {
    if (handle.IsNull()) {
        visitor.WriteNullObj(field);
        return;
    }
    const auto& object = *handle.ConstGet();
    if (auto nested = visitor.MakeWriteObjWithPtr(field, cls_ClassOf(object), uid, &object)) {
        object.DBWrite(*nested);
    }
}

/// Reads the object field `field` into a `Handle` over `T`, shared by all references to the object;
/// a null handle for a null record or an object that is no `classId`.
template <class Handle, class T>
[[nodiscard]] Handle cls_ReadCow(cls_ReadVisitor& visitor, const cls_FieldHandle& field,
                                 std::uint32_t classId) {
    return cls_HandleOf<Handle>(visitor.ReadObjCow(field, classId, &cls_AdoptCow<Handle, T>));
}

/// Reads the object field `field` into a new `T`; a default `T` when the record is null.
template <class T>
[[nodiscard]] T cls_ReadEmbedded(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    auto nested = visitor.MakeReadObj(field);
    return nested && nested->HasValue() ? T(*nested) : T();
}
