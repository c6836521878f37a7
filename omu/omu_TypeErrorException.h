#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/nex_Exception.h"

class cls_ClassRegistrar;

/// What is wrong with the arguments of a scripting command: "TypeError" in Python, as are all
/// classes derived from it. On its own it has no message.
class KTSOVUGEOM_API omu_TypeErrorException
    : public nex_ExceptionLayer<omu_TypeErrorException, nex_CommandException> {
  public:
    omu_TypeErrorException() = default;
    /// Reads the record of an exception; there is nothing in it.
    explicit omu_TypeErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] const char* PythonType() const override;
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:1.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 1); }
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};

/// Too many or too few arguments.
class KTSOVUGEOM_API omu_ArgNumberErrorException
    : public nex_ExceptionLayer<omu_ArgNumberErrorException, omu_TypeErrorException> {
  public:
    /// `expected` arguments are wanted and `found` given. `where`, when not empty, opens the
    /// message.
    omu_ArgNumberErrorException(int expected, int found, const cow_String& where)
        : expectedCount(expected), foundCount(found), context(where) {}
    explicit omu_ArgNumberErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] int Expected() const noexcept { return expectedCount; }
    [[nodiscard]] int Found() const noexcept { return foundCount; }
    [[nodiscard]] const cow_String& Context() const noexcept { return context; }
    /// "context; not all required arguments specified; expected 2, got 1".
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:2.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 2); }
    /// Writes "m_Context", "m_Expected" and "m_Found".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    int expectedCount = 0;
    int foundCount = 0;
    cow_String context;
};

/// A positional argument of the wrong type.
class KTSOVUGEOM_API omu_ArgTypeErrorException
    : public nex_ExceptionLayer<omu_ArgTypeErrorException, omu_TypeErrorException> {
  public:
    /// Argument `number`, counted from 1, is a `found` and not an `expecting`; it is the element
    /// `number` - 1 of what `nesting` names, when that is not empty.
    omu_ArgTypeErrorException(int number, const cow_String& expecting, const cow_String& found,
                              const cow_String& nesting)
        : argNumber(number), expectedType(expecting), foundType(found), nestingText(nesting) {}
    explicit omu_ArgTypeErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] int ArgNumber() const noexcept { return argNumber; }
    [[nodiscard]] const cow_String& Expecting() const noexcept { return expectedType; }
    [[nodiscard]] const cow_String& Found() const noexcept { return foundType; }
    [[nodiscard]] const cow_String& Nesting() const noexcept { return nestingText; }
    /// "arg2; found string, expecting int", or "points[1]; ..." for an element.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:3.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 3); }
    /// Writes "m_ArgNum", "m_Expecting", "m_Found" and "m_NestingStr".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    int argNumber = 0;
    cow_String expectedType;
    cow_String foundType;
    cow_String nestingText;
};

/// A keyword that the command does not know.
class KTSOVUGEOM_API omu_KeywordErrorException
    : public nex_ExceptionLayer<omu_KeywordErrorException, omu_TypeErrorException> {
  public:
    omu_KeywordErrorException(const cow_String& where, const cow_String& unknownKeyword)
        : context(where), keyword(unknownKeyword) {}
    explicit omu_KeywordErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] const cow_String& Context() const noexcept { return context; }
    [[nodiscard]] const cow_String& Keyword() const noexcept { return keyword; }
    /// "keyword error on zz".
    ///
    /// Kept: a context stands right before it, "Part" giving "Partkeyword error on zz"; one would
    /// have expected "Part; " as in the message about the number of arguments. Callers with a
    /// context rely on putting their own separator at its end.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:4.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 4); }
    /// Writes "m_Context" and "m_Keyword".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String context;
    cow_String keyword;
};

/// A keyword argument of the wrong type.
class KTSOVUGEOM_API omu_KeywordTypeErrorException
    : public nex_ExceptionLayer<omu_KeywordTypeErrorException, omu_TypeErrorException> {
  public:
    /// The value of `name` is a `found` and not an `expecting`. `nesting`, when not empty, is where
    /// it sits in another argument, index included.
    omu_KeywordTypeErrorException(const cow_String& name, const cow_String& expecting,
                                  const cow_String& found, const cow_String& nesting)
        : keyword(name), expectedType(expecting), foundType(found), nestingText(nesting) {}
    explicit omu_KeywordTypeErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] const cow_String& Keyword() const noexcept { return keyword; }
    [[nodiscard]] const cow_String& Expecting() const noexcept { return expectedType; }
    [[nodiscard]] const cow_String& Found() const noexcept { return foundType; }
    [[nodiscard]] const cow_String& Nesting() const noexcept { return nestingText; }
    /// "size; found string, expecting int".
    ///
    /// Kept: the nesting text takes the place of the keyword, "points[1]; ..."; one would have
    /// expected both. Texts shown by scripts rely on one place in front of the semicolon.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:5.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 5); }
    /// Writes "m_Found", "m_Keyword", "m_KeywordType" (the expected type) and "m_NestingStr".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    cow_String keyword;
    cow_String expectedType;
    cow_String foundType;
    cow_String nestingText;
};

/// A value of the wrong type for an operation.
class KTSOVUGEOM_API omu_GenericTypeErrorException
    : public nex_ExceptionLayer<omu_GenericTypeErrorException, omu_TypeErrorException> {
  public:
    omu_GenericTypeErrorException() = default;
    explicit omu_GenericTypeErrorException(cls_ReadVisitor& visitor);

    /// "illegal argument type for built-in operation".
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:6.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 6); }
    static void InitializeMetadata(cls_ClassRegistrar& registrar);
};
