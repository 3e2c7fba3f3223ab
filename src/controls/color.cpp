#include "controls/color.h"

#include "platform/numbers.h"

namespace bellmark {

std::string_view StateWords(Color color) {
    if (color == colors::mustBeUpdated) return "must be updated";
    if (color == colors::warning) return "warning";
    if (color == colors::complete) return "complete";
    if (color == colors::passed) return "passed";
    if (color == colors::suggestedNext) return "suggested next";
    return {};
}

std::string ColorText(Color color) {
    return NumberText(color.red) + ',' + NumberText(color.green) + ',' + NumberText(color.blue);
}

}  // namespace bellmark
