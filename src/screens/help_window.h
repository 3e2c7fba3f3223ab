#pragma once

#include <QString>
#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace bellmark {

/// A heading of the guide, the target of a link, a message or the table of contents.
struct GuideHeading {
    QString text;
    QString anchor;  ///< as the repository's page forms it: "Sample drops (1)" is "sample-drops-1"
    int level = 1;   ///< 1 the guide's title, 2 a chapter, 3 a section of it
    int position = 0;
    QTreeWidgetItem* item = nullptr;  ///< in the table of contents; the title has none
};

/// The operator's guide with its table of contents and a search.
class HelpWindow : public QWidget {
    Q_OBJECT

  public:
    explicit HelpWindow(QWidget* parent = nullptr);

    /// Opens one of helpPage in platform/machine.h, or the page of a message.
    void ShowContext(int context);
    /// Opens the page of a screen, by the screen's name; the start of the guide for one without a page.
    void ShowScreen(const QString& screen);

    const std::vector<GuideHeading>& Headings() const { return headings_; }

  private:
    void ComeForward();
    void PlaceBeside(const QWidget& box);
    void CollectHeadings();
    void FillContents();
    void AddShortcuts();
    void GoTo(const GuideHeading& heading);
    void FollowLink(const QString& anchor);
    void FindWord(bool backward);
    const GuideHeading* HeadingOfMessage(int code) const;

    QLineEdit* word_;
    QLabel* findResult_;
    QTreeWidget* contents_;
    QTextBrowser* text_;
    std::vector<GuideHeading> headings_;
};

}  // namespace bellmark
