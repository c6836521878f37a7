// A call with three positional and three keyword arguments from a Python script: through the
// boundary of the host, to a pybind11 function, and to one that parses by itself; the same call
// refused for the type of its last argument; and the array of a buffer beside a plain copy.
#include <pybind11/embed.h>
#include <pybind11/pybind11.h>

#include <cstring>
#include <string>
#include <vector>

#include "bench/bench_Ratios.h"
#include "host/python/py_Call.h"
#include "host/python/py_Module.h"

namespace {

constexpr int kCalls = 1000;
constexpr std::size_t kMillion = 1'000'000;

const cow_String kWidth = "width";
const cow_String kCount = "count";
const cow_String kName = "name";
const cow_String kVisible = "visible";
const cow_String kStep = "step";
const cow_String kSize = "size";

py_Result BoundaryCommand(omu_Arguments& arguments) {
    double width = 0;
    int count = 0;
    cow_String name;
    bool visible = false;
    int step = 0;
    double size = 0;
    arguments.Get(width, kWidth);
    arguments.Get(count, kCount);
    arguments.Get(name, kName);
    arguments.Get(visible, kVisible);
    arguments.Get(step, kStep);
    arguments.Get(size, kSize);
    if (arguments.Error()) return {};
    return py_Return(width + count + name.Length() + visible + step + size);
}

double PybindFunction(double width, int count, const std::string& name, bool visible, int step,
                      double size) {
    return width + count + static_cast<double>(name.size()) + visible + step + size;
}

PyObject* ParsedFunction(PyObject*, PyObject* values, PyObject* keywords) {
    static const char* names[] = {"width", "count", "name", "visible", "step", "size", nullptr};
    double width = 0;
    int count = 0;
    const char* name = nullptr;
    int visible = 0;
    int step = 0;
    double size = 0;
    if (!PyArg_ParseTupleAndKeywords(values, keywords, "dispid", const_cast<char**>(names), &width,
                                     &count, &name, &visible, &step, &size)) {
        return nullptr;
    }
    return PyFloat_FromDouble(width + count + static_cast<double>(std::strlen(name)) + visible +
                              step + size);
}

PyMethodDef functions[] = {
    py_Function<&BoundaryCommand>("boundary", nullptr),
    {"parsed", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(&ParsedFunction)),
     METH_VARARGS | METH_KEYWORDS, nullptr},
    {},
};

constexpr const char* kLoops = R"(
def call(function, count):
    for _ in range(count):
        function(1.5, 2, 'three', visible=True, step=5, size=6.5)

def refuse(function, count):
    for _ in range(count):
        try:
            function(1.5, 2, 'three', visible=True, step=5, size='six')
        except TypeError:
            pass
)";

void RunLoop(benchmark::State& state, const char* loop, const char* function) {
    const pybind11::module_ main = pybind11::module_::import("__main__");
    const pybind11::object run = main.attr(loop);
    const pybind11::object callee = pybind11::module_::import("bench").attr(function);
    for (auto _ : state) run(callee, kCalls);
    state.SetItemsProcessed(state.iterations() * kCalls);
}

void BoundaryCall(benchmark::State& state) { RunLoop(state, "call", "boundary"); }
void Pybind11Call(benchmark::State& state) { RunLoop(state, "call", "pybind"); }
void ParsedCall(benchmark::State& state) { RunLoop(state, "call", "parsed"); }
void BoundaryRefusal(benchmark::State& state) { RunLoop(state, "refuse", "boundary"); }
void Pybind11Refusal(benchmark::State& state) { RunLoop(state, "refuse", "pybind"); }
void ParsedRefusal(benchmark::State& state) { RunLoop(state, "refuse", "parsed"); }
BENCHMARK(BoundaryCall);
BENCHMARK(Pybind11Call);
BENCHMARK(ParsedCall);
BENCHMARK(BoundaryRefusal);
BENCHMARK(Pybind11Refusal);
BENCHMARK(ParsedRefusal);

void ArrayOfBuffer(benchmark::State& state) {
    const pybind11::object array = pybind11::module_::import("ktsovu").attr("array");
    const std::vector<double> numbers(kMillion, 1.5);
    const pybind11::memoryview buffer = pybind11::memoryview::from_buffer(
        numbers.data(), {static_cast<pybind11::ssize_t>(kMillion)}, {sizeof(double)});
    for (auto _ : state) benchmark::DoNotOptimize(array(buffer).ptr());
}
BENCHMARK(ArrayOfBuffer);

/// As an array does it: into a block that is allocated for it.
void CopyOfBuffer(benchmark::State& state) {
    const std::vector<double> numbers(kMillion, 1.5);
    for (auto _ : state) {
        void* const copy = std::malloc(kMillion * sizeof(double));
        std::memcpy(copy, numbers.data(), kMillion * sizeof(double));
        benchmark::DoNotOptimize(copy);
        benchmark::ClobberMemory();
        std::free(copy);
    }
}
BENCHMARK(CopyOfBuffer);

constexpr bench_Ratio kRatios[] = {
    {"BoundaryCall", "Pybind11Call", 1.0},
    {"BoundaryRefusal", "Pybind11Refusal", 1.0},
    {"ArrayOfBuffer", "CopyOfBuffer", 2.0},
};

}  // namespace

PYBIND11_EMBEDDED_MODULE(ktsovu, module) { py_FillModule(module.ptr()); }

PYBIND11_EMBEDDED_MODULE(bench, module) {
    namespace py = pybind11;
    PyModule_AddFunctions(module.ptr(), functions);
    module.def("pybind", &PybindFunction, py::arg("width"), py::arg("count"), py::arg("name"),
               py::arg("visible"), py::arg("step"), py::arg("size"));
}

int main(int argc, char** argv) {
    const pybind11::scoped_interpreter interpreter;
    pybind11::module_::import("ktsovu");
    pybind11::exec(kLoops);
    return bench_Main(argc, argv, kRatios);
}
