#include "fwd/f25_file.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/center_config.h"

namespace bellmark {

namespace {

constexpr std::size_t largestFile = 16 << 20;  ///< bytes; a day's survey has less than one million
constexpr int firstRecord = 5001;
constexpr int loadCellRecord = 5200;
constexpr int firstSensorRecord = 5201;
constexpr int lastSensorRecord = 5218;
constexpr int stationRecord = 5301;
constexpr int mostDrops = 999;
constexpr double micronsPerMil = 25.4;

struct Line {
    int number = 0;
    std::string_view text;  ///< without its end
    bool isEnded = true;
};

/// The fields between commas; a text in quotes loses them, its NUL bytes and its blanks at both ends.
std::vector<std::string> FieldsOf(const Line& line) {
    std::vector<std::string> fields(1);
    bool isQuoted = false;
    for (const char letter : line.text) {
        if (letter == '"') {
            isQuoted = !isQuoted;
        } else if (letter == ',' && !isQuoted) {
            fields.emplace_back();
        } else if (letter == '\0') {
            // Devices fill texts with them that were not entered.
            if (!isQuoted) throw F25Error(line.number, "there is a NUL byte");
        } else {
            fields.back() += letter;
        }
    }
    if (isQuoted) throw F25Error(line.number, "a quotation mark is missing");
    for (std::string& field : fields) field = Trim(field);
    return fields;
}

class F25Parser {
  public:
    F25Survey Read(std::string_view text);

  private:
    void ReadLine();
    void ReadRecord(int record);
    void ReadEdition();
    void ReadUnits();
    void ReadPlate();
    void ReadSensor();
    void BeginLocation();
    void ReadDrop(int drop);

    [[noreturn]] void Refuse(const std::string& why) const { throw F25Error(line_.number, why); }
    /// The field at an index, 0 for the record's number.
    const std::string& Field(std::size_t at) const;
    double Number(std::size_t at) const;
    std::optional<DateTime> Time(std::size_t at) const;

    Line line_;
    std::vector<std::string> fields_;
    F25Survey survey_;
    F25Location location_;
    bool hasUnits_ = false;
    std::size_t lengthOfDrops_ = 0;
};

const std::string& F25Parser::Field(std::size_t at) const {
    if (at >= fields_.size())
        Refuse("record " + fields_[0] + " has only " + NumberText(fields_.size() - 1) + " values");
    return fields_[at];
}

double F25Parser::Number(std::size_t at) const {
    const std::string& field = Field(at);
    const auto number = NumberIn(field);
    if (!number || !std::isfinite(*number)) Refuse('"' + field + "\" is not a number");
    return *number;
}

/// Year, month, day, hour and minute; nothing when they are blank or no time.
std::optional<DateTime> F25Parser::Time(std::size_t at) const {
    int parts[5];
    for (std::size_t i = 0; i < 5; ++i) {
        const auto number = at + i < fields_.size() ? NumberIn(fields_[at + i]) : std::nullopt;
        if (!number || *number < 0 || *number > 9999) return std::nullopt;
        parts[i] = static_cast<int>(*number);
    }
    if (parts[0] < 1980 || parts[1] < 1 || parts[1] > 12 || parts[2] < 1 || parts[2] > 31) return std::nullopt;
    return MakeDateTime(parts[0], parts[1], parts[2], parts[3], parts[4], 0);
}

void F25Parser::ReadEdition() {
    const std::string& edition = Field(1);
    if (!edition.starts_with("25.")) Refuse("edition \"" + edition + "\" is not known, only 25");
    if (fields_.size() > 6) survey_.maker = fields_[6];
}

void F25Parser::ReadUnits() {
    if (!Field(1).starts_with("25SI")) Refuse("units \"" + Field(1) + "\" are not known, only those of \"25SI\"");
    hasUnits_ = true;
    if (fields_.size() > 2) survey_.deviceSerialNumber = fields_[2];
}

void F25Parser::ReadPlate() {
    survey_.plateRadius = Number(1);
    if (survey_.plateRadius < 50 || survey_.plateRadius > 500) {
        Refuse("a plate radius of " + fields_[1] + " mm is not possible");
    }
    for (std::size_t at = 2; at < fields_.size() && !fields_[at].starts_with('N'); ++at)
        survey_.distances.push_back(Number(at));
}

void F25Parser::ReadSensor() {
    if (Field(1) == "NA") return;
    // Serial numbers are listed between commas.
    if (fields_[1].find(',') != std::string::npos) Refuse("serial number \"" + fields_[1] + "\" holds a comma");
    survey_.sensors.push_back({fields_[1], Number(2)});
}

/// Records of a location without drops are those that the header repeats from the day's calibration.
void F25Parser::BeginLocation() {
    if (!location_.drops.empty()) survey_.locations.push_back(std::move(location_));
    location_ = {};
    location_.station = Field(5);
    location_.time = Time(9);
}

void F25Parser::ReadDrop(int drop) {
    if (!hasUnits_ || survey_.plateRadius == 0 || survey_.sensors.empty())
        Refuse("drops stand before the header's end");
    if (survey_.sensors.size() != survey_.distances.size()) {
        Refuse("the header lists " + NumberText(survey_.sensors.size()) + " sensors and " +
               NumberText(survey_.distances.size()) + " distances");
    }
    const int expected = static_cast<int>(location_.drops.size()) + 1;
    if (drop != expected) Refuse("drop " + NumberText(drop) + " stands in place of drop " + NumberText(expected));
    const std::size_t values = survey_.sensors.size() + 1;
    if (fields_.size() != values + 1) {
        Refuse("there are " + NumberText(fields_.size() - 1) + " values in place of " + NumberText(values));
    }
    // All drops are of one length, so that a line that lacks its last digits is known.
    if (!line_.isEnded && lengthOfDrops_ != 0 && line_.text.size() != lengthOfDrops_) Refuse("the file is cut");
    lengthOfDrops_ = line_.text.size();
    F25Drop& read = location_.drops.emplace_back();
    read.pressure = Number(1);
    for (std::size_t at = 2; at < fields_.size(); ++at) read.deflections.push_back(Number(at));
}

void F25Parser::ReadRecord(int record) {
    if (record >= firstSensorRecord && record <= lastSensorRecord) return ReadSensor();
    switch (record) {
        case firstRecord:
            return ReadEdition();
        case 5002:
            return ReadUnits();
        case 5003:
            if (fields_.size() > 3) survey_.fileName = fields_[3];
            return;
        case 5011:
            survey_.begun = Time(3);
            return;
        case 5020:
            return ReadPlate();
        case loadCellRecord:
            survey_.loadCell = {Field(1), Number(3)};
            return;
        case stationRecord:
            return BeginLocation();
        case 5302:
            location_.comment = fields_.back();
            return;
        default:
            return;
    }
}

void F25Parser::ReadLine() {
    if (Trim(std::string(line_.text)).empty()) return;
    fields_ = FieldsOf(line_);
    const auto number = NumberIn(fields_[0]);
    const int record =
        number && *number == std::floor(*number) && std::abs(*number) < 10000 ? static_cast<int>(*number) : 0;
    const bool isRecord = record >= firstRecord && record < firstRecord + 999;
    if (line_.number == 1 && record != firstRecord) Refuse("an F25 file begins with record 5001");
    if (isRecord) return ReadRecord(record);
    if (record < 1 || record > mostDrops) Refuse("this is neither a record nor a drop");
    ReadDrop(record);
}

F25Survey F25Parser::Read(std::string_view text) {
    if (text.size() > largestFile) Refuse("the file is larger than 16 MB");
    std::optional<bool> hasReturns;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        line_ = {line_.number + 1, text.substr(0, end), end != std::string_view::npos};
        text.remove_prefix(line_.isEnded ? end + 1 : text.size());
        const bool hasReturn = line_.text.ends_with('\r');
        if (hasReturn) line_.text.remove_suffix(1);
        if (line_.isEnded && hasReturns.value_or(hasReturn) != hasReturn) {
            Refuse("the line ends in another way than those before: the file was changed");
        }
        hasReturns = hasReturns.value_or(hasReturn);
        ReadLine();
    }
    if (!location_.drops.empty()) survey_.locations.push_back(std::move(location_));
    if (survey_.locations.empty()) Refuse("the file ends without a drop");
    return std::move(survey_);
}

// ---- the document

template <class Item>
std::string ListOf(const F25Survey& survey, const Item& item) {
    std::string list;
    for (std::size_t s = 0; s < survey.sensors.size(); ++s) list += (s > 0 ? ", " : "") + item(s);
    return list;
}

std::string DropText(const F25Survey& survey, const F25Drop& drop, bool englishUnits) {
    const double force = ForceUnderPlate(drop.pressure, survey.plateRadius, englishUnits);
    std::string text = NumberText(Round(force, englishUnits ? 1 : 4));
    for (const double microns : drop.deflections)
        text += ',' + NumberText(englishUnits ? Round(microns / micronsPerMil, 4) : microns);
    return text;
}

void AddLocation(const F25Survey& survey, const F25Location& location, bool englishUnits, PDDXFile& document) {
    PDDXSection& section = document.AddTestLocation(0);
    section.Elements("TestLocation").SetValue(location.station + ",0,0");
    if (location.time) section.Elements("TestTime").SetValue(Format(*location.time, "hh:nn:ss"));
    if (!location.comment.empty()) section.Elements("TestComment").SetValue(location.comment);
    for (const F25Drop& drop : location.drops) section.AddDropData(0).SetValue(DropText(survey, drop, englishUnits));
}

}  // namespace

F25Error::F25Error(int line, const std::string& why)
    : std::runtime_error(line > 0 ? "Line " + NumberText(line) + ": " + why + '.' : why + '.') {}

bool IsF25(std::string_view text) {
    return text.starts_with("5001,");
}

F25Survey ReadF25(std::string_view text) {
    return F25Parser().Read(text);
}

double ForceUnderPlate(double kiloPascal, double radius, bool englishUnits) {
    const double meters = radius / 1000;
    const double kilonewtons = kiloPascal * std::numbers::pi * meters * meters;
    return englishUnits ? kilonewtons / kilonewtonsPerPound : kilonewtons;
}

void FillDocument(const F25Survey& survey, bool englishUnits, PDDXFile& document) {
    const auto set = [&](const char* section, const char* key, const std::string& value) {
        document.Sections(section).Elements(key).SetValue(value);
    };
    set("Units", "LoadPlateRadiusUnits", "millimeter");
    set("Units", "LoadUnits", englishUnits ? "pound-force" : "kilo-Newton");
    // "mil" and not "mils", whose peaks are rounded to two decimals: that is more than a tenth of a micron.
    set("Units", "DeflectionUnits", englishUnits ? "mil" : "micron");
    set("Units", "SensorsLocationUnits", "millimeter");
    set("Operations Information", "FileName", survey.fileName);
    const auto& ended = survey.locations.back().time;
    if (survey.begun) set("Operations Information", "StartDate", Format(*survey.begun, "dd-mmm-yyyy"));
    if (const auto& date = ended ? ended : survey.begun)
        set("Operations Information", "EndDate", Format(*date, "dd-mmm-yyyy"));
    set("Device Information", "DeviceDesignationName", survey.maker);
    set("Device Information", "DeviceSerialNumber", survey.deviceSerialNumber);
    set("Device Information", "LoadCellSerialNumber", survey.loadCell.serialNumber);
    set("Device Information", "SensorSerialNumbers",
        ListOf(survey, [&](std::size_t s) { return survey.sensors[s].serialNumber; }));
    set("Device Configuration", "LoadPlateRadius", NumberText(survey.plateRadius));
    set("Device Configuration", "NumberOfDeflectionSensors", NumberText(survey.sensors.size()));
    set("Device Configuration", "DeflectionSensorXAxisDistances",
        ListOf(survey, [&](std::size_t s) { return NumberText(survey.distances[s]); }));
    set("Device Calibration", "LoadCellCalibrationCenterGain", NumberText(survey.loadCell.gain));
    set("Device Calibration", "SensorCalibrationCenterGain",
        ListOf(survey, [&](std::size_t s) { return NumberText(survey.sensors[s].gain); }));
    for (const F25Location& location : survey.locations) AddLocation(survey, location, englishUnits, document);
}

}  // namespace bellmark
