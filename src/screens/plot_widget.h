#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>

#include "controls/picture.h"
#include "screens/plot_cursors.h"

class QCPItemTracer;
class QCPItemText;
class QCustomPlot;
class QMouseEvent;

namespace bellmark {

class PlotTools;

/// Draws a Plot. The pointer reads out the nearest sample; PlotTools gives the rest of what the operator can do with
/// it. All plots of the program are of this class.
class PlotWidget : public QWidget {
    Q_OBJECT

  public:
    explicit PlotWidget(QWidget* parent = nullptr);

    void Show(const Plot& plot);
    const Plot& Shown() const { return plot_; }
    QCustomPlot& View() const { return *view_; }
    void ResetRanges();  ///< shows the whole plot

    /// Pairs two plots over the same horizontal axis: zoomed and moved together, and the same marker is read out in
    /// both.
    void LinkTo(PlotWidget& other);

    /// Title, run and date for what leaves the program, a line each. run: where the title and the run are known.
    QStringList Heading() const;
    void TellRun(std::function<QStringList()> run) { run_ = std::move(run); }

    /// A copy on white, with the same ranges and cursors, to print and to save.
    std::unique_ptr<PlotWidget> OnPaper() const;

    void SetCursorHere(std::size_t cursor);  ///< 0 or 1: at the sample that is read out
    void SetCursorsAtMarks();
    void StepCursor(std::size_t cursor, int samples);
    void ClearCursors();
    QString CursorText() const { return cursors_.Text(plot_); }
    void RedrawNow();                   ///< the cost of a repaint, for measuring
    QString ReadOutAt(double x) const;  ///< first series, the sample nearest to x
    QSize sizeHint() const override { return {600, 320}; }
    QSize minimumSizeHint() const override { return {240, 140}; }

  signals:
    void PointedAt(std::size_t index);  ///< a marker of the first series

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void ShowAxes();
    void ShowSeries();
    void ShowMarks();
    void ShowBands();
    void ShowLegend();
    void ShowBlocks();
    void ShowBoxes();
    PlotSample SampleAt(QPointF position) const;
    QString ReadOut(const PlotSample& sample) const;
    void PointerMoved(const QMouseEvent& event);
    void PointAt(const PlotSample& sample);
    void FollowRange(const PlotWidget& leader);
    void RedrawItems();

    QCustomPlot* view_;
    QCPItemTracer* pointer_ = nullptr;
    QCPItemText* readOut_ = nullptr;
    PlotTools* tools_ = nullptr;
    Plot plot_;
    PlotCursors cursors_;
    PlotSample pointed_;
    std::function<QStringList()> run_;
};

}  // namespace bellmark
