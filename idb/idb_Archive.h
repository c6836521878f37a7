#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Uid.h"
#include "foundation/shared/cls_Visitors.h"

/// Saving an object to bytes and loading it again, in one call each: these keep the order of the
/// calls to mementos and filters, so that clients do not.

/// What came of loading a record.
enum class idb_LoadStatusEnm : int {
    Loaded,         ///< the object is whole and the bytes are used up
    NullObject,     ///< the record holds no object
    Truncated,      ///< the bytes end too soon, or name more than they hold
    WrongClass,     ///< the object is not of the expected class
    UnknownClass,   ///< no class of this id can be built
    TrailingBytes,  ///< bytes are left behind the record
    Damaged,        ///< something in the record contradicts itself
};

/// Why nothing was loaded, for a program and for a reader.
struct idb_LoadFault {
    idb_LoadStatusEnm status = idb_LoadStatusEnm::Loaded;
    cow_String text;  ///< one sentence without a full stop; "" when the object was loaded
};

/// Destroys an object by the function that its class registered.
struct idb_ObjectDeleter {
    const cls_ClassRegistrar* registrar = nullptr;
    std::uint32_t classId = 0;  ///< the object's class

    void operator()(void* object) const { registrar->DeleteCow(classId, object); }
};
/// An object of any class, owned.
using idb_ObjectPtr = std::unique_ptr<void, idb_ObjectDeleter>;

/// Every class that was registered in this process.
[[nodiscard]] KTSOVUGEOM_API const cls_ClassRegistrar& idb_RegisteredClasses();

/// Appends the record of `object`, a `classId` with the identity `uid` (unallocated: none) whose
/// fields `write` writes. What fails (memory, records nested without end) throws and leaves the
/// bytes of `out` as they were.
KTSOVUGEOM_API void idb_SaveRecord(bio_Ofilter& out, std::uint32_t classId, const void* object,
                                   const cls_Uid& uid,
                                   const std::function<void(cls_WriteVisitor&)>& write,
                                   const cls_ClassRegistrar& registrar = idb_RegisteredClasses());

/// `idb_SaveRecord` of an object with `DBWrite`, under its own class.
template <class T>
void idb_SaveObject(bio_Ofilter& out, const T& object, const cls_Uid& uid = cls_Uid(),
                    const cls_ClassRegistrar& registrar = idb_RegisteredClasses()) {
    idb_SaveRecord(
        out, cls_ClassOf(object), &object, uid,
        [&object](cls_WriteVisitor& visitor) { object.DBWrite(visitor); }, registrar);
}

/// The class that the record at `bytes` names, without reading it: 1 for a null object, 0 for fewer
/// bytes than name a class.
[[nodiscard]] KTSOVUGEOM_API std::uint32_t idb_ClassOfRecord(const void* bytes, std::size_t size);

/// Reads the one record that `bytes` are, of a `classId` (2: of any class), handing it to `read`.
/// True when the record was whole and sound and nothing is left behind it; else `fault` tells why,
/// after the readers printed their lines on standard error. An exception of `read` for a value
/// that it does not accept makes the record a damaged one; exhausted memory throws.
[[nodiscard]] KTSOVUGEOM_API bool idb_LoadRecord(
    const void* bytes, std::size_t size, std::uint32_t classId,
    const std::function<void(cls_ReadVisitor&)>& read, idb_LoadFault& fault,
    const cls_ClassRegistrar& registrar = idb_RegisteredClasses());

/// The object that `bytes` are the record of, built by the reading constructor of `T`; null, and
/// `fault` tells why, as for `idb_LoadRecord`. `classId` is the class id of `T`.
template <class T>
[[nodiscard]] std::unique_ptr<T> idb_LoadObject(
    const void* bytes, std::size_t size, std::uint32_t classId, idb_LoadFault& fault,
    const cls_ClassRegistrar& registrar = idb_RegisteredClasses()) {
    std::unique_ptr<T> object;
    const auto read = [&object](cls_ReadVisitor& visitor) {
        object = std::make_unique<T>(visitor);
    };
    if (!idb_LoadRecord(bytes, size, classId, read, fault, registrar)) return nullptr;
    return object;
}

/// The object that `bytes` are the record of, of `classId` (2: any class) or a class in its place,
/// built by the constructor that its class registered; null, and `fault` tells why, as for
/// `idb_LoadRecord`. The pointer's deleter knows the class.
[[nodiscard]] KTSOVUGEOM_API idb_ObjectPtr
idb_LoadAnyObject(const void* bytes, std::size_t size, std::uint32_t classId, idb_LoadFault& fault,
                  const cls_ClassRegistrar& registrar = idb_RegisteredClasses());
