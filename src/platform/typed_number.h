#pragma once

#include <optional>
#include <string_view>

namespace bellmark {

/// What an operator typed for a number. Commas may part groups of three digits before the point, as the program shows
/// large numbers; any other comma is somebody's decimal sign, and reading on without it would give a number ten or more
/// times too large. Nothing for such a text, and for text that is no number.
std::optional<double> TypedNumber(std::string_view text);

}  // namespace bellmark
