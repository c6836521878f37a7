#include "host/python/py_Model.h"

#include <limits>
#include <sstream>
#include <vector>

#include "host/cli/cli_PartTable.h"
#include "host/import/imp_ModelReader.h"
#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"
#include "host/python/py_Names.h"
#include "host/python/py_Values.h"
#include "host/store/hst_Database.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_RangeChecker.h"

namespace {

const cow_String kPath = "path";
const cow_String kMemoryLimit = "memoryLimit";
const cow_String kTimeLimit = "timeLimit";
const cow_String kParts = "parts";
const cow_String kJson = "json";
const cow_String kDatabase = "database";
const cow_String kName = "name";
const cow_String kVertices = "vertices";
const cow_String kTriangles = "triangles";
const cow_String kPlacement = "placement";

constexpr const char* kNoTriples = "%s is an array of rows of 3 numbers";

using PartClass = py_Class<py_Part>;
using Parts = std::vector<hst_Part>;

cow_String GivenPath(omu_Arguments& arguments, const cow_String& keyword) {
    cow_String path;
    arguments.Get(path, keyword);
    return path;
}

py_Result ReturnParts(Parts parts) {
    auto list = std::make_unique<omu_PrimList>();
    for (hst_Part& part : parts) {
        list->Append(new py_Value<py_Part>({std::make_shared<const hst_Part>(std::move(part))}));
    }
    return list;
}

/// The parts of a sequence, each with a name of its own.
Parts RequireParts(omu_PrimTuple sequence) {
    Parts parts;
    for (int i = 0; i < sequence.Length(); ++i) {
        py_Part part;
        sequence.Get(part);
        if (part.part) parts.push_back(*part);
    }
    sequence.End();
    hst_MakeNamesUnique(parts);
    return parts;
}

/// A positive number when it is given.
template <class Number>
void GetLimit(omu_Arguments& arguments, std::optional<Number>& limit, int& number,
              const cow_String& keyword) {
    if (py_GetOptional(arguments, number, keyword)) limit = static_cast<Number>(number);
}

void RequirePositive(const cow_String& keyword, int limit) {
    omu_RangeChecker::CheckInRange(keyword, 1, true, limit, std::numeric_limits<int>::max(), true);
}

/// The parts of a file; reading stops at Ctrl-C.
Parts ReadParts(const cow_String& path, const imp_ReadLimits& limits) {
    py_RefuseZeroBytes(path);
    Parts parts = imp_ReadModel(std::string(path.View()), limits, [](double) {
        if (PyErr_CheckSignals() != 0) throw py_PythonError();
    });
    hst_MakeNamesUnique(parts);
    return parts;
}

py_Result ReadModel(omu_Arguments& arguments) {
    imp_ReadLimits limits;
    int memoryMiB = 1;
    int seconds = 1;
    const cow_String path = GivenPath(arguments, kPath);
    arguments.Optional();
    GetLimit(arguments, limits.memoryMiB, memoryMiB, kMemoryLimit);
    GetLimit(arguments, limits.seconds, seconds, kTimeLimit);
    if (arguments.Error()) return {};
    RequirePositive(kMemoryLimit, memoryMiB);
    RequirePositive(kTimeLimit, seconds);
    return ReturnParts(ReadParts(path, limits));
}

py_Result Table(omu_Arguments& arguments) {
    omu_PrimTuple parts;
    bool json = false;
    arguments.Get(parts, kParts);
    arguments.Optional();
    arguments.Get(json, kJson);
    if (arguments.Error()) return {};
    const cli_PartTable table(RequireParts(parts));
    std::ostringstream text;
    if (json) {
        table.PrintJson(text);
    } else {
        table.Print(text);
    }
    return py_Return(cow_String(text.view()));
}

py_Result SaveParts(omu_Arguments& arguments) {
    omu_PrimTuple parts;
    arguments.Get(parts, kParts);
    const cow_String database = GivenPath(arguments, kDatabase);
    if (arguments.Error()) return {};
    py_RefuseZeroBytes(database);
    const Parts saved = RequireParts(parts);  // before there is a file
    hst_Database(std::string(database.View()), hst_Database::Access::Write)
        .Replace(saved, nullptr, [](std::size_t) {});
    return {};
}

py_Result LoadParts(omu_Arguments& arguments) {
    std::optional<hst_SavedModel> model = py_GivenSavedModel(arguments);
    if (!model) return {};
    return ReturnParts(std::move(model->parts));
}

void RequireTriples(const omu_PrimArray& array, const cow_String& keyword) {
    if (array.ConstGetArraySize() == 2 && array.ConstGetDimension(1) == 3) return;
    KTSBasThrow(omu_ValueErrorException(atr(kNoTriples, keyword)));
}

template <class Number>
std::vector<Number> NumbersOf(const omu_PrimArray& array) {
    std::vector<Number> numbers;
    for (int i = 0; i < array.Length(); ++i) {
        for (int j = 0; j < 3; ++j) {
            numbers.push_back(static_cast<Number>(array.ConstGetDouble(i, j)));
        }
    }
    return numbers;
}

py_Result New(omu_Arguments& arguments) {
    cow_String name;
    omu_PrimArray vertices;
    omu_PrimArray triangles;
    gsl_Matrix placement;
    arguments.Get(name, kName);
    arguments.Get(vertices, kVertices);
    arguments.Get(triangles, kTriangles);
    arguments.Optional();
    py_GetOptional(arguments, placement, kPlacement);
    if (arguments.Error()) return {};
    RequireTriples(vertices, kVertices);
    RequireTriples(triangles, kTriangles);
    auto part = std::make_shared<const hst_Part>(
        std::string(name.View()), placement, NumbersOf<float>(vertices), NumbersOf<int>(triangles));
    const std::string fault = part->Fault();
    if (!fault.empty()) {
        KTSBasThrow(omu_ValueErrorException(hst_Error("Part", part->Name(), fault).what()));
    }
    return py_Return(py_Part{std::move(part)});
}

py_Result Vertices(const py_Part& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    std::vector<double> numbers;
    for (int i = 0; i < self->VertexCount(); ++i) {
        const gsl_Point vertex = self->PlacedVertex(i);
        for (int axis = 0; axis < 3; ++axis) numbers.push_back(vertex[axis]);
    }
    const int extents[] = {self->VertexCount(), 3};
    return std::make_unique<omu_PrimArray>(2, extents, numbers.data());
}

py_Result Triangles(const py_Part& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    std::vector<int> numbers;
    for (int i = 0; i < self->TriangleCount(); ++i) {
        for (const int vertex : self->Triangle(i)) numbers.push_back(vertex);
    }
    const int extents[] = {self->TriangleCount(), 3};
    return std::make_unique<omu_PrimArray>(2, extents, numbers.data());
}

cow_String Name(const py_Part& part) { return std::string_view(part->Name()); }
int VertexCount(const py_Part& part) { return part->VertexCount(); }
int TriangleCount(const py_Part& part) { return part->TriangleCount(); }
gsl_Matrix Placement(const py_Part& part) { return part->Placement(); }
gsl_BBox Box(const py_Part& part) { return part->PlacedBox(); }

PyMethodDef kMethods[] = {
    PartClass::Method<&Vertices>("vertices",
                                 "vertices($self)\n--\n\n"
                                 "Returns the vertices in model space, an array of rows "
                                 "of 3 doubles."),
    PartClass::Method<&Triangles>("triangles",
                                  "triangles($self)\n--\n\n"
                                  "Returns the triangles, an array of rows of 3 vertex "
                                  "numbers."),
    {},
};

PyGetSetDef kAttributes[] = {
    PartClass::Attribute<&Name>("name", "the name"),
    PartClass::Attribute<&VertexCount>("vertexCount", "the number of vertices"),
    PartClass::Attribute<&TriangleCount>("triangleCount", "the number of triangles"),
    PartClass::Attribute<&Placement>("placement", "what takes the part to model space"),
    PartClass::Attribute<&Box>("box", "the box of the triangles in model space"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc,
     const_cast<char*>("Part(name, vertices, triangles, placement=None)\n--\n\n"
                       "A part of a model: rows of 3 coordinates, in its own space and in single "
                       "precision, rows of 3\nvertex numbers for each triangle, and the placement "
                       "in the model.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    PartClass::Constructor<&New>(),
    {},
};

PyMethodDef kFunctions[] = {
    py_Function<&ReadModel>(
        "readModel",
        "readModel($module, path, memoryLimit=None, timeLimit=None)\n--\n\n"
        "Returns the parts of an STL, OBJ, PLY, OFF, 3MF, glTF, Collada or IFC file.\n\n"
        "The file is read in a process of its own, with limits in MiB and seconds; None grows with "
        "the file.\nA file that is refused raises CorvixError. Parts of the same name are told "
        "apart "
        "by '#2', '#3' and\nso on."),
    py_Function<&Table>("table",
                        "table($module, parts, json=False)\n--\n\n"
                        "Returns the table of parts that 'ktsovu inspect' prints, or its "
                        "JSON form."),
    py_Function<&SaveParts>("saveParts",
                            "saveParts($module, parts, database)\n--\n\n"
                            "Saves parts in a database, in place of those saved there "
                            "before."),
    py_Function<&LoadParts>("loadParts",
                            "loadParts($module, database)\n--\n\n"
                            "Returns the parts that were saved in a database."),
    {},
};

}  // namespace

cow_String py_ValueTraits<py_Part>::Text(const py_Part& part) {
    return atr("<Part %s of %d triangles>", omu_Quoted(Name(part)), part->TriangleCount());
}

std::optional<hst_SavedModel> py_GivenSavedModel(omu_Arguments& arguments) {
    const cow_String database = GivenPath(arguments, kDatabase);
    if (arguments.Error()) return std::nullopt;
    py_RefuseZeroBytes(database);
    return hst_Database(std::string(database.View()), hst_Database::Access::Read).Load();
}

std::vector<hst_Part> py_GivenModel(omu_Arguments& arguments, const cow_String& keyword) {
    cow_String path;
    arguments.Get(path, keyword);
    if (!arguments.ErrorOnPrevious() || !arguments.Alternative()) return ReadParts(path, {});
    omu_PrimTuple parts;
    arguments.Get(parts, keyword);
    return RequireParts(parts);
}

void py_AddModel(PyObject* module) {
    PartClass::Add<&New>(module, slots);
    if (PyModule_AddFunctions(module, kFunctions) < 0) throw py_PythonError();
}
