#pragma once

#include <cstdint>
#include <memory>

#include "foundation/shared/KTSBasException.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

/// An exception with a message for the user.
class KTSBASSHARED_API nex_Exception : public KTSBasException {
  public:
    /// The message in the asked mode.
    [[nodiscard]] virtual cow_String JournalMessage(KTSBasStringMode mode) const = 0;
    /// The name of the Python exception that it becomes: "CorvixError" unless its class has
    /// another.
    [[nodiscard]] virtual const char* PythonType() const;
    /// A copy of the object as its own most-derived type.
    [[nodiscard]] virtual std::unique_ptr<nex_Exception> Clone() const = 0;
    [[nodiscard]] const char* what() const noexcept override;

    /// The type id of the object's class; 0 when archives do not know it.
    [[nodiscard]] virtual std::uint32_t DynTypeId() const noexcept;
    /// Writes the fields of the object's record; none unless its class has some.
    virtual void DBWrite(cls_WriteVisitor& visitor) const;

  private:
    mutable cow_String whatText;
};

/// An exception that a scripting command raises toward the interpreter.
class KTSBASSHARED_API nex_CommandException : public nex_Exception {};

/// The layer between an exception class and its base that knows the class itself: every class that
/// is thrown has its own, lest it leave its handler as its base.
///
///     class omu_X : public nex_ExceptionLayer<omu_X, nex_CommandException> { ... };
///
/// Archives hold exceptions as `nex_Exception`: that is what `Ctor` returns a pointer to. They know
/// the `Class` if it has a static `TypeId` and a reading constructor.
template <class Class, class Base>
class nex_ExceptionLayer : public Base {
  public:
    [[noreturn]] void Propagate() const override { throw Class(Self()); }
    [[nodiscard]] std::unique_ptr<nex_Exception> Clone() const override {
        return std::make_unique<Class>(Self());
    }
    [[nodiscard]] std::uint32_t DynTypeId() const noexcept override {
        if constexpr (requires { Class::TypeId(); }) {
            return Class::TypeId();
        } else {
            return Base::DynTypeId();
        }
    }

    /// Reads an exception from its record: a new `nex_Exception`, owned by the caller.
    static void* Ctor(cls_ReadVisitor& visitor) {
        return static_cast<nex_Exception*>(new Class(visitor));
    }
    /// Destroys what `Ctor` built.
    static void CowDtor(void* exception) { delete static_cast<nex_Exception*>(exception); }

  private:
    [[nodiscard]] const Class& Self() const noexcept { return static_cast<const Class&>(*this); }
};

/// A violated assertion or an invalid model, told by a message that is translated when shown.
class KTSBASSHARED_API nex_PrimException
    : public nex_ExceptionLayer<nex_PrimException, nex_Exception> {
  public:
    explicit nex_PrimException(const atr_String& text) : message(text) {}

    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

  private:
    atr_String message;
};
