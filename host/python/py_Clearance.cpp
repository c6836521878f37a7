#include "host/python/py_Clearance.h"

#include <cmath>
#include <limits>

#include "host/clearance/clr_Arrangement.h"
#include "host/clearance/clr_KindText.h"
#include "host/python/py_Array.h"
#include "host/python/py_Model.h"
#include "host/python/py_Values.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_RangeChecker.h"

namespace {

const cow_String kModel = "model";
const cow_String kGap = "gap";
const cow_String kTouch = "touch";
const cow_String kMove = "move";
const cow_String kIgnore = "ignore";

using ClearanceClass = py_Class<py_Clearance>;
using PairClass = py_Class<py_ClearancePair>;

void RequireLength(const cow_String& keyword, double length) {
    omu_RangeChecker::CheckInRange(keyword, 0.0, true, length, std::numeric_limits<double>::max(),
                                   true);
}

/// The texts of a sequence that may be left out.
std::vector<std::string> GivenTexts(omu_Arguments& arguments, const cow_String& keyword) {
    omu_PrimTuple sequence;
    std::vector<std::string> texts;
    if (!py_GetOptional(arguments, sequence, keyword)) return texts;
    for (int i = 0; i < sequence.Length(); ++i) {
        cow_String text;
        sequence.Get(text);
        texts.emplace_back(text.View());
    }
    sequence.End();
    return texts;
}

py_Result Check(omu_Arguments& arguments) {
    double gap = 0;
    double touch = 0;
    std::vector<hst_Part> parts = py_GivenModel(arguments, kModel);
    arguments.Optional();
    arguments.Get(gap, kGap);
    const bool hasTouch = py_GetOptional(arguments, touch, kTouch);
    const std::vector<std::string> moves = GivenTexts(arguments, kMove);
    const std::vector<std::string> ignored = GivenTexts(arguments, kIgnore);
    arguments.End();
    RequireLength(kGap, gap);
    RequireLength(kTouch, touch);
    clr_MoveParts(parts, moves);
    if (!hasTouch) touch = clr_DefaultTouch(parts);
    auto model = std::make_shared<py_CheckedModel>();
    for (const hst_Part& part : parts) model->names.push_back(part.Name());
    model->report = clr_Check(parts, {gap, touch}, clr_FindIgnoredPairs(parts, ignored),
                              [](std::size_t, std::size_t) {
                                  if (PyErr_CheckSignals() != 0) throw py_PythonError();
                              });
    return py_Return(py_Clearance{std::move(model)});
}

const clr_Report& ReportOf(const py_Clearance& clearance) { return clearance.model->report; }

py_Result Pairs(const py_Clearance& self, omu_Arguments& arguments) {
    arguments.End();
    auto list = std::make_unique<omu_PrimList>();
    for (std::size_t i = 0; i < ReportOf(self).pairs.size(); ++i) {
        list->Append(new py_Value<py_ClearancePair>({self.model, i}));
    }
    return list;
}

/// An array of one row a pair, of what `numbersOf` appends for it.
template <class NumbersOf>
py_Result ArrayOf(const py_Clearance& self, std::initializer_list<int> rowExtents,
                  NumbersOf numbersOf) {
    std::vector<double> numbers;
    for (const clr_Finding& pair : ReportOf(self).pairs) numbersOf(pair.result, numbers);
    std::vector<int> extents = {static_cast<int>(ReportOf(self).pairs.size())};
    extents.insert(extents.end(), rowExtents);
    return std::make_unique<omu_PrimArray>(static_cast<int>(extents.size()), extents.data(),
                                           numbers.data());
}

py_Result Lengths(const py_Clearance& self, omu_Arguments& arguments) {
    arguments.End();
    return ArrayOf(self, {}, [](const clr_PairResult& result, std::vector<double>& numbers) {
        numbers.push_back(result.length);
    });
}

py_Result Points(const py_Clearance& self, omu_Arguments& arguments) {
    arguments.End();
    return ArrayOf(self, {2, 3}, [](const clr_PairResult& result, std::vector<double>& numbers) {
        for (const clr_Vec& p : {result.onFirst, result.onSecond}) {
            numbers.insert(numbers.end(), {p.x, p.y, p.z});
        }
    });
}

py_Result ListOf(const std::set<std::string>& names, omu_Arguments& arguments) {
    arguments.End();
    auto list = std::make_unique<omu_PrimList>();
    for (const std::string& name : names) list->Append(new omu_PrimString(cow_String(name)));
    return list;
}

py_Result WithoutArea(const py_Clearance& self, omu_Arguments& arguments) {
    return ListOf(ReportOf(self).flat, arguments);
}

py_Result UnclearInside(const py_Clearance& self, omu_Arguments& arguments) {
    return ListOf(ReportOf(self).unclear, arguments);
}

double Gap(const py_Clearance& self) { return ReportOf(self).lengths.gap; }
double Touch(const py_Clearance& self) { return ReportOf(self).lengths.touch; }
int PairsChecked(const py_Clearance& self) { return static_cast<int>(ReportOf(self).pairsChecked); }
bool HasFindings(const py_Clearance& self) { return ReportOf(self).HasFindings(); }

gsl_Point ToPoint(const clr_Vec& p) { return {p.x, p.y, p.z}; }
cow_String NameOf(const py_ClearancePair& pair, std::size_t part) {
    return std::string_view(pair.model->names[part]);
}
cow_String Kind(const py_ClearancePair& self) {
    return clr_TextOf(self.Finding().result.kind).label;
}
cow_String First(const py_ClearancePair& self) { return NameOf(self, self.Finding().first); }
cow_String Second(const py_ClearancePair& self) { return NameOf(self, self.Finding().second); }
double Length(const py_ClearancePair& self) { return self.Finding().result.length; }
gsl_Point OnFirst(const py_ClearancePair& self) { return ToPoint(self.Finding().result.onFirst); }
gsl_Point OnSecond(const py_ClearancePair& self) { return ToPoint(self.Finding().result.onSecond); }
bool IsFinding(const py_ClearancePair& self) { return self.Finding().result.IsFinding(); }

PyMethodDef kMethods[] = {
    ClearanceClass::Method<&Pairs>("pairs",
                                   "pairs($self)\n--\n\n"
                                   "Returns the pairs: crossing (deepest first), enclosed, "
                                   "touching, too close (nearest first)."),
    ClearanceClass::Method<&Lengths>("lengths",
                                     "lengths($self)\n--\n\n"
                                     "Returns the lengths of the pairs, an array of doubles."),
    ClearanceClass::Method<&Points>("points",
                                    "points($self)\n--\n\n"
                                    "Returns where the lengths are reached: an array of two points "
                                    "for each pair."),
    ClearanceClass::Method<&WithoutArea>("withoutArea",
                                         "withoutArea($self)\n--\n\n"
                                         "Returns the names of the parts that were left out, since "
                                         "no triangle has an area."),
    ClearanceClass::Method<&UnclearInside>("unclearInside",
                                           "unclearInside($self)\n--\n\n"
                                           "Returns the names of the parts of which it is not "
                                           "clear what lies inside."),
    {},
};

PyGetSetDef kAttributes[] = {
    ClearanceClass::Attribute<&Gap>("gap", "the required clearance"),
    ClearanceClass::Attribute<&Touch>("touch", "the length within which surfaces touch"),
    ClearanceClass::Attribute<&PairsChecked>("pairsChecked", "the number of pairs looked at"),
    ClearanceClass::Attribute<&HasFindings>("hasFindings",
                                            "whether any pair is more than a contact"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc, const_cast<char*>("The result of a clearance check.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    {},
};

PyGetSetDef kPairAttributes[] = {
    PairClass::Attribute<&Kind>("kind", "'crossing', 'enclosed', 'touching' or 'too close'"),
    PairClass::Attribute<&First>("first", "the name of the first part"),
    PairClass::Attribute<&Second>("second", "the name of the second part"),
    PairClass::Attribute<&Length>("length", "the depth of a crossing, else the clearance"),
    PairClass::Attribute<&OnFirst>("onFirst", "where the length is reached on the first part"),
    PairClass::Attribute<&OnSecond>("onSecond", "where it is reached on the second part"),
    PairClass::Attribute<&IsFinding>("isFinding", "whether it is more than a contact"),
    {},
};

PyType_Slot pairSlots[] = {
    {Py_tp_doc, const_cast<char*>("How two parts stand to each other.")},
    {Py_tp_getset, kPairAttributes},
    {},
};

PyMethodDef kFunctions[] = {
    py_Function<&Check>(
        "clearance",
        "clearance($module, model, gap=0, touch=None, move=None, ignore=None)\n--\n\n"
        "Checks which parts of a model, a path or a sequence of parts, interfere or come closer "
        "than gap.\n\n"
        "Surfaces within touch count as touching; None is a millionth of the diagonal. move and "
        "ignore are\nsequences of texts such as 'PART=x,y,z' and 'PART:PART', as 'ktsovu "
        "clearance' takes them."),
    {},
};

}  // namespace

cow_String py_ValueTraits<py_Clearance>::Text(const py_Clearance& clearance) {
    return atr("<Clearance of %d pairs>", static_cast<int>(ReportOf(clearance).pairs.size()));
}

cow_String py_ValueTraits<py_ClearancePair>::Text(const py_ClearancePair& pair) {
    return atr("<ClearancePair %s %s %s %s>", Kind(pair), omu_Quoted(First(pair)),
               omu_Quoted(Second(pair)), py_NumberText(Length(pair)));
}

void py_AddClearance(PyObject* module) {
    ClearanceClass::Add(module, slots);
    PairClass::Add(module, pairSlots);
    if (PyModule_AddFunctions(module, kFunctions) < 0) throw py_PythonError();
}
