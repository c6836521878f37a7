#pragma once

#include <cstdint>
#include <memory>

#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_CollectionType.h"
#include "foundation/shared/cls_Uid.h"
#include "foundation/shared/cls_Visitors.h"

/// A writing visitor that carries one object's state to a storage.
///
/// The agents are the collection writers under names of their own, for callers that know the number
/// of elements to come; the records are those of the plain writers.
class KTSBASSHARED_API cls_MementoWrite : public cls_WriteVisitor {
  public:
    ~cls_MementoWrite() override;

    /// Puts the record, with all that is nested in it, on the storage; once.
    virtual void Flush() = 0;
    /// Tells whether the memento deletes the nested mementos that it made.
    [[nodiscard]] virtual bool NeedsDeletion() const = 0;
    /// Compares the collection type that the metadata give to `fieldName` (the default of the class
    /// when it has no such field) with `type`; a line on standard error when they differ.
    virtual void CheckCollectionType(cls_CollectionType type,
                                     const cow_String& fieldName) const = 0;

    auto MakeAgentListBool(int /*count*/) { return MakeWriteListPrim(bool(), 1); }
    auto MakeAgentListInt(int /*count*/) { return MakeWriteListPrim(int(), 1); }
    auto MakeAgentListUint(int /*count*/) { return MakeWriteListPrim(unsigned(), 1); }
    auto MakeAgentListFloat(int /*count*/) { return MakeWriteListPrim(float(), 1); }
    auto MakeAgentListDouble(int /*count*/) { return MakeWriteListPrim(double(), 1); }
    auto MakeAgentListString(int /*count*/) { return MakeWriteListPrim(cow_String(), 1); }
    auto MakeAgentListObj(int /*count*/) { return MakeWriteListObj(1); }
    auto MakeAgentMapInt2Obj() { return MakeWriteMapInt2Obj(1); }
    auto MakeAgentMapString2Obj() { return MakeWriteMapString2Obj(1); }
    auto MakeAgentProxy(const cls_FieldHandle& field, std::uint32_t classId) {
        return MakeWriteObj(field, classId, cls_Uid());
    }
};

/// A reading visitor that carries one object's state from a storage.
///
/// The agents and the alternative forms are the collection readers under names of their own.
class KTSBASSHARED_API cls_MementoRead : public cls_ReadVisitor {
  public:
    ~cls_MementoRead() override;

    virtual void SetClassId(std::uint32_t id) = 0;
    /// The number by which the stream knows the object; 0 for an object without identity.
    [[nodiscard]] virtual int DbId() const = 0;
    /// An identity of this process for the object that the record becomes.
    [[nodiscard]] virtual const cls_Uid& GetUid() const = 0;
    /// True when the stream held a record of this object before.
    [[nodiscard]] virtual bool getMarker() const = 0;
    /// The object that an earlier record of the same number became, or null. A number that stands
    /// for an object of another class is refused with a line on standard error.
    [[nodiscard]] virtual void* getObjectPtr() const = 0;

    auto MakeAltReadMapInt2Obj() { return MakeReadMapInt2Obj(); }
    template <class T>
    auto MakeAltReadMapInt2Prim(const T& tag) {
        return MakeReadMapInt2Prim(tag);
    }
    auto MakeAgentListBool() { return MakeReadListPrim(bool()); }
    auto MakeAgentListInt() { return MakeReadListPrim(int()); }
    auto MakeAgentListUint() { return MakeReadListPrim(unsigned()); }
    auto MakeAgentListFloat() { return MakeReadListPrim(float()); }
    auto MakeAgentListDouble() { return MakeReadListPrim(double()); }
    auto MakeAgentListString() { return MakeReadListPrim(cow_String()); }
    auto MakeAgentListObj() { return MakeReadListObj(); }
    auto MakeAgentMapInt2Obj() { return MakeReadMapInt2Obj(); }
    auto MakeAgentMapString2Obj() { return MakeReadMapString2Obj(); }
};
