// Number texts, messages, traces, and decisions on decimal digits.

#include <charconv>
#include <functional>
#include <limits>

#include "foundation/coreutils/aio_FormatDouble.h"
#include "foundation/coreutils/aio_ostream.h"
#include "foundation/shared/nex_Exception.h"
#include "g3d/g3d_Camera.h"
#include "g3d/g3d_ColorMap.h"
#include "gsl/gsl_BBox.h"
#include "gsl/gsl_Real.h"
#include "omu/omu_Arguments.h"
#include "omu/omu_CorvixName.h"
#include "omu/omu_Get.h"
#include "omu/omu_PrimArray.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_RangeChecker.h"
#include "omu/omu_SymbolicConstantTable.h"
#include "testing/same/same_Report.h"
#include "testing/test_Environment.h"
#include "utf/utf_Quaternion.h"

namespace {

void NumberText(same_Report& report, double number) {
    report.Exact("texts of a number", number, aio_FormatDouble(number, 3),
                 aio_FormatDouble(number, 15), aio_FormatDouble(number, 17),
                 omu_PrimNumber(number).AsString(0), omu_PrimNumber(number).AsRepr(),
                 omu_PrimNumber(static_cast<float>(number)).AsString(0),
                 omu_PrimNumber(number).AsInt(), atr("%g|%12g|%08d", number, number, 7));
}

void NumberTexts(same_Report& report) {
    using Limits = std::numeric_limits<double>;
    for (const double number :
         {0.0, -0.0, 1.0, -1.5, 0.1, 1.0 / 3, 1e-5, 1e15, 1e16, 123456.5, 2147483648.0, 5e-324,
          Limits::min(), Limits::max(), Limits::infinity(), -Limits::infinity()}) {
        NumberText(report, number);
    }
    test_Random random(5);
    for (int i = 0; i < 500; ++i) {
        const double number = std::bit_cast<double>(random.Next());
        if (std::isfinite(static_cast<float>(number)) || i % 10 == 0) NumberText(report, number);
        NumberText(report, same_Coordinate(random));
    }
    aio_StringStream stream;
    const gsl_BBox box(same_Point(random), same_Point(random));
    box.Print(stream, 2);
    gsl_Vector(1, 2, 3).Print(stream, 1);
    utf_Quaternion<double>(gsl_Vector(1, 2, 2), gsl_Vector(0, 1, 0), gsl_Vector()).Print(stream, 0);
    report.Exact("printed", stream.Text());
}

/// Next to each power of ten log10 may round to the power itself, and the decision turns over.
void Decades(same_Report& report) {
    for (int power = -320; power <= 308; ++power) {
        const std::string text = "1e" + std::to_string(power);
        double decade = 0;
        std::from_chars(text.data(), text.data() + text.size(), decade);
        double near = decade;
        for (int i = 0; i < 5; ++i) near = std::nextafter(near, 0);
        std::string answers;
        for (int i = 0; i < 10; ++i, near = std::nextafter(near, 1e308)) {
            for (const int digits : {1, 3, 14, 15}) {
                answers += gsl_RealEqualDig(near, decade, digits) ? '1' : '0';
                answers += gsl_RealEqualDig(near, 3.0, digits) ? '1' : '0';
            }
        }
        report.Exact("gsl_RealEqualDig", text, answers);
    }
}

void Message(same_Report& report, const std::function<void()>& fail) {
    try {
        fail();
        report.Exact("message", std::string("none"));
    } catch (const nex_Exception& caught) {
        report.Exact("message", std::string(caught.PythonType()), std::string(caught.what()));
    } catch (const std::exception& caught) {
        report.Exact("message", std::string("other"), std::string(caught.what()));
    }
}

/// Reads the arguments (1.5, "two", [1, 2.5], size=<number>) into variables of other types.
void ArgumentMessages(same_Report& report) {
    omu_PrimList list;
    list.Append(omu_PrimNumber(1));
    list.Append(omu_PrimNumber(2.5));
    for (int wrong = 0; wrong < 6; ++wrong) {
        omu_Arguments arguments;
        arguments.Put(1.5);
        arguments.Put("two");
        arguments.Put(std::unique_ptr<omu_Primitive>(list.Copy()));
        arguments.Put(1e300, wrong == 5 ? "length" : "size");
        double number = 0;
        int integer = 0;
        cow_String text;
        cow_List<int> integers;
        cow_List<double> numbers;
        wrong == 0 ? arguments.Get(integer, "factor") : arguments.Get(number, "factor");
        wrong == 1 ? arguments.Get(number, "name") : arguments.Get(text, "name");
        wrong == 2 ? arguments.Get(integers, "points") : arguments.Get(numbers, "points");
        wrong == 3 ? arguments.Get(integer, "size") : arguments.Get(number, "size");
        if (wrong == 4) arguments.Get(number, "missing");
        Message(report, [&] { arguments.End("command"); });
        report.Exact("arguments", arguments.AsString(0), integer, number, numbers.Length());
    }
}

void Messages(same_Report& report) {
    ArgumentMessages(report);
    Message(report, [] { omu_RangeChecker::CheckInRange("size", 0.1, true, 1e-7, 2.5, false); });
    Message(report, [] { omu_RangeChecker::CheckGreaterThan("count", 3, false, -2147483647); });
    Message(report, [] { omu_RangeChecker::CheckLessThan("ratio", 1e22, true, 1.0e23); });
    for (const char* name : {"", " a", "a.b", "\xC3\xA9", "1\"x", "name_that_is_fine", "a:b*c"}) {
        Message(report, [name] { omu_CorvixName::TestKerName(name); });
        Message(report, [name] { omu_CorvixName::TestGuiJobName(name); });
        report.Exact("quoted name", omu_CorvixName::QuoteIfNeeded(name));
    }
    Message(report, [] { static_cast<void>(g3d_ColorMap::Instance().Lookup("Reddish")); });
    const int extents[] = {2, 3};
    const double elements[] = {1, 0.1, 1e-300, -2, 3e20, 0.5};
    const omu_PrimArray array(2, extents, elements);
    report.Exact("array", array.AsString(0), array.AsRepr(), array.TypeString());
    Message(report, [&array] { static_cast<void>(array.ConstGetItem(2, 0)); });
}

/// What is traced goes to standard error.
void Traces(same_Report& report) {
    const char* const variables[] = {"ZRX_DBG_PRIMARRAY", "ZRX_DBG_SYMCONST", "ZRX_ZOOM_TOWARD"};
    for (const char* name : variables) test_SetVariable(name, "3");
    Messages(report);
    g3d_Camera().ZoomTo(0.1f, 0.2f, 2, false, true);
    for (const char* name : {"A_NEW_NAME", "A_NEW_NAME", ""}) {
        report.Exact("constant", omu_SymbolicConstantTable::Instance().AddString(name));
    }
    for (const char* name : variables) test_SetVariable(name, nullptr);
}

}  // namespace

void same_Texts(same_Report& report) {
    NumberTexts(report);
    Decades(report);
    Traces(report);
}
