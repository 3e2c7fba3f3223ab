#pragma once

#include <QWidget>
#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace bellmark {

/// The widgets of ctrlHtDropArray under its controls' names: heights by drops, as many as are visible.
class DropTable : public QWidget {
    Q_OBJECT
    /// Prefix of its widgets' names, on a form with two tables.
    Q_PROPERTY(QString namePrefix READ NamePrefix WRITE setNamePrefix)
    /// Lower rows, for a form that holds more than the table.
    Q_PROPERTY(bool compact READ isCompact WRITE setCompact)

  public:
    explicit DropTable(QWidget* parent = nullptr);

    bool isCompact() const { return compact_; }
    void setCompact(bool compact);

    QString NamePrefix() const { return namePrefix_; }
    void setNamePrefix(const QString& prefix);

  protected:
    bool event(QEvent* event) override;

  private:
    void Arrange();

    QString namePrefix_;
    bool compact_ = false;
    QGridLayout* layout_;
    std::vector<QLineEdit*> data_;
    std::vector<QLabel*> drops_;
    std::vector<QLabel*> heights_;
    std::vector<QLabel*> means_;
    std::vector<QLabel*> standardDeviations_;
    QLabel* meanLabel_;
    QLabel* standardDeviationLabel_;
    QLabel* noise_;
    int arrangedDrops_ = 0;
};

}  // namespace bellmark
