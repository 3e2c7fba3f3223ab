#include "screens/look.h"

#include <QApplication>
#include <QFile>
#include <QLocale>
#include <QPalette>
#include <QStyleFactory>

#include "screens/tones.h"

// The resources are in a static library: only this call links them into the program.
static void LoadResources() {
    Q_INIT_RESOURCE(resources);
}

namespace bellmark {

namespace {

QPalette PaletteOf(bool isDark) {
    struct Use {
        QPalette::ColorRole role;
        const char* tone;
    };
    constexpr Use uses[] = {
        {QPalette::Window, "window"},
        {QPalette::WindowText, "text"},
        {QPalette::Base, "surface"},
        {QPalette::AlternateBase, "status"},
        {QPalette::Text, "text"},
        {QPalette::PlaceholderText, "faint"},
        {QPalette::Button, "surface"},
        {QPalette::ButtonText, "text"},
        {QPalette::Mid, "grid"},
        {QPalette::ToolTipBase, "header"},
        {QPalette::ToolTipText, "header-title"},
        {QPalette::Highlight, "accent"},
        {QPalette::HighlightedText, "on-accent"},
        {QPalette::Link, "accent"},
        {QPalette::LinkVisited, "accent"},
    };
    QPalette palette;
    for (const Use& use : uses) palette.setColor(use.role, ToneColor(QLatin1String(use.tone), isDark));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, ToneColor(QStringLiteral("off-text"), isDark));
    }
    return palette;
}

QString StyleSheet(bool isDark) {
    QFile file(QStringLiteral(":/style/bellmark.qss"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QString sheet = QString::fromUtf8(file.readAll());
    if (isDark) sheet.replace(QLatin1String("/style/images/"), QLatin1String("/style/images/dark/"));
    return WithTones(sheet, isDark);
}

}  // namespace

Look::Look() {
    LoadResources();
    const QPalette desktop = QGuiApplication::palette();
    desktopIsDark_ = desktop.color(QPalette::Window).lightness() < desktop.color(QPalette::WindowText).lightness();
    // Numbers look the same on screen and in the files, whatever the machine's language.
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    Show(Appearance::AsDesktop);
}

bool Look::IsDark() const {
    return appearance_ == Appearance::Dark || (appearance_ == Appearance::AsDesktop && desktopIsDark_);
}

void Look::Show(Appearance appearance) {
    appearance_ = appearance;
    QApplication::setPalette(PaletteOf(IsDark()));
    qApp->setStyleSheet(StyleSheet(IsDark()));
}

}  // namespace bellmark
