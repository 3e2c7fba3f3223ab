#include "screens/look.h"

#include <QApplication>
#include <QFile>
#include <QLocale>
#include <QPalette>
#include <QStyleFactory>

// The resources are in a static library: only this call links them into the program.
static void LoadResources() {
    Q_INIT_RESOURCE(resources);
}

namespace bellmark {

void ApplyLook() {
    LoadResources();
    // Numbers look the same on screen and in the files, whatever the machine's language.
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xee, 0xf1, 0xf4));
    palette.setColor(QPalette::Highlight, QColor(0x1f, 0x5f, 0xa8));
    palette.setColor(QPalette::Link, QColor(0x1f, 0x5f, 0xa8));
    QApplication::setPalette(palette);
    QFile sheet(QStringLiteral(":/style/bellmark.qss"));
    if (sheet.open(QIODevice::ReadOnly)) qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

}  // namespace bellmark
