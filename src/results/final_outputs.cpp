#include "results/final_outputs.h"

#include "app/center_file.h"
#include "app/doors.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/print_if_asked.h"
#include "app/program.h"
#include "app/save_text.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/json.h"
#include "platform/profile_strings.h"
#include "results/certificate.h"
#include "results/certificate_data.h"
#include "results/publish_run.h"
#include "results/trial_files.h"
#include "run/center_keys.h"
#include "run/interim_keys.h"
#include "run/paths.h"
#include "run/run_document.h"

namespace bellmark {

namespace {

constexpr const char* documentFilter = "PDDX Files|*.ddx|All files|*.*";

/// Writes the run's copy of the center's configuration anew, without the keys of an older one.
void RewriteCenterConfiguration(Program& program) {
    const Path copy = RunCenterConfig(program);
    ProfileStrings strings;
    SetCenterKeys(strings, program.Center, program.Run.EnglishUnits, copy, program.Now());
    program.Services.files.CreateFolder(copy.parent_path());
    SaveText(program, copy, strings.Text());
}

Path AskWhereToSave(Program& program, const char* title, const Path& folder, const std::string& name) {
    const auto chosen = program.Services.dialogs.SaveFile({title, documentFilter, folder, name});
    return chosen ? program.Services.startDirectory / *chosen : folder / PathFromText(name);
}

/// The folder that the FWD's files came from: there the FWD's operator gets the document.
Path TransferFolder(const Program& program) {
    const std::string& folder = program.Center.LocationOfFWDDataTransfer;
    return folder.empty() ? program.Run.OutputFolder : program.Services.startDirectory / PathFromText(folder);
}

/// Shows the waiting pointer during its lifetime.
class WaitCursor {
  public:
    explicit WaitCursor(Machine& machine) : machine_(machine) { machine_.showWaiting(true); }
    ~WaitCursor() { machine_.showWaiting(false); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

  private:
    Machine& machine_;
};

/// The run as it was last saved becomes the record of the calibration.
void KeepRecord(Program& program, const std::string& today) {
    FileSystem& files = program.Services.files;
    const Path saved = ActualPath(files, program.Run.OutputFolder / interimCopyName);
    const Path record =
        ActualPath(files, program.Run.OutputFolder / PathFromText("BellmarkCalibrationRecord " + today + ".ddx"));
    if (!files.IsFile(saved)) return;
    // The record does not hold the keys that only a resumed run needs.
    ProfileStrings strings(ReadTextFile(files, saved));
    RemoveStateKeys(strings);
    files.RemoveFile(record);
    SaveText(program, record, strings.Text());
    files.RemoveFile(saved);
}

/// Copies the run's data and takes the digests of the drop files, which no later step writes, while their bytes are in
/// hand.
KnownDigests CopyAndDigestTrialData(Program& program) {
    KnownDigests digests;
    CopyTrialData(program, [&](const Path& copy, std::string_view bytes) {
        const std::string name = PathText(copy.filename());
        const bool isOwn = copy.parent_path() == program.Run.OutputFolder;
        if (isOwn && IsDropFile(name)) digests.insert_or_assign(name, DigestOf(name, bytes));
    });
    return digests;
}

KnownDigests KeepRunInOutputs(Program& program, const Path& forFWD, const std::string& today) {
    const WaitCursor wait(program.Services);
    SaveInterimCalibration(program);
    // Saving the run has changed the file name. Later additions to the FWD's history go to the FWD's own document.
    PDDXFile& document = *program.RunDocument;
    document.Sections("Operations Information").Elements("FileName").SetValue(PathText(forFWD));
    KnownDigests digests = CopyAndDigestTrialData(program);
    KeepRecord(program, today);
    return digests;
}

/// Comes last: it holds the digests of the other files.
void WriteCertificateData(Program& program, const KnownDigests& known) {
    const WaitCursor wait(program.Services);
    FileSystem& files = program.Services.files;
    const Path& folder = program.Run.OutputFolder;
    const std::string name = CertificateName(program.Now(), ".json");
    const auto digests = DigestsOfFolder(files, folder, name, known);
    const Json data = CertificateData(program.Run, program.Center, digests, program.Now());
    files.ReplaceFile(folder / PathFromText(name), data.Text());
}

}  // namespace

void WriteFinalOutputs(Program& program) {
    CalibrationRun& run = program.Run;
    PDDXFile& document = *program.RunDocument;
    const std::string today = TodayText(program);
    const std::string outputName = "BellmarkCalibrationOutput " + today + ".ddx";

    UpdateWarmUp(document, run, program.Center, program.Now());
    RewriteCenterConfiguration(program);
    const Path inData = ActualPath(program.Services.files, program.InterimFolder() / calibrationDocumentName);
    SaveBellmarkDDX(document, run, program.Center, inData, program.Now(), DocumentGains::Accepted);
    WriteRunDocument(program, inData);
    OpenOutputFolder(program);

    const Path forCenter =
        AskWhereToSave(program, "Save FWD Configuration PDDX File for Cal Center", run.OutputFolder, outputName);
    if (WriteRunDocument(program, forCenter)) PrintIfAsked(program, forCenter);
    program.ShowBox(
        "Save the Configuration File (BellmarkCalibration.ddx) to Floppy or Thumb Drive\r\nand give to the FWD "
        "Operator",
        box::information);
    const Path forFWD =
        AskWhereToSave(program, "Save FWD Configuration PDDX File for FWD", TransferFolder(program), outputName);
    run.DocumentForFWD = WriteDocumentForFWD(program, forFWD) ? forFWD : Path();
    AddToJournal(program, "The final outputs are written to " + PathText(run.OutputFolder));
    const KnownDigests dropDigests = KeepRunInOutputs(program, forFWD, today);
    const bool hasCertificate = program.The<ReportDoor>().PrintReferenceCalReport();
    WriteCertificateData(program, dropDigests);
    if (hasCertificate && run.LoadCellCalComplete && run.SensorRelCalComplete) run.CertificationComplete = true;
}

}  // namespace bellmark
