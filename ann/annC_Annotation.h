#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_COW.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_Uid.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// A point or displacement in a viewport, in viewport units: pixels, x to the right and y upwards.
struct annC_Point2D {
    double x = 0;
    double y = 0;

    friend bool operator==(const annC_Point2D&, const annC_Point2D&) = default;
};

/// What is placed over a viewport: the base of arrows and texts. A plain value that carries an
/// identity, which copies take over. Archives take annotations for values and do not number them,
/// so that two copies, one of them changed, come back as they are.
///
/// The virtual operations stand in the order of their slots, which annotations elsewhere rely on.
class KTSOVUGEOM_API annC_Annotation {
  public:
    /// An annotation with a new identity.
    annC_Annotation() : uid(cls_Uid::AllocateUid()) {}
    /// Reads the record of an annotation, with a new identity.
    explicit annC_Annotation(cls_ReadVisitor& visitor);
    annC_Annotation(const annC_Annotation&) = default;
    annC_Annotation& operator=(const annC_Annotation&) = default;

    virtual ~annC_Annotation();
    /// A copy of the same class with the same identity; new, owned by the caller.
    [[nodiscard]] virtual annC_Annotation* Copy() const;
    /// The class id in archives.
    [[nodiscard]] virtual std::uint32_t TypeId() const;
    /// Writes the fields of the record; the base has none.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;

    [[nodiscard]] const cls_Uid& GetUid() const noexcept { return uid; }

    /// Equal when of one class with equal fields; the identities play no part.
    [[nodiscard]] friend bool operator==(const annC_Annotation& a, const annC_Annotation& b) {
        return a.TypeId() == b.TypeId() && a.HasSameFields(b);
    }

    /// 848:2.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 2);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    /// Equality of the fields with `other`, which is of the same class.
    [[nodiscard]] virtual bool HasSameFields(const annC_Annotation& other) const;

    cls_Uid uid;
};

/// An annotation of any class, copied on write.
using annC_AnnotationCow = cow_COW<annC_Annotation, cow_Virtual<annC_Annotation>>;
