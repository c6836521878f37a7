#include "g3d/KTSOvuG3d.h"

#include <iterator>

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_ModuleRegistration.h"
#include "foundation/shared/nex_CmdException.h"
#include "g3d/g3d_ColorMap.h"
#include "g3d/g3d_Point.h"
#include "g3d/g3d_Vector.h"

namespace {

constinit KTSBasUseCount useCount;

/// The class table of component 36. The colour error has a row and no metadata; the font error,
/// whose metadata this module registers, has its row in the table of the scripting object model.
constexpr typ_ArchRow kClasses[] = {
    {},                                                                          // row 0
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "g3d_Vector"},                         // 1
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "g3d_Point"},                          // 2
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "g3d_ColorErrorException"},  // 3
};
static_assert(std::size(kClasses) == 4);

constexpr cls_MetadataRow kMetadata[] = {
    {&nex_CmdException<cow_String, 7>::InitializeMetadata, 2},  // the font error
    {&g3d_Point::InitializeMetadata, 4},
    {&g3d_Vector::InitializeMetadata, 4},
};

constexpr cls_ModuleRegistration kRegistration(36,
                                               {kClasses, static_cast<int>(std::size(kClasses))},
                                               kMetadata);

}  // namespace

void KTSOvuG3d_initialize(int& count) {
    if (!useCount.Raise(count)) return;
    try {
        kRegistration.InsertComponent();
        kRegistration.RegisterClasses();
        static_cast<void>(g3d_ColorMap::Instance());
    } catch (...) {
        KTSOvuG3d_finalize(count);
        throw;
    }
}

void KTSOvuG3d_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    omi_SingletonBase<g3d_ColorMap>::Finalize();
    kRegistration.Withdraw();
}

typ_ArchCompEntry g3d_ArchEntry() { return kRegistration.Entry(); }
