#include "screens/help_window.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QDesktopServices>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

#include "platform/machine.h"

// The guide is in a static library: only this call links it into the program.
static void LoadGuide() {
    Q_INIT_RESOURCE(help);
}

namespace bellmark {

namespace {

constexpr int chapterLevel = 2;
constexpr int sectionLevel = 3;
constexpr int widestPicture = 700;
constexpr QSize firstSize{1120, 760};
constexpr int widthOfContents = 320;
constexpr int leastWidth = 640;
constexpr int titleHeight = 40;  // about as much as a desktop adds to a window

/// Headings of the guide by the screens that they are about.
struct ScreenPage {
    const char* screen;
    const char* heading;
};
constexpr ScreenPage screenPages[] = {
    {"frmAbout", "The start form"},
    {"frmSetup", "Setting up a calibration"},
    {"frmSimulator", "Data Acquisition"},
    {"frmMainMenu", "The main menu"},
    {"frmPrerequisites", "The signal conditioner's checklist"},
    {"frmBellmark_Accel", "The collection screen"},
    {"frmBellmark_AccelDrop", "The drop screen"},
    {"frmBellmark_AccelTrigger", "Trigger level and number of drops"},
    {"frmFlipCalibration", "The daily calibration of the accelerometer"},
    {"frmGetFWDData", "The FWD's data"},
    {"frmRegressionPlot", "The plot"},
    {"frmRefReview", "The review of the sensors' trials"},
    {"frmCenterRelative", "Comparing the deflection sensors"},
    {"frmCenterRelPlot", "Comparing the deflection sensors"},
    {"frmResults", "Results of the load cell"},
    {"frmReport", "Final outputs and certificate"},
    {"frmRelative", "The monthly calibration"},
    {"frmRelResults", "The results of a trial"},
};

/// Finds the guide's pictures in its folder, and scales them to the width beside the table of contents.
class GuideBrowser : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;

  protected:
    QVariant loadResource(int type, const QUrl& name) override {
        if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
        const QImage picture(QStringLiteral(":/help/") + name.path());
        const int width = qRound(widestPicture * devicePixelRatioF());
        if (picture.width() <= width) return picture;
        QImage fitting = picture.scaledToWidth(width, Qt::SmoothTransformation);
        fitting.setDevicePixelRatio(devicePixelRatioF());
        return fitting;
    }
};

QString Guide() {
    LoadGuide();
    QFile file(QStringLiteral(":/help/guide.md"));
    if (!file.open(QIODevice::ReadOnly)) return QObject::tr("The operator's guide is missing in this program.");
    return QString::fromUtf8(file.readAll());
}

/// Lower-case letters and digits, blanks as hyphens; only hyphens of the text itself are kept besides.
QString AnchorOf(const QString& heading) {
    QString anchor;
    for (const QChar sign : heading.toLower()) {
        if (sign == QLatin1Char(' ')) anchor += QLatin1Char('-');
        if (sign.isLetterOrNumber() || sign == QLatin1Char('-') || sign == QLatin1Char('_')) anchor += sign;
    }
    return anchor;
}

/// Space around the words of tables, and file names in the size of the text around them.
void Style(QTextDocument& guide, double pointSize) {
    for (QTextFrame* frame : guide.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table) continue;
        QTextTableFormat format = table->format();
        format.setCellSpacing(0);
        format.setBorderBrush(qApp->palette().color(QPalette::Mid));
        format.setCellPadding(5);
        format.setTopMargin(4);
        format.setBottomMargin(12);
        table->setFormat(format);
    }
    for (QTextBlock block = guide.begin(); block.isValid(); block = block.next()) {
        std::vector<QTextFragment> fileNames;
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            if (part.fragment().charFormat().fontFixedPitch()) fileNames.push_back(part.fragment());
        }
        for (const QTextFragment& name : fileNames) {
            QTextCursor cursor(&guide);
            cursor.setPosition(name.position());
            cursor.setPosition(name.position() + name.length(), QTextCursor::KeepAnchor);
            QTextCharFormat format;
            format.setFontPointSize(pointSize);
            cursor.mergeCharFormat(format);
        }
    }
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      word_(new QLineEdit(this)),
      findResult_(new QLabel(this)),
      contents_(new QTreeWidget(this)),
      text_(new GuideBrowser(this)) {
    auto* side = new QWidget(this);
    auto* sideLayout = new QVBoxLayout(side);
    sideLayout->addWidget(word_);
    sideLayout->addWidget(findResult_);
    sideLayout->addWidget(contents_);
    auto* parts = new QSplitter(this);
    parts->addWidget(side);
    parts->addWidget(text_);
    parts->setStretchFactor(1, 1);
    parts->setSizes({widthOfContents, firstSize.width() - widthOfContents});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(parts);
    setWindowTitle(tr("Bellmark Help"));
    resize(firstSize);

    word_->setPlaceholderText(tr("Find a word (Ctrl+F)"));
    word_->setClearButtonEnabled(true);
    findResult_->hide();
    contents_->setHeaderHidden(true);
    contents_->setTextElideMode(Qt::ElideMiddle);  // a message's number is at the end
    contents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setOpenLinks(false);
    text_->document()->setDocumentMargin(fontMetrics().height());
    text_->setMarkdown(Guide());
    text_->ensurePolished();  // only after this it has the program's font size
    Style(*text_->document(), text_->font().pointSizeF());
    CollectHeadings();
    FillContents();
    AddShortcuts();
    connect(text_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (link.isRelative()) {
            FollowLink(link.fragment());
        } else {
            QDesktopServices::openUrl(link);
        }
    });
}

void HelpWindow::CollectHeadings() {
    for (QTextBlock block = text_->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level > 0) headings_.push_back({block.text(), AnchorOf(block.text()), level, block.position()});
    }
}

void HelpWindow::FillContents() {
    QTreeWidgetItem* chapter = nullptr;
    for (GuideHeading& heading : headings_) {
        if (heading.level < chapterLevel || heading.level > sectionLevel) continue;
        const bool isSection = heading.level == sectionLevel && chapter;
        heading.item = isSection ? new QTreeWidgetItem(chapter) : new QTreeWidgetItem(contents_);
        if (!isSection) chapter = heading.item;
        heading.item->setText(0, heading.text);
        heading.item->setToolTip(0, heading.text);
    }
    const auto goToItem = [this](const QTreeWidgetItem* item) {
        const auto found = std::find_if(headings_.begin(), headings_.end(),
                                        [&](const GuideHeading& heading) { return heading.item == item; });
        if (found != headings_.end()) GoTo(*found);
    };
    connect(contents_, &QTreeWidget::itemClicked, this, goToItem);
    connect(contents_, &QTreeWidget::currentItemChanged, this, goToItem);
}

void HelpWindow::AddShortcuts() {
    const auto add = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(QKeySequence::Find, [this] {
        word_->setFocus();
        word_->selectAll();
    });
    add(Qt::Key_F3, [this] { FindWord(false); });
    add(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { FindWord(true); });
    add(Qt::Key_Escape, [this] { close(); });
    connect(word_, &QLineEdit::returnPressed, this, [this] { FindWord(false); });
}

void HelpWindow::ShowContext(int context) {
    ComeForward();
    const GuideHeading* heading =
        context > helpPage::firstMessage ? HeadingOfMessage(context - helpPage::firstMessage) : nullptr;
    if (heading) {
        GoTo(*heading);
    } else if (!headings_.empty()) {
        GoTo(headings_.front());
    }
    if (context == helpPage::index) word_->setFocus();
}

void HelpWindow::ShowScreen(const QString& screen) {
    ComeForward();
    const auto page = std::find_if(std::begin(screenPages), std::end(screenPages),
                                   [&](const ScreenPage& known) { return screen == QLatin1String(known.screen); });
    const QString wanted = page == std::end(screenPages) ? QString() : QString::fromUtf8(page->heading);
    const auto found = std::find_if(headings_.begin(), headings_.end(),
                                    [&](const GuideHeading& heading) { return heading.text == wanted; });
    if (!headings_.empty()) GoTo(found == headings_.end() ? headings_.front() : *found);
}

/// A box that waits for an answer blocks all windows but its own: beside it the help is one of these, so that both can
/// be used.
void HelpWindow::ComeForward() {
    hide();
    create();
    const QWidget* box = QApplication::activeModalWidget();
    windowHandle()->setTransientParent(box ? box->windowHandle() : nullptr);
    if (box) PlaceBeside(*box);
    show();
    raise();
    activateWindow();
    text_->setFocus();
}

/// On the side of the box with more room, as wide as that is.
void HelpWindow::PlaceBeside(const QWidget& box) {
    const QRect display = box.screen()->availableGeometry();
    const QRect taken = box.frameGeometry();
    const int left = taken.left() - display.left();
    const int right = display.right() - taken.right();
    const int width = std::clamp(std::max(left, right), leastWidth, firstSize.width());
    const int height = std::min(firstSize.height(), display.height() - titleHeight);
    const int x = left > right ? std::max(display.left(), taken.left() - width) : display.right() - width + 1;
    resize(width, height);
    move(x, display.top() + (display.height() - titleHeight - height) / 2);
}

const GuideHeading* HelpWindow::HeadingOfMessage(int code) const {
    const QString number = QStringLiteral("(%1)").arg(code, 3, 10, QLatin1Char('0'));
    const auto found = std::find_if(headings_.begin(), headings_.end(),
                                    [&](const GuideHeading& heading) { return heading.text.endsWith(number); });
    return found == headings_.end() ? nullptr : &*found;
}

void HelpWindow::GoTo(const GuideHeading& heading) {
    const QTextBlock block = text_->document()->findBlock(heading.position);
    QTextCursor cursor(block);
    text_->setTextCursor(cursor);
    // The last entries cannot be scrolled to the top of the window: a band marks the one that was chosen.
    QTextEdit::ExtraSelection band;
    band.cursor = cursor;
    band.format.setBackground(palette().color(QPalette::AlternateBase));
    band.format.setProperty(QTextFormat::FullWidthSelection, true);
    text_->setExtraSelections({band});
    const QAbstractTextDocumentLayout* layout = text_->document()->documentLayout();
    layout->documentSize();  // lays out the part that was not yet visible
    text_->verticalScrollBar()->setValue(qRound(layout->blockBoundingRect(block).top()));
    const QSignalBlocker alreadyThere(contents_);
    contents_->setCurrentItem(heading.item);
}

void HelpWindow::FollowLink(const QString& anchor) {
    const auto found = std::find_if(headings_.begin(), headings_.end(),
                                    [&](const GuideHeading& heading) { return heading.anchor == anchor; });
    if (found != headings_.end()) GoTo(*found);
}

void HelpWindow::FindWord(bool backward) {
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (word_->text().isEmpty()) return;
    bool found = text_->find(word_->text(), flags);
    if (!found) {
        // Continues once from the other end.
        const QTextCursor here = text_->textCursor();
        text_->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        found = text_->find(word_->text(), flags);
        if (!found) text_->setTextCursor(here);
    }
    findResult_->setText(tr("Not found"));
    findResult_->setVisible(!found);
}

}  // namespace bellmark
