#include "controls/controls.h"

#include <algorithm>
#include <utility>

#include "controls/picture.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "platform/timers.h"

namespace bellmark {

namespace {

/// Everything typed may end up in a file, so it is refused here, where the operator can still change it.
void RequireStorable(const std::string& text) {
    try {
        ToWindows1252(text);
    } catch (const EncodingError& error) {
        throw UserError(error.what());
    }
}

}  // namespace

Button::Button(Place place, std::string name, std::string caption)
    : CaptionedControl(place, std::move(name), std::move(caption)) {
    BackColor = colors::buttonFace;
}

void TextBox::UserEnter(const std::string& text) {
    RequireReachable();
    if (Locked) throw UserError(FullName() + " is locked");
    RequireStorable(text);
    Text = text;
    Raise("Leave", Leave);
}

void OptionButton::Choose() {
    for (Control* control : Owner().Controls()) {
        auto* option = dynamic_cast<OptionButton*>(control);
        if (option && option != this && option->group_ == group_) option->Drop();
    }
    chosen_ = true;
}

void OptionButton::Drop() {
    chosen_ = false;
}

std::string ComboBox::DisplayText() const {
    const auto& items = Items.Get();
    const int index = ListIndex;
    return index >= 0 && index < static_cast<int>(items.size()) ? items[static_cast<std::size_t>(index)]
                                                                : std::string();
}

bool ComboBox::ChooseText(const std::string& item) {
    const auto& items = Items.Get();
    const auto found = std::find(items.begin(), items.end(), item);
    if (found == items.end()) return false;
    ListIndex = static_cast<int>(found - items.begin());
    return true;
}

void ComboBox::UserChoose(int index) {
    RequireReachable();
    if (index < 0 || index >= static_cast<int>(Items.Get().size())) {
        throw UserError(FullName() + " has no entry " + NumberText(index));
    }
    ListIndex = index;
    chosenSinceLeft_ = true;
    Raise("Click", Click);
}

void ComboBox::UserChoose(const std::string& item) {
    const auto& items = Items.Get();
    const auto found = std::find(items.begin(), items.end(), item);
    if (found == items.end()) throw UserError(FullName() + " has no entry \"" + item + '"');
    UserChoose(static_cast<int>(found - items.begin()));
}

void ComboBox::UserLeave() {
    // Leaving the list without a choice raises no event.
    if (!std::exchange(chosenSinceLeft_, false)) return;
    Raise("Leave", Leave);
}

std::string Grid::DisplayText() const {
    std::string text;
    for (const auto& row : cells_) {
        if (!text.empty()) text += '\n';
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0) text += '\t';
            text += row[column].text;
        }
    }
    return text;
}

Grid::GridCell& Grid::At(int row, int column) {
    return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
}

const Grid::GridCell& Grid::At(int row, int column) const {
    return cells_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
}

void Grid::SetHeadings(const std::vector<std::string>& headings) {
    Resize(0, static_cast<int>(headings.size()));
    AddRow(headings);
}

void Grid::AddRow(const std::vector<std::string>& texts) {
    Resize(Rows() + 1, columns_);
    for (std::size_t column = 0; column < texts.size() && column < cells_.back().size(); ++column) {
        cells_.back()[column].text = texts[column];
    }
    TellChanged();
}

void Grid::Resize(int rows, int columns) {
    columns_ = columns;
    cells_.resize(static_cast<std::size_t>(rows));
    for (auto& row : cells_) row.resize(static_cast<std::size_t>(columns));
    if (SelectedRow >= rows) SelectedRow = -1;
    TellChanged();
}

void Grid::SetCell(int row, int column, std::string text) {
    At(row, column).text = std::move(text);
    TellChanged();
}

void Grid::SetCellColor(int row, int column, Color color) {
    At(row, column).color = color;
    TellChanged();
}

void Grid::SetCellToolTip(int row, int column, std::string text) {
    At(row, column).toolTip = std::move(text);
    TellChanged();
}

void Grid::SetEditable(int row, int column, bool editable) {
    At(row, column).editable = editable;
    TellChanged();
}

void Grid::RequireUserCell(int row, int column) const {
    RequireReachable();
    if (!HasCell(row, column)) {
        throw UserError(FullName() + " has no cell " + NumberText(row) + ' ' + NumberText(column));
    }
}

void Grid::UserClickCell(int row, int column) {
    RequireUserCell(row, column);
    if (CellClick) Raise("Click", [&] { CellClick(row, column); });
}

void Grid::UserDoubleClickCell(int row, int column) {
    RequireUserCell(row, column);
    if (CellDoubleClick) Raise("DoubleClick", [&] { CellDoubleClick(row, column); });
}

void Grid::UserEditCell(int row, int column, const std::string& text) {
    RequireUserCell(row, column);
    if (!IsEditable(row, column)) throw UserError(FullName() + ": this cell cannot be edited");
    RequireStorable(text);
    if (CellEdit) Raise("Edit", [&] { CellEdit(row, column, text); });
}

void Timer::Start() {
    Stop();
    id_ = Owner().Stack().TimerService().Start(interval_, [this] { Raise("Tick", Tick); });
}

void Timer::Stop() {
    if (id_) Owner().Stack().TimerService().Stop(*id_);
    id_.reset();
}

void Picture::Draw(Plot plot) {
    plot_ = std::move(plot);
    TellChanged();
}

void Picture::Clear() {
    Draw({});
}

std::string Picture::DisplayText() const {
    if (plot_.IsEmpty()) return {};
    const auto axis = [](const PlotAxis& shown) {
        if (shown.blocks.empty())
            return shown.caption + ": " + NumberText(shown.lowest) + " to " + NumberText(shown.highest);
        std::string captions;
        for (const PlotBlock& block : shown.blocks) captions += (captions.empty() ? "" : ", ") + block.caption;
        return shown.caption + ": " + captions;
    };
    std::string text = plot_.title + '\n' + axis(plot_.horizontal) + '\n' + axis(plot_.vertical);
    for (const auto& mark : plot_.marks) {
        text += '\n' + mark.name + ": " + NumberText(mark.x) + ", " + NumberText(mark.y);
    }
    for (const auto& box : plot_.boxes) text += "\nbox: " + box.text;
    for (const auto& band : plot_.bands) {
        text += "\nband: " + NumberText(band.lowest) + " to " + NumberText(band.highest) + ", chosen " +
                NumberText(band.chosen);
    }
    return text;
}

}  // namespace bellmark
