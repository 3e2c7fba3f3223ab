#include "screens/preferences.h"

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
const QString geometryKey = QStringLiteral("windowGeometry");

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

QByteArray Preferences::WindowGeometry() const {
    return settings_.value(geometryKey).toByteArray();
}

void Preferences::KeepWindowGeometry(const QByteArray& geometry) {
    settings_.setValue(geometryKey, geometry);
}

}  // namespace bellmark
