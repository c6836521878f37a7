#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/omi_Allocator.h"
#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Memento.h"
#include "idb/idb_ShortArray.h"

struct idb_CollectionKind;
struct idb_FieldLayout;
class idb_RecordLayout;

/// Reads one object's record from a stream and hands its fields to the object's reading
/// constructor.
///
/// A record is, in this order: the class id (4 bytes); the has-value flag (1 byte; false ends the
/// record); the reference number (4 bytes, 0 for an object without identity); the fixed block, the
/// numbers of 4 and 8 bytes in ascending order of the field names without padding; the strings,
/// each a length and its bytes, in the iteration order of a `cow_Map` with the field names as keys;
/// the nested records of objects and collections in the order in which the object's `DBWrite`
/// writes them. The constructor reads all but the nested records, which the `Make...` and
/// `ReadObj...` operations take one after the other. A record of the class ids 0x230005, 0x1A0001
/// and 0x1A0007 has neither fixed block nor strings, and one of a class that the registrar does not
/// know ends with the flag (0x230005: goes on), unless it was made for a collection.
///
/// A record that names a class which is not the expected one is reported and read in the layout of
/// the expected class. Nothing here throws for bad input (see `bio_Ifilter`); memory that runs out
/// does. The memento refers to the filter, its memory and the registrar, which outlive it.
class KTSOVUGEOM_API idb_MementoRead : public cls_MementoRead {
  public:
    /// Reads the next record: an object of `expectedClassId` or of a class that may take its place
    /// (2: any class), with collections of `type` in its body (none: of the type that the metadata
    /// give the class itself).
    idb_MementoRead(bio_Ifilter& filter, const cls_ClassRegistrar& registrar,
                    std::uint32_t expectedClassId, cls_CollectionType type = cls_NO_COLLECTION);
    ~idb_MementoRead() override;
    idb_MementoRead(const idb_MementoRead&) = delete;
    idb_MementoRead& operator=(const idb_MementoRead&) = delete;

    using cls_MementoRead::ReadObjPtr;

    void Read(const cls_FieldHandle& field, bool& value) override;
    void Read(const cls_FieldHandle& field, char& value) override;
    void Read(const cls_FieldHandle& field, signed char& value) override;
    void Read(const cls_FieldHandle& field, unsigned char& value) override;
    void Read(const cls_FieldHandle& field, short& value) override;
    void Read(const cls_FieldHandle& field, unsigned short& value) override;
    void Read(const cls_FieldHandle& field, int& value) override;
    void Read(const cls_FieldHandle& field, unsigned& value) override;
    void Read(const cls_FieldHandle& field, float& value) override;
    void Read(const cls_FieldHandle& field, double& value) override;
    void Read(const cls_FieldHandle& field, cow_String& value) override;
    [[nodiscard]] int ReadEnumAsInt(const cls_FieldHandle& field) override;

    [[nodiscard]] std::uint32_t ClassId() const override { return classId; }
    void SetClassId(std::uint32_t id) override { classId = id; }
    [[nodiscard]] int DbId() const override { return number; }
    [[nodiscard]] const cls_Uid& GetUid() const override { return uid; }
    [[nodiscard]] bool HasValue() const override { return hasValue; }
    [[nodiscard]] bool getMarker() const override { return isKnown; }
    [[nodiscard]] void* getObjectPtr() const override;
    [[nodiscard]] bool FieldIsPresent(const cls_FieldHandle& field) const override;
    [[nodiscard]] bool DataIsPresent(const cls_FieldHandle& field) const override;
    [[nodiscard]] bool ObjIsPresent(const cls_FieldHandle& field) const override;

    std::unique_ptr<cls_ReadVisitor> MakeReadObj(const cls_FieldHandle& field) override;
    std::unique_ptr<cls_ReadVisitor> MakeBaseReadObj() override;
    /// Kept: the line on standard error about an object of another class than the requested one has
    /// no line end, where one would have expected one as behind every other; who searches logs
    /// relies on the text as it is.
    void* ReadObjPtr(const cls_FieldHandle& field, std::uint32_t requested, bool& isFirst) override;
    void* ReadObjValue(const cls_FieldHandle& field, std::uint32_t requested) override;
    std::shared_ptr<cls_CowHolder> ReadObjCow(const cls_FieldHandle& field, std::uint32_t requested,
                                              cls_CowAdopt adopt) override;

    std::unique_ptr<cls_ReadListPrim<bool>> MakeReadListPrim(bool tag) override;
    std::unique_ptr<cls_ReadListPrim<int>> MakeReadListPrim(int tag) override;
    std::unique_ptr<cls_ReadListPrim<unsigned>> MakeReadListPrim(unsigned tag) override;
    std::unique_ptr<cls_ReadListPrim<float>> MakeReadListPrim(float tag) override;
    std::unique_ptr<cls_ReadListPrim<double>> MakeReadListPrim(double tag) override;
    std::unique_ptr<cls_ReadListPrim<cow_String>> MakeReadListPrim(const cow_String& tag) override;
    std::unique_ptr<cls_ReadMapPrim<cow_String, double>> MakeReadMapString2Prim(
        double tag) override;
    std::unique_ptr<cls_ReadMapPrim<cow_String, float>> MakeReadMapString2Prim(float tag) override;
    std::unique_ptr<cls_ReadMapPrim<cow_String, int>> MakeReadMapString2Prim(int tag) override;
    std::unique_ptr<cls_ReadMapPrim<cow_String, cow_String>> MakeReadMapString2Prim(
        const cow_String& tag) override;
    std::unique_ptr<cls_ReadMapPrim<cow_String, unsigned>> MakeReadMapString2Prim(
        unsigned tag) override;
    std::unique_ptr<cls_ReadMapPrim<int, double>> MakeReadMapInt2Prim(double tag) override;
    std::unique_ptr<cls_ReadMapPrim<int, float>> MakeReadMapInt2Prim(float tag) override;
    std::unique_ptr<cls_ReadMapPrim<int, int>> MakeReadMapInt2Prim(int tag) override;
    std::unique_ptr<cls_ReadMapPrim<int, cow_String>> MakeReadMapInt2Prim(
        const cow_String& tag) override;
    std::unique_ptr<cls_ReadMapPrim<int, unsigned>> MakeReadMapInt2Prim(unsigned tag) override;
    std::unique_ptr<cls_ReadMapPrim<int, int>> MakeReadIntTableInt(int tag) override;

    std::unique_ptr<cls_ReadListObj> MakeReadListObj() override;
    std::unique_ptr<cls_ReadMapObj<cow_String>> MakeReadMapString2Obj() override;
    std::unique_ptr<cls_ReadMapObj<int>> MakeReadMapInt2Obj() override;
    std::unique_ptr<cls_ReadBlob> MakeAgentBlob() override;
    std::unique_ptr<cls_ReadObjCollection> MakeAgentProxy(const cls_FieldHandle& field,
                                                          std::uint32_t requested) override;

  private:
    /// What the record is for; only objects count as nested.
    enum class Role : std::uint8_t { Object, Base, Collection };

    idb_MementoRead(bio_Ifilter& filter, const cls_ClassRegistrar& registrar,
                    std::uint32_t expectedClassId, cls_CollectionType type, Role role);

    void ReadRecord();
    void TakeClass(std::uint32_t storedId);
    void ReadNumber();
    void ReadFields();
    [[nodiscard]] const idb_FieldLayout* Find(const cls_FieldHandle& field) const;
    /// The class that the record of the object in `field` is expected to be of; 0 when no object
    /// record belongs to `field`.
    [[nodiscard]] std::uint32_t ObjectClass(const cls_FieldHandle& field) const;
    template <class T>
    void ReadNumberField(const cls_FieldHandle& field, T& value);
    /// The class that the objects of a collection are expected to be of.
    [[nodiscard]] std::uint32_t ElementClass() const noexcept;
    /// Reads the collection that the body holds; null when there is none or it is not of `kind`.
    template <class Reader, class... Arguments>
    std::unique_ptr<Reader> MakeReader(const idb_CollectionKind& kind,
                                       const Arguments&... arguments);

    bio_Ifilter& filter;
    const cls_ClassRegistrar& registrar;
    std::uint32_t classId;  ///< the expected class until the record named its own
    cls_CollectionType collectionType;
    Role role;
    bool isEntered = false;  ///< counted as nested
    bool hasValue = false;
    bool hasBody = false;  ///< goes on behind the flag
    bool isKnown = false;
    bool isBegun = false;  ///< entered the number in the table of objects
    int number = 0;
    cls_Uid uid;
    const idb_RecordLayout* layout = nullptr;
    const std::byte* fixedBlock = nullptr;  ///< in the stream's memory, or in `zeros`
    std::vector<std::byte, omi_Allocator<std::byte>> zeros;  ///< for a block that is not there
    idb_ShortArray<std::string_view, 4> strings;
};
