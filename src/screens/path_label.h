#pragma once

#include <QLabel>

namespace bellmark {

/// A label of paths. A line that is too long is cut in the middle: the ends of a path tell most.
class PathLabel : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace bellmark
