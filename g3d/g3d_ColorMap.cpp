#include "g3d/g3d_ColorMap.h"

#include <cstddef>

#include "cow/cow_RaiseOutOfRange.h"

constinit g3d_ColorMap* g3d_ColorMap::singleton = nullptr;

namespace {

constexpr const char* kUnknownName = "%s is not a valid color name.";

}  // namespace

g3d_ColorMap::g3d_ColorMap() { InitDefaultDict(); }

const g3d_Color& g3d_ColorMap::Lookup(const atr_String& name) const {
    if (const g3d_Color* color = Find(name)) return *color;
    KTSBasThrow(g3d_ColorErrorException(atr_translate(kUnknownName, name)));
}

const g3d_Color* g3d_ColorMap::Find(const atr_String& name) const noexcept {
    const auto found = places.find(name);
    return found == places.end() ? nullptr : &EntryAt(found->second).color;
}

cow_List<atr_String> g3d_ColorMap::Names() const {
    cow_List<atr_String> names;
    for (const Entry& entry : entries) names.Append(entry.name);
    return names;
}

const atr_String& g3d_ColorMap::NameAt(int place) const noexcept { return EntryAt(place).name; }

const g3d_Color& g3d_ColorMap::ColorAt(int place) const noexcept { return EntryAt(place).color; }

void g3d_ColorMap::Add(const atr_String& name, const g3d_Color& color) {
    const auto [found, isNew] = places.try_emplace(name, Size());
    if (!isNew) {
        entries[static_cast<std::size_t>(found->second)].color = color;
        return;
    }
    try {
        entries.push_back({name, color});
    } catch (...) {
        places.erase(found);
        throw;
    }
}

void g3d_ColorMap::InitDefaultDict() {
    static constexpr struct {
        const char* name;
        g3d_Color color;
    } defaults[] = {
        {"Black", {0, 0, 0}},
        {"White", {1, 1, 1}},
        {"Red", {1, 0, 0}},
        {"Orange", {1, 0.5f, 0}},
        {"Light orange", {1, 0.6f, 0}},
        {"Purple", {0.63f, 0.13f, 0.94f}},
        {"Blue", {0, 0, 1}},
        {"Medium blue", {0, 0.6f, 1}},
        {"Sky blue", {0, 0.8f, 1}},
        {"Cyan", {0, 1, 1}},
        {"Aqua", {0, 1, 0.8f}},
        {"Green", {0, 1, 0}},
        {"Spring green", {0, 1, 0.55f}},
        {"Yellow", {1, 1, 0}},
        {"Gold", {1, 0.844f, 0}},
        {"Dark gold", {1, 0.7f, 0}},
        {"Chartreuse", {0.7f, 1, 0}},
        {"Grey20", {0.2f, 0.2f, 0.2f}},
        {"Grey60", {0.6f, 0.6f, 0.6f}},
        {"Grey80", {0.8f, 0.8f, 0.8f}},
        {"Default", {1, 1, 1}},
        {"Magenta", {1, 0, 1}},
        {"Grey10", {0.1f, 0.1f, 0.1f}},
        {"Grey30", {0.3f, 0.3f, 0.3f}},
        {"Grey40", {0.4f, 0.4f, 0.4f}},
        {"Grey50", {0.5f, 0.5f, 0.5f}},
        {"Grey70", {0.7f, 0.7f, 0.7f}},
        {"Grey90", {0.9f, 0.9f, 0.9f}},
    };
    for (const auto& entry : defaults) Add(entry.name, entry.color);
}

const g3d_ColorMap::Entry& g3d_ColorMap::EntryAt(int place) const noexcept {
    if (place < 0 || place >= Size()) RaiseOutOfRange(place);
    return entries[static_cast<std::size_t>(place)];
}
