#include "virtual_fwd/drop_number.h"

#include <charconv>

#include "platform/numbers.h"

namespace bellmark::virtual_fwd {

std::string DropNumberText(const DropNumber& number) {
    return NumberText(number.trial) + "-H" + NumberText(number.height) + 'D' + NumberText(number.drop);
}

std::optional<DropNumber> DropNumberIn(std::string_view text) {
    DropNumber number;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int* part : {&number.trial, &number.height, &number.drop}) {
        const auto [next, error] = std::from_chars(at, end, *part);
        if (error != std::errc()) return {};
        const std::string_view separator = part == &number.trial ? "-H" : part == &number.height ? "D" : "";
        const std::string_view rest(next, static_cast<std::size_t>(end - next));
        if (rest.substr(0, separator.size()) != separator || (separator.empty() && !rest.empty())) return {};
        at = next + separator.size();
    }
    return number;
}

}  // namespace bellmark::virtual_fwd
