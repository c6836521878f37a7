#include "cow/cow_2DArrayArchive.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>

#include "cow/cow_List.h"
#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

cow_List<double> ValuesRowByRow(const cow_2DArray<double>& array) {
    cow_List<double> values = cow_List<double>::WithSizeHint(static_cast<int>(
        std::min<std::int64_t>(static_cast<std::int64_t>(array.Rows()) * array.Cols(), INT_MAX)));
    for (int r = 0; r < array.Rows(); ++r) {
        for (int c = 0; c < array.Cols(); ++c) values.Append(array.ConstGet(r, c));
    }
    return values;
}

cow_List<double> ReadValues(cls_ReadVisitor& array) {
    const auto nested = array.MakeReadObj(cls_2D_ARRAY_VALUES);
    const auto reader = nested ? nested->MakeReadListPrim(double()) : nullptr;
    return reader ? reader->ConstGetList() : cow_List<double>();
}

bool ExtentsHold(int rows, int columns, int valueCount) {
    return rows >= 0 && columns >= 0 &&
           static_cast<std::int64_t>(rows) * static_cast<std::int64_t>(columns) == valueCount;
}

}  // namespace

void cow_Write2DArray(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                      const cow_2DArray<double>& array) {
    const auto nested = visitor.MakeWriteObj(field, cls_2D_ARRAY_CLASS, cls_Uid());
    if (!nested) return;
    const bool isEmpty = array.Rows() == 0 || array.Cols() == 0;
    const int columns = isEmpty ? 0 : array.Cols();
    nested->Write(cls_2D_ARRAY_ROWS, isEmpty ? 0 : array.Rows());
    nested->Write(cls_2D_ARRAY_COLUMNS, columns);
    if (const auto collection = nested->MakeWriteObj(cls_2D_ARRAY_VALUES, 0, cls_Uid())) {
        if (const auto writer = collection->MakeWriteListPrim(double(), columns)) {
            writer->Write(ValuesRowByRow(array));
        }
    }
}

cow_2DArray<double> cow_Read2DArray(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    const auto nested = visitor.MakeReadObj(field);
    if (!nested || !nested->HasValue()) return {};
    int rows = 0;
    int columns = 0;
    nested->Read(cls_2D_ARRAY_ROWS, rows);
    nested->Read(cls_2D_ARRAY_COLUMNS, columns);
    const cow_List<double> values = ReadValues(*nested);
    if (!ExtentsHold(rows, columns, values.Length())) {
        std::fputs(atr("Error reading array: %d rows and %d columns for %d values\n", rows, columns,
                       values.Length())
                       .Characters(),
                   stderr);
        return {};
    }
    if (values.IsEmpty()) return {};
    cow_2DArray<double> array(rows, columns);
    auto value = values.begin();
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) array.Get(r, c) = *value++;
    }
    return array;
}
