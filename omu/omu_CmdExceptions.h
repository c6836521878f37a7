#pragma once

#include "foundation/shared/nex_CmdException.h"

/// The scripting exceptions that are no more than a message. Each is known to archives under the
/// name that it has here.

/// A key that a dictionary does not hold: "KeyError".
using omu_KeyErrorException = nex_CmdException<cow_String, 1>;
/// An index, the message in decimal, outside of a sequence: "IndexError".
using omu_IndexErrorException = nex_CmdException<int, 1>;
/// A value that is not accepted: "ValueError".
using omu_ValueErrorException = nex_CmdException<atr_String, 1>;
/// A result too large to be represented: "OverflowError".
using omu_OverflowErrorException = nex_CmdException<atr_String, 2>;
/// A name that is not known: "NameError".
using omu_NameErrorException = nex_CmdException<atr_String, 3>;
/// A division by zero: "ZeroDivisionError".
using omu_ZeroDivisionErrorException = nex_CmdException<atr_String, 5>;
/// "%s is not a valid font.": "FontError". The view geometry registers its metadata.
using omu_FontErrorException = nex_CmdException<cow_String, 7>;
/// Access that is not allowed: "AccessError".
using omu_AccessErrorException = nex_CmdException<cow_String, 8>;
/// Any error of the application: "CorvixError".
using omu_PyCorvixException = nex_CmdException<cow_String, 16>;
/// Access that needs the graphical interface: "GuiAccessError".
using omu_GuiAccessErrorException = nex_CmdException<atr_String, 32>;
