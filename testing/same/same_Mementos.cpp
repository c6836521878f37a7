// Mementos with numbers, texts, lists and maps, of classes of each module.

#include <fstream>
#include <iterator>

#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_Point3DAnchor.h"
#include "gsl/gsl_Dot.h"
#include "gsl/gsl_ObjArrays.h"
#include "idb/idb_Archive.h"
#include "mdl/mdl_JaggedArray.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"
#include "testing/same/same_Report.h"

namespace {

template <class T>
std::string Save(const T& object) {
    bio_Ofilter out;
    idb_SaveObject(out, object);
    return {reinterpret_cast<const char*>(out.Data()), out.Size()};
}

/// Reads an object of the class of `object` and saves it anew; "" when the bytes are refused.
template <class T>
std::string SaveAnew(const T& object, const std::string& bytes, idb_LoadFault& fault) {
    const auto loaded = idb_LoadObject<T>(bytes.data(), bytes.size(), cls_ClassOf(object), fault);
    return loaded ? Save(*loaded) : std::string();
}

}  // namespace

bool same_Mementos(same_Report& report, const std::string& folder, bool areWrittenHere) {
    bool areSame = true;
    const auto check = [&](const char* name, const auto& object) {
        const std::string path = folder + '/' + name, ours = Save(object);
        if (areWrittenHere) std::ofstream(path, std::ios::binary) << ours;
        std::ifstream file(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        idb_LoadFault fault;
        areSame = areSame && bytes == ours && SaveAnew(object, bytes, fault) == ours;
        for (std::size_t size = 0; size < bytes.size(); size += 1 + size / 16) {
            const std::string anew = SaveAnew(object, bytes.substr(0, size), fault);
            report.Print("exact memento", cow_String(name), size, anew.size(), fault.text);
        }
    };
    annC_Arrow arrow;
    arrow.SetStartAnchor(annC_Point3DAnchor(1, 2, 0.1));
    arrow.SetColor("Red");
    annC_AnnotationContainer container;
    container.Insert("arrow", arrow);
    gsl_DotArray dots;
    omu_PrimStringDictionary dictionary;
    omu_PrimList list;
    list.Append(omu_PrimString("text \xC3\xA9\r\n\x1A."));
    test_Random random(6);
    double values[20];
    for (double& value : values) {
        value = same_Coordinate(random);
        dots.Append(value < 0 ? gsl_Dot(1, -2) : gsl_Dot(value, 2, 3));
        list.Append(omu_PrimNumber(value));
        dictionary.Insert(atr("key %g", value), list);
    }
    const int offsets[] = {0, 4, 4, 19};
    check("gsl_DotArray", dots);
    check("mdl_JaggedArray", mdl_JaggedArray(4, 20, offsets, values));
    check("annC_AnnotationContainer", container);
    check("omu_PrimDictionary", dictionary);
    return areSame;
}
