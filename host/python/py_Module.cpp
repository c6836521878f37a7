#include "host/python/py_Module.h"

#include <pybind11/pybind11.h>

#include "host/python/py_Annotation.h"
#include "host/python/py_Array.h"
#include "host/python/py_Clearance.h"
#include "host/python/py_Convert.h"
#include "host/python/py_Error.h"
#include "host/python/py_Model.h"
#include "host/python/py_Names.h"
#include "host/python/py_Object.h"
#include "host/python/py_Values.h"
#include "host/python/py_Views.h"

namespace {

constexpr const char* kDoc =
    "Geometry, rotations, camera, colours, names and models of KTSOvuGeom.\n"
    "\n"
    "    parts = ktsovu.readModel('engine.glb')\n"
    "    print(ktsovu.table(parts))\n"
    "\n"
    "Arguments are positional or keyword. Angles end in Rad or Deg; lengths are in model units.\n"
    "Symbolic constants stand for enumerated arguments and have one name each, such as\n"
    "ktsovu.ON or ktsovu.CENTER. A call that is refused raises TypeError when the arguments do\n"
    "not fit, or the exception that is named beside the function.";

constexpr void (*kSteps[])(PyObject*) = {
    &py_AddErrors,     &py_AddObjects,   &py_AddArray,       &py_AddPointAndVector, &py_AddMatrix,
    &py_AddQuaternion, &py_AddBBox,      &py_AddCamera,      &py_AddColor,          &py_AddNames,
    &py_AddModel,      &py_AddClearance, &py_AddAnnotations,
};

}  // namespace

void py_FillModule(PyObject* module) {
    try {
        py_InstallObjectHooks();
        omu_RegisterEnumerations<g3d_SavedViewIdEnum>();
        for (const auto step : kSteps) step(module);
        py_SealObjects();
        const bool isDescribed =
            PyModule_SetDocString(module, kDoc) == 0 &&
            PyModule_AddStringConstant(module, "__version__", KTSOVU_VERSION) == 0;
        if (!isDescribed) throw py_PythonError();
    } catch (...) {
        py_SetError();
        throw pybind11::error_already_set();
    }
}
