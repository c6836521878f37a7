#include "ann/annC_AnnotationContainer.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "omu/omu_ChangeHistory.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimTuple.h"

namespace {

constexpr cls_FieldHandle kNames("names");
constexpr cls_FieldHandle kAnnotations("annotations");

using Container = annC_AnnotationContainer;

/// The tuples of one operation. On a thread that does not record there are none, and nothing is
/// posted, so that it gets no history of its own.
class Changes {
  public:
    void Insert(const cow_String& name, int index) { Add(Container::kInsert, name, index); }
    void Remove(const cow_String& name) { Add(Container::kRemove, name); }
    void Rename(const cow_String& oldName, const cow_String& newName, int index) {
        Add(Container::kRename, oldName, newName, index);
    }
    void Move(const cow_String& name, int index) {
        Remove(name);
        Insert(name, index);
    }
    void Post() const {
        if (isRecording) omu_ChangeHistory::Instance().addChanges(tuples);
    }
    /// Posts the tuples and makes the change that they tell of: both, or neither when it throws.
    template <class Change>
    void PostAnd(Change&& change) const {
        Post();
        try {
            change();
        } catch (...) {
            if (isRecording) omu_ChangeHistory::Instance().Withdraw(tuples.Length());
            throw;
        }
    }

  private:
    static omu_PrimHandle Item(const cow_String& text) {
        return omu_PrimHandle(new omu_PrimString(text));
    }
    static omu_PrimHandle Item(int number) { return omu_PrimHandle(new omu_PrimNumber(number)); }
    template <class... Items>
    void Add(const char* kind, const Items&... items) {
        if (!isRecording) return;
        const cow_List<omu_PrimHandle> all(Item(cow_String(kind)), Item(items)...);
        tuples.Append(omu_PrimHandle(new omu_PrimTuple(all)));
    }

    const bool isRecording = omu_ChangeHistory::IsRecordingHere();
    cow_List<omu_PrimHandle> tuples;
};

void PrintCount(const char* format, int count) {
    if (count > 0) std::fputs(atr(format, count).Characters(), stderr);
}

cow_List<cow_String> ReadNames(cls_ReadVisitor& visitor) {
    const auto body = visitor.MakeReadObj(kNames);
    const auto reader = body && body->HasValue() ? body->MakeReadListPrim(cow_String()) : nullptr;
    return reader ? reader->ConstGetList() : cow_List<cow_String>();
}

}  // namespace

annC_AnnotationContainer::annC_AnnotationContainer()
    : table(new annC_MapString2AnnotationCowImpl) {}

annC_AnnotationContainer::~annC_AnnotationContainer() = default;

// Archives.

annC_AnnotationContainer::annC_AnnotationContainer(cls_ReadVisitor& visitor)
    : mdl_Extension(BasePart(), visitor), table(new annC_MapString2AnnotationCowImpl) {
    const cow_List<cow_String> names = ReadNames(visitor);
    const auto body = visitor.MakeReadObj(kAnnotations);
    const auto reader = body && body->HasValue() ? body->MakeReadListObj() : nullptr;
    int repeated = 0;
    int missing = 0;
    for (const cow_String& name : names) {
        annC_AnnotationCow annotation;
        if (reader && reader->Next()) {
            void* const object = reader->ReadObjValue(annC_Annotation::kTypeId);
            annotation = annC_AnnotationCow(static_cast<annC_Annotation*>(object));
        }
        if (annotation.IsNull()) {
            ++missing;
        } else if (table->GetId(name) != 0) {
            ++repeated;
        } else {
            table.Get()->Append(name, annotation);
        }
    }
    PrintCount("Error reading annotations: %d names without one\n", missing);
    PrintCount("Error reading annotations: %d repeated names\n", repeated);
    PrintCount("Error reading annotations: %d without a name\n",
               reader ? reader->Size() - names.Length() : 0);
}

void annC_AnnotationContainer::DBWrite(cls_WriteVisitor& visitor) const {
    WriteBasePart(visitor);
    const annC_ListPairStringAnnotation pairs = table->Pairs();
    if (const auto body = visitor.MakeWriteObj(kNames, 0, cls_Uid())) {
        const auto writer = body->MakeWriteListPrim(cow_String(), 1);
        for (const auto& pair : pairs) writer->Write(pair.name);
    }
    if (const auto body = visitor.MakeWriteObj(kAnnotations, 0, cls_Uid())) {
        const auto writer = body->MakeWriteListObj(1);
        for (const auto& pair : pairs) {
            const annC_Annotation& annotation = *pair.annotation;
            const auto record = writer->MakeWriteObj(annotation.TypeId(), cls_Uid(), &annotation);
            if (record) annotation.DBWrite(*record);
        }
    }
}

std::uint32_t annC_AnnotationContainer::DynTypeId() const noexcept { return TypeId(); }

void* annC_AnnotationContainer::Ctor(cls_ReadVisitor& visitor) {
    return static_cast<mdl_Extension*>(new annC_AnnotationContainer(visitor));
}

void annC_AnnotationContainer::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("annC_AnnotationContainer", TypeId(), &Ctor,
                               mdl_Extension::TypeId());
    metadata.SetCowDtor(&CowDtor)
        .AddAttribute(kNames.Name(), cls_KIND_COLLECTION, 0, cls_LIST_STRING)
        .AddAttribute(kAnnotations.Name(), cls_KIND_COLLECTION, annC_Annotation::kTypeId,
                      cls_LIST_OBJ);
    registrar.AddClass(metadata);
}

int annC_AnnotationContainer::Depth() const {
    const int withAnchors = 3;
    return std::max(Size() > 0 ? withAnchors : 1, mdl_Extension::Depth());
}

// Copies and equality.

annC_AnnotationContainer* annC_AnnotationContainer::Copy() const { return CopyWithUid(*this); }

annC_AnnotationContainer& annC_AnnotationContainer::operator=(
    const annC_AnnotationContainer& other) {
    if (!table.Identical(other.table)) {
        const cow_List<cow_String> oldNames = Keys();
        const annC_ListPairStringAnnotation pairs = other.table->Pairs();
        annC_MapString2AnnotationCowImpl changed = *table;
        Changes changes;
        for (const cow_String& name : oldNames) changes.Remove(name);
        changed.Clear();
        for (int i = pairs.Length() - 1; i >= 0; --i) {
            changed.InsertFront(pairs[i].name, pairs[i].annotation);
            changes.Insert(pairs[i].name, 0);
        }
        const annC_MapString2AnnotationCow next(new annC_MapString2AnnotationCowImpl(changed));
        changes.PostAnd([&] {
            mdl_Extension::operator=(other);
            table = next;
        });
        return *this;
    }
    mdl_Extension::operator=(other);
    return *this;
}

bool annC_AnnotationContainer::IsEqual(const annC_AnnotationContainer& other) const {
    const omu_Primitive* const own = ConstGetValue();
    const omu_Primitive* const others = other.ConstGetValue();
    if (own && others ? *own != *others : own != others) return false;
    const annC_ListPairStringAnnotation pairs = table->Pairs();
    const annC_ListPairStringAnnotation otherPairs = other.table->Pairs();
    return std::equal(pairs.begin(), pairs.end(), otherPairs.begin(), otherPairs.end(),
                      [](const auto& a, const auto& b) {
                          return a.name == b.name && *a.annotation == *b.annotation;
                      });
}

// Access.

cow_List<cow_String> annC_AnnotationContainer::Keys() const {
    auto names = cow_List<cow_String>::WithSizeHint(Size());
    for (const auto& pair : table->Pairs()) names.Append(pair.name);
    return names;
}

int annC_AnnotationContainer::IndexOf(const cow_String& name) const {
    const int id = GetId(name);
    return id == 0 ? -1 : table->IndexOf(id);
}

cow_String annC_AnnotationContainer::GetName(int id) const {
    const auto* const pair = table->Find(id);
    return pair ? pair->name : cow_String();
}

const annC_Annotation* annC_AnnotationContainer::ConstGet(const cow_String& name) const {
    return ConstGet(GetId(name));
}

const annC_Annotation* annC_AnnotationContainer::ConstGet(int id) const {
    const auto* const pair = table->Find(id);
    return pair ? pair->annotation.ConstGet() : nullptr;
}

annC_Annotation* annC_AnnotationContainer::Get(int id) {
    return table->Find(id) ? table.Get()->Get(id).Get() : nullptr;
}

// Membership.

bool annC_AnnotationContainer::Insert(const cow_String& name, const annC_Annotation& annotation) {
    return Insert(name, annotation.Copy());
}

bool annC_AnnotationContainer::Insert(const cow_String& name, annC_Annotation* adopted) {
    const annC_AnnotationCow annotation(adopted);
    if (!adopted) return false;
    if (const int id = GetId(name)) {
        table.Get()->Get(id) = annotation;
        return true;
    }
    Changes changes;
    changes.Insert(name, 0);
    changes.PostAnd([&] { table.Get()->InsertFront(name, annotation); });
    return true;
}

bool annC_AnnotationContainer::Remove(const cow_String& name) {
    const int id = GetId(name);
    if (id == 0) return false;
    Changes changes;
    changes.Remove(name);
    changes.PostAnd([&] { table.Get()->Remove(id); });
    return true;
}

void annC_AnnotationContainer::Clear() {
    Changes changes;
    for (const cow_String& name : Keys()) changes.Remove(name);
    changes.PostAnd([this] { table.Get()->Clear(); });
}

bool annC_AnnotationContainer::ChangeKey(const cow_String& oldName, const cow_String& newName) {
    const int id = GetId(oldName);
    if (id == 0) return false;
    if (oldName == newName) return true;
    if (IsMember(newName)) return false;
    Changes changes;
    changes.Rename(oldName, newName, table->IndexOf(id));
    changes.PostAnd([&] { table.Get()->Rename(id, newName); });
    return true;
}

// Order.

bool annC_AnnotationContainer::MoveTo(const cow_String& name, int from, int to) {
    Changes changes;
    changes.Move(name, to);
    changes.PostAnd([&] {
        if (from != to) table.Get()->Move(from, to);
    });
    return true;
}

bool annC_AnnotationContainer::BringToFront(const cow_String& name) {
    const int index = IndexOf(name);
    return index >= 0 && MoveTo(name, index, 0);
}

bool annC_AnnotationContainer::BringForward(const cow_String& name) {
    const int index = IndexOf(name);
    return index == 0 || (index > 0 && MoveTo(name, index, index - 1));
}

bool annC_AnnotationContainer::SendBackward(const cow_String& name) {
    const int index = IndexOf(name);
    if (index < 0) return false;
    return index == Size() - 1 || MoveTo(name, index, index + 1);
}

bool annC_AnnotationContainer::SendToBack(const cow_String& name) {
    const int index = IndexOf(name);
    return index >= 0 && MoveTo(name, index, Size() - 1);
}

// One that comes from above leaves a gap that the others close, so its new index is one less.

bool annC_AnnotationContainer::MoveBefore(const cow_String& name, const cow_String& other) {
    const int from = IndexOf(name);
    const int place = IndexOf(other);
    if (from < 0 || place < 0) return false;
    return MoveTo(name, from, from < place ? place - 1 : place);
}

bool annC_AnnotationContainer::MoveAfter(const cow_String& name, const cow_String& other) {
    const int from = IndexOf(name);
    const int place = IndexOf(other);
    if (from < 0 || place < 0) return false;
    return MoveTo(name, from, from <= place ? place : place + 1);
}

// Posting alone.

void annC_AnnotationContainer::PostDeltaInsert(const cow_String& name) const {
    Changes changes;
    changes.Insert(name, 0);
    changes.Post();
}

void annC_AnnotationContainer::PostDeltaRemove(const cow_String& name) const {
    Changes changes;
    changes.Remove(name);
    changes.Post();
}

void annC_AnnotationContainer::PostDeltaRename(const cow_String& oldName,
                                               const cow_String& newName) const {
    Changes changes;
    changes.Rename(oldName, newName, IndexOf(newName));
    changes.Post();
}

void annC_AnnotationContainer::PostDeltaMove(const cow_String& name, int index) const {
    Changes changes;
    changes.Move(name, index);
    changes.Post();
}
