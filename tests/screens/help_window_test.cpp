// The operator's guide in the help window: each message has an entry, and each link and picture a target.

#include "screens/help_window.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QtTest/QTest>
#include <algorithm>
#include <set>
#include <string>

#include "app/error_message_texts.h"
#include "platform/machine.h"
#include "tests/screens/test_desktop.h"

namespace bellmark {
namespace {

class HelpWindowTest : public testing::Test {
  protected:
    QTextBrowser& Text() { return *window_.findChild<QTextBrowser*>(); }
    std::string LineOfCursor() { return Text().textCursor().block().text().toStdString(); }

    /// The line at the top of the text in view.
    std::string TopLine() { return Text().cursorForPosition({5, 12}).block().text().toStdString(); }

    template <class Visit>
    void ForEachFormat(Visit visit) {
        for (QTextBlock block = Text().document()->begin(); block.isValid(); block = block.next()) {
            for (auto part = block.begin(); !part.atEnd(); ++part) visit(part.fragment().charFormat());
        }
    }

    HelpWindow window_;
};

std::string NumberOf(const std::string& title) {
    return title.size() > 5 ? title.substr(title.size() - 5) : title;
}

TEST_F(HelpWindowTest, EachMessageOpensItsOwnEntry) {
    for (const auto& message : message_texts::messages) {
        window_.ShowContext(helpPage::firstMessage + message.code);
        const std::string heading = LineOfCursor();
        const std::string title = message.title;
        EXPECT_EQ(NumberOf(heading), NumberOf(title));
        const bool hasInsertions = title.find('{') != std::string::npos;
        if (!hasInsertions) {
            EXPECT_EQ(heading, title);
        }
        EXPECT_EQ(Text().textCursor().blockFormat().headingLevel(), 3) << title;
        const QTextBlock entry = Text().textCursor().block().next();
        EXPECT_EQ(entry.blockFormat().headingLevel(), 0) << title << " has no text";
        EXPECT_GT(entry.text().size(), 20) << title;
    }
    const auto& headings = window_.Headings();
    const auto entries = std::count_if(headings.begin(), headings.end(),
                                       [](const GuideHeading& heading) { return heading.text.endsWith(')'); });
    EXPECT_EQ(static_cast<std::size_t>(entries), message_texts::messages.size())
        << "an entry of a message that is no more";
}

TEST_F(HelpWindowTest, BringsTheEntryIntoView) {
    // In the middle of the messages, and mentioned in earlier text.
    window_.ShowContext(helpPage::firstMessage + 106);
    EXPECT_EQ(TopLine(), "FWD Data File Does Not Contain Drop Data (106)");
    window_.ShowContext(helpPage::contents);
    EXPECT_EQ(TopLine(), "The operator's guide");
    window_.ShowContext(helpPage::firstMessage + 999);
    EXPECT_EQ(TopLine(), "The operator's guide");
}

TEST_F(HelpWindowTest, EveryScreenHasItsPage) {
    TestDesktop desktop;
    desktop.Start();
    MakeAllScreens(*desktop.program);
    for (const Screen* screen : desktop.program->Screens.Screens()) {
        if (screen->IsAlwaysAtHand()) continue;
        window_.ShowScreen(QString::fromStdString(screen->Name()));
        EXPECT_NE(LineOfCursor(), "The operator's guide") << screen->Name();
    }
    window_.ShowScreen(QStringLiteral("frmBellmark_AccelDrop"));
    EXPECT_EQ(LineOfCursor(), "The drop screen");
}

TEST_F(HelpWindowTest, CanBeUsedBesideABoxThatWaits) {
    QMessageBox box;
    box.setModal(true);
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    window_.ShowContext(helpPage::firstMessage + 106);
    EXPECT_EQ(window_.windowModality(), Qt::NonModal);
    EXPECT_FALSE(window_.frameGeometry().intersects(box.frameGeometry()) && window_.screen()->size().width() > 1300);
    QTest::keyClick(window_.findChild<QTreeWidget*>(), Qt::Key_Home);
    EXPECT_EQ(LineOfCursor(), "What Bellmark does");
    QTest::mouseClick(box.addButton(QMessageBox::Ok), Qt::LeftButton);
    EXPECT_FALSE(box.isVisible());
}

TEST_F(HelpWindowTest, LinksLeadToHeadingsOfTheirOwn) {
    std::set<QString> anchors;
    for (const GuideHeading& heading : window_.Headings()) {
        EXPECT_TRUE(anchors.insert(heading.anchor).second) << heading.text.toStdString() << " is there twice";
    }
    int links = 0;
    ForEachFormat([&](const QTextCharFormat& format) {
        if (!format.isAnchor() || format.anchorHref().isEmpty()) return;
        ++links;
        const QString target = format.anchorHref();
        EXPECT_TRUE(target.startsWith('#') && anchors.count(target.mid(1))) << target.toStdString();
    });
    EXPECT_GT(links, 20);
    // The anchor of this heading on the repository's page, where some characters are dropped.
    EXPECT_TRUE(anchors.count("error-in---a-or-b-readings-104"));
    emit Text().anchorClicked(QUrl("#error-in---a-or-b-readings-104"));
    EXPECT_EQ(LineOfCursor(), "Error in +/- A or B readings (104)");
}

TEST_F(HelpWindowTest, ShowsItsPicturesAtTheWidthOfTheText) {
    window_.ShowContext(helpPage::contents);
    int pictures = 0;
    ForEachFormat([&](const QTextCharFormat& format) {
        if (!format.isImageFormat()) return;
        ++pictures;
        const QString name = format.toImageFormat().name();
        const auto picture = Text().loadResource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
        EXPECT_FALSE(picture.isNull()) << name.toStdString();
        EXPECT_LE(picture.width() / picture.devicePixelRatio(), Text().viewport()->width()) << name.toStdString();
    });
    EXPECT_GE(pictures, 6);
    EXPECT_EQ(Text().horizontalScrollBar()->maximum(), 0);
}

TEST_F(HelpWindowTest, IsUsedByKeyboard) {
    window_.ShowContext(helpPage::index);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    auto& word = *window_.findChild<QLineEdit*>();
    EXPECT_EQ(window_.focusWidget(), &word);
    QTest::keyClicks(&word, "unbalanced zero");
    QTest::keyClick(&word, Qt::Key_Return);
    const int first = Text().textCursor().position();
    EXPECT_EQ(Text().textCursor().selectedText(), "Unbalanced Zero");
    QTest::keyClick(&word, Qt::Key_F3);
    EXPECT_GT(Text().textCursor().position(), first);
    QTest::keyClick(&word, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Text().textCursor().position(), first);
    QTest::keyClick(&word, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_GT(Text().textCursor().position(), first) << "around from the other end";

    auto& contents = *window_.findChild<QTreeWidget*>();
    contents.setFocus();
    QTest::keyClick(&contents, Qt::Key_Home);
    EXPECT_EQ(LineOfCursor(), "What Bellmark does");
    QTest::keyClick(&contents, Qt::Key_Down);
    EXPECT_EQ(LineOfCursor(), "Starting");
    QTest::keyClick(&contents, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(window_.focusWidget(), &word);
    QTest::keyClick(&word, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

}  // namespace
}  // namespace bellmark
