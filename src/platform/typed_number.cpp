#include "platform/typed_number.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

bool AreDigits(std::string_view text) {
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// groups: the parts between the commas before the point. "0,125" is not a group of thousands.
bool PartThousands(const std::vector<std::string>& groups) {
    const std::string& first = groups.front();
    const bool isLead = !first.empty() && first.size() <= 3 && first.front() != '0' && AreDigits(first);
    return isLead && std::all_of(groups.begin() + 1, groups.end(),
                                 [](const std::string& group) { return group.size() == 3 && AreDigits(group); });
}

}  // namespace

std::optional<double> TypedNumber(std::string_view text) {
    const std::string_view trimmed = Trim(text);
    if (trimmed.find(',') == std::string_view::npos) return NumberIn(trimmed);
    const bool hasSign = StartsWith(trimmed, "-") || StartsWith(trimmed, "+");
    const std::string_view unsignedText = trimmed.substr(hasSign ? 1 : 0);
    const std::string_view whole = unsignedText.substr(0, unsignedText.find('.'));
    if (!PartThousands(Split(whole, ','))) return std::nullopt;
    std::string plain(whole);
    std::erase(plain, ',');
    // A comma after the point stays in the text, which is then not a number.
    plain += unsignedText.substr(whole.size());
    const auto size = NumberIn(plain);
    if (!size) return std::nullopt;
    return StartsWith(trimmed, "-") ? -*size : *size;
}

}  // namespace bellmark
