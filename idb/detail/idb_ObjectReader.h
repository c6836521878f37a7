#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "foundation/shared/bio_Ifilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_CowHolder.h"

/// An object that was built from its record. Until it is taken by pointer or by handle the stream
/// does not know it.
struct idb_BuiltObject {
    void* object = nullptr;  ///< owned by the holder; null for a null record and once it is taken
    std::uint32_t classId = 0;
    int number = 0;                ///< of the record, 0 for an object without identity
    std::uint32_t partsBegin = 0;  ///< the objects that the stream handed out by pointer
    std::uint32_t partsEnd = 0;    ///< while this one was built
};

/// Says on standard error that an object of `classId` is no `requested`, and marks the stream.
void idb_ReportNotInherited(bio_Ifilter& filter, std::uint32_t classId, std::uint32_t requested);

/// Builds the objects of one stream and gives them away with regard to their identity. Refers to
/// filter and registrar, which outlive it.
class idb_ObjectReader {
  public:
    idb_ObjectReader(bio_Ifilter& stream, const cls_ClassRegistrar& classes) noexcept
        : filter(&stream), registrar(&classes) {}

    /// Reads the next record and builds its object by the constructor that its class registered;
    /// none for a null record. A class without constructor is reported and gives none; where its
    /// record has a body that fails the stream, since nobody else can pass over it.
    [[nodiscard]] idb_BuiltObject Build(std::uint32_t expectedClassId) const;
    /// Destroys an object that nobody took.
    void Destroy(idb_BuiltObject& built) const noexcept;

    /// True when there is an object and a pointer to it passes for one to a `requested`; reports
    /// one that does not.
    [[nodiscard]] bool IsA(const idb_BuiltObject& built, std::uint32_t requested) const;
    /// Gives the object away in the three ways of `cls_ReadVisitor::ReadObjPtr`, `ReadObjValue` and
    /// `ReadObjCow`.
    [[nodiscard]] void* TakePointer(idb_BuiltObject& built, std::uint32_t requested,
                                    bool& isFirst) const;
    [[nodiscard]] void* TakeValue(idb_BuiltObject& built, std::uint32_t requested) const;
    [[nodiscard]] std::shared_ptr<cls_CowHolder> TakeCow(idb_BuiltObject& built,
                                                         std::uint32_t requested,
                                                         cls_CowAdopt adopt) const;

  private:
    void ForgetParts(const idb_BuiltObject& built) const noexcept;
    /// The object that the stream knows by the number of `built`; null when there is none. `isFit`
    /// is false when the number stands for something that is not this object.
    [[nodiscard]] const bio_ReadObject* Known(const idb_BuiltObject& built, bool& isFit) const;

    bio_Ifilter* filter;
    const cls_ClassRegistrar* registrar;
};

/// Holds the object of the next record, and destroys it unless it is taken.
class idb_HeldObject {
  public:
    idb_HeldObject(const idb_ObjectReader& objects, std::uint32_t expectedClassId)
        : reader(objects), built(objects.Build(expectedClassId)) {}
    idb_HeldObject(const idb_HeldObject&) = delete;
    idb_HeldObject& operator=(const idb_HeldObject&) = delete;
    ~idb_HeldObject() { reader.Destroy(built); }

    [[nodiscard]] const idb_ObjectReader& Reader() const noexcept { return reader; }
    [[nodiscard]] idb_BuiltObject& Built() noexcept { return built; }

  private:
    idb_ObjectReader reader;
    idb_BuiltObject built;
};
