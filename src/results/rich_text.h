#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "results/rtf_scanner.h"

/// A rich-text document to be filled in. Texts of its body are found, replaced and removed, even with formatting
/// between their letters. All else keeps its bytes.
namespace bellmark {

/// The value as rich text: control characters, tabs, line breaks and letters beyond ASCII as controls.
/// isWindows1252: the document uses that code page.
std::string EscapedForRtf(std::string_view value, bool isWindows1252);

class RichText {
  public:
    /// Throws RichTextError.
    explicit RichText(std::string rtf);

    /// Puts the value in place of the first occurrence of the keyword; false when there is none. The value takes the
    /// format of the keyword's first letter, without its highlighting. Inserted values are not searched again: a name
    /// may contain a keyword.
    bool ReplaceKeyword(std::string_view value, std::string_view keyword);

    /// Removes the text from the first occurrence of one text up to that of another behind it; false when that is not
    /// found. Groups stay balanced; formatting that continues after the removed text is kept.
    bool RemoveBetween(std::string_view from, std::string_view upTo);

    std::string Rtf() const;

  private:
    struct Edit {
        std::size_t begin = 0;  ///< in the text
        std::size_t end = 0;
        std::string value;  ///< as rich text
        bool removesBlock = false;
    };
    class Writer;

    void Cover(std::size_t begin, std::size_t end);

    std::string rtf_;
    std::string text_;  ///< of the body, one byte per character; zero bytes where text was replaced
    std::vector<Edit> edits_;
    bool isWindows1252_ = true;
};

}  // namespace bellmark
