#pragma once

#include <optional>
#include <string>

#include "results/trial_files.h"

/// Trials of sensors are deleted in pairs: two boxes, one for each pair, of which the last may hold a single trial.
namespace bellmark {

/// Captions of the boxes by the number of trials, "&&" for an ampersand; empty for a box without a trial.
std::string FirstPairCaption(int trials);
std::string SecondPairCaption(int trials);

struct MarkedPairs {
    TrialMarks marks{};
    std::string words;  ///< "Trials 1 & 2"; empty when nothing is marked
};
MarkedPairs MarkPairs(int trials, bool first, bool second);

}  // namespace bellmark
