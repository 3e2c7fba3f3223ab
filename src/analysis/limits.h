#pragma once

namespace bellmark {

/// The value lies above its limit. Limits are decimal numbers that a double cannot hold exactly: within 1e-9 of the
/// limit the value counts as equal to it, so that 1 - 0.997 does not exceed 0.003. "At least the limit" is
/// !ExceedsLimit(limit, value).
constexpr bool ExceedsLimit(double value, double limit) {
    constexpr double sameDecimal = 1e-9;
    return value > limit + sameDecimal;
}

}  // namespace bellmark
