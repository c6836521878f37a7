#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/shared/bio_FilterState.h"
#include "foundation/shared/cls_ClassRegistrar.h"

/// The classes whose records have neither fixed block nor strings of their own: their bodies belong
/// to readers of theirs. The first has a body even where the registrar does not know it.
inline constexpr std::uint32_t idb_JAGGED_ARRAY_CLASS = 0x230005;
inline constexpr std::uint32_t idb_OWN_BODY_CLASSES[] = {idb_JAGGED_ARRAY_CLASS, 0x1A0001,
                                                         0x1A0007};
/// The class id of a null record.
inline constexpr std::uint32_t idb_NULL_CLASS = 1;
/// As expected class: a record of any class.
inline constexpr std::uint32_t idb_ANY_CLASS = 2;

[[nodiscard]] inline bool idb_HasOwnBody(std::uint32_t classId) noexcept {
    return std::ranges::find(idb_OWN_BODY_CLASSES, classId) != std::end(idb_OWN_BODY_CLASSES);
}

/// Where a record keeps a field.
enum class idb_StorageEnm : std::uint8_t { Nested, FourBytes, EightBytes, String };

/// A field's name, made quick to compare: names are short and are asked for over and over.
class idb_FieldName {
  public:
    /// Refers to the characters of `text`.
    explicit idb_FieldName(std::string_view text) noexcept : name(text), ends(EndsOf(text)) {}

    [[nodiscard]] std::string_view View() const noexcept { return name; }
    [[nodiscard]] bool Is(std::string_view text) const noexcept {
        return text.size() == name.size() && EndsOf(text) == ends &&
               (text.size() <= 8 ||
                std::memcmp(text.data() + 4, name.data() + 4, text.size() - 8) == 0);
    }

  private:
    /// The first and the last characters, up to four of each: all of a name of eight or less.
    static std::uint64_t EndsOf(std::string_view text) noexcept {
        if (text.size() >= 4) return Ends<std::uint32_t>(text);
        if (text.size() >= 2) return Ends<std::uint16_t>(text);
        return text.empty() ? 0 : static_cast<unsigned char>(text.front());
    }
    template <class Word>
    static std::uint64_t Ends(std::string_view text) noexcept {
        Word first;
        Word last;
        std::memcpy(&first, text.data(), sizeof first);
        std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
        return first | std::uint64_t{last} << 32;
    }

    std::string_view name;
    std::uint64_t ends;
};

struct idb_FieldLayout {
    idb_FieldName name;
    int kind;  ///< a `cls_KindEnm`
    std::uint32_t classId;
    cls_CollectionType collectionType;
    idb_StorageEnm storage;
    int place = 0;  ///< offset in the fixed block, or index among the strings
    /// The field that was asked for after this one last time, as a first guess.
    mutable const idb_FieldLayout* successor = nullptr;
};

/// Where the records of one class keep their fields: the fixed block holds the numbers in ascending
/// order of the field names, without padding; the strings follow in the order in which a
/// `cow_Map` with the names as keys, entered in ascending order, visits them.
///
/// Finding a field remembers what objects of the class ask for in turn, so a layout belongs to one
/// thread.
class idb_RecordLayout {
  public:
    explicit idb_RecordLayout(const cls_ClassMetadata& metadata);
    idb_RecordLayout(const idb_RecordLayout&) = delete;
    idb_RecordLayout& operator=(const idb_RecordLayout&) = delete;

    /// The field, or null.
    [[nodiscard]] const idb_FieldLayout* Find(std::string_view fieldName) const noexcept {
        const idb_FieldLayout* found = expected;
        if (!found || !found->name.Is(fieldName)) {
            found = Search(fieldName);
            if (!found) return nullptr;
        }
        lastFound = found;
        expected = found->successor;
        return found;
    }
    [[nodiscard]] std::size_t FixedSize() const noexcept { return fixedSize; }
    [[nodiscard]] std::size_t StringCount() const noexcept { return stringCount; }
    [[nodiscard]] cls_CollectionType CollectionType() const noexcept { return collectionType; }
    /// The function that builds an object of the class from its record, or null.
    [[nodiscard]] cls_CtorFunction Ctor() const noexcept { return ctor; }

  private:
    [[nodiscard]] const idb_FieldLayout* Search(std::string_view fieldName) const noexcept;

    /// What the fields' names are views of. Copies of their own: the metadata are everybody's, and
    /// sharing their strings would count in them.
    std::vector<std::string> names;
    std::vector<idb_FieldLayout> fields;
    mutable const idb_FieldLayout* lastFound = nullptr;
    mutable const idb_FieldLayout* expected = nullptr;  ///< its successor
    std::size_t fixedSize = 0;
    std::size_t stringCount = 0;
    cls_CollectionType collectionType;
    cls_CtorFunction ctor;
};

/// What the mementos of one stream keep with it: the layouts of the classes that occur, each worked
/// out once. A registrar's description of a class stays the same as long as a stream of it is
/// written or read.
class idb_StreamLayouts : public bio_FilterState {
  public:
    /// The layout of class `classId`, null when `registrar` does not know it. `state` belongs to
    /// the stream's filter; the layout lives as long.
    static const idb_RecordLayout* Find(std::unique_ptr<bio_FilterState>& state,
                                        const cls_ClassRegistrar& registrar, std::uint32_t classId);

    /// Starts the count of nested records anew, for an outermost record or collection.
    static void BeginRecords(std::unique_ptr<bio_FilterState>& state) { Of(state).records = 0; }
    /// Counts one more nested record and answers how many there are.
    [[nodiscard]] static std::int64_t CountRecord(std::unique_ptr<bio_FilterState>& state);

  private:
    static idb_StreamLayouts& Of(std::unique_ptr<bio_FilterState>& state);

    using Key = std::pair<const cls_ClassRegistrar*, std::uint32_t>;

    std::map<Key, std::unique_ptr<idb_RecordLayout>> layouts;
    Key lastKey;
    const idb_RecordLayout* last = nullptr;
    std::int64_t records = 0;
};
