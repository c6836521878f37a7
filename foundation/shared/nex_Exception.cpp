#include "foundation/shared/nex_Exception.h"

const char* nex_Exception::what() const noexcept {
    try {
        whatText = JournalMessage(KTSBasStringMode::Untranslated);
    } catch (...) {
        return "";
    }
    return whatText.Characters();
}

const char* nex_Exception::PythonType() const { return "CorvixError"; }

std::uint32_t nex_Exception::DynTypeId() const noexcept { return 0; }

void nex_Exception::DBWrite(cls_WriteVisitor&) const {}

cow_String nex_PrimException::JournalMessage(KTSBasStringMode mode) const {
    return message.Text(mode);
}
