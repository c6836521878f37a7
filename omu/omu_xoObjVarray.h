#pragma once

#include <cstdint>
#include <memory>

#include "cow/cow_List.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

/// What archives know of the array of `T`. The owner of `T` specialises it with
///   static constexpr const char* kClassName;       // the array's class name
///   static constexpr std::uint32_t kTypeId;        // and type id
///   static cls_Uid IdentityOf(const T& element);   // of the element's record; unallocated: none
template <class T>
struct omu_xoObjVarrayTraits;

/// An archivable array of objects, held by value: a `cow_List` made persistent. A copy costs an
/// increment; `Get` and the changing operations detach. `T` has a type id, a `DBWrite` and a
/// constructor that archives know.
template <class T>
class omu_xoObjVarray {
    using Traits = omu_xoObjVarrayTraits<T>;

  public:
    /// The empty array.
    omu_xoObjVarray() = default;
    /// Shares the elements of `list`.
    explicit omu_xoObjVarray(const cow_List<T>& list) : elements(list) {}
    /// Reads the record of an array. An element that is null or of another class becomes a default
    /// `T`, so that the others keep their indices.
    explicit omu_xoObjVarray(cls_ReadVisitor& visitor);
    omu_xoObjVarray(const omu_xoObjVarray&) = default;
    omu_xoObjVarray& operator=(const omu_xoObjVarray&) = default;
    virtual ~omu_xoObjVarray() = default;

    [[nodiscard]] int Length() const noexcept { return elements.Length(); }
    /// The element at `index`; an index out of range ends the process.
    [[nodiscard]] const T& operator[](int index) const { return elements.ConstGet(index); }
    /// The element at `index` for writing; detaches.
    [[nodiscard]] T& Get(int index) { return elements.Get(index); }
    void Append(const T& element) { elements.Append(element); }
    void Clear() { elements.Clear(); }
    /// The elements; a copy shares them.
    [[nodiscard]] const cow_List<T>& List() const noexcept { return elements; }
    [[nodiscard]] auto begin() const { return elements.begin(); }
    [[nodiscard]] auto end() const { return elements.end(); }

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return Traits::kTypeId; }
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept { return TypeId(); }
    /// Reads an array from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor) { return new omu_xoObjVarray(visitor); }
    /// Writes "_objects", the elements as a list of objects.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    static constexpr cls_FieldHandle kObjects{"_objects"};

    cow_List<T> elements;
};

template <class T>
omu_xoObjVarray<T>::omu_xoObjVarray(cls_ReadVisitor& visitor) {
    const auto body = visitor.MakeReadObj(kObjects);
    const auto reader = body && body->HasValue() ? body->MakeReadListObj() : nullptr;
    while (reader && reader->Next()) {
        std::unique_ptr<T> element;
        // The exact class: what a derived class's constructor answers need not be a T in memory.
        if (reader->ClassId() == T::TypeId()) {
            element.reset(static_cast<T*>(reader->ReadObjValue(T::TypeId())));
        }
        elements.Append(element ? *element : T());
    }
}

template <class T>
void omu_xoObjVarray<T>::DBWrite(cls_WriteVisitor& visitor) const {
    const auto body = visitor.MakeWriteObj(kObjects, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListObj(1) : nullptr;
    if (!writer) return;
    for (const T& element : elements) {
        const auto record =
            writer->MakeWriteObj(T::TypeId(), Traits::IdentityOf(element), &element);
        if (record) element.DBWrite(*record);
    }
}

template <class T>
void omu_xoObjVarray<T>::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata(Traits::kClassName, TypeId(), &Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<omu_xoObjVarray*>(object); });
    metadata.AddAttribute(kObjects.Name(), cls_KIND_COLLECTION, 0, cls_LIST_OBJ);
    registrar.AddClass(metadata);
}
