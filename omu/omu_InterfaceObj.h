#pragma once

#include "omu/omu_Primitive.h"

/// An application object as scripts see it, tag `<`. Its kinds are defined beside the objects that
/// they expose; each tells its type name by `TypeString()` and says what a copy of it and equality
/// are.
class KTSOVUGEOM_API omu_InterfaceObj : public omu_Primitive {
  public:
    /// The type name, such as "Arrow".
    [[nodiscard]] cow_String TypeString() const override = 0;
    /// "%s object" with the type name.
    [[nodiscard]] cow_String AsString(int flag) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_InterfaceObj* Copy() const override = 0;
    [[nodiscard]] std::uint32_t TypeId() const override;

    /// 19:36.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 36);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  protected:
    omu_InterfaceObj() noexcept : omu_Primitive(omu_PrimTag::kInterfaceObj) {}
};
