#include "run/stored_values.h"

#include <algorithm>
#include <cmath>

#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

double StoredNumber(std::string_view text) {
    const double number = ReadNumber(text);
    return std::isfinite(number) ? number : 0;
}

double StoredGain(std::string_view text) {
    return ReadNumber(Format(StoredNumber(text), "0.0000"));
}

int StoredWhole(std::string_view text, int least, int most) {
    // Clamped before rounding, so that it fits a whole number.
    return static_cast<int>(RoundToWhole(std::clamp<double>(StoredNumber(text), least, most)));
}

bool StoredBoolean(std::string_view text) {
    return EqualIgnoringCase(Trim(text), "True") || StoredNumber(text) != 0;
}

DateTime StoredDate(std::string_view text) {
    return ReadDateTime(Trim(text)).value_or(ZeroDate());
}

std::string BooleanText(bool value) {
    return value ? "True" : "False";
}

}  // namespace bellmark
