#include <algorithm>
#include <charconv>
#include <iostream>
#include <thread>

#include "analyse/drop_result.h"
#include "analyse/file_walk.h"
#include "analyse/in_order.h"
#include "analyse/progress.h"
#include "analyse/rows.h"
#include "analyse/summary.h"
#include "analyse/trial_result.h"
#include "pddx/mod_pddx_read.h"
#include "pddx/pddx_file.h"
#include "platform/command_line.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/terminal.h"
#include "run/accel_adjustment.h"
#include "run/center_keys.h"

namespace {

using namespace bellmark;

constexpr const char* helpText = R"(bellmark-analyse --center CONFIGURATION [options] [FOLDER or FILE ...]

Analyses saved drops again, as the program does it today, and writes one row a drop on standard output. It reads every
file below the folders that has the name of a drop, saved or as a template, of the load cell or the accelerometer, and
each file given whatever its name. Without folders and files it reads their names from standard input, one a line.

  --center FILE   the center's BellmarkCenterConfig.ini, with the certificates of the references
  --json          rows as JSON lines instead of CSV
  --trials        one row for each device of each trial of the calibrations in dated folders: the gain with the drops as
                  they are analysed now beside that in the calibration's record
  --threads N     by itself one for each processor, 16 at most
  --quiet         no summary

Rows come in the order of the input, whatever the number of threads; names in a folder in the order of their bytes.
Nothing is written into the folders. The summary, and on a terminal the progress, are on standard error.
Exit status 0 means that every file was used, 1 that a row tells why one was not, 2 that the command line or the
configuration was wrong, 3 that the rows could not be written.
)";

struct Options {
    std::optional<Path> center;
    std::vector<Path> places;
    RowForm form = RowForm::Csv;
    bool trials = false;
    bool quiet = false;
    bool help = false;
    std::size_t threads = 0;
    std::string problem;
};

constexpr std::size_t mostThreads = 16;

void ReadThreads(Options& options, const std::string& word) {
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), options.threads);
    const bool isWhole = error == std::errc() && end == word.data() + word.size();
    if (isWhole && options.threads >= 1 && options.threads <= mostThreads) return;
    options.problem = "--threads takes a number from 1 to 16";
}

Options ReadOptions(const std::vector<std::string>& words) {
    Options options;
    options.threads = std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, mostThreads);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool hasValue = i + 1 < words.size();
        if (words[i] == "--help" || words[i] == "-h") {
            options.help = true;
        } else if (words[i] == "--center" && hasValue) {
            options.center = PathFromText(words[++i]);
        } else if (words[i] == "--threads" && hasValue) {
            ReadThreads(options, words[++i]);
        } else if (words[i] == "--json") {
            options.form = RowForm::JsonLines;
        } else if (words[i] == "--trials") {
            options.trials = true;
        } else if (words[i] == "--quiet") {
            options.quiet = true;
        } else if (words[i].rfind('-', 0) != 0) {
            options.places.push_back(PathFromText(words[i]));
        } else {
            options.problem = "\"" + words[i] + "\" is not understood here";
        }
    }
    if (options.problem.empty() && !options.center) options.problem = "--center is missing";
    return options;
}

/// Throws FileError.
CenterConfig ReadCenter(const FileSystem& files, const Path& path) {
    const ProfileStrings strings(ReadTextFile(files, path));
    if (!strings.HasSection(centerSection)) {
        throw FileError(path, "does not hold the configuration of a calibration center");
    }
    PDDXFile document;
    ReadPDDX(strings, document, false);
    CenterConfig center;
    ReadCenterKeys(document, center);
    ComputeAccelAdjustment(center);
    return center;
}

/// The files of all places, one by one. The places are given, or lines of standard input.
class Input {
  public:
    Input(const Options& options, FileWalk::Wanted wanted)
        : isGiven_(!options.places.empty()), wanted_(std::move(wanted)), walk_(options.places, wanted_) {}

    std::optional<FoundPath> Next() {
        for (;;) {
            if (auto found = walk_.Next()) return found;
            std::string line;
            if (isGiven_ || !std::getline(std::cin, line)) return {};
            if (!line.empty() && line.back() == '\r') line.pop_back();
            passedOver_ += walk_.PassedOver();
            walk_ = FileWalk(line.empty() ? std::vector<Path>() : std::vector<Path>{PathFromText(line)}, wanted_);
        }
    }

    long long PassedOver() const { return passedOver_ + walk_.PassedOver(); }

  private:
    bool isGiven_;
    FileWalk::Wanted wanted_;
    FileWalk walk_;
    long long passedOver_ = 0;
};

bool Write(std::FILE* to, const std::string& text) {
    return std::fwrite(text.data(), 1, text.size(), to) == text.size();
}

/// How many files there are, for the time left; 0 where nobody looks or they come one by one.
long long TotalFor(const Options& options, const FileWalk::Wanted& wanted) {
    if (options.places.empty() || !IsTerminal(stderr)) return 0;
    FileWalk walk(options.places, wanted);
    long long total = 0;
    while (walk.Next()) ++total;
    return total;
}

/// Writes rows with the heading before the first one, and the progress beside them.
class Output {
  public:
    Output(RowForm form, long long total)
        : form_(form), progress_(total, ProgressLine::Clock::now()), showsProgress_(IsTerminal(stderr)) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() {
        if (showsProgress_) Write(stderr, progress_.Cleared());
    }

    void Add(const Row& row) {
        if (rows_++ == 0) isWritten_ = Write(stdout, HeadingText(row, form_));
        isWritten_ = isWritten_ && Write(stdout, RowText(row, form_));
    }
    /// After all rows of a file.
    bool EndFile() {
        ++files_;
        if (showsProgress_) Write(stderr, progress_.After(files_, ProgressLine::Clock::now()));
        return isWritten_;
    }
    bool Finish() {
        isWritten_ = std::fflush(stdout) == 0 && isWritten_;
        return isWritten_;
    }

  private:
    RowForm form_;
    ProgressLine progress_;
    bool showsProgress_;
    bool isWritten_ = true;
    long long rows_ = 0;
    long long files_ = 0;
};

enum Status { allUsed = 0, someUnusable = 1, wrongCall = 2, notWritten = 3 };

Status AnalyseDrops(const Options& options, const FileSystem& files, const CenterConfig& center) {
    Input input(options, IsDropFileName);
    Output output(options.form, TotalFor(options, IsDropFileName));
    ArchiveSummary summary;
    WorkInOrder(
        options.threads, [&] { return input.Next(); },
        [&] {
            return [&files, analyser = DropAnalyser(center)](const FoundPath& found) mutable {
                if (found.problem.empty()) return analyser.Analyse(files, found.path);
                DropResult result;
                result.file = found.path;
                result.problem = found.problem;
                return result;
            };
        },
        [&](const DropResult& drop) {
            summary.Add(drop);
            output.Add(RowOf(drop));
            return output.EndFile();
        });
    if (!output.Finish()) return notWritten;
    if (!options.quiet) Write(stderr, summary.Text(input.PassedOver()));
    return summary.Unusable() > 0 ? someUnusable : allUsed;
}

Status AnalyseAllTrials(const Options& options, const FileSystem& files, const CenterConfig& center) {
    Input input(options, IsRecordName);
    Output output(options.form, TotalFor(options, IsRecordName));
    long long unusable = 0;
    long long trials = 0;
    WorkInOrder(
        options.threads, [&] { return input.Next(); },
        [&] {
            return [&](const FoundPath& found) {
                if (found.problem.empty()) return AnalyseTrials(files, found.path, center);
                TrialResult result;
                result.record = found.path;
                result.problem = found.problem;
                return std::vector<TrialResult>{result};
            };
        },
        [&](const std::vector<TrialResult>& results) {
            for (const TrialResult& trial : results) {
                ++(trial.problem.empty() ? trials : unusable);
                output.Add(RowOf(trial));
            }
            return output.EndFile();
        });
    if (!output.Finish()) return notWritten;
    if (!options.quiet) {
        Write(stderr, "trials of devices: " + NumberText(trials) + "\nwithout a gain: " + NumberText(unusable) + '\n');
    }
    return unusable > 0 ? someUnusable : allUsed;
}

}  // namespace

int main(int count, char** words) {
    const Options options = ReadOptions(CommandLineWords(count, words));
    if (options.help) {
        std::cout << helpText;
        return allUsed;
    }
    if (!options.problem.empty()) {
        std::cerr << "bellmark-analyse: " << options.problem << ". See bellmark-analyse --help.\n";
        return wrongCall;
    }
    ReportClosedOutput();
    const DiskFileSystem files;
    try {
        const CenterConfig center = ReadCenter(files, *options.center);
        const Status status =
            options.trials ? AnalyseAllTrials(options, files, center) : AnalyseDrops(options, files, center);
        if (status == notWritten) std::cerr << "bellmark-analyse: the rows could not be written.\n";
        return status;
    } catch (const std::exception& error) {
        std::cerr << "bellmark-analyse: " << error.what() << '\n';
        return wrongCall;
    }
}
