// A whole calibration in which each file operation, in turn, is once the last before the program ends, and once fails.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>

#include "app/app_main.h"
#include "app/frm_about.h"
#include "app/program.h"
#include "app/workflow.h"
#include "assembly/assembly.h"
#include "console/script_dialogs.h"
#include "console/script_runner.h"
#include "platform/clock.h"
#include "platform/numbers.h"
#include "platform/portable_machine.h"
#include "platform/profile_strings.h"
#include "platform/timers.h"
#include "run/interim_keys.h"
#include "tests/disasters/doomed_file_system.h"
#include "tests/support/temporary_folder.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

namespace disk = std::filesystem;

/// A program from its start, in a folder.
struct Sitting {
    ScriptClock clock;
    Timers timers{clock};
    ScriptDialogs dialogs;
    SystemLauncher launcher;
    FilePrinter printer;
    SilentSound sound;
    Random random{1};
    Machine machine;
    std::unique_ptr<Program> program;
    std::ostringstream printed;
    std::unique_ptr<ScriptRunner> runner;

    Sitting(FileSystem& files, const Path& folder)
        : printer(files, folder / "BellmarkPrinted.txt"), machine{files,
                                                                  clock,
                                                                  timers,
                                                                  dialogs,
                                                                  launcher,
                                                                  printer,
                                                                  sound,
                                                                  random,
                                                                  {},
                                                                  {},
                                                                  {},
                                                                  folder,
                                                                  folder.parent_path()} {
        clock.Set(MakeDateTime(2012, 3, 9, 10));
        machine.yield = [this] { timers.RunDue(); };
        machine.pause = [this] { timers.RunDue(); };
        machine.showHelp = [](int) {};
        machine.endProgram = [] {};
        program = AssembleProgram(machine);
        runner = std::make_unique<ScriptRunner>(*program, dialogs, clock, printed);
        Main(*program);
    }
};

/// The lines in the order in which they run, with loops unrolled.
std::vector<ScriptLine> Unrolled(const std::vector<ScriptLine>& lines, std::size_t first, std::size_t last) {
    std::vector<ScriptLine> unrolled;
    for (std::size_t i = first; i < last; ++i) {
        if (lines[i].words.front().text != "repeat") {
            unrolled.push_back(lines[i]);
            continue;
        }
        std::size_t end = i + 1;
        for (int depth = 1; depth > 0; ++end) {
            const std::string& word = lines[end].words.front().text;
            depth += word == "repeat" ? 1 : word == "end" ? -1 : 0;
        }
        const auto body = Unrolled(lines, i + 1, end - 1);
        for (int turn = 1; turn <= ReadNumber(lines[i].words[1].text); ++turn) {
            for (ScriptLine line : body) {
                for (ScriptWord& word : line.words) {
                    const auto sign = word.text.find("$i");
                    if (sign != std::string::npos) word.text.replace(sign, 2, NumberText(turn));
                }
                unrolled.push_back(std::move(line));
            }
        }
        i = end - 1;
    }
    return unrolled;
}

/// Data that must not be lost: the counted trials with their peaks and gains, and the acceptances. The FWD's peaks of a
/// trial that waits for its answer are read from its file again.
std::string Accepted(const CalibrationRun& run) {
    std::ostringstream text;
    text.precision(12);
    text << "waits " << run.FlagUnacceptedTrial << " accepted " << run.LoadCellCalComplete;
    if (run.LoadCellCalComplete) text << " gain " << Round(run.NewLoadCellCalibrationCenterGain, 6);
    text << '\n';
    for (int trial = 0; trial < run.LoadCellRefTrials; ++trial) {
        const TrialRecord& record = run.LCTrial.at(static_cast<std::size_t>(trial));
        for (const double peak : record.RefDropData) text << peak << ' ';
        if (trial < AcceptedLoadCellTrials(run)) {
            for (const double peak : record.DropData) text << peak << ' ';
            text << record.AdjFactor << ' ' << record.Gain;
        }
        text << '\n';
    }
    return text.str();
}

constexpr const char* noRun = "no run\n";
constexpr char separator = '\f';

/// The program's folder, its disaster, and the result of each line of the script.
class Calibration {
  public:
    Calibration() {
        // The script names folders relative to the start folder of the program.
        disk::current_path(root_);
        virtual_fwd::CenterOptions options;
        options.heights = 3;
        options.drops = 5;
        DiskFileSystem files;
        virtual_fwd::WriteCenter(files, folder_, options, MakeDateTime(2012, 3, 9, 9));
        for (const auto& entry : disk::directory_iterator(Path(BELLMARK_SOURCE_FOLDER) / "sample")) {
            disk::copy(entry.path(), folder_ / entry.path().filename());
        }
    }

    ~Calibration() { disk::current_path(disk::temp_directory_path()); }
    Calibration(const Calibration&) = delete;
    Calibration& operator=(const Calibration&) = delete;

    /// isChosen: by the number of an operation, from 1. The files of the run and of the center are always chosen.
    void Run(const std::vector<const char*>& scripts, std::function<bool(int operation)> isChosen,
             std::vector<Fate> fates) {
        isChosen_ = std::move(isChosen);
        fates_ = std::move(fates);
        files_.FateOf = [this](const char* operation, const Path& path) { return Meet(operation, path); };
        try {
            RunScripts(scripts);
        } catch (const ScriptStop& stop) {  // a box at the start
            if (!inChild_) throw;
            Report("told " + stop.why);
        } catch (const std::exception& error) {
            if (!inChild_) throw;
            const std::string why = error.what();
            const bool isBox = why.starts_with("a message box came up") || why.starts_with("the message box has no");
            const bool isScripts = dynamic_cast<const ScriptError*>(&error) && !isBox;
            std::string boxes;
            if (sitting_)
                for (const auto& box : sitting_->dialogs.TakeBoxes()) boxes += box + '\n';
            const bool wasTold = !isScripts || boxes.find(DoomedFileSystem::why) != std::string::npos;
            Report((wasTold ? "told " : "silent ") + why + '\n' + boxes);
        }
        if (inChild_) Report("end " + atLinesEnd_ + separator + ContentOf(folder_));
        JudgeEndings(endings_);
    }

    int operations = 0;
    int ends = 0;
    int told = 0;
    int harmless = 0;

  private:
    /// Each script in its own program, as if the one before had been interrupted.
    void RunScripts(const std::vector<const char*>& names) {
        for (const char* name : names) {
            before_ = state_;
            sitting_.reset();
            sitting_ = std::make_unique<Sitting>(files_, folder_);
            for (const ScriptLine& line : LinesOf(name)) {
                before_ = State();
                sitting_->runner->Run({line});
                if (!inChild_) JudgeLine(name, line.number);
                if (inChild_ && atLinesEnd_.empty()) atLinesEnd_ = ContentOf(folder_);
            }
        }
    }

    static std::vector<ScriptLine> LinesOf(const char* script) {
        std::string text = DiskFileSystem().ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "tests/scripts" / script);
        const auto replace = [&text](const std::string& old, const std::string& now) {
            const auto at = text.find(old);
            if (at != std::string::npos) text.replace(at, old.size(), now);
        };
        // The smallest trial that the set-up allows.
        replace("answer Yes\nclick frmSetup.cmdApproveCalSeq",
                "choose frmSetup.cboNumHeights \"3\"\nchoose frmSetup.cboNumDrops \"5\"\n"
                "answer Yes\nclick frmSetup.cmdApproveCalSeq");
        replace("repeat 24", "repeat 15");
        const auto lines = ReadScript(text);
        return Unrolled(lines, 0, lines.size());
    }

    /// State that a new program should find. While no run is open, it is that of the previous program.
    std::string State() {
        const CalibrationRun& run = sitting_->program->Run;
        if (run.IsInHand) {
            const bool isStored = !run.InterimFileName.empty() && disk::exists(folder_ / run.InterimFileName);
            state_ = isStored ? Accepted(run) : noRun;
        }
        return state_;
    }

    Fate Meet(const char* operation, const Path& path) {
        if (inChild_) return Fate::Goes;
        ++operations;
        const bool isStore = operation != std::string("read") && IsStore(path);
        if (fates_.empty() || (!isStore && !isChosen_(operations))) return Fate::Goes;
        for (const Fate fate : fates_) {
            const std::string what =
                NumberText(operations) + ", to " + operation + ' ' + PathText(path.lexically_relative(folder_));
            Keep();
            const pid_t child = fork();
            if (child == 0) {
                inChild_ = true;
                return fate;
            }
            Wait(child, what);
            Judge(fate, what);
            PutBack();
        }
        return Fate::Goes;
    }

    Path ReportFile() const { return root_ / "report.txt"; }
    /// Ends the child and reports its results.
    [[noreturn]] void Report(const std::string& text) const {
        std::ofstream(ReportFile()) << text;
        _exit(0);
    }
    static bool IsStore(const Path& path) {
        const std::string name = PathText(path.filename());
        return name.starts_with("InterimCal") || name.starts_with("BellmarkCenterConfig");
    }

    void Wait(pid_t child, const std::string& what) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "operation " << what << ": status " << status;
    }

    std::string TakeReport() {
        std::ifstream stream(ReportFile());
        std::string text{std::istreambuf_iterator<char>(stream), {}};
        stream.close();
        disk::remove(ReportFile());
        return text;
    }

    void Judge(Fate fate, const std::string& what) {
        if (fate == Fate::Fails) {
            const std::string report = TakeReport();
            if (report.starts_with("told")) {
                ++told;
                if (std::getenv("BELLMARK_TELL")) std::cerr << what << ": " << report << '\n';
            } else if (report.starts_with("end")) {
                ++harmless;
                const auto part = report.find(separator);
                lineEndings_.emplace_back(what, report.substr(4, part - 4));
                endings_.emplace_back(what, report.substr(part + 1));
                return;
            } else {
                ADD_FAILURE() << "operation " << what << " failed and nobody was told: " << report;
            }
        } else {
            ++ends;
        }
        const pid_t child = fork();
        if (child == 0) Report(Resumed());
        Wait(child, what);
        resumed_.emplace_back(what, TakeReport());
    }

    /// State that a new program finds.
    std::string Resumed() {
        inChild_ = true;
        DiskFileSystem files;
        try {
            for (const Path& file : InterimFiles()) {
                if (!HasEndMark(ProfileStrings(ReadTextFile(files, file)))) return PathText(file) + " is not whole";
            }
            Sitting sitting(files, folder_);
            for (const auto& entry : disk::recursive_directory_iterator(folder_)) {
                // Files left in the owner's folders are replaced when the run is published again.
                const bool isOwners = PathText(entry.path()).find("/Calibrations/") != std::string::npos;
                if (entry.path().extension() == ".tmp" && !isOwners) return PathText(entry.path()) + " was left behind";
            }
            const auto& start = dynamic_cast<const frmAbout&>(sitting.program->The<StartFormDoor>());
            if (start.grdInterim.Rows() < 2) return noRun;
            // Confirms the copy in place of a missing file, and opening the run.
            for (int i = 0; i < 3; ++i) sitting.dialogs.QueueAnswer(Answer::Yes);
            sitting.runner->Run(ReadScript("click frmAbout.grdInterim 1\nclick frmAbout.cmdOpenInterimCal\n"));
            return Accepted(sitting.program->Run);
        } catch (const ScriptStop& stop) {
            return "at the start: " + stop.why;
        } catch (const std::exception& error) {
            return std::string("the run cannot be opened: ") + error.what();
        }
    }

    std::vector<Path> InterimFiles() const {
        std::vector<Path> found;
        for (const auto& entry : disk::recursive_directory_iterator(folder_)) {
            const std::string name = PathText(entry.path().filename());
            if (name.starts_with("InterimCal") && name.ends_with(".DDX") &&
                entry.path().parent_path() != folder_ / "Review")
                found.push_back(entry.path());
        }
        return found;
    }

    /// A resumed run must be that before the line or that after it.
    void JudgeLine(const char* script, int line) {
        const std::string after = State();
        for (const auto& [what, found] : resumed_) {
            EXPECT_TRUE(found == before_ || found == after)
                << "after operation " << what << " in " << script << ", line " << line << " there was\n"
                << found << "in place of\n"
                << before_ << "or\n"
                << after;
        }
        resumed_.clear();
        JudgeEndings(lineEndings_);
    }

    /// When no failure was reported, the files must be those of a calibration without a failure.
    void JudgeEndings(std::vector<std::pair<std::string, std::string>>& endings) const {
        const std::string undisturbed = endings.empty() ? "" : ContentOf(folder_);
        for (const auto& [what, found] : endings) {
            EXPECT_EQ(found, undisturbed)
                << "operation " << what << " failed, nobody was told, and the files are others";
        }
        endings.clear();
    }

    /// Names and contents, except for the log, for the journal, whose failures the log tells, for documents of the
    /// converter that were set aside and could not be removed, and for the run's copy of the center's configuration,
    /// which opening a run on a read-only disk leaves unchanged.
    static std::string ContentOf(const Path& folder) {
        std::map<std::string, std::size_t> files;
        for (const auto& entry : disk::recursive_directory_iterator(folder)) {
            const Path ending = entry.path().extension();
            const bool isCopy = entry.path().filename() == "BellmarkCenterConfig.ini" &&
                                PathText(entry.path().parent_path().filename()).starts_with("InterimCal");
            const bool isJournal = entry.path().filename() == "Journal.txt";
            if (!entry.is_regular_file() || ending == ".log" || isJournal || ending == ".old" || isCopy) continue;
            files[PathText(entry.path().lexically_relative(folder))] =
                std::hash<std::string>()(DiskFileSystem().ReadBytes(entry.path()));
        }
        std::ostringstream text;
        for (const auto& [name, hash] : files) text << name << ' ' << hash << '\n';
        return text.str();
    }

    /// The drops' files are only ever replaced, so a hard link serves as a copy.
    void Keep() const {
        for (const auto& entry : disk::recursive_directory_iterator(folder_)) {
            const Path kept = kept_ / entry.path().lexically_relative(folder_);
            if (entry.is_directory()) {
                disk::create_directories(kept);
            } else if (disk::create_directories(kept.parent_path()); entry.file_size() > 200'000) {
                disk::create_hard_link(entry.path(), kept);
            } else {
                disk::copy(entry.path(), kept);
            }
        }
    }
    void PutBack() const {
        disk::remove_all(folder_);
        disk::rename(kept_, folder_);
    }

    TemporaryFolder root_folder_;
    Path root_ = root_folder_.Folder();
    Path folder_ = root_ / "sample";
    Path kept_ = root_ / "kept";
    DoomedFileSystem files_;
    std::function<bool(int)> isChosen_;
    std::vector<Fate> fates_;
    std::unique_ptr<Sitting> sitting_;
    std::string state_ = noRun;
    std::string before_ = noRun;
    std::vector<std::pair<std::string, std::string>> resumed_;      ///< operation, and the state found
    std::vector<std::pair<std::string, std::string>> lineEndings_;  ///< operation, and the files after its line
    std::vector<std::pair<std::string, std::string>> endings_;      ///< the same at the end
    std::string atLinesEnd_;
    bool inChild_ = false;
};

/// About forty operations; every one, and the moments between them, with BELLMARK_DISASTERS=all.
void MeetDisasters(const std::vector<const char*>& scripts) {
    Calibration undisturbed;
    undisturbed.Run(scripts, [](int) { return false; }, {});
    const bool all = std::getenv("BELLMARK_DISASTERS") != nullptr;
    const int step = all ? 1 : std::max(undisturbed.operations / 40, 1);
    std::vector<Fate> fates{Fate::EndsHalfway, Fate::Fails};
    if (all) fates.push_back(Fate::EndsBefore);
    Calibration calibration;
    calibration.Run(
        scripts, [step](int operation) { return operation % step == 0; }, fates);
    std::cout << "file operations: " << calibration.operations << ", ended at: " << calibration.ends
              << ", failed: " << calibration.told + calibration.harmless << ", of which told: " << calibration.told
              << '\n';
    EXPECT_GE(calibration.ends, 40);
    EXPECT_GE(calibration.told + calibration.harmless, 40);
}

TEST(Disasters, NothingAcceptedIsLostAndWhatFailsIsToldOrHarmless) {
    MeetDisasters({"broken-off-1-set-up.script", "broken-off-2-trial.script", "broken-off-3-file.script",
                   "broken-off-4-accepted.script", "broken-off-5-second.script", "broken-off-6-results.script",
                   "broken-off-7-outputs.script"});
}

TEST(Disasters, InOneSittingToo) {
    if (std::getenv("BELLMARK_DISASTERS")) MeetDisasters({"whole-calibration.script"});
}

}  // namespace
}  // namespace bellmark
