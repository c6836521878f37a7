#pragma once

#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "omu/omu_Primitive.h"

/// How primitives are archived: what all kinds share. Objects are handed from the archives to their
/// readers as `omu_Primitive`, so that a field may hold a value of any kind.

/// The constructor that a kind registers: a new object, owned by the caller.
template <std::derived_from<omu_Primitive> Kind>
[[nodiscard]] void* omu_ReadNew(cls_ReadVisitor& visitor) {
    return static_cast<omu_Primitive*>(new Kind(visitor));
}

/// The destructor that every kind registers.
KTSOVUGEOM_API void omu_DeletePrimitive(void* primitive);

/// The metadata of a kind with a reading constructor; the kind adds its fields.
template <std::derived_from<omu_Primitive> Kind>
[[nodiscard]] cls_ClassMetadata omu_MetadataOf(const char* className,
                                               std::uint32_t parentId = omu_Primitive::kTypeId) {
    cls_ClassMetadata metadata(className, Kind::kTypeId, &omu_ReadNew<Kind>, parentId);
    metadata.SetCowDtor(&omu_DeletePrimitive);
    return metadata;
}

/// The element of `reader` at its position as a new primitive; null for a null record or an object
/// that is no primitive.
[[nodiscard]] KTSOVUGEOM_API std::unique_ptr<omu_Primitive> omu_ReadElement(
    cls_ReadObjCollection& reader);
