#pragma once

#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "cow/cow_COW.h"
#include "cow/cow_List.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimVisitor.h"

/// The base of the dictionaries, tag `{`: primitives under keys, in the order in which the keys
/// were first put in.
class KTSOVUGEOM_API omu_PrimDictionaryBase : public omu_Primitive {
  public:
    [[nodiscard]] virtual int Length() const noexcept = 0;
    [[nodiscard]] bool IsEmpty() const noexcept { return Length() == 0; }
    /// The value of the entry at `index`. REQUIRES: 0 <= `index` < `Length()`.
    [[nodiscard]] virtual const omu_Primitive& ConstGetValue(int index) const noexcept = 0;
    /// The key of the entry at `index` as scripts show it: a number, or a quoted text. REQUIRES as
    /// `ConstGetValue`.
    [[nodiscard]] virtual cow_String KeyText(int index) const = 0;

    /// "dictionary".
    [[nodiscard]] cow_String TypeString() const override;
    /// "{'a': 1, 'b': 2}", each value by its `AsString`. A text of 2 GiB or more throws
    /// `std::length_error`.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] omu_PrimDictionaryBase* Copy() const override = 0;

    /// 19:18.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 18);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    omu_PrimDictionaryBase() noexcept : omu_Primitive(omu_PrimTag::kDictionary) {}

    [[nodiscard]] static cow_String TextOf(int key);
    [[nodiscard]] static cow_String TextOf(const cow_String& key);
    /// Refuses a null value with `omu_GenericTypeErrorException`.
    static void RequireValue(const omu_Primitive* value);
};

/// What archives know of the two dictionaries.
template <class Key>
struct omu_PrimDictionaryTraits;
template <>
struct omu_PrimDictionaryTraits<cow_String> {
    static constexpr const char* kClassName = "omu_PrimDictionary";
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 40);
    static constexpr cls_CollectionType kCollection = cls_MAP_STRING_OBJ;
};
template <>
struct omu_PrimDictionaryTraits<int> {
    static constexpr const char* kClassName = "omu_PrimIntDictionary";
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 41);
    static constexpr cls_CollectionType kCollection = cls_MAP_INT_OBJ;
};

/// A dictionary with keys of type `Key`, `int` or `cow_String`.
///
/// Entries stand in the order in which their keys were first put in, which is also that of the
/// text, the archive and the keyword arguments of a call. Looking a key up costs one hash in a
/// dictionary of more than a few entries; removing one moves those behind it. A copy costs an
/// increment and shares all entries until one of both is written. Values are shared between
/// dictionaries and only read.
///
/// Two dictionaries are equal when they have the same keys with equal values, in whatever order.
template <class Key>
class omu_PrimDictionary : public omu_PrimDictionaryBase {
    using Traits = omu_PrimDictionaryTraits<Key>;

  public:
    /// The empty dictionary.
    omu_PrimDictionary() : entries(new Entries) {}
    /// Reads the record of a dictionary. A null value becomes `None`; nesting beyond what is
    /// allowed raises `omu_ValueErrorException`.
    explicit omu_PrimDictionary(cls_ReadVisitor& visitor);

    [[nodiscard]] int Length() const noexcept override {
        return static_cast<int>(entries->list.size());
    }
    [[nodiscard]] bool IsMember(const Key& key) const { return entries->IndexOf(key) >= 0; }
    /// The index of the entry with this key; -1 when it is absent.
    [[nodiscard]] int IndexOf(const Key& key) const { return entries->IndexOf(key); }
    /// The value of `key`, null when it is absent; valid until the dictionary is written.
    [[nodiscard]] const omu_Primitive* Find(const Key& key) const {
        const int index = entries->IndexOf(key);
        return index < 0 ? nullptr : entries->At(index).value.ConstGet();
    }
    /// The key of the entry at `index`. REQUIRES: 0 <= `index` < `Length()`.
    [[nodiscard]] const Key& ConstGetKey(int index) const noexcept {
        return entries->At(index).key;
    }
    [[nodiscard]] const omu_Primitive& ConstGetValue(int index) const noexcept override {
        return *entries->At(index).value.ConstGet();
    }
    [[nodiscard]] cow_String KeyText(int index) const override {
        return TextOf(ConstGetKey(index));
    }
    /// The keys in order.
    [[nodiscard]] cow_List<Key> Keys() const;

    /// Puts a copy of `value` under `key`; a key that is there keeps its place. Nesting beyond what
    /// is allowed raises `omu_ValueErrorException` and changes nothing.
    void Insert(const Key& key, const omu_Primitive& value) {
        Put(key, omu_PrimHandle(value.Copy()));
    }
    /// As above with a value that the dictionary takes over, also when it raises. Null raises
    /// `omu_GenericTypeErrorException`.
    void Insert(const Key& key, omu_Primitive* adopted) {
        RequireValue(adopted);
        Put(key, omu_PrimHandle(adopted));
    }
    /// Removes the entry; false when the key is absent.
    bool Remove(const Key& key);
    void Clear() { entries = new Entries; }

    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override { visitor->Visit(*this); }
    [[nodiscard]] omu_PrimDictionary* Copy() const override {
        return new omu_PrimDictionary(*this);
    }
    [[nodiscard]] std::uint32_t TypeId() const override { return kTypeId; }
    [[nodiscard]] omu_PrimNesting Nesting() const noexcept override { return entries->nesting; }
    /// Writes "_entries", a map of objects in the order of the dictionary.
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:40 with text keys, 19:41 with integers.
    static constexpr std::uint32_t kTypeId = Traits::kTypeId;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    static constexpr cls_FieldHandle kEntries{"_entries"};

    struct Entry {
        Key key;
        omu_PrimHandle value;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept {
            if constexpr (std::is_same_v<Key, cow_String>) {
                return std::hash<std::string_view>()(key.View());
            } else {
                return std::hash<Key>()(key);
            }
        }
    };

    /// The entries and, beyond a few, where each key stands.
    struct Entries {
        static constexpr std::size_t kFew = 8;

        [[nodiscard]] const Entry& At(int position) const noexcept {
            return list[static_cast<std::size_t>(position)];
        }
        [[nodiscard]] int IndexOf(const Key& key) const;
        void Append(const Key& key, const omu_PrimHandle& value);
        void Remove(int position) noexcept;
        [[nodiscard]] omu_PrimNesting Counted() const noexcept;

        std::vector<Entry> list;
        std::unordered_map<Key, int, KeyHash> index;  ///< empty up to `kFew` entries
        omu_PrimNesting nesting = omu_PrimNesting::OfEmptyContainer();
    };

    void Put(const Key& key, const omu_PrimHandle& value);

    cow_COW<Entries> entries;
};

using omu_PrimIntDictionary = omu_PrimDictionary<int>;
using omu_PrimStringDictionary = omu_PrimDictionary<cow_String>;

template <class Key>
int omu_PrimDictionary<Key>::Entries::IndexOf(const Key& key) const {
    if (index.empty()) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (list[i].key == key) return static_cast<int>(i);
        }
        return -1;
    }
    const auto found = index.find(key);
    return found == index.end() ? -1 : found->second;
}

template <class Key>
void omu_PrimDictionary<Key>::Entries::Append(const Key& key, const omu_PrimHandle& value) {
    if (list.empty()) list.reserve(kFew / 2);
    list.push_back({key, value});
    try {
        if (list.size() > kFew) {
            for (std::size_t i = index.size(); i < list.size(); ++i) {
                index.emplace(list[i].key, static_cast<int>(i));
            }
        }
    } catch (...) {
        list.pop_back();
        if (list.size() == kFew) index.clear();
        throw;
    }
}

template <class Key>
void omu_PrimDictionary<Key>::Entries::Remove(int position) noexcept {
    index.erase(At(position).key);
    list.erase(list.begin() + position);
    if (list.size() <= kFew) index.clear();
    for (auto& [key, place] : index) {
        if (place > position) --place;
    }
}

template <class Key>
omu_PrimNesting omu_PrimDictionary<Key>::Entries::Counted() const noexcept {
    omu_PrimNesting counted = omu_PrimNesting::OfEmptyContainer();
    for (const Entry& entry : list) counted = counted.With(entry.value->Nesting());
    return counted;
}

template <class Key>
cow_List<Key> omu_PrimDictionary<Key>::Keys() const {
    cow_List<Key> keys = cow_List<Key>::WithSizeHint(Length());
    for (const Entry& entry : entries->list) keys.Append(entry.key);
    return keys;
}

// Where a deepest value gives way to a shallower one, the depth is counted anew; else the change is
// enough.
template <class Key>
void omu_PrimDictionary<Key>::Put(const Key& key, const omu_PrimHandle& value) {
    const int index = entries->IndexOf(key);
    omu_PrimNesting nesting = entries->nesting.With(value->Nesting());
    if (index < 0) {
        nesting.Require();
        entries.Get()->Append(key, value);
        entries.Get()->nesting = nesting;
        return;
    }
    const omu_PrimNesting before = entries->At(index).value->Nesting();
    nesting.nodes -= before.nodes;
    nesting.Require();
    Entries& own = *entries.Get();
    own.list[static_cast<std::size_t>(index)].value = value;
    const bool mayBeShallower =
        before.depth + 1 == nesting.depth && value->Nesting().depth < before.depth;
    own.nesting = mayBeShallower ? own.Counted() : nesting;
}

template <class Key>
bool omu_PrimDictionary<Key>::Remove(const Key& key) {
    const int index = entries->IndexOf(key);
    if (index < 0) return false;
    Entries& own = *entries.Get();
    own.Remove(index);
    own.nesting = own.Counted();
    return true;
}

template <class Key>
bool omu_PrimDictionary<Key>::operator==(const omu_Primitive& other) const {
    const auto* dictionary = dynamic_cast<const omu_PrimDictionary*>(&other);
    if (!dictionary || Length() != dictionary->Length()) return false;
    for (const Entry& entry : entries->list) {
        const omu_Primitive* const match = dictionary->Find(entry.key);
        if (!match || *entry.value != *match) return false;
    }
    return true;
}

template <class Key>
omu_PrimDictionary<Key>::omu_PrimDictionary(cls_ReadVisitor& visitor) : omu_PrimDictionary() {
    const auto body = visitor.MakeReadObj(kEntries);
    if (!body) return;
    const auto read = [this](const auto& reader) {
        while (reader && reader->Next()) {
            std::unique_ptr<omu_Primitive> value = omu_ReadElement(*reader);
            if (value) {
                this->Insert(reader->Key(), value.release());
            } else {
                this->Insert(reader->Key(), omu_PrimNone());
            }
        }
    };
    if constexpr (std::is_same_v<Key, cow_String>) {
        read(body->MakeReadMapString2Obj());
    } else {
        read(body->MakeReadMapInt2Obj());
    }
}

template <class Key>
void omu_PrimDictionary<Key>::DBWrite(cls_WriteVisitor& visitor) const {
    const auto body = visitor.MakeWriteObj(kEntries, 0, cls_Uid());
    if (!body) return;
    const auto write = [this](const auto& writer) {
        if (!writer) return;
        for (const Entry& entry : entries->list) {
            const omu_Primitive& value = *entry.value;
            const auto record = writer->MakeWriteObj(entry.key, value.TypeId(), cls_Uid(), &value);
            if (record) value.DBWrite(*record);
        }
    };
    if constexpr (std::is_same_v<Key, cow_String>) {
        write(body->MakeWriteMapString2Obj(1));
    } else {
        write(body->MakeWriteMapInt2Obj(1));
    }
}

template <class Key>
void omu_PrimDictionary<Key>::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        omu_MetadataOf<omu_PrimDictionary>(Traits::kClassName, omu_PrimDictionaryBase::kTypeId)
            .AddAttribute(kEntries.Name(), cls_KIND_COLLECTION, 0, Traits::kCollection));
}
