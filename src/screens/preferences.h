#pragma once

#include <QByteArray>
#include <QSettings>

#include "screens/look.h"

namespace bellmark {

/// What the operator has chosen for this desktop. Nothing of a calibration is kept here.
class Preferences {
  public:
    /// Kept where the system keeps settings of programs.
    Preferences();
    /// Kept in a file.
    explicit Preferences(const QString& file);

    /// Like the desktop's own for anything that is not a known choice.
    Appearance ChosenAppearance() const;
    void Choose(Appearance appearance);

    /// On until they are switched off.
    bool HasSounds() const;
    void KeepSounds(bool on);

    /// Size and place of the window as QWidget::saveGeometry returns them; empty at the first start.
    QByteArray WindowGeometry() const;
    void KeepWindowGeometry(const QByteArray& geometry);

    /// Where a file dialog starts, and with which file type.
    struct Place {
        QString folder;
        QString fileType;  ///< its name without patterns; empty for the first of the list
    };
    /// dialog: its title and file types. The folder is the suggested one, or the one that the operator went to from it
    /// the last time. One that is gone is not returned.
    Place PlaceOf(const QString& dialog, const QString& suggested) const;
    void KeepPlace(const QString& dialog, const QString& suggested, const Place& chosen);

  private:
    QSettings settings_;
};

}  // namespace bellmark
