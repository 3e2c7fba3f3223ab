#pragma once

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <vector>

/// Rich text (RTF 1.9) in pieces: what of the source is text that a reader sees, and what is formatting.
namespace bellmark {

/// The source is no rich text, or damaged.
class RichTextError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct RtfPiece {
    enum class Kind {
        Text,       ///< plain characters of the body, a byte each
        Character,  ///< one character of the body that is written as a control: \tab, \'e9, \u233?
        Open,       ///< {
        Close,      ///< }
        Word,       ///< a control word of the body: \b0
        Other,      ///< what no reader sees: line breaks of the source, tables of fonts, headers, pictures
    };
    Kind kind = Kind::Other;
    std::string_view source;
    char32_t character = 0;       ///< of a Character: '\n' for the end of a line, '\f' of a page, '\a' of a cell
    std::string_view word;        ///< of a Word or a Character, without its number: "b"
    int number = 1;               ///< of a Word, 1 when it has none
    bool needsDelimiter = false;  ///< a Word that a letter or digit behind it would become part of
};

/// Gives the pieces one after the other; their sources put together are the whole source.
class RtfScanner {
  public:
    /// Throws RichTextError when the source does not begin as rich text.
    explicit RtfScanner(std::string_view rtf);

    /// False at the end. Throws RichTextError for groups that are not closed or nested without end.
    bool Next(RtfPiece& piece);

  private:
    struct Group {
        int fallbackLength = 1;  ///< characters that stand behind \u for readers that do not know it
        bool isHidden = false;
        bool isEmpty = true;  ///< nothing of it was seen yet
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
