#include "screens/plot_tools.h"

#include <qcustomplot.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <exception>
#include <memory>

#include "platform/portable_machine.h"
#include "screens/plot_colors.h"
#include "screens/plot_export.h"
#include "screens/plot_widget.h"

namespace bellmark {

namespace {

constexpr double zoomStep = 0.8;
constexpr double moveStep = 0.1;

struct Edge {
    const char* arrow;
    double across;  // place as a share of the axes' rectangle
    double along;
    Qt::Alignment alignment;
};
constexpr Edge edges[] = {{"\u25B2", 0.5, 0, Qt::AlignHCenter | Qt::AlignTop},
                          {"\u25BC", 0.5, 1, Qt::AlignHCenter | Qt::AlignBottom},
                          {"\u25C4", 0, 0.5, Qt::AlignLeft | Qt::AlignVCenter},
                          {"\u25BA", 1, 0.5, Qt::AlignRight | Qt::AlignVCenter}};

}  // namespace

PlotTools::PlotTools(PlotWidget& plot, QCustomPlot& view) : QObject(&plot), plot_(plot), view_(view) {
    plot_.setContextMenuPolicy(Qt::ActionsContextMenu);
    AddMouse();
    AddZoomActions();
    AddSeparator();
    AddCursorActions();
    AddSeparator();
    AddOutputActions();
    connect(&view_, &QCustomPlot::beforeReplot, this, [this] { ShowBeyond(); });
}

void PlotTools::AddMouse() {
    view_.setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    connect(&view_, &QCustomPlot::mouseWheel, this, [this](const QWheelEvent* event) {
        Qt::Orientations axes = Qt::Horizontal | Qt::Vertical;
        if (event->modifiers() & Qt::ControlModifier) axes = Qt::Horizontal;
        if (event->modifiers() & Qt::ShiftModifier) axes = Qt::Vertical;
        view_.axisRect()->setRangeZoom(axes);
    });
    connect(&view_, &QCustomPlot::mousePress, this, [this](const QMouseEvent* event) {
        const bool draws = event->modifiers() & Qt::ControlModifier;
        view_.setSelectionRectMode(draws ? QCP::srmZoom : QCP::srmNone);
        const PlotColors colors(plot_.palette());
        view_.selectionRect()->setPen(QPen(colors.cursor, 1));
        view_.selectionRect()->setBrush(Translucent(colors.cursor, 40));
    });
    for (const QString& hint : {tr("Wheel: zoom (Ctrl: horizontally, Shift: vertically)"),
                                tr("Drag: move, with Ctrl: zoom into a rectangle")}) {
        auto* line = new QAction(hint, &plot_);
        line->setEnabled(false);
        plot_.addAction(line);
    }
}

void PlotTools::AddZoomActions() {
    AddAction("decorZoomIn", tr("Zoom &In"), {Qt::Key_Plus, Qt::Key_Equal}, [this] { Zoom(zoomStep); });
    AddAction("decorZoomOut", tr("Zoom &Out"), {Qt::Key_Minus}, [this] { Zoom(1 / zoomStep); });
    AddAction("decorShowAll", tr("Show &All (or Double Click)"), {Qt::Key_Home}, [this] { plot_.ResetRanges(); });
    AddAction("decorMoveLeft", tr("Move &Left"), {Qt::Key_Left}, [this] { Move(-moveStep, 0); });
    AddAction("decorMoveRight", tr("Move &Right"), {Qt::Key_Right}, [this] { Move(moveStep, 0); });
    AddAction("decorMoveUp", tr("Move &Up"), {Qt::Key_Up}, [this] { Move(0, moveStep); });
    AddAction("decorMoveDown", tr("Move &Down"), {Qt::Key_Down}, [this] { Move(0, -moveStep); });
}

void PlotTools::AddCursorActions() {
    AddAction("decorCursorA", tr("Cursor A Here"), {Qt::Key_A}, [this] { plot_.SetCursorHere(0); });
    AddAction("decorCursorB", tr("Cursor B Here"), {Qt::Key_B}, [this] { plot_.SetCursorHere(1); });
    AddAction("decorCursorsAtMarks", tr("Cursors at the First and Last &Mark"), {Qt::Key_M},
              [this] { plot_.SetCursorsAtMarks(); });
    AddAction("decorCursorBack", tr("Cursor B One Sample Back"), {QKeySequence(Qt::SHIFT | Qt::Key_Left)},
              [this] { plot_.StepCursor(1, -1); });
    AddAction("decorCursorOn", tr("Cursor B One Sample On"), {QKeySequence(Qt::SHIFT | Qt::Key_Right)},
              [this] { plot_.StepCursor(1, 1); });
    AddAction("decorNoCursors", tr("Remove the &Cursors"), {Qt::Key_Delete}, [this] { plot_.ClearCursors(); });
}

void PlotTools::AddOutputActions() {
    AddAction("decorCopy", tr("Copy Picture and &Values"), {QKeySequence::Copy}, [this] { Copy(); });
    AddAction("decorSave", tr("&Save as PNG, SVG, PDF or CSV..."), {QKeySequence::Save}, [this] { Save(); });
    AddAction("decorPrint", tr("&Print..."), {QKeySequence::Print}, [this] {
        const auto paper = plot_.OnPaper();
        PrintPlot(paper->View(), plot_.Heading(), plot_.window());
    });
}

void PlotTools::AddAction(const char* name, const QString& text, const QList<QKeySequence>& keys,
                          const std::function<void()>& action) {
    auto* item = new QAction(text, &plot_);
    item->setObjectName(QLatin1String(name));
    item->setShortcuts(keys);
    item->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(item, &QAction::triggered, this, [this, action] {
        if (!plot_.Shown().IsEmpty()) action();
    });
    plot_.addAction(item);
}

void PlotTools::AddSeparator() {
    auto* line = new QAction(&plot_);
    line->setSeparator(true);
    plot_.addAction(line);
}

void PlotTools::Zoom(double factor) {
    for (QCPAxis* axis : {view_.xAxis, view_.yAxis}) axis->scaleRange(factor, axis->range().center());
    view_.replot(QCustomPlot::rpQueuedReplot);
}

void PlotTools::Move(double across, double along) {
    view_.xAxis->moveRange(across * view_.xAxis->range().size());
    view_.yAxis->moveRange(along * view_.yAxis->range().size());
    view_.replot(QCustomPlot::rpQueuedReplot);
}

void PlotTools::Copy() {
    const auto paper = plot_.OnPaper();
    auto* data = new QMimeData;
    data->setImageData(QImage::fromData(PlotBytes(paper->View(), plot_.Shown(), plot_.Heading(), PlotFile::Png)));
    data->setText(PlotTable(view_, plot_.Shown()));
    QApplication::clipboard()->setMimeData(data);
}

void PlotTools::Save() {
    const QString path =
        QFileDialog::getSaveFileName(plot_.window(), tr("Save the Plot"), tr("Plot.png"),
                                     tr("Picture (*.png);;Drawing (*.svg);;Document (*.pdf);;Values (*.csv)"));
    if (path.isEmpty()) return;
    try {
        const auto paper = plot_.OnPaper();
        const QByteArray bytes = PlotBytes(paper->View(), plot_.Shown(), plot_.Heading(), PlotFileOf(path));
        DiskFileSystem().ReplaceFile(PathFromText(path.toStdString()), bytes.toStdString());
    } catch (const std::exception& error) {
        QMessageBox::critical(plot_.window(), tr("Save the Plot"),
                              tr("The plot could not be saved.\n%1").arg(QString::fromUtf8(error.what())));
    }
}

void PlotTools::Restart() {
    for (QCPItemText*& text : beyond_) text = nullptr;
}

void PlotTools::ShowBeyond() {
    int counts[4] = {};
    const QCPRange across = view_.xAxis->range();
    const QCPRange along = view_.yAxis->range();
    for (const PlotSeries& series : plot_.Shown().series) {
        if (!series.asMarkers) continue;
        for (std::size_t i = 0; i < series.x.size(); ++i) {
            if (series.y[i] > along.upper) {
                ++counts[0];
            } else if (series.y[i] < along.lower) {
                ++counts[1];
            } else if (series.x[i] < across.lower) {
                ++counts[2];
            } else if (series.x[i] > across.upper) {
                ++counts[3];
            }
        }
    }
    const QString own = plot_.property("markers").toString();
    const QString one = own.isEmpty() ? tr("drop") : own;
    const PlotColors colors(plot_.palette());
    for (int i = 0; i < 4; ++i) {
        if (!beyond_[i] && counts[i] == 0) continue;
        if (!beyond_[i]) {
            beyond_[i] = new QCPItemText(&view_);
            beyond_[i]->position->setType(QCPItemPosition::ptAxisRectRatio);
            beyond_[i]->position->setCoords(edges[i].across, edges[i].along);
            beyond_[i]->setPositionAlignment(edges[i].alignment);
            beyond_[i]->setColor(colors.mark);
            beyond_[i]->setBrush(Translucent(colors.background, 220));
            beyond_[i]->setPadding(QMargins(4, 1, 4, 1));
        }
        beyond_[i]->setVisible(counts[i] > 0);
        beyond_[i]->setText(
            QString::fromUtf8(edges[i].arrow) +
            tr(" %1 %2 beyond the range").arg(counts[i]).arg(counts[i] == 1 ? one : one + QLatin1Char('s')));
    }
}

}  // namespace bellmark
