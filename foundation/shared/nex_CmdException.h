#pragma once

#include <cstdint>
#include <type_traits>

#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "foundation/shared/nex_Exception.h"

/// What a scripting exception is called: by scripts (its Python exception) and by archives (its
/// class name and type id).
struct nex_CmdExceptionNames {
    const char* pythonType = nullptr;  ///< null: there is no such exception
    const char* className = nullptr;
    std::uint32_t typeId = 0;
};

/// The names of `nex_CmdException<Message, number>`. The pairs are fixed: scripts and archives name
/// these exceptions.
template <class Message>
[[nodiscard]] constexpr nex_CmdExceptionNames nex_CmdExceptionNamesOf(int number) {
    if constexpr (std::is_same_v<Message, cow_String>) {
        switch (number) {
            case 1:
                return {"KeyError", "omu_KeyErrorException", typ_TypeId(19, 10)};
            case 6:
                return {"ColorError", "g3d_ColorErrorException", typ_TypeId(36, 3)};
            case 7:
                return {"FontError", "omu_FontErrorException", typ_TypeId(19, 20)};
            case 8:
                return {"AccessError", "omu_AccessErrorException", typ_TypeId(19, 16)};
            case 16:
                return {"CorvixError", "omu_PyCorvixException", typ_TypeId(19, 17)};
        }
    } else if constexpr (std::is_same_v<Message, int>) {
        if (number == 1) return {"IndexError", "omu_IndexErrorException", typ_TypeId(19, 11)};
    } else if constexpr (std::is_same_v<Message, atr_String>) {
        switch (number) {
            case 1:
                return {"ValueError", "omu_ValueErrorException", typ_TypeId(19, 12)};
            case 2:
                return {"OverflowError", "omu_OverflowErrorException", typ_TypeId(19, 13)};
            case 3:
                return {"NameError", "omu_NameErrorException", typ_TypeId(19, 14)};
            case 5:
                return {"ZeroDivisionError", "omu_ZeroDivisionErrorException", typ_TypeId(19, 15)};
            case 32:
                return {"GuiAccessError", "omu_GuiAccessErrorException", typ_TypeId(19, 19)};
        }
    }
    return {};
}

/// A scripting exception that is no more than a message: its text (or number) and the number that,
/// with the type of the message, tells the Python exception.
template <class Message, int number>
class nex_CmdException
    : public nex_ExceptionLayer<nex_CmdException<Message, number>, nex_CommandException> {
    static constexpr nex_CmdExceptionNames kNames = nex_CmdExceptionNamesOf<Message>(number);
    static_assert(kNames.pythonType != nullptr, "not a scripting exception");

  public:
    explicit nex_CmdException(const Message& text) : message(text) {}
    /// Reads the record of an exception; an absent message is empty or 0.
    explicit nex_CmdException(cls_ReadVisitor& visitor);

    [[nodiscard]] const Message& GetMessage() const noexcept { return message; }
    [[nodiscard]] const char* PythonType() const override { return kNames.pythonType; }
    /// The message itself, a number in decimal, a translatable text in the asked mode.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return kNames.typeId; }
    /// Writes "m_Message", a number or the untranslated text.
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    static constexpr cls_FieldHandle kMessage{"m_Message"};

    Message message{};
};

template <class Message, int number>
nex_CmdException<Message, number>::nex_CmdException(cls_ReadVisitor& visitor) {
    if constexpr (std::is_same_v<Message, atr_String>) {
        cow_String text;
        visitor.Read(kMessage, text);
        message = text;
    } else {
        visitor.Read(kMessage, message);
    }
}

template <class Message, int number>
cow_String nex_CmdException<Message, number>::JournalMessage(KTSBasStringMode mode) const {
    if constexpr (std::is_same_v<Message, int>) {
        return atr("%d", message);
    } else if constexpr (std::is_same_v<Message, atr_String>) {
        return message.Text(mode);
    } else {
        return message;
    }
}

template <class Message, int number>
void nex_CmdException<Message, number>::DBWrite(cls_WriteVisitor& visitor) const {
    if constexpr (std::is_same_v<Message, atr_String>) {
        visitor.Write(kMessage, message.Text());
    } else {
        visitor.Write(kMessage, message);
    }
}

template <class Message, int number>
void nex_CmdException<Message, number>::InitializeMetadata(cls_ClassRegistrar& registrar) {
    constexpr int kind = std::is_same_v<Message, int>          ? cls_KIND_INT
                         : std::is_same_v<Message, cow_String> ? cls_KIND_STRING
                                                               : cls_KIND_TRANSLATED_STRING;
    cls_ClassMetadata metadata(kNames.className, TypeId(), &nex_CmdException::Ctor);
    metadata.SetCowDtor(&nex_CmdException::CowDtor).AddAttribute(kMessage.Name(), kind);
    registrar.AddClass(metadata);
}
