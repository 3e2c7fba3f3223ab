#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/files.h"
#include "run/center_config.h"
#include "run/drop_record.h"

/// Saved drops analysed again.
namespace bellmark {

enum class Instrument { LoadCell, Accelerometer };
enum class DropForm { Saved, Template };

/// What the file of a drop tells besides its samples; a template tells nothing.
struct WrittenDrop {
    std::optional<double> peakEnglish;
    std::optional<double> peakMetric;
    std::string taken;  ///< "2012-03-09 10:00:00"; as written in the file when it is no moment
    std::string owner;
    std::string serialNumber;  ///< of the FWD
};

/// The drop of a file as the program judges it today. Peaks and noise of the load cell are in pounds and kN, those of
/// the accelerometer in mils and microns.
struct DropResult {
    Path file;
    std::string problem;  ///< why the file cannot be used; the members below are empty then
    Instrument instrument = Instrument::LoadCell;
    DropForm form = DropForm::Saved;
    WrittenDrop written;
    int samples = 0;
    double peakEnglish = 0;
    double peakMetric = 0;
    double riseTime = 0;  ///< ms
    double noise = 0;     ///< range in the zero window: pounds, or microns
    double atStart = 0;   ///< mean before the pulse: pounds, or microns
    int peakIndex = 0;
    int startPulseIndex = 0;
    int fulcrumIndex = 0;
    int deflectionFulcrumIndex = 0;
    int zeroStartIndex = 0;
    int zeroEndIndex = 0;
    bool excessNoise = false;
    bool outOfRange = false;
    bool noPulse = false;
    bool fault = false;         ///< the deflection cannot be computed
    bool belowTrigger = false;  ///< load cell
    bool vibrates = false;      ///< accelerometer: it moved before the pulse
    bool moves = false;         ///< accelerometer: it moves at the end
    bool burstIsBad = false;    ///< accelerometer: the initial burst is outside its limits
    std::string advice;

    /// Peak now less peak in the file; nothing where the file tells none.
    std::optional<double> DifferenceEnglish() const;
    std::optional<double> DifferenceMetric() const;
};

/// Whether the program gives such names to the files of drops: "LoadCell2-H3D1.txt", "Reference1-H1D1.txt", and
/// "LoadCell1_000.txt", "Ref1_000.txt" for templates.
bool IsDropFileName(std::string_view name);

/// Analyses drops one after the other. Each starts afresh: no result depends on the drops before it.
class DropAnalyser {
  public:
    /// A larger file is no drop: 15000 samples take 1.5 MB.
    static constexpr std::uintmax_t largestFile = std::uintmax_t{8} * 1024 * 1024;

    /// center: with the certificates of the references. The day's readings come from the files that tell them.
    explicit DropAnalyser(const CenterConfig& center) : center_(center) {}

    /// Never throws for a file: the result tells the problem.
    DropResult Analyse(const FileSystem& files, const Path& file);

    /// The samples and curves of the drop analysed last.
    const DropRecord& Drop() const { return drop_; }

  private:
    void Measure(DropResult& result, const CenterConfig& center);

    CenterConfig center_;
    DropRecord drop_;
    std::string bytes_;
};

}  // namespace bellmark
