#pragma once

#include <concepts>

#include "ann/annC_Anchor.h"
#include "ann/annC_Annotation.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "omu/omu_PrimEnumBase.h"

/// How annotations and anchors are archived: what all classes share. Archives hand them to their
/// readers as `Base`, the base of the class.

/// The metadata of a class with a reading constructor; the class adds its fields.
template <class Class, class Base>
[[nodiscard]] cls_ClassMetadata annC_MetadataOf(const char* className) {
    const std::uint32_t parentId = std::same_as<Class, Base> ? 0 : Base::kTypeId;
    cls_ClassMetadata metadata(
        className, Class::kTypeId,
        [](cls_ReadVisitor& visitor) -> void* { return static_cast<Base*>(new Class(visitor)); },
        parentId);
    metadata.SetCowDtor([](void* object) { delete static_cast<Base*>(object); });
    return metadata;
}

/// Points are lists of two doubles. A coordinate that is missing in the record is 0.
void annC_WritePoint(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                     const annC_Point2D& point);
[[nodiscard]] annC_Point2D annC_ReadPoint(cls_ReadVisitor& visitor, const cls_FieldHandle& field);

/// Reads an anchor field as an anchor of its own; a record that holds none leaves `anchor` as it
/// is.
void annC_ReadAnchor(cls_ReadVisitor& visitor, const cls_FieldHandle& field,
                     annC_AnchorCow& anchor);

/// Reads a value that was written by `WriteEnumAsInt`. One that `value` does not permit leaves it
/// as it is, and a line goes to standard error.
void annC_ReadEnumValue(cls_ReadVisitor& visitor, const cls_FieldHandle& field,
                        omu_PrimEnumBase& value, cow_String (*nameOf)(int));

/// As above for an enumerator whose primitive is `PrimEnum`.
template <class PrimEnum, class Enumerator>
void annC_ReadEnum(cls_ReadVisitor& visitor, const cls_FieldHandle& field, Enumerator& value) {
    PrimEnum primitive(value);
    annC_ReadEnumValue(visitor, field, primitive, &PrimEnum::Name);
    value = primitive.Enumerator();
}
