#include "screens/binder.h"

#include <QAction>
#include <QApplication>
#include <QWidget>

#include "controls/controls.h"
#include "controls/screen.h"
#include "screens/link.h"

namespace bellmark {

namespace {

/// Widgets that Qt itself puts into its composite widgets.
bool BelongsToQt(const QWidget& widget) {
    const QString name = widget.objectName();
    return name.isEmpty() || name.startsWith(QLatin1String("qt_")) || widget.isWindow();
}

void ListLine(QString& text, const char* what, const QStringList& names) {
    if (!names.isEmpty())
        text += QString::fromLatin1("%1: %2\n").arg(QLatin1String(what), names.join(QLatin1String(", ")));
}

}  // namespace

QString BindingReport::Text() const {
    QString text;
    ListLine(text, "missing", missing);
    ListLine(text, "ambiguous", ambiguous);
    ListLine(text, "unsupported", unsupported);
    ListLine(text, "unbound", unbound);
    return text;
}

Binder::Binder(Screen& screen, QWidget& form, std::function<void(const QString&)> tellUser,
               std::function<void()> changed)
    : screen_(screen), form_(form), tellUser_(std::move(tellUser)), changed_(std::move(changed)) {
    for (Control* control : screen_.Controls()) {
        if (!dynamic_cast<Timer*>(control)) Bind(*control);
    }
    FindUnbound();
}

Binder::~Binder() = default;

QString Binder::WidgetName(const std::string& controlName) {
    QString name = QString::fromStdString(controlName);
    return name.replace(QLatin1Char('('), QLatin1Char('_')).remove(QLatin1Char(')'));
}

void Binder::Bind(Control& control) {
    const QString name = WidgetName(control.Name());
    QList<QObject*> views;
    for (QWidget* widget : form_.findChildren<QWidget*>(name)) views.push_back(widget);
    for (QAction* action : form_.findChildren<QAction*>(name)) views.push_back(action);
    if (views.size() != 1) {
        (views.isEmpty() ? report_.missing : report_.ambiguous).push_back(name);
        return;
    }
    auto link = MakeLink(control, *views.front(), {tellUser_, [this] { CommitTyping(); }, changed_});
    if (!link) {
        report_.unsupported.push_back(name);
        return;
    }
    link->Refresh();
    links_.push_back(std::move(link));
}

void Binder::FindUnbound() {
    QStringList known;
    for (const Control* control : screen_.Controls()) known.push_back(WidgetName(control->Name()));
    QStringList names;
    for (const QWidget* widget : form_.findChildren<QWidget*>()) {
        if (!BelongsToQt(*widget)) names.push_back(widget->objectName());
    }
    for (const QAction* action : form_.findChildren<QAction*>()) names.push_back(action->objectName());
    for (const QString& name : names) {
        const bool isDecoration = name.isEmpty() || name.startsWith(QLatin1String("decor"));
        if (!isDecoration && !known.contains(name)) report_.unbound.push_back(name);
    }
}

QWidget* Binder::WidgetOf(const Control& control) const {
    for (const auto& link : links_) {
        if (&link->Bound() == &control) return qobject_cast<QWidget*>(&link->View());
    }
    return nullptr;
}

void Binder::CommitTyping() const {
    const QWidget* focused = QApplication::focusWidget();
    for (const auto& link : links_) {
        if (focused && &link->View() == focused) {
            link->Commit();
            return;
        }
    }
}

}  // namespace bellmark
