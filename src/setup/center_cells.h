#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bellmark {

class CenterTab;
class TextBox;
struct CenterConfig;

/// One cell of the center tab: how it shows its value, with the blanks that align the column, and how its text is read
/// back.
struct CenterCell {
    std::string name;  ///< for the operator, when the text is refused
    TextBox* box = nullptr;
    std::function<std::string(const CenterConfig&)> shown;
    /// Takes the text without the blanks around it. Throws std::invalid_argument when it cannot be understood, with
    /// words that follow the cell's name. Empty for a cell that is only shown.
    std::function<void(CenterConfig&, const std::string& text)> take;
    bool lockedWhileShowing = true;
};

std::vector<CenterCell> CenterCells(CenterTab& tab);

}  // namespace bellmark
