#include "analyse/drop_result.h"

#include <algorithm>
#include <exception>

#include "daq/drop_file_reader.h"
#include "daq/drop_header.h"
#include "platform/date_time.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "reference/accel_analysis.h"
#include "reference/drop_advice.h"
#include "reference/load_analysis.h"

namespace bellmark {

namespace {

constexpr std::string_view loadCellTitle = "Load Cell Calibration";
constexpr std::string_view accelerometerTitle = "Sensor Reference Calibration";

/// Takes digits off the front; false when there are none.
bool TakeDigits(std::string_view& text) {
    const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(count);
    return count > 0;
}

bool TakeWord(std::string_view& text, std::string_view word) {
    if (!StartsWithIgnoringCase(text, word)) return false;
    text.remove_prefix(word.size());
    return true;
}

bool IsSavedName(std::string_view name) {
    if (!TakeWord(name, "LoadCell") && !TakeWord(name, "Reference")) return false;
    return TakeDigits(name) && TakeWord(name, "-H") && TakeDigits(name) && TakeWord(name, "D") && TakeDigits(name) &&
           EqualIgnoringCase(name, ".txt");
}

bool IsTemplateName(std::string_view name) {
    if (!TakeWord(name, "LoadCell") && !TakeWord(name, "Ref")) return false;
    return TakeDigits(name) && TakeWord(name, "_") && TakeDigits(name) && EqualIgnoringCase(name, ".txt");
}

/// "2012-03-09 10:00:00" for "09-Mar-2012, 10:00:00"; another text as it is.
std::string SortableMoment(std::string_view value) {
    std::string text = FromWindows1252(value);
    std::string withoutComma = text;
    std::erase(withoutComma, ',');
    const auto moment = ReadDateTime(withoutComma);
    return moment ? Format(*moment, "yyyy-mm-dd hh:nn:ss") : text;
}

WrittenDrop ReadWritten(std::string_view text) {
    WrittenDrop written;
    const std::string_view header = text.substr(0, text.find("\nSample"));
    for (std::string_view line : SplitLines(header)) {
        const auto equal = line.find('=');
        if (equal == std::string_view::npos) continue;
        const std::string_view name = Trim(line.substr(0, equal));
        const std::string_view value = Trim(line.substr(equal + 1));
        if (name == "Peak Value (pounds)" || name == "Peak Value (mils)") written.peakEnglish = NumberIn(value);
        if (name == "Peak Value (kN)" || name == "Peak Value (microns)") written.peakMetric = NumberIn(value);
        if (name == "Date & Time") written.taken = SortableMoment(value);
        if (name == "FWD Owner") written.owner = FromWindows1252(value);
        if (name == "FWD Serial Number") written.serialNumber = FromWindows1252(value);
    }
    return written;
}

/// Peaks have up to three decimals.
std::optional<double> Difference(double now, const std::optional<double>& written) {
    constexpr int mostDecimals = 3;
    return written ? std::optional(Round(now - *written, mostDecimals)) : std::nullopt;
}

/// The instrument and form of a file; false when neither its first line nor its name tells them.
bool Recognise(DropResult& result, std::string_view bytes) {
    const std::string_view title = Trim(bytes.substr(0, bytes.find_first_of("\r\n")));
    const std::string name = PathText(result.file.filename());
    result.form = DropForm::Saved;
    result.instrument = Instrument::LoadCell;
    if (title == loadCellTitle) return true;
    result.instrument = Instrument::Accelerometer;
    if (title == accelerometerTitle) return true;
    result.form = DropForm::Template;
    result.instrument = StartsWithIgnoringCase(name, "LoadCell") ? Instrument::LoadCell : Instrument::Accelerometer;
    return IsTemplateName(name);
}

void MeasureLoad(DropResult& result, DropRecord& drop, const CenterConfig& center) {
    constexpr bool pounds = true;
    const LoadDropFindings findings = AnalyzeLoadSamples(drop, center, pounds);
    result.noise = findings.noise;
    result.atStart = findings.loadAtStart;
    result.outOfRange = findings.peakTooHigh;
    result.noPulse = findings.noPulse;
    result.belowTrigger = findings.belowTrigger;
    result.advice = AdviceOn(findings);
}

void MeasureDeflection(DropResult& result, DropRecord& drop, const CenterConfig& center) {
    const BurstFindings burst = CheckBurst(drop, center);
    const AccelDropFindings findings = AnalyzeAccelSamples(drop, center);
    result.noise = findings.noise;
    result.atStart = findings.deflectionAtStart;
    result.outOfRange = findings.outOfRange;
    result.noPulse = findings.noPulse;
    result.fault = findings.fault;
    result.vibrates = findings.vibrates;
    result.moves = findings.tail.moves;
    result.burstIsBad = !burst.message.empty();
    result.advice = AdviceOn(findings, burst, true);
}

}  // namespace

std::optional<double> DropResult::DifferenceEnglish() const {
    return Difference(peakEnglish, written.peakEnglish);
}
std::optional<double> DropResult::DifferenceMetric() const {
    return Difference(peakMetric, written.peakMetric);
}

bool IsDropFileName(std::string_view name) {
    return IsSavedName(name) || IsTemplateName(name);
}

DropResult DropAnalyser::Analyse(const FileSystem& files, const Path& file) {
    DropResult result;
    result.file = file;
    try {
        files.ReadBytesInto(file, bytes_, largestFile);
        if (!Recognise(result, bytes_)) {
            result.problem = "is no drop file: neither its first line nor its name tells the instrument";
            return result;
        }
        const bool isSaved = result.form == DropForm::Saved;
        const DropSamples read = isSaved ? ReadSavedDropFile(bytes_) : ReadTemplateFile(bytes_);
        if (isSaved) result.written = ReadWritten(bytes_);
        result.samples = static_cast<int>(read.volts.size());
        if (read.volts.empty()) {
            result.problem = "holds no samples";
        } else if (!read.complete) {
            result.problem = "is damaged: it holds more samples than a block, or a line without volts";
        } else {
            std::copy(read.volts.begin(), read.volts.end(), drop_.RawVolts.begin());
            drop_.RawVolts[read.volts.size()] = 0;
            drop_.NumSamples = result.samples;
            // Of the drop before, which the analyses would keep.
            drop_.PeakIndex = 0;
            drop_.BurstAverage = drop_.BurstStdDev = 0;
            CenterConfig center = center_;
            TakeDropHeader(read.header, center, drop_);
            Measure(result, center);
        }
    } catch (const FileError& error) {
        result.problem = error.what();
        const std::string path = PathText(file) + ": ";
        if (StartsWith(result.problem, path)) result.problem.erase(0, path.size());
    }
    return result;
}

void DropAnalyser::Measure(DropResult& result, const CenterConfig& center) {
    if (result.instrument == Instrument::LoadCell) {
        MeasureLoad(result, drop_, center);
    } else {
        MeasureDeflection(result, drop_, center);
    }
    result.peakEnglish = drop_.PeakEnglish;
    result.peakMetric = drop_.PeakMetric;
    result.riseTime = drop_.RiseTime;
    result.peakIndex = drop_.PeakIndex;
    result.startPulseIndex = drop_.StartPulseIndex;
    result.fulcrumIndex = drop_.FulcrumIndex;
    result.deflectionFulcrumIndex = drop_.DeflectionFulcrumIndex;
    result.zeroStartIndex = drop_.ZeroStartIndex;
    result.zeroEndIndex = drop_.ZeroEndIndex;
    result.excessNoise = drop_.ExcessNoise;
}

}  // namespace bellmark
