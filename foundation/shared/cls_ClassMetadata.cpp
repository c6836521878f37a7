#include "foundation/shared/cls_ClassMetadata.h"

#include <algorithm>

namespace {

template <class Attributes>
auto LowerBound(Attributes& attributes, std::string_view fieldName) {
    return std::lower_bound(attributes.begin(), attributes.end(), fieldName,
                            [](const cls_AttributeMetadata& attribute, std::string_view name) {
                                return attribute.name.View() < name;
                            });
}

}  // namespace

cls_ClassMetadata::cls_ClassMetadata(std::string_view className, std::uint32_t id,
                                     cls_CtorFunction ctorFunction, std::uint32_t parent,
                                     cls_CollectionType type)
    : name(className), typeId(id), parentId(parent), collectionType(type), ctor(ctorFunction) {}

cls_ClassMetadata& cls_ClassMetadata::AddAttribute(std::string_view fieldName, int kind,
                                                   std::uint32_t classId, cls_CollectionType type) {
    cls_AttributeMetadata attribute{fieldName, kind, classId, type};
    const auto at = LowerBound(attributes, fieldName);
    if (at != attributes.end() && at->name.View() == fieldName) {
        *at = attribute;
    } else {
        attributes.insert(at, attribute);
    }
    return *this;
}

cls_ClassMetadata& cls_ClassMetadata::SetCowDtor(cls_CowDtorFunction function) {
    cowDtor = function;
    return *this;
}

cls_ClassMetadata& cls_ClassMetadata::SetParentInRecordsOnly() noexcept {
    hasParentInRecordsOnly = true;
    return *this;
}

const cls_AttributeMetadata* cls_ClassMetadata::FindAttribute(
    std::string_view fieldName) const noexcept {
    const auto at = LowerBound(attributes, fieldName);
    return at != attributes.end() && at->name.View() == fieldName ? &*at : nullptr;
}
