#include "ann/annC_Anchor.h"

#include "foundation/shared/cls_ClassRegistrar.h"

annC_Anchor::~annC_Anchor() = default;

// Without a constructor function: a record that names the base itself yields no object.
void annC_Anchor::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(cls_ClassMetadata("annC_Anchor", kTypeId));
}
