#include "screens/path_label.h"

#include <QPainter>

namespace bellmark {

QSize PathLabel::minimumSizeHint() const {
    return {0, QLabel::sizeHint().height()};
}

void PathLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    QStringList lines;
    for (const QString& line : text().remove(QLatin1Char('\r')).split(QLatin1Char('\n'))) {
        lines.push_back(fontMetrics().elidedText(line, Qt::ElideMiddle, contentsRect().width()));
    }
    painter.drawText(contentsRect(), static_cast<int>(alignment()), lines.join(QLatin1Char('\n')));
}

}  // namespace bellmark
