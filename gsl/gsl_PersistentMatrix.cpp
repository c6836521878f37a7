#include "gsl/gsl_PersistentMatrix.h"

#include "cow/cow_2DArray.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kIsIdentity("_is_identity");
constexpr cls_FieldHandle kEntries("DDBmatrix");

void cow_Write2DArray(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                      const cow_2DArray<double>& array) {
    const auto record = visitor.MakeWriteObj(field, cls_2D_ARRAY_CLASS, cls_Uid());
    if (!record) return;
    record->Write(cls_2D_ARRAY_ROWS, array.Rows());
    record->Write(cls_2D_ARRAY_COLUMNS, array.Cols());
    const auto body = record->MakeWriteObj(cls_2D_ARRAY_VALUES, 0, cls_Uid());
    const auto list = body ? body->MakeWriteListPrim(0.0, array.Cols()) : nullptr;
    if (!list) return;
    for (int r = 0; r < array.Rows(); ++r) {
        for (int c = 0; c < array.Cols(); ++c) list->Write(array.ConstGet(r, c));
    }
}

cow_2DArray<double> cow_Read2DArray(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    const auto record = visitor.MakeReadObj(field);
    if (!record || !record->HasValue()) return {};
    int rows = 0;
    int columns = 0;
    record->Read(cls_2D_ARRAY_ROWS, rows);
    record->Read(cls_2D_ARRAY_COLUMNS, columns);
    const auto body = record->MakeReadObj(cls_2D_ARRAY_VALUES);
    const auto list = body ? body->MakeReadListPrim(0.0) : nullptr;
    if (!list || rows != 4 || columns != 4 || list->Size() != 16) return {};
    cow_2DArray<double> array(4, 4);
    for (int i = 0; i < 16 && list->Next(); ++i) array.Get(i / 4, i % 4) = list->Read();
    return array;
}

}  // namespace

gsl_PersistentMatrix::gsl_PersistentMatrix(cls_ReadVisitor& visitor) {
    int flag = IdentityFlag();
    visitor.Read(kIsIdentity, flag);
    const cow_2DArray<double> entries = cow_Read2DArray(visitor, kEntries);
    if (entries.Rows() == 4 && entries.Cols() == 4) From2DArray(entries, flag);
}

std::uint32_t gsl_PersistentMatrix::DynTypeId() const noexcept { return TypeId(); }

void* gsl_PersistentMatrix::Ctor(cls_ReadVisitor& visitor) {
    return new gsl_PersistentMatrix(visitor);
}

void gsl_PersistentMatrix::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kIsIdentity, IdentityFlag());
    cow_2DArray<double> entries;
    To2DArray(&entries);
    cow_Write2DArray(visitor, kEntries, entries);
}

void gsl_PersistentMatrix::InitializeMetadata(cls_ClassRegistrar& registrar) {
    cls_ClassMetadata metadata("gsl_Matrix", TypeId(), &Ctor);
    metadata.AddAttribute(kIsIdentity.Name(), cls_KIND_INT)
        .AddAttribute(kEntries.Name(), cls_KIND_EMBEDDED_OBJ, cls_2D_ARRAY_CLASS);
    registrar.AddClass(metadata);
}
