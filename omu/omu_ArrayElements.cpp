#include "omu/detail/omu_ArrayElements.h"

#include <algorithm>
#include <cstring>

#include "omu/omu_CmdExceptions.h"

namespace {

template <class T>
void StoreAs(char* address, T element) {
    std::memcpy(address, &element, sizeof element);
}

}  // namespace

void omu_array::Fail(const cow_String& text, const char* file, int line) {
    KTSBasThrow(omu_ValueErrorException(text), file, line);
}

void omu_array::RequireDimensionCount(int numDimensions) {
    if (numDimensions < 0) Fail(kNegativeDimensions);
    if (numDimensions > omu_PrimArray::kMaxDimensions) Fail(kCannotAllocate);
}

std::vector<int> omu_array::StridesOf(std::span<const int> dimensions, int itemSize) {
    RequireDimensionCount(static_cast<int>(dimensions.size()));
    if (std::ranges::any_of(dimensions, [](int extent) { return extent < 0; })) {
        Fail(kNegativeDimensions);
    }
    std::vector<int> products(dimensions.size() + 1, itemSize);
    std::int64_t bytes = itemSize;
    for (std::size_t d = dimensions.size(); d-- > 0;) {
        bytes *= dimensions[d];
        if (bytes > kMaxBytes) Fail(kCannotAllocate);
        products[d] = static_cast<int>(bytes);
    }
    std::rotate(products.begin(), products.begin() + 1, products.end());
    return products;
}

void omu_array::Store(char* address, DataTypeEnm type, double number) {
    if (type == omu_PrimNumber::INT) {
        StoreAs(address, omu_PrimNumber::ToInt(number));
    } else if (type == omu_PrimNumber::FLOAT) {
        StoreAs(address, omu_PrimNumber::ToFloat(number));
    } else {
        StoreAs(address, number);
    }
}

char* omu_array::CopyElements(const omu_PrimArray& source, DataTypeEnm type, char* target) {
    const int itemSize = omu_PrimArray::ItemSize(type);
    const char* element = source.ConstGetData();
    const int count = source.ConstGetNumElements();
    const std::ptrdiff_t bytes = std::ptrdiff_t{count} * itemSize;
    if (count > 0 && source.ConstGetPrimNumberType() == type) {
        std::memcpy(target, element, static_cast<std::size_t>(bytes));
        return target + bytes;
    }
    for (int i = 0; i < count; ++i) {
        Store(target, type, Load(element, source.ConstGetPrimNumberType()));
        element += source.ConstGetItemSize();
        target += itemSize;
    }
    return target;
}
