#include "foundation/coreutils/omi_Singleton.h"

#include <cstring>
#include <new>

#include "foundation/alloc/mem_Alloc.h"

namespace {

/// An entry of the registry. The name follows it in the same block: the registering library's own
/// text goes away with that library.
struct Entry {
    Entry* next;
    void* instance;

    const char* Name() const noexcept { return reinterpret_cast<const char*>(this + 1); }
};

constinit Entry* entries = nullptr;

/// The link that holds the entry of `typeName`, or the null link at the end.
Entry** FindLink(const char* typeName) noexcept {
    Entry** link = &entries;
    while (*link && std::strcmp((*link)->Name(), typeName) != 0) link = &(*link)->next;
    return link;
}

}  // namespace

void* omi_SingletonRegistry::Find(const char* typeName) noexcept {
    const Entry* entry = *FindLink(typeName);
    return entry ? entry->instance : nullptr;
}

void* omi_SingletonRegistry::Register(const char* typeName, void* instance) {
    Entry** link = FindLink(typeName);
    if (*link) return (*link)->instance;
    const std::size_t nameBytes = std::strlen(typeName) + 1;
    void* const block = mem_Malloc(sizeof(Entry) + nameBytes);
    std::memcpy(static_cast<char*>(block) + sizeof(Entry), typeName, nameBytes);
    *link = new (block) Entry{nullptr, instance};
    return instance;
}

void* omi_SingletonRegistry::Remove(const char* typeName) noexcept {
    Entry** link = FindLink(typeName);
    Entry* const entry = *link;
    if (!entry) return nullptr;
    void* const instance = entry->instance;
    *link = entry->next;
    mem_Free(entry);
    return instance;
}

int omi_SingletonRegistry::Size() noexcept {
    int size = 0;
    for (const Entry* entry = entries; entry; entry = entry->next) ++size;
    return size;
}
