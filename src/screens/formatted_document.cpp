#include "screens/formatted_document.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QScreen>
#include <QTextBlock>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QWidget>
#include <algorithm>
#include <stdexcept>

namespace bellmark {

namespace {

constexpr double pointsPerInch = 72;
constexpr double sheetInches = 6.5;   // between the margins
constexpr double marginInches = 0.4;  // around the text on the screen
constexpr double topInches = 0.75;    // above and below it on paper
constexpr double leastSideInches = 0.5;
constexpr const char* fontFamily = "Arial";

Qt::Alignment AlignmentOf(Alignment alignment) {
    switch (alignment) {
        case Alignment::Left:
            return Qt::AlignLeft;
        case Alignment::Center:
            return Qt::AlignHCenter;
        case Alignment::Right:
            return Qt::AlignRight;
        case Alignment::Justified:
            return Qt::AlignJustify;
    }
    return Qt::AlignLeft;
}

QTextOption::TabType TabTypeOf(Alignment alignment) {
    if (alignment == Alignment::Center) return QTextOption::CenterTab;
    return alignment == Alignment::Right ? QTextOption::RightTab : QTextOption::LeftTab;
}

/// Points from line to line. Fonts that stand in for one another differ in it by a fifth: what fills a page here is to
/// fill one everywhere.
double LinePitch(const FormattedParagraph& paragraph) {
    constexpr double ofLetters = 1.2;
    double largest = paragraph.runs.empty() ? FormattedRun().pointSize : 0;
    for (const FormattedRun& run : paragraph.runs) largest = std::max(largest, run.pointSize);
    return ofLetters * largest;
}

QTextBlockFormat BlockFormat(const FormattedParagraph& paragraph, double dotsPerPoint) {
    QTextBlockFormat format;
    format.setAlignment(AlignmentOf(paragraph.alignment));
    format.setLeftMargin(paragraph.leftIndent * dotsPerPoint);
    format.setTextIndent(paragraph.firstLineIndent * dotsPerPoint);
    format.setTopMargin(paragraph.spaceBefore * dotsPerPoint);
    format.setBottomMargin(paragraph.spaceAfter * dotsPerPoint);
    format.setLineHeight(LinePitch(paragraph) * dotsPerPoint, QTextBlockFormat::FixedHeight);
    if (paragraph.beginsPage) format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    if (paragraph.hasRuleBelow) {
        const QTextLength wholeWidth(QTextLength::PercentageLength, 100);
        format.setProperty(QTextFormat::BlockTrailingHorizontalRulerWidth, wholeWidth);
    }
    QList<QTextOption::Tab> tabs;
    for (const TabStop& tab : paragraph.tabs) tabs.push_back({tab.position * dotsPerPoint, TabTypeOf(tab.alignment)});
    format.setTabPositions(tabs);
    return format;
}

QTextCharFormat RunFormat(const FormattedRun& run) {
    QTextCharFormat format;
    format.setFontFamilies({QString::fromLatin1(fontFamily)});
    format.setFontPointSize(run.pointSize);
    format.setFontWeight(run.isBold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(run.isItalic);
    format.setFontUnderline(run.isUnderlined);
    // The smallest spacing: spaced letters are not joined ("fi"), so that words in the printed file can be searched.
    constexpr double leastSpacing = 1.0 / 64;
    format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
    format.setFontLetterSpacing(leastSpacing);
    return format;
}

}  // namespace

void FillDocument(QTextDocument& document, const FormattedText& text, double dotsPerInch) {
    document.clear();
    document.setDocumentMargin(marginInches * dotsPerInch);
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    bool isFirst = true;
    for (const FormattedParagraph& paragraph : text.paragraphs) {
        const QTextBlockFormat format = BlockFormat(paragraph, dotsPerInch / pointsPerInch);
        if (isFirst) {
            cursor.setBlockFormat(format);
        } else {
            cursor.insertBlock(format);
        }
        isFirst = false;
        // An empty line is as high as a line of its text.
        if (paragraph.runs.empty()) cursor.setBlockCharFormat(RunFormat({}));
        for (const FormattedRun& run : paragraph.runs) {
            const QString letters = QString::fromStdString(run.text).replace(QLatin1Char('\n'), QChar::LineSeparator);
            cursor.insertText(letters, RunFormat(run));
        }
    }
    cursor.endEditBlock();
}

int SheetWidth(const QWidget& widget) {
    return static_cast<int>((sheetInches + 2 * marginInches) * widget.logicalDpiX());
}

void PrintDocument(QPagedPaintDevice& device, const FormattedText& text) {
    const double paperInches = device.pageLayout().fullRect(QPageLayout::Inch).width();
    const double sideInches = std::max(leastSideInches, (paperInches - sheetInches) / 2);
    device.setPageMargins(QMarginsF(sideInches, topInches, sideInches, topInches), QPageLayout::Inch);
    const QSizeF area = device.pageLayout().paintRectPixels(device.logicalDpiX()).size();
    // Lines break as on the screen: narrow paper makes the sheet smaller, not its text longer.
    const double sheetDots = sheetInches * device.logicalDpiX();
    const double scale = std::min(1.0, area.width() / sheetDots);
    const QSizeF page(sheetDots, area.height() / scale);

    QTextDocument document;
    // A layout that knows its device takes lengths in dots of the screen and makes them the device's by itself, as it
    // does with letters.
    document.documentLayout()->setPaintDevice(&device);
    FillDocument(document, text, QGuiApplication::primaryScreen()->logicalDotsPerInchY());
    document.setDocumentMargin(0);
    document.setPageSize(page);
    QPainter painter;
    if (!painter.begin(&device)) throw std::runtime_error("The printer does not take the certificate.");
    painter.translate((area.width() - scale * sheetDots) / 2, 0);
    painter.scale(scale, scale);
    for (int number = 0; number < document.pageCount(); ++number) {
        if (number > 0) device.newPage();
        painter.save();
        painter.translate(0, -number * page.height());
        QAbstractTextDocumentLayout::PaintContext context;
        context.palette.setColor(QPalette::Text, Qt::black);
        context.palette.setColor(QPalette::Dark, Qt::black);
        context.clip = QRectF(0, number * page.height(), page.width(), page.height());
        painter.setClipRect(context.clip);
        document.documentLayout()->draw(&painter, context);
        painter.restore();
    }
}

}  // namespace bellmark
