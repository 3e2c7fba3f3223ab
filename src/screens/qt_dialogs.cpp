#include "screens/qt_dialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputDialog>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QTreeView>
#include <utility>

#include "screens/preferences.h"

namespace bellmark {

namespace {

constexpr QSize fileDialogSize(900, 580);

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}
QString Text(const Path& path) {
    return QString::fromStdString(PathText(path));
}

struct BoxIcon {
    QColor color;
    const char* sign;
    QMessageBox::Icon standard;
};

BoxIcon IconOf(int style) {
    switch (box::Icon(style)) {
        case box::critical:
            return {QColor(0xb0, 0x2a, 0x2a), "\u00D7", QMessageBox::Critical};
        case box::question:
            return {QColor(0x1f, 0x5f, 0xa8), "?", QMessageBox::Question};
        case box::exclamation:
            return {QColor(0xb2, 0x6a, 0x00), "!", QMessageBox::Warning};
        case box::information:
            return {QColor(0x1f, 0x5f, 0xa8), "i", QMessageBox::Information};
        default:
            return {QColor(), "", QMessageBox::NoIcon};
    }
}

/// A disc with the sign: the desktop's own icons differ between machines, and some have none.
QPixmap Disc(const BoxIcon& icon, const QWidget& box) {
    const int side = 3 * box.fontMetrics().height();
    const double scale = box.devicePixelRatioF();
    QPixmap disc(QSize(side, side) * scale);
    disc.setDevicePixelRatio(scale);
    disc.fill(Qt::transparent);
    QPainter painter(&disc);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(icon.color);
    painter.drawEllipse(QRect(0, 0, side, side));
    QFont font = box.font();
    font.setPixelSize(side * 2 / 3);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, side, side), Qt::AlignCenter, QString::fromUtf8(icon.sign));
    return disc;
}

std::vector<QMessageBox::StandardButton> ButtonsOf(int style) {
    std::vector<QMessageBox::StandardButton> buttons{QMessageBox::Ok};
    if (box::HasYesNo(style)) buttons = {QMessageBox::Yes, QMessageBox::No};
    if (box::HasCancel(style)) buttons.push_back(QMessageBox::Cancel);
    return buttons;
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

/// Makes names, sizes and dates readable in full; the desktop's own dialog has no such setting.
void MakeRoomForNames(QFileDialog& dialog) {
    dialog.resize(fileDialogSize);
    const auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"));
    if (!list) return;
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
}

/// "*.ini" as "*.[iI][nN][iI]": the files come from systems that ignore case.
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
    QStringList ofFWD;
    bool hasPDDX = false;
    const QStringList parts = Text(filter).split(QLatin1Char('|'));
    for (qsizetype pair = 0; pair + 1 < parts.size(); pair += 2) {
        // Some pairs of the program have their name behind the pattern.
        const bool isReversed = !parts[pair + 1].contains(QLatin1Char('*')) && parts[pair].contains(QLatin1Char('*'));
        QStringList patterns;
        for (const QString& pattern : parts[isReversed ? pair : pair + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            patterns.push_back(AnyCase(pattern.trimmed()));
        }
        // The dialog takes brackets at the end for patterns, so the text's own brackets are replaced.
        QString name = parts[isReversed ? pair + 1 : pair];
        name.replace(QLatin1Char('('), QLatin1Char('[')).replace(QLatin1Char(')'), QLatin1Char(']'));
        filters.push_back(name + QLatin1String(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')'));
        hasPDDX = hasPDDX || patterns.contains(AnyCase(QStringLiteral("*.ddx")));
        if (!patterns.contains(QLatin1String("*"))) ofFWD += patterns;
    }
    if (hasPDDX && ofFWD.size() > 1) {
        filters.push_front(QObject::tr("FWD and PDDX files (%1)").arg(ofFWD.join(QLatin1Char(' '))));
    }
    return filters;
}

std::optional<Path> QtDialogs::Ask(QFileDialog& dialog, const FileChoice& choice) {
    const QString kind = Text(choice.title) + QLatin1Char(' ') + Text(choice.filter);
    const QString suggested = Text(choice.folder);
    Preferences::Place place{suggested, {}};
    if (preferences_) place = preferences_->PlaceOf(kind, suggested);
    dialog.setDirectory(place.folder);
    // Patterns that match any case are hard to read.
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    const QStringList fileTypes = FileDialogFilters(choice.filter);
    dialog.setNameFilters(fileTypes);
    for (const QString& fileType : fileTypes) {
        const bool isLast = !place.fileType.isEmpty() && fileType.startsWith(place.fileType + QLatin1String(" ("));
        if (isLast) dialog.selectNameFilter(fileType);
    }
    if (!choice.fileName.empty()) dialog.selectFile(Text(choice.fileName));
    MakeRoomForNames(dialog);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QString path = dialog.selectedFiles().value(0);
    if (preferences_ && !path.isEmpty()) {
        preferences_->KeepPlace(kind, suggested, {QFileInfo(path).absolutePath(), dialog.selectedNameFilter()});
    }
    return Chosen(path);
}

Answer QtDialogs::Show(const MessageBox& message) {
    QMessageBox shown(parent_);
    shown.setWindowTitle(message.title.empty() ? QStringLiteral("Bellmark") : Text(message.title));
    shown.setTextFormat(Qt::PlainText);
    shown.setText(Text(message.text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
    const BoxIcon icon = IconOf(message.style);
    shown.setIcon(icon.standard);
    if (icon.standard != QMessageBox::NoIcon) shown.setIconPixmap(Disc(icon, shown));
    const auto buttons = ButtonsOf(message.style);
    for (const auto button : buttons) shown.addButton(button);
    const bool secondIsDefault = (message.style & box::secondIsDefault) && buttons.size() > 1;
    shown.setDefaultButton(buttons[secondIsDefault ? 1 : 0]);
    // Escape and the close box give the answer that changes nothing.
    shown.setEscapeButton(buttons.back());
    if (message.style & box::helpButton) {
        QPushButton* help = shown.addButton(QMessageBox::Help);
        // Help keeps the box open and does not answer it.
        help->disconnect();
        QObject::connect(help, &QPushButton::clicked, help, [this, &message] { showHelp_(message.helpContext); });
    }
    if (icon.standard == QMessageBox::Critical || icon.standard == QMessageBox::Warning) warns_();
    return AnswerOf(shown.exec());
}

std::optional<std::string> QtDialogs::Input(const std::string& prompt, const std::string& title,
                                            const std::string& defaultText) {
    constexpr int width = 480;  // wide enough for whole names
    QInputDialog dialog(parent_);
    dialog.setWindowTitle(Text(title));
    dialog.setLabelText(Text(prompt));
    dialog.setTextValue(Text(defaultText));
    dialog.resize(width, dialog.sizeHint().height());
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue().toStdString();
}

void QtDialogs::Give(const Path& file, const std::function<void()>& action) {
    given_ = file;
    action();
    given_.reset();
}

std::optional<Path> QtDialogs::OpenFile(const FileChoice& choice) {
    if (given_) return std::exchange(given_, std::nullopt);
    QFileDialog dialog(parent_, Text(choice.title));
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog, choice);
}

std::optional<Path> QtDialogs::SaveFile(const FileChoice& choice) {
    QFileDialog dialog(parent_, Text(choice.title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // A name typed without an extension gets that of the suggested file.
    dialog.setDefaultSuffix(QFileInfo(Text(choice.fileName)).suffix());
    return Ask(dialog, choice);
}

std::optional<Path> QtDialogs::PickFolder(const std::string& prompt, const Path& start) {
    const QString kind = Text(prompt);
    QString folder = Text(start);
    if (preferences_) folder = preferences_->PlaceOf(kind, folder).folder;
    const QString chosen = QFileDialog::getExistingDirectory(parent_, kind, folder);
    if (preferences_ && !chosen.isEmpty()) preferences_->KeepPlace(kind, Text(start), {chosen, {}});
    return Chosen(chosen);
}

}  // namespace bellmark
