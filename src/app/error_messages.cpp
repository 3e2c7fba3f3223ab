#include "app/error_messages.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "app/error_message_texts.h"
#include "platform/format.h"
#include "platform/machine.h"
#include "platform/numbers.h"
#include "run/center_config.h"

namespace bellmark {

namespace {

using message_texts::MessageEntry;

constexpr double micronsPerMil = 25.4;

/// nullptr when the number stands for no message.
const MessageEntry* FindMessage(int code) {
    const auto& messages = message_texts::messages;
    const auto found = std::find_if(messages.begin(), messages.end(),
                                    [code](const MessageEntry& entry) { return entry.code == code; });
    return found == messages.end() ? nullptr : &*found;
}

/// The values of one message. A missing one is an error that names it.
class Values {
  public:
    Values(int code, const std::vector<MessageValue>& values) : code_(code), values_(values) {}

    const std::string& Text(std::size_t position) const { return Get<std::string>(position, "a text"); }
    double Number(std::size_t position) const { return Get<double>(position, "a number"); }
    DateTime Date(std::size_t position) const { return Get<DateTime>(position, "a date"); }

  private:
    template <class Wanted>
    const Wanted& Get(std::size_t position, const char* kind) const {
        const Wanted* value = position <= values_.size() ? std::get_if<Wanted>(&values_[position - 1]) : nullptr;
        if (value) return *value;
        throw std::invalid_argument("message " + NumberText(code_) + " needs " + kind + " as value " +
                                    NumberText(position));
    }

    int code_;
    const std::vector<MessageValue>& values_;
};

bool BeginsWithInsertionText(int code) {
    return code == 172 || code == 173 || code == 260 || code == 270 || code == 271;
}

std::string InsertionText(const CalibrationRun& run, int code) {
    const auto& element = run.MessageParameters[1];
    if (std::holds_alternative<std::monostate>(element)) return {};
    if (const auto* text = std::get_if<std::string>(&element)) return *text;
    throw std::invalid_argument("message " + NumberText(code) + " needs a text as message parameter 1");
}

bool IsSet(const std::variant<std::monostate, std::string, double, DateTime>& element) {
    const auto* text = std::get_if<std::string>(&element);
    return text ? !text->empty() : !std::holds_alternative<std::monostate>(element);
}

std::vector<std::string> MissingFiles(const CalibrationRun& run, const Path& programFolder) {
    constexpr const char* bullet = "\u2022";
    constexpr std::array files{"BellmarkCenterConfig.ini - center configuration file ",
                               "Ferrylink.exe - FWD file conversion software ",
                               "CertificateTemplate.rtf - calibration certificate template",
                               "'FWD Calibration History.mdb' - FWD Calibration History database "};
    std::string lines;
    for (std::size_t file = 0; file < files.size(); ++file) {
        if (IsSet(run.MessageParameters[file + 1])) lines += std::string("\t") + bullet + files[file] + "\r\n";
    }
    const auto* count = std::get_if<double>(&run.MessageParameters[5]);
    if (count && *count > 1) return {"Files", "files are", PathText(programFolder), lines, "files"};
    return {"File", "file is", PathText(programFolder), lines, "file"};
}

/// A drop is reported in the units of its trial, even if the set-up has changed since.
bool DropIsEnglish(const CalibrationRun& run) {
    const bool isOfTrial = run.Trial.procedure != Procedure::None;
    return isOfTrial ? run.Trial.shape.englishUnits : run.EnglishUnits;
}

std::string ZeroNoise(const CalibrationRun& run, double pounds) {
    if (DropIsEnglish(run)) return Format(pounds, "00") + " pounds";
    return Format(pounds * kilonewtonsPerPound, "0.000") + " kN";
}

std::string DeflectionNoise(const CalibrationRun& run, double microns) {
    if (DropIsEnglish(run)) return Format(microns / micronsPerMil, "0.00") + " mils";
    return Format(microns, "0.0") + " microns";
}

/// Height, variation with its unit, average, and the largest standard deviation to be expected of such an average.
std::vector<std::string> Variation(const CalibrationRun& run, const Values& values, const char* picture,
                                   const char* unit, double allowance, double share) {
    const double average = values.Number(2);
    return {NumberText(run.CurrentHeightIndex), Format(values.Number(1), picture) + unit, Format(average, picture),
            Format(allowance + share * average, picture)};
}

std::vector<std::string> PeakLoad(double pounds, const std::string& loadCellUnits) {
    if (loadCellUnits == poundForce) return {Format(pounds, "#00,000") + poundForce, "23,500 pound-force"};
    return {Format(pounds * kilonewtonsPerPound, "000.0") + "kN", "105 kN"};
}

/// The texts for the places in title and text.
std::vector<std::string> Insertions(const CalibrationRun& run, int code, const Values& values,
                                    const MessageFacts& facts) {
    const auto volts = [&](std::size_t position) { return Format(values.Number(position), "0.000"); };
    if (BeginsWithInsertionText(code)) return {InsertionText(run, code)};
    switch (code) {
        case 10:
            return {NumberText(run.NumberDropsPerLoadLevel)};
        case 103:
            return {ZeroNoise(run, values.Number(1))};
        case 104:
            return {values.Text(1), volts(2), volts(3), values.Text(4)};
        case 105:
        case 150:
            return {values.Text(1)};
        case 112:
            return {Format(values.Date(1), "dd-mmm-yyyy"), Format(facts.today, "dd-mmm-yyyy")};
        case 113:
            return {DeflectionNoise(run, values.Number(1))};
        case 203:
            return {run.NumberLoadLevels == 4 ? "" : "\r\nor go to four (4) drop heights"};
        case 210:
            return {volts(1), volts(2)};
        case 211:
            return {volts(1), values.Text(2)};
        case 220:
            return run.EnglishUnits ? Variation(run, values, "0.00", " mils", 0.08, 0.01)
                                    : Variation(run, values, "0.0", " microns", 2, 0.01);
        case 221:
            return run.EnglishUnits ? Variation(run, values, "0.0", " pounds", 45, 0.02)
                                    : Variation(run, values, "0.000", " kN", 0.2, 0.02);
        case 251:
            return {NumberText(run.NumberDropsPerLoadLevel), NumberText(run.NumberSensors),
                    Format(run.NumberSensors * 5, "0")};
        case 300:
            return MissingFiles(run, facts.programFolder);
        case 302:
            return {Format(values.Number(1) - 1, "0.00"), Format(values.Number(2) - 1, "0.00")};
        case 303:
            return PeakLoad(values.Number(1), facts.referenceLoadCellUnits);
        default:
            return {};
    }
}

/// The pattern with its places filled. Inserted text is not filled again: a folder may be named "{1}".
std::string Fill(std::string_view pattern, const std::vector<std::string>& insertions) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == '{') {
            text += insertions.at(static_cast<std::size_t>(pattern[at + 1] - '1'));
            at += 2;
        } else if (pattern[at] == '\n') {
            text += "\r\n";
        } else {
            text += pattern[at];
        }
    }
    return text;
}

}  // namespace

void ErrorMessages(CalibrationRun& run, int code, const std::vector<MessageValue>& values, const MessageFacts& facts) {
    const MessageEntry* message = FindMessage(code);
    if (message) {
        const auto insertions = Insertions(run, code, Values(code, values), facts);
        run.MessageTitle = Fill(message->title, insertions);
        run.MessageText = Fill(message->text, insertions);
        if (BeginsWithInsertionText(code)) run.MessageParameters[1] = {};
    } else if (code > 100) {
        run.MessageText.clear();
    }
    run.LastMessageCode = code;
}

int MessageStyle(int code) {
    const MessageEntry* message = FindMessage(code);
    return message ? message->style : 0;
}

MessageBox ComposedBox(const CalibrationRun& run) {
    return ComposedBox(run, MessageStyle(run.LastMessageCode));
}

MessageBox ComposedBox(const CalibrationRun& run, int style) {
    return {run.MessageText, style, run.MessageTitle, helpPage::firstMessage + run.LastMessageCode};
}

}  // namespace bellmark
