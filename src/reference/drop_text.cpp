#include "reference/drop_text.h"

#include <string_view>

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "reference/accel_integration.h"
#include "run/drop_record.h"

namespace bellmark {

void TabbedLine::TabTo(std::size_t column) {
    const std::size_t width = CharacterCount(std::string_view(text_).substr(start_));
    if (width < column - 1) text_.append(column - 1 - width, ' ');
}

void AddLine(std::string& text, const std::string& line) {
    (text += line) += "\r\n";
}

void AddDropHeading(std::string& text, const CalibrationRun& run, const CenterConfig& center, DateTime now) {
    AddLine(text, "FWD Owner = " + run.DeviceOwner);
    AddLine(text, "FWD Name = " + run.DeviceName);
    AddLine(text, "FWD Serial Number = " + run.DeviceSerialNumber);
    AddLine(text, "Date & Time = " + Format(now, "dd-mmm-yyyy, hh:mm:ss"));
    AddLine(text, "FWD Calibration Center Code = " + NumberText(center.CalCenterIDCode));
    AddLine(text, "FWD Calibration Center = " + center.CalibrationCenter);
    AddLine(text, "");
}

const std::vector<std::string>& SampleBeginnings() {
    static const std::vector<std::string> beginnings = [] {
        std::vector<std::string> texts(sampleCapacity);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            TabbedLine line(texts[i]);
            texts[i] += NumberText(i + 1) + ',';
            line.TabTo(9);
            AppendFormat(texts[i], static_cast<double>(i) * integrationStep, "0.0000E+00");
            texts[i] += ',';
            line.TabTo(22);
        }
        return texts;
    }();
    return beginnings;
}

}  // namespace bellmark
