#pragma once

#include "omu/omu_Primitive.h"

/// The text of an expression that the interpreter is to evaluate, tag `e`; equal when the texts
/// are.
class KTSOVUGEOM_API omu_PrimExpr : public omu_Primitive {
  public:
    explicit omu_PrimExpr(const cow_String& expression = {}) noexcept
        : omu_Primitive(omu_PrimTag::kExpression), text(expression) {}
    /// Reads the record of an expression.
    explicit omu_PrimExpr(cls_ReadVisitor& visitor);

    [[nodiscard]] const cow_String& Text() const noexcept { return text; }

    /// "expression".
    [[nodiscard]] cow_String TypeString() const override;
    /// The text without quotes.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimExpr* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "_text".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:30.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 30);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String text;
};
