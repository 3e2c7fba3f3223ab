#pragma once

#include <string>
#include <string_view>

namespace bellmark {

/// Text laid out by columns, as reports are: each piece is put at its column, and lines end in CR LF.
class ColumnText {
  public:
    /// Puts the text at a column, counted from 1. If the line is already past it, a new line begins.
    ColumnText& At(int column, std::string_view text);
    ColumnText& Then(std::string_view text);  ///< directly after the last piece
    ColumnText& EndLine();
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
    int column_ = 1;  ///< of the character that comes next
};

}  // namespace bellmark
