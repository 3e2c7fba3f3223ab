#include "results/fwd_history.h"

#include <algorithm>
#include <stdexcept>

#include "pddx/mod_pddx_read.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/run_document.h"

namespace bellmark {

namespace {

constexpr const char* device = "Device Information";
constexpr const char* calibrations = "Device Calibration";
constexpr const char* countKey = "NumberCalibrations";
constexpr const char* shownGain = "0.000";
constexpr std::string_view entryPrefix = "device calibration_";
constexpr int mostMissing = 1000;  // the reader of a document puts up with as many

std::string EntryName(int number) {
    return "Device Calibration_" + NumberText(number);
}

/// The number in the name of a section; 0 when it is no entry, or is written otherwise than the program does.
int EntryNumber(std::string_view lowerName) {
    if (!StartsWith(lowerName, entryPrefix)) return 0;
    const std::string_view digits = lowerName.substr(entryPrefix.size());
    const auto number = NumberIn(digits);
    if (!number || *number < 1 || *number > mostCalibrations) return 0;
    const int whole = static_cast<int>(*number);
    return NumberText(whole) == digits ? whole : 0;
}

std::vector<std::string> Fields(const std::string& list) {
    if (Trim(list).empty()) return {};
    std::vector<std::string> fields = Split(list, ',');
    for (std::string& field : fields) field = Trim(field);
    return fields;
}

EarlierCalibration CalibrationIn(const PDDXSection& section) {
    const auto value = [&](const char* key) { return std::string(Trim(section.Elements(key).Value())); };
    return {value("LoadCellSerialNumber"),
            value("LoadCellCalibrationCenterDate"),
            value("LoadCellCalibrationCenterGain"),
            value("SensorCalibrationCenterDate"),
            Fields(value("SensorSerialNumbers")),
            Fields(value("SensorCalibrationCenterGain")),
            value("CalCenterIDCode")};
}

HistoryCell GainCell(const std::string& text) {
    if (text.empty()) return {};
    if (const auto gain = NumberIn(text)) return {Format(*gain, shownGain), {}};
    return {text, "The file has no number here."};
}

bool AreOthers(const std::string& then, const std::string& now) {
    return !then.empty() && !now.empty() && !EqualIgnoringCase(then, Trim(now));
}

HistoryCell LoadCellCell(const EarlierCalibration& calibration, const CalibrationRun& run) {
    HistoryCell cell = GainCell(calibration.loadCellGain);
    const bool isOther = AreOthers(calibration.loadCellSerialNumber, run.LoadCellSerialNumber);
    if (cell.doubt.empty() && !cell.text.empty() && isOther) {
        cell.doubt = "Of the load cell " + calibration.loadCellSerialNumber + '.';
    }
    return cell;
}

HistoryCell SensorCell(const EarlierCalibration& calibration, const CalibrationRun& run, std::size_t sensor) {
    if (sensor >= calibration.sensorGains.size()) return {};
    HistoryCell cell = GainCell(calibration.sensorGains[sensor]);
    const auto& serials = calibration.sensorSerialNumbers;
    const std::string then = sensor < serials.size() ? serials[sensor] : std::string();
    if (cell.doubt.empty() && !cell.text.empty() && AreOthers(then, run.Sensor.at(sensor).SerialNumber)) {
        cell.doubt = "Of the sensor " + then + ", which was in this place.";
    }
    return cell;
}

/// A list that is longer than the table shows must not pass for a whole one.
HistoryCell DateCell(const EarlierCalibration& calibration, const CalibrationRun& run) {
    HistoryCell cell{calibration.Date(), {}};
    const std::size_t gains = calibration.sensorGains.size();
    if (gains > static_cast<std::size_t>(std::max(run.NumberSensors, 0))) {
        cell.doubt = "The file has gains of " + NumberText(gains) + " sensors.";
    }
    return cell;
}

void SetLoadCell(ProfileStrings& strings, const std::string& entry, const CalibrationRun& run,
                 const std::string& today) {
    const std::string& accepted = run.NewLoadCellCalibrationCenterDate;
    strings.Set(entry, "LoadCellSerialNumber", run.LoadCellSerialNumber);
    strings.Set(entry, "LoadCellCalibrationCenterDate", accepted.empty() ? today : accepted);
    strings.Set(entry, "LoadCellCalibrationCenterGain", NumberText(run.NewLoadCellCalibrationCenterGain));
}

void SetSensors(ProfileStrings& strings, const std::string& entry, const CalibrationRun& run,
                const std::string& today) {
    strings.Set(entry, "NumberOfDeflectionSensors", NumberText(run.NumberSensors));
    strings.Set(entry, "SensorCalibrationCenterDate", today);
    strings.Set(entry, "SensorSerialNumbers", SensorSerialNumbers(run));
    strings.Set(entry, "SensorCalibrationCenterGain", SensorGains(run, &SensorCalRecord::FinalGain));
}

/// The document with the calibrations up to a number that only the history holds.
std::string WithMissingOnes(std::string_view document, const ProfileStrings& history, int highest) {
    const ProfileStrings strings(document);
    std::string text(document);
    for (int number = 1; number <= highest; ++number) {
        const std::string entry = EntryName(number);
        if (strings.HasSection(entry) || !history.HasSection(entry)) continue;
        if (!text.empty() && text.back() != '\n' && text.back() != '\r') text += "\r\n";
        text += history.SectionText(entry);
    }
    return text;
}

}  // namespace

std::vector<EarlierCalibration> ReadHistory(const ProfileStrings& strings, PDDXFile& document) {
    const int count = PDDXCount(strings.Get(calibrations, countKey));
    const int highest = HighestCalibration(strings);
    if (count > mostCalibrations || count > highest + mostMissing) {
        throw std::runtime_error("It counts " + NumberText(count) + " calibrations and holds none above number " +
                                 NumberText(highest) + '.');
    }
    ReadPDDX(strings, document, false);
    std::vector<EarlierCalibration> history(static_cast<std::size_t>(count));
    for (int number = 1; number <= count; ++number) {
        const std::string entry = EntryName(number);
        if (!document.Sections().Contains(entry)) continue;
        history[static_cast<std::size_t>(number - 1)] = CalibrationIn(document.Sections(entry));
    }
    return history;
}

int HighestCalibration(const ProfileStrings& strings) {
    int highest = 0;
    for (const std::string& name : strings.SectionNames()) highest = std::max(highest, EntryNumber(name));
    return highest;
}

std::vector<std::string> DeviceDifferences(const PDDXFile& document, const CalibrationRun& run) {
    struct Identity {
        const char* key;
        const std::string& ofRun;
        const char* name;
    };
    const Identity identities[] = {{"DeviceDesignationName", run.DeviceDesignationName, "FWD name"},
                                   {"DeviceModelNumber", run.DeviceModelNumber, "FWD model number"},
                                   {"DeviceSerialNumber", run.DeviceSerialNumber, "FWD Serial Number"}};
    std::vector<std::string> differences;
    for (const Identity& identity : identities) {
        const std::string& inFile = document.Sections(device).Elements(identity.key).Value();
        if (Trim(inFile) != Trim(identity.ofRun)) differences.emplace_back(identity.name);
    }
    return differences;
}

std::vector<std::string> HistoryHeadings(const CalibrationRun& run) {
    std::vector<std::string> headings{"Date", "Calibration Center", "Load Cell Center Gain"};
    for (int sensor = 0; sensor < run.NumberSensors; ++sensor) {
        const std::string& serial = run.Sensor.at(static_cast<std::size_t>(sensor)).SerialNumber;
        headings.push_back((sensor == 0 ? "Sensor Center Gains\n" : "\n") + serial);
    }
    return headings;
}

std::vector<HistoryCell> HistoryRow(const EarlierCalibration& calibration, const CalibrationRun& run) {
    std::vector<HistoryCell> row{
        DateCell(calibration, run), {calibration.centerCode, {}}, LoadCellCell(calibration, run)};
    for (int sensor = 0; sensor < run.NumberSensors; ++sensor) {
        row.push_back(SensorCell(calibration, run, static_cast<std::size_t>(sensor)));
    }
    return row;
}

std::string WithHistory(std::string_view document, const ProfileStrings& history) {
    ProfileStrings strings(WithMissingOnes(document, history, HighestCalibration(history)));
    const int count = PDDXCount(history.Get(calibrations, countKey));
    const bool isGreater = count > PDDXCount(strings.Get(calibrations, countKey)) && count <= mostCalibrations;
    if (isGreater) strings.Set(calibrations, countKey, NumberText(count));
    return strings.Text();
}

HistoryUpdate AddRunToHistory(std::string_view document, const ProfileStrings& history, const CalibrationRun& run,
                              DateTime now) {
    const int counted = std::min(PDDXCount(history.Get(calibrations, countKey)), mostCalibrations);
    ProfileStrings strings(WithMissingOnes(document, history, counted));
    const int inDocument = std::max(PDDXCount(strings.Get(calibrations, countKey)), HighestCalibration(strings));
    const int number = std::max(counted, inDocument) + 1;
    if (number > mostCalibrations) {
        throw std::runtime_error("The history has " + NumberText(number - 1) +
                                 " calibrations; more than 32767 cannot be counted.");
    }
    const std::string entry = EntryName(number);
    const std::string today = Format(now, "dd-mmm-yyyy");
    strings.Set(calibrations, countKey, NumberText(number));
    if (run.LoadCellCalComplete) SetLoadCell(strings, entry, run, today);
    // The reference stage decides. Before gains are added that are not accepted, the screen asks.
    if (run.SensorRefCalComplete) SetSensors(strings, entry, run, today);
    return {strings.Text(), number};
}

}  // namespace bellmark
