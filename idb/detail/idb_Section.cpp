#include "idb/detail/idb_Section.h"

#include <exception>
#include <utility>

idb_OpenWriter::idb_OpenWriter(idb_Section& target)
    : section(&target), place(target.cleared + target.places.size()) {
    target.places.emplace_back().writer = this;
}

void idb_OpenWriter::End() noexcept {
    if (!section) return;
    idb_Section& target = *section;
    idb_Section::Place& own = target.places[place - target.cleared];
    try {
        target.Fill(own);
        target.MoveFilled();
    } catch (...) {
        target.filter.Fail(std::current_exception());
    }
}

idb_Section::~idb_Section() {
    for (const Place& place : places) {
        if (place.writer) place.writer->section = nullptr;
    }
}

idb_PendingBytes& idb_Section::Next() {
    return places.empty() ? filled : places.emplace_back().bytes;
}

idb_PendingBytes& idb_Section::Complete() {
    for (Place& place : places) Fill(place);
    MoveFilled();
    return filled;
}

// The writer at the first open place writes straight behind what is filled.
void idb_Section::Fill(Place& place) {
    if (!place.writer) return;
    idb_OpenWriter& writer = *std::exchange(place.writer, nullptr);
    writer.section = nullptr;
    if (filter.Failed()) return;
    writer.Complete(&place == &places[firstOpen] ? filled : place.bytes);
}

void idb_Section::MoveFilled() {
    while (firstOpen < places.size() && !places[firstOpen].writer) {
        filled.Append(std::move(places[firstOpen++].bytes));
    }
    if (firstOpen < places.size()) return;
    cleared += places.size();
    places.clear();
    firstOpen = 0;
}
