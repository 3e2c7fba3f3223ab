#pragma once

#include <QWidget>
#include <vector>

class QGridLayout;

namespace bellmark {

class DropCell;
class DropLabel;

/// The widgets of ctrlHtDropArray under its controls' names: heights by drops, as many as are visible.
class DropTable : public QWidget {
    Q_OBJECT
    /// Prefix of its widgets' names, on a form with two tables.
    Q_PROPERTY(QString namePrefix READ NamePrefix WRITE setNamePrefix)
    /// Lower rows, for a form that holds more than the table.
    Q_PROPERTY(bool compact READ isCompact WRITE setCompact)
    /// Size in points up to which the peaks grow with the table, so that they can be read from a distance. 0 for a
    /// table that is read from nearby.
    Q_PROPERTY(int largest READ Largest WRITE setLargest)

  public:
    explicit DropTable(QWidget* parent = nullptr);

    bool isCompact() const { return compact_; }
    void setCompact(bool compact);

    int Largest() const { return largest_; }
    void setLargest(int pointSize) { largest_ = pointSize; }

    QString NamePrefix() const { return namePrefix_; }
    void setNamePrefix(const QString& prefix);

    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Arrange();
    void FitText();
    int Rows() const;

    QString namePrefix_;
    bool compact_ = false;
    int largest_ = 0;
    int shownPointSize_ = 0;
    QGridLayout* layout_;
    std::vector<DropCell*> data_;
    std::vector<DropLabel*> drops_;
    std::vector<DropLabel*> heights_;
    std::vector<DropLabel*> means_;
    std::vector<DropLabel*> standardDeviations_;
    DropLabel* meanLabel_;
    DropLabel* standardDeviationLabel_;
    DropLabel* noise_;
    int arrangedDrops_ = 0;
};

}  // namespace bellmark
