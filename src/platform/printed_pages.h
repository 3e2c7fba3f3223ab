#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace bellmark {

class Printer;

/// Pages for a fixed-pitch printer: eight empty lines on top of each, lines broken after 87 characters at the last
/// blank, their continuation indented by six. A form feed begins a new page.
std::vector<std::vector<std::string>> PrinterPages(std::string_view text);
void PrintTextFile(const FileSystem& files, Printer& printer, const Path& file);

}  // namespace bellmark
