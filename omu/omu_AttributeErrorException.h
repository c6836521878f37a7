#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/nex_Exception.h"

class cls_ClassRegistrar;

/// What is wrong with a member of an object: "AttributeError" in Python.
class KTSOVUGEOM_API omu_AttributeErrorException
    : public nex_ExceptionLayer<omu_AttributeErrorException, nex_CommandException> {
  public:
    /// An error of a kind that the raiser numbers, told by `text` (empty: by the default message).
    explicit omu_AttributeErrorException(int type, const atr_String& text = atr_String())
        : errorType(type), message(text) {}
    explicit omu_AttributeErrorException(cls_ReadVisitor& visitor);
    /// The error of looking up `member` in an object of type `typeName`: "'Part' object has no
    /// attribute 'nmae'", translated when raised.
    [[nodiscard]] static omu_AttributeErrorException NoSuchMember(const cow_String& typeName,
                                                                  const cow_String& member);

    [[nodiscard]] int ErrorType() const noexcept { return errorType; }
    [[nodiscard]] const char* PythonType() const override;
    /// The message; without one "Error message not implemented yet".
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:8.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 8); }
    /// Writes "m_ErrorType" and "m_Message" (untranslated).
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    int errorType = 0;
    atr_String message;
};
