#include "host/python/py_Object.h"

#include <string>
#include <string_view>

#include "host/python/py_Annotation.h"
#include "host/python/py_Error.h"
#include "host/python/py_Text.h"
#include "host/python/py_Value.h"
#include "omu/omu_PrimEnumBase.h"
#include "omu/omu_SymbolicConstantTable.h"

namespace {

/// The constants of the module by name.
PyObject* constants = nullptr;

void Destroy(PyObject* object) {
    PyTypeObject* const type = Py_TYPE(object);
    delete reinterpret_cast<py_Object*>(object)->primitive;
    type->tp_free(object);
    Py_DECREF(type);
}

template <cow_String (*text)(const omu_Primitive&)>
PyObject* Text(PyObject* object) {
    try {
        return py_FromText(text(py_PrimitiveOf(object)));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

cow_String Display(const omu_Primitive& primitive) { return primitive.AsString(0); }
cow_String Representation(const omu_Primitive& primitive) { return primitive.AsRepr(); }

/// Objects of two classes are different without a look at their values.
PyObject* Compare(PyObject* left, PyObject* right, int operation) {
    const bool areComparable =
        (operation == Py_EQ || operation == Py_NE) && Py_TYPE(left) == Py_TYPE(right);
    if (!areComparable) Py_RETURN_NOTIMPLEMENTED;
    try {
        const bool areEqual = py_PrimitiveOf(left) == py_PrimitiveOf(right);
        return PyBool_FromLong(areEqual == (operation == Py_EQ));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

PyObject* Copy(PyObject* object, PyObject*) {
    try {
        return py_NewObject(Py_TYPE(object),
                            std::unique_ptr<omu_Primitive>(py_PrimitiveOf(object).Copy()));
    } catch (...) {
        py_SetError();
        return nullptr;
    }
}

PyMethodDef kMethods[] = {
    {"copy", &Copy, METH_NOARGS, "copy($self)\n--\n\nReturns an independent copy."},
    {"__copy__", &Copy, METH_NOARGS, nullptr},
    {"__deepcopy__", &Copy, METH_O, nullptr},
    {},
};

PyType_Slot kSlots[] = {
    {Py_tp_doc, const_cast<char*>("A value of the library. Paths, expressions and others without a "
                                  "class of their own\nare of this one; scripts pass them on.")},
    {Py_tp_dealloc, reinterpret_cast<void*>(&Destroy)},
    {Py_tp_repr, reinterpret_cast<void*>(&Text<&Representation>)},
    {Py_tp_str, reinterpret_cast<void*>(&Text<&Display>)},
    {Py_tp_richcompare, reinterpret_cast<void*>(&Compare)},
    {Py_tp_hash, reinterpret_cast<void*>(&PyObject_HashNotImplemented)},
    {Py_tp_methods, kMethods},
    {},
};

Py_hash_t HashOfName(PyObject* constant) {
    const auto& value = static_cast<const omu_PrimEnumBase&>(py_PrimitiveOf(constant));
    PyObject* const name = PyUnicode_FromString(value.CurrentName().Characters());
    if (!name) return -1;
    const Py_hash_t hash = PyObject_Hash(name);
    Py_DECREF(name);
    return hash;
}

PyObject* SameConstant(PyObject* constant, PyObject*) { return Py_NewRef(constant); }

/// Pickles and the like keep a constant by its name in the module.
PyObject* NameOfConstant(PyObject* constant, PyObject*) { return PyObject_Repr(constant); }

PyMethodDef kConstantMethods[] = {
    {"copy", &SameConstant, METH_NOARGS, "copy($self)\n--\n\nReturns the constant itself."},
    {"__copy__", &SameConstant, METH_NOARGS, nullptr},
    {"__deepcopy__", &SameConstant, METH_O, nullptr},
    {"__reduce__", &NameOfConstant, METH_NOARGS, nullptr},
    {},
};

PyType_Slot kConstantSlots[] = {
    {Py_tp_doc, const_cast<char*>("A symbolic constant, such as ktsovu.ON. It serves every "
                                  "enumeration that has its name.")},
    {Py_tp_hash, reinterpret_cast<void*>(&HashOfName)},
    {Py_tp_richcompare, reinterpret_cast<void*>(&Compare)},
    {Py_tp_methods, kConstantMethods},
    {},
};

PyTypeObject* MakeClass(const char* name, PyType_Slot* slots, unsigned flags, PyTypeObject* base) {
    PyType_Spec spec{name, sizeof(py_Object), 0, Py_TPFLAGS_DEFAULT | flags, slots};
    PyObject* const type = PyType_FromSpecWithBases(&spec, reinterpret_cast<PyObject*>(base));
    return reinterpret_cast<PyTypeObject*>(py_Require(type));
}

bool HasConstructor(const PyType_Slot* slots) {
    for (; slots->slot != 0; ++slots) {
        if (slots->slot == Py_tp_new) return true;
    }
    return false;
}

void Add(PyObject* module, PyTypeObject* type) {
    if (PyModule_AddType(module, type) < 0) throw py_PythonError();
}

void AddConstant(PyObject* module, const cow_String& name) {
    PyObject* const constant =
        py_NewObject(py_constantType, std::make_unique<omu_PrimEnumBase>(name));
    const bool isAdded = PyModule_AddObjectRef(module, name.Characters(), constant) == 0 &&
                         PyDict_SetItemString(constants, name.Characters(), constant) == 0;
    Py_DECREF(constant);
    if (!isAdded) throw py_PythonError();
}

/// A new reference to the module's constant; null for a name that it does not have.
PyObject* FindConstant(const omu_PrimEnumBase& value) {
    PyObject* const name = py_FromText(value.CurrentName());
    PyObject* const constant = PyDict_GetItemWithError(constants, name);
    Py_DECREF(name);
    return Py_XNewRef(constant);
}

}  // namespace

PyObject* py_NewObject(PyTypeObject* type, std::unique_ptr<omu_Primitive> adopted) {
    PyObject* const object = py_Require(type->tp_alloc(type, 0));
    reinterpret_cast<py_Object*>(object)->primitive = adopted.release();
    return object;
}

PyObject* py_ObjectOf(std::unique_ptr<omu_Primitive> adopted) {
    if (adopted->IsType(omu_PrimTag::kEnum)) {
        PyObject* const own = FindConstant(static_cast<const omu_PrimEnumBase&>(*adopted));
        return own ? own : py_NewObject(py_constantType, std::move(adopted));
    }
    if (adopted->IsType(omu_PrimTag::kArray)) return py_NewObject(py_arrayType, std::move(adopted));
    if (const auto* annotation = dynamic_cast<const annC_InterfaceObj*>(adopted.get())) {
        return py_NewObject(py_TypeOfAnnotation(*annotation), std::move(adopted));
    }
    const auto* const value = dynamic_cast<const py_ValueBase*>(adopted.get());
    return py_NewObject(value ? value->PythonType() : py_primitiveType, std::move(adopted));
}

PyTypeObject* py_AddClass(PyObject* module, const char* name, PyType_Slot* slots) {
    const std::string fullName = std::string("ktsovu.") + name;
    const unsigned flags = HasConstructor(slots) ? 0 : Py_TPFLAGS_DISALLOW_INSTANTIATION;
    PyTypeObject* const type = MakeClass(fullName.c_str(), slots, flags, py_primitiveType);
    Add(module, type);
    return type;
}

void py_AddObjects(PyObject* module) {
    py_primitiveType = MakeClass("ktsovu.Primitive", kSlots,
                                 Py_TPFLAGS_BASETYPE | Py_TPFLAGS_DISALLOW_INSTANTIATION, nullptr);
    Add(module, py_primitiveType);
    py_constantType = py_AddClass(module, "Constant", kConstantSlots);
    constants = py_Require(PyDict_New());
    omu_SymbolicConstantTable::Instance().CreatePythonSymbolicConstants(
        [module](const cow_String& name, unsigned) { AddConstant(module, name); });
}

void py_SealObjects() noexcept {
    py_primitiveType->tp_flags &= ~Py_TPFLAGS_BASETYPE;
    PyType_Modified(py_primitiveType);
}
