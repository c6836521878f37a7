#include "omu/KTSOvuOmu.h"

#include <iterator>

#include "foundation/alloc/KTSBasUseCount.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_ModuleRegistration.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_AttributeErrorException.h"
#include "omu/omu_ChangeHistory.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_CvxNameErrorException.h"
#include "omu/omu_InterfaceObj.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimBoolean.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimEnum.h"
#include "omu/omu_PrimException.h"
#include "omu/omu_PrimExpr.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimPath.h"
#include "omu/omu_PrimSequence.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimTuple.h"
#include "omu/omu_PrimType.h"
#include "omu/omu_PrimWrapper.h"
#include "omu/omu_PyObjectWrapper.h"
#include "omu/omu_RangeErrorException.h"
#include "omu/omu_SymbolicConstantTable.h"
#include "omu/omu_TextRepr.h"
#include "omu/omu_TypeErrorException.h"

namespace {

constinit KTSBasUseCount useCount;

/// The class table of component 19. The scripting exceptions take rows 1 to 17 and 19, since row 18
/// belongs to the base of the dictionaries; row 20 is the font error, whose metadata the view
/// geometry registers; the primitive values follow. Rows 43 to 50 are free for further primitives.
constexpr typ_ArchRow kClasses[] = {
    {},                                                                                 // row 0
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_TypeErrorException"},          // 1
    {typ_EXCEPTION_CLASS, typ_TypeId(19, 1), "omu_ArgNumberErrorException"},            // 2
    {typ_EXCEPTION_CLASS, typ_TypeId(19, 1), "omu_ArgTypeErrorException"},              // 3
    {typ_EXCEPTION_CLASS, typ_TypeId(19, 1), "omu_KeywordErrorException"},              // 4
    {typ_EXCEPTION_CLASS, typ_TypeId(19, 1), "omu_KeywordTypeErrorException"},          // 5
    {typ_EXCEPTION_CLASS, typ_TypeId(19, 1), "omu_GenericTypeErrorException"},          // 6
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_RangeErrorException"},         // 7
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_AttributeErrorException"},     // 8
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_CvxNameErrorException"},       // 9
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_KeyErrorException"},           // 10
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_IndexErrorException"},         // 11
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_ValueErrorException"},         // 12
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_OverflowErrorException"},      // 13
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_NameErrorException"},          // 14
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_ZeroDivisionErrorException"},  // 15
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_AccessErrorException"},        // 16
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_PyCorvixException"},           // 17
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimDictionaryBase"},               // 18
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_GuiAccessErrorException"},     // 19
    {typ_EXCEPTION_CLASS, cls_BASE_EXCEPTION_CLASS, "omu_FontErrorException"},          // 20
    {typ_PERSISTENT_CLASS, typ_NO_PARENT, "omu_Primitive"},                             // 21
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimNumber"},                       // 22
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimBoolean"},                      // 23
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimComplex"},                      // 24
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimString"},                       // 25
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimTranslatedString"},             // 26
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimNone"},                         // 27
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimEnumBase"},                     // 28
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimPath"},                         // 29
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimExpr"},                         // 30
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimType"},                         // 31
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimWrapper"},                      // 32
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PyObjectWrapper"},                  // 33
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimException"},                    // 34
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 37), "omu_PrimArray"},                        // 35
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_InterfaceObj"},                     // 36
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 21), "omu_PrimSequence"},                     // 37
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 37), "omu_PrimTuple"},                        // 38
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 38), "omu_PrimList"},                         // 39
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 18), "omu_PrimDictionary"},                   // 40
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 18), "omu_PrimIntDictionary"},                // 41
    {typ_PERSISTENT_CLASS, typ_TypeId(19, 38), "omu_Arguments"},                        // 42
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
};
static_assert(std::size(kClasses) == 51);

constexpr cls_MetadataRow kMetadata[] = {
    {&omu_TypeErrorException::InitializeMetadata, 2},
    {&omu_ArgNumberErrorException::InitializeMetadata, 2},
    {&omu_ArgTypeErrorException::InitializeMetadata, 2},
    {&omu_KeywordErrorException::InitializeMetadata, 2},
    {&omu_KeywordTypeErrorException::InitializeMetadata, 2},
    {&omu_GenericTypeErrorException::InitializeMetadata, 2},
    {&omu_RangeErrorException::InitializeMetadata, 2},
    {&omu_AttributeErrorException::InitializeMetadata, 2},
    {&omu_CvxNameErrorException::InitializeMetadata, 2},
    {&omu_KeyErrorException::InitializeMetadata, 2},
    {&omu_IndexErrorException::InitializeMetadata, 2},
    {&omu_ValueErrorException::InitializeMetadata, 2},
    {&omu_OverflowErrorException::InitializeMetadata, 2},
    {&omu_NameErrorException::InitializeMetadata, 2},
    {&omu_ZeroDivisionErrorException::InitializeMetadata, 2},
    {&omu_AccessErrorException::InitializeMetadata, 2},
    {&omu_PyCorvixException::InitializeMetadata, 2},
    {&omu_GuiAccessErrorException::InitializeMetadata, 2},
    {&omu_Primitive::InitializeMetadata, 7},
    {&omu_PrimNumber::InitializeMetadata, 3},
    {&omu_PrimString::InitializeMetadata, 3},
    {&omu_PrimEnumBase::InitializeMetadata, 7},
    {&omu_PrimDictionaryBase::InitializeMetadata, 3},
    {&omu_PrimStringDictionary::InitializeMetadata, 3},
    {&omu_PrimBoolean::InitializeMetadata, 2},
    {&omu_PrimComplex::InitializeMetadata, 2},
    {&omu_PrimTranslatedString::InitializeMetadata, 2},
    {&omu_PrimNone::InitializeMetadata, 2},
    {&omu_PrimPath::InitializeMetadata, 2},
    {&omu_PrimExpr::InitializeMetadata, 2},
    {&omu_PrimType::InitializeMetadata, 2},
    {&omu_PrimWrapper::InitializeMetadata, 2},
    {&omu_PyObjectWrapper::InitializeMetadata, 2},
    {&omu_PrimException::InitializeMetadata, 2},
    {&omu_InterfaceObj::InitializeMetadata, 2},
    {&omu_PrimIntDictionary::InitializeMetadata, 2},
    {&omu_PrimSequence::InitializeMetadata, 2},
    {&omu_PrimTuple::InitializeMetadata, 2},
    {&omu_PrimList::InitializeMetadata, 2},
    {&omu_Arguments::InitializeMetadata, 2},
    {&omu_PrimArray::InitializeMetadata, 2},
};

constexpr cls_ModuleRegistration kRegistration(19,
                                               {kClasses, static_cast<int>(std::size(kClasses))},
                                               kMetadata);

}  // namespace

void KTSOvuOmu_initialize(int& count) {
    if (!useCount.Raise(count)) return;
    try {
        kRegistration.InsertComponent();
        kRegistration.RegisterClasses();
        omu_RegisterConstants(omu_OnOffNames::kEntries, omu_OnOffNames::kFamily);
        omu_RegisterConstants(omu_TrueFalseNames::kEntries, omu_TrueFalseNames::kFamily);
        omu_RegisterConstants(omu_YesNoNames::kEntries, omu_YesNoNames::kFamily);
    } catch (...) {
        KTSOvuOmu_finalize(count);
        throw;
    }
}

void KTSOvuOmu_finalize(int& count) {
    if (!useCount.Lower(count)) return;
    omi_SingletonBase<omu_TextRepr>::Finalize();
    omi_SingletonBase<omu_SymbolicConstantTable>::Finalize();
    omu_ChangeHistory::FinalizeAll();
    omu_PyObjectWrapper::SetHooks({});
    kRegistration.Withdraw();
}

typ_ArchCompEntry omu_ArchEntry() { return kRegistration.Entry(); }
