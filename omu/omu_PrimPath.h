#pragma once

#include "cow/cow_List.h"
#include "omu/omu_Primitive.h"

/// The path of an object as scripts name it, tag `p`: its components, from the outermost to the
/// object, and the context in which the first one is looked up, by a name and a one-character type
/// (zero: none). Neither is ever followed here. Equal when all three are.
class KTSOVUGEOM_API omu_PrimPath : public omu_Primitive {
  public:
    /// The empty path without a context.
    omu_PrimPath() : omu_PrimPath(cow_List<cow_String>()) {}
    explicit omu_PrimPath(const cow_List<cow_String>& pathComponents, char typeOfContext = '\0',
                          const cow_String& nameOfContext = {})
        : omu_Primitive(omu_PrimTag::kPath),
          components(pathComponents),
          contextType(typeOfContext),
          context(nameOfContext) {}
    /// Reads the record of a path.
    explicit omu_PrimPath(cls_ReadVisitor& visitor);

    [[nodiscard]] const cow_List<cow_String>& Components() const noexcept { return components; }
    [[nodiscard]] char ContextType() const noexcept { return contextType; }
    [[nodiscard]] const cow_String& Context() const noexcept { return context; }

    /// "path".
    [[nodiscard]] cow_String TypeString() const override;
    /// The components joined with points, between single quotes; nothing is escaped.
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimPath* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "path", "context" and "contextType".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:29.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 29);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_List<cow_String> components;
    char contextType;
    cow_String context;
};
