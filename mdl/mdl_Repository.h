#pragma once

#include <cstdint>

#include "mdl/mdl_Extension.h"

/// Extensions by name, itself an extension, so that repositories nest.
///
/// A copy shares all entries and costs a few increments; changing it copies what lies on the way.
/// Names may stand for nothing (a null handle). An entry is changed in place through `Get`, and
/// only its own repository knows how deep it stands: no more than `kMaxDepth` repositories and
/// containers of values are ever nested in each other by `Insert`, so that whatever was built can
/// be walked, archived and destroyed.
///
/// Entries of one identity are one object: where a changed copy would come to stand beside its
/// original, it gets a new identity.
class KTSOVUGEOM_API mdl_Repository : public mdl_Extension {
  public:
    /// No entries, no value.
    mdl_Repository() = default;
    /// Reads the record of a repository, with a new identity.
    explicit mdl_Repository(cls_ReadVisitor& visitor);
    /// Shares the value and the entries, under a new identity.
    mdl_Repository(const mdl_Repository&) = default;
    /// (Changed by its operations alone: an assignment could put a repository into itself.)
    mdl_Repository& operator=(const mdl_Repository&) = delete;

    ~mdl_Repository() override;
    [[nodiscard]] mdl_Repository* Copy() const override;
    /// 10:13.
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept override;
    /// Writes the base part and "_extensions".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    /// 1 and the depth of the deepest entry, or of the value when that is deeper. Ends the use of
    /// the pointer that `Get` gave last.
    [[nodiscard]] int Depth() const override;

    /// Number of names.
    [[nodiscard]] int Size() const noexcept { return entries.Size(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return entries.IsEmpty(); }
    [[nodiscard]] bool IsMember(const cow_String& name) const noexcept {
        return entries.IsMember(name);
    }
    /// The names in the order of the map.
    [[nodiscard]] cow_List<cow_String> Keys() const;
    /// The extension of `name`; null when there is none.
    [[nodiscard]] const mdl_Extension* ConstGet(const cow_String& name) const noexcept;
    /// The extension of `name` for writing, private to this entry from now on; null when there is
    /// none. When that takes a copy of what another entry of this repository goes on sharing, the
    /// copy gets a new identity. The pointer may be used until the repository is changed, copied,
    /// inserted somewhere, destroyed, or asked for another entry or its depth.
    [[nodiscard]] mdl_Extension* Get(const cow_String& name);

    /// Puts `extension`, which may be null, under `name`, in place of what was there. When another
    /// entry is a different object with the same identity, a copy with a new identity is put in.
    /// False, and nothing is changed, when more than `kMaxDepth` levels would be nested, and when
    /// `extension` is this repository or one in which it stands.
    bool Insert(const cow_String& name, const mdl_ExtensionHandle& extension);
    /// Removes the entry; false when `name` is absent.
    bool Remove(const cow_String& name);
    void Clear();

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(10, 13); }
    /// Reads a repository from its record; new, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    [[nodiscard]] const mdl_Extension* FindOther(const cow_String& name,
                                                 const cls_Uid& identity) const;
    [[nodiscard]] bool StandsIn(const mdl_Extension& extension) const noexcept;
    [[nodiscard]] int DepthOfEntry(const cow_String& name) const;
    void Settle() const;
    void NoteUid(const cls_Uid& identity) const noexcept;
    void NoteDepth(int before, int now) const noexcept;

    mdl_ExtensionMap entries;
    bool mayShare = false;  ///< two entries may hold one object

    // What is known of the entries. An entry that was handed out is looked at again when it counts.
    mutable std::uint64_t highestUid = 0;  ///< no entry's identity has a higher number
    mutable int deepest = 0;               ///< no entry is deeper
    mutable bool isDeepestExact = true;
    mutable bool isHandedOut = false;
    mutable int handedOutDepth = 0;
    cow_String handedOut;
};
