#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_ArrayCOW.h"
#include "cow/cow_Map.h"
#include "foundation/alloc/mem_Alloc.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_FieldHandle.h"
#include "foundation/shared/cls_Uid.h"
#include "omu/omu_Primitive.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A piece of data that some part of the application adds to a model: a value of any kind that
/// scripts know, or none, under an identity of its own. Derived classes add what they like.
///
/// Extensions are held by `mdl_ExtensionHandle`, which copies by `Copy()` on the first write. A
/// detach must not change what an object is, so `Copy()` keeps the identity; the copy constructor
/// makes a new object with a new one. Extensions belong to one thread at a time.
///
/// Kept: two extensions of one identity that are written to one stream are read back as one, the
/// first, where one would have expected each with its own content; holders that share an extension
/// rely on sharing it again after reading. So whoever keeps a changed copy beside its original in
/// one stream gives it a new identity by `NewUid()` (a repository does so for its entries), and
/// states of one model at different times go to streams of their own.
///
/// The virtual operations stand in the order of their slots, which classes defined elsewhere rely
/// on.
class KTSOVUGEOM_API mdl_Extension {
  public:
    /// The value of an extension, copied on write.
    using Value = cow_ArrayCOW<omu_Primitive, cow_Virtual<omu_Primitive>>;
    /// Extensions and containers of values nested in each other, at most, in what a repository
    /// holds.
    static constexpr int kMaxDepth = omu_PrimNesting::kMaxDepth;

    /// Without a value.
    mdl_Extension() = default;
    /// Shares `initial`, which may be null.
    explicit mdl_Extension(const Value& initial) : value(Held(initial)) {}
    /// Reads the record of an extension, with a new identity.
    explicit mdl_Extension(cls_ReadVisitor& visitor);
    /// Shares the value, under a new identity.
    mdl_Extension(const mdl_Extension& other) : value(other.value ? Held(*other.value) : nullptr) {}

    virtual ~mdl_Extension();
    /// A copy of the same class with the same identity; new, owned by the caller.
    [[nodiscard]] virtual mdl_Extension* Copy() const;
    /// 10:1.
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Writes "_value".
    virtual void DBWrite(cls_WriteVisitor& visitor) const;
    /// How deep the extension is: 1 and the depth of its value, of which a scalar or none has 0.
    [[nodiscard]] virtual int Depth() const;

    /// The value or null, for reading or for writing. `GetValue` makes it private; what is written
    /// through its pointer, which is valid until the extension is changed or copied, is not held to
    /// `kMaxDepth`: a model that is too deep is refused when it is saved.
    [[nodiscard]] const omu_Primitive* ConstGetValue() const noexcept {
        return value ? value->ConstGet() : nullptr;
    }
    [[nodiscard]] omu_Primitive* GetValue() { return value ? value->Get() : nullptr; }
    /// Shares `given`, which may be null. False, and nothing is changed, when the extension stands
    /// in repositories that would become deeper than `kMaxDepth`.
    bool SetValue(const Value& given);

    [[nodiscard]] const cls_Uid& GetUid() const noexcept { return uid; }
    /// Makes it an object of its own: gives it a new identity.
    void NewUid() noexcept { uid = cls_Uid::AllocateUid(); }

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(10, 1); }
    /// Reads an extension from its record; new, owned by the caller. Archives hold extensions of
    /// every class as `mdl_Extension`: that is what a derived class's function returns a pointer
    /// to.
    static void* Ctor(cls_ReadVisitor& visitor);
    /// Destroys what a `Ctor` built; derived classes register it too.
    static void CowDtor(void* extension);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

    /// From the small cells of the allocator: archives may hold many extensions without content.
    static void* operator new(std::size_t bytes) { return mem_OperatorNewTinyThrow(bytes); }
    static void operator delete(void* storage, std::size_t bytes) noexcept {
        mem_OperatorDeleteTiny(storage, bytes);
    }

  protected:
    /// Selects the constructor that reads the base part of a derived class's record.
    struct BasePart {};
    mdl_Extension(BasePart, cls_ReadVisitor& record);
    /// Writes the base part of a derived class's record, first of all that it writes.
    void WriteBasePart(cls_WriteVisitor& record) const;

    /// Shares the value; the identity stays that of the target.
    mdl_Extension& operator=(const mdl_Extension& other) {
        value = other.value ? Held(*other.value) : nullptr;
        return *this;
    }
    /// What `Copy()` answers: a copy of `source` with its identity.
    template <class Derived>
    [[nodiscard]] static Derived* CopyWithUid(const Derived& source) {
        auto copy = std::make_unique<Derived>(source);
        static_cast<mdl_Extension&>(*copy).uid = source.GetUid();
        return copy.release();
    }

  private:
    friend class mdl_Repository;

    [[nodiscard]] static std::unique_ptr<Value> Held(const Value& handle) {
        return handle.HasValue() ? std::make_unique<Value>(handle) : nullptr;
    }

    std::unique_ptr<Value> value;  ///< null without a value
    cls_Uid uid = cls_Uid::AllocateUid();
    int levelsAbove = 0;  ///< repositories that this one was handed out of for writing
};

/// An extension of any class, shared until it is written, or null.
using mdl_ExtensionHandle = cow_ArrayCOW<mdl_Extension, cow_Virtual<mdl_Extension>>;
/// Extensions by name.
using mdl_ExtensionMap = cow_Map<cow_String, mdl_ExtensionHandle>;

/// Writes `extensions` as the collection field `field` (a map from strings to objects of the class
/// `mdl_Extension`) of the visited object, each with its identity. (One that has the identity of a
/// repository in which it stands goes without: it is not that object, which is not yet whole.)
KTSOVUGEOM_API void mdl_WriteExtensions(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                                        const mdl_ExtensionMap& extensions);
/// Reads the extensions in the collection field `field`. Those of one identity are shared; null
/// ones stay null. What references nest deeper than anything that can be built is left out, and
/// names in an order that no map has, and that would take too long, end the reading; each with a
/// line on standard error.
[[nodiscard]] KTSOVUGEOM_API mdl_ExtensionMap mdl_ReadExtensions(cls_ReadVisitor& visitor,
                                                                 const cls_FieldHandle& field);
