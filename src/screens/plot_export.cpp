#include "screens/plot_export.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QFileInfo>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPdfWriter>
#include <QPicture>
#include <QPrintDialog>
#include <QPrinter>
#include <QSvgGenerator>
#include <algorithm>
#include <stdexcept>

#include "controls/picture.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr double pictureScale = 2;  // dots of a picture per dot of the screen
constexpr double margin = 15;       // mm

int HeadingHeight(const QPainter& painter, const QStringList& heading) {
    return static_cast<int>(heading.size()) * painter.fontMetrics().lineSpacing();
}

/// Heading and plot in the units of the view's own dots.
void DrawSheet(QPainter& painter, QCustomPlot& view, const QStringList& heading) {
    painter.fillRect(QRect(0, 0, view.width(), view.height() + HeadingHeight(painter, heading)), Qt::white);
    painter.setPen(Qt::black);
    painter.drawText(QRect(0, 0, view.width(), HeadingHeight(painter, heading)), Qt::AlignHCenter,
                     heading.join(QLatin1Char('\n')));
    DrawPlot(painter, view, QRectF(0, HeadingHeight(painter, heading), view.width(), view.height()));
}

QSize SheetSize(const QCustomPlot& view, const QStringList& heading) {
    const int lines = static_cast<int>(heading.size()) * view.fontMetrics().lineSpacing();
    return {view.width(), view.height() + lines};
}

void DrawOnPage(QPagedPaintDevice& device, QCustomPlot& view, const QStringList& heading) {
    QPainter painter;
    if (!painter.begin(&device)) throw std::runtime_error("The printer does not take the plot.");
    const QSizeF sheet = SheetSize(view, heading);
    const double scale = std::min(device.width() / sheet.width(), device.height() / sheet.height());
    painter.scale(scale, scale);
    QFont font = view.font();
    font.setPixelSize(QFontInfo(view.font()).pixelSize());
    painter.setFont(font);
    DrawSheet(painter, view, heading);
}

QByteArray Png(QCustomPlot& view, const QStringList& heading) {
    QImage image(SheetSize(view, heading) * pictureScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(pictureScale);
    {
        QPainter painter(&image);
        painter.setFont(view.font());
        DrawSheet(painter, view, heading);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray Svg(QCustomPlot& view, const QStringList& heading) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(SheetSize(view, heading));
    generator.setViewBox(QRect(QPoint(0, 0), SheetSize(view, heading)));
    generator.setTitle(heading.value(0));
    generator.setResolution(view.logicalDpiX());
    QPainter painter(&generator);
    painter.setFont(view.font());
    DrawSheet(painter, view, heading);
    painter.end();
    return bytes;
}

QByteArray Pdf(QCustomPlot& view, const QStringList& heading) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    const bool inInches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    writer.setPageSize(QPageSize(inInches ? QPageSize::Letter : QPageSize::A4));
    writer.setPageOrientation(QPageLayout::Landscape);
    writer.setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    writer.setTitle(heading.value(0));
    writer.setCreator(QStringLiteral("Bellmark"));
    DrawOnPage(writer, view, heading);
    return bytes;
}

/// In quotes where it needs them.
QString CsvCell(const std::string& text) {
    QString cell = QString::fromStdString(text);
    cell.remove(QLatin1Char('\r')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const bool needsQuotes = cell.contains(QLatin1Char(',')) || cell.contains(QLatin1Char('"'));
    return needsQuotes ? QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"')
                       : cell;
}

}  // namespace

PlotFile PlotFileOf(const QString& path) {
    const QString ending = QFileInfo(path).suffix().toLower();
    if (ending == QLatin1String("svg")) return PlotFile::Svg;
    if (ending == QLatin1String("pdf")) return PlotFile::Pdf;
    if (ending == QLatin1String("csv")) return PlotFile::Csv;
    return PlotFile::Png;
}

QByteArray PlotBytes(QCustomPlot& view, const Plot& plot, const QStringList& heading, PlotFile kind) {
    switch (kind) {
        case PlotFile::Png:
            return Png(view, heading);
        case PlotFile::Svg:
            return Svg(view, heading);
        case PlotFile::Pdf:
            return Pdf(view, heading);
        case PlotFile::Csv:
            break;
    }
    return PlotTable(view, plot).toUtf8();
}

QString PlotTable(const QCustomPlot& view, const Plot& plot) {
    QStringList lines{QStringLiteral("Series,%1,%2,Note")
                          .arg(plot.horizontal.caption.empty() ? QStringLiteral("x") : CsvCell(plot.horizontal.caption),
                               plot.vertical.caption.empty() ? QStringLiteral("y") : CsvCell(plot.vertical.caption))};
    for (const PlotSeries& series : plot.series) {
        for (std::size_t i = 0; i < series.x.size(); ++i) {
            const bool isShown = view.xAxis->range().contains(series.x[i]) && view.yAxis->range().contains(series.y[i]);
            if (!isShown) continue;
            lines.push_back(QStringList{CsvCell(series.name), QString::fromStdString(NumberText(series.x[i])),
                                        QString::fromStdString(NumberText(series.y[i])),
                                        i < series.notes.size() ? CsvCell(series.notes[i]) : QString()}
                                .join(QLatin1Char(',')));
        }
    }
    return lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n");
}

void DrawPlot(QPainter& painter, QCustomPlot& view, const QRectF& place) {
    QPicture picture;
    {
        QCPPainter recorder;
        recorder.begin(&picture);
        recorder.setMode(QCPPainter::pmVectorized);
        recorder.setMode(QCPPainter::pmNoCaching);
        view.toPainter(&recorder, view.width(), view.height());
    }
    painter.save();
    painter.setClipRect(place);
    painter.translate(place.topLeft());
    painter.scale(place.width() / view.width(), place.height() / view.height());
    // A recorded picture is scaled by the resolution of its device; its units are to stay the dots of the view.
    const double resolution = static_cast<double>(picture.logicalDpiX()) / painter.device()->logicalDpiX();
    painter.scale(resolution, resolution);
    painter.drawPicture(0, 0, picture);
    painter.restore();
}

void PrintPlot(QCustomPlot& view, const QStringList& heading, QWidget* parent) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(heading.value(0));
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    QPrintDialog dialog(&printer, parent);
    if (dialog.exec() == QDialog::Accepted) DrawOnPage(printer, view, heading);
}

}  // namespace bellmark
