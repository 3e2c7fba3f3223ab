#pragma once

#include <string>

namespace bellmark {

struct AccelDropFindings;
struct BurstFindings;
struct LoadDropFindings;

/// Advice to the operator in words, the worst fault first; empty for a good drop. It blocks nothing. A drop of a trial
/// is rejected; one for a set-up value is only repeated.
std::string AdviceOn(const AccelDropFindings& findings, const BurstFindings& burst, bool isOfTrial);
std::string AdviceOn(const LoadDropFindings& findings);

}  // namespace bellmark
