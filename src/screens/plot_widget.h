#pragma once

#include <QWidget>

#include "controls/picture.h"

class QCPItemTracer;
class QCPItemText;
class QCPLayerable;
class QCustomPlot;
class QMouseEvent;

namespace bellmark {

/// Draws a Plot. The wheel zooms, dragging moves, a double click shows the whole plot; the pointer reads out the
/// nearest sample.
class PlotWidget : public QWidget {
    Q_OBJECT

  public:
    explicit PlotWidget(QWidget* parent = nullptr);

    void Show(const Plot& plot);
    void RedrawNow();                   ///< the cost of a repaint, for measuring
    QString ReadOutAt(double x) const;  ///< first series, the sample nearest to x
    QSize sizeHint() const override { return {600, 320}; }
    QSize minimumSizeHint() const override { return {240, 140}; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void SetUpInteraction();
    void ShowAxes();
    void ShowSeries();
    void ShowMarks();
    void ShowBands();
    void ResetRanges();
    void ShowLegend();
    void ShowBlocks();
    void ShowBoxes();
    /// A sample of a series.
    struct Sample {
        std::size_t series = 0;
        std::size_t index = 0;
    };
    Sample SampleAt(QPointF position) const;
    QString ReadOut(const Sample& sample) const;
    void PointerMoved(const QMouseEvent& event);

    QCustomPlot* view_;
    QCPItemTracer* pointer_ = nullptr;
    QCPItemText* readOut_ = nullptr;
    Plot plot_;
};

}  // namespace bellmark
