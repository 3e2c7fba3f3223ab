#pragma once

#include <QWidget>

class QTextBrowser;

namespace bellmark {

/// The operator's guide.
class HelpWindow : public QWidget {
    Q_OBJECT

  public:
    explicit HelpWindow(QWidget* parent = nullptr);

    /// Opens the page of a context: 10000 plus the number of a message, or 0 for the beginning.
    void ShowContext(int context);

  private:
    QTextBrowser* browser_;
};

}  // namespace bellmark
