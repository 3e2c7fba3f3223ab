#pragma once

#include "platform/machine.h"

class QPagedPaintDevice;
class QWidget;

namespace bellmark {

/// Prints on the machine's default printer, in Courier New.
class QtPrinter : public Printer {
  public:
    /// Throws std::runtime_error when there is no printer or it takes no job.
    void Print(const std::string& title, const std::vector<std::vector<std::string>>& pages) override;
    /// Asks for the printer; "to a file" is one of the choices.
    void Print(const std::string& title, const FormattedText& text) override;
    /// A screen as it is shown, on a landscape page. Asks for the printer, too.
    void PrintScreen(const std::string& title, QWidget& page);
    /// On letter paper where lengths are in inches, otherwise on A4.
    std::optional<std::string> Pdf(const std::string& title, const FormattedText& text) override;
};

/// Draws the pages on any paged device. A page with more or wider lines than fit is scaled down, never cut.
void DrawPages(QPagedPaintDevice& device, const std::vector<std::vector<std::string>>& pages);

/// Draws a widget as it is shown, as large as fits and centred on the page. Plots are drawn with lines, not with dots.
void DrawWidget(QPagedPaintDevice& device, QWidget& widget);

}  // namespace bellmark
