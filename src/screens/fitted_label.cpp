#include "screens/fitted_label.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace bellmark {

namespace {

/// "-B" must never be broken at the end of a line: the rest would read as the other position. "Drop: 6" stays whole as
/// well.
QString WithoutBadBreaks(QString text) {
    constexpr QChar wordJoiner(0x2060);
    text.replace(QStringLiteral(" -"), QStringLiteral(" -") + wordJoiner);
    return text.replace(QStringLiteral(": "), QStringLiteral(":") + QChar(QChar::Nbsp));
}

}  // namespace

QFont FittedLabel::FontOf(int pointSize) const {
    QFont sized = font();
    sized.setPointSize(pointSize);
    return sized;
}

QSize FittedLabel::sizeHint() const {
    const QFontMetrics metrics(FontOf(maximumPointSize_));
    return {metrics.horizontalAdvance(text().isEmpty() ? QStringLiteral("0") : text()) + metrics.averageCharWidth(),
            metrics.height()};
}

QSize FittedLabel::minimumSizeHint() const {
    const QFontMetrics metrics(FontOf(std::max(smallestPointSize, maximumPointSize_ / 3)));
    return {metrics.averageCharWidth() * 2, metrics.height()};
}

int FittedLabel::FittingPointSize(const QRect& area) const {
    const QString shown = WithoutBadBreaks(text());
    int fits = smallestPointSize;
    int tooLarge = maximumPointSize_ + 1;
    while (tooLarge - fits > 1) {
        const int tried = (fits + tooLarge) / 2;
        const QRect needed = QFontMetrics(FontOf(tried)).boundingRect(area, TextFlags(), shown);
        (needed.width() <= area.width() && needed.height() <= area.height() ? fits : tooLarge) = tried;
    }
    return fits;
}

void FittedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    const QRect area = contentsRect();
    painter.setFont(FontOf(FittingPointSize(area)));
    painter.setPen(option.palette.color(QPalette::WindowText));
    painter.drawText(area, TextFlags() | static_cast<int>(alignment()), WithoutBadBreaks(text()));
}

}  // namespace bellmark
