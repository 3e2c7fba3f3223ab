#include "results/summary_tab.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "app/program.h"
#include "controls/screen.h"
#include "fwd/fwd_intake.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr int firstRow = 1;  // below the headings
constexpr const char* historyFilter = "PDDX Files|*.ddx|All files|*.*";

/// As the set-up shows it; empty when the date is not known.
std::string DateText(DateTime date) {
    return DayOf(date) == ZeroDate() ? std::string() : Format(date, "d-mmm-yyyy");
}

/// The bytes of the document as text. One in UTF-16 would come back in another form.
std::string TextToChange(const FileSystem& files, const Path& path) {
    const std::string bytes = files.ReadBytes(path);
    for (const std::string_view mark : {"\xFF\xFE", "\xFE\xFF"}) {
        if (StartsWith(bytes, mark)) throw FileError(path, "is in Unicode, which this program does not write");
    }
    return FromWindows1252(bytes);
}

}  // namespace

SummaryTab::SummaryTab(Screen& screen, Program& program) : screen_(screen), program_(program), run_(program.Run) {
    for (TextBox* box : {&txtFWDOwner, &txtFWDUnit, &txtFWDOperator, &txtLastLCCalDate, &txtLastSensorCalDate}) {
        box->Locked = true;
    }
    cmdReadHistory.Click = [this] { cmdReadHistory_Click(); };
    cmdUpdateHistory.Click = [this] { cmdUpdateHistory_Click(); };
    cmdPrintHistory.Click = [this] { program_.Services.printScreen(screen_.Name()); };
    cboHistoryGain.Click = [this] { ShowPlot(); };
}

SummaryTab::~SummaryTab() = default;

void SummaryTab::Fill() {
    txtFWDOwner.Text = run_.DeviceOwner;
    txtFWDUnit.Text = run_.DeviceName;
    txtFWDOperator.Text = run_.OperatorName;
    txtLastLCCalDate.Text = DateText(run_.LoadCellCalibrationDate);
    txtLastSensorCalDate.Text = DateText(run_.SensorCalibrationDate);
    // A run that was opened again begins without a history, too.
    const bool isOfRun = run_.NumberCalibrations == static_cast<int>(history_.calibrations.size());
    if (history_.ofRun != run_.InterimFileName || !isOfRun) {
        history_ = {};
        added_ = {};
        history_.ofRun = run_.InterimFileName;
        cboHistoryGain.ListIndex = -1;
        ShowTable();
    }
    if (HasOtherHeadings()) ShowTable();
    ShowChoices();
    ShowSteps();
}

Button* SummaryTab::NextStep() {
    for (Button* button : {&cmdUpdateHistory, &cmdReadHistory}) {
        if (button->BackColor.Get() == colors::suggestedNext) return button;
    }
    return nullptr;
}

// ---- reading

void SummaryTab::cmdReadHistory_Click() {
    const bool isTrial = run_.CurrentProcedure == Procedure::LoadCell || run_.CurrentProcedure == Procedure::Sensors;
    const auto file = AskForFWDFile(program_, {"Read FWD Calibration History file", historyFilter, false, isTrial});
    if (!file) return;
    if (file->isReady) {
        ReadPDDXHistory(file->document);
    } else if (!file->told) {
        program_.ShowBox("There was a problem reading the PDDX file.", box::exclamation);
    }
}

void SummaryTab::ReadPDDXHistory(const Path& path) {
    if (!program_.Services.files.IsFile(path)) {
        program_.Compose(106);
        program_.ShowComposed();
        return;
    }
    History history;
    try {
        history = HistoryIn(ReadTextFile(program_.Services.files, path), path);
    } catch (const std::runtime_error& error) {
        program_.ShowBox(std::string("There was a problem reading the PDDX file.\r\n") + error.what(),
                         box::exclamation);
        return;
    }
    for (const std::string& difference : DeviceDifferences(*history.document, run_)) {
        program_.Compose(150, {difference});
        program_.ShowComposed();
    }
    TakeHistory(std::move(history));
}

/// Throws std::runtime_error when the text cannot be a history.
SummaryTab::History SummaryTab::HistoryIn(std::string_view text, const Path& path) const {
    History history;
    history.ofRun = run_.InterimFileName;
    history.file = PathText(path.filename());
    history.document = std::make_unique<PDDXFile>();
    history.strings = std::make_shared<ProfileStrings>(text);
    history.earlier = history.strings;
    history.calibrations = ReadHistory(*history.strings, *history.document);
    return history;
}

void SummaryTab::TakeHistory(History history) {
    run_.NumberCalibrations = static_cast<std::int16_t>(history.calibrations.size());
    history_ = std::move(history);
    ShowTable();
    ShowChoices();
    ShowSteps();
    if (Changed) Changed();
}

// ---- the run joins its history

/// The document that the final outputs wrote for the FWD, as long as the run's document still names it.
std::optional<Path> SummaryTab::DocumentForFWD() const {
    const auto& name = program_.RunDocument->Sections("Operations Information").Elements("FileName").Value();
    if (run_.DocumentForFWD.empty() || PathText(run_.DocumentForFWD) != name) return {};
    return run_.DocumentForFWD;
}

SummaryTab::Added SummaryTab::ToBeAdded() const {
    return {DocumentForFWD().value_or(Path()), run_.LoadCellCalComplete, run_.SensorRefCalComplete,
            run_.SensorRelCalComplete};
}

void SummaryTab::cmdUpdateHistory_Click() {
    // The dates are days and the present moment has a time of day: this stops at midnight only.
    const auto now = std::chrono::floor<std::chrono::seconds>(program_.Now());
    if (ReadDateTime(grdFWDHistory.Cell(firstRow, 0)) == now) return;
    const auto document = DocumentForFWD();
    if (!document || !AskToAdd()) return;
    try {
        FileSystem& files = program_.Services.files;
        const HistoryUpdate update =
            AddRunToHistory(TextToChange(files, *document), *history_.earlier, run_, program_.Now());
        files.ReplaceFile(*document, ToWindows1252(update.text));
        added_ = ToBeAdded();
        History history = HistoryIn(update.text, *document);
        // In another document the run must not stand twice.
        history.earlier = history_.earlier;
        TakeHistory(std::move(history));
    } catch (const std::runtime_error& error) {
        program_.ShowBox(std::string("The calibration could not be added to the history.\r\n") + error.what(),
                         box::critical);
    }
}

bool SummaryTab::AskToAdd() {
    std::string doubts;
    if (!DeviceDifferences(*history_.document, run_).empty()) {
        doubts += "The calibrations that were read are of another FWD.\r\n";
    }
    if (run_.SensorRefCalComplete && !run_.SensorRelCalComplete) {
        doubts += "The final gains of the sensors are not accepted yet.\r\n";
    }
    if (doubts.empty()) return true;
    return program_.ShowBox(doubts + "Do you want to add this calibration to the history all the same?",
                            box::yesNo + box::exclamation + box::secondIsDefault) == Answer::Yes;
}

// ---- what is shown

bool SummaryTab::HasOtherHeadings() const {
    const auto headings = HistoryHeadings(run_);
    if (grdFWDHistory.Columns() != static_cast<int>(headings.size())) return true;
    int column = 0;
    return !std::all_of(headings.begin(), headings.end(),
                        [&](const std::string& heading) { return grdFWDHistory.Cell(0, column++) == heading; });
}

void SummaryTab::ShowTable() {
    const auto count = static_cast<int>(history_.calibrations.size());
    const auto headings = HistoryHeadings(run_);
    grdFWDHistory.SetHeadings(headings);
    grdFWDHistory.Resize(std::max(count, 1) + firstRow, static_cast<int>(headings.size()));
    for (int number = 1; number <= count; ++number) {
        ShowRow(count - number + firstRow, history_.calibrations[static_cast<std::size_t>(number - 1)]);
    }
}

void SummaryTab::ShowRow(int row, const EarlierCalibration& calibration) {
    int column = 0;
    for (const HistoryCell& cell : HistoryRow(calibration, run_)) {
        grdFWDHistory.SetCell(row, column, cell.text);
        grdFWDHistory.SetCellColor(row, column, cell.doubt.empty() ? colors::window : colors::warning);
        grdFWDHistory.SetCellToolTip(row, column, cell.doubt);
        ++column;
    }
}

/// The choice stays where its name is still in the list.
void SummaryTab::ShowChoices() {
    std::vector<std::string> names;
    for (const ShownGains& shown : GainsToChoose(run_)) names.push_back(shown.name);
    const std::string chosen = cboHistoryGain.DisplayText();
    cboHistoryGain.Items = names;
    if (!cboHistoryGain.ChooseText(chosen)) cboHistoryGain.ListIndex = 0;
    ShowPlot();
}

void SummaryTab::ShowPlot() {
    const auto choices = GainsToChoose(run_);
    const ShownGains& shown = choices.at(static_cast<std::size_t>(cboHistoryGain.ListIndex.Get()));
    pctHistory.Draw(HistoryPlot(history_.calibrations, run_, shown, program_.Now()));
    lblTrend.Caption = TrendText(history_.calibrations, run_, shown, program_.Now());
}

void SummaryTab::ShowSteps() {
    const auto document = DocumentForFWD();
    const bool isRead = history_.document != nullptr;
    cmdUpdateHistory.Enabled = isRead && document;
    cmdUpdateHistory.ToolTip = !isRead     ? "Read the earlier calibrations first."
                               : !document ? "Write the Final Outputs first."
                                           : "";
    // Pressing it once more adds the run once more, but it is not the next step.
    const bool updateIsNext = cmdUpdateHistory.Enabled && added_ != ToBeAdded();
    cmdUpdateHistory.BackColor = updateIsNext ? colors::suggestedNext : colors::buttonFace;
    cmdReadHistory.BackColor = document && !isRead ? colors::suggestedNext : colors::buttonFace;
    lblNewGains.Caption = NewGainsText(run_, program_.Now());
    lblHistory.Caption = HistoryText();
    lblHistoryStep.Caption = !isRead     ? "Next: READ the earlier calibrations from the FWD's file."
                             : !document ? "Compare the gains, then write the FINAL OUTPUTS."
                             : updateIsNext
                                 ? "Next: UPDATE adds this calibration to the document for the FWD."
                                 : "This calibration is in the document for the FWD. Give it to the FWD's operator.";
}

std::string SummaryTab::HistoryText() const {
    if (!history_.document) return {};
    const std::size_t count = history_.calibrations.size();
    std::string text = NumberText(count) + (count == 1 ? " calibration in " : " calibrations in ") + history_.file;
    const int highest = HighestCalibration(*history_.strings);
    if (highest > static_cast<int>(count))
        text += ", which holds more than it counts, up to number " + NumberText(highest);
    return text + '.';
}

}  // namespace bellmark
