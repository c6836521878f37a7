#include "host/python/py_Convert.h"

#include <gmock/gmock.h>
#include <pybind11/embed.h>

#include <string>

#include "foundation/coreutils/atr_String.h"
#include "foundation/shared/nex_Exception.h"
#include "host/python/py_Error.h"
#include "host/python/py_Module.h"
#include "host/python/py_Object.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_CvxNameErrorException.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimException.h"
#include "omu/omu_PrimExpr.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimPath.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimType.h"
#include "omu/omu_PrimWrapper.h"
#include "omu/omu_PyObjectWrapper.h"
#include "omu/omu_RangeErrorException.h"
#include "omu/omu_TypeErrorException.h"

PYBIND11_EMBEDDED_MODULE(ktsovu, module) { py_FillModule(module.ptr()); }

namespace {

namespace py = pybind11;

/// One interpreter for all tests; it stays until the end of the process.
class py_Convert : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (Py_IsInitialized()) return;
        py::initialize_interpreter();
        py::exec("import ktsovu, array, enum, fractions, pathlib, collections");
    }

    static std::unique_ptr<omu_Primitive> Convert(const py::object& value) {
        return py_Converter().Convert(value.ptr());
    }
    static py::object Back(std::unique_ptr<omu_Primitive> primitive) {
        return py::reinterpret_steal<py::object>(py_FromPrimitive(std::move(primitive)));
    }
    static std::string Repr(const py::handle& value) { return py::repr(value); }
};

TEST_F(py_Convert, TakesEveryKindOfValueThereAndBack) {
    const struct {
        const char* python;
        const char* word;
        const char* text;
        const char* back = nullptr;  // null: as it was
    } cases[] = {
        {"True", "Boolean", "True"},
        {"7", "int", "7"},
        {"-2147483648", "int", "-2147483648"},
        {"4294967295", "int", "4294967295"},
        {"2.0", "float", "2.0"},
        {"1-2j", "complex", "1-2j"},
        {"'ä\\0b'", "string", nullptr},
        {"None", "primitive", "None"},
        {"(1, ('a',), ())", "tuple", "(1, ('a',), ())"},
        {"[1, [2.5, None]]", "list", "[1, [2.5, None]]"},
        {"{'b': 1, 'a': [2]}", "dictionary", "{'b': 1, 'a': [2]}"},
        {"{3: 'c', -1: {}}", "dictionary", "{3: 'c', -1: {}}"},
        {"ktsovu.ON", "ON", "ON"},
        {"ktsovu.array([1, 2])", "omu_PrimArray", "array([1, 2], 'i')"},
        {"ktsovu.Point(1, 2, 3)", "Point", "Point(1.0, 2.0, 3.0)"},
        {"ktsovu.BBox()", "BBox", "BBox()"},
        {"object", "primitive", "Wrapper"},
        {"{1, 2}", "primitive", "Wrapper"},
        // What counts as another kind comes back as that.
        {"array.array('f', [0.5])", "omu_PrimArray", "array([0.5], 'f')", "array([0.5], 'f')"},
        {"enum.IntEnum('E', 'a b').b", "int", "2", "2"},
        {"fractions.Fraction(1, 4)", "float", "0.25", "0.25"},
        {"pathlib.Path('a') / 'b'", "string", "'a/b'", "'a/b'"},
        {"collections.namedtuple('P', 'x y')(1, 2)", "tuple", "(1, 2)", "(1, 2)"},
        {"collections.OrderedDict(a=1)", "dictionary", "{'a': 1}", "{'a': 1}"},
    };
    for (const auto& value : cases) {
        SCOPED_TRACE(value.python);
        const py::object given = py::eval(value.python);
        std::unique_ptr<omu_Primitive> primitive = Convert(given);
        EXPECT_EQ(primitive->TypeString().View(), value.word);
        if (value.text) {
            EXPECT_EQ(primitive->AsString(0).View(), value.text);
        }
        const py::object back = Back(std::move(primitive));
        EXPECT_EQ(Repr(back), value.back ? value.back : Repr(given));
        if (!value.back) {
            EXPECT_TRUE(back.equal(given));
            EXPECT_TRUE(back.get_type().is(given.get_type()));
        }
    }
}

TEST_F(py_Convert, ShowsKindsThatOnlyTheLibraryMakes) {
    cow_List<cow_String> path;
    path.Append("models");
    path.Append("a");
    int outside = 0;
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PrimPath>(path))), "'models.a'");
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PrimExpr>("x + 1"))), "x + 1");
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PrimType>("Part"))), "Type");
    const py::object wrapper = Back(std::make_unique<omu_PrimWrapper>(&outside));
    EXPECT_EQ(Repr(wrapper.get_type()), "<class 'ktsovu.Primitive'>");
    EXPECT_EQ(dynamic_cast<omu_PrimWrapper&>(*Convert(wrapper)).Object(), &outside);
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PrimTranslatedString>("text"))), "'text'");
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PyObjectWrapper>())), "None");
    EXPECT_TRUE(Back(nullptr).is_none());
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PrimString>("a\xff"))), "'a\xef\xbf\xbd'");
    const omu_FontErrorException fault("Comic is not a valid font.");
    EXPECT_EQ(Repr(Back(std::make_unique<omu_PrimException>(fault))),
              "FontError('Comic is not a valid font.')");
}

TEST_F(py_Convert, HoldsObjectsAsLongAsAPrimitiveDoes) {
    const py::object object = py::eval("object()");
    const auto before = object.ref_count();
    {
        const std::unique_ptr<omu_Primitive> primitive = Convert(py::eval("[1]").attr("__class__"));
        const std::unique_ptr<omu_Primitive> wrapper = Convert(object);
        const std::unique_ptr<omu_Primitive> copy(wrapper->Copy());
        EXPECT_EQ(object.ref_count(), before + 2);
        EXPECT_TRUE(Back(std::unique_ptr<omu_Primitive>(copy->Copy())).is(object));
    }
    EXPECT_EQ(object.ref_count(), before);
}

TEST_F(py_Convert, ConvertsWhatStandsAtSeveralPlacesOnce) {
    const py::object doubled = py::eval("(lambda x: [x, {'again': x}, (x,)])([[1]])");
    EXPECT_EQ(Convert(doubled)->AsString(0).View(), "[[[1]], {'again': [[1]]}, ([[1]],)]");
    py::exec("deep = [1]\nfor _ in range(20): deep = [deep, deep]");
    EXPECT_EQ(Convert(py::eval("deep"))->Nesting().nodes, (3 << 20) - 1);
}

/// The Python exception that becomes of a C++ one, as "Class: text".
template <class Exception>
std::string Translated(const Exception& exception) {
    try {
        throw exception;
    } catch (...) {
        py_SetError();
    }
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* trace = nullptr;
    PyErr_Fetch(&type, &value, &trace);
    PyErr_NormalizeException(&type, &value, &trace);
    const auto kind = py::reinterpret_steal<py::object>(type);
    const auto raised = py::reinterpret_steal<py::object>(value);
    const auto position = py::reinterpret_steal<py::object>(trace);
    return std::string(py::str(kind.attr("__name__"))) + ": " +
           std::string(py::str(raised.attr("args")[py::int_(0)]));
}

TEST_F(py_Convert, NamesExceptionsAsTheirClassesSay) {
    EXPECT_EQ(Translated(omu_KeyErrorException("k")), "KeyError: k");
    EXPECT_EQ(Translated(omu_IndexErrorException(4)), "IndexError: 4");
    EXPECT_EQ(Translated(omu_ValueErrorException("v")), "ValueError: v");
    EXPECT_EQ(Translated(omu_OverflowErrorException("o")), "OverflowError: o");
    EXPECT_EQ(Translated(omu_NameErrorException("n")), "NameError: n");
    EXPECT_EQ(Translated(omu_ZeroDivisionErrorException("z")), "ZeroDivisionError: z");
    EXPECT_EQ(Translated(omu_FontErrorException("%s")), "FontError: %s");
    EXPECT_EQ(Translated(omu_AccessErrorException("a")), "AccessError: a");
    EXPECT_EQ(Translated(omu_GuiAccessErrorException("g")), "GuiAccessError: g");
    EXPECT_EQ(Translated(omu_PyCorvixException("c")), "CorvixError: c");
    EXPECT_EQ(Translated(omu_CvxNameErrorException(omu_NAME_EMPTY)),
              "CorvixNameError: name is empty");
    EXPECT_EQ(Translated(omu_GenericTypeErrorException()),
              "TypeError: illegal argument type for built-in operation");
    EXPECT_EQ(Translated(nex_PrimException("p")), "CorvixError: p");
    EXPECT_EQ(Translated(std::length_error("long")), "OverflowError: long");
    EXPECT_EQ(Translated(std::runtime_error("r")), "CorvixError: r");
    EXPECT_EQ(Translated(5), "CorvixError: unknown failure");
    atr_SetCatalogue([](const cow_String& text) { return cow_String("<") + text + ">"; });
    EXPECT_EQ(Translated(omu_ValueErrorException("v")), "ValueError: <v>");
    atr_SetCatalogue(nullptr);
}

}  // namespace
