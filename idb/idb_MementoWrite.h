#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Memento.h"
#include "idb/idb_ShortArray.h"

struct idb_CollectionKind;
struct idb_FieldLayout;
struct idb_NestedRecord;
enum class idb_RecordRoleEnm : std::uint8_t;
class idb_PendingBytes;
class idb_RecordLayout;
class idb_Section;

/// Takes one object's fields from its `DBWrite` and puts them on a stream as one record (its parts
/// are told at `idb_MementoRead`).
///
/// The fields may come in any order; nested records keep the order in which their writers were
/// made, whatever order the writers end in. Nothing reaches the stream before `Flush()` of the
/// outermost memento, which also completes the writers that are still open: they write nothing
/// afterwards. Identities are numbered then, in the order of the stream, so that the outer object
/// has its number before what is nested in it. A record of an object written before repeats its
/// whole body.
///
/// Nested writers belong to the caller and end in their destructors, which never throw: what fails
/// there is raised by the outermost `Flush()`, and the stream is left as it was. The memento refers
/// to the filter, the registrar and the object, which outlive it.
class KTSOVUGEOM_API idb_MementoWrite : public cls_MementoWrite {
  public:
    /// The outermost record of `object`, a `classId` with the identity `objectUid` (unallocated:
    /// none). A null `object` makes the record null unless something is written to it.
    /// `deletesNested` is what `NeedsDeletion()` answers.
    idb_MementoWrite(bio_Ofilter& filter, const cls_ClassRegistrar& registrar,
                     std::uint32_t classId, const void* object, bool deletesNested,
                     const cls_Uid& objectUid = cls_Uid());
    ~idb_MementoWrite() override;
    idb_MementoWrite(const idb_MementoWrite&) = delete;
    idb_MementoWrite& operator=(const idb_MementoWrite&) = delete;

    void Write(const cls_FieldHandle& field, const bool& value) override;
    void Write(const cls_FieldHandle& field, const char& value) override;
    void Write(const cls_FieldHandle& field, const signed char& value) override;
    void Write(const cls_FieldHandle& field, const unsigned char& value) override;
    void Write(const cls_FieldHandle& field, const short& value) override;
    void Write(const cls_FieldHandle& field, const unsigned short& value) override;
    void Write(const cls_FieldHandle& field, const int& value) override;
    void Write(const cls_FieldHandle& field, const unsigned& value) override;
    void Write(const cls_FieldHandle& field, const float& value) override;
    void Write(const cls_FieldHandle& field, const double& value) override;
    void Write(const cls_FieldHandle& field, const cow_String& value) override;
    void WriteEnumAsInt(const cls_FieldHandle& field, int value) override;
    void WriteNullObj(const cls_FieldHandle& field) override;

    std::unique_ptr<cls_WriteVisitor> MakeWriteObj(
        const cls_FieldHandle& field, std::uint32_t nestedClassId, const cls_Uid& nestedUid,
        const cow_COW<int, cow_Direct<int>>* cow = nullptr) override;
    std::unique_ptr<cls_WriteVisitor> MakeWriteObjWithPtr(const cls_FieldHandle& field,
                                                          std::uint32_t nestedClassId,
                                                          const cls_Uid& nestedUid,
                                                          const void* nested) override;
    std::unique_ptr<cls_WriteVisitor> MakeBaseWriteObj(std::uint32_t baseClassId,
                                                       const cls_Uid& baseUid) override;
    [[nodiscard]] bool FieldIsPresent(const cls_FieldHandle& field) const override;

    std::unique_ptr<cls_WriteListPrim<bool>> MakeWriteListPrim(bool tag, int columns) override;
    std::unique_ptr<cls_WriteListPrim<int>> MakeWriteListPrim(int tag, int columns) override;
    std::unique_ptr<cls_WriteListPrim<unsigned>> MakeWriteListPrim(unsigned tag,
                                                                   int columns) override;
    std::unique_ptr<cls_WriteListPrim<float>> MakeWriteListPrim(float tag, int columns) override;
    std::unique_ptr<cls_WriteListPrim<double>> MakeWriteListPrim(double tag, int columns) override;
    std::unique_ptr<cls_WriteListPrim<cow_String>> MakeWriteListPrim(const cow_String& tag,
                                                                     int columns) override;
    std::unique_ptr<cls_WriteMapPrim<cow_String, double>> MakeWriteMapString2Prim(
        double tag, int columns) override;
    std::unique_ptr<cls_WriteMapPrim<cow_String, float>> MakeWriteMapString2Prim(
        float tag, int columns) override;
    std::unique_ptr<cls_WriteMapPrim<cow_String, int>> MakeWriteMapString2Prim(
        int tag, int columns) override;
    std::unique_ptr<cls_WriteMapPrim<cow_String, cow_String>> MakeWriteMapString2Prim(
        const cow_String& tag, int columns) override;
    std::unique_ptr<cls_WriteMapPrim<cow_String, unsigned>> MakeWriteMapString2Prim(
        unsigned tag, int columns) override;
    std::unique_ptr<cls_WriteMapPrim<int, double>> MakeWriteMapInt2Prim(double tag,
                                                                        int columns) override;
    std::unique_ptr<cls_WriteMapPrim<int, float>> MakeWriteMapInt2Prim(float tag,
                                                                       int columns) override;
    std::unique_ptr<cls_WriteMapPrim<int, int>> MakeWriteMapInt2Prim(int tag, int columns) override;
    std::unique_ptr<cls_WriteMapPrim<int, cow_String>> MakeWriteMapInt2Prim(const cow_String& tag,
                                                                            int columns) override;
    std::unique_ptr<cls_WriteMapPrim<int, unsigned>> MakeWriteMapInt2Prim(unsigned tag,
                                                                          int columns) override;
    std::unique_ptr<cls_WriteMapPrim<int, int>> MakeWriteIntTableInt(int columns) override;

    std::unique_ptr<cls_WriteListObj> MakeWriteListObj(int columns) override;
    std::unique_ptr<cls_WriteMapObj<cow_String>> MakeWriteMapString2Obj(int columns) override;
    std::unique_ptr<cls_WriteMapObj<int>> MakeWriteMapInt2Obj(int columns) override;
    std::unique_ptr<cls_WriteBlob> MakeAgentBlob() override;

    void Flush() override;
    [[nodiscard]] bool NeedsDeletion() const override { return deletesNested; }
    void CheckCollectionType(cls_CollectionType type, const cow_String& fieldName) const override;

  protected:
    /// A nested record.
    idb_MementoWrite(bio_Ofilter& filter, const cls_ClassRegistrar& registrar,
                     const idb_NestedRecord& record);
    /// Appends the record to `out`.
    void CompleteInto(idb_PendingBytes& out);

  private:
    [[nodiscard]] const idb_FieldLayout* Find(const cls_FieldHandle& field) const;
    template <class T>
    void WriteNumberField(const cls_FieldHandle& field, const T& value);
    /// The writer of the collection in the body; null when the body is not of `kind`.
    template <class Writer, class... Arguments>
    std::unique_ptr<Writer> MakeWriter(const idb_CollectionKind& kind, Arguments&&... arguments);
    [[nodiscard]] std::unique_ptr<cls_WriteVisitor> MakeNested(const cls_FieldHandle& field,
                                                               std::uint32_t nestedClassId,
                                                               const cls_Uid& nestedUid,
                                                               bool nestedHasValue);
    [[nodiscard]] idb_Section& Nested();
    /// True when the record ends behind the flag.
    [[nodiscard]] bool EndsAtHead() const noexcept;
    /// The bytes of the record but for the nested ones, and these bytes.
    [[nodiscard]] std::size_t RecordSize() const noexcept;
    void PutRecord(bio_Buffer& out, int number) const;

    bio_Ofilter& filter;
    const cls_ClassRegistrar& registrar;
    std::uint32_t classId;
    idb_RecordRoleEnm role;
    bool deletesNested = true;
    bool hasValue;
    bool isFlushed = false;
    cls_CollectionType collectionType;
    int depth;
    cls_Uid uid;
    const idb_RecordLayout* layout;
    idb_ShortArray<std::byte, 64> fixedBlock;
    idb_ShortArray<cow_String, 4> strings;
    std::unique_ptr<idb_Section> nested;
};
