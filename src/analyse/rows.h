#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace bellmark {

struct DropResult;
struct TrialResult;

/// Results as rows of a table for other programs.
enum class RowForm { Csv, JsonLines };

/// A value without text is empty in CSV and null in JSON.
using Cell = std::variant<std::monostate, std::string, double, long long, bool>;
/// The cells of a row with the names of their columns, which are the same for all rows of a kind.
using Row = std::vector<std::pair<std::string_view, Cell>>;

Row RowOf(const DropResult& drop);
Row RowOf(const TrialResult& trial);

/// The names of the columns, as the first line of a CSV file; empty for JSON lines.
std::string HeadingText(const Row& row, RowForm form);

/// A line with its ending: CSV as in RFC 4180 but for the ending, which is a line feed alone, or a JSON object. UTF-8.
std::string RowText(const Row& row, RowForm form);

}  // namespace bellmark
