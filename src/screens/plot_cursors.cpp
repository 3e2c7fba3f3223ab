#include "screens/plot_cursors.h"

#include <qcustomplot.h>

#include <QLocale>
#include <algorithm>
#include <cmath>

#include "screens/plot_colors.h"

namespace bellmark {

namespace {

constexpr std::array names{"A", "B"};

bool Has(const Plot& plot, const PlotSample& sample) {
    return sample.series < plot.series.size() && sample.index < plot.series[sample.series].x.size();
}

std::size_t Nearest(const std::vector<double>& x, double wanted) {
    const auto nearer = [wanted](double a, double b) { return std::abs(a - wanted) < std::abs(b - wanted); };
    return static_cast<std::size_t>(std::min_element(x.begin(), x.end(), nearer) - x.begin());
}

QString PointText(const Plot& plot, double x, double y) {
    return PlotValueText(plot.horizontal, x) + QLatin1String(", ") + PlotValueText(plot.vertical, y);
}

}  // namespace

QString PlotValueText(const PlotAxis& axis, double value) {
    const QString number = QLocale::c().toString(value, 'g', 6);
    const QString caption = QString::fromStdString(axis.caption);
    if (caption.isEmpty()) return number;
    const qsizetype open = caption.lastIndexOf(QLatin1Char('('));
    const qsizetype close = caption.indexOf(QLatin1Char(')'), open);
    if (open >= 0 && close > open) return number + QLatin1Char(' ') + caption.mid(open + 1, close - open - 1);
    return caption.front().isUpper() ? caption + QLatin1Char(' ') + number : number + QLatin1Char(' ') + caption;
}

void PlotCursors::Follow(const Plot& plot) {
    for (auto& cursor : cursors_) {
        if (!cursor) continue;
        const std::size_t series = cursor->sample.series;
        if (series >= plot.series.size() || plot.series[series].x.empty()) {
            cursor.reset();
        } else {
            cursor->sample.index = Nearest(plot.series[series].x, cursor->x);
        }
    }
}

void PlotCursors::Set(std::size_t cursor, const PlotSample& sample, const Plot& plot) {
    if (Has(plot, sample)) cursors_.at(cursor) = Cursor{sample, plot.series[sample.series].x[sample.index]};
}

void PlotCursors::Step(std::size_t cursor, int samples, const Plot& plot) {
    const auto& moved = cursors_.at(cursor);
    if (!moved) return;
    const auto last = static_cast<std::ptrdiff_t>(plot.series[moved->sample.series].x.size()) - 1;
    const auto index = std::clamp(static_cast<std::ptrdiff_t>(moved->sample.index) + samples, std::ptrdiff_t{0}, last);
    Set(cursor, {moved->sample.series, static_cast<std::size_t>(index)}, plot);
}

QString PlotCursors::Text(const Plot& plot) const {
    QStringList lines;
    for (std::size_t number = 0; number < cursors_.size(); ++number) {
        if (!cursors_[number]) continue;
        const auto& [series, index] = cursors_[number]->sample;
        lines.push_back(QLatin1String(names[number]) + QLatin1String("  ") +
                        PointText(plot, plot.series[series].x[index], plot.series[series].y[index]));
    }
    if (cursors_[0] && cursors_[1]) {
        const PlotSample a = cursors_[0]->sample;
        const PlotSample b = cursors_[1]->sample;
        const double across = plot.series[b.series].x[b.index] - plot.series[a.series].x[a.index];
        const double along = plot.series[b.series].y[b.index] - plot.series[a.series].y[a.index];
        lines.push_back(QStringLiteral("B \u2212 A  ") + PointText(plot, across, along));
    }
    return lines.join(QLatin1Char('\n'));
}

void PlotCursors::Draw(QCustomPlot& view, const Plot& plot, const PlotColors& colors) const {
    for (std::size_t number = 0; number < cursors_.size(); ++number) {
        if (!cursors_[number]) continue;
        const auto& [series, index] = cursors_[number]->sample;
        const double x = plot.series[series].x[index];
        auto* line = new QCPItemStraightLine(&view);
        line->point1->setCoords(x, 0);
        line->point2->setCoords(x, 1);
        line->setPen(QPen(colors.cursor, 1));
        auto* point = new QCPItemTracer(&view);
        point->position->setCoords(x, plot.series[series].y[index]);
        point->setStyle(QCPItemTracer::tsSquare);
        point->setSize(8);
        point->setPen(QPen(colors.cursor, 2));
        auto* name = new QCPItemText(&view);
        name->position->setTypeX(QCPItemPosition::ptPlotCoords);
        name->position->setTypeY(QCPItemPosition::ptAxisRectRatio);
        name->position->setCoords(x, 1);
        name->setPositionAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        name->setText(QLatin1String(names[number]));
        name->setColor(colors.cursor);
        name->setBrush(Translucent(colors.background, 220));
        name->setPadding(QMargins(3, 0, 3, 0));
    }
    const QString text = Text(plot);
    if (text.isEmpty()) return;
    // The legend of markers stands in the left corner.
    const bool isLeftTaken = plot.series.front().asMarkers;
    auto* values = new QCPItemText(&view);
    values->position->setType(QCPItemPosition::ptAxisRectRatio);
    values->position->setCoords(isLeftTaken ? 0.5 : 0.01, 0.02);
    values->setPositionAlignment((isLeftTaken ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop);
    values->setTextAlignment(Qt::AlignLeft);
    values->setText(text);
    values->setColor(colors.cursor);
    values->setBrush(Translucent(colors.background, 220));
    values->setPadding(QMargins(4, 2, 4, 2));
}

}  // namespace bellmark
