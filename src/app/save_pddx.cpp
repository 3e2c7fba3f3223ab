#include "app/save_pddx.h"

#include "app/program.h"
#include "app/save_text.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"

namespace bellmark {

bool SavePDDX(Program& program, const PDDXFile& document, const Path& path,
              const std::function<void(std::string& text)>& complete) {
    if (path.empty()) return true;
    try {
        std::string text;
        document.PDDX_Output(text);
        if (complete) complete(text);
        SaveText(program, path, text);
        return true;
    } catch (const std::exception& error) {
        program.Log(error.what());
        program.ShowBox("Unable to create PDDX file:\r\n" + PathText(path), box::exclamation);
        return false;
    }
}

}  // namespace bellmark
