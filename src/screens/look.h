#pragma once

namespace bellmark {

/// Gives the application its style sheet, palette and number language. Once, after the application was made.
void ApplyLook();

}  // namespace bellmark
