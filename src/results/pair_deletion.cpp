#include "results/pair_deletion.h"

namespace bellmark {

std::string FirstPairCaption(int trials) {
    if (trials <= 0) return {};
    return trials == 1 ? "Trial 1" : "Trials 1 && 2";
}

std::string SecondPairCaption(int trials) {
    if (trials <= 2) return {};
    return trials == 3 ? "Trial 3" : "Trials 3 && 4";
}

MarkedPairs MarkPairs(int trials, bool first, bool second) {
    constexpr int firstBox = 1;
    constexpr int secondBox = 2;
    MarkedPairs marked;
    for (int trial = 1; trial <= trials; ++trial)
        marked.marks.at(static_cast<std::size_t>(trial - 1)) = trial <= 2 ? first : second;
    switch (10 * trials + (first ? firstBox : 0) + (second ? secondBox : 0)) {
        case 11:
            marked.words = "Trial 1";
            break;
        case 21:
        case 31:
        case 41:
            marked.words = "Trials 1 & 2";
            break;
        case 32:
            marked.words = "Trial 3";
            break;
        case 33:
            marked.words = "Trials 1, 2, and 3";
            break;
        case 42:
            marked.words = "Trials 3 & 4";
            break;
        case 43:
            marked.words = "Trials 1, 2, 3 & 4";
            break;
        default:
            marked.marks = {};
            break;
    }
    return marked;
}

}  // namespace bellmark
