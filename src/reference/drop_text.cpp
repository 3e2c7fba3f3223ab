#include "reference/drop_text.h"

#include <algorithm>
#include <array>

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "reference/accel_integration.h"
#include "run/drop_record.h"

namespace bellmark {

namespace {

constexpr std::size_t voltsBegin = 22;
constexpr std::size_t widestRow = 86 + exponentFormRoom + 2;

/// Fills a line up to a column, counted from 1 in characters, as a tab stop does. A longer line is not changed.
class TabbedLine {
  public:
    /// The line begins at the end of the text.
    explicit TabbedLine(std::string& text) : text_(text), start_(text.size()) {}
    void TabTo(std::size_t column) {
        const std::size_t width = CharacterCount(std::string_view(text_).substr(start_));
        if (width < column - 1) text_.append(column - 1 - width, ' ');
    }

  private:
    std::string& text_;
    std::size_t start_;
};

/// Number and time of a sample, up to the column of the volts: "1,      0.0000E+00,  ".
using SampleBeginning = std::array<char, voltsBegin - 1>;

/// The same in every file.
const std::vector<SampleBeginning>& SampleBeginnings() {
    static const std::vector<SampleBeginning> beginnings = [] {
        std::vector<SampleBeginning> all(sampleCapacity);
        for (std::size_t i = 0; i < all.size(); ++i) {
            std::string text;
            TabbedLine line(text);
            text += NumberText(i + 1) + ',';
            line.TabTo(9);
            AppendFormat(text, static_cast<double>(i) * integrationStep, "0.0000E+00");
            text += ',';
            line.TabTo(voltsBegin);
            std::copy_n(text.begin(), all[i].size(), all[i].begin());
        }
        return all;
    }();
    return beginnings;
}

}  // namespace

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

void AddSampleHeading(std::string& text, std::size_t timeBegins, std::string_view timeTitle,
                      std::span<const SampleColumn> columns) {
    TabbedLine line(text);
    text += "Sample,";
    line.TabTo(timeBegins);
    text += timeTitle;
    for (const SampleColumn& column : columns) {
        line.TabTo(column.begins);
        text += column.title;
    }
    text += "\r\n";
}

void AddSampleRow(std::string& text, std::size_t sample, std::span<const SampleColumn> columns,
                  std::span<const double> values) {
    std::array<char, widestRow> line;
    line.fill(' ');
    const SampleBeginning& beginning = SampleBeginnings()[sample];
    char* end = std::copy(beginning.begin(), beginning.end(), line.data());
    for (std::size_t field = 0; field < values.size(); ++field) {
        // The column has room for a comma after every number.
        if (field > 0) *end = ',';
        end = WriteExponentForm(line.data() + columns[field].begins - 1, values[field], columns[field].decimals);
    }
    *end++ = '\r';
    *end++ = '\n';
    text.append(line.data(), end);
}

}  // namespace bellmark
