#include "host/python/py_Names.h"

#include "host/python/py_Call.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_CorvixName.h"

namespace {

const cow_String kName = "name";
const cow_String kMode = "mode";
const cow_String kFallback = "fallback";

constexpr const char* kZeroByte = "a name holds a zero byte";

py_Result CheckName(omu_Arguments& arguments) {
    omu_CorvixName name;
    int mode = 0;
    arguments.Get(name, kName);
    arguments.Get(mode, kMode);
    if (arguments.Error()) return {};
    py_RefuseZeroBytes(name.AsString());
    const omu_CorvixName tested(name.AsString(), static_cast<omu_CorvixNameEnum>(mode));
    return {};
}

py_Result LegalFileName(omu_Arguments& arguments) {
    cow_String name;
    arguments.Get(name, kName);
    if (arguments.Error()) return {};
    py_RefuseZeroBytes(name);
    omu_CorvixName::MakeLegalFileName(name);
    return py_Return(name);
}

py_Result LegalGuiName(omu_Arguments& arguments) {
    cow_String name;
    cow_String fallback;
    arguments.Get(name, kName);
    arguments.Optional();
    arguments.Get(fallback, kFallback);
    if (arguments.Error()) return {};
    py_RefuseZeroBytes(name);
    py_RefuseZeroBytes(fallback);
    omu_CorvixName::MakeLegalGuiName(name, fallback.Characters());
    return py_Return(name);
}

PyMethodDef kFunctions[] = {
    py_Function<&CheckName>(
        "checkName",
        "checkName($module, name, mode)\n--\n\n"
        "Raises CorvixNameError unless a name keeps to the rules of its mode.\n\n"
        "Modes: 0 plain, 1 job and 2 model names of the analysis side; 3 and 6 "
        "interface, 4 job\nand 5 model names of the interface; 7 X-Y data, 8 parts. "
        "Other modes test nothing."),
    py_Function<&LegalFileName>("makeLegalFileName",
                                "makeLegalFileName($module, name)\n--\n\n"
                                "Returns the name made a legal job and model name."),
    py_Function<&LegalGuiName>("makeLegalGuiName",
                               "makeLegalGuiName($module, name, fallback='Name')\n--\n\n"
                               "Returns the name made a legal interface name; the fallback when "
                               "nothing is left of it."),
    {},
};

}  // namespace

void py_RefuseZeroBytes(const cow_String& text) {
    if (text.View().find('\0') != text.View().npos) {
        KTSBasThrow(omu_ValueErrorException(kZeroByte));
    }
}

void py_AddNames(PyObject* module) {
    if (PyModule_AddFunctions(module, kFunctions) < 0) throw py_PythonError();
}
