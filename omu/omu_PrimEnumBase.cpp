#include "omu/omu_PrimEnumBase.h"

#include <string>

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"
#include "omu/omu_SymbolicConstantTable.h"

namespace {

constexpr cls_FieldHandle kValue("_value");

constexpr char kStringRefused[] =
    "omu_PrimEnum(const cow_String&) - str not allowed: %s  Permissible: %s";
constexpr char kRecordRefused[] =
    "omu_PrimEnum(const cls_ReadVisitor&) - str not allowed: %s  Permissible: %s";
constexpr char kEnumerationRefused[] =
    "omu_PrimEnum(const omu_PrimEnumBase&) - str not allowed: %s";
constexpr char kEnumeratorRefused[] =
    "omu_PrimEnum(ENUMTYPE) - Enum value not allowed: %d  Permissible: %s";

[[noreturn]] void Raise(const cow_String& message) {
    KTSBasThrow(omu_ValueErrorException(message));
}

cow_Map<cow_String, unsigned> MapOf(const omu_EnumEntry* names) {
    cow_Map<cow_String, unsigned> map;
    for (; names && names->name; ++names) {
        map.Insert(names->name, static_cast<std::uint32_t>(names->value));
    }
    return map;
}

cow_String Listed(const cow_Map<cow_String, unsigned>& names) {
    std::string list;
    int index = 0;
    for (const auto& [name, value] : names) {
        if (index > 0) list += index + 1 == names.Size() ? " or " : ", ";
        list += name.View();
        ++index;
    }
    return cow_String(list);
}

std::uint32_t IdOf(const cow_String& constant, const char* refusal) {
    const omu_SymbolicConstantTable& table = omu_SymbolicConstantTable::Instance();
    const unsigned id = table.GetId(constant);
    if (id == 0 && constant != table.GetString(0)) Raise(atr(refusal, constant, cow_String()));
    return id;
}

}  // namespace

omu_PrimEnumBase::omu_PrimEnumBase(const cow_String& name)
    : omu_PrimEnumBase(nullptr, IdOf(name, kStringRefused)) {}

omu_PrimEnumBase::omu_PrimEnumBase(cls_ReadVisitor& visitor)
    : omu_PrimEnumBase(nullptr, IdOf(ReadName(visitor), kRecordRefused)) {}

const omu_EnumEntry* omu_PrimEnumBase::Find(const omu_EnumEntry* names,
                                            std::int32_t wanted) noexcept {
    for (; names->name; ++names) {
        if (names->value == wanted) return names;
    }
    return nullptr;
}

const omu_EnumEntry* omu_PrimEnumBase::Find(const omu_EnumEntry* names,
                                            const cow_String& wanted) noexcept {
    for (; names->name; ++names) {
        if (names->name == wanted.View()) return names;
    }
    return nullptr;
}

std::uint32_t omu_PrimEnumBase::Require(const omu_EnumEntry* names, const cow_String& name,
                                        Origin origin) {
    if (const omu_EnumEntry* entry = Find(names, name)) {
        return static_cast<std::uint32_t>(entry->value);
    }
    if (origin == Origin::Enumeration) Raise(atr(kEnumerationRefused, name));
    Raise(atr(origin == Origin::String ? kStringRefused : kRecordRefused, name,
              Listed(MapOf(names))));
}

std::uint32_t omu_PrimEnumBase::Require(const omu_EnumEntry* names, std::int32_t number) {
    if (!Find(names, number)) Raise(atr(kEnumeratorRefused, number, Listed(MapOf(names))));
    return static_cast<std::uint32_t>(number);
}

cow_String omu_PrimEnumBase::ReadName(cls_ReadVisitor& visitor) {
    cow_String name;
    visitor.Read(kValue, name);
    return name;
}

cow_Map<cow_String, unsigned> omu_PrimEnumBase::PermissibleValues() const {
    if (table) return MapOf(table);
    cow_Map<cow_String, unsigned> own;
    own.Insert(CurrentName(), currentValue);
    return own;
}

cow_String omu_PrimEnumBase::CurrentName() const {
    if (!table) return omu_SymbolicConstantTable::Instance().GetString(currentValue);
    const omu_EnumEntry* const entry = Find(table, static_cast<std::int32_t>(currentValue));
    return entry ? entry->name : "";
}

bool omu_PrimEnumBase::SetName(const cow_String& name) {
    if (!table) return name == CurrentName();
    const omu_EnumEntry* const entry = Find(table, name);
    if (entry) currentValue = static_cast<std::uint32_t>(entry->value);
    return entry != nullptr;
}

bool omu_PrimEnumBase::SetNumber(std::int32_t number) noexcept {
    if (!Find(table, number)) return false;
    currentValue = static_cast<std::uint32_t>(number);
    return true;
}

cow_String omu_PrimEnumBase::TypeString() const { return Listed(PermissibleValues()); }

cow_String omu_PrimEnumBase::AsString(int) const { return CurrentName(); }

bool omu_PrimEnumBase::operator==(const omu_Primitive& other) const {
    const auto* enumeration = dynamic_cast<const omu_PrimEnumBase*>(&other);
    return enumeration && CurrentName() == enumeration->CurrentName();
}

void omu_PrimEnumBase::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimEnumBase* omu_PrimEnumBase::Copy() const { return new omu_PrimEnumBase(*this); }

std::uint32_t omu_PrimEnumBase::TypeId() const { return kTypeId; }

void omu_PrimEnumBase::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kValue, CurrentName());
}

void omu_PrimEnumBase::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimEnumBase>("omu_PrimEnumBase")
                           .AddAttribute(kValue.Name(), cls_KIND_ENUM));
}
