// What the operator does with a plot: zoom, cursors, pictures and tables.

#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QtTest/QTest>

#include "screens/plot_export.h"
#include "screens/plot_widget.h"

namespace bellmark {
namespace {

/// A pulse of 10 samples a millisecond, with its start and its peak.
Plot Pulse(double scale = 1) {
    Plot plot;
    plot.title = "Drop";
    plot.horizontal = {"Time (mSec)", 0, 20, {}};
    plot.vertical = {"lbf", -100, 1000, {}};
    PlotSeries series{"Force", {}, {}, false, {}};
    for (int i = 0; i <= 200; ++i) {
        series.x.push_back(i / 10.0);
        series.y.push_back(scale * (i < 50 || i > 150 ? 0 : 900 - 0.36 * (i - 100) * (i - 100)));
    }
    plot.series.push_back(std::move(series));
    plot.marks = {{"Start", 5, 0}, {"Peak", 10, 900}};
    return plot;
}

Plot Markers(std::vector<double> values) {
    Plot plot;
    plot.horizontal = {"", 0, 100, {}};
    plot.vertical = {"Residual", -5, 5, {}};
    PlotSeries series{"Drops, all", {}, std::move(values), true, {}};
    for (std::size_t i = 0; i < series.y.size(); ++i) {
        series.x.push_back(10.0 * static_cast<double>(i + 1));
        series.notes.push_back("Height 1, \"drop\" " + std::to_string(i + 1));
    }
    plot.series.push_back(std::move(series));
    return plot;
}

struct PlotToolsTest : testing::Test {
    PlotToolsTest() {
        plot.resize(700, 400);
        plot.Show(Pulse());
        plot.show();
        plot.RedrawNow();
    }
    static void Do(PlotWidget& on, const char* action) { on.findChild<QAction*>(QLatin1String(action))->trigger(); }
    void Do(const char* action) { Do(plot, action); }
    QCPRange Across() const { return plot.View().xAxis->range(); }
    QCPRange Along() const { return plot.View().yAxis->range(); }
    void Wheel(Qt::KeyboardModifiers with) {
        const QPointF at(300, 200);
        QWheelEvent event(at, plot.View().mapToGlobal(at), {}, {0, 120}, Qt::NoButton, with, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&plot.View(), &event);
    }
    static std::string TextsOf(const PlotWidget& shown) {
        QStringList texts;
        for (int i = 0; i < shown.View().itemCount(); ++i) {
            const auto* text = qobject_cast<QCPItemText*>(shown.View().item(i));
            if (text && text->visible()) texts.push_back(text->text());
        }
        return texts.join(QLatin1Char('|')).toStdString();
    }
    PlotWidget plot;
};

TEST_F(PlotToolsTest, ZoomsOnTheAxesThatAreAskedForAndShowsAllAgain) {
    struct Case {
        Qt::KeyboardModifiers with;
        bool across;
        bool along;
    };
    for (const auto& [with, across, along] : {Case{Qt::NoModifier, true, true}, Case{Qt::ControlModifier, true, false},
                                              Case{Qt::ShiftModifier, false, true}}) {
        Wheel(with);
        EXPECT_EQ(Across().size() < 20, across) << with;
        EXPECT_EQ(Along().size() < 1100, along) << with;
        Do("decorShowAll");
        EXPECT_EQ(Across(), QCPRange(0, 20));
        EXPECT_EQ(Along(), QCPRange(-100, 1000));
    }
    plot.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&plot));
    QTest::keyClick(&plot, Qt::Key_Plus);
    EXPECT_NEAR(Across().size(), 16, 1e-9);
    QTest::keyClick(&plot, Qt::Key_Right);
    EXPECT_NEAR(Across().lower, 2 + 1.6, 1e-9);
    QTest::keyClick(&plot, Qt::Key_Up);
    EXPECT_GT(Along().center(), 450);
}

TEST_F(PlotToolsTest, ARectangleDrawnWithCtrlIsZoomedInto) {
    const auto place = [&](double x, double y) {
        return QPoint(qRound(plot.View().xAxis->coordToPixel(x)), qRound(plot.View().yAxis->coordToPixel(y)));
    };
    const QPoint from = place(5, 800);
    const QPoint to = place(15, 200);
    QTest::mousePress(&plot.View(), Qt::LeftButton, Qt::ControlModifier, from);
    QTest::mouseMove(&plot.View(), to);
    QTest::mouseRelease(&plot.View(), Qt::LeftButton, Qt::ControlModifier, to);
    EXPECT_NEAR(Across().lower, 5, 0.1);
    EXPECT_NEAR(Across().upper, 15, 0.1);
    EXPECT_NEAR(Along().upper, 800, 10);
}

TEST_F(PlotToolsTest, CursorsStayAndTellTheirDifference) {
    Do("decorCursorsAtMarks");
    EXPECT_EQ(plot.CursorText(),
              QString::fromUtf8("A  5 mSec, 0 lbf\nB  10 mSec, 900 lbf\nB \u2212 A  5 mSec, 900 lbf"));
    EXPECT_NE(TextsOf(plot).find("B  10 mSec, 900 lbf"), std::string::npos);
    Do("decorCursorOn");
    EXPECT_TRUE(plot.CursorText().contains(QLatin1String("B  10.1 mSec, 899.64 lbf")));
    // Another curve of the same drop.
    plot.Show(Pulse(2));
    EXPECT_TRUE(plot.CursorText().contains(QLatin1String("B  10.1 mSec, 1799.28 lbf")));
    plot.Show({});
    EXPECT_EQ(plot.CursorText(), "");
}

TEST_F(PlotToolsTest, MarkersBeyondTheRangeAreCountedAtTheEdge) {
    plot.Show(Markers({-7, 1, 6, 9, 2}));
    plot.RedrawNow();
    EXPECT_NE(TextsOf(plot).find("\u25B2 2 drops beyond the range"), std::string::npos) << TextsOf(plot);
    EXPECT_NE(TextsOf(plot).find("\u25BC 1 drop beyond the range"), std::string::npos);
    plot.View().yAxis->setRange(-10, 10);
    plot.View().xAxis->setRange(0, 45);
    plot.RedrawNow();
    EXPECT_EQ(TextsOf(plot), "\u25BA 1 drop beyond the range");
}

TEST_F(PlotToolsTest, LinkedPlotsShareTheirRangeAndTheDropPointedAt) {
    PlotWidget residuals;
    residuals.resize(700, 200);
    residuals.LinkTo(plot);
    plot.Show(Markers({1, 2, 3}));
    residuals.Show(Markers({-1, -2, -3}));
    plot.View().xAxis->setRange(5, 25);
    EXPECT_EQ(residuals.View().xAxis->range(), QCPRange(5, 25));
    residuals.View().xAxis->setRange(0, 50);
    EXPECT_EQ(Across(), QCPRange(0, 50));
    plot.RedrawNow();
    QTest::mouseMove(&plot.View(),
                     QPoint(qRound(plot.View().xAxis->coordToPixel(20)), qRound(plot.View().yAxis->coordToPixel(2))));
    EXPECT_EQ(TextsOf(residuals), "Height 1, \"drop\" 2");
    Plot other = Markers({1});
    other.horizontal.highest = 10;
    residuals.Show(other);
    plot.View().xAxis->setRange(1, 2);
    EXPECT_EQ(residuals.View().xAxis->range(), QCPRange(0, 10)) << "another axis";
}

TEST_F(PlotToolsTest, WhatIsShownLeavesAsTableAndAsDrawing) {
    plot.Show(Markers({1, 0.1, 3}));
    plot.View().xAxis->setRange(15, 45);
    EXPECT_EQ(PlotTable(plot.View(), plot.Shown()).toStdString(),
              "Series,x,Residual,Note\r\n\"Drops, all\",20,0.1,\"Height 1, \"\"drop\"\" 2\"\r\n"
              "\"Drops, all\",30,3,\"Height 1, \"\"drop\"\" 3\"\r\n");
    plot.TellRun([] { return QStringList{QStringLiteral("Agency, FWD-101")}; });
    const auto paper = plot.OnPaper();
    const QByteArray svg = PlotBytes(paper->View(), plot.Shown(), plot.Heading(), PlotFile::Svg);
    EXPECT_TRUE(svg.contains("Agency, FWD-101") && svg.contains("<path") && !svg.contains("<image"));
    const QByteArray pdf = PlotBytes(paper->View(), plot.Shown(), plot.Heading(), PlotFile::Pdf);
    EXPECT_TRUE(pdf.startsWith("%PDF-") && !pdf.contains("/Subtype /Image"));
    Do("decorCopy");
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->hasImage());
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QLatin1String("Series,x")));
    EXPECT_EQ(PlotFileOf(QStringLiteral("a.b/Plot.SVG")), PlotFile::Svg);
}

}  // namespace
}  // namespace bellmark
