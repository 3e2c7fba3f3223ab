#include "screens/preferences.h"

#include <QFileInfo>
#include <algorithm>
#include <iterator>

namespace bellmark {

namespace {

struct Word {
    Appearance appearance;
    const char* text;
};
constexpr Word words[] = {{Appearance::AsDesktop, "desktop"}, {Appearance::Light, "light"}, {Appearance::Dark, "dark"}};

const QString appearanceKey = QStringLiteral("appearance");
const QString soundsKey = QStringLiteral("sounds");
const QString geometryKey = QStringLiteral("windowGeometry");

/// A slash would begin a group of its own.
QString DialogKey(QString dialog, const char* value) {
    return QStringLiteral("dialogs/") + dialog.replace(QLatin1Char('/'), QLatin1Char(' ')) + QLatin1Char('/') +
           QLatin1String(value);
}

}  // namespace

Preferences::Preferences() : settings_(QStringLiteral("Bellmark"), QStringLiteral("Bellmark")) {}

Preferences::Preferences(const QString& file) : settings_(file, QSettings::IniFormat) {}

Appearance Preferences::ChosenAppearance() const {
    const QString text = settings_.value(appearanceKey).toString();
    const auto known = std::find_if(std::begin(words), std::end(words),
                                    [&](const Word& word) { return text == QLatin1String(word.text); });
    return known == std::end(words) ? Appearance::AsDesktop : known->appearance;
}

void Preferences::Choose(Appearance appearance) {
    for (const Word& word : words) {
        if (word.appearance == appearance) settings_.setValue(appearanceKey, QLatin1String(word.text));
    }
}

bool Preferences::HasSounds() const {
    return settings_.value(soundsKey, true).toBool();
}

void Preferences::KeepSounds(bool on) {
    settings_.setValue(soundsKey, on);
}

QByteArray Preferences::WindowGeometry() const {
    return settings_.value(geometryKey).toByteArray();
}

void Preferences::KeepWindowGeometry(const QByteArray& geometry) {
    settings_.setValue(geometryKey, geometry);
}

Preferences::Place Preferences::PlaceOf(const QString& dialog, const QString& suggested) const {
    Place place{suggested, settings_.value(DialogKey(dialog, "fileType")).toString()};
    const QString folder = settings_.value(DialogKey(dialog, "folder")).toString();
    // Another run suggests another folder, which then comes first.
    const bool fromHere = settings_.value(DialogKey(dialog, "suggested")).toString() == suggested;
    if ((fromHere || !QFileInfo(suggested).isDir()) && QFileInfo(folder).isDir()) place.folder = folder;
    return place;
}

void Preferences::KeepPlace(const QString& dialog, const QString& suggested, const Place& chosen) {
    settings_.setValue(DialogKey(dialog, "suggested"), suggested);
    settings_.setValue(DialogKey(dialog, "folder"), chosen.folder);
    settings_.setValue(DialogKey(dialog, "fileType"), chosen.fileType);
}

}  // namespace bellmark
