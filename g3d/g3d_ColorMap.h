#pragma once

#include <map>
#include <vector>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_List.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/omi_Singleton.h"
#include "foundation/shared/nex_CmdException.h"
#include "g3d/g3d_Color.h"

/// What the look-up of an unknown colour name throws; a script sees "ColorError". Archives know it
/// as 36:3.
using g3d_ColorErrorException = nex_CmdException<cow_String, 6>;

/// The colours that have names, in the order in which they were added. There is one map in the
/// process; it starts with 28 named colours, the one called "Default" being white, and a map
/// created anew after shut-down starts with these again. Names are compared byte by byte: case,
/// blanks and spelling count. Not locked.
class g3d_ColorMap {
  public:
    /// The map of the process, created at start-up or on first use.
    [[nodiscard]] static inline g3d_ColorMap& Instance();

    /// The colour `name`. Throws `g3d_ColorErrorException` with the translated text
    /// "%s is not a valid color name." when there is none; the name is data, never a template.
    [[nodiscard]] KTSOVUGEOM_API const g3d_Color& Lookup(const atr_String& name) const;
    /// The colour `name`, or null. Valid until a colour is added.
    [[nodiscard]] KTSOVUGEOM_API const g3d_Color* Find(const atr_String& name) const noexcept;
    /// The names in the order of adding.
    [[nodiscard]] KTSOVUGEOM_API cow_List<atr_String> Names() const;
    /// Number of named colours.
    [[nodiscard]] int Size() const noexcept { return static_cast<int>(entries.size()); }
    /// The name and the colour at place 0 to `Size()` - 1 of the order; another place ends the
    /// process.
    [[nodiscard]] KTSOVUGEOM_API const atr_String& NameAt(int place) const noexcept;
    [[nodiscard]] KTSOVUGEOM_API const g3d_Color& ColorAt(int place) const noexcept;

    /// Appends a colour, or replaces the one of that name in its place.
    KTSOVUGEOM_API void Add(const atr_String& name, const g3d_Color& color);

  private:
    friend class omi_Singleton<g3d_ColorMap>;
    friend class omi_SingletonBase<g3d_ColorMap>;
    KTSOVUGEOM_API static g3d_ColorMap* singleton;
    struct Entry {
        atr_String name;
        g3d_Color color;
    };

    KTSOVUGEOM_API g3d_ColorMap();
    ~g3d_ColorMap() = default;
    void InitDefaultDict();
    [[nodiscard]] const Entry& EntryAt(int place) const noexcept;

    std::vector<Entry> entries;
    std::map<atr_String, int> places;
};

inline g3d_ColorMap& g3d_ColorMap::Instance() { return omi_Singleton<g3d_ColorMap>::Instance(); }
