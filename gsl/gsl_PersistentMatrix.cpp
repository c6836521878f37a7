#include "gsl/gsl_PersistentMatrix.h"

#include "cow/cow_2DArrayArchive.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "foundation/shared/cls_Visitors.h"

namespace {

constexpr cls_FieldHandle kIsIdentity("_is_identity");
constexpr cls_FieldHandle kEntries("DDBmatrix");

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
    metadata.SetCowDtor([](void* object) { delete static_cast<gsl_PersistentMatrix*>(object); });
    metadata.AddAttribute(kIsIdentity.Name(), cls_KIND_INT)
        .AddAttribute(kEntries.Name(), cls_KIND_EMBEDDED_OBJ, cls_2D_ARRAY_CLASS);
    registrar.AddClass(metadata);
}
