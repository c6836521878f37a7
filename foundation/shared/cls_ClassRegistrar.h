#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "foundation/coreutils/omi_Singleton.h"
#include "foundation/shared/KTSBasSharedExport.h"
#include "foundation/shared/cls_ClassMetadata.h"

/// The classes that archives know, by type id and by name.
class KTSBASSHARED_API cls_ClassRegistrar {
  public:
    cls_ClassRegistrar();
    ~cls_ClassRegistrar();
    cls_ClassRegistrar(const cls_ClassRegistrar&) = delete;
    cls_ClassRegistrar& operator=(const cls_ClassRegistrar&) = delete;

    /// Adds a copy of `metadata`; a class of the same type id is replaced, and a name that another
    /// class has becomes that of this one.
    void AddClass(const cls_ClassMetadata& metadata);
    /// Forgets the class; nothing when it is unknown.
    void WithdrawClass(std::uint32_t typeId) noexcept;
    /// Forgets every class.
    void Clear() noexcept;

    /// The class with this type id or name, or null. Valid until the registrar changes.
    [[nodiscard]] const cls_ClassMetadata* Find(std::uint32_t typeId) const noexcept;
    [[nodiscard]] const cls_ClassMetadata* Find(std::string_view className) const noexcept;

    /// True when `typeId` is `ancestor` or names it among its parents in the metadata.
    [[nodiscard]] bool Inherits(std::uint32_t typeId, std::uint32_t ancestor) const noexcept;
    /// `Inherits`, or else the parent test of the archive component tables.
    [[nodiscard]] bool IsKindOf(std::uint32_t typeId, std::uint32_t ancestor) const noexcept;
    /// `IsKindOf`, and no class on the way to `ancestor` has its parent in records only: a pointer
    /// to an object of `typeId` passes for one to an `ancestor`.
    [[nodiscard]] bool IsObjectOf(std::uint32_t typeId, std::uint32_t ancestor) const noexcept;

    /// Destroys `object` of class `typeId` by the function that the class registered. Without one
    /// the object is left alone and a translated warning goes to standard error.
    void DeleteCow(std::uint32_t typeId, void* object) const;

  private:
    struct Classes;
    std::unique_ptr<Classes> classes;
};

/// A function that describes one class, or a family of classes, to the registrar.
using cls_InitializeMetadataFunction = void (*)(cls_ClassRegistrar&);

/// Keeps the functions that describe classes and calls each when metadata are first needed, so that
/// the order of registration does not matter. The foundation's own classes are always known.
class KTSBASSHARED_API cls_MetadataRegistrar {
  public:
    /// Keeps `function` with its `flags`; a pair already known is ignored. The flags are stored and
    /// answered unchanged and switch nothing on.
    void initClassMetadata(cls_InitializeMetadataFunction function, unsigned flags);
    /// Forgets `function` and the classes that it described: called before its code is unloaded.
    void withdrawClassMetadata(cls_InitializeMetadataFunction function) noexcept;

    /// The registrar, after every function not yet asked has described its classes. An exception of
    /// such a function propagates, and it is asked again next time. The registrar itself stays in
    /// place as long as this object; pointers to classes last until a function is withdrawn.
    [[nodiscard]] const cls_ClassRegistrar& ClassRegistrar();
    /// The flags that `function` was registered with first, 0 when it is unknown.
    [[nodiscard]] unsigned Flags(cls_InitializeMetadataFunction function) const noexcept;
    /// Number of registered functions.
    [[nodiscard]] int Size() const noexcept;

  private:
    struct Registration;
    friend class omi_Singleton<cls_MetadataRegistrar>;
    friend class omi_SingletonBase<cls_MetadataRegistrar>;
    static cls_MetadataRegistrar* singleton;
    cls_MetadataRegistrar();
    ~cls_MetadataRegistrar();

    void Describe();

    std::vector<Registration> registrations;
    bool allDescribed = false;
    cls_ClassRegistrar registrar;
};
