#include "foundation/coreutils/typ_ArchCompTable.h"

#include <map>
#include <vector>

#include "foundation/coreutils/detail/typ_Clear.h"

namespace {

struct Row {
    std::uint32_t kind;
    std::uint32_t parent;
    cow_String name;
};

using Rows = std::vector<Row>;
using Components = std::map<std::uint32_t, Rows>;

/// Created with the first component and deleted with the last, so that nothing of it dies before
/// the last library withdraws its entry.
constinit Components* components = nullptr;

void DeleteIfEmpty() noexcept {
    if (components && components->empty()) {
        delete components;
        components = nullptr;
    }
}

const Row* FindRow(std::uint32_t typeId) noexcept {
    if (!components) return nullptr;
    const auto found = components->find(typeId >> 16);
    if (found == components->end()) return nullptr;
    const std::size_t row = typeId & 0xFFFFu;
    return row < found->second.size() ? &found->second[row] : nullptr;
}

std::size_t TotalRows() noexcept {
    std::size_t total = 0;
    if (!components) return total;
    for (const auto& component : *components) total += component.second.size();
    return total;
}

}  // namespace

void typ_ArchCompTable::InsertEntry(unsigned short id, typ_ArchCompEntry entry) {
    Rows rows;
    for (int i = 0; i < entry.rowCount; ++i) {
        rows.push_back({entry.rows[i].kind, entry.rows[i].parent, entry.rows[i].name});
    }
    if (!components) components = new Components;
    try {
        (*components)[id].swap(rows);
    } catch (...) {
        DeleteIfEmpty();
        throw;
    }
}

void typ_ArchCompTable::WithdrawEntry(unsigned short id) noexcept {
    if (!components) return;
    components->erase(id);
    DeleteIfEmpty();
}

cow_String typ_ArchCompTable::Name(std::uint32_t typeId) {
    const Row* row = FindRow(typeId);
    return row ? row->name : cow_String();
}

std::uint32_t typ_ArchCompTable::Kind(std::uint32_t typeId) noexcept {
    const Row* row = FindRow(typeId);
    return row ? row->kind : static_cast<std::uint32_t>(typ_EMPTY_ROW);
}

std::uint32_t typ_ArchCompTable::Parent(std::uint32_t typeId) noexcept {
    const Row* row = FindRow(typeId);
    return row ? row->parent : typ_NO_PARENT;
}

bool typ_ArchCompTable::IsParent(std::uint32_t ancestor, std::uint32_t typeId) noexcept {
    // A chain without a circle visits every row at most once.
    for (std::size_t steps = TotalRows() + 1; steps > 0; --steps) {
        if (typeId == ancestor) return true;
        const Row* row = FindRow(typeId);
        if (!row || row->parent == typ_NO_PARENT) return false;
        typeId = row->parent;
    }
    return false;
}

int typ_ArchCompTable::RowCount(unsigned short id) noexcept {
    if (!components) return 0;
    const auto found = components->find(id);
    return found == components->end() ? 0 : static_cast<int>(found->second.size());
}

void typ_ClearArchCompTable() noexcept {
    delete components;
    components = nullptr;
}
