#pragma once

#include <string_view>

#include "platform/formatted_text.h"

namespace bellmark {

/// The body of a rich-text document as it looks. Fonts, colours, pictures and the borders of tables are left out; the
/// cells of a table's row are parted by tabs. Throws RichTextError.
FormattedText ReadRichText(std::string_view rtf);

}  // namespace bellmark
