#include "foundation/shared/cls_ClassRegistrar.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>

#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/detail/cls_DescribeFoundation.h"

constinit cls_MetadataRegistrar* cls_MetadataRegistrar::singleton = nullptr;

/// The nodes of a map keep their place, so the names can be keyed by views into them.
struct cls_ClassRegistrar::Classes {
    std::unordered_map<std::uint32_t, cls_ClassMetadata> byId;
    std::unordered_map<std::string_view, const cls_ClassMetadata*> byName;
};

cls_ClassRegistrar::cls_ClassRegistrar() : classes(std::make_unique<Classes>()) {}

cls_ClassRegistrar::~cls_ClassRegistrar() = default;

void cls_ClassRegistrar::AddClass(const cls_ClassMetadata& metadata) {
    cls_ClassMetadata copy = metadata;
    WithdrawClass(copy.TypeId());
    const std::uint32_t typeId = copy.TypeId();
    const auto added = classes->byId.emplace(typeId, std::move(copy)).first;
    // An older class of the same name goes out with its key, which is a view into that class.
    classes->byName.erase(added->second.Name().View());
    try {
        classes->byName.emplace(added->second.Name().View(), &added->second);
    } catch (...) {
        classes->byId.erase(added);
        throw;
    }
}

void cls_ClassRegistrar::WithdrawClass(std::uint32_t typeId) noexcept {
    const auto found = classes->byId.find(typeId);
    if (found == classes->byId.end()) return;
    const auto named = classes->byName.find(found->second.Name().View());
    if (named != classes->byName.end() && named->second == &found->second) {
        classes->byName.erase(named);
    }
    classes->byId.erase(found);
}

void cls_ClassRegistrar::Clear() noexcept {
    classes->byName.clear();
    classes->byId.clear();
}

const cls_ClassMetadata* cls_ClassRegistrar::Find(std::uint32_t typeId) const noexcept {
    const auto found = classes->byId.find(typeId);
    return found == classes->byId.end() ? nullptr : &found->second;
}

const cls_ClassMetadata* cls_ClassRegistrar::Find(std::string_view className) const noexcept {
    const auto found = classes->byName.find(className);
    return found == classes->byName.end() ? nullptr : found->second;
}

bool cls_ClassRegistrar::Inherits(std::uint32_t typeId, std::uint32_t ancestor) const noexcept {
    // A chain without a circle visits every class at most once.
    for (std::size_t steps = classes->byId.size() + 1; steps > 0; --steps) {
        if (typeId == ancestor) return true;
        const cls_ClassMetadata* metadata = Find(typeId);
        if (!metadata || metadata->ParentId() == 0) return false;
        typeId = metadata->ParentId();
    }
    return false;
}

bool cls_ClassRegistrar::IsKindOf(std::uint32_t typeId, std::uint32_t ancestor) const noexcept {
    return Inherits(typeId, ancestor) || typ_ArchCompTable::IsParent(ancestor, typeId);
}

bool cls_ClassRegistrar::IsObjectOf(std::uint32_t typeId, std::uint32_t ancestor) const noexcept {
    const bool inherits = Inherits(typeId, ancestor);
    if (!inherits && !typ_ArchCompTable::IsParent(ancestor, typeId)) return false;
    while (typeId != ancestor) {
        const cls_ClassMetadata* metadata = Find(typeId);
        if (metadata && metadata->HasParentInRecordsOnly()) return false;
        typeId = inherits ? metadata->ParentId() : typ_ArchCompTable::Parent(typeId);
    }
    return true;
}

void cls_ClassRegistrar::DeleteCow(std::uint32_t typeId, void* object) const {
    const cls_ClassMetadata* metadata = Find(typeId);
    if (metadata && metadata->CowDtor()) {
        metadata->CowDtor()(object);
        return;
    }
    const cow_String name = metadata ? metadata->Name() : typ_ArchCompTable::Name(typeId);
    const cow_String line =
        atr_translate("Warning: objectCOW dtor not defined in ddbAPI metadata for: %s\n", name);
    std::fputs(line.Characters(), stderr);
}

struct cls_MetadataRegistrar::Registration {
    cls_InitializeMetadataFunction function;
    unsigned flags;
    bool described;
};

cls_MetadataRegistrar::cls_MetadataRegistrar() = default;

cls_MetadataRegistrar::~cls_MetadataRegistrar() = default;

void cls_MetadataRegistrar::initClassMetadata(cls_InitializeMetadataFunction function,
                                              unsigned flags) {
    const bool known = std::any_of(
        registrations.begin(), registrations.end(), [&](const Registration& registration) {
            return registration.function == function && registration.flags == flags;
        });
    if (known) return;
    registrations.push_back({function, flags, false});
    allDescribed = false;
}

void cls_MetadataRegistrar::withdrawClassMetadata(
    cls_InitializeMetadataFunction function) noexcept {
    const auto removed = std::erase_if(registrations, [function](const Registration& registration) {
        return registration.function == function;
    });
    if (removed == 0) return;
    // Several functions may describe one class, so what stays is described anew when it is needed.
    registrar.Clear();
    for (Registration& registration : registrations) registration.described = false;
    allDescribed = false;
}

const cls_ClassRegistrar& cls_MetadataRegistrar::ClassRegistrar() {
    if (!allDescribed) Describe();
    return registrar;
}

void cls_MetadataRegistrar::Describe() {
    if (!registrar.Find(cls_2D_ARRAY_CLASS)) cls_DescribeFoundation(registrar);
    // By index: a function may itself register further ones, or ask for the registrar.
    for (std::size_t i = 0; i < registrations.size(); ++i) {
        if (registrations[i].described) continue;
        registrations[i].described = true;
        try {
            registrations[i].function(registrar);
        } catch (...) {
            registrations[i].described = false;
            throw;
        }
    }
    allDescribed = true;
}

unsigned cls_MetadataRegistrar::Flags(cls_InitializeMetadataFunction function) const noexcept {
    for (const Registration& registration : registrations) {
        if (registration.function == function) return registration.flags;
    }
    return 0;
}

int cls_MetadataRegistrar::Size() const noexcept { return static_cast<int>(registrations.size()); }
