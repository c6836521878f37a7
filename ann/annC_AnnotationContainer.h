#pragma once

#include "ann/annC_MapString2AnnotationCow.h"
#include "mdl/mdl_Extension.h"

/// The annotations of one viewport under unique names, in drawing order: index 0 is the front one,
/// so a picture paints from the last to the first. An extension, which a model keeps.
///
/// A new annotation goes in front. Every change of membership or order is posted to the calling
/// thread's `omu_ChangeHistory`, so that the scripting view stays in step: replaying the tuples on
/// a list of names always gives `Keys()`. They are
///
///     ("Insert", name, 0)                a new annotation
///     ("Remove", name)
///     ("Rename", name, new name, index)
///     ("Remove", name), ("Insert", name, index)    a move
///
/// Kept: no tuple names its container, where one would have expected it once a thread has several;
/// a host follows the one of the viewport that its scripts work on.
///
/// Changing the fields of an annotation posts nothing. An operation that throws changes and posts
/// nothing. Names are any texts. Each annotation has an id, 1, 2, ... in the order of insertion,
/// which stays through renames, moves and replacement and is never given again; it is not archived.
///
/// A copy shares everything and costs a few increments; the copy constructor gives a new identity,
/// `Copy()` and assignment keep theirs. Names and ids that are not there are answered by false,
/// null, 0, -1 or "". One thread at a time.
class KTSOVUGEOM_API annC_AnnotationContainer final : public mdl_Extension {
  public:
    /// The kinds of changes. "Modify" is known to followers and is posted by none of these.
    static constexpr const char* kInsert = "Insert";
    static constexpr const char* kRemove = "Remove";
    static constexpr const char* kRename = "Rename";
    static constexpr const char* kModify = "Modify";

    annC_AnnotationContainer();
    /// Reads the record of a container and posts nothing. Names and annotations are paired as far
    /// as both reach; the first of a repeated name counts, and a name without an annotation is left
    /// out: each prints a line on standard error.
    explicit annC_AnnotationContainer(cls_ReadVisitor& visitor);
    annC_AnnotationContainer(const annC_AnnotationContainer&) = default;
    /// Posts the removal of all that was there, front first, then the insertions from the back to
    /// the front; the annotations get new ids. Nothing when both share one content.
    annC_AnnotationContainer& operator=(const annC_AnnotationContainer& other);
    ~annC_AnnotationContainer() override;

    /// Puts a copy of `annotation` in front under `name`; where the name is taken, in place of what
    /// it names, which keeps place and id, and nothing is posted.
    bool Insert(const cow_String& name, const annC_Annotation& annotation);
    /// The same with an annotation that is adopted, whatever comes of the call; false for null.
    bool Insert(const cow_String& name, annC_Annotation* adopted);
    bool Remove(const cow_String& name);
    /// Removes all, front first.
    void Clear();
    /// Gives the annotation `oldName` the name `newName`. False when there is none, or the name is
    /// that of another one; true, and nothing is posted, when they are the same.
    bool ChangeKey(const cow_String& oldName, const cow_String& newName);

    [[nodiscard]] bool IsMember(const cow_String& name) const { return GetId(name) != 0; }
    [[nodiscard]] int Size() const noexcept { return table->Size(); }
    /// The names in drawing order, and the place of one in it.
    [[nodiscard]] cow_List<cow_String> Keys() const;
    [[nodiscard]] int IndexOf(const cow_String& name) const;
    [[nodiscard]] int GetId(const cow_String& name) const { return table->GetId(name); }
    [[nodiscard]] cow_String GetName(int id) const;
    /// The annotation for reading, and for writing: the latter is private to this container until
    /// it is copied. Pointers are valid until the next call that is not const, or a copy.
    [[nodiscard]] const annC_Annotation* ConstGet(const cow_String& name) const;
    [[nodiscard]] const annC_Annotation* ConstGet(int id) const;
    [[nodiscard]] annC_Annotation* Get(const cow_String& name) { return Get(GetId(name)); }
    [[nodiscard]] annC_Annotation* Get(int id);

    /// Moves in the drawing order; false, and nothing is changed, when a name is not there. The
    /// move to the new index is posted.
    ///
    /// Kept: bringing the first one to the front, sending the last one to the back, and moving one
    /// before or after itself post the move to the same index, where one would have expected
    /// nothing; `BringForward` of the first and `SendBackward` of the last post nothing. Views
    /// redraw an annotation that is told to move.
    bool BringToFront(const cow_String& name);
    bool BringForward(const cow_String& name);
    bool SendBackward(const cow_String& name);
    bool SendToBack(const cow_String& name);
    bool MoveBefore(const cow_String& name, const cow_String& other);
    bool MoveAfter(const cow_String& name, const cow_String& other);

    /// Post a change that was made elsewhere; they change and check nothing. The index of a rename
    /// is that of `newName`.
    void PostDeltaInsert(const cow_String& name) const;
    void PostDeltaRemove(const cow_String& name) const;
    void PostDeltaRename(const cow_String& oldName, const cow_String& newName) const;
    void PostDeltaMove(const cow_String& name, int index) const;

    [[nodiscard]] annC_AnnotationContainer* Copy() const override;
    /// 848:3.
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept override;
    /// Writes the base part and, front to back, "names" and "annotations".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    /// An annotation and its anchors lie below the container.
    [[nodiscard]] int Depth() const override;

    /// Equal when equal annotations have the same names in the same order and the values of the
    /// extensions are equal; ids and identities play no part.
    [[nodiscard]] friend bool operator==(const annC_AnnotationContainer& a,
                                         const annC_AnnotationContainer& b) {
        return a.IsEqual(b);
    }

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(848, 3); }
    /// Reads a container from its record; a new `mdl_Extension`, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    friend class annC_AnnotationContainerIT;

    [[nodiscard]] bool IsEqual(const annC_AnnotationContainer& other) const;
    bool MoveTo(const cow_String& name, int from, int to);

    annC_MapString2AnnotationCow table;
};

/// Walks the annotations of a container front to back as they were at the construction, whatever
/// becomes of the container meanwhile; holds a copy, which costs an increment.
class KTSOVUGEOM_API annC_AnnotationContainerIT {
  public:
    explicit annC_AnnotationContainerIT(const annC_AnnotationContainer& container)
        : table(container.table) {}

    /// True past the last one.
    [[nodiscard]] bool IsDone() const noexcept { return index >= table->Size(); }
    /// Goes on to the next one; nothing once done.
    void Next() noexcept {
        if (!IsDone()) ++index;
    }
    /// The annotation at the position, its name and its id. REQUIRES: not `IsDone()`.
    [[nodiscard]] const annC_Annotation& CurrentValue() const { return *Current().annotation; }
    [[nodiscard]] const cow_String& CurrentKey() const { return Current().name; }
    [[nodiscard]] int CurrentId() const { return table->IdAt(index); }

  private:
    [[nodiscard]] const annC_PairStringAnnotation& Current() const {
        return *table->Find(CurrentId());
    }

    annC_MapString2AnnotationCow table;
    int index = 0;
};
