#pragma once

#include <cstddef>
#include <vector>

#include "controls/controls.h"

namespace bellmark {

struct Tab {
    OptionButton& button;
    Frame& page;
};

/// The tabs of a screen, of which one page is in view.
class Tabs {
  public:
    explicit Tabs(std::vector<Tab> tabs) : tabs_(std::move(tabs)) {}

    /// Chooses the tab and shows its page in place of the others.
    void Show(OptionButton& button);
    std::size_t IndexInView() const;  ///< counted from 0, in the order that the tabs were given in
    const std::vector<Tab>& All() const { return tabs_; }

  private:
    std::vector<Tab> tabs_;
};

}  // namespace bellmark
