#include "ann/annC_MapString2AnnotationCow.h"

#include <climits>
#include <random>
#include <stdexcept>

namespace {

/// FNV-1a from a start that differs from process to process: no file can be made whose names all
/// have one hash.
int HashOf(const cow_String& name) {
    static const std::uint64_t start = [] {
        std::random_device random;
        return (std::uint64_t{random()} << 32 | random()) ^ 0xCBF29CE484222325u;
    }();
    std::uint64_t hash = start;
    for (const char c : name.View()) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    }
    return static_cast<int>(static_cast<std::uint32_t>(hash >> 32 ^ hash));
}

}  // namespace

/// The index of entry `id` among the entries; -1 when there is none.
int annC_MapString2AnnotationCowImpl::SlotOf(int id) const {
    int first = 0;
    for (int count = entries.Length(); count > 0;) {
        const int half = count / 2;
        if (entries.UncheckedConstGet(first + half).id < id) {
            first += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    if (first == entries.Length()) return -1;
    const Entry& found = entries.UncheckedConstGet(first);
    return found.id == id && found.annotation.HasValue() ? first : -1;
}

int annC_MapString2AnnotationCowImpl::FirstOf(int hash) const {
    return firstOf.IsMember(hash) ? firstOf.ConstGet(hash) : 0;
}

int annC_MapString2AnnotationCowImpl::GetId(const cow_String& name) const {
    int id = FirstOf(HashOf(name));
    while (id != 0) {
        const Entry& entry = entries.ConstGet(SlotOf(id));
        if (entry.name == name) break;
        id = entry.next;
    }
    return id;
}

int annC_MapString2AnnotationCowImpl::NamesCompared(const cow_String& name) const {
    int compared = 0;
    for (int id = FirstOf(HashOf(name)); id != 0;) {
        ++compared;
        const Entry& entry = entries.ConstGet(SlotOf(id));
        id = entry.name == name ? 0 : entry.next;
    }
    return compared;
}

const annC_PairStringAnnotation* annC_MapString2AnnotationCowImpl::Find(int id) const {
    const int slot = SlotOf(id);
    return slot < 0 ? nullptr : &entries.ConstGet(slot);
}

annC_ListPairStringAnnotation annC_MapString2AnnotationCowImpl::Pairs() const {
    auto pairs = annC_ListPairStringAnnotation::WithSizeHint(Size());
    for (const int id : order) pairs.Append(*Find(id));
    return pairs;
}

annC_AnnotationCow& annC_MapString2AnnotationCowImpl::Get(int id) {
    return entries.Get(SlotOf(id)).annotation;
}

void annC_MapString2AnnotationCowImpl::InsertFront(const cow_String& name,
                                                   const annC_AnnotationCow& annotation) {
    Add(
        name, annotation, [this](int id) { order.Prepend(id); }, [this] { order.RemoveFirst(); });
}

void annC_MapString2AnnotationCowImpl::Append(const cow_String& name,
                                              const annC_AnnotationCow& annotation) {
    Add(
        name, annotation, [this](int id) { order.Append(id); }, [this] { order.RemoveLast(); });
}

// Undoing an addition frees what it has just made and so cannot fail.
template <class Place, class Unplace>
void annC_MapString2AnnotationCowImpl::Add(const cow_String& name,
                                           const annC_AnnotationCow& annotation, Place place,
                                           Unplace unplace) {
    if (lastId == INT_MAX) throw std::length_error("annotations");
    if (entries.Length() > 2 * Size()) DropRemoved();
    const int id = lastId + 1;
    entries.Append({{name, annotation}, id, 0});
    try {
        place(id);
        try {
            Link(id);
        } catch (...) {
            unplace();
            throw;
        }
    } catch (...) {
        entries.RemoveLast();
        throw;
    }
    lastId = id;
}

void annC_MapString2AnnotationCowImpl::DropRemoved() {
    cow_List<Entry> kept;
    for (const Entry& entry : entries) {
        if (entry.annotation.HasValue()) kept.Append(entry);
    }
    entries = kept;
}

void annC_MapString2AnnotationCowImpl::Link(int id) {
    Entry& entry = entries.Get(SlotOf(id));
    const int hash = HashOf(entry.name);
    entry.next = FirstOf(hash);
    firstOf.Insert(hash, id);
}

void annC_MapString2AnnotationCowImpl::Unlink(int id) {
    const Entry& entry = entries.ConstGet(SlotOf(id));
    const int next = entry.next;
    const int hash = HashOf(entry.name);
    if (const int first = FirstOf(hash); first != id) {
        int before = SlotOf(first);
        while (entries.ConstGet(before).next != id) before = SlotOf(entries.ConstGet(before).next);
        entries.Get(before).next = next;
    } else if (next != 0) {
        firstOf.Insert(hash, next);
    } else {
        firstOf.Remove(hash);
    }
}

void annC_MapString2AnnotationCowImpl::Rename(int id, const cow_String& name) {
    annC_MapString2AnnotationCowImpl renamed(*this);
    renamed.Unlink(id);
    renamed.entries.Get(SlotOf(id)).name = name;
    renamed.Link(id);
    *this = renamed;
}

void annC_MapString2AnnotationCowImpl::Move(int from, int to) {
    cow_List<int> moved = order;
    moved.RemoveIndex(from);
    moved.InsertIndex(to, order.ConstGet(from));
    order = moved;
}

// All that can fail comes first.
void annC_MapString2AnnotationCowImpl::Remove(int id) {
    const annC_AnnotationCow none;
    cow_List<int> others = order;
    others.RemoveIndex(IndexOf(id));
    Entry& entry = entries.Get(SlotOf(id));
    Unlink(id);
    entry.name = cow_String();
    entry.annotation = none;
    order = others;
}

void annC_MapString2AnnotationCowImpl::Clear() {
    annC_MapString2AnnotationCowImpl empty;
    empty.lastId = lastId;
    *this = empty;
}
