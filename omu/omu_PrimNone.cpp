#include "omu/omu_PrimNone.h"

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

omu_PrimNone::omu_PrimNone(cls_ReadVisitor&) : omu_PrimNone() {}

cow_String omu_PrimNone::AsString(int) const { return "None"; }

bool omu_PrimNone::operator==(const omu_Primitive& other) const { return other.IsType(Type()); }

void omu_PrimNone::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimNone* omu_PrimNone::Copy() const { return new omu_PrimNone(*this); }

std::uint32_t omu_PrimNone::TypeId() const { return kTypeId; }

void omu_PrimNone::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimNone>("omu_PrimNone"));
}
