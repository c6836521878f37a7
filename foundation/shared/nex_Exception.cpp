#include "foundation/shared/nex_Exception.h"

const char* nex_Exception::what() const noexcept {
    try {
        whatText = JournalMessage(KTSBasStringMode::Untranslated);
    } catch (...) {
        return "";
    }
    return whatText.Characters();
}

cow_String nex_PrimException::JournalMessage(KTSBasStringMode mode) const {
    return message.Text(mode);
}

void nex_PrimException::Propagate() const { throw nex_PrimException(*this); }
