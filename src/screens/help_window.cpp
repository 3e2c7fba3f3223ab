#include "screens/help_window.h"

#include <QApplication>
#include <QFile>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

namespace bellmark {

namespace {

constexpr int messageContexts = 10000;

QString Guide() {
    QFile file(QStringLiteral(":/help/guide.md"));
    if (!file.open(QIODevice::ReadOnly))
        return QObject::tr("The operator's guide was not installed with this program.");
    return QString::fromUtf8(file.readAll());
}

/// Messages are found in the guide by the number in their title.
QString SearchText(int context) {
    return QStringLiteral("(%1)").arg(context - messageContexts, 3, 10, QLatin1Char('0'));
}

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window), browser_(new QTextBrowser(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser_);
    setWindowTitle(tr("Bellmark Help"));
    resize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 40);
    browser_->setMarkdown(Guide());
}

void HelpWindow::ShowContext(int context) {
    browser_->moveCursor(QTextCursor::Start);
    if (context > messageContexts) browser_->find(SearchText(context));
    // A box that waits for an answer keeps all windows out but those that are opened over it.
    hide();
    setWindowModality(QApplication::activeModalWidget() ? Qt::ApplicationModal : Qt::NonModal);
    show();
    raise();
    activateWindow();
}

}  // namespace bellmark
