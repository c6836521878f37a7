#pragma once

#include <type_traits>

#include "foundation/shared/nex_Exception.h"

/// The Python exception of `nex_CmdException<Message, number>`.
///
/// The pairs are fixed: scripts name these exceptions.
template <class Message, int number>
[[nodiscard]] constexpr const char* nex_PythonTypeOf() {
    if constexpr (std::is_same_v<Message, cow_String>) {
        switch (number) {
            case 1:
                return "KeyError";
            case 6:
                return "ColorError";
            case 7:
                return "FontError";
            case 8:
                return "AccessError";
            case 16:
                return "CorvixError";
        }
    } else if constexpr (std::is_same_v<Message, int>) {
        if (number == 1) return "IndexError";
    } else if constexpr (std::is_same_v<Message, atr_String>) {
        switch (number) {
            case 1:
                return "ValueError";
            case 2:
                return "OverflowError";
            case 3:
                return "NameError";
            case 5:
                return "ZeroDivisionError";
            case 32:
                return "GuiAccessError";
        }
    }
    return nullptr;
}

/// A scripting exception that is no more than a message: its text (or number) and the number that,
/// with the type of the message, tells the Python exception.
template <class Message, int number>
class nex_CmdException : public nex_CommandException {
    static_assert(nex_PythonTypeOf<Message, number>() != nullptr, "not a scripting exception");

  public:
    explicit nex_CmdException(const Message& text) : message(text) {}

    [[nodiscard]] const Message& GetMessage() const noexcept { return message; }
    [[nodiscard]] const char* PythonType() const override {
        return nex_PythonTypeOf<Message, number>();
    }
    /// The message itself, a number in decimal, a translatable text in the asked mode.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override {
        if constexpr (std::is_same_v<Message, int>) {
            return atr("%d", message);
        } else if constexpr (std::is_same_v<Message, atr_String>) {
            return message.Text(mode);
        } else {
            return message;
        }
    }
    [[noreturn]] void Propagate() const override { throw nex_CmdException(*this); }

  private:
    Message message;
};
