#include "screens/plot_widget.h"

#include <qcustomplot.h>

#include <QDateTime>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "screens/plot_colors.h"
#include "screens/plot_tools.h"
#include "screens/state_colors.h"

namespace bellmark {

namespace {

// Colours that differ in greyscale, too.
constexpr QRgb onLight[] = {0x1f5fa8, 0xd97b00, 0x2e7d4f, 0x7b3f98, 0x008b9a, 0xa0522d, 0x55606b, 0xc2185b};
constexpr QRgb onDark[] = {0x6aaef0, 0xffb04a, 0x6fd097, 0xcf9ce8, 0x4fd0dc, 0xe09a72, 0xb3bdc7, 0xff7fb0};

QColor ColorOfSeries(std::size_t number, bool isDark) {
    return isDark ? onDark[number % std::size(onDark)] : onLight[number % std::size(onLight)];
}

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

QVector<double> Values(const std::vector<double>& values) {
    return {values.begin(), values.end()};
}

void StyleAxis(QCPAxis& axis, const PlotAxis& shown, const PlotColors& colors) {
    axis.setLabel(Text(shown.caption));
    axis.setLabelColor(colors.ink);
    axis.setTickLabelColor(colors.ink);
    axis.setBasePen(QPen(colors.ink));
    axis.setTickPen(QPen(colors.ink));
    axis.setSubTickPen(QPen(colors.ink));
    axis.grid()->setPen(QPen(colors.grid));
    axis.grid()->setZeroLinePen(QPen(colors.axis));
    if (shown.tickStep) {
        const QSharedPointer<QCPAxisTickerFixed> ticker(new QCPAxisTickerFixed);
        ticker->setTickStep(*shown.tickStep);
        ticker->setTickOrigin(shown.lowest);
        axis.setTicker(ticker);
        axis.setNumberFormat(QStringLiteral("f"));
        axis.setNumberPrecision(shown.decimals);
    } else if (!shown.blocks.empty()) {
        const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
        for (const PlotBlock& block : shown.blocks) ticker->addTick((block.from + block.to) / 2, Text(block.caption));
        axis.setTicker(ticker);
    } else {
        axis.setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
        axis.setNumberFormat(QStringLiteral("gb"));
        axis.setNumberPrecision(6);
    }
}

QCPScatterStyle::ScatterShape ShapeOf(MarkerShape shape) {
    switch (shape) {
        case MarkerShape::Disc:
            return QCPScatterStyle::ssDisc;
        case MarkerShape::Square:
            return QCPScatterStyle::ssSquare;
        case MarkerShape::Triangle:
            return QCPScatterStyle::ssTriangle;
        case MarkerShape::Diamond:
            return QCPScatterStyle::ssDiamond;
        case MarkerShape::Cross:
            return QCPScatterStyle::ssCross;
        case MarkerShape::Circle:
            return QCPScatterStyle::ssCircle;
        case MarkerShape::Plus:
            return QCPScatterStyle::ssPlus;
        case MarkerShape::TriangleDown:
            return QCPScatterStyle::ssTriangleInverted;
        case MarkerShape::Star:
            return QCPScatterStyle::ssStar;
        case MarkerShape::CrossedSquare:
            return QCPScatterStyle::ssCrossSquare;
        case MarkerShape::CrossedDisc:
            return QCPScatterStyle::ssCrossCircle;
        case MarkerShape::PlusSquare:
            return QCPScatterStyle::ssPlusSquare;
    }
    return QCPScatterStyle::ssDisc;
}

std::size_t NearestSample(const std::vector<double>& x, double wanted) {
    const auto nearer = [wanted](double a, double b) { return std::abs(a - wanted) < std::abs(b - wanted); };
    return static_cast<std::size_t>(std::min_element(x.begin(), x.end(), nearer) - x.begin());
}

/// Plots over blocks or over nothing have no axis to share.
bool HasSameAxis(const Plot& one, const Plot& other) {
    const auto isPlain = [](const Plot& plot) { return !plot.IsEmpty() && plot.horizontal.blocks.empty(); };
    return isPlain(one) && isPlain(other) && one.horizontal.lowest == other.horizontal.lowest &&
           one.horizontal.highest == other.horizontal.highest;
}

/// The row of each mark's label above its point, so that labels of near points do not cover each other.
std::vector<int> RowsOfLabels(const Plot& plot) {
    constexpr double across = 0.2;  // width of a label as a share of the plot
    constexpr double along = 0.1;
    const double width = across * (plot.horizontal.highest - plot.horizontal.lowest);
    const double height = along * (plot.vertical.highest - plot.vertical.lowest);
    std::vector<int> rows;
    for (const PlotMark& mark : plot.marks) {
        int row = 0;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const PlotMark& other = plot.marks[i];
            const bool isNear = std::abs(mark.x - other.x) < width && std::abs(mark.y - other.y) < height;
            if (isNear) row = std::max(row, rows[i] + 1);
        }
        rows.push_back(row);
    }
    return rows;
}

}  // namespace

PlotWidget::PlotWidget(QWidget* parent) : QWidget(parent), view_(new QCustomPlot(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    view_->setObjectName(QStringLiteral("decorPlot"));
    // A curve of 15000 samples is redrawn at each step of a drag: smooth lines would be too slow.
    view_->setNotAntialiasedElements(QCP::aeAll);
    view_->setPlottingHints(QCP::phFastPolylines | QCP::phCacheLabels);
    view_->setNoAntialiasingOnDrag(true);
    // Room for the label of the last tick.
    view_->axisRect()->setMinimumMargins(QMargins(15, 15, 30, 15));
    QLocale grouped = QLocale::c();
    grouped.setNumberOptions(QLocale::DefaultNumberOptions);
    view_->setLocale(grouped);
    setFocusPolicy(Qt::StrongFocus);
    view_->setFocusProxy(this);
    tools_ = new PlotTools(*this, *view_);
    connect(view_, &QCustomPlot::mouseDoubleClick, this, [this] { ResetRanges(); });
    connect(view_, &QCustomPlot::mouseMove, this, [this](const QMouseEvent* event) { PointerMoved(*event); });
    ShowAxes();
}

void PlotWidget::Show(const Plot& plot) {
    plot_ = plot;
    pointed_ = {};
    view_->clearGraphs();
    ShowAxes();
    ShowSeries();
    ShowLegend();
    cursors_.Follow(plot_);
    RedrawItems();
    ResetRanges();
    setAccessibleName(Text(plot_.title));
}

/// All that lies over the curves.
void PlotWidget::RedrawItems() {
    view_->clearItems();
    pointer_ = nullptr;
    readOut_ = nullptr;
    tools_->Restart();
    ShowBands();
    ShowBlocks();
    ShowBoxes();
    ShowMarks();
    cursors_.Draw(*view_, plot_, PlotColors(palette()));
    view_->replot(QCustomPlot::rpQueuedReplot);
}

/// The look of the program has changed between light and dark. What is shown of the plot stays.
void PlotWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    const QCPRange across = view_->xAxis->range();
    const QCPRange along = view_->yAxis->range();
    Show(Plot(plot_));
    view_->xAxis->setRange(across);
    view_->yAxis->setRange(along);
}

void PlotWidget::RedrawNow() {
    view_->replot(QCustomPlot::rpImmediateRefresh);
}

void PlotWidget::ShowAxes() {
    // Without a curve the axes could be mistaken for one.
    for (QCPAxis* axis : {view_->xAxis, view_->yAxis}) {
        axis->setVisible(!plot_.IsEmpty());
        axis->grid()->setVisible(!plot_.IsEmpty());
    }
    // Lines between the blocks replace the grid.
    if (!plot_.horizontal.blocks.empty()) view_->xAxis->grid()->setVisible(false);
    const PlotColors colors(palette());
    view_->setBackground(colors.background);
    StyleAxis(*view_->xAxis, plot_.horizontal, colors);
    StyleAxis(*view_->yAxis, plot_.vertical, colors);
}

void PlotWidget::ShowSeries() {
    const PlotColors colors(palette());
    std::size_t number = 0;
    for (const PlotSeries& series : plot_.series) {
        const QColor own = ColorOfSeries(number++, colors.isDark);
        const QColor color = series.color ? ToQColor(*series.color) : own;
        QCPGraph* graph = view_->addGraph();
        graph->setName(Text(series.name));
        graph->setPen(QPen(color, 1));
        if (series.asMarkers) {
            graph->setLineStyle(QCPGraph::lsNone);
            graph->setScatterStyle(QCPScatterStyle(ShapeOf(series.shape), color, 7));
        }
        if (series.isLimit) {
            graph->setPen(QPen(colors.ink, 1, Qt::DashLine));
            graph->removeFromLegend();
        }
        graph->setData(Values(series.x), Values(series.y), std::is_sorted(series.x.begin(), series.x.end()));
    }
}

void PlotWidget::ShowLegend() {
    const bool isNamed = plot_.series.size() > 1 && !plot_.series.front().name.empty();
    const PlotColors colors(palette());
    view_->legend->setVisible(isNamed);
    view_->legend->setBrush(colors.background);
    view_->legend->setTextColor(colors.ink);
    view_->legend->setBorderPen(QPen(colors.axis));
    // Blocks leave no space between their markers.
    const bool isBelow = isNamed && !plot_.horizontal.blocks.empty();
    if (isBelow && !view_->plotLayout()->hasElement(1, 0)) {
        view_->plotLayout()->addElement(1, 0, view_->legend);
        view_->plotLayout()->setRowStretchFactor(1, 0.001);
        view_->legend->setFillOrder(QCPLegend::foColumnsFirst);
        view_->legend->setBorderPen(Qt::NoPen);
    }
    if (isBelow || !isNamed) return;
    // Markers lie along a line from the origin: there is space above it.
    const bool hasMarkers = std::any_of(plot_.series.begin(), plot_.series.end(),
                                        [](const PlotSeries& series) { return series.asMarkers; });
    view_->axisRect()->insetLayout()->setInsetAlignment(0,
                                                        Qt::AlignTop | (hasMarkers ? Qt::AlignLeft : Qt::AlignRight));
}

void PlotWidget::ShowMarks() {
    const PlotColors colors(palette());
    const double middle = (plot_.horizontal.lowest + plot_.horizontal.highest) / 2;
    const std::vector<int> rows = RowsOfLabels(plot_);
    for (std::size_t number = 0; number < plot_.marks.size(); ++number) {
        const PlotMark& mark = plot_.marks[number];
        auto* line = new QCPItemStraightLine(view_);
        line->point1->setCoords(mark.x, 0);
        line->point2->setCoords(mark.x, 1);
        line->setPen(QPen(colors.mark, 1, Qt::DashLine));

        auto* point = new QCPItemTracer(view_);
        point->position->setCoords(mark.x, mark.y);
        point->setStyle(QCPItemTracer::tsCircle);
        point->setSize(9);
        point->setPen(QPen(colors.mark, 2));

        auto* label = new QCPItemText(view_);
        const bool toTheRight = mark.x < middle;
        label->position->setParentAnchor(point->position);
        label->setPadding(QMargins(3, 1, 3, 1));
        const int rowHeight = QFontMetrics(label->font()).height() + 2;
        label->position->setCoords(toTheRight ? 10 : -10, -rows[number] * rowHeight);
        label->setPositionAlignment((toTheRight ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignBottom);
        label->setText(Text(mark.name));
        label->setColor(colors.mark);
        label->setBrush(Translucent(colors.background, 200));
    }
}

void PlotWidget::ShowBlocks() {
    const PlotColors colors(palette());
    for (const PlotBlock& block : plot_.horizontal.blocks) {
        auto* border = new QCPItemStraightLine(view_);
        border->point1->setCoords(block.to, 0);
        border->point2->setCoords(block.to, 1);
        border->setPen(QPen(colors.axis, 1));
        if (!block.mean) continue;
        auto* mean = new QCPItemLine(view_);
        mean->start->setCoords(block.from, *block.mean);
        mean->end->setCoords(block.to, *block.mean);
        mean->setPen(QPen(colors.ink, 1, Qt::DashLine));
    }
}

void PlotWidget::ShowBoxes() {
    const PlotColors colors(palette());
    for (const PlotBox& box : plot_.boxes) {
        const bool isPlain = IsPlain(box.color);
        const QColor ink = isPlain ? colors.ink : stateTextColor;
        auto* frame = new QCPItemRect(view_);
        frame->topLeft->setCoords(box.left, box.top);
        frame->bottomRight->setCoords(box.right, box.bottom);
        frame->setPen(QPen(colors.ink, 1));
        frame->setBrush(isPlain ? colors.background : ToQColor(box.color));
        auto* text = new QCPItemText(view_);
        text->position->setCoords((box.left + box.right) / 2, (box.bottom + box.top) / 2);
        text->setText(Text(box.text));
        text->setColor(ink);
    }
}

void PlotWidget::ShowBands() {
    const PlotColors colors(palette());
    for (const PlotBand& band : plot_.bands) {
        auto* strip = new QCPItemRect(view_);
        strip->topLeft->setCoords(plot_.horizontal.lowest, band.highest);
        strip->bottomRight->setCoords(plot_.horizontal.highest, band.lowest);
        strip->setPen(Qt::NoPen);
        strip->setBrush(Translucent(colors.mark, 40));
        auto* line = new QCPItemStraightLine(view_);
        line->point1->setCoords(0, band.chosen);
        line->point2->setCoords(1, band.chosen);
        line->setPen(QPen(colors.mark, 1));
    }
}

void PlotWidget::ResetRanges() {
    view_->xAxis->setRange(plot_.horizontal.lowest, plot_.horizontal.highest);
    view_->yAxis->setRange(plot_.vertical.lowest, plot_.vertical.highest);
    view_->replot(QCustomPlot::rpQueuedReplot);
}

PlotSample PlotWidget::SampleAt(QPointF position) const {
    const PlotSeries& first = plot_.series.front();
    if (!first.asMarkers) return {0, NearestSample(first.x, view_->xAxis->pixelToCoord(position.x()))};
    // Markers may cover each other: the nearest one on the screen is chosen.
    PlotSample nearest;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t number = 0; number < plot_.series.size(); ++number) {
        const PlotSeries& series = plot_.series[number];
        if (!series.asMarkers) continue;
        for (std::size_t index = 0; index < series.x.size(); ++index) {
            const double across = view_->xAxis->coordToPixel(series.x[index]) - position.x();
            const double along = view_->yAxis->coordToPixel(series.y[index]) - position.y();
            const double distance = std::hypot(across, along);
            if (distance >= least) continue;
            least = distance;
            nearest = {number, index};
        }
    }
    return nearest;
}

QString PlotWidget::ReadOutAt(double x) const {
    if (plot_.series.empty() || plot_.series.front().x.empty()) return {};
    return ReadOut({0, NearestSample(plot_.series.front().x, x)});
}

QString PlotWidget::ReadOut(const PlotSample& sample) const {
    const PlotSeries& series = plot_.series[sample.series];
    if (sample.index < series.notes.size()) return Text(series.notes[sample.index]);
    return PlotValueText(plot_.horizontal, series.x[sample.index]) + QLatin1String(", ") +
           PlotValueText(plot_.vertical, series.y[sample.index]);
}

void PlotWidget::PointerMoved(const QMouseEvent& event) {
    if (plot_.series.empty() || plot_.series.front().x.empty()) return;
    const PlotSample sample = SampleAt(event.position());
    PointAt(sample);
    if (sample.series == 0 && plot_.series.front().asMarkers) emit PointedAt(sample.index);
}

void PlotWidget::PointAt(const PlotSample& sample) {
    pointed_ = sample;
    if (!pointer_) {
        const PlotColors colors(palette());
        pointer_ = new QCPItemTracer(view_);
        pointer_->setStyle(QCPItemTracer::tsPlus);
        pointer_->setPen(QPen(colors.ink, 1));
        readOut_ = new QCPItemText(view_);
        readOut_->position->setType(QCPItemPosition::ptAxisRectRatio);
        // Drops rise towards the upper corner; pulses have returned to zero there.
        const bool isTopTaken = plot_.series.front().asMarkers;
        readOut_->position->setCoords(0.99, isTopTaken ? 0.98 : 0.02);
        readOut_->setPositionAlignment(Qt::AlignRight | (isTopTaken ? Qt::AlignBottom : Qt::AlignTop));
        readOut_->setTextAlignment(Qt::AlignLeft);
        readOut_->setColor(colors.ink);
        readOut_->setBrush(Translucent(colors.background, 220));
        readOut_->setPadding(QMargins(4, 2, 4, 2));
    }
    const PlotSeries& series = plot_.series[sample.series];
    pointer_->position->setCoords(series.x[sample.index], series.y[sample.index]);
    readOut_->setText(ReadOut(sample));
    view_->replot(QCustomPlot::rpQueuedReplot);
}

void PlotWidget::LinkTo(PlotWidget& other) {
    for (const auto& [leader, follower] : {std::pair(this, &other), std::pair(&other, this)}) {
        connect(leader->view_->xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), follower,
                [leader = leader, follower = follower] { follower->FollowRange(*leader); });
        connect(leader, &PlotWidget::PointedAt, follower, [leader = leader, follower = follower](std::size_t index) {
            const auto& own = follower->plot_.series;
            if (HasSameAxis(leader->plot_, follower->plot_) && index < own.front().x.size())
                follower->PointAt({0, index});
        });
    }
}

void PlotWidget::FollowRange(const PlotWidget& leader) {
    if (!HasSameAxis(plot_, leader.plot_)) return;
    view_->xAxis->setRange(leader.view_->xAxis->range());
    view_->replot(QCustomPlot::rpQueuedReplot);
}

QStringList PlotWidget::Heading() const {
    QStringList lines;
    if (!plot_.title.empty()) lines.push_back(Text(plot_.title));
    if (run_) lines += run_();
    lines.push_back(QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("d-MMM-yyyy HH:mm")));
    return lines;
}

std::unique_ptr<PlotWidget> PlotWidget::OnPaper() const {
    auto paper = std::make_unique<PlotWidget>();
    QPalette white(Qt::white);
    white.setColor(QPalette::Base, Qt::white);
    white.setColor(QPalette::WindowText, Qt::black);
    white.setColor(QPalette::Mid, QColor(0xdd, 0xe3, 0xe9));
    paper->setPalette(white);
    paper->cursors_ = cursors_;
    paper->setProperty("markers", property("markers"));
    paper->resize(size());
    paper->view_->setFont(view_->font());
    paper->view_->resize(view_->size());
    paper->Show(plot_);
    paper->view_->xAxis->setRange(view_->xAxis->range());
    paper->view_->yAxis->setRange(view_->yAxis->range());
    return paper;
}

void PlotWidget::SetCursorHere(std::size_t cursor) {
    cursors_.Set(cursor, pointed_, plot_);
    RedrawItems();
}

/// From the start of a pulse to its peak, for a drop.
void PlotWidget::SetCursorsAtMarks() {
    if (plot_.marks.empty() || plot_.series.front().x.empty()) return;
    const std::vector<double>& x = plot_.series.front().x;
    cursors_.Set(0, {0, NearestSample(x, plot_.marks.front().x)}, plot_);
    cursors_.Set(1, {0, NearestSample(x, plot_.marks.back().x)}, plot_);
    RedrawItems();
}

void PlotWidget::StepCursor(std::size_t cursor, int samples) {
    cursors_.Step(cursor, samples, plot_);
    RedrawItems();
}

void PlotWidget::ClearCursors() {
    cursors_.Clear();
    RedrawItems();
}

}  // namespace bellmark
