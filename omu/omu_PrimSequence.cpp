#include "omu/omu_PrimSequence.h"

#include "foundation/shared/cls_ClassRegistrar.h"

cow_String omu_PrimSequence::TypeString() const { return "PrimSequence"; }

void omu_PrimSequence::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        cls_ClassMetadata("omu_PrimSequence", kTypeId, nullptr, omu_Primitive::kTypeId));
}
