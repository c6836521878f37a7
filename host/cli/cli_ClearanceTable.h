#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "host/clearance/clr_Check.h"
#include "host/model/hst_Part.h"

/// The result of a clearance check in print: the pairs in the order of the report, each with its
/// kind, its depth or clearance and where that is reached on either part, then the counts.
class cli_ClearanceTable {
  public:
    /// Parts and report outlive the table.
    cli_ClearanceTable(const std::vector<hst_Part>& checkedParts, const clr_Report& checkReport)
        : parts(checkedParts), report(checkReport) {}

    /// Prints for a reader, lengths rounded to the same decimals, and so coordinates.
    void Print(std::ostream& stream) const;
    /// Prints for programs: one JSON object with every number in full (17 significant digits).
    void PrintJson(std::ostream& stream) const;

  private:
    [[nodiscard]] std::string Counts() const;
    [[nodiscard]] std::string JsonPair(const clr_Finding& pair) const;

    const std::vector<hst_Part>& parts;
    const clr_Report& report;
};
