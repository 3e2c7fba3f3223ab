#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bellmark {

class CenterTab;
class TextBox;
struct CenterConfig;

/// One cell of the center tab: how it shows its value, blanks that align the column included, and how its text is taken
/// back.
struct CenterCell {
    std::string name;  ///< for the operator, when its text is refused
    TextBox* box = nullptr;
    std::function<std::string(const CenterConfig&)> shown;
    /// Text without the blanks around it. Throws std::invalid_argument when it cannot be understood, in words that go
    /// behind the cell's name. Empty for a cell
    /// that is only shown.
    std::function<void(CenterConfig&, const std::string& text)> take;
    bool lockedWhileShowing = true;
};

std::vector<CenterCell> CenterCells(CenterTab& tab);

}  // namespace bellmark
