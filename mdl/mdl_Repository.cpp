#include "mdl/mdl_Repository.h"

#include <algorithm>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "mdl/detail/mdl_OpenRecord.h"

namespace {

constexpr cls_FieldHandle kExtensions("_extensions");

}  // namespace

mdl_Repository::mdl_Repository(cls_ReadVisitor& visitor)
    : mdl_Extension(BasePart(), visitor), entries(mdl_ReadExtensions(visitor, kExtensions)) {
    for (const auto& [name, extension] : entries) {
        if (extension.IsNull()) continue;
        mayShare = mayShare || extension->GetUid().Number() <= highestUid;
        NoteUid(extension->GetUid());
        NoteDepth(0, extension->Depth());
    }
}

mdl_Repository::~mdl_Repository() = default;

mdl_Repository* mdl_Repository::Copy() const { return CopyWithUid(*this); }

std::uint32_t mdl_Repository::DynTypeId() const noexcept { return TypeId(); }

void mdl_Repository::DBWrite(cls_WriteVisitor& visitor) const {
    const mdl_OpenRecord open(GetUid());
    WriteBasePart(visitor);
    mdl_WriteExtensions(visitor, kExtensions, entries);
}

int mdl_Repository::Depth() const {
    Settle();
    if (!isDeepestExact) {
        int found = 0;
        for (const auto& [name, extension] : entries) {
            if (extension.HasValue()) found = std::max(found, extension->Depth());
        }
        deepest = found;
        isDeepestExact = true;
    }
    return std::max(1 + deepest, mdl_Extension::Depth());
}

cow_List<cow_String> mdl_Repository::Keys() const {
    return cow_MapUtils<cow_String, mdl_ExtensionHandle>::cow_Keys(entries);
}

const mdl_Extension* mdl_Repository::ConstGet(const cow_String& name) const noexcept {
    return entries.IsMember(name) ? entries.ConstGet(name).ConstGet() : nullptr;
}

mdl_Extension* mdl_Repository::Get(const cow_String& name) {
    Settle();
    const mdl_Extension* const before = ConstGet(name);
    if (!before) return nullptr;
    const int depth = before->Depth();
    mdl_Extension* const own = entries.Get(name).Get();
    if (own != before && mayShare && FindOther(name, own->GetUid())) own->NewUid();
    own->levelsAbove = levelsAbove + 1;
    handedOut = name;
    handedOutDepth = depth;
    isHandedOut = true;
    return own;
}

bool mdl_Repository::Insert(const cow_String& name, const mdl_ExtensionHandle& extension) {
    if (extension.HasValue() && StandsIn(*extension)) return false;
    const int depth = extension.HasValue() ? extension->Depth() : 0;
    if (levelsAbove + 1 + depth > kMaxDepth) return false;
    Settle();
    mdl_ExtensionHandle added = extension;
    bool isShared = false;
    if (extension.HasValue() && extension->GetUid().Number() <= highestUid) {
        const mdl_Extension* const other = FindOther(name, extension->GetUid());
        isShared = other == extension.ConstGet();
        if (other && !isShared) added.Get()->NewUid();
    }
    const int depthBefore = DepthOfEntry(name);
    entries.Insert(name, added);
    mayShare = mayShare || isShared;
    if (added.HasValue()) NoteUid(added->GetUid());
    NoteDepth(depthBefore, depth);
    return true;
}

bool mdl_Repository::Remove(const cow_String& name) {
    Settle();
    const int depth = DepthOfEntry(name);
    if (!entries.Remove(name)) return false;
    NoteDepth(depth, 0);
    return true;
}

void mdl_Repository::Clear() {
    entries.Clear();
    mayShare = false;
    highestUid = 0;
    deepest = 0;
    isDeepestExact = true;
    isHandedOut = false;
}

/// The extension of another entry than `name` that has `identity`, or null. All that have
/// it are one object.
const mdl_Extension* mdl_Repository::FindOther(const cow_String& name,
                                               const cls_Uid& identity) const {
    for (const auto& [otherName, other] : entries) {
        if (other.HasValue() && other->GetUid() == identity && otherName != name) {
            return other.ConstGet();
        }
    }
    return nullptr;
}

/// True when `extension` is this repository, or handed it out through those in between.
bool mdl_Repository::StandsIn(const mdl_Extension& extension) const noexcept {
    const mdl_Extension* outer = &extension;
    while (outer && outer != this) {
        const auto* const repository = dynamic_cast<const mdl_Repository*>(outer);
        outer = repository && repository->isHandedOut ? repository->ConstGet(repository->handedOut)
                                                      : nullptr;
    }
    return outer == this;
}

int mdl_Repository::DepthOfEntry(const cow_String& name) const {
    const mdl_Extension* const extension = ConstGet(name);
    return extension ? extension->Depth() : 0;
}

/// Looks again at the entry that was handed out: its depth and identity may have changed.
void mdl_Repository::Settle() const {
    if (!isHandedOut) return;
    const mdl_Extension& extension = *ConstGet(handedOut);
    NoteDepth(handedOutDepth, extension.Depth());
    NoteUid(extension.GetUid());
    isHandedOut = false;
}

void mdl_Repository::NoteUid(const cls_Uid& identity) const noexcept {
    highestUid = std::max(highestUid, identity.Number());
}

/// An entry of depth `before` became one of depth `now`; 0 stands for none.
void mdl_Repository::NoteDepth(int before, int now) const noexcept {
    if (now >= deepest) {
        deepest = now;
        isDeepestExact = true;
    } else if (before == deepest) {
        isDeepestExact = false;
    }
}

void* mdl_Repository::Ctor(cls_ReadVisitor& visitor) {
    return static_cast<mdl_Extension*>(new mdl_Repository(visitor));
}

void mdl_Repository::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("mdl_Repository", TypeId(), &Ctor, mdl_Extension::TypeId());
    metadata.SetCowDtor(&CowDtor).AddAttribute(kExtensions.Name(), cls_KIND_COLLECTION,
                                               mdl_Extension::TypeId(), cls_MAP_STRING_OBJ);
    registrar.AddClass(metadata);
}
