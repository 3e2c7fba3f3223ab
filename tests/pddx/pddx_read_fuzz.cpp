#include <cstdlib>

#include "pddx/mod_pddx_read.h"
#include "platform/text.h"
#include "tests/pddx/memory_file_system.h"

namespace {

bool HasTwoByteMark(std::string_view bytes) {
    return bellmark::StartsWith(bytes, "\xFF\xFE") || bellmark::StartsWith(bytes, "\xFE\xFF");
}

}  // namespace

/// Any bytes as a file: reading ends, twice in both manners, and takes in no more entries than the bytes allow. The
/// document can be written and read again. Only a file of two bytes a character may be refused: it can hold characters
/// that the program's files cannot.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace bellmark;
    MemoryFileSystem files;
    files.contents["file"] = std::string(reinterpret_cast<const char*>(data), size);
    for (const bool keepExisting : {false, true}) {
        PDDXFile document;
        const std::size_t before = document.Sections().Size();
        if (!ReadPDDXFile(files, "file", document, keepExisting).readable) {
            if (!HasTwoByteMark(files.contents["file"])) std::abort();
            return 0;
        }
        if (document.Sections().Size() > before + 1000 + size) std::abort();
        ReadPDDXFile(files, "file", document, !keepExisting);
        std::string text;
        document.PDDX_Output(text);
        files.contents["copy"] = ToWindows1252(text);
        ReadPDDXFile(files, "copy", document, keepExisting);
    }
    return 0;
}
