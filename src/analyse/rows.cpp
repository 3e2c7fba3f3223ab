#include "analyse/rows.h"

#include "analyse/drop_result.h"
#include "analyse/trial_result.h"
#include "platform/json.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

std::string CsvText(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) (quoted += c == '"' ? "\"" : "") += c;
    return quoted + '"';
}

struct CsvCell {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(const std::string& text) const { return CsvText(text); }
    std::string operator()(double number) const { return NumberText(number); }
    std::string operator()(long long number) const { return NumberText(number); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
};

/// A scalar's text ends its line.
std::string JsonText(const Json& value) {
    std::string text = value.Text();
    text.pop_back();
    return text;
}

struct JsonCell {
    std::string operator()(std::monostate) const { return "null"; }
    template <class Value>
    std::string operator()(const Value& value) const {
        return JsonText(Json(value));
    }
};

Cell CellOf(const std::optional<double>& number) {
    return number ? Cell(*number) : Cell();
}

Cell TextOrNone(const std::string& text) {
    return text.empty() ? Cell() : Cell(text);
}

long long Whole(int number) {
    return number;
}

void AddWhatWasWritten(Row& row, const DropResult& drop) {
    row.insert(row.end(), {{"owner", TextOrNone(drop.written.owner)},
                           {"fwd", TextOrNone(drop.written.serialNumber)},
                           {"taken", TextOrNone(drop.written.taken)}});
}

void AddPeaks(Row& row, const DropResult& drop) {
    const bool isLoad = drop.instrument == Instrument::LoadCell;
    row.insert(row.end(), {{"unit_english", isLoad ? "pound-force" : "mil"},
                           {"peak_english", drop.peakEnglish},
                           {"written_english", CellOf(drop.written.peakEnglish)},
                           {"difference_english", CellOf(drop.DifferenceEnglish())},
                           {"unit_metric", isLoad ? "kN" : "micron"},
                           {"peak_metric", drop.peakMetric},
                           {"written_metric", CellOf(drop.written.peakMetric)},
                           {"difference_metric", CellOf(drop.DifferenceMetric())}});
}

void AddIndexes(Row& row, const DropResult& drop) {
    row.insert(row.end(), {{"samples", Whole(drop.samples)},
                           {"rise_time_ms", drop.riseTime},
                           {"noise", drop.noise},
                           {"at_start", drop.atStart},
                           {"peak_index", Whole(drop.peakIndex)},
                           {"start_pulse_index", Whole(drop.startPulseIndex)},
                           {"fulcrum_index", Whole(drop.fulcrumIndex)},
                           {"deflection_fulcrum_index", Whole(drop.deflectionFulcrumIndex)},
                           {"zero_start_index", Whole(drop.zeroStartIndex)},
                           {"zero_end_index", Whole(drop.zeroEndIndex)}});
}

void AddFlags(Row& row, const DropResult& drop) {
    row.insert(row.end(), {{"excess_noise", drop.excessNoise},
                           {"out_of_range", drop.outOfRange},
                           {"no_pulse", drop.noPulse},
                           {"fault", drop.fault},
                           {"below_trigger", drop.belowTrigger},
                           {"vibrates", drop.vibrates},
                           {"moves_at_end", drop.moves},
                           {"burst_is_bad", drop.burstIsBad}});
}

/// A row without results has the same columns.
void Empty(Row& row, std::size_t first) {
    for (std::size_t i = first; i < row.size(); ++i) row[i].second = {};
}

}  // namespace

Row RowOf(const DropResult& drop) {
    Row row{{"file", PathText(drop.file)}, {"problem", TextOrNone(drop.problem)}};
    const std::size_t described = row.size();
    row.emplace_back("instrument", drop.instrument == Instrument::LoadCell ? "load cell" : "accelerometer");
    row.emplace_back("form", drop.form == DropForm::Saved ? "saved" : "template");
    AddWhatWasWritten(row, drop);
    AddPeaks(row, drop);
    AddIndexes(row, drop);
    AddFlags(row, drop);
    row.emplace_back("advice", TextOrNone(drop.advice));
    if (!drop.problem.empty()) Empty(row, described);
    return row;
}

Row RowOf(const TrialResult& trial) {
    Row row{{"record", PathText(trial.record)}, {"problem", TextOrNone(trial.problem)}};
    const std::size_t described = row.size();
    row.insert(row.end(), {{"fwd", TextOrNone(trial.serialNumber)},
                           {"device", trial.sensor > 0 ? "sensor" : "load cell"},
                           {"sensor", trial.sensor > 0 ? Cell(Whole(trial.sensor)) : Cell()},
                           {"trial", Whole(trial.number)},
                           {"drops", Whole(trial.drops)},
                           {"initial_gain", trial.initialGain},
                           {"gain", trial.gain},
                           {"stored_gain", trial.storedGain},
                           {"difference", trial.gain - trial.storedGain},
                           {"adjustment_factor", trial.adjustmentFactor},
                           {"standard_error", trial.standardError},
                           {"largest_peak_difference", trial.largestPeakDifference}});
    if (!trial.problem.empty()) Empty(row, trial.number > 0 ? described + 5 : described);
    return row;
}

std::string HeadingText(const Row& row, RowForm form) {
    std::string text;
    if (form != RowForm::Csv) return text;
    for (const auto& [name, cell] : row) (text += text.empty() ? "" : ",") += name;
    return text + '\n';
}

std::string RowText(const Row& row, RowForm form) {
    const bool isCsv = form == RowForm::Csv;
    std::string text = isCsv ? "" : "{";
    for (const auto& [name, cell] : row) {
        if (&cell != &row.front().second) text += isCsv ? "," : ", ";
        if (!isCsv) ((text += '"') += name) += "\": ";
        text += isCsv ? std::visit(CsvCell(), cell) : std::visit(JsonCell(), cell);
    }
    return text + (isCsv ? "\n" : "}\n");
}

}  // namespace bellmark
