#include "platform/column_text.h"

#include "platform/text.h"

namespace bellmark {

ColumnText& ColumnText::At(int column, std::string_view text) {
    if (column < column_) EndLine();
    text_.append(static_cast<std::size_t>(column - column_), ' ');
    column_ = column;
    return Then(text);
}

ColumnText& ColumnText::Then(std::string_view text) {
    text_ += text;
    column_ += static_cast<int>(CharacterCount(text));
    return *this;
}

ColumnText& ColumnText::EndLine() {
    text_ += "\r\n";
    column_ = 1;
    return *this;
}

}  // namespace bellmark
