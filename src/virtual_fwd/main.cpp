#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/command_line.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "virtual_fwd/virtual_center.h"

namespace {

using namespace bellmark;
using namespace bellmark::virtual_fwd;

constexpr const char* helpText = R"(bellmark-virtual-fwd --folder PROGRAM_FOLDER [options]

Writes an imaginary calibration center and what was measured there of one FWD:

  BellmarkCenterConfig.ini   the center's configuration
  Review/                    a calibration of load cell and deflection sensors to be gone through with the simulated
                             board; TruePeaks.txt tells what each drop really was
  FWD/Configuration.ddx      the FWD's configuration
  FWD/Trial1.ddx ...         the FWD's peaks of the load cell's drops, one file a trial
  FWD/Reference1.ddx ...     what its deflection sensors, all in the sensor stand, read of the accelerometer's drops
  FWD/Relative1.ddx ...      and of the 40 drops of a relative trial
  FWD/Monthly1.ddx ...       and of the drops of a monthly trial, five for each sensor, while they rotate in the stand
  FWD/TrueGains.txt          "name=value" a line: the gains that the calibration should find, and what was done to the
                             readings

  --seed N            of the random numbers (2012)
  --heights N         3 or 4 (4)
  --drops N           5 to 10 drops a height (6)
  --trials N          1 to 4 (2)
  --live              switches on the live demonstration board in this program folder (DemonstrationBoard.ini): Bellmark then
                      measures the drops of the FWD's files as they come, instead of reviewing them
  --units english     or metric: unit of the reference load cell and of the run

The reference load cell:
  --noise POUNDS      standard deviation of the sensor's noise (6)
  --hum POUNDS        amplitude of the mains hum of drops spoiled by it (30)
  --template          drops as flat lists of volts, in place of saved-drop files
  --spoil T-HnDn=HOW  spoils a drop of trial T, as 1-H2D3=noise; may be given many times. HOW is noise (in the zero
                      window), second (a second pulse), clipped (beyond the board's range), high (above what the load
                      cell may carry), none (no pulse), reversed (polarity), hum50 or hum60 (mains hum)

The reference accelerometer (Reference1-H1D1.txt ..., which set-up's drops for trigger level and number of drops read
too):
  --reference-trials N  0 to 4 (2)
  --accel-noise VOLTS   standard deviation of the sensor's noise (0.0008)
  --accel-drift VOLTS   the most that its offset drifts in a second (0.0004)
  --spoil-reference T-HnDn=HOW  spoils a drop of reference trial T. HOW is vibration (twice the trigger level, 80 to 200
                      ms before the pulse), motion (of the stand just before it), drift (15 mV a second), ringing (of
                      the ground), high (beyond the accelerometer's range), none (no pulse) or restless (initial burst)

The FWD:
  --make M            dynatest, carlbro (loads in kPa, gains of its sensors about 10.8), jils or kuab (deflections to
                      1 micron, sensors are numbered from 0): its name and what it writes (dynatest)
  --initial-gain G    gain that its load cell works with, four decimals (1)
  --true-gain G       gain that would be right (drawn between 0.985 and 1.015): a reading is the true load x initial
                      gain / true gain
  --fwd-scatter S     standard deviation of a reading, as a share of it (0.001)
  --fwd-offset POUNDS that every reading is too large by (0)
  --bad-reading T-HnDn  the load of this drop is read 5 % too large; may be given many times
  --fwd-load-units U  lbf, kip, psi, kPa, kPa-milimeters, kPa-meter (the same pressure, the plate's radius in other words
                      or units) or kN. The first three fit --units english, the others metric (lbf, kN)
  --fwd-deflection-units U  mils or microns (as --units)
  --fwd-resolution R  smallest step of a load, in the file's unit, 0.0001 to 1000 (lbf 1, kip 0.001, psi 0.01, kPa 0.1,
                      kN 0.01)
  --fwd-deflection-resolution R  smallest step of a deflection, in the file's unit, 0.0001 to 1000 (0.01 mils, 0.1
                      microns)

Its deflection sensors. S is a sensor's number as the make counts, T a trial:
  --sensors N         5 to 12 (9)
  --sensor-gains G    initial gains, one for all or a comma list of one each, four decimals (1; carlbro: drawn between
                      10.7 and 10.9)
  --sensor-spread S   by what share the true gain of each, which is drawn, is off its initial gain at most (0.015)
  --sensor-scatter S  standard deviation of a reading, as a share of it (0.001)
  --stand-effect S    by what share one end of the stand moves more than its middle, and the other less; it is turned
                      over after each trial (0.001)
  --relative-trials N 0 to 4 (2)
  --relative-locations N  1 or 4: over which test locations a relative trial's drops are spread (1)
  --monthly-trials N  0 to 4 (2)
  --set-effect S      by what share the sets of a monthly trial differ: standard deviation (0.002)
  --loose-sensor S    stands loosely in the monthly trials: it scatters by 1 %
  --bad-sensor S      scatters so that its standard error is too large
  --bad-sensor-reading T-HnDn:S  sensor S reads this drop of reference trial T 5 % too large; may be given many times
  --reversed-sensors T  in the file of reference trial T the sensors are in opposite order; may be given many times
  --missing-sensor T:S  sensor S is missing in the file of reference trial T; may be given many times
)";

struct CommandLineError {
    std::string why;
};

int Number(const std::string& text, int least, int most) {
    const auto number = NumberIn(text);
    if (!number || *number < least || *number > most || *number != static_cast<int>(*number)) {
        throw CommandLineError{"\"" + text + "\" is not a number from " + NumberText(least) + " to " +
                               NumberText(most)};
    }
    return static_cast<int>(*number);
}

double Amount(const std::string& text) {
    const auto number = NumberIn(text);
    if (!number || *number < 0) throw CommandLineError{"\"" + text + "\" is not an amount"};
    return *number;
}

double Amount(const std::string& text, double least, double most) {
    const double amount = Amount(text);
    if (amount < least || amount > most) throw CommandLineError{"\"" + text + "\" is out of range"};
    return amount;
}

DropNumber Drop(const std::string& text) {
    const auto number = DropNumberIn(text);
    if (!number) throw CommandLineError{"\"" + text + "\" does not tell a drop"};
    return *number;
}

/// "1-H2D3=noise"
template <class Kind>
void AddSpoiled(std::map<DropNumber, Kind>& spoiled, const std::string& text,
                std::optional<Kind> (*kindNamed)(std::string_view)) {
    const auto equal = text.find('=');
    const auto kind = equal == std::string::npos ? std::nullopt : kindNamed(text.substr(equal + 1));
    if (!kind) throw CommandLineError{"\"" + text + "\" does not tell a drop and how to spoil it"};
    spoiled[Drop(text.substr(0, equal))] = *kind;
}

/// "1-H2D3:4": the drop before the colon, the sensor after it.
template <class Read>
auto BeforeColon(const std::string& text, const Read& read) {
    const auto colon = text.find(':');
    if (colon == std::string::npos) throw CommandLineError{"\"" + text + "\" does not tell a sensor"};
    return std::pair(read(text.substr(0, colon)), Number(text.substr(colon + 1), 0, static_cast<int>(maxSensors)));
}

std::vector<double> Gains(const std::string& text) {
    std::vector<double> gains;
    for (const std::string& gain : Split(text, ',')) gains.push_back(Amount(gain, 0.001, 1000));
    return gains;
}

int Locations(const std::string& text) {
    const int locations = Number(text, 1, 4);
    if (locations != 1 && locations != 4) throw CommandLineError{"the drops are spread over 1 or 4 locations"};
    return locations;
}

bool ReadUnits(const std::string& text) {
    if (text != "english" && text != "metric") throw CommandLineError{"units are english or metric"};
    return text == "metric";
}

template <class Form>
Form Known(const std::optional<Form>& form, const std::string& text, const char* what = "unit of an FWD's file") {
    if (!form) throw CommandLineError{"\"" + text + "\" is no " + what};
    return *form;
}

struct CommandLine {
    std::optional<Path> folder;
    CenterOptions options;
    bool help = false;
};

using OptionReaders = std::map<std::string_view, std::function<void(const std::string&)>>;

/// The options with a value.
OptionReaders ReadersOf(CommandLine& line) {
    CenterOptions& options = line.options;
    FWDOptions& fwd = line.options.fwd;
    return {{"--folder", [&](auto& text) { line.folder = PathFromText(text); }},
            {"--seed", [&](auto& text) { options.seed = static_cast<std::uint64_t>(Number(text, 0, 2'000'000'000)); }},
            {"--heights", [&](auto& text) { options.heights = Number(text, 3, 4); }},
            {"--drops", [&](auto& text) { options.drops = Number(text, 5, 10); }},
            {"--trials", [&](auto& text) { options.trials = Number(text, 1, 4); }},
            {"--units", [&](auto& text) { options.metric = ReadUnits(text); }},
            {"--noise", [&](auto& text) { options.noisePounds = Amount(text); }},
            {"--hum", [&](auto& text) { options.humPounds = Amount(text); }},
            {"--spoil", [&](auto& text) { AddSpoiled(options.spoiled, text, SpoilNamed); }},
            {"--reference-trials", [&](auto& text) { options.referenceTrials = Number(text, 0, 4); }},
            {"--accel-noise", [&](auto& text) { options.accelNoiseVolts = Amount(text); }},
            {"--accel-drift", [&](auto& text) { options.accelDriftVoltsPerSecond = Amount(text); }},
            {"--spoil-reference", [&](auto& text) { AddSpoiled(options.spoiledReference, text, AccelSpoilNamed); }},
            {"--initial-gain", [&](auto& text) { fwd.initialGain = Amount(text, 0.001, 1000); }},
            {"--true-gain", [&](auto& text) { fwd.trueGain = Amount(text, 0.001, 1000); }},
            {"--fwd-scatter", [&](auto& text) { fwd.scatter = Amount(text); }},
            {"--fwd-offset", [&](auto& text) { fwd.offsetPounds = Amount(text); }},
            {"--bad-reading", [&](auto& text) { fwd.badReadings.insert(Drop(text)); }},
            {"--fwd-load-units", [&](auto& text) { fwd.loads = Known(LoadFormNamed(text), text); }},
            {"--fwd-deflection-units", [&](auto& text) { fwd.deflections = Known(DeflectionFormNamed(text), text); }},
            {"--fwd-resolution", [&](auto& text) { fwd.loadResolution = Amount(text, 0.0001, 1000); }}};
}

int TrialNumber(const std::string& text) {
    return Number(text, 1, 4);
}

/// The options of the deflection sensors.
OptionReaders SensorReadersOf(FWDOptions& fwd) {
    SensorOptions& sensors = fwd.sensors;
    return {
        {"--make", [&](auto& text) { fwd.make = Known(MakeNamed(text), text, "make"); }},
        {"--fwd-deflection-resolution", [&](auto& text) { fwd.deflectionResolution = Amount(text, 0.0001, 1000); }},
        {"--sensors", [&](auto& text) { sensors.count = Number(text, 5, static_cast<int>(maxSensors)); }},
        {"--sensor-gains", [&](auto& text) { sensors.initialGains = Gains(text); }},
        {"--sensor-scatter", [&](auto& text) { sensors.scatter = Amount(text); }},
        {"--stand-effect", [&](auto& text) { sensors.standEffect = Amount(text); }},
        {"--relative-trials", [&](auto& text) { sensors.relativeTrials = Number(text, 0, 4); }},
        {"--relative-locations", [&](auto& text) { sensors.relativeLocations = Locations(text); }},
        {"--sensor-spread", [&](auto& text) { sensors.gainSpread = Amount(text, 0, 0.5); }},
        {"--monthly-trials", [&](auto& text) { sensors.monthlyTrials = Number(text, 0, 4); }},
        {"--set-effect", [&](auto& text) { sensors.setEffect = Amount(text); }},
        {"--loose-sensor", [&](auto& text) { sensors.looseSensor = Number(text, 0, static_cast<int>(maxSensors)); }},
        {"--bad-sensor", [&](auto& text) { sensors.badSensor = Number(text, 0, static_cast<int>(maxSensors)); }},
        {"--bad-sensor-reading", [&](auto& text) { sensors.badReadings.insert(BeforeColon(text, Drop)); }},
        {"--reversed-sensors", [&](auto& text) { sensors.reversedTrials.insert(TrialNumber(text)); }},
        {"--missing-sensor", [&](auto& text) { sensors.missing.insert(BeforeColon(text, TrialNumber)); }}};
}

void RefuseMissingDrop(const CenterOptions& options, int trials, const DropNumber& number) {
    const auto within = [](int value, int most) { return value >= 1 && value <= most; };
    if (within(number.trial, trials) && within(number.height, options.heights) && within(number.drop, options.drops))
        return;
    throw CommandLineError{"there is no drop " + DropNumberText(number)};
}

void RefuseMissingSensor(const FWDOptions& fwd, int sensor) {
    const int index = sensor - fwd.make.firstSensorNumber;
    if (index < 0 || index >= fwd.sensors.count) throw CommandLineError{"there is no sensor " + NumberText(sensor)};
}

void RefuseMissingTrial(const CenterOptions& options, int trial) {
    if (trial > options.referenceTrials) throw CommandLineError{"there is no reference trial " + NumberText(trial)};
}

void RefuseWrongSensorOptions(const CenterOptions& options) {
    const SensorOptions& sensors = options.fwd.sensors;
    for (const auto& sensor : {sensors.badSensor, sensors.looseSensor}) {
        if (sensor) RefuseMissingSensor(options.fwd, *sensor);
    }
    for (const auto& [number, sensor] : sensors.badReadings) {
        RefuseMissingDrop(options, options.referenceTrials, number);
        RefuseMissingSensor(options.fwd, sensor);
    }
    for (const int trial : sensors.reversedTrials) RefuseMissingTrial(options, trial);
    for (const auto& [trial, sensor] : sensors.missing) {
        RefuseMissingTrial(options, trial);
        RefuseMissingSensor(options.fwd, sensor);
    }
    const std::size_t gains = sensors.initialGains.size();
    if (gains > 1 && gains != static_cast<std::size_t>(sensors.count))
        throw CommandLineError{NumberText(sensors.count) + " sensors do not have " + NumberText(gains) + " gains"};
}

void RefuseWrongDrops(const CenterOptions& options) {
    for (const auto& [number, spoil] : options.spoiled) RefuseMissingDrop(options, options.trials, number);
    for (const auto& [number, spoil] : options.spoiledReference)
        RefuseMissingDrop(options, options.referenceTrials, number);
    for (const DropNumber& number : options.fwd.badReadings) RefuseMissingDrop(options, options.trials, number);
}

CommandLine ReadCommandLine(const std::vector<std::string>& words) {
    CommandLine line;
    line.options.referenceTrials = 2;
    line.options.fwd.sensors.relativeTrials = 2;
    line.options.fwd.sensors.monthlyTrials = 2;
    OptionReaders readers = ReadersOf(line);
    readers.merge(SensorReadersOf(line.options.fwd));
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--help" || word == "-h") {
            line.help = true;
        } else if (word == "--template") {
            line.options.templateForm = true;
        } else if (word == "--live") {
            line.options.live = true;
        } else if (const auto reader = readers.find(word); reader == readers.end()) {
            throw CommandLineError{"\"" + word + "\" is not understood"};
        } else if (++i == words.size()) {
            throw CommandLineError{word + " needs a value"};
        } else {
            reader->second(words[i]);
        }
    }
    if (!line.help && !line.folder) throw CommandLineError{"--folder is missing"};
    RefuseWrongDrops(line.options);
    RefuseWrongSensorOptions(line.options);
    return line;
}

}  // namespace

int main(int count, char** words) {
    try {
        const CommandLine line = ReadCommandLine(CommandLineWords(count, words));
        if (line.help) {
            std::cout << helpText;
            return 0;
        }
        DiskFileSystem files;
        WriteCenter(files, *line.folder, line.options, SystemClock().Now());
        const int drops = line.options.heights * line.options.drops;
        std::cout << "Wrote an imaginary center with " << line.options.trials * drops << " load cell drops and "
                  << line.options.referenceTrials * drops << " accelerometer drops to " << PathText(*line.folder)
                  << '\n';
        return 0;
    } catch (const CommandLineError& error) {
        std::cerr << "bellmark-virtual-fwd: " << error.why << ". See bellmark-virtual-fwd --help.\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "bellmark-virtual-fwd: " << error.what() << '\n';
        return 1;
    }
}
