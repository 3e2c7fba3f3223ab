#include "app/mod_shared.h"

#include <cmath>

#include "app/doors.h"
#include "app/program.h"
#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

bool FileExists(const FileSystem& files, const Path& path) {
    return !FilesMatching(files, path.parent_path(), PathText(path.filename())).empty();
}

Path BrowseForFolder(Dialogs& dialogs, const std::string& prompt) {
    return dialogs.PickFolder(prompt, {}).value_or(Path());
}

std::string FileExtension(std::string_view path) {
    return std::string(path.substr(path.rfind('.') + 1));
}

int RandomSign(Random& random) {
    return 0.5 > random.Next() ? 1 : -1;
}

std::string ZeroIfEmpty(const std::string& text) {
    return text.empty() ? "0" : text;
}

bool ExceedsLimit(double value, double limit) {
    constexpr double sameDecimal = 1e-9;
    return value > limit + sameDecimal;
}

double CelsiusToFahrenheit(double degrees) {
    return degrees * 9 / 5 + 32;
}
double FahrenheitToCelsius(double degrees) {
    return (degrees - 32) * 5 / 9;
}

std::vector<std::string> ListSubFolders(const FileSystem& files, const Path& folder, std::string_view prefix) {
    auto names = files.FolderNames(folder);
    std::erase_if(names, [&](const std::string& name) { return !StartsWithIgnoringCase(name, prefix); });
    return names;
}

std::vector<std::string> ListFiles(const FileSystem& files, const Path& folder, std::string_view pattern) {
    return FilesMatching(files, folder, pattern);
}

std::vector<std::string> ListFilesWithPrefix(const FileSystem& files, const Path& folder, std::string_view prefix) {
    auto names = files.FileNames(folder);
    std::erase_if(names, [&](const std::string& name) { return !StartsWithIgnoringCase(name, prefix); });
    return names;
}

std::string GetListField(int index, std::string_view list) {
    const auto fields = Split(CompressBlanks(list), ',');
    return index >= 1 && index <= static_cast<int>(fields.size()) ? fields[static_cast<std::size_t>(index - 1)] : "";
}

std::string CompressBlanks(std::string_view text) {
    std::string compressed;
    for (const char c : text) {
        const bool repeated = c == ' ' && (compressed.empty() || compressed.back() == ' ');
        if (!repeated) compressed += c;
    }
    if (!compressed.empty() && compressed.back() == ' ') compressed.pop_back();
    return compressed;
}

namespace {

constexpr std::size_t printedWidth = 87;
constexpr std::size_t emptyLinesOnTop = 8;
constexpr const char* continuationIndent = "      ";

/// Takes one printed line off the front of a long one: up to the last blank that fits, or as much as fits without one.
std::string TakePrintedLine(std::string& rest) {
    if (CharacterCount(rest) <= printedWidth) return std::exchange(rest, {});
    std::string fitting = FirstCharacters(rest, printedWidth);
    const auto blank = fitting.find_last_of(' ');
    const bool canBreak = blank != std::string::npos && fitting.find_first_not_of(' ') < blank;
    if (canBreak) fitting.resize(blank);
    rest = continuationIndent + rest.substr(fitting.size() + (canBreak ? 1 : 0));
    return fitting;
}

}  // namespace

std::vector<std::vector<std::string>> PrinterPages(std::string_view text) {
    std::vector<std::vector<std::string>> pages;
    for (const auto& pageText : Split(text, '\f')) {
        std::vector<std::string> page(emptyLinesOnTop);
        for (const auto line : SplitLines(pageText)) {
            std::string rest(line);
            do page.push_back(TakePrintedLine(rest));
            while (!rest.empty());
        }
        pages.push_back(std::move(page));
    }
    // A form feed that ends the text asks for no page of its own.
    if (pages.size() > 1 && pages.back().size() == emptyLinesOnTop) pages.pop_back();
    return pages;
}

void PrintTextFile(const FileSystem& files, Printer& printer, const Path& file) {
    printer.Print(PathText(file.filename()), PrinterPages(ReadTextFile(files, file)));
}

const char* FieldFormat(Field kind, bool englishUnits) {
    switch (kind) {
        case Field::Load:
            return englishUnits ? "#,##0.0" : "#0.000";
        case Field::Deflection:
            return englishUnits ? "#0.00" : "#,##0";
        case Field::Date:
            return "dd-mmm-yyyy";
        case Field::Time:
            return "hh:nn:ss";
        case Field::TwoPlaces:
            return "#0.00";
        case Field::ThreePlaces:
            return "#0.000";
        case Field::FourPlaces:
            return "#0.0000";
        case Field::Other:
            break;
    }
    return englishUnits ? "#,##0.00#" : "#0.000#";
}

double ReadTemperature(Program& program) {
    const CenterConfig& center = program.Center;
    if (!program.Run.ReviewMode) {
        // The sensor gives 10 mV a degree.
        return program.The<AcquisitionDoor>().OneConversion(program.Run.TempChannel) * 100.0;
    }
    const double stored = center.AccelDailyCalibrationTemp + 0.1 * program.Services.random.Next();
    return center.AccelDailyCalibrationTemperatureUnit == "Celsius" ? stored : FahrenheitToCelsius(stored);
}

double MinutesSinceAccelCal(const Program& program) {
    const CenterConfig& center = program.Center;
    const DateTime calibrated = DayOf(center.AccelDailyCalibrationDate) + TimeOfDay(center.AccelDailyCalibrationTime);
    const auto minutesOf = [](DateTime moment) { return std::chrono::floor<std::chrono::minutes>(moment); };
    return static_cast<double>((minutesOf(program.Now()) - minutesOf(calibrated)).count());
}

bool AccelCalCurrent(Program& program) {
    constexpr double longestMinutes = 480;
    constexpr double largestDegrees = 5.0;
    double calibratedAt = program.Center.AccelDailyCalibrationTemp;
    if (program.Center.AccelDailyCalibrationTemperatureUnit == "Fahrenheit") {
        calibratedAt = FahrenheitToCelsius(calibratedAt);
    }
    const bool temperatureFails = ExceedsLimit(std::abs(ReadTemperature(program) - calibratedAt), largestDegrees);
    return MinutesSinceAccelCal(program) <= longestMinutes && !temperatureFails;
}

void ComputeAccelAdjustment(CenterConfig& center) {
    const double refHalf = (center.AccelRefPlus1GDC - center.AccelRefMinus1GDC) / 2;
    const double refMid = (center.AccelRefPlus1GDC + center.AccelRefMinus1GDC) / 2;
    const double dayHalf = (center.AccelDailyCalibrationPlus1GVoltage - center.AccelDailyCalibrationMinus1GVoltage) / 2;
    const double dayMid = (center.AccelDailyCalibrationPlus1GVoltage + center.AccelDailyCalibrationMinus1GVoltage) / 2;
    if (dayHalf > 0) {
        // The certificate and the center are taken to lie in the same gravity.
        center.AccelVoltageSlope = refHalf / dayHalf * (standardGravity / standardGravity);
        center.AccelVoltageOffset = refMid - center.AccelVoltageSlope * dayMid;
    }
    if (dayHalf == 0) return;
    const auto& c = center.AccelRefCalibrationCoefficients;
    const auto polynomial = [&](double v) { return c[0] + v * (c[1] + v * (c[2] + v * c[3])); };
    const double atPlus = polynomial(center.AccelRefPlus1GDC);
    const double atMinus = polynomial(center.AccelRefMinus1GDC);
    if (atPlus == atMinus) return;
    const double scale = 2 / (atPlus - atMinus);
    const double shift = 1 - scale * atPlus;
    center.AccelB = scale * c[0] + shift;
    center.AccelA1 = scale * c[1];
    center.AccelA2 = scale * c[2];
    center.AccelA3 = scale * c[3];
}

std::string ColumnLetter(int index) {
    return index >= 1 && index <= 23 ? std::string(1, static_cast<char>('A' + index - 1)) : std::string();
}

bool SavePDDX(Program& program, const PDDXFile& document, const Path& path) {
    if (path.empty()) return true;
    try {
        std::string text;
        document.PDDX_Output(text);
        ReplaceTextFile(program.Services.files, path, text);
        return true;
    } catch (const std::exception& error) {
        program.Log(error.what());
        program.ShowBox("Unable to create PDDX file:\r\n" + PathText(path), box::exclamation);
        return false;
    }
}

ProgramVersion VersionOfProgram() {
    return {BELLMARK_VERSION, BELLMARK_BUILD_DATE};
}

std::string VersionText() {
    const ProgramVersion version = VersionOfProgram();
    return "Version " + version.number + "  " + version.buildDate;
}

}  // namespace bellmark
