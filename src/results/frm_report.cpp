#include "results/frm_report.h"

#include <optional>
#include <stdexcept>

#include "app/program.h"
#include "platform/dialogs.h"
#include "results/certificate.h"
#include "results/rich_text_reader.h"
#include "run/paths.h"

namespace bellmark {

namespace {

std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const auto& word : words) joined += (joined.empty() ? "" : ", ") + word;
    return joined;
}

}  // namespace

frmReport::frmReport(Program& program)
    : Screen(program.Screens, "frmReport", "Certificate"), Header(*this, program.Header), program_(program) {
    cmdPrint.Click = [this] { Print(); };
    cmdSavePDF.Click = [this] { SavePdf(); };
    cmdNext.Click = [this] { GoToResults(); };
    cmdMainMenu.Click = [this] { GoToResults(); };
    lblMissing.Visible = false;
    SetDefaultButton(&cmdPrint);
}

bool frmReport::PrintReferenceCalReport() {
    try {
        FillTemplate();
    } catch (const RichTextError& error) {
        const Path path = ActualPath(program_.Services.files, program_.Folder() / certificateTemplateName);
        program_.ShowBox("No certificate was written. " + PathText(path) + ' ' + error.what() + '.', box::exclamation,
                         Title());
        return false;
    } catch (const FileError& error) {
        program_.ShowBox("The certificate could not be written. " + std::string(error.what()), box::exclamation,
                         Title());
        return false;
    }
    Show();
    return true;
}

void frmReport::FillTemplate() {
    FileSystem& files = program_.Services.files;
    RichText text(files.ReadBytes(ActualPath(files, program_.Folder() / certificateTemplateName)));
    const auto missing =
        FillCertificate(text, program_.Run, program_.Center,
                        {program_.Run.LoadCellCalComplete, program_.Run.SensorRelCalComplete}, program_.Now());
    lblMissing.Visible = !missing.empty();
    lblMissing.Caption = "The template " + std::string(certificateTemplateName) +
                         " does not hold these keywords, whose values are missing here: " + Joined(missing) + '.';
    const std::string rtf = CertificateRtf(text);
    ShowCertificate(rtf);
    WriteCertificate(".rtf", rtf);
    WritePdf();
}

void frmReport::ShowCertificate(const std::string& rtf) {
    constexpr std::size_t mostLetters = 1'000'000;
    FormattedText text = ReadRichText(rtf);
    const bool canBeShown = PlainText(text).size() <= mostLetters;
    if (!canBeShown) {
        // Too large to be shown in a reasonable time. The file itself is complete.
        text.paragraphs.resize(1);
        text.paragraphs[0].runs.resize(1);
        text.paragraphs[0].runs[0].text =
            "The certificate is too long to be shown here. It lies in " + PathText(program_.Run.OutputFolder) + '.';
    }
    rtbReport.Content = std::move(text);
    cmdPrint.Enabled = canBeShown;
    cmdSavePDF.Enabled = canBeShown;
}

/// Writes the certificate twice: with the run's data and with the outputs.
void frmReport::WriteCertificate(const char* ending, std::string_view bytes) {
    const Path name = PathFromText(CertificateName(program_.Now(), ending));
    for (const Path& folder : {program_.InterimFolder(), program_.Run.OutputFolder}) {
        program_.Services.files.ReplaceFile(folder / name, bytes);
    }
}

/// If none can be made, the PDF of an earlier certificate must not remain beside the new certificate.
void frmReport::WritePdf() {
    const auto pdf =
        cmdSavePDF.Enabled ? program_.Services.printer.Pdf(Title(), rtbReport.Content.Get()) : std::nullopt;
    if (pdf) {
        WriteCertificate(".pdf", *pdf);
        return;
    }
    const Path name = PathFromText(CertificateName(program_.Now(), ".pdf"));
    for (const Path& folder : {program_.InterimFolder(), program_.Run.OutputFolder}) {
        program_.Services.files.RemoveFile(folder / name);
    }
}

void frmReport::Print() {
    program_.Services.printer.Print(Title(), rtbReport.Content.Get());
}

void frmReport::SavePdf() {
    const auto chosen =
        program_.Services.dialogs.SaveFile({"Save Certificate", "PDF Files|*.pdf|All files|*.*",
                                            program_.Run.OutputFolder, CertificateName(program_.Now(), ".pdf")});
    if (!chosen || chosen->empty()) return;
    const auto pdf = program_.Services.printer.Pdf(Title(), rtbReport.Content.Get());
    if (!pdf) throw std::runtime_error("PDF files are written by the desktop program alone.");
    program_.Services.files.ReplaceFile(program_.Services.startDirectory / *chosen, *pdf);
}

void frmReport::GoToResults() {
    Hide();
    program_.Header.SetProcedureName("");
    program_.The<ResultsDoor>().Open();
}

}  // namespace bellmark
