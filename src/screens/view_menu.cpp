#include "screens/view_menu.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include "screens/look.h"
#include "screens/preferences.h"
#include "screens/sounds.h"

namespace bellmark {

void FillViewMenu(QMenu& menu, Look& look, Sounds& sounds, Preferences& preferences) {
    struct Choice {
        Appearance appearance;
        const char* name;
        QString text;
    };
    const Choice choices[] = {{Appearance::AsDesktop, "decorAsDesktop", QObject::tr("Colors &as the Desktop")},
                              {Appearance::Light, "decorLight", QObject::tr("&Light Colors")},
                              {Appearance::Dark, "decorDark", QObject::tr("&Dark Colors")}};
    auto* group = new QActionGroup(&menu);
    for (const Choice& choice : choices) {
        QAction* item = menu.addAction(choice.text);
        item->setObjectName(QLatin1String(choice.name));
        item->setCheckable(true);
        item->setChecked(choice.appearance == look.Shown());
        group->addAction(item);
        QObject::connect(item, &QAction::triggered, &menu, [&look, &preferences, appearance = choice.appearance] {
            look.Show(appearance);
            preferences.Choose(appearance);
        });
    }
    menu.addSeparator();
    QAction* heard = menu.addAction(QObject::tr("&Sounds"));
    heard->setObjectName(QStringLiteral("decorSounds"));
    heard->setCheckable(true);
    heard->setChecked(sounds.IsOn());
    QObject::connect(heard, &QAction::triggered, &menu, [&sounds, &preferences](bool on) {
        sounds.SetOn(on);
        preferences.KeepSounds(on);
    });
}

}  // namespace bellmark
