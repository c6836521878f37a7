#pragma once

#include <memory>

#include "foundation/shared/nex_Exception.h"
#include "omu/omu_Primitive.h"

/// A caught exception as a value, with the message that goes along with it, tag `E`. Copies share
/// the exception, which is only read. Equal when the Python name and the message are.
class KTSOVUGEOM_API omu_PrimException : public omu_Primitive {
  public:
    /// Carries a copy of `caught` as its own class; the message is its translated one.
    explicit omu_PrimException(const nex_Exception& caught);
    omu_PrimException(const nex_Exception& caught, const cow_String& messageText);
    /// Reads the record of an exception. One of a class that archives do not know comes back as its
    /// message alone.
    explicit omu_PrimException(cls_ReadVisitor& visitor);

    [[nodiscard]] const cow_String& Message() const noexcept { return message; }
    /// The exception; null when only its message was archived.
    [[nodiscard]] const nex_Exception* Exception() const noexcept { return exception.get(); }
    /// The name of the Python exception; "CorvixError" for a message alone.
    [[nodiscard]] const char* PythonType() const;
    /// Throws the exception as its own class, a message alone as `omu_PyCorvixException`.
    [[noreturn]] void Propagate() const;

    /// "omu_PrimException object".
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PrimException* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;
    /// Writes "_message" and "_exception".
    void DBWrite(cls_WriteVisitor& visitor) const override;

    /// 19:34.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 34);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String message;
    std::shared_ptr<const nex_Exception> exception;
};
