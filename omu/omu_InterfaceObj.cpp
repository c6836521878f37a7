#include "omu/omu_InterfaceObj.h"

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

cow_String omu_InterfaceObj::AsString(int) const { return atr("%s object", TypeString()); }

void omu_InterfaceObj::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

std::uint32_t omu_InterfaceObj::TypeId() const { return kTypeId; }

void omu_InterfaceObj::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        cls_ClassMetadata("omu_InterfaceObj", kTypeId, nullptr, omu_Primitive::kTypeId));
}
