#include "gsl/KTSOvuGsl.h"

#include <iterator>

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_ModuleRegistration.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_Dot.h"
#include "gsl/gsl_ModelSegment.h"
#include "gsl/gsl_ObjArrays.h"
#include "gsl/gsl_PersistentMatrix.h"
#include "gsl/gsl_PersistentVector.h"
#include "gsl/gsl_Plane.h"
#include "gsl/gsl_Point.h"
#include "gsl/gsl_Segment.h"
#include "gsl/gsl_StLine.h"
#include "gsl/gsl_Util.h"

namespace {

constinit KTSBasUseCount useCount;

/// The class table of component 778. `gsl_ArrayPoint` and `gsl_ModelSegmentArray` have rows and no
/// metadata; the arrays of planes, lines and dots are `gsl_PlaneArray`, `gsl_LineArray` and
/// `gsl_DotArray`.
constexpr typ_ArchRow kClasses[] = {
    {},                                                              // row 0
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_Point"},              // 1
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_Matrix"},             // 2
    {typ_PERSISTENT_CLASS, typ_TypeId(778, 1), "gsl_Vector"},        // 3
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_Plane"},              // 4
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_Dot"},                // 5
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_StLine"},             // 6
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_BBox"},               // 7
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_Segment"},            // 8
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_ArrayPoint"},         // 9
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_LineArray"},          // 10
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_ModelSegment"},       // 11
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_ModelSegmentArray"},  // 12
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_PlaneArray"},         // 13
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "gsl_DotArray"},           // 14
};
static_assert(std::size(kClasses) == 15);

constexpr cls_MetadataRow kMetadata[] = {
    {&gsl_BBox::InitializeMetadata, 3},
    {&gsl_ModelSegment::InitializeMetadata, 7},
    {&gsl_Plane::InitializeMetadata, 3},
    {&gsl_PlaneArray::InitializeMetadata, 3},
    {&gsl_Point::InitializeMetadata, 7},
    {&gsl_Segment::InitializeMetadata, 3},
    {&gsl_StLine::InitializeMetadata, 3},
    {&gsl_LineArray::InitializeMetadata, 3},
    {&gsl_PersistentVector::InitializeMetadata, 7},
    {&gsl_Dot::InitializeMetadata, 7},
    {&gsl_DotArray::InitializeMetadata, 3},
    {&gsl_PersistentMatrix::InitializeMetadata, 7},
};

constexpr cls_ModuleRegistration kRegistration(778,
                                               {kClasses, static_cast<int>(std::size(kClasses))},
                                               kMetadata);

}  // namespace

void KTSOvuGsl_initialize(int& count) {
    if (!useCount.Raise(count)) return;
    try {
        kRegistration.InsertComponent();
        static_cast<void>(gsl_Util::Instance());
        kRegistration.RegisterClasses();
    } catch (...) {
        KTSOvuGsl_finalize(count);
        throw;
    }
}

void KTSOvuGsl_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    kRegistration.Withdraw();
    omi_SingletonBase<gsl_Util>::Finalize();
}

typ_ArchCompEntry gsl_ArchEntry() { return kRegistration.Entry(); }
