// The program bellmark-analyse on the drops of an imaginary center.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "platform/format.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/calibration_run.h"
#include "run/interim_keys.h"
#include "run/trial.h"
#include "tests/support/temporary_folder.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

namespace disk = std::filesystem;

using Fields = std::vector<std::string>;

struct Outcome {
    int status = 0;
    std::string rows;
    std::string summary;
    std::vector<Fields> Table() const {
        std::vector<Fields> table;
        for (const std::string_view line : SplitLines(rows)) table.push_back(Split(line, ','));
        return table;
    }
};

class Analyse : public testing::Test {
  protected:
    Analyse() {
        virtual_fwd::CenterOptions options;
        options.heights = 2;
        options.drops = 3;
        options.trials = 1;
        options.referenceTrials = 1;
        virtual_fwd::WriteCenter(files_, folder_ / "center", options, MakeDateTime(2012, 3, 9, 10));
        disk::rename(folder_ / "center/Review", archive_);
    }

    Outcome Run(const std::string& options, const std::string& input = {}, const std::string& output = "rows") const {
        files_.ReplaceFile(folder_ / "input", input);
        const std::string command = "cd '" + PathText(folder_.Folder()) + "' && '" + BELLMARK_ANALYSE +
                                    "' --center center/BellmarkCenterConfig.ini " + options + " <input >" + output +
                                    " 2>summary";
        Outcome outcome;
        outcome.status = WEXITSTATUS(std::system(command.c_str()));
        if (output == "rows") outcome.rows = files_.ReadBytes(folder_ / "rows");
        outcome.summary = files_.ReadBytes(folder_ / "summary");
        return outcome;
    }

    /// The value of a column, found by its name, in the row of a file.
    static std::string Value(const Outcome& outcome, const std::string& file, std::string_view column) {
        const auto table = outcome.Table();
        for (const Fields& row : table) {
            if (row[0].size() < file.size() || row[0].substr(row[0].size() - file.size()) != file) continue;
            for (std::size_t i = 0; i < row.size(); ++i) {
                if (table[0][i] == column) return row[i];
            }
        }
        return "no such row";
    }

    mutable DiskFileSystem files_;
    TemporaryFolder folder_;
    Path archive_ = folder_ / "archive";
};

// The files hold five digits of the volts, and the peaks of the volts with all digits.
TEST_F(Analyse, FindsThePeaksThatTheFilesTellWhateverTheThreads) {
    const Outcome outcome = Run("--threads 1 archive");
    EXPECT_EQ(outcome.status, 0);
    const auto table = outcome.Table();
    ASSERT_EQ(table.size(), 13U);
    for (std::size_t i = 1; i < table.size(); ++i) {
        const bool isLoad = i <= 6;
        const std::size_t drop = (i - 1) % 6;
        const std::string name = std::string(isLoad ? "LoadCell" : "Reference") + "1-H" + NumberText(drop / 3 + 1) +
                                 'D' + NumberText(drop % 3 + 1) + ".txt";
        EXPECT_EQ(table[i][0], "archive/" + name);
        const double english = ReadNumber(Value(outcome, name, "difference_english"));
        EXPECT_LE(std::abs(english), isLoad ? 0.5 : 0.005) << name;
        EXPECT_GT(ReadNumber(Value(outcome, name, "peak_metric")), isLoad ? 20 : 100) << name;
        EXPECT_EQ(Value(outcome, name, "unit_metric"), isLoad ? "kN" : "micron");
        EXPECT_EQ(Value(outcome, name, "taken"), "2012-03-09 10:00:00");
    }
    for (const char* threads : {"2", "7", "16"})
        EXPECT_EQ(Run("archive --threads " + std::string(threads)).rows, outcome.rows) << threads;
    std::string reversed;
    for (std::size_t i = table.size() - 1; i > 0; --i) reversed += table[i][0] + "\r\n";
    const auto backwards = Run("--threads 1", reversed).Table();
    ASSERT_EQ(backwards.size(), table.size());
    for (std::size_t i = 1; i < table.size(); ++i) EXPECT_EQ(backwards[i], table[table.size() - i]);
    EXPECT_NE(outcome.summary.find("load cell drops: 6\naccelerometer drops: 6\nfiles that cannot be used: 0\n"),
              std::string::npos)
        << outcome.summary;
}

TEST_F(Analyse, TellsWhyAFileCannotBeUsed) {
    const std::string drop = files_.ReadBytes(archive_ / "LoadCell1-H1D1.txt");
    disk::create_directories(folder_ / "bad/deeper");
    const auto put = [&](const char* name, const std::string& bytes) {
        files_.ReplaceFile(folder_ / "bad" / name, bytes);
    };
    put("LoadCell1-H1D2.txt", drop.substr(0, drop.size() / 2));
    put("LoadCell1-H1D3.txt", drop.substr(0, 300));
    put("LoadCell1-H1D4.txt", "");
    put("LoadCell1-H1D5.txt", "no drop\r\n");
    put("LoadCell1-H1D6.txt", drop + drop.substr(drop.size() - 200));
    put("LoadCell1-H2D1.txt", drop);
    put("notes.txt", "passed over");
    disk::resize_file(folder_ / "bad/LoadCell1-H2D1.txt", 9'000'000);
    disk::create_symlink("nowhere", folder_ / "bad/LoadCell1-H3D1.txt");
    disk::create_directory_symlink("..", folder_ / "bad/deeper/up");
    const Outcome outcome = Run("bad missing/LoadCell1-H1D1.txt");
    EXPECT_EQ(outcome.status, 1);
    const struct {
        const char* file;
        const char* problem;
    } cases[] = {
        {"bad/LoadCell1-H1D2.txt", ""},  // an end within a line leaves the samples before it
        {"bad/LoadCell1-H1D3.txt", "holds no samples"},
        {"bad/LoadCell1-H1D4.txt", "is no drop file: neither its first line nor its name tells the instrument"},
        {"bad/LoadCell1-H1D5.txt", "is no drop file: neither its first line nor its name tells the instrument"},
        {"bad/LoadCell1-H1D6.txt", "\"is damaged: it holds more samples than a block"},
        {"bad/LoadCell1-H2D1.txt", "is larger than 8 MB"},
        {"bad/LoadCell1-H3D1.txt", "No such file or directory"},
        {"bad/deeper/up", "is a link back to a folder above it"},
        {"missing/LoadCell1-H1D1.txt", "No such file or directory"},
    };
    EXPECT_EQ(outcome.Table().size(), std::size(cases) + 1);
    for (const auto& test : cases) EXPECT_EQ(Value(outcome, test.file, "problem"), test.problem) << test.file;
    EXPECT_EQ(Value(outcome, "bad/LoadCell1-H1D3.txt", "peak_metric"), "");
    EXPECT_NE(outcome.summary.find("other files passed over: 1\n"), std::string::npos) << outcome.summary;
    EXPECT_NE(Run("bad --json").rows.find("\"problem\": \"is larger than 8 MB\", \"instrument\": null"),
              std::string::npos);
}

TEST_F(Analyse, HasAStatusForEachOutcome) {
    EXPECT_EQ(Run("archive", {}, "/dev/full").status, 3);
    EXPECT_EQ(Run("archive", {}, "&-").status, 3);
    EXPECT_EQ(Run("--threads 17 archive").status, 2);
    EXPECT_EQ(Run("--center archive/TruePeaks.txt archive").status, 2);
    EXPECT_EQ(Run("center").status, 0) << "no drop is no failure";
}

// The record's gains come from the peaks in the files. Those of now are regressed here by the sums of the definition.
TEST_F(Analyse, RegressesTheTrialsOfARecordAgain) {
    const Outcome drops = Run("archive");
    CalibrationRun run;
    run.DeviceSerialNumber = "8002-101";
    run.LoadCellRefTrials = 1;
    run.RefTrials = 1;
    run.NumberSensors = 1;
    run.LCTrialShape[0] = {2, 3, true};
    run.RefTrialShape[0] = {2, 3, false};
    const double initialGain = 0.9876;
    struct Sums {
        double xx = 0, stored = 0, now = 0;
    };
    const auto fill = [&](TrialRecord& trial, const char* prefix, const std::string& unit) {
        Sums sums;
        for (std::size_t i = 0; i < 6; ++i) {
            const std::string name =
                std::string(prefix) + "1-H" + NumberText(i / 3 + 1) + 'D' + NumberText(i % 3 + 1) + ".txt";
            trial.RefDropData[i] = ReadNumber(Value(drops, name, "written_" + unit)) + (i == 2 ? 0.5 : 0);
            trial.DropData[i] = 10 * static_cast<double>(i) + ReadNumber(Value(drops, name, "written_" + unit));
            sums.xx += trial.DropData[i] * trial.DropData[i];
            sums.stored += trial.DropData[i] * trial.RefDropData[i];
            sums.now += trial.DropData[i] * ReadNumber(Value(drops, name, "peak_" + unit));
        }
        trial.AdjFactor = sums.stored / sums.xx;
        trial.Gain = initialGain * trial.AdjFactor;
        return sums;
    };
    const Sums load = fill(run.LCTrial[0], "LoadCell", "english");
    const Sums deflection = fill(run.Sensor[0].RefTrial[0], "Reference", "metric");
    ProfileStrings strings;
    SetRunKeys(strings, run, {}, MakeDateTime(2012, 3, 9));
    SetStateKeys(strings, run, CenterConfig());
    strings.Set("Device Configuration", "NumberOfDeflectionSensors", "1");
    ReplaceTextFile(files_, archive_ / "BellmarkCalibrationRecord 09-Mar-2012.ddx", strings.Text());

    const Outcome outcome = Run("--trials archive");
    EXPECT_EQ(outcome.status, 0) << outcome.rows;
    const auto table = outcome.Table();
    ASSERT_EQ(table.size(), 3U);
    const auto column = [&](std::string_view name) {
        return static_cast<std::size_t>(std::find(table[0].begin(), table[0].end(), name) - table[0].begin());
    };
    for (const auto& [row, sums] : {std::pair(1, load), {2, deflection}}) {
        const Fields& fields = table[static_cast<std::size_t>(row)];
        EXPECT_EQ(fields[column("device")], row == 1 ? "load cell" : "sensor");
        EXPECT_NEAR(ReadNumber(fields[column("gain")]), initialGain * sums.now / sums.xx, 1e-9);
        EXPECT_NEAR(ReadNumber(fields[column("stored_gain")]), initialGain * sums.stored / sums.xx, 1e-7);
        EXPECT_NEAR(ReadNumber(fields[column("initial_gain")]), initialGain, 1e-12);
        EXPECT_NEAR(ReadNumber(fields[column("largest_peak_difference")]), -0.5, 0.3);
    }

    files_.RemoveFile(archive_ / "Reference1-H2D2.txt");
    const Outcome incomplete = Run("--trials archive");
    EXPECT_EQ(incomplete.status, 1);
    EXPECT_NE(incomplete.rows.find("Reference1-H2D2.txt: No such file or directory"), std::string::npos)
        << incomplete.rows;
}

}  // namespace
}  // namespace bellmark
