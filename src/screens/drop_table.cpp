#include "screens/drop_table.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <algorithm>

namespace bellmark {

namespace {

QFont Sized(QFont font, int pointSize, bool isBold) {
    font.setPointSize(pointSize);
    font.setBold(isBold);
    return font;
}

}  // namespace

/// A cell whose letters can have a size of their own. A style sheet would take too long to change it.
class DropCell : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

    /// 0: the size of the style.
    void SetTextSize(int points) {
        points_ = points;
        update();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (points_ == 0) return QLineEdit::paintEvent(event);
        constexpr int beside = 6;
        QStylePainter painter(this);
        QStyleOptionFrame option;
        initStyleOption(&option);
        painter.drawPrimitive(QStyle::PE_PanelLineEdit, option);
        painter.setFont(Sized(font(), points_, true));
        painter.setPen(option.palette.color(QPalette::Text));
        painter.drawText(rect().adjusted(beside, 0, -beside, 0), Qt::AlignRight | Qt::AlignVCenter, text());
    }

  private:
    int points_ = 0;
};

/// The same for the labels around the cells.
class DropLabel : public QLabel {
  public:
    using QLabel::QLabel;

    void SetTextSize(int points, bool isBold) {
        points_ = points;
        isBold_ = isBold;
        updateGeometry();
        update();
    }

    QSize sizeHint() const override {
        if (points_ == 0) return QLabel::sizeHint();
        const QFontMetrics metrics(Sized(font(), points_, isBold_));
        return {metrics.horizontalAdvance(text()) + metrics.averageCharWidth(), metrics.height()};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override {
        if (points_ == 0) return QLabel::paintEvent(event);
        QPainter painter(this);
        painter.setFont(Sized(font(), points_, isBold_));
        painter.setPen(palette().color(foregroundRole()));
        painter.drawText(rect(), static_cast<int>(alignment()), text());
    }

  private:
    int points_ = 0;
    bool isBold_ = false;
};

namespace {

constexpr int cells = 41;
constexpr int mostHeights = 5;
constexpr int mostDrops = 10;
constexpr int tallestCell = 4;      // in lines of text
constexpr int smallestFitted = 13;  // points

template <class Widget>
std::vector<Widget*> MakeArray(QWidget& parent, const char* name, int count) {
    std::vector<Widget*> widgets;
    for (int index = 0; index < count; ++index) {
        auto* widget = new Widget(&parent);
        widget->setObjectName(QLatin1String(name) + QLatin1Char('_') + QString::number(index));
        widgets.push_back(widget);
    }
    return widgets;
}

DropLabel* MakeLabel(QWidget& parent, const char* name) {
    auto* label = new DropLabel(&parent);
    label->setObjectName(QLatin1String(name));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

DropTable::DropTable(QWidget* parent)
    : QWidget(parent),
      layout_(new QGridLayout(this)),
      data_(MakeArray<DropCell>(*this, "txtData", cells)),
      drops_(MakeArray<DropLabel>(*this, "lblDrop", mostDrops)),
      heights_(MakeArray<DropLabel>(*this, "lblHeight", mostHeights)),
      means_(MakeArray<DropLabel>(*this, "lblMean", mostHeights)),
      standardDeviations_(MakeArray<DropLabel>(*this, "lblStdDev", mostHeights)),
      meanLabel_(MakeLabel(*this, "lblMeanLabel")),
      standardDeviationLabel_(MakeLabel(*this, "lblStdDevLabel")),
      noise_(MakeLabel(*this, "lblNoise")) {
    layout_->setContentsMargins(0, 0, 0, 0);
    for (DropCell* cell : data_) {
        cell->setProperty("role", "drop");
        cell->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        cell->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        cell->setMaximumHeight(tallestCell * cell->fontMetrics().height());
        cell->setMinimumWidth(cell->fontMetrics().horizontalAdvance(QStringLiteral("0000,000")));
    }
    for (const auto* labels : {&drops_, &heights_, &means_, &standardDeviations_}) {
        for (DropLabel* label : *labels) label->setAlignment(Qt::AlignCenter);
    }
    for (const auto* labels : {&means_, &standardDeviations_}) {
        for (DropLabel* label : *labels) label->setProperty("role", "drop");
    }
    // Room for later values.
    for (const int column : {mostDrops + 1, mostDrops + 2}) {
        layout_->setColumnMinimumWidth(column, fontMetrics().horizontalAdvance(QStringLiteral("0000000,000")));
    }
    Arrange();
}

void DropTable::setNamePrefix(const QString& prefix) {
    for (QWidget* widget : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        widget->setObjectName(prefix + widget->objectName().mid(namePrefix_.size()));
    }
    namePrefix_ = prefix;
}

void DropTable::setCompact(bool compact) {
    compact_ = compact;
    for (DropCell* cell : data_) cell->setProperty("role", compact ? "dropCompact" : "drop");
    layout_->setVerticalSpacing(compact ? 2 : -1);
}

bool DropTable::event(QEvent* event) {
    // Showing or hiding a column requests a new layout.
    if (event->type() == QEvent::LayoutRequest) {
        Arrange();
        FitText();
    }
    return QWidget::event(event);
}

void DropTable::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitText();
}

/// Its letters follow its size and must not keep it large.
QSize DropTable::minimumSizeHint() const {
    if (largest_ == 0) return QWidget::minimumSizeHint();
    QFont least = font();
    least.setPointSize(smallestFitted);
    const QFontMetrics metrics(least);
    return {(arrangedDrops_ + 3) * metrics.horizontalAdvance(QStringLiteral("00,000")),
            Rows() * metrics.height() * 3 / 2};
}

/// Heights, the headings and the note about noise.
int DropTable::Rows() const {
    const auto isUsed = [](const QWidget* widget) { return !widget->isHidden(); };
    return 2 + static_cast<int>(std::count_if(heights_.begin(), heights_.end(), isUsed));
}

void DropTable::FitText() {
    if (largest_ == 0 || arrangedDrops_ == 0) return;
    constexpr double headingShare = 0.5;
    constexpr int beside = 20;  // pixels of border, padding and spacing
    const QSize room(width() / (arrangedDrops_ + 3) - beside, height() / Rows() - beside / 2);
    int size = largest_;
    for (; size > smallestFitted; --size) {
        QFont tried = font();
        tried.setPointSize(size);
        tried.setBold(true);
        const QFontMetrics metrics(tried);
        if (metrics.horizontalAdvance(QStringLiteral("00,000")) <= room.width() && metrics.height() <= room.height())
            break;
    }
    if (size == shownPointSize_) return;
    shownPointSize_ = size;
    const int headingSize = std::max(smallestFitted - 2, qRound(size * headingShare));
    for (const auto* labels : {&drops_, &heights_}) {
        for (DropLabel* label : *labels) label->SetTextSize(headingSize, false);
    }
    for (DropLabel* label : {meanLabel_, standardDeviationLabel_, noise_}) label->SetTextSize(headingSize, false);
    for (const auto* labels : {&means_, &standardDeviations_}) {
        for (DropLabel* label : *labels) label->SetTextSize(size, true);
    }
    for (DropCell* cell : data_) cell->SetTextSize(size);
    const int tallest = std::max(tallestCell * fontMetrics().height(), room.height());
    for (DropCell* cell : data_) cell->setMaximumHeight(tallest);
}

void DropTable::Arrange() {
    const auto isUsed = [](const QWidget* widget) { return !widget->isHidden(); };
    const int shown = static_cast<int>(std::count_if(drops_.begin(), drops_.end(), isUsed));
    const int drops = std::max(shown, 1);
    if (drops == arrangedDrops_) return;
    arrangedDrops_ = drops;
    for (int drop = 0; drop < mostDrops; ++drop)
        layout_->addWidget(drops_[static_cast<std::size_t>(drop)], 0, drop + 1);
    for (int height = 0; height < mostHeights; ++height) {
        const auto row = static_cast<std::size_t>(height);
        layout_->addWidget(heights_[row], height + 1, 0);
        layout_->addWidget(means_[row], height + 1, mostDrops + 1);
        layout_->addWidget(standardDeviations_[row], height + 1, mostDrops + 2);
    }
    for (int cell = 0; cell < cells; ++cell) {
        layout_->addWidget(data_[static_cast<std::size_t>(cell)], cell / drops + 1, cell % drops + 1);
    }
    layout_->addWidget(meanLabel_, 0, mostDrops + 1);
    layout_->addWidget(standardDeviationLabel_, 0, mostDrops + 2);
    layout_->addWidget(noise_, cells + 2, 0, 1, mostDrops + 3);
}

}  // namespace bellmark
