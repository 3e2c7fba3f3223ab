#include "results/certificate.h"

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "results/load_cell_evaluation.h"
#include "run/version.h"

namespace bellmark {

namespace {

constexpr const char* gainPicture = "0.000";
constexpr const char* loadCellHeading = "LOAD CELL CALIBRATION";
constexpr const char* sensorHeading = "DEFLECTION SENSOR CALIBRATION";
constexpr const char* messagesHeading = "Messages:";
constexpr const char* messageIndent = "     ";
constexpr int trialColumns = static_cast<int>(maxTrials);

std::string GainText(double gain) {
    return Format(gain, gainPicture);
}

/// Replaces keywords by values and remembers the keywords that it did not find.
class Filler {
  public:
    explicit Filler(RichText& text) : text_(text) {}

    void Replace(const std::string& keyword, const std::string& value) {
        if (!text_.ReplaceKeyword(value, keyword)) missing_.push_back(keyword);
    }
    void RemoveBlock(const char* from, const char* upTo) {
        if (!text_.RemoveBetween(from, upTo)) missing_.push_back(from);
    }
    std::vector<std::string> TakeMissing() { return std::move(missing_); }

  private:
    RichText& text_;
    std::vector<std::string> missing_;
};

void FillHeading(Filler& filler, const CalibrationRun& run, const CenterConfig& center, DateTime today) {
    filler.Replace("CalibrationDate", Format(today, "dd-mmm-yyyy"));
    filler.Replace("CenterName", center.CalibrationCenter);
    filler.Replace("CenterOperatorName", center.CalibrationCenterOperator);
    filler.Replace("FWDOwner", run.DeviceOwner);
    filler.Replace("FWDManufacturer", MakerName(run.Manufacturer));
    filler.Replace("FWDUnit", run.DeviceName);
    filler.Replace("FWDSerialNumber", run.DeviceSerialNumber);
    filler.Replace("FWDOperator", run.OperatorName);
    filler.Replace("LCName", center.ReferenceLoadCellName);
    filler.Replace("AccelName", "SN " + center.AccelerometerSerialNumber);
    filler.Replace("versionNumber", "Version " + VersionOfProgram().number);
}

void FillLoadCell(Filler& filler, const CalibrationRun& run) {
    filler.Replace("LCSerialNumber", run.LoadCellSerialNumber);
    filler.Replace("LCInit", GainText(run.LoadCellInitialGain));
    double sum = 0;
    for (int n = 1; n <= trialColumns; ++n) {
        const bool isDone = n <= run.LoadCellRefTrials;
        const double gain = run.LCTrial.at(static_cast<std::size_t>(n - 1)).Gain;
        if (isDone) sum += gain;
        filler.Replace("LC" + NumberText(n), isDone ? NumberText(n) : "");
        filler.Replace("LCG" + NumberText(n), isDone ? GainText(gain) : "");
    }
    const int trials = run.LoadCellRefTrials;
    filler.Replace("LCAvg", trials > 0 ? GainText(sum / trials) : "");
    filler.Replace("LCFin", GainText(run.NewLoadCellCalibrationCenterGain));
}

/// One line per sensor, its columns separated by tabs. A trial that was not made has an empty column.
std::string SensorTable(const CalibrationRun& run) {
    std::string table;
    for (int s = 0; s < run.NumberSensors; ++s) {
        const SensorCalRecord& sensor = run.Sensor.at(static_cast<std::size_t>(s));
        table += sensor.SerialNumber + '\t' + GainText(sensor.InitialGain);
        for (std::size_t t = 0; t < maxTrials; ++t) {
            table += '\t';
            if (static_cast<int>(t) < run.RefTrials) table += GainText(sensor.RefTrial[t].Gain);
        }
        for (std::size_t t = 0; t < maxTrials; ++t) {
            table += '\t';
            if (static_cast<int>(t) < run.RelTrials) table += GainText(sensor.RelTrial[t].Gain);
        }
        table += '\t' + GainText(sensor.FinalGain) + "\r\n";
    }
    return table;
}

void FillSensors(Filler& filler, const CalibrationRun& run) {
    for (int n = 1; n <= trialColumns; ++n) {
        filler.Replace("Ref" + NumberText(n), n <= run.RefTrials ? NumberText(n) : "");
        filler.Replace("Rel" + NumberText(n), n <= run.RelTrials ? NumberText(n) : "");
    }
    filler.Replace("SN1", SensorTable(run));
}

void AddMessage(std::string& block, const char* heading, const std::string& message) {
    if (!message.empty()) block += std::string(heading) + "\r\n" + messageIndent + message + "\r\n";
}

std::string ReferenceMessages(const CalibrationRun& run) {
    std::string messages = run.SensorRefMessage[0];
    for (std::size_t t = 1; t < run.SensorRefMessage.size(); ++t) {
        if (!run.SensorRefMessage[t].empty()) messages += "\r\n" + run.SensorRefMessage[t];
    }
    return messages;
}

std::string MessageBlock(const CalibrationRun& run, const CenterConfig& center, const CertificateBlocks& blocks) {
    std::string block = std::string(messagesHeading) + "\r\n";
    // "Too few trials" says nothing about a load cell that was not calibrated.
    const bool isJudged = blocks.loadCell || run.LoadCellRefTrials >= fewestLoadCellTrials;
    if (isJudged) AddMessage(block, "Load Cell:", run.LoadCellMessage);
    AddMessage(block, "Sensor Reference Calibration:", ReferenceMessages(run));
    AddMessage(block, "Sensor Relative Calibration:", run.SensorRelMessage);
    std::string notes;
    for (const std::string& note : center.Notes) {
        if (!Trim(note).empty()) notes += messageIndent + std::string(Trim(note)) + "\r\n";
    }
    if (!notes.empty()) block += "Comments:\r\n" + notes;
    return block;
}

}  // namespace

const char* MakerName(Make make) {
    switch (make) {
        case Make::Dynatest:
            return "Dynatest";
        case Make::CarlBro:
            return "Carlbro";
        case Make::Jils:
            return "JILS";
        case Make::Kuab:
            return "KUAB";
    }
    return "";
}

std::string CertificateName(DateTime today, const char* ending) {
    return "CalibrationCertificate" + Format(today, "dd-mmm-yyyy") + ending;
}

std::vector<std::string> FillCertificate(RichText& text, const CalibrationRun& run, const CenterConfig& center,
                                         const CertificateBlocks& blocks, DateTime today) {
    Filler filler(text);
    FillHeading(filler, run, center, today);
    if (blocks.loadCell) {
        FillLoadCell(filler, run);
    } else {
        filler.RemoveBlock(loadCellHeading, sensorHeading);
    }
    if (blocks.sensors) {
        FillSensors(filler, run);
    } else {
        filler.RemoveBlock(sensorHeading, messagesHeading);
    }
    filler.Replace(messagesHeading, MessageBlock(run, center, blocks));
    return filler.TakeMissing();
}

std::string CertificateRtf(const RichText& text) {
    constexpr std::string_view view = "\\viewkind4";
    std::string rtf = text.Rtf();
    const auto at = rtf.find(view);
    if (at != std::string::npos) rtf.insert(at + view.size(), "\\margl1440\\margr1440");
    return rtf;
}

}  // namespace bellmark
