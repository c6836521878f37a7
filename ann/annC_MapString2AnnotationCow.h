#pragma once

#include <cstdint>

#include "ann/annC_Annotation.h"
#include "cow/cow_List.h"
#include "cow/cow_Map.h"
#include "foundation/coreutils/cow_String.h"

/// A name and its annotation.
struct annC_PairStringAnnotation {
    cow_String name;
    annC_AnnotationCow annotation;
};

/// Names and their annotations in drawing order, the front one first.
using annC_ListPairStringAnnotation = cow_List<annC_PairStringAnnotation>;

/// Annotations by name and in drawing order, the front one first. Each has an id: 1, 2, ... in the
/// order of insertion, which it keeps whatever its name, place or value becomes and which no other
/// one gets after it.
///
/// A copy costs a few increments. Finding an entry by name compares one name or few, however many
/// there are; by id it halves the entries; its place in the order is searched for among numbers. An
/// insertion in front is amortised O(1), the other changes copy a sixteenth of the table. Ids and
/// indices that are passed in are those of entries. What throws leaves the table as it was.
class KTSOVUGEOM_API annC_MapString2AnnotationCowImpl {
  public:
    annC_MapString2AnnotationCowImpl() = default;

    [[nodiscard]] int Size() const noexcept { return order.Length(); }
    /// The id of `name`; 0 when there is none.
    [[nodiscard]] int GetId(const cow_String& name) const;
    /// The entry with this id; null when there is none. Valid until the table is changed.
    [[nodiscard]] const annC_PairStringAnnotation* Find(int id) const;
    /// The place of entry `id` in the drawing order; -1 when there is none.
    [[nodiscard]] int IndexOf(int id) const { return order.FindMember(id); }
    [[nodiscard]] int IdAt(int index) const { return order.ConstGet(index); }
    /// All entries in drawing order.
    [[nodiscard]] annC_ListPairStringAnnotation Pairs() const;
    /// Number of names that `GetId(name)` compares, for tests and diagnosis.
    [[nodiscard]] int NamesCompared(const cow_String& name) const;

    /// Adds an entry with a new id in front of or behind all others; `name` is not there yet and
    /// `annotation` not null. After 2^31 - 1 insertions it throws `std::length_error`.
    void InsertFront(const cow_String& name, const annC_AnnotationCow& annotation);
    void Append(const cow_String& name, const annC_AnnotationCow& annotation);
    /// The annotation of entry `id` for writing; private to this table until the next copy.
    [[nodiscard]] annC_AnnotationCow& Get(int id);
    /// Gives entry `id` the name `name`, which is not there yet.
    void Rename(int id, const cow_String& name);
    /// Moves the entry at `from` so that its place is `to`.
    void Move(int from, int to);
    void Remove(int id);
    /// Removes all entries; their ids are not given again.
    void Clear();

  private:
    /// Entries whose names have the same hash form a chain by their ids. One that was removed has
    /// no annotation and stands in no chain.
    struct Entry : annC_PairStringAnnotation {
        int id = 0;
        int next = 0;  ///< id of the next one in the chain; 0: none
    };

    [[nodiscard]] int SlotOf(int id) const;
    [[nodiscard]] int FirstOf(int hash) const;
    template <class Place, class Unplace>
    void Add(const cow_String& name, const annC_AnnotationCow& annotation, Place place,
             Unplace unplace);
    void Link(int id);
    void Unlink(int id);
    void DropRemoved();

    cow_List<Entry> entries;    ///< by ascending id
    cow_List<int> order;        ///< ids in drawing order
    cow_Map<int, int> firstOf;  ///< by the hash of names: the id that begins the chain
    int lastId = 0;
};

/// The table, shared by its holders until one of them changes it; never null in a container.
using annC_MapString2AnnotationCow = cow_COW<annC_MapString2AnnotationCowImpl>;
