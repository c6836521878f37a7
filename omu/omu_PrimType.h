#pragma once

#include "omu/omu_Primitive.h"

class omu_InterfaceObj;

/// The kinds of objects that a viewport displays.
enum omu_ObjectToDisplayTypeEnm : int {
    omu_DISPLAY_NONE = 0,
    omu_DISPLAY_PART = 1,
    omu_DISPLAY_ASSEMBLY = 2,
    omu_DISPLAY_SKETCH = 3,
    omu_DISPLAY_ODB = 4,
    omu_DISPLAY_XY_PLOT = 5,
    omu_DISPLAY_STUB = 6,
    omu_DISPLAY_DETAIL_PLOT = 7,
};

/// A kind of displayed object as a value, tag `t`: its text, "" while no kind is named. Equal when
/// the texts are, byte for byte.
class KTSOVUGEOM_API omu_PrimType : public omu_Primitive {
  public:
    explicit omu_PrimType(const cow_String& type = {}) noexcept
        : omu_Primitive(omu_PrimTag::kType), typeText(type) {}
    explicit omu_PrimType(omu_ObjectToDisplayTypeEnm type)
        : omu_PrimType(ConverTypeToString(type)) {}
    /// Reads the record of a kind.
    explicit omu_PrimType(cls_ReadVisitor& visitor);

    /// The text of the kind.
    [[nodiscard]] const cow_String& TypeText() const noexcept { return typeText; }
    /// True when the texts are the same; for an interface object, its type name.
    [[nodiscard]] bool SameType(const omu_PrimType& other) const noexcept {
        return typeText == other.typeText;
    }
    [[nodiscard]] bool SameType(const omu_InterfaceObj& object) const;

    /// "None", "Part", "Assembly", "Sketch", "Odb", "XYPlot", "Stub", "DetailPlot"; "None" for a
    /// value beyond them.
    [[nodiscard]] static cow_String ConverTypeToString(omu_ObjectToDisplayTypeEnm type);
    /// The kind with this text; `omu_DISPLAY_NONE` for any other.
    [[nodiscard]] static omu_ObjectToDisplayTypeEnm ConverStringToType(
        const cow_String& type) noexcept;

    /// "Type", or "type" while no kind is named.
    [[nodiscard]] cow_String TypeString() const override;
    /// "Type".
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimType* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "typeString".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:31.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 31);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String typeText;
};
