#include "mdl/mdl_JaggedArray.h"

#include <algorithm>
#include <memory>

#include "cow/cow_RaiseOutOfRange.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kOffsets("DDBoffsetValues");
constexpr cls_FieldHandle kValues("DDBvaluesValues");

std::size_t CountOf(int n) noexcept { return static_cast<std::size_t>(std::max(n, 0)); }

template <class T>
void ReadInto(cls_ReadVisitor& visitor, std::vector<T, omi_Allocator<T>>& out) {
    const auto reader = visitor.MakeReadListPrim(T());
    if (!reader) return;
    const cow_List<T>& list = reader->ConstGetList();
    out.reserve(static_cast<std::size_t>(list.Length()));
    list.ForEachSpan([&out](auto span) { out.insert(out.end(), span.begin(), span.end()); });
}

template <class T>
void WriteFrom(cls_WriteVisitor& visitor, std::span<const T> elements) {
    if (const auto writer = visitor.MakeWriteListPrim(T(), 1)) {
        writer->Write(elements.data(), static_cast<int>(elements.size()));
    }
}

}  // namespace

mdl_JaggedArray::mdl_JaggedArray(int rows, int values) {
    auto fresh = std::make_unique<Content>();
    fresh->offsets.resize(CountOf(rows));
    fresh->values.resize(CountOf(values));
    content = fresh.release();
}

mdl_JaggedArray::mdl_JaggedArray(int rows, int values, const int* rowOffsets,
                                 const double* allValues)
    : mdl_JaggedArray(rows, values) {
    Content& own = *content.GetPtr();
    std::copy_n(rowOffsets, own.offsets.size(), own.offsets.data());
    std::copy_n(allValues, own.values.size(), own.values.data());
}

mdl_JaggedArray::mdl_JaggedArray(cls_ReadVisitor& visitor) {
    auto read = std::make_unique<Content>();
    ReadInto(visitor, read->offsets);
    ReadInto(visitor, read->values);
    if (!read->offsets.empty() || !read->values.empty()) content = read.release();
}

std::span<const int> mdl_JaggedArray::Offsets() const noexcept {
    return content.HasValue() ? std::span<const int>(content->offsets) : std::span<const int>();
}

std::span<const double> mdl_JaggedArray::Values() const noexcept {
    return content.HasValue() ? std::span<const double>(content->values)
                              : std::span<const double>();
}

mdl_JaggedArray::Extent mdl_JaggedArray::ExtentOf(int row) const noexcept {
    if (row < 0 || row >= Rows()) RaiseOutOfRange(row);
    const std::span<const int> offsets = Offsets();
    const int size = Size();
    const auto index = static_cast<std::size_t>(row);
    const int begin = std::clamp(offsets[index], 0, size);
    const int end = index + 1 < offsets.size() ? std::clamp(offsets[index + 1], begin, size) : size;
    return {static_cast<std::size_t>(begin), static_cast<std::size_t>(end)};
}

std::size_t mdl_JaggedArray::IndexOf(int row, int column) const noexcept {
    const Extent extent = ExtentOf(row);
    if (column < 0 || static_cast<std::size_t>(column) >= extent.end - extent.begin) {
        RaiseOutOfRange(column);
    }
    return extent.begin + static_cast<std::size_t>(column);
}

int mdl_JaggedArray::RowLength(int row) const noexcept {
    const Extent extent = ExtentOf(row);
    return static_cast<int>(extent.end - extent.begin);
}

std::span<const double> mdl_JaggedArray::Row(int row) const noexcept {
    const Extent extent = ExtentOf(row);
    return Values().subspan(extent.begin, extent.end - extent.begin);
}

cow_List<double> mdl_JaggedArray::RowList(int row) const {
    const std::span<const double> values = Row(row);
    return cow_List<double>(values.data(), static_cast<int>(values.size()));
}

double mdl_JaggedArray::ConstGet(int row, int column) const noexcept {
    return Values()[IndexOf(row, column)];
}

double& mdl_JaggedArray::Get(int row, int column) {
    const std::size_t index = IndexOf(row, column);
    return content.Get()->values[index];
}

bool mdl_JaggedArray::operator==(const mdl_JaggedArray& other) const noexcept {
    return std::ranges::equal(Offsets(), other.Offsets()) &&
           std::ranges::equal(Values(), other.Values());
}

void* mdl_JaggedArray::Ctor(cls_ReadVisitor& visitor) { return new mdl_JaggedArray(visitor); }

void mdl_JaggedArray::CowDtor(void* array) { delete static_cast<mdl_JaggedArray*>(array); }

void mdl_JaggedArray::DBWrite(cls_WriteVisitor& visitor) const {
    WriteFrom(visitor, Offsets());
    WriteFrom(visitor, Values());
}

void mdl_JaggedArray::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("mdl_JaggedArray", TypeId(), &Ctor);
    metadata.SetCowDtor(&CowDtor)
        .AddAttribute(kOffsets.Name(), cls_KIND_COLLECTION, 0, cls_ALT_LIST_INT)
        .AddAttribute(kValues.Name(), cls_KIND_COLLECTION, 0, cls_ALT_LIST_DOUBLE);
    registrar.AddClass(metadata);
}
