#include "omu/omu_TextRepr.h"

#include "omu/omu_InterfaceObj.h"

constinit omu_TextRepr* omu_TextRepr::singleton = nullptr;

omu_TextRepr::omu_TextRepr() = default;

omu_TextRepr::~omu_TextRepr() = default;

omu_TextRepr& omu_TextRepr::Instance() { return omi_Singleton<omu_TextRepr>::Instance(); }

cow_String omu_TextRepr::GetMaxRecursionString(const omu_InterfaceObj* object) const {
    if (!object) return {};
    const std::string_view text = maxRecursionString.View();
    const std::size_t place = text.find("%s");
    if (place == std::string_view::npos) return maxRecursionString;
    return cow_String(text.substr(0, place)) + object->TypeString() + text.substr(place + 2);
}
