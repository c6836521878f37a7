#include "host/python/py_Run.h"

#include <pybind11/embed.h>
#include <pybind11/pybind11.h>

#include "host/python/py_Module.h"

PYBIND11_EMBEDDED_MODULE(ktsovu, module) { py_FillModule(module.ptr()); }

namespace {

/// The settings of an interpreter, released when this goes.
class Configuration {
  public:
    Configuration() { PyConfig_InitPythonConfig(&config); }
    ~Configuration() { PyConfig_Clear(&config); }
    Configuration(const Configuration&) = delete;
    Configuration& operator=(const Configuration&) = delete;

    PyStatus Start(int count, char** arguments) {
        // The arguments are the script's, not the interpreter's.
        config.parse_argv = 0;
        PyStatus status = PyConfig_SetBytesArgv(&config, count, arguments);
        if (PyStatus_Exception(status)) return status;
        status = PyConfig_SetBytesString(&config, &config.run_filename, arguments[0]);
        if (PyStatus_Exception(status)) return status;
        return Py_InitializeFromConfig(&config);
    }

  private:
    PyConfig config;
};

}  // namespace

int py_RunScript(int count, char** arguments) {
    {
        Configuration configuration;
        const PyStatus status = configuration.Start(count, arguments);
        if (PyStatus_Exception(status)) Py_ExitStatusException(status);
    }
    return Py_RunMain();
}
