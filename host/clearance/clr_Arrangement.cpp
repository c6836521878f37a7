#include "host/clearance/clr_Arrangement.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <string_view>
#include <unordered_map>

#include "host/model/hst_Error.h"

namespace {

/// The parts by name.
class NameTable {
  public:
    explicit NameTable(const std::vector<hst_Part>& parts) {
        for (std::size_t i = 0; i < parts.size(); ++i) numbers.emplace(parts[i].Name(), i);
    }
    [[nodiscard]] bool Has(std::string_view name) const {
        return numbers.contains(std::string(name));
    }
    /// The number of the part; throws with the nearest names when there is none.
    [[nodiscard]] std::size_t Find(std::string_view name, const std::string& option) const {
        const auto found = numbers.find(std::string(name));
        if (found != numbers.end()) return found->second;
        throw hst_Error(option, "there is no part '" + std::string(name) + "'; the nearest " +
                                    NearestNames(name));
    }

  private:
    [[nodiscard]] std::string NearestNames(std::string_view name) const;

    std::unordered_map<std::string, std::size_t> numbers;
};

/// The number of bytes to insert, take away or replace that make one text the other
/// (V. Levenshtein).
std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), 0u);
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::string NameTable::NearestNames(std::string_view name) const {
    constexpr std::size_t kOffered = 3;
    std::vector<std::pair<std::size_t, std::string>> nearest;
    for (const auto& [known, number] : numbers)
        nearest.emplace_back(EditDistance(name, known), known);
    std::sort(nearest.begin(), nearest.end());
    nearest.resize(std::min(nearest.size(), kOffered));
    std::string text = nearest.size() == 1 ? "is" : "are";
    for (std::size_t i = 0; i < nearest.size(); ++i) {
        text += (i == 0 ? " '" : ", '") + nearest[i].second + "'";
    }
    return text;
}

/// The numbers of a list with commas, or none when one is no number that single precision holds, as
/// all coordinates do, so that the square of no distance overflows.
std::vector<double> ParseNumbers(std::string_view text) {
    std::vector<double> numbers;
    for (;;) {
        const std::string_view item = text.substr(0, text.find(','));
        double number = 0;
        const auto [end, error] = std::from_chars(item.data(), item.data() + item.size(), number);
        const bool isWhole = error == std::errc() && end == item.data() + item.size();
        if (!isWhole || !(std::abs(number) <= std::numeric_limits<float>::max())) return {};
        numbers.push_back(number);
        if (item.size() == text.size()) return numbers;
        text.remove_prefix(item.size() + 1);
    }
}

/// The placement after a move by three lengths and, where there are six numbers, three angles.
gsl_Matrix Moved(const hst_Part& part, const std::vector<double>& move) {
    gsl_Matrix placement = part.Placement();
    if (move.size() == 6) {
        const gsl_Point center = part.PlacedBox().Center();
        const gsl_Vector axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        for (std::size_t i = 0; i < 3; ++i) {
            gsl_Matrix turn;
            turn.AxisRotation(center, axes[i], move[i + 3] * std::numbers::pi / 180);
            placement.Concatenate(turn);
        }
    }
    gsl_Matrix shift;
    shift.SetTranslation({move[0], move[1], move[2]});
    return placement.GetConcatenated(shift);
}

/// The first ":" that leaves two names of parts.
std::size_t FindSplit(std::string_view text, const NameTable& names) {
    const std::string option = "--ignore " + std::string(text);
    const std::size_t first = text.find(':');
    if (first == std::string_view::npos) throw hst_Error(option, "is not PART:PART");
    for (std::size_t at = first; at != std::string_view::npos; at = text.find(':', at + 1)) {
        if (names.Has(text.substr(0, at)) && names.Has(text.substr(at + 1))) return at;
    }
    (void)names.Find(text.substr(0, first), option);
    (void)names.Find(text.substr(first + 1), option);
    throw hst_Error(option, "is not PART:PART");
}

}  // namespace

void clr_MoveParts(std::vector<hst_Part>& parts, const std::vector<std::string>& moves) {
    const NameTable names(parts);
    std::unordered_map<std::size_t, gsl_Matrix> placements;
    for (const std::string& text : moves) {
        const std::string option = "--move " + text;
        const std::size_t end = text.rfind('=');
        if (end == std::string::npos) throw hst_Error(option, "is not PART=x,y,z[,rx,ry,rz]");
        const std::size_t part = names.Find(std::string_view(text).substr(0, end), option);
        const std::vector<double> numbers = ParseNumbers(std::string_view(text).substr(end + 1));
        if (numbers.size() != 3 && numbers.size() != 6) {
            throw hst_Error(option, "takes 3 or 6 finite numbers after the name");
        }
        if (!placements.emplace(part, Moved(parts[part], numbers)).second) {
            throw hst_Error(option, "the part is moved twice");
        }
    }
    for (const auto& [part, placement] : placements) parts[part].SetPlacement(placement);
}

clr_IgnoredPairs clr_FindIgnoredPairs(const std::vector<hst_Part>& parts,
                                      const std::vector<std::string>& texts) {
    const NameTable names(parts);
    clr_IgnoredPairs pairs;
    for (const std::string& text : texts) {
        const std::size_t colon = FindSplit(text, names);
        pairs.emplace(text.substr(0, colon), text.substr(colon + 1));
    }
    return pairs;
}
