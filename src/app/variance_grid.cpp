#include "app/variance_grid.h"

#include "analysis/variance_table.h"
#include "controls/controls.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr const char* squaresPicture = "#0.0000";
constexpr int valueColumn = 1;

std::string TextOf(const std::optional<double>& value, const char* picture) {
    return value ? Format(*value, picture) : std::string();
}

}  // namespace

void ShowVarianceTable(Grid& grid, const VarianceTable& table, const VarianceGridWords& words) {
    grid.SetHeadings(words.headings);
    for (const VarianceRow& row : table.rows) {
        grid.AddRow({row.source, Format(row.sumOfSquares, squaresPicture),
                     row.degreesOfFreedom ? NumberText(*row.degreesOfFreedom) : std::string(),
                     TextOf(row.meanSquare, squaresPicture), TextOf(row.F, "#0.00"), TextOf(row.P, "Percent")});
    }
    grid.AddRow({words.standardError, Format(table.standardError, squaresPicture)});
    grid.SetCellColor(grid.Rows() - 1, valueColumn, words.standardErrorColor);
}

}  // namespace bellmark
