#pragma once

#include <string>
#include <string_view>

#include "app/doors.h"
#include "app/page_header.h"
#include "controls/controls.h"
#include "controls/screen.h"

namespace bellmark {

class Program;

/// Shows the certificate as it was written and will be printed.
class frmReport : public Screen, public ReportDoor {
  public:
    explicit frmReport(Program& program);

    ctrlHeader Header;
    RichTextBox rtbReport{*this, "rtbReport"};
    Label lblMissing{*this, "lblMissing"};  ///< the keywords that the template lacks
    Button cmdMainMenu{*this, "cmdMainMenu", "Back to &Results"};
    Button cmdSavePDF{*this, "cmdSavePDF", "Save as P&DF"};
    Button cmdPrint{*this, "cmdPrint", "&Print"};
    Button cmdNext{*this, "cmdNext", "&NEXT"};

    bool PrintReferenceCalReport() override;

  private:
    void FillTemplate();
    void ShowCertificate(const std::string& rtf);
    void WriteCertificate(const char* ending, std::string_view bytes);
    void WritePdf();
    void Print();
    void SavePdf();
    void GoToResults();

    Program& program_;
};

}  // namespace bellmark
