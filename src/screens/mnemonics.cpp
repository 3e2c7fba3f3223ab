#include "screens/mnemonics.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSet>

namespace bellmark {

namespace {

QWidget* Field(const QLayoutItem* item) {
    QWidget* widget = item ? item->widget() : nullptr;
    const bool isField =
        qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) || qobject_cast<QPlainTextEdit*>(widget);
    return isField && widget->focusPolicy() != Qt::NoFocus ? widget : nullptr;
}

/// A label of the form itself: the program sets the text of the others.
QLabel* Caption(const QLayoutItem* item) {
    auto* label = qobject_cast<QLabel*>(item ? item->widget() : nullptr);
    return label && label->objectName().startsWith(QLatin1String("decor")) ? label : nullptr;
}

void Pair(QLabel* label, QWidget* field) {
    if (label && field && !label->buddy()) label->setBuddy(field);
}

void PairInGrid(const QGridLayout& grid) {
    for (int row = 0; row < grid.rowCount(); ++row) {
        for (int column = 0; column + 1 < grid.columnCount(); ++column) {
            Pair(Caption(grid.itemAtPosition(row, column)), Field(grid.itemAtPosition(row, column + 1)));
        }
    }
}

void PairIn(const QLayout& layout) {
    if (const auto* form = qobject_cast<const QFormLayout*>(&layout)) {
        for (int row = 0; row < form->rowCount(); ++row) {
            Pair(Caption(form->itemAt(row, QFormLayout::LabelRole)), Field(form->itemAt(row, QFormLayout::FieldRole)));
        }
    } else if (const auto* grid = qobject_cast<const QGridLayout*>(&layout)) {
        PairInGrid(*grid);
    } else {
        for (int i = 0; i + 1 < layout.count(); ++i) Pair(Caption(layout.itemAt(i)), Field(layout.itemAt(i + 1)));
    }
}

/// The letter behind the underline mark; null without one.
QChar LetterOf(const QString& text) {
    const QString keys = QKeySequence::mnemonic(text).toString();
    return keys.isEmpty() ? QChar() : keys.back().toLower();
}

void Underline(QLabel& label, QSet<QChar>& taken) {
    const QString text = label.text();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar letter = text[i].toLower();
        if (letter < QLatin1Char('a') || letter > QLatin1Char('z') || taken.contains(letter)) continue;
        taken.insert(letter);
        label.setText(QString(text).insert(i, QLatin1Char('&')));
        return;
    }
}

}  // namespace

void GiveMnemonics(QWidget& form) {
    if (form.layout()) PairIn(*form.layout());
    for (const QLayout* layout : form.findChildren<QLayout*>()) PairIn(*layout);
    QSet<QChar> taken;
    for (const auto* button : form.findChildren<QAbstractButton*>()) taken.insert(LetterOf(button->text()));
    for (QLabel* label : form.findChildren<QLabel*>()) {
        if (label->buddy()) Underline(*label, taken);
    }
}

}  // namespace bellmark
