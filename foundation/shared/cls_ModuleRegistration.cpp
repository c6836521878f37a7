#include "foundation/shared/cls_ModuleRegistration.h"

void cls_ModuleRegistration::InsertComponent() const {
    typ_ArchCompTable::InsertEntry(component, entry);
}

void cls_ModuleRegistration::RegisterClasses() const {
    for (const cls_MetadataRow& row : rows) {
        omi_Singleton<cls_MetadataRegistrar>::Instance().initClassMetadata(row.function, row.flags);
    }
}

void cls_ModuleRegistration::Withdraw() const noexcept {
    if (omi_Singleton<cls_MetadataRegistrar>::Exists()) {
        cls_MetadataRegistrar& registrar = omi_Singleton<cls_MetadataRegistrar>::Instance();
        for (const cls_MetadataRow& row : rows) registrar.withdrawClassMetadata(row.function);
    }
    typ_ArchCompTable::WithdrawEntry(component);
}
