#include "screens/side_screens.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>

#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "screens/forms.h"
#include "screens/page.h"

namespace bellmark {

namespace {

QDockWidget* MakeDock(QMainWindow& window, Screen& screen, const std::function<void(const QString&)>& tellUser) {
    auto form = MakeForm(screen.Name());
    if (!form) return nullptr;
    auto* dock = new QDockWidget(QString::fromStdString(screen.Title()), &window);
    dock->setObjectName(QStringLiteral("decorDock_") + QString::fromStdString(screen.Name()));
    dock->setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    dock->setWidget(new Page(screen, std::move(form), tellUser));
    return dock;
}

}  // namespace

void AddSideScreens(QMainWindow& window, QMenu& menu, const ScreenStack& screens, const Screen& mainFrame,
                    const std::function<void(const QString&)>& tellUser) {
    for (Screen* screen : screens.Screens()) {
        if (!screen->IsAlwaysAtHand() || screen == &mainFrame) continue;
        QDockWidget* dock = MakeDock(window, *screen, tellUser);
        if (!dock) continue;
        window.addDockWidget(Qt::BottomDockWidgetArea, dock);
        menu.addAction(dock->toggleViewAction());
        // The demonstration needs the operator's hands; the board itself is only looked at when something is wrong.
        dock->setVisible(screen->Name() == "frmDemonstration");
    }
}

}  // namespace bellmark
