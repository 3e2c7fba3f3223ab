#pragma once

#include <QColor>
#include <QPushButton>

namespace bellmark {

/// A push button that shows a state of the work: a strip in the state's colour and, below the caption, the state in
/// words.
class StateButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(bool suggested READ IsSuggested)

  public:
    explicit StateButton(QWidget* parent = nullptr);

    /// Empty words: the button shows no state.
    void SetState(QColor color, const QString& words);

    /// The next step that the program suggests: Enter presses it.
    void SetSuggested(bool suggested);
    bool IsSuggested() const { return suggested_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont WordsFont() const;
    int StripWidth() const;

    QColor color_;
    QString words_;
    bool suggested_ = false;
};

}  // namespace bellmark
