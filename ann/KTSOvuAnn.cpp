#include "ann/KTSOvuAnn.h"

#include <iterator>

#include "ann/annC_AnnotationClient.h"
#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_Enumerations.h"
#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_Text.h"
#include "ann/annC_ViewportAnchor.h"
#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_ModuleRegistration.h"

namespace {

constinit KTSBasUseCount useCount;

/// The class table of component 848. The container takes the place of an extension of the model.
constexpr typ_ArchRow kClasses[] = {
    {},                                                                     // row 0
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "annC_Anchor"},                   // 1
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "annC_Annotation"},               // 2
    {typ_PERSISTENT_CLASS, typ_TypeId(10, 1), "annC_AnnotationContainer"},  // 3
    {typ_PERSISTENT_CLASS, typ_TypeId(848, 1), "annC_NamedAnchor"},         // 4
    {typ_PERSISTENT_CLASS, typ_TypeId(848, 2), "annC_Text"},                // 5
    {typ_PERSISTENT_CLASS, typ_TypeId(848, 2), "annC_Arrow"},               // 6
    {typ_PERSISTENT_CLASS, typ_TypeId(848, 1), "annC_ViewportAnchor"},      // 7
    {typ_PERSISTENT_CLASS, typ_TypeId(848, 1), "annC_Point3DAnchor"},       // 8
};
static_assert(std::size(kClasses) == 9);

constexpr cls_MetadataRow kMetadata[] = {
    {&annC_Annotation::InitializeMetadata, 7},
    {&annC_ViewportAnchor::InitializeMetadata, 7},
    {&annC_Arrow::InitializeMetadata, 7},
    {&annC_NamedAnchor::InitializeMetadata, 7},
    {&annC_Point3DAnchor::InitializeMetadata, 7},
    {&annC_Anchor::InitializeMetadata, 7},
    {&annC_Text::InitializeMetadata, 7},
    {&annC_AnnotationContainer::InitializeMetadata, 1},
};

constexpr cls_ModuleRegistration kRegistration(848,
                                               {kClasses, static_cast<int>(std::size(kClasses))},
                                               kMetadata);

}  // namespace

void KTSOvuAnn_initialize(int& count) {
    if (!useCount.Raise(count)) return;
    try {
        kRegistration.InsertComponent();
        kRegistration.RegisterClasses();
        omu_RegisterEnumerations<annC_ArrowHeadStyleEnm, annC_BackgroundStyleEnm,
                                 annC_JustificationEnm, annC_LineStyleEnm, annC_LineThicknessEnm,
                                 annC_RelativePositionEnm>();
    } catch (...) {
        KTSOvuAnn_finalize(count);
        throw;
    }
}

void KTSOvuAnn_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    omi_SingletonBase<annC_AnnotationClient>::Finalize();
    kRegistration.Withdraw();
}

typ_ArchCompEntry annC_ArchEntry() { return kRegistration.Entry(); }
