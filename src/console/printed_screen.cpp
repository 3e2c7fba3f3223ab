#include "console/printed_screen.h"

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"

namespace bellmark {

std::vector<std::string> PrintedLines(const Screen& screen) {
    std::vector<std::string> lines{screen.Name()};
    for (const Control* control : screen.Controls()) {
        if (const auto* plot = dynamic_cast<const Picture*>(control)) lines.push_back(plot->Drawn().title);
        if (const auto* box = dynamic_cast<const TextBox*>(control))
            lines.push_back(box->Name() + ": " + box->Text.Get());
    }
    return lines;
}

}  // namespace bellmark
