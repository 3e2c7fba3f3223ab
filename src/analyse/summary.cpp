#include "analyse/summary.h"

#include <algorithm>
#include <cmath>

#include "analyse/drop_result.h"
#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr std::size_t changesTold = 5;

std::string Counted(const char* what, long long count) {
    return std::string(what) + ": " + NumberText(count) + '\n';
}

}  // namespace

void ArchiveSummary::Add(const DropResult& drop) {
    if (!drop.problem.empty()) {
        ++unusable_;
        return;
    }
    const bool isLoad = drop.instrument == Instrument::LoadCell;
    ++(isLoad ? loads_ : deflections_);
    const auto count = [&](const char* flag, bool isSet) { flags_[flag] += isSet ? 1 : 0; };
    count("excess noise", drop.excessNoise);
    count("out of range", drop.outOfRange);
    count("no pulse", drop.noPulse);
    count("cannot be computed", drop.fault);
    count("below the trigger level", drop.belowTrigger);
    count("moved before the pulse", drop.vibrates);
    count("moving at the end", drop.moves);
    count("burst outside its limits", drop.burstIsBad);

    const auto difference = drop.DifferenceMetric();
    if (!difference || *difference == 0) return;
    ++changed_;
    const double written = *drop.written.peakMetric;
    const double fraction = written != 0 ? std::abs(*difference / written) : HUGE_VAL;
    if (largest_.size() == changesTold && fraction <= largest_.back().fraction) return;
    const char* unit = isLoad ? " kN" : " microns";
    const Change change{fraction, PathText(drop.file) + ": " + NumberText(written) + unit + ", now " +
                                      NumberText(drop.peakMetric) + unit};
    const auto place =
        std::find_if(largest_.begin(), largest_.end(), [&](const Change& other) { return other.fraction < fraction; });
    largest_.insert(place, change);
    if (largest_.size() > changesTold) largest_.pop_back();
}

std::string ArchiveSummary::Text(long long passedOver) const {
    std::string text = Counted("load cell drops", loads_) + Counted("accelerometer drops", deflections_) +
                       Counted("files that cannot be used", unusable_) + Counted("other files passed over", passedOver);
    for (const auto& [flag, count] : flags_) {
        if (count > 0) text += Counted(flag.c_str(), count);
    }
    text += Counted("peaks that differ from those in the files", changed_);
    for (const Change& change : largest_) text += "  " + Format(change.fraction, "0.000%") + "  " + change.line + '\n';
    return text;
}

}  // namespace bellmark
