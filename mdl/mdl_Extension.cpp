#include "mdl/mdl_Extension.h"

#include <cstdint>
#include <cstdio>
#include <deque>

#include "cow/cow_MapLoader.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "mdl/detail/mdl_OpenRecord.h"

namespace {

constexpr cls_FieldHandle kValue("_value");

/// Steps that entries in another order than a map's own may take, each and in all.
constexpr std::int64_t kStepsPerEntry = 1024;
constexpr std::int64_t kStepsFree = 1 << 20;

/// Of an extension that stands by itself, with the deepest value there is.
constexpr int kDeepestBuilt = 1 + mdl_Extension::kMaxDepth;

mdl_Extension::Value ReadValue(cls_ReadVisitor& visitor) {
    return cls_ReadCow<mdl_Extension::Value, omu_Primitive>(visitor, kValue,
                                                            omu_Primitive::kTypeId);
}

int DepthOf(const omu_Primitive* value) { return value ? value->Nesting().depth : 0; }

struct Entry {
    cow_String name;
    mdl_ExtensionHandle extension;
};

std::deque<Entry> ReadEntries(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    std::deque<Entry> entries;
    const auto body = visitor.MakeReadObj(field);
    const auto reader = body ? body->MakeReadMapString2Obj() : nullptr;
    constexpr cls_CowAdopt adopt = &cls_AdoptCow<mdl_ExtensionHandle, mdl_Extension>;
    int tooDeep = 0;
    while (reader && reader->Next()) {
        const auto extension =
            cls_HandleOf<mdl_ExtensionHandle>(reader->ReadObjCow(mdl_Extension::TypeId(), adopt));
        // Records nest only so deep, but a reference may stand for an object of any depth.
        if (extension.HasValue() && extension->Depth() > kDeepestBuilt) {
            ++tooDeep;
        } else {
            entries.push_back({reader->Key(), extension});
        }
    }
    if (tooDeep > 0) {
        std::fputs(atr("Error reading extensions: %d nested too deep\n", tooDeep).Characters(),
                   stderr);
    }
    return entries;
}

}  // namespace

mdl_Extension::mdl_Extension(cls_ReadVisitor& visitor) : value(Held(ReadValue(visitor))) {}

mdl_Extension::mdl_Extension(BasePart, cls_ReadVisitor& record) {
    if (const auto base = record.MakeBaseReadObj()) value = Held(ReadValue(*base));
}

mdl_Extension::~mdl_Extension() = default;

mdl_Extension* mdl_Extension::Copy() const { return CopyWithUid(*this); }

std::uint32_t mdl_Extension::DynTypeId() const noexcept { return TypeId(); }

void mdl_Extension::DBWrite(cls_WriteVisitor& visitor) const {
    cls_WriteCow(visitor, kValue, value ? *value : Value());
}

void mdl_Extension::WriteBasePart(cls_WriteVisitor& record) const {
    if (const auto base = record.MakeBaseWriteObj(TypeId(), cls_Uid())) {
        mdl_Extension::DBWrite(*base);
    }
}

int mdl_Extension::Depth() const { return 1 + DepthOf(ConstGetValue()); }

bool mdl_Extension::SetValue(const Value& given) {
    if (levelsAbove > 0 && levelsAbove + 1 + DepthOf(given.ConstGet()) > kMaxDepth) return false;
    value = Held(given);
    return true;
}

void* mdl_Extension::Ctor(cls_ReadVisitor& visitor) { return new mdl_Extension(visitor); }

void mdl_Extension::CowDtor(void* extension) { delete static_cast<mdl_Extension*>(extension); }

void mdl_Extension::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("mdl_Extension", TypeId(), &Ctor);
    metadata.SetCowDtor(&CowDtor).AddAttribute(kValue.Name(), cls_KIND_OBJ_POINTER,
                                               omu_Primitive::kTypeId);
    registrar.AddClass(metadata);
}

void mdl_WriteExtensions(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                         const mdl_ExtensionMap& extensions) {
    const auto body = visitor.MakeWriteObj(field, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteMapString2Obj(1) : nullptr;
    if (!writer) return;
    for (const auto& [name, extension] : extensions) {
        if (extension.IsNull()) {
            writer->WriteNullObj(name);
            continue;
        }
        const cls_Uid& uid = extension->GetUid();
        const auto record = writer->MakeWriteObj(name, extension->DynTypeId(),
                                                 mdl_OpenRecord::IsOpen(uid) ? cls_Uid() : uid,
                                                 extension.ConstGet());
        if (record) extension->DBWrite(*record);
    }
}

mdl_ExtensionMap mdl_ReadExtensions(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    // What the reader holds is gone before the map takes its place, and the entries go one by one.
    std::deque<Entry> entries = ReadEntries(visitor, field);
    cow_MapLoader<cow_String, mdl_ExtensionHandle> loader(
        static_cast<std::int64_t>(entries.size()) * kStepsPerEntry + kStepsFree);
    for (; !entries.empty(); entries.pop_front()) {
        if (loader.Insert(entries.front().name, entries.front().extension)) continue;
        std::fputs("Error reading extensions: names out of a map's order\n", stderr);
        break;
    }
    return loader.Take();
}
