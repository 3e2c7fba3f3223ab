#include "platform/profile_strings.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text.h"

// The input: a first line of section, key and value, separated by bars, and then the file's text. The changed image is
// compared with the result of one image per change, with the lines before and after, and with the rules for a value.

namespace {

using namespace bellmark;

void Require(bool holds) {
    if (!holds) std::abort();
}

bool IsPlainName(std::string_view name) {
    return !name.empty() && name.find_first_of("[]=;\r\n") == std::string_view::npos && Trim(name) == name;
}

std::string ValueByRule(std::string_view value) {
    value = Trim(value);
    const bool quoted = value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0];
    return std::string(quoted ? value.substr(1, value.size() - 2) : value);
}

/// At most one line of the old text is changed, or up to two are added; all other lines stay the same.
void RequireOneLineChanged(std::string_view before, std::string_view after) {
    const auto oldLines = SplitLines(before);
    const auto newLines = SplitLines(after);
    const auto [oldEnd, newEnd] = std::mismatch(oldLines.begin(), oldLines.end(), newLines.begin(), newLines.end());
    const auto oldLeft = oldLines.end() - oldEnd;
    const auto newLeft = newLines.end() - newEnd;
    const auto same =
        std::mismatch(oldLines.rbegin(), oldLines.rbegin() + oldLeft, newLines.rbegin(), newLines.rbegin() + newLeft);
    const auto changed = oldLeft - (same.first - oldLines.rbegin());
    const auto written = newLeft - (same.second - newLines.rbegin());
    Require(changed <= 1 && written <= 2);
}

void CheckSet(std::string_view text, std::string_view section, std::string_view key, std::string_view value) {
    ProfileStrings strings(text);
    strings.Set(section, key, value);
    const std::string after = strings.Text();
    const ProfileStrings reread(after);
    Require(reread.Get(section, key, "none", 1000000) == strings.Get(section, key, "none", 1000000));
    const bool plainValue = value.find_first_of("\r\n") == std::string_view::npos;
    if (!IsPlainName(section) || !IsPlainName(key) || !plainValue) return;
    Require(strings.Get(section, key, "none", 1000000) == FirstCharacters(ValueByRule(value), 999999));
    RequireOneLineChanged(text, after);
    strings.Set(section, key, value);
    Require(strings.Text() == after);
}

/// Several changes on one image must give the same text as each change on a fresh image of the text before it.
void CheckSequence(std::string_view text, std::string_view section, std::string_view key, std::string_view value) {
    using Change = void (*)(ProfileStrings&, std::string_view, std::string_view, std::string_view);
    const Change changes[] = {
        [](ProfileStrings& s, std::string_view a, std::string_view b, std::string_view) { s.RemoveKey(a, b); },
        [](ProfileStrings& s, std::string_view a, std::string_view, std::string_view c) { s.Set(a, "other", c); },
        [](ProfileStrings& s, std::string_view a, std::string_view b, std::string_view c) { s.Set(a, b, c); },
        [](ProfileStrings& s, std::string_view a, std::string_view, std::string_view) { s.RemoveKey(a, "other"); },
        [](ProfileStrings& s, std::string_view a, std::string_view, std::string_view) { s.RemoveSection(a); },
        [](ProfileStrings& s, std::string_view a, std::string_view b, std::string_view c) { s.Set(b, a, c); },
    };
    ProfileStrings image(text);
    for (const Change change : changes) {
        ProfileStrings fresh(image.Text());
        change(fresh, section, key, value);
        change(image, section, key, value);
        Require(image.Text() == fresh.Text());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t nameEnd = std::min(input.find('\n'), input.size());
    const std::vector<std::string> names = Split(input.substr(0, nameEnd), '|');
    if (names.size() < 3) return 0;
    const std::string_view text = input.substr(std::min(nameEnd + 1, input.size()));
    Require(ProfileStrings(text).Text() == text);
    CheckSet(text, names[0], names[1], names[2]);
    CheckSequence(text, names[0], names[1], names[2]);
    return 0;
}
