#include "omu/omu_PrimList.h"

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

omu_PrimTuple ReadBase(cls_ReadVisitor& visitor) {
    const auto base = visitor.MakeBaseReadObj();
    return base ? omu_PrimTuple(*base) : omu_PrimTuple();
}

}  // namespace

omu_PrimList::omu_PrimList(cls_ReadVisitor& visitor)
    : omu_PrimTuple(omu_PrimTag::kList, ReadBase(visitor)) {}

// The copy is taken before anything moves, since the value may lie inside this list.
void omu_PrimList::Insert(int index, const omu_Primitive& value) { Insert(index, value.Copy()); }

void omu_PrimList::Insert(int index, omu_Primitive* adopted) {
    InsertElement(index, omu_PrimHandle(adopted));
}

void omu_PrimList::Set(int index, const omu_Primitive& value) { Set(index, value.Copy()); }

void omu_PrimList::Set(int index, omu_Primitive* adopted) {
    SetElement(index, omu_PrimHandle(adopted));
}

omu_PrimList* omu_PrimList::Slice(int first, int last) const {
    return new omu_PrimList(Elements().Slice(first, last));
}

omu_PrimList* omu_PrimList::Concat(const omu_PrimSequence& other) const {
    return new omu_PrimList(Joined(other));
}

omu_PrimList* omu_PrimList::Repeat(int count) const { return new omu_PrimList(Repeated(count)); }

cow_String omu_PrimList::TypeString() const { return "list"; }

void omu_PrimList::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimList* omu_PrimList::Copy() const { return new omu_PrimList(*this); }

std::uint32_t omu_PrimList::TypeId() const { return kTypeId; }

void omu_PrimList::DBWrite(cls_WriteVisitor& visitor) const {
    const auto base = visitor.MakeBaseWriteObj(omu_PrimTuple::kTypeId, cls_Uid());
    if (base) omu_PrimTuple::DBWrite(*base);
}

void omu_PrimList::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimList>("omu_PrimList", omu_PrimTuple::kTypeId));
}
