#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_CollectionType.h"

class cls_ReadVisitor;

/// How a persistent field is stored, by the code that archives keep.
enum cls_KindEnm : int {
    cls_KIND_BOOL = 1,
    cls_KIND_CHAR = 2,
    cls_KIND_UNSIGNED_CHAR = 3,
    cls_KIND_SHORT = 4,
    cls_KIND_INT = 5,
    cls_KIND_OBJ_POINTER = 6,
    cls_KIND_UNSIGNED_INT = 7,
    cls_KIND_COLLECTION = 8,
    cls_KIND_FLOAT = 9,
    cls_KIND_DOUBLE = 10,
    cls_KIND_STRING = 11,
    cls_KIND_TRANSLATED_STRING = 12,
    cls_KIND_UNSIGNED_SHORT = 13,
    cls_KIND_ENUM = 14,
    cls_KIND_EMBEDDED_OBJ = 15,
};

/// One persistent field of a class.
struct cls_AttributeMetadata {
    cow_String name;
    int kind = cls_KIND_INT;    ///< a `cls_KindEnm`
    std::uint32_t classId = 0;  ///< type id of an object field's class
    cls_CollectionType collectionType = cls_NO_COLLECTION;
};

/// Builds an object of a class from its record: new, owned by the caller.
using cls_CtorFunction = void* (*)(cls_ReadVisitor&);
/// Destroys an object that `cls_CtorFunction` built.
using cls_CowDtorFunction = void (*)(void* object);

/// What archives know of a class: its name, type id, fields in ascending order of their names, and
/// the functions that build and destroy objects of it. Copied by the registrar.
class KTSBASSHARED_API cls_ClassMetadata {
  public:
    /// Class `name` with `typeId`. Objects of a class without `ctor` cannot be read by pointer.
    /// `parentId` (0: none) is the class whose place an object may take.
    cls_ClassMetadata(std::string_view name, std::uint32_t typeId, cls_CtorFunction ctor = nullptr,
                      std::uint32_t parentId = 0,
                      cls_CollectionType collectionType = cls_NO_COLLECTION);

    /// Adds a field; one of the same name is replaced. `classId` belongs to object fields,
    /// `collectionType` to collections.
    cls_ClassMetadata& AddAttribute(std::string_view fieldName, int kind, std::uint32_t classId = 0,
                                    cls_CollectionType collectionType = cls_NO_COLLECTION);
    cls_ClassMetadata& SetCowDtor(cls_CowDtorFunction function);
    /// Says that objects take the parent's place in records alone: in memory they are no objects of
    /// the parent's class, and no pointer to one passes for a pointer to that.
    cls_ClassMetadata& SetParentInRecordsOnly() noexcept;

    [[nodiscard]] const cow_String& Name() const noexcept { return name; }
    [[nodiscard]] std::uint32_t TypeId() const noexcept { return typeId; }
    [[nodiscard]] std::uint32_t ParentId() const noexcept { return parentId; }
    [[nodiscard]] bool HasParentInRecordsOnly() const noexcept { return hasParentInRecordsOnly; }
    /// The class's default collection type.
    [[nodiscard]] cls_CollectionType CollectionType() const noexcept { return collectionType; }
    [[nodiscard]] cls_CtorFunction Ctor() const noexcept { return ctor; }
    [[nodiscard]] cls_CowDtorFunction CowDtor() const noexcept { return cowDtor; }
    /// The fields in ascending byte order of their names.
    [[nodiscard]] const std::vector<cls_AttributeMetadata>& Attributes() const noexcept {
        return attributes;
    }
    /// The field `fieldName`, or null.
    [[nodiscard]] const cls_AttributeMetadata* FindAttribute(
        std::string_view fieldName) const noexcept;

  private:
    cow_String name;
    std::uint32_t typeId;
    std::uint32_t parentId;
    cls_CollectionType collectionType;
    cls_CtorFunction ctor;
    cls_CowDtorFunction cowDtor = nullptr;
    bool hasParentInRecordsOnly = false;
    std::vector<cls_AttributeMetadata> attributes;
};
