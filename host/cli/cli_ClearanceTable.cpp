#include "host/cli/cli_ClearanceTable.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>

#include "host/clearance/clr_KindText.h"
#include "host/cli/cli_Columns.h"
#include "host/cli/cli_Json.h"

namespace {

std::string Seconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f s", seconds);
    return text;
}

std::string Length(double length) {
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", length);
    return text;
}

double LargestCoordinate(const clr_Vec& p) {
    return std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)});
}

gsl_Point ToPoint(const clr_Vec& p) { return {p.x, p.y, p.z}; }

std::string JsonNames(const std::set<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + cli_JsonText(name);
    return '[' + text + ']';
}

}  // namespace

std::string cli_ClearanceTable::Counts() const {
    std::string text;
    for (const clr_KindText& kind : clr_KIND_TEXTS) {
        text +=
            (text.empty() ? "" : ", ") + std::to_string(report.Count(kind.kind)) + ' ' + kind.label;
    }
    return text;
}

void cli_ClearanceTable::Print(std::ostream& stream) const {
    double longest = 0;
    double farthest = 0;
    for (const clr_Finding& pair : report.pairs) {
        longest = std::max(longest, pair.result.length);
        farthest = std::max({farthest, LargestCoordinate(pair.result.onFirst),
                             LargestCoordinate(pair.result.onSecond)});
    }
    const cli_NumberFormat lengths(longest);
    const cli_NumberFormat coordinates(farthest);
    cli_Columns columns(3);
    columns.Add({"kind", "part A", "part B", "length", "A x", "A y", "A z", "B x", "B y", "B z"});
    columns.AddRule();
    for (const clr_Finding& pair : report.pairs) {
        const clr_PairResult& result = pair.result;
        cli_Columns::Cells cells = {clr_TextOf(result.kind).label, parts[pair.first].Name(),
                                    parts[pair.second].Name(), lengths.Text(result.length)};
        for (const clr_Vec& p : {result.onFirst, result.onSecond}) {
            for (const double coordinate : {p.x, p.y, p.z})
                cells.push_back(coordinates.Text(coordinate));
        }
        columns.Add(std::move(cells));
    }
    columns.AddRule();
    columns.Print(stream);
    stream << "total: " << report.pairsChecked << (report.pairsChecked == 1 ? " pair" : " pairs")
           << " of " << parts.size() << (parts.size() == 1 ? " part" : " parts") << ": " << Counts()
           << "\nThe length of a crossing is its depth, of any other pair its clearance. Gap "
           << Length(report.lengths.gap) << ", touch length " << Length(report.lengths.touch)
           << ". Checked in " << Seconds(report.seconds) << ".\n";
}

std::string cli_ClearanceTable::JsonPair(const clr_Finding& pair) const {
    const clr_PairResult& result = pair.result;
    return std::string("{\"kind\": \"") + clr_TextOf(result.kind).jsonKey +
           "\", \"first\": " + cli_JsonText(parts[pair.first].Name()) +
           ", \"second\": " + cli_JsonText(parts[pair.second].Name()) +
           (result.kind == clr_Kind::Crossing ? ", \"depth\": " : ", \"clearance\": ") +
           cli_JsonNumber(result.length) +
           ", \"onFirst\": " + cli_JsonPoint(ToPoint(result.onFirst)) +
           ", \"onSecond\": " + cli_JsonPoint(ToPoint(result.onSecond)) + '}';
}

void cli_ClearanceTable::PrintJson(std::ostream& stream) const {
    stream << "{\n  \"gap\": " << cli_JsonNumber(report.lengths.gap)
           << ", \"touch\": " << cli_JsonNumber(report.lengths.touch) << ",\n  \"pairs\": [";
    const char* separator = "\n";
    for (const clr_Finding& pair : report.pairs) {
        stream << separator << "    " << JsonPair(pair);
        separator = ",\n";
    }
    stream << "\n  ],\n  \"counts\": {";
    for (const clr_KindText& kind : clr_KIND_TEXTS) {
        stream << (&kind == clr_KIND_TEXTS.data() ? "\"" : ", \"") << kind.jsonKey
               << "\": " << report.Count(kind.kind);
    }
    stream << "},\n  \"pairsChecked\": " << report.pairsChecked
           << ",\n  \"withoutArea\": " << JsonNames(report.flat)
           << ",\n  \"unclearInside\": " << JsonNames(report.unclear)
           << ",\n  \"seconds\": " << cli_JsonNumber(report.seconds) << "\n}\n";
}
