#include "screens/state_button.h"

#include <QStyle>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace bellmark {

StateButton::StateButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    setCursor(Qt::PointingHandCursor);
}

void StateButton::SetState(QColor color, const QString& words) {
    if (color_ == color && words_ == words) return;
    color_ = color;
    words_ = words;
    updateGeometry();
    update();
}

void StateButton::SetSuggested(bool suggested) {
    if (suggested_ == suggested) return;
    suggested_ = suggested;
    style()->unpolish(this);
    style()->polish(this);
    updateGeometry();
    update();
}

QFont StateButton::WordsFont() const {
    QFont smaller = font();
    smaller.setPointSizeF(smaller.pointSizeF() * 0.8);
    smaller.setBold(false);
    return smaller;
}

int StateButton::StripWidth() const {
    return words_.isEmpty() ? 0 : fontMetrics().averageCharWidth();
}

QSize StateButton::sizeHint() const {
    QSize size = QPushButton::sizeHint();
    if (words_.isEmpty()) return size;
    const QFontMetrics words(WordsFont());
    const int widest =
        std::max(fontMetrics().size(Qt::TextShowMnemonic, text()).width(), words.horizontalAdvance(words_));
    const int border = size.width() - fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return {widest + border + 2 * StripWidth(), size.height() + words.height()};
}

void StateButton::paintEvent(QPaintEvent* event) {
    if (words_.isEmpty()) {
        QPushButton::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    constexpr int inset = 2;
    const QRect strip(inset, inset, StripWidth() + inset, height() - 2 * inset);
    painter.fillRect(strip, isEnabled() ? color_ : color_.lighter(110));

    const QRect inner = rect().adjusted(strip.right() + inset, inset, -inset, -inset);
    const QFontMetrics words(WordsFont());
    const int textHeight = fontMetrics().height() + words.height();
    const int top = inner.top() + (inner.height() - textHeight) / 2;
    painter.setPen(option.palette.color(QPalette::ButtonText));
    painter.drawText(QRect(inner.left(), top, inner.width(), fontMetrics().height()),
                     Qt::AlignCenter | Qt::TextShowMnemonic, text());
    painter.setFont(WordsFont());
    painter.drawText(QRect(inner.left(), top + fontMetrics().height(), inner.width(), words.height()), Qt::AlignCenter,
                     words_);
}

}  // namespace bellmark
