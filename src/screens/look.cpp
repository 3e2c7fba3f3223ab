#include "screens/look.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QLocale>
#include <QPalette>
#include <QStyleFactory>
#include <utility>

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

bool IsDarkPalette(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QString StyleSheet(bool isDark) {
    QFile file(QStringLiteral(":/style/bellmark.qss"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QString sheet = QString::fromUtf8(file.readAll());
    if (isDark) sheet.replace(QLatin1String("/style/images/"), QLatin1String("/style/images/dark/"));
    return WithTones(sheet, isDark);
}

}  // namespace

Look::Look(std::function<bool()> desktopIsDark) : askDesktop_(std::move(desktopIsDark)) {
    LoadResources();
    desktopIsDark_ = askDesktop_();
    // Numbers look the same on screen and in the files, whatever the machine's language.
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    Show(Appearance::AsDesktop);
    qApp->installEventFilter(this);
}

bool Look::IsDark() const {
    return appearance_ == Appearance::Dark || (appearance_ == Appearance::AsDesktop && desktopIsDark_);
}

void Look::Show(Appearance appearance) {
    const bool wasChanging = std::exchange(isChanging_, true);
    appearance_ = appearance;
    QApplication::setPalette(PaletteOf(IsDark()));
    qApp->setStyleSheet(StyleSheet(IsDark()));
    isChanging_ = wasChanging;
}

bool Look::eventFilter(QObject* watched, QEvent* event) {
    const bool mayBeDesktop =
        event->type() == QEvent::ThemeChange || (event->type() == QEvent::ApplicationPaletteChange && watched == qApp);
    if (mayBeDesktop && !isChanging_) MeetDesktop();
    return false;
}

/// Without a palette of its own the application has the desktop's.
bool Look::HasDarkDesktop() {
    const QPalette own = QGuiApplication::palette();
    QApplication::setPalette(QPalette());
    const bool isDark = IsDarkPalette(QGuiApplication::palette());
    QApplication::setPalette(own);
    return isDark;
}

void Look::MeetDesktop() {
    isChanging_ = true;
    const bool isDark = askDesktop_();
    isChanging_ = false;
    if (isDark == desktopIsDark_) return;
    desktopIsDark_ = isDark;
    if (appearance_ == Appearance::AsDesktop) Show(appearance_);
}

}  // namespace bellmark
