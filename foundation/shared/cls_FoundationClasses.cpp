#include "foundation/shared/cls_FoundationClasses.h"

#include <iterator>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/detail/cls_DescribeFoundation.h"

namespace {

constexpr char k2DArrayName[] = "cow_2DArrayDouble";

constexpr unsigned short kExceptionComponent = cls_BASE_EXCEPTION_CLASS >> 16;
constexpr typ_ArchRow kExceptions[] = {
    {}, {}, {}, {typ_EXCEPTION_CLASS, typ_NO_PARENT, "KTSBasException"}};

constexpr unsigned short kArrayComponent = cls_2D_ARRAY_CLASS >> 16;
constexpr typ_ArchRow kArrays[] = {{}, {typ_PERSISTENT_CLASS, typ_NO_PARENT, k2DArrayName}};

}  // namespace

void cls_DescribeFoundation(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata array(k2DArrayName, cls_2D_ARRAY_CLASS);
    array.AddAttribute(cls_2D_ARRAY_ROWS.Name(), cls_KIND_INT)
        .AddAttribute(cls_2D_ARRAY_COLUMNS.Name(), cls_KIND_INT)
        .AddAttribute(cls_2D_ARRAY_VALUES.Name(), cls_KIND_COLLECTION, 0, cls_LIST_DOUBLE);
    registrar.AddClass(array);
}

void cls_InsertFoundationComponents() {
    typ_ArchCompTable::InsertEntry(kExceptionComponent,
                                   {kExceptions, static_cast<int>(std::size(kExceptions))});
    typ_ArchCompTable::InsertEntry(kArrayComponent,
                                   {kArrays, static_cast<int>(std::size(kArrays))});
}

void cls_WithdrawFoundationComponents() noexcept {
    typ_ArchCompTable::WithdrawEntry(kExceptionComponent);
    typ_ArchCompTable::WithdrawEntry(kArrayComponent);
}
