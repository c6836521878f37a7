#pragma once

#include <algorithm>

#include "omu/omu_ArgumentTypes.h"

/// The sequence of sequences `value`. A fault names the row or the element that it lies in; `word`
/// is what the whole is called.
template <class T>
bool omu_ConvertRows(const omu_Primitive& value, const char* word, cow_List<cow_List<T>>& out,
                     omu_TypeFault& fault) {
    const auto refuse = [&fault](const omu_Primitive& found, const char* expected,
                                 const std::vector<int>& place) {
        fault = {found.TypeString(), expected, place};
        return false;
    };
    const auto* const rows = dynamic_cast<const omu_PrimSequence*>(&value);
    if (!rows) return refuse(value, word, {});
    auto result = cow_List<cow_List<T>>::WithSizeHint(rows->Length());
    const auto readRow = [&](const omu_Primitive& row, int r) {
        const auto* const elements = dynamic_cast<const omu_PrimSequence*>(&row);
        if (!elements) return refuse(row, omu_ExpectedWord<cow_List<T>>, {r});
        auto list = cow_List<T>::WithSizeHint(elements->Length());
        const auto readElement = [&](const omu_Primitive& element, int c) {
            T item{};
            if (!omu_Convert(element, item)) return refuse(element, omu_ExpectedWord<T>, {r, c});
            list.Append(item);
            return true;
        };
        if (!elements->ForEachElement(readElement)) return false;
        result.Append(list);
        return true;
    };
    const bool all = rows->ForEachElement(readRow);
    if (all) out = result;
    return all;
}

/// The table `value`: rows of the same length. Rows of different lengths are a fault of the whole.
template <class T>
bool omu_ConvertTable(const omu_Primitive& value, cow_2DArray<T>& out, omu_TypeFault& fault) {
    const char* const word = omu_ExpectedWord<cow_2DArray<T>>;
    cow_List<cow_List<T>> rows;
    if (!omu_ConvertRows(value, word, rows, fault)) return false;
    const int columns = rows.IsEmpty() ? 0 : rows[0].Length();
    // Before the table is made, so that it is no larger than its elements.
    if (!std::all_of(rows.begin(), rows.end(),
                     [columns](const cow_List<T>& row) { return row.Length() == columns; })) {
        fault = {value.TypeString(), word, {}};
        return false;
    }
    cow_2DArray<T> table(rows.Length(), columns);
    for (int r = 0; r < rows.Length(); ++r) {
        for (int c = 0; c < columns; ++c) table.Get(r, c) = rows[r][c];
    }
    out = table;
    return true;
}
