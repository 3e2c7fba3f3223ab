#include "reference/drop_advice.h"

#include "reference/accel_analysis.h"
#include "reference/load_analysis.h"

namespace bellmark {

std::string AdviceOn(const AccelDropFindings& findings, const BurstFindings& burst, bool isOfTrial) {
    const char* remedy = isOfTrial ? "reject this drop" : "repeat this drop";
    if (findings.fault) return std::string("The deflection cannot be computed: ") + remedy;
    if (findings.noPulse) return std::string("No pulse found: ") + remedy;
    if (findings.vibrates) return "The stand moved before the pulse: check this drop";
    if (findings.tail.moves) return "Still moving at the end: check this drop";
    if (!burst.message.empty()) return "The initial burst is outside its limits: check this drop";
    return {};
}

std::string AdviceOn(const LoadDropFindings& findings) {
    if (findings.noPulse) return "No pulse found: reject this drop";
    if (findings.belowTrigger) return "Below the trigger level: check this drop";
    return {};
}

}  // namespace bellmark
