#pragma once

#include <QLabel>

namespace bellmark {

/// A label that is read from a distance: its text takes the largest size, up to maximumPointSize, at which it fits
/// whole.
class FittedLabel : public QLabel {
    Q_OBJECT
    Q_PROPERTY(int maximumPointSize READ maximumPointSize WRITE setMaximumPointSize)
    /// On one line, never broken.
    Q_PROPERTY(bool oneLine READ isOneLine WRITE setOneLine)

  public:
    using QLabel::QLabel;

    // Named as form files set their properties.
    int maximumPointSize() const { return maximumPointSize_; }
    void setMaximumPointSize(int size) { maximumPointSize_ = size; }

    bool isOneLine() const { return oneLine_; }
    void setOneLine(bool oneLine) { oneLine_ = oneLine; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QFont FontOf(int pointSize) const;
    int FittingPointSize(const QRect& area) const;
    int TextFlags() const { return oneLine_ ? Qt::TextSingleLine : Qt::TextWordWrap; }

    static constexpr int smallestPointSize = 9;
    int maximumPointSize_ = 48;
    bool oneLine_ = false;
};

}  // namespace bellmark
