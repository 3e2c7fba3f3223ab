#pragma once

#include <string_view>

#include "platform/formatted_text.h"

namespace bellmark {

/// The body of a rich-text document as a reader sees it, without fonts, colours, pictures and table borders. Tabs
/// separate the cells of a table's row. Throws RichTextError.
FormattedText ReadRichText(std::string_view rtf);

}  // namespace bellmark
