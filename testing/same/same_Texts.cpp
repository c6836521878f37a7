// Number texts, messages, traces, and decisions on decimal digits.

#include <charconv>
#include <vector>

#include "foundation/coreutils/aio_FormatDouble.h"
#include "foundation/shared/nex_Exception.h"
#include "g3d/g3d_Camera.h"
#include "gsl/gsl_Real.h"
#include "omu/omu_CorvixName.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_RangeChecker.h"
#include "omu/omu_SymbolicConstantTable.h"
#include "testing/same/same_Report.h"
#include "testing/test_Environment.h"

namespace {

void NumberTexts(same_Report& report) {
    std::vector<double> numbers = {0.0, -0.0, 0.1, 1e15, 1e16, 5e-324, HUGE_VAL, -HUGE_VAL};
    test_Random random(5);
    for (int i = 0; i < 500; ++i) {
        numbers.push_back(std::bit_cast<double>(random.Next()));
        numbers.push_back(same_Coordinate(random));
    }
    for (const double number : numbers) {
        const omu_PrimNumber primitive(number);
        report.Print("exact texts of a number", number, aio_FormatDouble(number, 3),
                     aio_FormatDouble(number, 17), primitive.AsString(0), primitive.AsRepr(),
                     omu_PrimNumber(static_cast<float>(number)).AsString(0), primitive.AsInt(),
                     atr("%g|%12g|%08d", number, number, 7));
    }
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
        report.Print("exact gsl_RealEqualDig", power, cow_String(answers));
    }
}

template <class Call>
cow_String MessageOf(const Call& call) {
    try {
        call();
    } catch (const nex_Exception& caught) {
        return caught.what();
    }
    return "none";
}

void Messages(same_Report& report) {
    report.Print("exact message", MessageOf([] {
                     omu_RangeChecker::CheckInRange("size", 0.1, true, 1e-7, 2.5, false);
                 }));
    for (const char* name : {"", "a.b", "\xC3\xA9", "1\"x", "name_that_is_fine", "a:b*c"}) {
        report.Print("exact name", omu_CorvixName::QuoteIfNeeded(name),
                     MessageOf([name] { omu_CorvixName::TestKerName(name); }));
    }
}

}  // namespace

void same_Texts(same_Report& report) {
    NumberTexts(report);
    Decades(report);
    Messages(report);
    // What is traced goes to standard error.
    const char* const variables[] = {"ZRX_DBG_SYMCONST", "ZRX_ZOOM_TOWARD"};
    for (const char* name : variables) test_SetVariable(name, "3");
    g3d_Camera().ZoomTo(0.1f, 0.2f, 2, false, true);
    for (int i = 0; i < 2; ++i) omu_SymbolicConstantTable::Instance().AddString("A_NEW_NAME");
    for (const char* name : variables) test_SetVariable(name, nullptr);
}
