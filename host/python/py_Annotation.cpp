#include "host/python/py_Annotation.h"

#include <optional>

#include "ann/annC_AnnotationClient.h"
#include "ann/annC_AnnotationContainerIntObj.h"
#include "ann/annC_AnnotationIntObj.h"
#include "g3d/g3d_ColorMap.h"
#include "host/picture/pic_AnnotationPainter.h"
#include "host/python/py_Call.h"
#include "host/python/py_Class.h"
#include "host/python/py_Model.h"
#include "host/python/py_Object.h"
#include "host/python/py_Reference.h"
#include "host/python/py_Text.h"
#include "omu/omu_ChangeHistory.h"
#include "omu/omu_PrimList.h"

namespace {

PyTypeObject* annotationType = nullptr;
PyTypeObject* containerType = nullptr;

annC_InterfaceObj& ObjectIn(PyObject* object) {
    return static_cast<annC_InterfaceObj&>(py_PrimitiveOf(object));
}
annC_AnnotationContainerIntObj& ContainerIn(PyObject* object) {
    return static_cast<annC_AnnotationContainerIntObj&>(py_PrimitiveOf(object));
}

/// Runs `action`, whose exceptions become Python's; `failed` is what the interpreter is told then.
template <class Action, class Answer>
Answer Guarded(Answer failed, Action action) {
    try {
        return action();
    } catch (...) {
        py_SetError();
        return failed;
    }
}

// Attributes: the members and the methods that the object names.

/// The call of a method; `self` is the pair of the object and the method's name.
PyObject* CallMethod(PyObject* self, PyObject* const* values, Py_ssize_t positional,
                     PyObject* keywords) {
    return py_Call({values, positional, keywords}, [self](omu_Arguments& arguments) {
        const cow_String name = py_ToText(PyTuple_GET_ITEM(self, 1));
        return ObjectIn(PyTuple_GET_ITEM(self, 0)).Call(name, arguments);
    });
}

PyObject* BoundMethod(PyObject* object, PyObject* name) {
    static PyMethodDef entry = {
        "method", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(&CallMethod)),
        METH_FASTCALL | METH_KEYWORDS, nullptr};
    const py_Reference self(PyTuple_Pack(2, object, name));
    return PyCFunction_New(&entry, self.Get());
}

PyObject* GetAttribute(PyObject* object, PyObject* name) {
    PyObject* const own = PyObject_GenericGetAttr(object, name);
    if (own || !PyErr_ExceptionMatches(PyExc_AttributeError)) return own;
    PyErr_Clear();
    return Guarded(own, [&] {
        const cow_String text = py_ToText(name);
        const annC_InterfaceObj& held = ObjectIn(object);
        return held.MethodNames().IsMember(text) ? BoundMethod(object, name)
                                                 : py_FromPrimitive(held.GetMember(text));
    });
}

int SetAttribute(PyObject* object, PyObject* name, PyObject* value) {
    return Guarded(-1, [&] {
        if (!value) py_Raise(PyExc_AttributeError, "members cannot be deleted");
        py_Converter converter;
        ObjectIn(object).SetMember(py_ToText(name), *converter.Convert(value));
        return 0;
    });
}

PyObject* Directory(PyObject* object, PyObject*) {
    return Guarded(static_cast<PyObject*>(nullptr), [&] {
        py_Reference names(PyObject_Dir(reinterpret_cast<PyObject*>(Py_TYPE(object))));
        const annC_InterfaceObj& held = ObjectIn(object);
        for (const auto& list : {held.MemberNames(), held.MethodNames()}) {
            for (const cow_String& name : list) {
                const py_Reference text(py_FromText(name));
                if (PyList_Append(names.Get(), text.Get()) < 0) throw py_PythonError();
            }
        }
        return names.Release();
    });
}

PyObject* Summary(PyObject* object, PyObject*) {
    return Guarded(static_cast<PyObject*>(nullptr),
                   [&] { return py_FromText(ObjectIn(object).Summary()); });
}

PyMethodDef kMethods[] = {
    {"__dir__", &Directory, METH_NOARGS, nullptr},
    {"summary", &Summary, METH_NOARGS,
     "summary($self)\n--\n\nReturns what there is to tell of the object, in a few lines."},
    {},
};

// A container as a mapping.

Py_ssize_t Length(PyObject* object) { return ContainerIn(object).Size(); }

int Contains(PyObject* object, PyObject* name) {
    if (!PyUnicode_Check(name)) return 0;
    return Guarded(-1, [&] { return ContainerIn(object).IsMember(py_ToText(name)) ? 1 : 0; });
}

cow_String KeyOf(PyObject* key) {
    if (!PyUnicode_Check(key)) py_Raise(PyExc_TypeError, "annotations are named by strings");
    return py_ToText(key);
}

PyObject* GetItem(PyObject* object, PyObject* key) {
    return Guarded(static_cast<PyObject*>(nullptr),
                   [&] { return py_FromPrimitive(ContainerIn(object).GetItem(KeyOf(key))); });
}

int SetItem(PyObject* object, PyObject* key, PyObject* value) {
    return Guarded(-1, [&] {
        const cow_String name = KeyOf(key);
        if (!value) {
            ContainerIn(object).RemoveItem(name);
        } else if (Py_TYPE(value) == annotationType) {
            ContainerIn(object).SetItem(
                name, static_cast<const annC_AnnotationIntObj&>(py_PrimitiveOf(value)));
        } else {
            py_Raise(PyExc_TypeError, "a container holds annotations");
        }
        return 0;
    });
}

PyObject* Iterate(PyObject* object) {
    return Guarded(static_cast<PyObject*>(nullptr), [&] {
        const py_Reference keys(PyList_New(0));
        for (const cow_String& name : ContainerIn(object).Keys()) {
            const py_Reference text(py_FromText(name));
            if (PyList_Append(keys.Get(), text.Get()) < 0) throw py_PythonError();
        }
        return PyObject_GetIter(keys.Get());
    });
}

PyType_Slot kAnnotationSlots[] = {
    {Py_tp_doc, const_cast<char*>("An arrow or a text over a picture: its fields are attributes.")},
    {Py_tp_getattro, reinterpret_cast<void*>(&GetAttribute)},
    {Py_tp_setattro, reinterpret_cast<void*>(&SetAttribute)},
    {Py_tp_methods, kMethods},
    {},
};

PyType_Slot kContainerSlots[] = {
    {Py_tp_doc, const_cast<char*>("Annotations by name, in drawing order: the first is in front.")},
    {Py_tp_getattro, reinterpret_cast<void*>(&GetAttribute)},
    {Py_tp_setattro, reinterpret_cast<void*>(&SetAttribute)},
    {Py_tp_iter, reinterpret_cast<void*>(&Iterate)},
    {Py_sq_contains, reinterpret_cast<void*>(&Contains)},
    {Py_mp_length, reinterpret_cast<void*>(&Length)},
    {Py_mp_subscript, reinterpret_cast<void*>(&GetItem)},
    {Py_mp_ass_subscript, reinterpret_cast<void*>(&SetItem)},
    {Py_tp_methods, kMethods},
    {},
};

// The functions of the module.

py_Result NewArrow(omu_Arguments& arguments) {
    return std::make_unique<annC_ArrowIntObj>(arguments);
}

py_Result NewText(omu_Arguments& arguments) { return std::make_unique<annC_TextIntObj>(arguments); }

py_Result NewContainer(omu_Arguments&) {
    return std::make_unique<annC_AnnotationContainerIntObj>();
}

py_Result LoadAnnotations(omu_Arguments& arguments) {
    const std::optional<hst_SavedModel> model = py_GivenSavedModel(arguments);
    if (!model) return {};
    return std::make_unique<annC_AnnotationContainerIntObj>(
        model->check ? model->check->annotations : annC_AnnotationContainer());
}

py_Result ChangeHistory(omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    auto list = std::make_unique<omu_PrimList>();
    for (const omu_PrimHandle& change : omu_ChangeHistory::Instance().TakeChanges()) {
        list->Append(change->Copy());
    }
    return list;
}

PyMethodDef kFunctions[] = {
    py_Function<&NewArrow>("Arrow",
                           "Arrow($module, *values, **fields)\n--\n\n"
                           "Returns an arrow; the fields not given have their defaults."),
    py_Function<&NewText>("Text",
                          "Text($module, *values, **fields)\n--\n\n"
                          "Returns a text; the fields not given have their defaults."),
    py_Function<&NewContainer>("AnnotationContainer",
                               "AnnotationContainer($module)\n--\n\n"
                               "Returns an empty container of annotations."),
    py_Function<&LoadAnnotations>("loadAnnotations",
                                  "loadAnnotations($module, database)\n--\n\n"
                                  "Returns the annotations of the clearance check in a database."),
    py_Function<&ChangeHistory>("changeHistory",
                                "changeHistory($module)\n--\n\n"
                                "Returns the changes of containers since the last call, as "
                                "tuples, the oldest first."),
    {},
};

void RequireColor(const cow_String& name) {
    static_cast<void>(g3d_ColorMap::Instance().Lookup(atr_String(name)));
}

}  // namespace

PyTypeObject* py_TypeOfAnnotation(const annC_InterfaceObj& object) noexcept {
    return dynamic_cast<const annC_AnnotationContainerIntObj*>(&object) ? containerType
                                                                        : annotationType;
}

void py_AddAnnotations(PyObject* module) {
    annotationType = py_AddClass(module, "Annotation", kAnnotationSlots);
    containerType = py_AddClass(module, "Annotations", kContainerSlots);
    if (PyModule_AddFunctions(module, kFunctions) < 0) throw py_PythonError();
    annC_AnnotationClient::Instance().SetColorCheck(&RequireColor);
    annC_AnnotationClient::Instance().SetTextMeasurer(&pic_TextSize);
    omu_ChangeHistory::Instance().StartRecording();
}
