// The module as a file that any interpreter of the system imports.

#include <pybind11/pybind11.h>

#include "host/model/hst_Classes.h"
#include "host/python/py_Module.h"

PYBIND11_MODULE(ktsovu, module) {
    static const hst_ClassRegistration classes;  // until the file is unloaded
    py_FillModule(module.ptr());
}
