#pragma once

#include "platform/formatted_text.h"

class QPrinter;
class QTextDocument;
class QWidget;

namespace bellmark {

/// Fills the document; dotsPerInch: of what it will be shown on.
void FillDocument(QTextDocument& document, const FormattedText& text, double dotsPerInch);

/// Pixels that a sheet of letter paper takes on the widget between margins of an inch, and with what lies around it.
int SheetWidth(const QWidget& widget);

/// Prints page by page, with margins of one inch at the sides.
void PrintDocument(QPrinter& printer, const FormattedText& text);

}  // namespace bellmark
