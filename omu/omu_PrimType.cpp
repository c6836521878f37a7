#include "omu/omu_PrimType.h"

#include <array>

#include "omu/omu_InterfaceObj.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kTypeString("typeString");

/// The texts by value.
constexpr std::array<const char*, 8> kNames = {"None", "Part",   "Assembly", "Sketch",
                                               "Odb",  "XYPlot", "Stub",     "DetailPlot"};

}  // namespace

omu_PrimType::omu_PrimType(cls_ReadVisitor& visitor) : omu_PrimType() {
    visitor.Read(kTypeString, typeText);
}

cow_String omu_PrimType::ConverTypeToString(omu_ObjectToDisplayTypeEnm type) {
    const bool isNamed = type >= 0 && type < static_cast<int>(kNames.size());
    return kNames[isNamed ? static_cast<std::size_t>(type) : 0];
}

omu_ObjectToDisplayTypeEnm omu_PrimType::ConverStringToType(const cow_String& type) noexcept {
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        if (type.View() == kNames[i]) return static_cast<omu_ObjectToDisplayTypeEnm>(i);
    }
    return omu_DISPLAY_NONE;
}

bool omu_PrimType::SameType(const omu_InterfaceObj& object) const {
    return typeText == object.TypeString();
}

cow_String omu_PrimType::TypeString() const { return typeText.IsEmpty() ? "type" : "Type"; }

cow_String omu_PrimType::AsString(int) const { return "Type"; }

bool omu_PrimType::operator==(const omu_Primitive& other) const {
    const auto* type = dynamic_cast<const omu_PrimType*>(&other);
    return type && SameType(*type);
}

void omu_PrimType::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimType* omu_PrimType::Copy() const { return new omu_PrimType(*this); }

std::uint32_t omu_PrimType::TypeId() const { return kTypeId; }

void omu_PrimType::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kTypeString, typeText);
}

void omu_PrimType::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimType>("omu_PrimType")
                           .AddAttribute(kTypeString.Name(), cls_KIND_STRING));
}
