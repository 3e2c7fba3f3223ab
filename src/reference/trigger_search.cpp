#include "reference/trigger_search.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "analysis/limits.h"
#include "platform/numbers.h"
#include "reference/accel_integration.h"

namespace bellmark {

namespace {

constexpr double levelStep = 0.02;  ///< g
constexpr int numberOfLevels = 100;

/// A round, and the record after it.
struct KnownRound {
    std::size_t before = 0;  ///< the round that it followed
    PulsePlace place;
    bool measured = true;
    int fulcrum = 0;
    double velocityOffset = 0;
    double velocityTrim = 0;
    bool noFulcrum = false;
    double peakMicrons = 0;
    int peakIndex = 0;
    int startPulseIndex = 0;
    double riseTime = 0;
};

bool IsSamePlace(const PulsePlace& a, const PulsePlace& b) {
    return a.end == b.end && (a.end != PulsePlace::End::Pulse || a.position == b.position);
}

/// The analysis of one block at many trigger levels. Levels that meet the same pulses share their rounds.
class Replay {
  public:
    explicit Replay(const DropRecord& drop) : drop_(drop), scan_(drop), canBeIntegrated_(CanBeIntegrated(drop)) {}

    TriggerLevelResult AtLevel(double level) {
        TriggerLevelResult result;
        result.level = level;
        result.peakMicrons = -1;
        if (!canBeIntegrated_) return result;
        BeginRounds(drop_);
        drop_.TriggerLevel = level;
        std::size_t round = beforeFirst;
        int lastFulcrum = -1;
        do {
            const PulsePlace place = FindPulse(drop_, scan_, AccelMethod::Regression, lastFulcrum);
            lastFulcrum = place.fulcrum;
            round = RoundAt(place, round);
            if (!rounds_[round].measured) return result;
            Restore(rounds_[round]);
        } while (IsFalseTrigger(drop_));
        result.peakMicrons = drop_.PeakMetric;
        result.peakIndex = drop_.PeakIndex;
        result.startPulseIndex = drop_.StartPulseIndex;
        result.riseTime = drop_.RiseTime;
        return result;
    }

  private:
    static constexpr std::size_t beforeFirst = static_cast<std::size_t>(-1);

    /// Measures a round unless it is known.
    std::size_t RoundAt(const PulsePlace& place, std::size_t before) {
        const auto known = std::find_if(rounds_.begin(), rounds_.end(), [&](const KnownRound& round) {
            return round.before == before && IsSamePlace(round.place, place);
        });
        if (known != rounds_.end()) return static_cast<std::size_t>(known - rounds_.begin());
        KnownRound round;
        round.before = before;
        round.place = place;
        round.measured = MeasureRound(drop_, place, AccelMethod::Regression);
        round.fulcrum = drop_.FulcrumIndex;
        round.velocityOffset = drop_.VelocityOffset;
        round.velocityTrim = drop_.VelocityTrim;
        round.noFulcrum = drop_.NoFulcrum;
        round.peakMicrons = drop_.PeakMetric;
        round.peakIndex = drop_.PeakIndex;
        round.startPulseIndex = drop_.StartPulseIndex;
        round.riseTime = drop_.RiseTime;
        rounds_.push_back(round);
        return rounds_.size() - 1;
    }

    void Restore(const KnownRound& round) {
        drop_.FulcrumIndex = round.fulcrum;
        drop_.VelocityOffset = round.velocityOffset;
        drop_.VelocityTrim = round.velocityTrim;
        drop_.NoFulcrum = round.noFulcrum;
        drop_.PeakMetric = round.peakMicrons;
        drop_.PeakIndex = round.peakIndex;
        drop_.StartPulseIndex = round.startPulseIndex;
        drop_.RiseTime = round.riseTime;
    }

    DropRecord drop_;
    PulseScan scan_;
    bool canBeIntegrated_;
    std::vector<KnownRound> rounds_;
};

bool IsGood(const TriggerLevelResult& result, const DropRecord& drop) {
    return result.peakMicrons >= 0 && std::abs(result.peakIndex - drop.PeakIndex) < 15 &&
           !ExceedsLimit(std::abs(result.riseTime - drop.RiseTime), 0.1) &&
           !ExceedsLimit(std::abs(result.peakMicrons - drop.PeakMetric), 1.0);
}

}  // namespace

TriggerBand DetermineTrigger(const DropRecord& drop) {
    TriggerBand band;
    Replay replay(drop);
    bool found = false;
    bool closed = false;
    double level = 0;
    for (int step = 0; step < numberOfLevels; ++step) {
        // Added up, not multiplied: the last level is then a little above 2.
        level += levelStep;
        TriggerLevelResult result = replay.AtLevel(level);
        result.good = IsGood(result, drop);
        band.levels.push_back(result);
        if (closed) continue;
        if (result.good) {
            (found ? band.upperBound : band.lowerBound) = level;
            found = true;
        } else {
            band.upperBound = level - levelStep;
            // Also when no level above the one in force is good: higher levels are not part of the band.
            closed = level > drop.TriggerLevel;
        }
    }
    band.newTrigger = Round(band.lowerBound + (band.upperBound - band.lowerBound) / 2, 2);
    return band;
}

std::optional<int> MinimumNumberOfDrops(double highPeak, double lowPeak, int numberLoadLevels) {
    constexpr double errorLimit = 0.003;
    constexpr int mostDrops = 10;
    const double step = numberLoadLevels > 1 ? (highPeak - lowPeak) / (numberLoadLevels - 1) : 0;
    double sumOfSquares = 0;
    for (int height = 0; height < numberLoadLevels; ++height) {
        const double peak = step * height + lowPeak;
        sumOfSquares += peak * peak;
    }
    for (int drops = 4; drops <= mostDrops; ++drops) {
        if (4.0 / std::sqrt(drops * sumOfSquares) < errorLimit) return std::max(drops, numberLoadLevels == 3 ? 6 : 5);
    }
    return {};
}

}  // namespace bellmark
