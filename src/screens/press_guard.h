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

/// One action per keystroke, in every window of the program. A key that is held down presses only once, and the second
/// click of a double click presses nothing, whatever appeared below the pointer in between. An Accept button that has
/// just been enabled does not react for a moment: a press from before the drop came is not an answer to it.
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
    QPointer<QAbstractButton> accept_;  // the last one that was enabled
    QElapsedTimer alive_;
    bool pressed_ = false;
    quint64 lastPress_ = 0;  // ms, by the time of the events
    QPointF lastPlace_;
    QPointer<QObject> refused_;  // its release is ignored too
};

}  // namespace bellmark
