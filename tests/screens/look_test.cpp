// The light and the dark look, and what the operator chose of them.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenu>

#include "controls/color.h"
#include "screens/look.h"
#include "screens/plot_widget.h"
#include "screens/preferences.h"
#include "screens/sounds.h"
#include "screens/state_colors.h"
#include "screens/tones.h"
#include "screens/view_menu.h"
#include "tests/support/temporary_folder.h"

namespace bellmark {
namespace {

/// Puts the look back that the other tests expect.
struct Looks : testing::Test {
    TemporaryFolder folder;
    Look look;
    Preferences preferences{QString::fromStdString(PathText(folder / "choices.ini"))};
    ~Looks() override { look.Show(Appearance::AsDesktop); }
};

struct Pair {
    const char* text;
    std::initializer_list<const char*> backgrounds;
    double least = 4.5;
};

// WCAG 2.1, success criterion 1.4.3; 3 for large letters and for what cannot be used.
TEST_F(Looks, TextStandsOutFromItsBackground) {
    const Pair pairs[] = {
        {"text", {"window", "surface", "status", "read-only", "table-head", "hover", "pressed", "chosen", "notice"}},
        {"title", {"window", "surface"}},
        {"strong", {"window", "surface"}},
        {"soft", {"window", "surface"}},
        {"faint", {"window", "surface"}},
        {"required", {"window", "surface"}},
        {"selection-text", {"selection"}},
        {"header-text", {"header"}},
        {"header-title", {"header"}},
        {"accent-strong", {"surface"}},
        {"accent", {"surface", "window"}},
        {"on-accent", {"accent", "accent-hover", "accent-strong"}},
        {"step-number", {"window", "surface"}, 3},
        {"off-text", {"surface", "off-surface", "window"}, 3},
        {"indicator", {"surface"}, 3},
        {"control-line", {"surface"}, 3},
    };
    for (const bool isDark : {false, true}) {
        for (const Pair& pair : pairs) {
            for (const char* background : pair.backgrounds) {
                const double contrast =
                    Contrast(ToneColor(QLatin1String(pair.text), isDark), ToneColor(QLatin1String(background), isDark));
                EXPECT_GE(contrast, pair.least) << pair.text << " on " << background << (isDark ? ", dark" : "");
            }
        }
    }
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-9);
    for (const Color state :
         {colors::mustBeUpdated, colors::warning, colors::complete, colors::passed, colors::suggestedNext}) {
        EXPECT_GE(Contrast(ToQColor(state), stateTextColor), 4.5) << ColorText(state);
    }
}

TEST_F(Looks, AStyleSheetNamesOnlyTones) {
    EXPECT_EQ(WithTones(QStringLiteral("a { color: @text; border: 1px @line }"), false),
              QStringLiteral("a { color: #1f2a37; border: 1px #cfd6de }"));
    EXPECT_THROW(WithTones(QStringLiteral("a { color: @txt; }"), false), std::logic_error);
}

TEST_F(Looks, ADarkLookReachesWindowAndPlot) {
    PlotWidget plot;
    Plot shown;
    shown.series.push_back({"", {0, 1}, {0, 1}, false, {}});
    plot.Show(shown);
    plot.resize(300, 200);
    const auto corner = [&] { return plot.grab().toImage().pixelColor(2, 2).lightness(); };
    look.Show(Appearance::Light);
    EXPECT_GT(corner(), 200);
    look.Show(Appearance::Dark);
    EXPECT_LT(corner(), 80);
    EXPECT_LT(qApp->palette().color(QPalette::Window).lightness(), 80);
    {
        const LightLook paper(look);
        EXPECT_GT(corner(), 200) << "paper is white";
    }
    EXPECT_TRUE(look.IsDark());
    EXPECT_LT(corner(), 80);
}

TEST_F(Looks, FollowsTheDesktopWhenThatTurnsDark) {
    bool isDark = false;
    Look own([&isDark] { return isDark; });
    QWidget window;
    const auto tellOfTheme = [&](bool turnsDark) {
        isDark = turnsDark;
        QEvent event(QEvent::ThemeChange);
        QApplication::sendEvent(&window, &event);
    };
    tellOfTheme(true);
    EXPECT_TRUE(own.IsDark());
    EXPECT_LT(qApp->palette().color(QPalette::Window).lightness(), 80);
    own.Show(Appearance::Light);
    tellOfTheme(true);
    EXPECT_FALSE(own.IsDark()) << "a choice stays";
    own.Show(Appearance::AsDesktop);
    EXPECT_TRUE(own.IsDark());
    tellOfTheme(false);
    EXPECT_GT(qApp->palette().color(QPalette::Window).lightness(), 200);
}

TEST_F(Looks, AChoiceTakesEffectAndIsKept) {
    QMenu menu;
    Sounds sounds;
    FillViewMenu(menu, look, sounds, preferences);
    menu.findChild<QAction*>("decorSounds")->trigger();
    EXPECT_FALSE(sounds.IsOn() || preferences.HasSounds());
    menu.findChild<QAction*>("decorDark")->trigger();
    EXPECT_TRUE(look.IsDark());
    const Preferences reread(QString::fromStdString(PathText(folder / "choices.ini")));
    EXPECT_EQ(reread.ChosenAppearance(), Appearance::Dark);
    menu.findChild<QAction*>("decorLight")->trigger();
    EXPECT_FALSE(look.IsDark());
    EXPECT_EQ(preferences.ChosenAppearance(), Appearance::Light);
    EXPECT_EQ(Preferences(QString::fromStdString(PathText(folder / "none.ini"))).ChosenAppearance(),
              Appearance::AsDesktop);
}

}  // namespace
}  // namespace bellmark
