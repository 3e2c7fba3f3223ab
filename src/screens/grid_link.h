#pragma once

#include <QTimer>

#include "screens/link.h"

class QTableWidget;

namespace bellmark {

class Grid;

/// A grid in a table: fixed rows and columns become its headers.
class GridLink : public Link {
  public:
    GridLink(Grid& grid, QTableWidget& view, LinkServices services);

    /// Grids are filled cell by cell: the table is updated once, when the program has finished.
    void Refresh() override;
    void ShowNow();

  private:
    void ShowHeaders();
    void ShowCells();
    void SetRowHeights();
    void CellEdited(int tableRow, int tableColumn);

    Grid& grid_;
    QTableWidget& view_;
    QTimer soon_;
    bool doubleClicked_ = false;  ///< the activation that belongs to a double click is still to come
    QTimer endOfDoubleClick_;
    bool showing_ = false;
};

}  // namespace bellmark
