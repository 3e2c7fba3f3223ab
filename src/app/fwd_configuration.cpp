#include "app/fwd_configuration.h"

#include <algorithm>

#include "app/program.h"
#include "pddx/mod_pddx_read.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "run/run_document.h"

namespace bellmark {

namespace {

/// Clears what is known of the FWD itself; make and folders are chosen by the operator and stay.
void ForgetFWD(CalibrationRun& run) {
    const CalibrationRun none;
    run.DeviceDesignationName.clear();
    run.DeviceModelNumber.clear();
    run.DeviceSerialNumber.clear();
    run.DeviceLoadType.clear();
    run.OperatorName.clear();
    run.LoadCellSerialNumber.clear();
    run.LoadCellInitialGain = 0;
    run.LoadCellCalibrationDate = none.LoadCellCalibrationDate;
    run.SensorCalibrationDate = none.SensorCalibrationDate;
    for (SensorCalRecord& sensor : run.Sensor) {
        sensor.SerialNumber.clear();
        sensor.InitialGain = 0;
    }
}

/// Only the center's own record describes the center of this calibration. With the keys of another center, or with
/// those of the run's own file, a resumed run would write other documents than an uninterrupted one.
void KeepFormerSlopeFactor(PDDXSection& center, FWDReading reading) {
    const std::string lastOne = center.Elements("AccelNewSlopeFactor").Value();
    const std::string former = center.Elements("AccelOldSlopeFactor").Value();
    const bool isKnownAlready = reading == FWDReading::Resumed || (reading == FWDReading::Added && lastOne.empty());
    for (PDDXElement& element : center.Elements()) element.SetValue("");
    center.Elements("AccelOldSlopeFactor").SetValue(isKnownAlready ? former : lastOne);
}

/// FWD and load cell have one serial number per key. True when one of them held a comma.
bool ReplaceCommas(PDDXFile& document, CalibrationRun& run) {
    bool any = false;
    const auto replace = [&](std::string& number, const char* key) {
        if (number.find(',') == std::string::npos) return;
        std::replace(number.begin(), number.end(), ',', ' ');
        document.Sections("Device Information").Elements(key).SetValue(number);
        any = true;
    };
    replace(run.DeviceSerialNumber, "DeviceSerialNumber");
    replace(run.LoadCellSerialNumber, "LoadCellSerialNumber");
    return any;
}

}  // namespace

std::optional<std::string> ReadFWDConfiguration(Program& program, const Path& path, FWDReading reading) {
    try {
        return ReadFWDConfiguration(program, ProfileStrings(ReadTextFile(program.Services.files, path)), reading);
    } catch (const FileError& error) {
        program.Log(error.what());
        program.ShowBox("The file could not be read:\r\n" + PathText(path), box::exclamation);
        return {};
    }
}

std::optional<std::string> ReadFWDConfiguration(Program& program, const ProfileStrings& strings, FWDReading reading) {
    CalibrationRun& run = program.Run;
    const double sensors = ReadNumber(strings.Get("Device Configuration", "NumberOfDeflectionSensors"));
    if (sensors > static_cast<double>(maxSensors)) {
        program.ShowBox("The file tells of " + NumberText(sensors) + " deflection sensors. No more than " +
                            NumberText(maxSensors) + " can be calibrated; nothing was taken from the file.",
                        box::exclamation);
        return {};
    }
    if (reading != FWDReading::Added) ForgetFWD(run);
    ReadPDDX(strings, *program.RunDocument, reading == FWDReading::Added);
    KeepFormerSlopeFactor(program.RunDocument->Sections(centerSection), reading);
    ReadFWDKeys(*program.RunDocument, run);
    const bool hadComma = ReplaceCommas(*program.RunDocument, run);
    if (hadComma) {
        program.ShowBox(
            "A serial number of the file holds a comma. A blank stands in its place, because the files list serial "
            "numbers between commas. Please check it.",
            box::exclamation);
    }
    const std::size_t sensorCount = std::max<std::size_t>(1, static_cast<std::size_t>(run.NumberSensors));
    const auto serials = Split(Trim(strings.Get("Device Information", "SensorSerialNumbers")), ',');
    if (serials.size() > sensorCount) {
        return "The file lists " + NumberText(serials.size()) + " serial numbers for " + NumberText(run.NumberSensors) +
               " sensors: please check them.";
    }
    const auto gains = Split(Trim(strings.Get("Device Calibration", "SensorCalibrationCenterGain")), ',');
    if (gains.size() <= sensorCount) return "";
    // Decimal commas, for example, split into fields that all look like gains.
    return "The file lists " + NumberText(gains.size()) + " gains for " + NumberText(run.NumberSensors) +
           " sensors: please check them.";
}

}  // namespace bellmark
