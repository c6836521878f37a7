#pragma once

#include "omu/omu_PrimDictionary.h"
#include "omu/omu_Primitive.h"

/// A foreign object handed through scripts unread, tag `w`: a pointer that stays its owner's, the
/// type of the object by a number of the owner, and members that scripts see. Copies share the
/// pointer. Equal when pointer and type are.
class KTSOVUGEOM_API omu_PrimWrapper : public omu_Primitive {
  public:
    /// Wraps `wrapped`, which outlives the primitive and its copies, or null. Members nested beyond
    /// what is allowed raise `omu_ValueErrorException`.
    explicit omu_PrimWrapper(void* wrapped = nullptr, std::uint32_t typeOfObject = 0,
                             const omu_PrimStringDictionary& memberDictionary = {});
    /// Reads the record of a wrapper. The object is null: an address means nothing in another
    /// process.
    explicit omu_PrimWrapper(cls_ReadVisitor& visitor);

    [[nodiscard]] void* Object() const noexcept { return object; }
    [[nodiscard]] std::uint32_t ObjectType() const noexcept { return objectType; }
    [[nodiscard]] const omu_PrimStringDictionary& Members() const noexcept { return members; }

    /// "Wrapper".
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimWrapper* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    [[nodiscard]] omu_PrimNesting Nesting() const noexcept override;
    /// Writes "objType", "memberDict" and a null "objectPtr".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:32.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 32);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    void* object;
    std::uint32_t objectType;
    omu_PrimStringDictionary members;
};
