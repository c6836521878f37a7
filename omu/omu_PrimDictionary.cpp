#include "omu/omu_PrimDictionary.h"

#include <limits>
#include <stdexcept>

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_TypeErrorException.h"

cow_String omu_PrimDictionaryBase::TypeString() const { return "dictionary"; }

cow_String omu_PrimDictionaryBase::AsString(int flag) const {
    std::string text = "{";
    for (int i = 0; i < Length(); ++i) {
        if (i > 0) text += ", ";
        text += KeyText(i).View();
        text += ": ";
        text += ConstGetValue(i).AsString(flag).View();
        if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
            throw std::length_error("text of a dictionary");
        }
    }
    text += '}';
    return cow_String(text);
}

cow_String omu_PrimDictionaryBase::TextOf(int key) { return atr("%d", key); }

cow_String omu_PrimDictionaryBase::TextOf(const cow_String& key) { return omu_Quoted(key); }

void omu_PrimDictionaryBase::RequireValue(const omu_Primitive* value) {
    if (!value) KTSBasThrow(omu_GenericTypeErrorException());
}

void omu_PrimDictionaryBase::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(
        cls_ClassMetadata("omu_PrimDictionaryBase", kTypeId, nullptr, omu_Primitive::kTypeId));
}
