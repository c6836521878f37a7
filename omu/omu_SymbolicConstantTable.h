#pragma once

#include <map>
#include <string_view>
#include <vector>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/coreutils/omi_Singleton.h"

struct omu_EnumEntry;
class omu_SymbolicConstantData;

/// The names of all symbolic constants of the process, each with a number of its own: the first one
/// added is 1, and 0 is the reserved "_UNSPECIFIED".
///
/// Created on first use and emptied by the shut-down of the library; ids may differ after a
/// restart, so keep names, not ids. What it refuses it tells by a line on standard error. With the
/// environment variable ZRX_DBG_SYMCONST set, additions are traced there too.
class KTSOVUGEOM_API omu_SymbolicConstantTable {
  public:
    [[nodiscard]] static omu_SymbolicConstantTable& Instance();

    /// Adds `key` and returns its id. An empty key, and one that is there already, are refused: a
    /// line is printed and the result is 0.
    unsigned AddString(const cow_String& key);
    /// Adds the name of `entry` unless it is there; returns its id.
    unsigned AddSCD(const omu_SymbolicConstantData& entry);
    /// The id of `key`; 0, silently, when it is unknown.
    [[nodiscard]] unsigned GetId(const cow_String& key) const;
    /// The name of `id`; "" and a line when `id` is beyond `Size()`.
    [[nodiscard]] cow_String GetString(unsigned id) const;
    /// The highest id.
    [[nodiscard]] unsigned Size() const noexcept { return static_cast<unsigned>(names.size() - 1); }

    /// True for capitals, digits and underscores that do not begin with a digit, over the counted
    /// length: ^[A-Z_][A-Z_0-9]*$ with no newline passing at the end.
    [[nodiscard]] static bool IsValidSymConstName(const cow_String& name) noexcept;
    /// Calls `make(name, id)` for every constant that the interpreter can see, in the order of the
    /// ids; a name that is not valid is skipped with a line. The reserved name is no constant.
    template <class Make>
    void CreatePythonSymbolicConstants(Make&& make) const {
        for (unsigned id = 1; id <= Size(); ++id) {
            if (MayBePythonSymbolicConstant(names[id], id)) make(names[id], id);
        }
    }

    /// Prints header, one line an entry, and closing line on standard error.
    ///
    /// Kept: the header opens the process id with a letter, "pid:Ox", the closing line with a zero,
    /// "pid:0x", where one would expect the zero in both. What cuts the table out of a log finds
    /// its ends by them.
    void PrintContents() const;

  private:
    friend class omi_Singleton<omu_SymbolicConstantTable>;
    friend class omi_SingletonBase<omu_SymbolicConstantTable>;
    static omu_SymbolicConstantTable* singleton;
    omu_SymbolicConstantTable();
    ~omu_SymbolicConstantTable();

    static bool MayBePythonSymbolicConstant(const cow_String& name, unsigned id);
    unsigned Append(const cow_String& key);

    std::vector<cow_String> names;             ///< by id
    std::map<std::string_view, unsigned> ids;  ///< views into `names`' texts
};

/// One entry of the table: a name and its id. An entry that its constructor refused has id 0.
class KTSOVUGEOM_API omu_SymbolicConstantData {
  public:
    /// An entry that is not set.
    omu_SymbolicConstantData() noexcept = default;
    /// The entry of `name`, which is added to the table when it is not there. An `id` other than 0
    /// must be the one that the table has for the name; a name must be valid. `family` tells in
    /// the trace what the constant belongs to.
    explicit omu_SymbolicConstantData(const cow_String& name, unsigned id = 0,
                                      const char* family = "");
    /// The entry that the table has under `id`.
    explicit omu_SymbolicConstantData(unsigned id);

    /// Makes this entry that of `name`, as the constructor; refused when it has an id already.
    bool Set(const cow_String& name, unsigned id = 0, const char* family = "");
    /// The name; an entry that is not set prints a line.
    [[nodiscard]] const cow_String& GetText() const;
    [[nodiscard]] unsigned GetId() const noexcept { return ownId; }

  private:
    friend class omu_SymbolicConstantTable;
    cow_String text;
    unsigned ownId = 0;
};

/// Adds the names of an enumeration that the table does not know yet, silently.
KTSOVUGEOM_API void omu_RegisterConstants(const omu_EnumEntry* names, const char* family = "");
