#pragma once

#include "platform/formatted_text.h"

class QPagedPaintDevice;
class QTextDocument;
class QWidget;

namespace bellmark {

/// Fills the document; dotsPerInch: of what it will be shown on. Lines are 1.2 times as high as their letters, whatever
/// font the machine has.
void FillDocument(QTextDocument& document, const FormattedText& text, double dotsPerInch);

/// Width of a sheet of letter paper between margins of an inch, with the space around it, in pixels of the widget.
int SheetWidth(const QWidget& widget);

/// Prints page by page, in the middle of the paper: one inch is left at the sides of letter paper. Lines break as on
/// the screen.
void PrintDocument(QPagedPaintDevice& device, const FormattedText& text);

}  // namespace bellmark
