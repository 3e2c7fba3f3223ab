// The imaginary FWD's files are read back like an FWD's file, and must give the true values of the drops.
#include "virtual_fwd/fwd_documents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "pddx/mod_pddx_read.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "tests/pddx/memory_file_system.h"
#include "tests/support/temporary_folder.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {
namespace {

const DateTime now = MakeDateTime(2012, 3, 9);

struct LoadUnitCase {
    const char* name;
    const char* loadUnits;
    const char* radiusUnits;
    const char* radius;
    const char* firstLoad;
    const char* secondLoad;
    double factor;  ///< from the file's unit to the run's
    double runUnitsPerPound;
    double step;  ///< resolution of the file
};

// Loads of 6025.14 and 16100.5 pounds, divided by the true gain of 1.01 and converted by an independent calculation,
// with a pound of 0.0044482 kN and plates of 5.9055 inches or 0.15 m. The factors to pounds and kN are those of an
// importer: 3.14159 x 5.9055² = 109.5627, 3.14159 x 0.15² = 0.0706858.
const LoadUnitCase loadUnitCases[] = {
    {"lbf", "pound-force", "inch", "5.9055", "5965", "15941", 1, 1, 1},
    {"kip", "kip", "inch", "5.9055", "5.965", "15.941", 1000, 1, 0.001},
    {"psi", "pound-force per square inch", "inch", "5.9055", "54.45", "145.50", 109.5627, 1, 0.01},
    {"kPa", "kilo-Pascal", "millimeter", "150", "375.4", "1003.2", 0.0706858, 0.0044482, 0.1},
    {"kPa-milimeters", "kilo-Pascal", "milimeters", "150", "375.4", "1003.2", 0.0706858, 0.0044482, 0.1},
    {"kPa-meter", "kilo-Pascal", "meter", "0.15", "375.4", "1003.2", 0.0706858, 0.0044482, 0.1},
    {"kN", "kilo-Newton", "millimeter", "150", "26.54", "70.91", 1, 0.0044482, 0.01},
};

TEST(FWDDocuments, LoadsInEveryUnitAreTheTrueOnes) {
    Random drawn(1);
    VirtualFWD fwd = MakeFWD({}, drawn);
    fwd.loadCell = {1, 1.01, 0, 0};
    fwd.deflections = DeflectionFormNamed("mils").value();
    for (const LoadUnitCase& unit : loadUnitCases) {
        SCOPED_TRACE(unit.name);
        fwd.loads = LoadFormNamed(unit.name).value();
        Random random(1);
        const double truePounds[] = {6025.14, 16100.5};
        MemoryFileSystem files;
        files.contents["Trial1.ddx"] = TrialText(
            fwd, {"Trial1", "", {ReadDrop(fwd, {}, truePounds[0], random), ReadDrop(fwd, {}, truePounds[1], random)}},
            now);
        PDDXFile document;
        EXPECT_EQ(ReadPDDXFile(files, "Trial1.ddx", document, false).numberOfSensors, 9);
        EXPECT_EQ(document.Sections("Deflection Data").Elements("NumberOfTestLocations").Value(), "1");
        EXPECT_EQ(document.Sections("Units").Elements("LoadUnits").Value(), unit.loadUnits);
        EXPECT_EQ(document.Sections("Units").Elements("LoadPlateRadiusUnits").Value(), unit.radiusUnits);
        EXPECT_EQ(document.Sections("Device Configuration").Elements("LoadPlateRadius").Value(), unit.radius);
        const PDDXSection& location = document.Sections("Test Location 1");
        EXPECT_EQ(location.Elements("NumberOfDrops").Value(), "2");
        const char* expected[] = {unit.firstLoad, unit.secondLoad};
        for (int drop = 0; drop < 2; ++drop) {
            const std::string load = GetListField(1, location.Elements("DropData_" + NumberText(drop + 1)).Value());
            EXPECT_EQ(load, expected[drop]);
            // Half a step, and one part in a million for the rounded factor.
            const double trueLoad = truePounds[drop] * unit.runUnitsPerPound;
            EXPECT_NEAR(ReadNumber(load) * unit.factor * 1.01, trueLoad,
                        unit.step / 2 * unit.factor * 1.01 + 1e-6 * trueLoad);
        }
    }
}

TEST(FWDDocuments, DeflectionsFillTheFieldsBehindTheLoad) {
    Random drawn(1);
    VirtualFWD fwd = MakeFWD({}, drawn);
    fwd.loads = LoadFormNamed("lbf").value();
    struct Case {
        const char* units;
        double underThePlate;
        double step;
    };
    // 310 microns under 9000 pounds are 12.205 mils.
    for (const auto& [units, underThePlate, step] : {Case{"mils", 12.205, 0.01}, Case{"microns", 310, 0.1}}) {
        SCOPED_TRACE(units);
        fwd.deflections = DeflectionFormNamed(units).value();
        Random random(1);
        const ProfileStrings file(TrialText(fwd, {"Trial1", "", {ReadDrop(fwd, {}, 9000, random)}}, now));
        EXPECT_EQ(file.Get("Units", "DeflectionUnits"), units);
        const auto fields = Split(file.Get("Test Location 1", "DropData_1"), ',');
        ASSERT_EQ(fields.size(), 10U);
        EXPECT_NEAR(ReadNumber(fields[1]), underThePlate, 0.01 * underThePlate);
        for (std::size_t i = 2; i < fields.size(); ++i) EXPECT_LT(ReadNumber(fields[i]), ReadNumber(fields[i - 1]));
        const double steps = ReadNumber(fields[9]) / step;
        EXPECT_NEAR(steps, std::round(steps), 1e-6);
    }
}

struct WrittenCenter {
    TemporaryFolder folder;
    DiskFileSystem files;

    explicit WrittenCenter(const CenterOptions& options) { WriteCenter(files, folder.Folder(), options, now); }
    std::string Text(const Path& name) const { return ReadTextFile(files, folder / name); }
};

CenterOptions SmallCenter() {
    CenterOptions options;
    options.templateForm = true;
    options.heights = 3;
    options.drops = 5;
    options.trials = 1;
    options.referenceTrials = 0;
    return options;
}

TEST(FWDDocuments, TrialsBelongToTheTruePeaks) {
    CenterOptions options = SmallCenter();
    options.trials = 2;
    options.spoiled[{1, 1, 2}] = Spoil::Reversed;
    options.fwd.initialGain = 1.005;
    options.fwd.trueGain = 0.99;
    options.fwd.scatter = 0;
    options.fwd.badReadings = {{2, 2, 3}};
    const WrittenCenter center(options);

    const std::string truePeaks = center.Text("Review/TruePeaks.txt");
    const auto lines = SplitLines(truePeaks);
    ASSERT_EQ(lines.size(), 32U);  // two headings
    for (std::size_t i = 1; i <= 30; ++i) {
        const auto fields = Split(lines[i], '\t');
        const ProfileStrings trial(center.Text("FWD/Trial" + fields[0] + ".ddx"));
        const int drop = static_cast<int>((ReadNumber(fields[1]) - 1) * 5 + ReadNumber(fields[2]));
        const double read = ReadNumber(trial.Get("Test Location 1", "DropData_" + NumberText(drop)));
        const double factor = fields[0] == "2" && fields[1] == "2" && fields[2] == "3" ? 1.05 : 1;
        EXPECT_NEAR(read, std::abs(ReadNumber(fields[3])) * 1.005 / 0.99 * factor, 0.51) << lines[i];
    }
    EXPECT_EQ(center.Text("FWD/TrueGains.txt"),
              "TrueGain=0.99\r\nInitialGain=1.005\r\nScatter=0\r\nOffsetPounds=0\r\nLoadUnits=pound-force\r\n"
              "Resolution=1\r\nBadReading.2-H2D3=1.05\r\n");
    for (const char* name : {"FWD/Configuration.ddx", "FWD/Trial2.ddx", "Review/InterimCal.DDX"}) {
        const ProfileStrings file(center.Text(name));
        EXPECT_EQ(file.Get("Device Calibration", "LoadCellCalibrationCenterGain"), "1.0050") << name;
        EXPECT_EQ(file.Get("Device Information", "LoadCellSerialNumber"), "LC-8002") << name;
    }
}

// Both forms hold the drops of the deflection sensors beside those of the load cell, which stay unchanged.
TEST(FWDDocuments, ReferenceDropsBelongToTheTruePeaks) {
    CenterOptions options = SmallCenter();
    const WrittenCenter loadCellAlone(options);
    options.referenceTrials = 2;
    const WrittenCenter templates(options);
    for (const char* name : {"FWD/Trial1.ddx", "Review/LoadCell1_014.txt"})
        EXPECT_EQ(templates.Text(name), loadCellAlone.Text(name)) << name;
    const std::string peaks = templates.Text("Review/TruePeaks.txt");
    const auto lines = SplitLines(peaks);
    ASSERT_EQ(lines.size(), 47U);
    EXPECT_EQ(lines[16], "Reference trial\tHeight\tDrop\tPeak (microns)\tPeak (mils)");

    const ProfileStrings gains("[G]\r\n" + templates.Text("FWD/TrueGains.txt"));
    const double gain = ReadNumber(gains.Get("G", "Sensor5.TrueGain"));
    options.templateForm = false;
    options.spoiledReference[{2, 3, 5}] = AccelSpoil::Restless;
    const WrittenCenter saved(options);
    for (const auto& [line, file, templateFile] :
         {std::tuple(17, "Reference1-H1D1.txt", "Ref1_000.txt"), {46, "Reference2-H3D5.txt", "Ref2_014.txt"}}) {
        const auto fields = Split(lines[static_cast<std::size_t>(line)], '\t');
        const ProfileStrings drop("[Drop]\r\n" + saved.Text(Path("Review") / file));
        const double microns = ReadNumber(fields[3]);
        EXPECT_NEAR(ReadNumber(drop.Get("Drop", "Peak Value (microns)")), microns, 0.01 * microns);
        EXPECT_NEAR(ReadNumber(fields[4]), microns / 25.4, 0.001);
        const double restless = ReadNumber(drop.Get("Drop", "Initial Burst Std.Dev (volts)"));
        EXPECT_NEAR(restless, line == 46 ? 0.008 : 0.0008, 0.0002 * (line == 46 ? 5 : 1));
        EXPECT_NEAR(ReadNumber(drop.Get("Drop", "Initial Burst Abs.Acceleration (g)")), 1, 0.002);
        const std::string volts = templates.Text(Path("Review") / templateFile);
        EXPECT_EQ(SplitLines(volts).size(), 15000U);

        // The FWD's sensors saw the same drop.
        const std::string folder = "FWD/Reference" + fields[0];
        const ProfileStrings trial(saved.Text(folder + ".ddx"));
        const auto read = Split(trial.Get("Test Location 1", line == 46 ? "DropData_15" : "DropData_1"), ',');
        ASSERT_EQ(read.size(), 10U);
        EXPECT_NEAR(ReadNumber(read[5]) * gain, ReadNumber(fields[4]), 0.006 * ReadNumber(fields[4]));
    }
    EXPECT_EQ(saved.Text("FWD/Reference1.ddx"), templates.Text("FWD/Reference1.ddx"));
}

TEST(FWDDocuments, SeedDecidesAndWhatIsGivenChangesNothingElse) {
    const WrittenCenter first(SmallCenter());
    CenterOptions options = SmallCenter();
    options.trials = 3;
    options.fwd.trueGain = ReadNumber(ProfileStrings("[G]\r\n" + first.Text("FWD/TrueGains.txt")).Get("G", "TrueGain"));
    EXPECT_GE(*options.fwd.trueGain, 0.985);
    EXPECT_LE(*options.fwd.trueGain, 1.015);
    const WrittenCenter same(options);
    EXPECT_EQ(first.Text("FWD/Trial1.ddx"), same.Text("FWD/Trial1.ddx"));
    EXPECT_EQ(first.Text("FWD/TrueGains.txt"), same.Text("FWD/TrueGains.txt"));
    const ProfileStrings second(same.Text("FWD/Trial2.ddx")), third(same.Text("FWD/Trial3.ddx"));
    EXPECT_NE(second.Get("Test Location 1", "DropData_1"), third.Get("Test Location 1", "DropData_1"));
    options.fwd.trueGain.reset();
    options.seed += 1;
    EXPECT_NE(WrittenCenter(options).Text("FWD/TrueGains.txt"), same.Text("FWD/TrueGains.txt"));
}

TEST(DropNumber, IsReadWholeOrNotAtAll) {
    EXPECT_EQ(DropNumberIn("2-H3D10"), (DropNumber{2, 3, 10}));
    EXPECT_EQ(DropNumberText({2, 3, 10}), "2-H3D10");
    for (const char* wrong : {"", "2", "2-H", "2-H3", "2-H3D", "2-D3H1", "2-H3D1x", "x-H3D1"})
        EXPECT_FALSE(DropNumberIn(wrong)) << wrong;
}

}  // namespace
}  // namespace bellmark::virtual_fwd
