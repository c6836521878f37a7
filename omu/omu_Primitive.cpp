#include "omu/omu_Primitive.h"

#include "omu/omu_PrimArchive.h"

omu_Primitive::~omu_Primitive() = default;

cow_String omu_Primitive::TypeString() const { return "primitive"; }

cow_String omu_Primitive::AsRepr() const { return AsString(0); }

std::uint32_t omu_Primitive::TypeId() const { return kTypeId; }

void omu_Primitive::DBWrite(cls_WriteVisitor&) const {}

omu_PrimNesting omu_Primitive::Nesting() const noexcept { return {}; }

bool omu_Primitive::IsA(unsigned classId) const {
    return omi_Singleton<cls_MetadataRegistrar>::Instance().ClassRegistrar().IsKindOf(TypeId(),
                                                                                      classId);
}

void omu_Primitive::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(cls_ClassMetadata("omu_Primitive", kTypeId));
}

std::unique_ptr<omu_Primitive> omu_ReadElement(cls_ReadObjCollection& reader) {
    return std::unique_ptr<omu_Primitive>(
        static_cast<omu_Primitive*>(reader.ReadObjValue(omu_Primitive::kTypeId)));
}

void omu_DeletePrimitive(void* primitive) { delete static_cast<omu_Primitive*>(primitive); }
