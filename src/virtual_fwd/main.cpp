#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "virtual_fwd/virtual_center.h"

namespace {

using namespace bellmark;
using namespace bellmark::virtual_fwd;

constexpr const char* helpText = R"(bellmark-virtual-fwd --folder PROGRAM_FOLDER [options]

Writes an imaginary calibration center: its configuration, and in the folder Review a calibration to be gone through with
the simulated board. Review/TruePeaks.txt tells what each drop really was.

  --seed N            of the random numbers (2012)
  --noise POUNDS      standard deviation of the sensor's noise (6)
  --hum POUNDS        amplitude of the mains hum of drops spoiled by it (30)
  --heights N         3 or 4 (4)
  --drops N           5 to 10 drops a height (6)
  --trials N          1 to 4 (2)
  --units english     or metric: unit of the reference load cell and of the run
  --template          drops as flat lists of volts, in place of saved-drop files
  --spoil T-HnDn=HOW  spoils a drop of trial T, as 1-H2D3=noise; may be given many times. HOW is noise (in the zero
                      window), second (a second pulse), clipped (beyond the board's range), high (above what the load
                      cell may carry), none (no pulse), reversed (polarity), hum50 or hum60 (mains hum)
)";

struct CommandLineError {
    std::string why;
};

int Number(const std::string& text, int least, int most) {
    const auto number = NumberIn(text);
    if (!number || *number < least || *number > most || *number != static_cast<int>(*number)) {
        throw CommandLineError{"\"" + text + "\" is not a number from " + NumberText(least) + " to " +
                               NumberText(most)};
    }
    return static_cast<int>(*number);
}

double Amount(const std::string& text) {
    const auto number = NumberIn(text);
    if (!number || *number < 0) throw CommandLineError{"\"" + text + "\" is not an amount"};
    return *number;
}

/// "1-H2D3=noise"
void AddSpoiled(CenterOptions& options, const std::string& text) {
    const auto dash = text.find("-H");
    const auto d = text.find('D', dash + 1);
    const auto equal = text.find('=', d + 1);
    const bool wellFormed = dash != std::string::npos && d != std::string::npos && equal != std::string::npos;
    const auto spoil = wellFormed ? SpoilNamed(text.substr(equal + 1)) : std::nullopt;
    if (!spoil) throw CommandLineError{"\"" + text + "\" does not tell a drop and how to spoil it"};
    options.spoiled[{Number(text.substr(0, dash), 1, 4), Number(text.substr(dash + 2, d - dash - 2), 1, 4),
                     Number(text.substr(d + 1, equal - d - 1), 1, 10)}] = *spoil;
}

bool ReadUnits(const std::string& text) {
    if (text != "english" && text != "metric") throw CommandLineError{"units are english or metric"};
    return text == "metric";
}

struct CommandLine {
    std::optional<Path> folder;
    CenterOptions options;
    bool help = false;
};

CommandLine ReadCommandLine(const std::vector<std::string>& words) {
    CommandLine line;
    CenterOptions& options = line.options;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const auto value = [&]() -> const std::string& {
            if (i + 1 >= words.size()) throw CommandLineError{word + " needs a value"};
            return words[++i];
        };
        if (word == "--help" || word == "-h")
            line.help = true;
        else if (word == "--folder")
            line.folder = PathFromText(value());
        else if (word == "--seed")
            options.seed = static_cast<std::uint64_t>(Number(value(), 0, 2'000'000'000));
        else if (word == "--noise")
            options.noisePounds = Amount(value());
        else if (word == "--hum")
            options.humPounds = Amount(value());
        else if (word == "--heights")
            options.heights = Number(value(), 3, 4);
        else if (word == "--drops")
            options.drops = Number(value(), 5, 10);
        else if (word == "--trials")
            options.trials = Number(value(), 1, 4);
        else if (word == "--units")
            options.metric = ReadUnits(value());
        else if (word == "--template")
            options.templateForm = true;
        else if (word == "--spoil")
            AddSpoiled(options, value());
        else
            throw CommandLineError{"\"" + word + "\" is not understood"};
    }
    if (!line.help && !line.folder) throw CommandLineError{"--folder is missing"};
    return line;
}

}  // namespace

int main(int count, char** words) {
    try {
        const CommandLine line = ReadCommandLine({words + 1, words + count});
        if (line.help) {
            std::cout << helpText;
            return 0;
        }
        DiskFileSystem files;
        WriteCenter(files, *line.folder, line.options, SystemClock().Now());
        const int drops = line.options.trials * line.options.heights * line.options.drops;
        std::cout << "Wrote an imaginary center with " << drops << " load cell drops to " << PathText(*line.folder)
                  << '\n';
        return 0;
    } catch (const CommandLineError& error) {
        std::cerr << "bellmark-virtual-fwd: " << error.why << ". See bellmark-virtual-fwd --help.\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "bellmark-virtual-fwd: " << error.what() << '\n';
        return 1;
    }
}
