#include "controls/tabs.h"

#include <algorithm>

namespace bellmark {

void Tabs::Show(OptionButton& button) {
    button.Choose();
    // The old page is hidden before the new one is shown: with both visible the window would grow.
    for (const Tab& tab : tabs_) {
        if (!tab.button.IsChosen()) tab.page.Visible = false;
    }
    for (const Tab& tab : tabs_) {
        if (tab.button.IsChosen()) tab.page.Visible = true;
    }
}

std::size_t Tabs::IndexInView() const {
    const auto inView = std::find_if(tabs_.begin(), tabs_.end(), [](const Tab& tab) { return tab.button.IsChosen(); });
    return static_cast<std::size_t>(inView - tabs_.begin());
}

}  // namespace bellmark
