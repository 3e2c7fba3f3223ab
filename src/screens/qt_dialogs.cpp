#include "screens/qt_dialogs.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace bellmark {

namespace {

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}
QString Text(const Path& path) {
    return QString::fromStdString(PathText(path));
}

QMessageBox::Icon IconOf(int style) {
    switch (box::Icon(style)) {
        case box::critical:
            return QMessageBox::Critical;
        case box::question:
            return QMessageBox::Question;
        case box::exclamation:
            return QMessageBox::Warning;
        case box::information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

/// First and second button, by style.
std::pair<QMessageBox::StandardButton, QMessageBox::StandardButton> ButtonsOf(int style) {
    if (box::HasYesNo(style)) return {QMessageBox::Yes, QMessageBox::No};
    if (box::HasCancel(style)) return {QMessageBox::Ok, QMessageBox::Cancel};
    return {QMessageBox::Ok, QMessageBox::NoButton};
}

Answer AnswerOf(int button) {
    switch (button) {
        case QMessageBox::Yes:
            return Answer::Yes;
        case QMessageBox::No:
            return Answer::No;
        case QMessageBox::Cancel:
            return Answer::Cancel;
        default:
            return Answer::OK;
    }
}

std::optional<Path> Chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return PathFromText(path.toStdString());
}

/// "*.ini" as "*.[iI][nN][iI]": the files come from systems that do not tell the two apart.
QString AnyCase(const QString& pattern) {
    QString any;
    for (const QChar letter : pattern) {
        if (letter.isLetter()) {
            any += QLatin1Char('[') + letter.toLower() + letter.toUpper() + QLatin1Char(']');
        } else {
            any += letter;
        }
    }
    return any == QLatin1String("*.*") ? QStringLiteral("*") : any;
}

}  // namespace

QStringList FileDialogFilters(const std::string& filter) {
    QStringList filters;
    const QStringList parts = Text(filter).split(QLatin1Char('|'));
    for (qsizetype pair = 0; pair + 1 < parts.size(); pair += 2) {
        QStringList patterns;
        for (const QString& pattern : parts[pair + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            patterns.push_back(AnyCase(pattern.trimmed()));
        }
        // What stands in brackets at the end is taken for patterns, the text's own brackets too.
        QString name = parts[pair];
        name.replace(QLatin1Char('('), QLatin1Char('[')).replace(QLatin1Char(')'), QLatin1Char(']'));
        filters.push_back(name + QLatin1String(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')'));
    }
    return filters;
}

Answer QtDialogs::Show(const MessageBox& message) {
    QMessageBox shown(parent_);
    shown.setWindowTitle(message.title.empty() ? QStringLiteral("Bellmark") : Text(message.title));
    shown.setTextFormat(Qt::PlainText);
    shown.setText(Text(message.text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    shown.setIcon(IconOf(message.style));
    const auto [first, second] = ButtonsOf(message.style);
    shown.addButton(first);
    if (second != QMessageBox::NoButton) shown.addButton(second);
    const bool secondIsDefault = (message.style & box::secondIsDefault) && second != QMessageBox::NoButton;
    shown.setDefaultButton(secondIsDefault ? second : first);
    // Escape and the close box are the answer that changes nothing.
    shown.setEscapeButton(second != QMessageBox::NoButton ? second : first);
    if (message.style & box::helpButton) {
        QPushButton* help = shown.addButton(QMessageBox::Help);
        // Help stays beside the box, it does not answer it.
        help->disconnect();
        QObject::connect(help, &QPushButton::clicked, help, [this, &message] { showHelp_(message.helpContext); });
    }
    return AnswerOf(shown.exec());
}

std::optional<std::string> QtDialogs::Input(const std::string& prompt, const std::string& title,
                                            const std::string& defaultText) {
    bool accepted = false;
    const QString text =
        QInputDialog::getText(parent_, Text(title), Text(prompt), QLineEdit::Normal, Text(defaultText), &accepted);
    if (!accepted) return std::nullopt;
    return text.toStdString();
}

std::optional<Path> QtDialogs::OpenFile(const FileChoice& choice) {
    return Chosen(QFileDialog::getOpenFileName(parent_, Text(choice.title),
                                               Text(choice.folder / PathFromText(choice.fileName)),
                                               FileDialogFilters(choice.filter).join(QLatin1String(";;"))));
}

std::optional<Path> QtDialogs::SaveFile(const FileChoice& choice) {
    return Chosen(QFileDialog::getSaveFileName(parent_, Text(choice.title),
                                               Text(choice.folder / PathFromText(choice.fileName)),
                                               FileDialogFilters(choice.filter).join(QLatin1String(";;"))));
}

std::optional<Path> QtDialogs::PickFolder(const std::string& prompt, const Path& start) {
    return Chosen(QFileDialog::getExistingDirectory(parent_, Text(prompt), Text(start)));
}

}  // namespace bellmark
