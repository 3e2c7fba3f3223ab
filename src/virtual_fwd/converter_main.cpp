// Stand-in for the external file converter on Windows, as sample/Ferrylink.exe is elsewhere. Argument: "<file>,<type>".
// Type 0 is PDDX already: the file is copied to the name under which the converter leaves its documents. It knows no
// maker's format and then writes nothing.

#include <filesystem>
#include <iostream>
#include <string>

#include "platform/command_line.h"
#include "platform/files.h"

int main(int count, char** words) {
    std::string argument;
    for (const std::string& word : bellmark::CommandLineWords(count, words))
        argument += (argument.empty() ? "" : " ") + word;
    const std::size_t comma = argument.rfind(',');
    if (comma == std::string::npos || argument.substr(comma + 1) != "0") {
        std::cerr << "Ferrylink (stand-in): cannot convert " << argument << '\n';
        return 1;
    }
    const bellmark::Path file = bellmark::PathFromText(argument.substr(0, comma));
    bellmark::Path document = file;
    document.replace_filename(file.stem().concat("cvt.ddx"));
    std::error_code error;
    std::filesystem::copy_file(file, document, std::filesystem::copy_options::overwrite_existing, error);
    if (error) std::cerr << "Ferrylink (stand-in): " << error.message() << '\n';
    return error ? 1 : 0;
}
