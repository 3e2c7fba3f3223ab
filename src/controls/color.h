#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bellmark {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

/// The colours that carry a state of the work.
namespace colors {
inline constexpr Color mustBeUpdated{255, 192, 128};
inline constexpr Color warning{255, 255, 128};
inline constexpr Color complete{0, 255, 0};
inline constexpr Color passed{128, 255, 128};  ///< a value within its limit
inline constexpr Color suggestedNext{128, 255, 255};
inline constexpr Color window{255, 255, 255};
inline constexpr Color buttonFace{240, 240, 240};
}  // namespace colors

/// What a colour says, in words, for everyone who does not see it; empty for the plain ones.
std::string_view StateWords(Color color);

/// "255,192,128"
std::string ColorText(Color color);

}  // namespace bellmark
