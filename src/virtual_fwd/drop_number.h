#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bellmark::virtual_fwd {

/// Which drop of which trial, all counted from 1.
struct DropNumber {
    int trial = 1;
    int height = 1;
    int drop = 1;
    friend auto operator<=>(const DropNumber&, const DropNumber&) = default;
};

/// "1-H2D3": drop 3 of height 2 in trial 1.
std::string DropNumberText(const DropNumber& number);
std::optional<DropNumber> DropNumberIn(std::string_view text);

}  // namespace bellmark::virtual_fwd
