#pragma once

#include <string>
#include <vector>

#include "controls/color.h"

namespace bellmark {

class Grid;
struct VarianceTable;

/// The words on a screen around the numbers of an analysis of variance.
struct VarianceGridWords {
    std::vector<std::string> headings;  ///< source, sum of squares, degrees of freedom, mean square, F, P
    std::string standardError;          ///< name of the last row
    Color standardErrorColor = colors::window;
};

/// Fills the grid: one row per row of the table, and one with the standard error. Missing values are blank.
void ShowVarianceTable(Grid& grid, const VarianceTable& table, const VarianceGridWords& words);

}  // namespace bellmark
