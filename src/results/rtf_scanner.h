#pragma once

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <vector>

/// Splits rich text (RTF 1.9) into the text that a reader sees and formatting.
namespace bellmark {

/// The source is not rich text, or is damaged.
class RichTextError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct RtfPiece {
    enum class Kind {
        Text,       ///< plain characters of the body, one byte each
        Character,  ///< one character of the body written as a control: \tab, \'e9, \u233?
        Open,       ///< {
        Close,      ///< }
        Word,       ///< a control word of the body: \b0
        Other,      ///< invisible: line breaks of the source, font tables, headers, pictures
    };
    Kind kind = Kind::Other;
    std::string_view source;
    char32_t character = 0;       ///< of a Character: '\n' for the end of a line, '\f' of a page, '\a' of a cell
    std::string_view word;        ///< of a Word or a Character, without its number: "b"
    int number = 1;               ///< of a Word, 1 when it has none
    bool needsDelimiter = false;  ///< a Word that would swallow a letter or digit after it
};

/// Returns the pieces one by one. Their sources joined are the whole source.
class RtfScanner {
  public:
    /// Throws RichTextError when the source does not begin as rich text.
    explicit RtfScanner(std::string_view rtf);

    /// False at the end. Throws RichTextError for groups that are not closed or are nested too deeply.
    bool Next(RtfPiece& piece);

  private:
    struct Group {
        int fallbackLength = 1;  ///< characters after \u for readers that do not support it
        bool isHidden = false;
        bool isEmpty = true;  ///< nothing of it has been read yet
    };

    void ReadControl(RtfPiece& piece);
    void ReadWord(RtfPiece& piece);
    void ReadSymbol(RtfPiece& piece);
    void ReadText(RtfPiece& piece);
    void SkipFallback();
    void OpenGroup(RtfPiece& piece);
    void CloseGroup(RtfPiece& piece);
    void BecomeCharacter(RtfPiece& piece, char32_t character) const;

    std::string_view rtf_;
    std::size_t at_ = 0;
    std::vector<Group> groups_;
    bool isAtEnd_ = false;
};

}  // namespace bellmark
