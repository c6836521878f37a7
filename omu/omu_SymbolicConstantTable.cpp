#include "omu/omu_SymbolicConstantTable.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_PrimEnumBase.h"

constinit omu_SymbolicConstantTable* omu_SymbolicConstantTable::singleton = nullptr;

namespace {

constexpr char kUnspecified[] = "_UNSPECIFIED";
/// Who speaks, in the traces.
constexpr char kLibrary[] = "KTSOvuGeom";

unsigned ProcessId() {
#if defined(_WIN32)
    return static_cast<unsigned>(_getpid());
#else
    return static_cast<unsigned>(getpid());
#endif
}

template <class... Arguments>
void Print(const char* format, const Arguments&... arguments) {
    const cow_String line = atr(format, arguments...);
    std::fwrite(line.Characters(), 1, static_cast<std::size_t>(line.Length()), stderr);
}

template <class... Arguments>
void Trace(const char* format, const Arguments&... arguments) {
    if (std::getenv("ZRX_DBG_SYMCONST")) Print(format, kLibrary, arguments...);
}

bool IsCapital(char c) { return (c >= 'A' && c <= 'Z') || c == '_'; }

bool IsCapitalOrDigit(char c) { return IsCapital(c) || (c >= '0' && c <= '9'); }

}  // namespace

omu_SymbolicConstantTable::omu_SymbolicConstantTable() { Append(kUnspecified); }

omu_SymbolicConstantTable::~omu_SymbolicConstantTable() = default;

omu_SymbolicConstantTable& omu_SymbolicConstantTable::Instance() {
    return omi_Singleton<omu_SymbolicConstantTable>::Instance();
}

unsigned omu_SymbolicConstantTable::Append(const cow_String& key) {
    const unsigned id = static_cast<unsigned>(names.size());
    names.push_back(key);
    try {
        ids.emplace(names.back().View(), id);
    } catch (...) {
        names.pop_back();
        throw;
    }
    return id;
}

unsigned omu_SymbolicConstantTable::AddString(const cow_String& key) {
    if (key.IsEmpty()) {
        Print("omu_SymbolicConstantTable::AddString(key=%s) key is EMPTY  pid=%X\n", key,
              ProcessId());
        return 0;
    }
    if (const auto known = ids.find(key.View()); known != ids.end()) {
        Print("omu_SymbolicConstantTable::AddString(%s) name already in table: %u/%u  pid=%X\n",
              key, known->second, Size(), ProcessId());
        return 0;
    }
    const unsigned id = Append(key);
    Trace("%s:omu_SCTable::AddStr('%s') id:%d\n", key, id);
    return id;
}

unsigned omu_SymbolicConstantTable::AddSCD(const omu_SymbolicConstantData& entry) {
    const unsigned known = GetId(entry.text);
    const unsigned id = known != 0 ? known : AddString(entry.text);
    Trace("%s:omu_SCTable::AddSCD(scd) '%s' id:%d  getId:%d\n", entry.text, entry.ownId,
          GetId(entry.text));
    return id;
}

unsigned omu_SymbolicConstantTable::GetId(const cow_String& key) const {
    const auto known = ids.find(key.View());
    if (known == ids.end()) return 0;
    if (known->second > Size()) {
        Print("omu_SymbolicConstantTable::GetId(key=%s)  id>Size (%u<%u)\n", key, Size(),
              known->second);
        return 0;
    }
    return known->second;
}

cow_String omu_SymbolicConstantTable::GetString(unsigned id) const {
    if (id > Size()) {
        Print("omu_SymbolicConstantTable::GetString(%u)  id>Size (%u)  %X\n", id, Size(),
              ProcessId());
        return {};
    }
    return names[id];
}

bool omu_SymbolicConstantTable::IsValidSymConstName(const cow_String& name) noexcept {
    const std::string_view text = name.View();
    return !text.empty() && IsCapital(text[0]) && std::ranges::all_of(text, IsCapitalOrDigit);
}

bool omu_SymbolicConstantTable::MayBePythonSymbolicConstant(const cow_String& name, unsigned id) {
    if (IsValidSymConstName(name)) return true;
    Print("omu_SymbolicConstantTable::CreatePythonSymbolicConstant('%s', %d) ignored\n", name, id);
    return false;
}

void omu_SymbolicConstantTable::PrintContents() const {
    Print("CONTENTS of omu_SymbolicConstantTable  pid:Ox%X\n", ProcessId());
    for (unsigned id = 0; id <= Size(); ++id) Print("%5u   %s\n", id, names[id]);
    Print("--------------------omu------------ pid:0x%X\n", ProcessId());
}

omu_SymbolicConstantData::omu_SymbolicConstantData(const cow_String& name, unsigned id,
                                                   const char* family) {
    Set(name, id, family);
}

omu_SymbolicConstantData::omu_SymbolicConstantData(unsigned id) {
    const omu_SymbolicConstantTable& table = omu_SymbolicConstantTable::Instance();
    if (id > table.Size()) {
        Print("omu_SymbolicConstantData(%u) id > Size (%u)\n", id, table.Size());
        return;
    }
    text = table.GetString(id);
    ownId = id;
}

bool omu_SymbolicConstantData::Set(const cow_String& name, unsigned id, const char* family) {
    Trace("%s:omu_SymbolicConstantData(%s, %u, %s)\n", name, id, family);
    if (!omu_SymbolicConstantTable::IsValidSymConstName(name)) {
        Print("omu_SymbolicConstantData(%s, %u) Name is invalid\n", name, id);
        return false;
    }
    if (ownId != 0) {
        Print("omu_SymbolicConstantData(%s, %u) _id is not 0\n", name, id);
        return false;
    }
    omu_SymbolicConstantTable& table = omu_SymbolicConstantTable::Instance();
    const unsigned known = table.GetId(name);
    const unsigned expected = known != 0 ? known : table.Size() + 1;
    if (id != 0 && id != expected) {
        Print("omu_SymbolicConstantData(%s, %u) id (%u) != idSCD (%u)\n", name, id, id, known);
        return false;
    }
    text = name;
    ownId = table.AddSCD(*this);
    Trace("%s:omu_SymbolicConstantData(%s, %u) -> id %u\n", name, id, ownId);
    if (ownId == 0) text = {};  // the reserved name, which the table refuses to add
    return ownId != 0;
}

const cow_String& omu_SymbolicConstantData::GetText() const {
    if (text.IsEmpty()) Print("omu_SymbolicConstantData::getText() text is EMPTY\n");
    return text;
}

void omu_RegisterConstants(const omu_EnumEntry* names, const char* family) {
    const omu_SymbolicConstantTable& table = omu_SymbolicConstantTable::Instance();
    for (; names->name; ++names) {
        if (table.GetId(names->name) == 0) omu_SymbolicConstantData(names->name, 0, family);
    }
}
