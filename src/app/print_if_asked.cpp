#include "app/print_if_asked.h"

#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/printed_pages.h"

namespace bellmark {

void PrintIfAsked(Program& program, const Path& file) {
    if (!program.Run.AutoPrint) return;
    try {
        PrintTextFile(program.Services.files, program.Services.printer, file);
    } catch (const std::exception& error) {
        program.Log(error.what());
        program.ShowBox(error.what(), box::exclamation);
    }
}

}  // namespace bellmark
