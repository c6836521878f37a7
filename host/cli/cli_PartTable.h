#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "gsl/gsl_BBox.h"
#include "host/model/hst_Part.h"

/// The table of the parts of an assembly: triangles and the box in model space of every part, then
/// of all together. It is a function of the parts alone, so that parts read back from a database
/// give the same table to the last byte.
class cli_PartTable {
  public:
    explicit cli_PartTable(const std::vector<hst_Part>& parts);

    /// Prints for a reader: one line a part, numbers rounded to the same decimals, chosen by the
    /// size of the assembly. A name too long for its column stands on a line of its own.
    void Print(std::ostream& stream) const;
    /// Prints for programs: one JSON object with every number in full (17 significant digits).
    void PrintJson(std::ostream& stream) const;

  private:
    struct Row {
        std::string name;
        long long triangles = 0;
        gsl_BBox box;
        gsl_Matrix placement;
    };
    [[nodiscard]] double LargestNumber() const;

    std::vector<Row> rows;
    Row total;
};
