#include "host/model/hst_Classes.h"

#include "foundation/shared/cls_ModuleRegistration.h"
#include "host/model/hst_CheckRecord.h"
#include "host/model/hst_Part.h"

namespace {

constexpr typ_ArchRow kClasses[] = {
    {},
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "hst_Part"},         // 1
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "hst_CheckRecord"},  // 2
};

constexpr unsigned kAllFlags = 7;

constexpr cls_MetadataRow kMetadata[] = {
    {&hst_Part::InitializeMetadata, kAllFlags},
    {&hst_CheckRecord::InitializeMetadata, kAllFlags},
};

constexpr cls_ModuleRegistration kRegistration(hst_ARCH_COMPONENT,
                                               {kClasses, static_cast<int>(std::size(kClasses))},
                                               kMetadata);

}  // namespace

hst_ClassRegistration::hst_ClassRegistration() {
    kRegistration.InsertComponent();
    kRegistration.RegisterClasses();
}

hst_ClassRegistration::~hst_ClassRegistration() { kRegistration.Withdraw(); }
