#include "idb/detail/idb_RecordLayout.h"

#include <algorithm>

#include "cow/cow_Map.h"

namespace {

idb_StorageEnm StorageOf(int kind) noexcept {
    switch (kind) {
        case cls_KIND_BOOL:
        case cls_KIND_CHAR:
        case cls_KIND_UNSIGNED_CHAR:
        case cls_KIND_SHORT:
        case cls_KIND_INT:
        case cls_KIND_UNSIGNED_INT:
        case cls_KIND_FLOAT:
        case cls_KIND_UNSIGNED_SHORT:
            return idb_StorageEnm::FourBytes;
        case cls_KIND_DOUBLE:
            return idb_StorageEnm::EightBytes;
        case cls_KIND_STRING:
        case cls_KIND_TRANSLATED_STRING:
        case cls_KIND_ENUM:
            return idb_StorageEnm::String;
        default:
            return idb_StorageEnm::Nested;
    }
}

}  // namespace

idb_RecordLayout::idb_RecordLayout(const cls_ClassMetadata& metadata)
    : collectionType(metadata.CollectionType()), ctor(metadata.Ctor()) {
    cow_Map<cow_String, int> strings;  // name to index among the fields
    names.reserve(metadata.Attributes().size());
    for (const cls_AttributeMetadata& attribute : metadata.Attributes()) {
        names.emplace_back(attribute.name.View());
        idb_FieldLayout field{idb_FieldName(names.back()), attribute.kind, attribute.classId,
                              attribute.collectionType, StorageOf(attribute.kind)};
        if (field.storage == idb_StorageEnm::String) {
            strings.Insert(field.name.View(), static_cast<int>(fields.size()));
        } else if (field.storage != idb_StorageEnm::Nested) {
            field.place = static_cast<int>(fixedSize);
            fixedSize += field.storage == idb_StorageEnm::FourBytes ? 4 : 8;
        }
        fields.push_back(field);
    }
    for (const auto& [name, index] : strings) {
        fields[static_cast<std::size_t>(index)].place = static_cast<int>(stringCount++);
    }
}

const idb_FieldLayout* idb_RecordLayout::Search(std::string_view fieldName) const noexcept {
    const auto nameOf = [](const idb_FieldLayout& field) { return field.name.View(); };
    const auto found = std::ranges::lower_bound(fields, fieldName, {}, nameOf);
    if (found == fields.end() || !found->name.Is(fieldName)) return nullptr;
    if (lastFound) lastFound->successor = &*found;
    return &*found;
}

// The mementos are the only users of the filters' state.
idb_StreamLayouts& idb_StreamLayouts::Of(std::unique_ptr<bio_FilterState>& state) {
    if (!state) state = std::make_unique<idb_StreamLayouts>();
    return static_cast<idb_StreamLayouts&>(*state);
}

std::int64_t idb_StreamLayouts::CountRecord(std::unique_ptr<bio_FilterState>& state) {
    return ++Of(state).records;
}

const idb_RecordLayout* idb_StreamLayouts::Find(std::unique_ptr<bio_FilterState>& state,
                                                const cls_ClassRegistrar& registrar,
                                                std::uint32_t classId) {
    idb_StreamLayouts& self = Of(state);
    const Key key(&registrar, classId);
    if (self.last && self.lastKey == key) return self.last;
    auto known = self.layouts.find(key);
    if (known == self.layouts.end()) {
        const cls_ClassMetadata* const metadata = registrar.Find(classId);
        if (!metadata) return nullptr;
        known = self.layouts.emplace(key, std::make_unique<idb_RecordLayout>(*metadata)).first;
    }
    self.last = known->second.get();
    self.lastKey = key;
    return self.last;
}
