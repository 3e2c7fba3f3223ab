#include "screens/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QStackedWidget>
#include <QStatusBar>
#include <QUrl>
#include <stdexcept>

#include "controls/controls.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "screens/binder.h"
#include "screens/forms.h"
#include "screens/page.h"
#include "screens/side_screens.h"
#include "ui_frmMaster.h"

namespace bellmark {

namespace {

void RequireClean(const BindingReport& report, const Screen& screen) {
    if (report.IsClean()) return;
    throw std::logic_error("The form of " + screen.Name() + " does not fit it: " + report.Text().toStdString());
}

}  // namespace

MainWindow::MainWindow(ScreenStack& screens, Screen& mainFrame, std::function<void(const QString&)> tellUser,
                       std::chrono::milliseconds restOfAccept)
    : screens_(screens), mainFrame_(mainFrame), tellUser_(std::move(tellUser)), guard_(restOfAccept) {
    Ui::frmMaster form;
    form.setupUi(this);
    setObjectName(QString());
    pages_ = form.decorPages;
    nextStep_ = new QLabel(this);
    nextStep_->setObjectName(QStringLiteral("decorNextStep"));
    statusBar()->addWidget(nextStep_, 1);
    statusBar()->setSizeGripEnabled(false);
    setAcceptDrops(true);
    setWindowTitle(QString::fromStdString(mainFrame_.Title()));
    menuBinder_ = std::make_unique<Binder>(mainFrame_, *this, tellUser_);
    AddSideScreens(*this, *form.decorView, screens_, mainFrame_, [this](Screen& screen) { return PageOf(screen); });
    for (QAction* item : menuBar()->actions()) menuTitles_.emplace_back(item, item->text());
    screens_.Dispatch("frmMaster form", [this] { RequireClean(menuBinder_->Report(), mainFrame_); });
    screens_.FrontChanged = [this] { ShowFront(); };
    screens_.LockChanged = [this] { ShowLock(); };
    connect(qApp, &QApplication::focusChanged, this, &MainWindow::FollowPage, Qt::QueuedConnection);
    ShowFront();
}

MainWindow::~MainWindow() {
    screens_.FrontChanged = nullptr;
    screens_.LockChanged = nullptr;
    menuBinder_.reset();
}

Page* MainWindow::PageOf(Screen& screen) {
    auto& page = built_[&screen];
    if (page) return page;
    auto form = MakeForm(screen.Name());
    if (!form) {
        built_.erase(&screen);
        return nullptr;
    }
    page = new Page(screen, std::move(form), tellUser_);
    pages_->addWidget(page);
    connect(page, &Page::Refreshed, this, &MainWindow::FollowPage, Qt::QueuedConnection);
    connect(page, &Page::Signalled, this, [this, page](Signal signal) {
        if (pages_->currentWidget() == page) giveSignal_(signal);
    });
    screens_.Dispatch(screen.Name() + " form", [page, &screen] { RequireClean(page->Bindings().Report(), screen); });
    return page;
}

void MainWindow::ShowFront() {
    Screen* front = screens_.Front();
    if (!front || front->IsAlwaysAtHand()) return;
    Page* page = PageOf(*front);
    if (!page) {
        screens_.Dispatch(front->Name() + " form",
                          [front] { throw std::logic_error("There is no form of " + front->Name()); });
        return;
    }
    pages_->setCurrentWidget(page);
    setWindowTitle(QString::fromStdString(
        front->Title() == mainFrame_.Title() ? front->Title() : front->Title() + " - " + mainFrame_.Title()));
    page->TakeFocus();
    FollowPage();
}

/// Only the button that ends the wait stays enabled; the pointer shows the wait.
void MainWindow::ShowLock() {
    const bool isLocked = screens_.IsLocked();
    menuBar()->setEnabled(!isLocked);
    pages_->setEnabled(!isLocked);
    FollowPage();
    if (isLocked) {
        setCursor(Qt::BusyCursor);
        return;
    }
    unsetCursor();
    // The lock disabled the widget that had the keyboard.
    if (auto* page = qobject_cast<Page*>(pages_->currentWidget())) page->TakeFocus();
}

void MainWindow::FollowPage() {
    const auto* page = qobject_cast<const Page*>(pages_->currentWidget());
    ShowSuggestedStep(page);
    YieldLetters(page);
}

void MainWindow::ShowSuggestedStep(const Page* page) {
    if (isWaiting_) return nextStep_->setText(tr("Please wait: files are being written"));
    if (!page || screens_.IsLocked()) return nextStep_->clear();
    const QString step = page->SuggestedStep();
    if (step.isEmpty()) return nextStep_->clear();
    nextStep_->setText(page->EnterSuggests() ? tr("Next step: %1  (Enter)").arg(step) : tr("Next step: %1").arg(step));
}

/// A letter shared by a menu and a button would press neither: it goes to the button of the screen in front.
void MainWindow::YieldLetters(const Page* page) {
    for (const auto& [item, title] : menuTitles_) {
        const bool isTaken = page && page->TakesKeys(QKeySequence::mnemonic(title));
        item->setText(isTaken ? QString(title).remove(QLatin1Char('&')) : title);
    }
}

void MainWindow::ShowWaiting(bool waits) {
    isWaiting_ = waits;
    FollowPage();
}

/// Of the screen in front, while it can be pressed.
Button* MainWindow::BrowseButton() const {
    const auto* page = qobject_cast<const Page*>(pages_->currentWidget());
    if (!page || screens_.IsLocked()) return nullptr;
    const std::string& name = page->Shown().Name();
    const bool takesFWDFiles = name == "frmGetFWDData" || name == "frmCenterRelative" || name == "frmRelative";
    auto* button = takesFWDFiles ? dynamic_cast<Button*>(page->Shown().Find("cmdBrowse")) : nullptr;
    return button && button->IsReachable() ? button : nullptr;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> files = event->mimeData()->urls();
    if (giveFile_ && files.size() == 1 && files.front().isLocalFile() && BrowseButton()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    Button* browse = BrowseButton();
    const QString file = event->mimeData()->urls().value(0).toLocalFile();
    if (!browse || file.isEmpty()) return;
    event->acceptProposedAction();
    giveFile_(PathFromText(file.toStdString()), [browse] { browse->UserClick(); });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The program decides; it ends by itself when all its running work has finished.
    event->ignore();
    if (screens_.IsLocked()) return;
    screens_.Dispatch(mainFrame_.Name() + ".Close", [this] { mainFrame_.CloseRequested(); });
}

}  // namespace bellmark
