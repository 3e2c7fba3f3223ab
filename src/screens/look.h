#pragma once

namespace bellmark {

/// Sets the application's style sheet, palette and number language. Call once, after the application was made.
void ApplyLook();

}  // namespace bellmark
