#include <QApplication>
#include <QMessageBox>
#include <QStandardPaths>

#include "platform/instance_lock.h"
#include "screens/desktop.h"
#include "screens/look.h"
#include "screens/preferences.h"
#include "screens/program_folder.h"

int main(int count, char** words) {
    using namespace bellmark;
    QApplication application(count, words);
    QApplication::setApplicationName(QStringLiteral("Bellmark"));
    // The program decides when it ends, not the last window.
    QApplication::setQuitOnLastWindowClosed(false);
    Look look;
    Preferences preferences;
    look.Show(preferences.ChosenAppearance());

    const auto pathOf = [](const QString& text) { return PathFromText(text.toStdString()); };
    const Path folder = ChooseProgramFolder(pathOf(QApplication::applicationDirPath()),
                                            pathOf(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)));
    const InstanceLock lock(folder);
    if (!lock.Problem().empty()) {
        QMessageBox::critical(nullptr, QApplication::applicationName(), QString::fromStdString(lock.Problem()));
    }
    return Desktop(folder, lock.IsFirst(), look, preferences).Run();
}
