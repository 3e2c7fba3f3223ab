#pragma once

#include <optional>
#include <string_view>

namespace bellmark {

/// The number that an operator typed. Commas may separate groups of three digits before the point, as the program shows
/// large numbers. Any other comma is a foreign decimal sign; ignoring it would give a number ten or more times too
/// large. Returns nothing for such a text, and for text that is not a number.
std::optional<double> TypedNumber(std::string_view text);

}  // namespace bellmark
