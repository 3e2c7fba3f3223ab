#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <functional>

class QCPItemText;
class QCustomPlot;

namespace bellmark {

class PlotWidget;

/// What the operator does with a plot besides looking at it: zooms and moves it, sets cursors, and takes it along as a
/// picture, a table or on paper. Its actions are the plot's context menu; their keys work while the plot has the
/// keyboard. One for each PlotWidget.
class PlotTools : public QObject {
    Q_OBJECT

  public:
    PlotTools(PlotWidget& plot, QCustomPlot& view);

    /// Forgets the texts at the edges, which the view has removed with all its items.
    void Restart();

    /// Says above, below, left and right how many markers lie beyond what is shown.
    void ShowBeyond();

  private:
    void AddMouse();
    void AddZoomActions();
    void AddCursorActions();
    void AddOutputActions();
    void AddAction(const char* name, const QString& text, const QList<QKeySequence>& keys,
                   const std::function<void()>& action);
    void AddSeparator();
    void Zoom(double factor);
    void Move(double across, double along);  ///< shares of what is shown
    void Copy();
    void Save();
    void Tell(const QString& problem);

    PlotWidget& plot_;
    QCustomPlot& view_;
    QCPItemText* beyond_[4] = {};  ///< top, bottom, left, right; null as long as there was nothing to say
};

}  // namespace bellmark
