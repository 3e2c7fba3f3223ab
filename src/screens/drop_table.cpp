#include "screens/drop_table.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>

namespace bellmark {

namespace {

constexpr int cells = 41;
constexpr int mostHeights = 5;
constexpr int mostDrops = 10;
constexpr int tallestCell = 4;  // in lines of text

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

QLabel* MakeLabel(QWidget& parent, const char* name) {
    auto* label = new QLabel(&parent);
    label->setObjectName(QLatin1String(name));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

DropTable::DropTable(QWidget* parent)
    : QWidget(parent),
      layout_(new QGridLayout(this)),
      data_(MakeArray<QLineEdit>(*this, "txtData", cells)),
      drops_(MakeArray<QLabel>(*this, "lblDrop", mostDrops)),
      heights_(MakeArray<QLabel>(*this, "lblHeight", mostHeights)),
      means_(MakeArray<QLabel>(*this, "lblMean", mostHeights)),
      standardDeviations_(MakeArray<QLabel>(*this, "lblStdDev", mostHeights)),
      meanLabel_(MakeLabel(*this, "lblMeanLabel")),
      standardDeviationLabel_(MakeLabel(*this, "lblStdDevLabel")),
      noise_(MakeLabel(*this, "lblNoise")) {
    layout_->setContentsMargins(0, 0, 0, 0);
    for (QLineEdit* cell : data_) {
        cell->setProperty("role", "drop");
        cell->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        cell->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
        cell->setMaximumHeight(tallestCell * cell->fontMetrics().height());
        cell->setMinimumWidth(cell->fontMetrics().horizontalAdvance(QStringLiteral("0000,000")));
    }
    for (const auto* labels : {&drops_, &heights_, &means_, &standardDeviations_}) {
        for (QLabel* label : *labels) label->setAlignment(Qt::AlignCenter);
    }
    for (const auto* labels : {&means_, &standardDeviations_}) {
        for (QLabel* label : *labels) label->setProperty("role", "drop");
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
    for (QLineEdit* cell : data_) cell->setProperty("role", compact ? "dropCompact" : "drop");
    layout_->setVerticalSpacing(compact ? 2 : -1);
}

bool DropTable::event(QEvent* event) {
    // Showing or hiding a column requests a new layout.
    if (event->type() == QEvent::LayoutRequest) Arrange();
    return QWidget::event(event);
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
