#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/// How all lengths of one table are written: with the same decimals, so many that the largest shows
/// the seven significant digits of single-precision positions; in powers of ten when it is huge or
/// tiny.
class cli_NumberFormat {
  public:
    explicit cli_NumberFormat(double largest);
    [[nodiscard]] std::string Text(double value) const;

  private:
    bool isScientific;
    int decimals;
};

/// Writes lines of cells in columns of equal width: names to the left, what follows them to the
/// right. Names that are too long for their column stand on a line of their own.
class cli_Columns {
  public:
    using Cells = std::vector<std::string>;

    /// The first `nameCount` cells of a line are names, at least one.
    explicit cli_Columns(std::size_t nameCount) : names(nameCount) {}

    void Add(Cells cells);
    /// A line of dashes under the last line.
    void AddRule() { lines.emplace_back(); }
    void Print(std::ostream& stream) const;

  private:
    void PrintRule(std::ostream& stream) const;
    void PrintLine(std::ostream& stream, const Cells& cells) const;
    [[nodiscard]] bool FitsColumns(const Cells& cells) const;

    std::size_t names;
    std::vector<int> widths;
    std::vector<Cells> lines;
};
