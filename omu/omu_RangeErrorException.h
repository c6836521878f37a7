#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/nex_Exception.h"

class cls_ClassRegistrar;

/// One side of a range. Stored exceptions may hold other values.
enum omu_RangeQualifierEnm : std::uint32_t {
    omu_NO_LIMIT = 0,
    omu_LIMIT_INCLUDED = 1,
    omu_LIMIT_EXCLUDED = 2,
};

/// An argument outside its range: "RangeError" in Python.
class KTSOVUGEOM_API omu_RangeErrorException
    : public nex_ExceptionLayer<omu_RangeErrorException, nex_CommandException> {
  public:
    /// One limit as the message shows it.
    struct Limit {
        cow_String text;
        omu_RangeQualifierEnm qualifier = omu_NO_LIMIT;
    };
    /// What the message calls the value; other values give it no type.
    static constexpr int kUnspecified = 0;
    static constexpr int kInteger = 1;
    static constexpr int kFloat = 2;

    /// The argument `name` lies outside of `low` to `high`.
    omu_RangeErrorException(const cow_String& name, int type, const Limit& low, const Limit& high)
        : keyword(name), keywordType(type), lower(low), higher(high) {}
    explicit omu_RangeErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] const cow_String& Keyword() const noexcept { return keyword; }
    [[nodiscard]] int KeywordType() const noexcept { return keywordType; }
    [[nodiscard]] const Limit& Lower() const noexcept { return lower; }
    [[nodiscard]] const Limit& Higher() const noexcept { return higher; }

    [[nodiscard]] const char* PythonType() const override;
    /// "n must be in the range: 0 <= n < 10", "x must be a Float > 0.0". With a qualifier that is
    /// none, the part about the limits is left out.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:7.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 7); }
    /// Writes "m_HigherLimitAsString", "m_HigherLimitQualifier", "m_Keyword", "m_KeywordType",
    /// "m_LowerLimitAsString" and "m_LowerLimitQualifier".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String keyword;
    int keywordType = kUnspecified;
    Limit lower;
    Limit higher;
};
