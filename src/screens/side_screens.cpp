#include "screens/side_screens.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>

#include "controls/screen.h"
#include "controls/screen_stack.h"

namespace bellmark {

namespace {

constexpr QSize boardWindow{1100, 380};

QDockWidget* MakeDock(QMainWindow& window, const Screen& screen, QWidget& page) {
    auto* dock = new QDockWidget(QString::fromStdString(screen.Title()), &window);
    dock->setObjectName(QStringLiteral("decorDock_") + QString::fromStdString(screen.Name()));
    dock->setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
    dock->setWidget(&page);
    page.show();
    return dock;
}

}  // namespace

void AddSideScreens(QMainWindow& window, QMenu& menu, const ScreenStack& screens, const Screen& mainFrame,
                    const std::function<QWidget*(Screen&)>& pageOf) {
    for (Screen* screen : screens.Screens()) {
        if (!screen->IsAlwaysAtHand() || screen == &mainFrame) continue;
        QWidget* page = pageOf(*screen);
        if (!page) continue;
        QDockWidget* dock = MakeDock(window, *screen, *page);
        window.addDockWidget(Qt::BottomDockWidgetArea, dock);
        menu.addAction(dock->toggleViewAction());
        // The demonstration needs the operator's hands. The board itself is only looked at when something is wrong, in
        // a window of its own: beside the others it would take their room.
        const bool isWorkedByHand = screen->Name() == "frmDemonstration";
        dock->setFloating(!isWorkedByHand);
        if (!isWorkedByHand) dock->resize(boardWindow);
        dock->setVisible(isWorkedByHand);
    }
}

}  // namespace bellmark
