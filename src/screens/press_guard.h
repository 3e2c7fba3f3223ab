#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <chrono>

class QAbstractButton;
class QKeyEvent;
class QMouseEvent;
class QWidget;

namespace bellmark {

/// One action a keystroke, in every window of the program. A key that is held down presses nothing but once, and the
/// second click of a double click presses nothing, whatever came up below the pointer in between. An Accept that has
/// just come alive rests for a moment: what was pressed before the drop was there is no answer to it.
class PressGuard : public QObject {
  public:
    explicit PressGuard(std::chrono::milliseconds rest);
    ~PressGuard() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool IsHeldKey(const QObject* watched, const QKeyEvent& event) const;
    bool IsRepeatedPress(QObject* watched, const QMouseEvent& event);
    void MeetEnabling(QObject* watched);
    bool RestsBehind(const QObject* watched) const;

    std::chrono::milliseconds rest_;
    QPointer<QAbstractButton> accept_;  // the one that came alive last
    QElapsedTimer alive_;
    bool pressed_ = false;
    quint64 lastPress_ = 0;  // ms, by the events' own time
    QPointF lastPlace_;
    QPointer<QObject> refused_;  // its release does not count either
};

}  // namespace bellmark
