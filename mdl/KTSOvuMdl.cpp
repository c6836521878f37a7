#include "mdl/KTSOvuMdl.h"

#include <iterator>

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_ModuleRegistration.h"
#include "mdl/mdl_Model.h"
#include "mdl/mdl_PropAttr.h"
#include "mdl/mdl_PropertyTable.h"
#include "mdl/mdl_Repository.h"

namespace {

constinit KTSBasUseCount useCount;

/// The class table of component 10. Rows 2 to 12 are empty and stay so.
constexpr typ_ArchRow kClasses[] = {
    {},                                                      // row 0
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_Extension"},  // 1
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {typ_PERSISTENT_CLASS, typ_TypeId(10, 1), "mdl_Repository"},            // 13
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropertyTable"},             // 14
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropBool"},                  // 15
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropInt"},                   // 16
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropDouble"},                // 17
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropString"},                // 18
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropListInt"},               // 19
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropListString"},            // 20
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_Prop1DArrayInt"},            // 21
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_Prop1DArrayListFloat"},      // 22
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropList1DArrayListFloat"},  // 23
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropBoolArray"},             // 24
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropStringArray"},           // 25
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "mdl_PropDoubleArray"},           // 26
};
static_assert(std::size(kClasses) == 27);

/// The jagged array is class 35:5, beside the foundation's own array. Four of the attributes have
/// rows and describe their classes together with those of their values.
constexpr cls_MetadataRow kMetadata[] = {
    {&mdl_PropBool::InitializeMetadata, 7},
    {&mdl_PropInt::InitializeMetadata, 7},
    {&mdl_PropDouble::InitializeMetadata, 7},
    {&mdl_PropString::InitializeMetadata, 7},
    {&mdl_PropListInt::InitializeMetadata, 7},
    {&mdl_PropListString::InitializeMetadata, 7},
    {&mdl_Prop1DArrayInt::InitializeMetadata, 7},
    {&mdl_Prop1DArrayListFloat::InitializeMetadata, 7},
    {&mdl_Extension::InitializeMetadata, 7},
    {&mdl_Repository::InitializeMetadata, 7},
    {&mdl_PropertyTable::InitializeMetadata, 7},
    {&mdl_JaggedArray::InitializeMetadata, 4},
};

constexpr cls_ModuleRegistration kRegistration(10,
                                               {kClasses, static_cast<int>(std::size(kClasses))},
                                               kMetadata);

}  // namespace

void KTSOvuMdl_initialize(int& count) {
    if (!useCount.Raise(count)) return;
    try {
        kRegistration.InsertComponent();
        kRegistration.RegisterClasses();
        omu_RegisterEnumerations<mdl_Model::FormulationEnm, mdl_Model::RestartIncEnm,
                                 mdl_ModelTypeEnm>();
    } catch (...) {
        KTSOvuMdl_finalize(count);
        throw;
    }
}

void KTSOvuMdl_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    kRegistration.Withdraw();
}

typ_ArchCompEntry mdl_ArchEntry() { return kRegistration.Entry(); }
