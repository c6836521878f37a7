#include "host/model/hst_CheckRecord.h"

#include <cmath>
#include <utility>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "host/model/hst_Classes.h"

namespace {

constexpr cls_FieldHandle kGap("_gap");
constexpr cls_FieldHandle kTouch("_touch");
constexpr cls_FieldHandle kSeconds("_seconds");
constexpr cls_FieldHandle kPairsChecked("_pairsChecked");
constexpr cls_FieldHandle kParts("_parts");
constexpr cls_FieldHandle kFlat("_flat");
constexpr cls_FieldHandle kUnclear("_unclear");

template <class Names>
void WriteNames(cls_WriteVisitor& visitor, const cls_FieldHandle& field, const Names& names) {
    const auto record = visitor.MakeWriteObj(field, 0, cls_Uid());
    if (!record) return;
    if (const auto list = record->MakeWriteListPrim(cow_String(), 1)) {
        for (const std::string& name : names) list->Write(cow_String(name));
    }
}

std::vector<std::string> ReadNames(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    std::vector<std::string> names;
    const auto record = visitor.MakeReadObj(field);
    const auto list = record ? record->MakeReadListPrim(cow_String()) : nullptr;
    while (list && list->Next()) names.emplace_back(list->Read().View());
    return names;
}

bool IsLength(double value) noexcept { return std::isfinite(value) && value >= 0; }

}  // namespace

hst_CheckRecord::hst_CheckRecord(cls_ReadVisitor& visitor) {
    visitor.Read(kGap, gap);
    visitor.Read(kTouch, touch);
    visitor.Read(kSeconds, seconds);
    visitor.Read(kPairsChecked, pairsChecked);
    parts = ReadNames(visitor, kParts);
    for (std::string& name : ReadNames(visitor, kFlat)) flat.insert(std::move(name));
    for (std::string& name : ReadNames(visitor, kUnclear)) unclear.insert(std::move(name));
}

bool hst_CheckRecord::IsSound() const noexcept {
    return IsLength(gap) && IsLength(touch) && IsLength(seconds);
}

std::uint32_t hst_CheckRecord::TypeId() noexcept { return hst_CHECK_CLASS; }

void* hst_CheckRecord::Ctor(cls_ReadVisitor& visitor) { return new hst_CheckRecord(visitor); }

void hst_CheckRecord::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kGap, gap);
    visitor.Write(kTouch, touch);
    visitor.Write(kSeconds, seconds);
    visitor.Write(kPairsChecked, pairsChecked);
    WriteNames(visitor, kParts, parts);
    WriteNames(visitor, kFlat, flat);
    WriteNames(visitor, kUnclear, unclear);
}

void hst_CheckRecord::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("hst_CheckRecord", TypeId(), &hst_CheckRecord::Ctor);
    metadata.SetCowDtor([](void* object) { delete static_cast<hst_CheckRecord*>(object); })
        .AddAttribute(kGap.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kTouch.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kSeconds.Name(), cls_KIND_DOUBLE)
        .AddAttribute(kPairsChecked.Name(), cls_KIND_UNSIGNED_INT)
        .AddAttribute(kParts.Name(), cls_KIND_COLLECTION, 0, cls_LIST_STRING)
        .AddAttribute(kFlat.Name(), cls_KIND_COLLECTION, 0, cls_LIST_STRING)
        .AddAttribute(kUnclear.Name(), cls_KIND_COLLECTION, 0, cls_LIST_STRING);
    registrar.AddClass(metadata);
}
