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

    /// Size and place of the window as QWidget::saveGeometry returns them; empty at the first start.
    QByteArray WindowGeometry() const;
    void KeepWindowGeometry(const QByteArray& geometry);

  private:
    QSettings settings_;
};

}  // namespace bellmark
