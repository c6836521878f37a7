#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "cow/cow_COW.h"
#include "foundation/coreutils/typ_ArchCompTable.h"

class cls_ClassRegistrar;
class cls_ReadVisitor;
class cls_WriteVisitor;

/// Where an end of an arrow or a text is tied to: the abstract base of the named positions of the
/// viewport, the points of the model and the points of the viewport. A plain value.
///
/// The virtual operations stand in the order of their slots, which anchors elsewhere rely on.
class KTSOVUGEOM_API annC_Anchor {
  public:
    virtual ~annC_Anchor();
    /// A copy of the same class; new, owned by the caller.
    [[nodiscard]] virtual annC_Anchor* Copy() const = 0;
    /// The class id in archives.
    [[nodiscard]] virtual std::uint32_t TypeId() const = 0;
    virtual void DBWrite(cls_WriteVisitor& visitor) const = 0;

    /// Equal when of one class with equal fields.
    [[nodiscard]] friend bool operator==(const annC_Anchor& a, const annC_Anchor& b) {
        return a.TypeId() == b.TypeId() && a.HasSameFields(b);
    }

    /// 848:1, which stands for any anchor: no object is of it.
    static constexpr std::uint32_t kTypeId = typ_TypeId(848, 1);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    annC_Anchor() = default;
    annC_Anchor(const annC_Anchor&) = default;
    annC_Anchor& operator=(const annC_Anchor&) = default;

  private:
    /// Equality of the fields with `other`, which is of the same class.
    [[nodiscard]] virtual bool HasSameFields(const annC_Anchor& other) const = 0;
};

/// An anchor of any class, shared by the copies of its holder until one of them writes it.
using annC_AnchorCow = cow_COW<annC_Anchor, cow_Virtual<annC_Anchor>>;
