#include "screens/qt_printer.h"

#include <qcustomplot.h>
#include <QApplication>
#include <QBuffer>
#include <QFontMetricsF>
#include <QLocale>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QWidget>
#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

#include "screens/formatted_document.h"
#include "screens/plot_export.h"

namespace bellmark {

namespace {

constexpr double usualPointSize = 10;
constexpr double margin = 15;  // mm

QFont PageFont(QPaintDevice& device, const std::vector<QString>& lines, const QRectF& area) {
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    font.setPointSizeF(usualPointSize);
    const QFontMetricsF metrics(font, &device);
    double widest = 0;
    for (const QString& line : lines) widest = std::max(widest, metrics.horizontalAdvance(line));
    const double height = metrics.lineSpacing() * static_cast<double>(lines.size());
    const double scale = std::min({1.0, area.width() / std::max(widest, 1.0), area.height() / std::max(height, 1.0)});
    font.setPointSizeF(usualPointSize * scale);
    return font;
}

}  // namespace

void DrawPages(QPagedPaintDevice& device, const std::vector<std::vector<std::string>>& pages) {
    device.setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    QPainter painter;
    if (!painter.begin(&device)) throw std::runtime_error("The printer does not take the report.");
    bool isFirst = true;
    for (const auto& page : pages) {
        if (!isFirst) device.newPage();
        isFirst = false;
        std::vector<QString> lines;
        for (const auto& line : page) lines.push_back(QString::fromStdString(line));
        const QRectF area(painter.viewport());
        painter.setFont(PageFont(device, lines, area));
        const QFontMetricsF metrics(painter.font(), &device);
        double top = metrics.ascent();
        for (const QString& line : lines) {
            painter.drawText(QPointF(0, top), line);
            top += metrics.lineSpacing();
        }
    }
}

void DrawWidget(QPagedPaintDevice& device, QWidget& widget) {
    QPainter painter;
    if (!painter.begin(&device)) throw std::runtime_error("The printer does not take the page.");
    const QSizeF page(device.width(), device.height());
    const double scale = std::min(page.width() / widget.width(), page.height() / widget.height());
    painter.translate((page.width() - scale * widget.width()) / 2, (page.height() - scale * widget.height()) / 2);
    painter.scale(scale, scale);
    std::vector<std::pair<QCustomPlot*, QRect>> plots;
    for (QCustomPlot* plot : widget.findChildren<QCustomPlot*>()) {
        if (plot->isVisibleTo(&widget)) plots.emplace_back(plot, plot->geometry());
    }
    // Beside its place a plot is left out: the page would show the dots of its screen.
    for (const auto& [plot, place] : plots) plot->move(place.translated(2 * widget.width(), 0).topLeft());
    widget.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    for (const auto& [plot, place] : plots) {
        plot->move(place.topLeft());
        DrawPlot(painter, *plot, QRect(plot->mapTo(&widget, QPoint(0, 0)), plot->size()));
    }
}

void QtPrinter::PrintScreen(const std::string& title, QWidget& page) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(title));
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() == QDialog::Accepted) DrawWidget(printer, page);
}

void QtPrinter::Print(const std::string& title, const std::vector<std::vector<std::string>>& pages) {
    const QPrinterInfo installed = QPrinterInfo::defaultPrinter();
    if (installed.isNull()) throw std::runtime_error("No printer is installed: the report was not printed.");
    QPrinter printer(installed, QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(title));
    DrawPages(printer, pages);
}

void QtPrinter::Print(const std::string& title, const FormattedText& text) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(title));
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    if (dialog.exec() == QDialog::Accepted) PrintDocument(printer, text);
}

std::optional<std::string> QtPrinter::Pdf(const std::string& title, const FormattedText& text) {
    // Into memory: the PDF writer itself says nothing when a disk is full.
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    const bool inInches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    writer.setPageSize(QPageSize(inInches ? QPageSize::Letter : QPageSize::A4));
    writer.setTitle(QString::fromStdString(title));
    writer.setCreator(QStringLiteral("Bellmark"));
    PrintDocument(writer, text);
    return bytes.toStdString();
}

}  // namespace bellmark
