#include "screens/grid_link.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTableWidget>
#include <algorithm>
#include <memory>
#include <utility>

#include "controls/controls.h"
#include "screens/state_colors.h"

namespace bellmark {

namespace {

constexpr int mostRowsMeasured = 100;

QString CellToolTip(const Grid& grid, int row, int column) {
    const QString own = QString::fromStdString(grid.CellToolTip(row, column));
    return own.isEmpty() ? StateText(grid.CellColor(row, column)) : own;
}

/// Set by the form of a table of results: a stretched last column would look like a heading.
bool HasColumnsAlike(const QTableWidget& table) {
    return table.property("columns").toString() == QLatin1String("alike");
}

/// The form asks for centered texts, in columns of equal width or as wide as their texts.
bool IsCentered(const QTableWidget& table) {
    return HasColumnsAlike(table) || table.property("columns").toString() == QLatin1String("centered");
}

/// The texts of all fixed rows, one below the other.
QString Heading(const Grid& grid, int column) {
    QStringList lines;
    for (int row = 0; row < std::min(grid.FixedRows(), grid.Rows()); ++row) {
        lines.push_back(QString::fromStdString(grid.Cell(row, column)).trimmed());
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace

GridLink::GridLink(Grid& grid, QTableWidget& view, LinkServices services)
    : Link(grid, view, std::move(services)), grid_(grid), view_(view) {
    view_.setSelectionBehavior(QAbstractItemView::SelectRows);
    view_.setSelectionMode(QAbstractItemView::SingleSelection);
    view_.setTabKeyNavigation(false);
    view_.horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    view_.horizontalHeader()->setStretchLastSection(!IsCentered(view_));
    if (HasColumnsAlike(view_)) {
        view_.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        view_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    view_.horizontalHeader()->setResizeContentsPrecision(mostRowsMeasured);
    soon_.setSingleShot(true);
    QObject::connect(&soon_, &QTimer::timeout, &Context(), [this] { ShowNow(); });

    const auto gridRow = [this](int row) { return row + grid_.FixedRows(); };
    const auto gridColumn = [this](int column) { return column + grid_.FixedColumns(); };
    const auto click = [this, gridRow, gridColumn](int row, int column) {
        PerformAfterTyping([=, this] { grid_.UserClickCell(gridRow(row), gridColumn(column)); });
    };
    const auto doubleClick = [this, gridRow, gridColumn](int row, int column) {
        PerformAfterTyping([=, this] { grid_.UserDoubleClickCell(gridRow(row), gridColumn(column)); });
    };
    QObject::connect(&view_, &QTableWidget::cellClicked, &Context(), click);
    QObject::connect(&view_, &QTableWidget::cellDoubleClicked, &Context(), [=, this](int row, int column) {
        doubleClicked_ = true;
        doubleClick(row, column);
        endOfDoubleClick_.start(0);
    });
    endOfDoubleClick_.setSingleShot(true);
    QObject::connect(&endOfDoubleClick_, &QTimer::timeout, &Context(), [this] { doubleClicked_ = false; });
    // Enter on a cell acts as a double click where that does something, otherwise as a click. A double click activates
    // the cell, too.
    QObject::connect(&view_, &QTableWidget::cellActivated, &Context(), [=, this](int row, int column) {
        if (std::exchange(doubleClicked_, false)) return;
        if (grid_.CellDoubleClick) {
            doubleClick(row, column);
        } else {
            click(row, column);
        }
    });
    QObject::connect(&view_, &QTableWidget::cellChanged, &Context(),
                     [this](int row, int column) { CellEdited(row, column); });
}

void GridLink::Refresh() {
    if (!soon_.isActive()) soon_.start(0);
}

void GridLink::ShowNow() {
    showing_ = true;
    const int row = view_.currentRow();
    const int column = view_.currentColumn();
    ShowHeaders();
    // Measured once, when all cells are filled.
    view_.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    ShowCells();
    SetRowHeights();
    view_.setCurrentItem(nullptr);
    const int selected = grid_.SelectedRow - grid_.FixedRows();
    if (selected >= 0) {
        view_.selectRow(selected);
    } else {
        view_.clearSelection();
        // The keyboard stays at its cell.
        if (view_.item(row, column)) view_.setCurrentCell(row, column, QItemSelectionModel::NoUpdate);
    }
    ShowCommonProperties(grid_, view_);
    showing_ = false;
}

void GridLink::ShowHeaders() {
    const int rows = grid_.Rows() - grid_.FixedRows();
    const int columns = grid_.Columns() - grid_.FixedColumns();
    view_.setRowCount(std::max(rows, 0));
    view_.setColumnCount(std::max(columns, 0));
    view_.horizontalHeader()->setVisible(grid_.FixedRows() > 0);
    view_.verticalHeader()->setVisible(grid_.FixedColumns() > 0);
    QStringList across;
    QStringList down;
    for (int column = 0; column < columns && grid_.FixedRows() > 0 && grid_.Rows() > 0; ++column) {
        across.push_back(Heading(grid_, column + grid_.FixedColumns()));
    }
    for (int row = 0; row < rows && grid_.FixedColumns() > 0; ++row) {
        down.push_back(QString::fromStdString(grid_.Cell(row + grid_.FixedRows(), 0)));
    }
    view_.setHorizontalHeaderLabels(across);
    view_.setVerticalHeaderLabels(down);
}

void GridLink::ShowCells() {
    for (int row = 0; row < view_.rowCount(); ++row) {
        for (int column = 0; column < view_.columnCount(); ++column) {
            const int gridRow = row + grid_.FixedRows();
            const int gridColumn = column + grid_.FixedColumns();
            QTableWidgetItem* shown = view_.item(row, column);
            // A new item is filled before the table sees it: each change in the table measures rows and columns again.
            auto made = shown ? nullptr : std::make_unique<QTableWidgetItem>();
            QTableWidgetItem& item = shown ? *shown : *made;
            const Color color = grid_.CellColor(gridRow, gridColumn);
            item.setText(QString::fromStdString(grid_.Cell(gridRow, gridColumn)));
            if (IsCentered(view_)) item.setTextAlignment(Qt::AlignCenter);
            item.setBackground(IsPlain(color) ? QBrush() : QBrush(ToQColor(color)));
            item.setForeground(IsPlain(color) ? QBrush() : QBrush(stateTextColor));
            item.setToolTip(CellToolTip(grid_, gridRow, gridColumn));
            item.setData(Qt::AccessibleDescriptionRole, StateText(color));
            const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
            const Qt::ItemFlags wanted = grid_.IsEditable(gridRow, gridColumn) ? flags | Qt::ItemIsEditable : flags;
            if (item.flags() != wanted) item.setFlags(wanted);
            if (made) view_.setItem(row, column, made.release());
        }
    }
}

/// The rows of a long table are as high as its first one: to measure each takes longer than an operator waits.
void GridLink::SetRowHeights() {
    QHeaderView& header = *view_.verticalHeader();
    if (view_.rowCount() <= mostRowsMeasured) {
        header.setSectionResizeMode(QHeaderView::ResizeToContents);
    } else {
        view_.resizeRowToContents(0);
        header.setDefaultSectionSize(view_.rowHeight(0));
    }
}

void GridLink::CellEdited(int tableRow, int tableColumn) {
    if (showing_) return;
    const std::string text = view_.item(tableRow, tableColumn)->text().toStdString();
    const int row = tableRow + grid_.FixedRows();
    const int column = tableColumn + grid_.FixedColumns();
    const std::string before = grid_.Cell(row, column);
    Perform([this, row, column, text] { grid_.UserEditCell(row, column, text); });
    // After an accepted value the next cell below is edited; a refused one is typed again.
    const bool wasTaken = grid_.HasCell(row, column) && grid_.Cell(row, column) != before;
    const bool isCurrent = view_.currentRow() == tableRow && view_.currentColumn() == tableColumn;
    if (!wasTaken) view_.setFocus();
    if (wasTaken && isCurrent && tableRow + 1 < view_.rowCount()) {
        view_.setCurrentCell(tableRow + 1, tableColumn, QItemSelectionModel::NoUpdate);
    }
}

}  // namespace bellmark
