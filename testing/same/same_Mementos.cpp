// Mementos of every persistent module.

#include <fstream>
#include <functional>
#include <iterator>
#include <vector>

#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_Text.h"
#include "gsl/gsl_Dot.h"
#include "gsl/gsl_ObjArrays.h"
#include "gsl/gsl_PersistentMatrix.h"
#include "gsl/gsl_PersistentVector.h"
#include "gsl/gsl_Plane.h"
#include "idb/idb_Archive.h"
#include "mdl/mdl_JaggedArray.h"
#include "mdl/mdl_PropertyTable.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimComplex.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimPath.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimTuple.h"
#include "testing/same/same_Report.h"

namespace {

/// The bytes of an object, and how they are read and saved anew ("" when they are refused).
struct Memento {
    std::string name;
    std::string bytes;
    std::function<std::string(const std::string&, idb_LoadFault&)> saveAnew;
};

template <class T>
std::string Save(const T& object) {
    bio_Ofilter out;
    idb_SaveObject(out, object);
    return {reinterpret_cast<const char*>(out.Data()), out.Size()};
}

template <class T>
Memento MementoOf(const char* name, const T& object) {
    return {name, Save(object),
            [classId = cls_ClassOf(object)](const std::string& bytes, idb_LoadFault& fault) {
                const auto loaded = idb_LoadObject<T>(bytes.data(), bytes.size(), classId, fault);
                return loaded ? Save(*loaded) : std::string();
            }};
}

annC_AnnotationContainer Annotations() {
    annC_Arrow arrow;
    arrow.SetStartPoint({1.5, -2});
    arrow.SetStartAnchor(annC_Point3DAnchor(1, 2, 0.1));
    arrow.SetColor("Red");
    annC_Text text;
    text.SetText("two\nlines \xC3\xA9");
    text.SetRotationAngle(30);
    annC_AnnotationContainer container;
    container.Insert("arrow", arrow);
    container.Insert("text", text);
    return container;
}

std::vector<Memento> Mementos() {
    test_Random random(6);
    gsl_Matrix matrix;
    matrix.SetRotationVectors(gsl_Vector(1, 2, 2), gsl_Vector(2, 1, -2), gsl_Vector(-2, 2, -1));
    gsl_DotArray dots;
    gsl_PlaneArray planes;
    cow_2DArray<double> cells(7, 3);
    omu_PrimStringDictionary dictionary;
    omu_PrimList list;
    std::vector<double> numbers;
    for (int i = 0; i < 21; ++i) {
        numbers.push_back(same_Coordinate(random));
        dots.Append(i % 5 == 0 ? gsl_Dot(i, -i) : gsl_Dot(numbers.back(), 2, 3));
        planes.Append(gsl_Plane(same_Point(random), same_Vector(random)));
        cells.Get(i / 3, i % 3) = numbers.back();
        list.Append(omu_PrimNumber(numbers.back()));
        if (i % 7 == 0) dictionary.Insert(atr("key %d", i), list);
    }
    const int offsets[] = {0, 4, 4, 20}, extents[] = {3, 7};
    return {MementoOf("gsl_Point", same_Point(random)),
            MementoOf("gsl_Vector", gsl_PersistentVector(same_Vector(random))),
            MementoOf("gsl_Matrix", gsl_PersistentMatrix(matrix)),
            MementoOf("gsl_BBox", gsl_BBox(same_Point(random), same_Point(random))),
            MementoOf("gsl_DotArray", dots),
            MementoOf("gsl_PlaneArray", planes),
            MementoOf("g3d_Point", g3d_Point(0.1f, -2, 3e-20f)),
            MementoOf("mdl_PropertyTable", mdl_PropertyTable(cells)),
            MementoOf("mdl_JaggedArray", mdl_JaggedArray(4, 21, offsets, numbers.data())),
            MementoOf("annC_AnnotationContainer", Annotations()),
            MementoOf("omu_PrimComplex", omu_PrimComplex({0.1, -2})),
            MementoOf("omu_PrimString", omu_PrimString("text \xC3\xA9\r\n\x1A.")),
            MementoOf("omu_PrimPath", omu_PrimPath(cow_List<cow_String>("a", "", "c"), 'm', "mdb")),
            MementoOf("omu_PrimArray", omu_PrimArray(2, extents, numbers.data())),
            MementoOf("omu_PrimList", list),
            MementoOf("omu_PrimDictionary", dictionary)};
}

}  // namespace

void same_WriteMementos(same_Report& report, const std::string& folder) {
    for (const Memento& memento : Mementos()) {
        std::ofstream(folder + '/' + memento.name, std::ios::binary) << memento.bytes;
        for (std::size_t size = 0; size <= memento.bytes.size(); size += 1 + size / 16) {
            idb_LoadFault fault;
            const std::string anew = memento.saveAnew(memento.bytes.substr(0, size), fault);
            report.Exact("cut memento", memento.name, size, anew.size(), fault.text);
        }
    }
}

bool same_ReadMementos(same_Report& report, const std::string& folder) {
    bool same = true;
    for (const Memento& memento : Mementos()) {
        std::ifstream file(folder + '/' + memento.name, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        idb_LoadFault fault;
        same = memento.saveAnew(bytes, fault) == memento.bytes && bytes == memento.bytes && same;
        report.Exact("memento", memento.name, bytes.size(), fault.text);
    }
    return same;
}
