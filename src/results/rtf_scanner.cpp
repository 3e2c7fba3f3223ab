#include "results/rtf_scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::size_t deepestGroup = 1000;

/// Groups that hold something other than the text of the body.
constexpr std::array<std::string_view, 21> hiddenDestinations{
    "annotation", "colortbl",  "filetbl",    "fldinst", "fonttbl", "footer",  "footerf",
    "footerl",    "footerr",   "footnote",   "header",  "headerf", "headerl", "headerr",
    "info",       "listtable", "nonshppict", "object",  "pict",    "revtbl",  "stylesheet"};

constexpr std::array<std::pair<std::string_view, char32_t>, 16> characterWords{{{"par", U'\n'},
                                                                                {"line", U'\n'},
                                                                                {"sect", U'\n'},
                                                                                {"row", U'\n'},
                                                                                {"page", U'\f'},
                                                                                {"cell", U'\a'},
                                                                                {"tab", U'\t'},
                                                                                {"lquote", U'\u2018'},
                                                                                {"rquote", U'\u2019'},
                                                                                {"ldblquote", U'\u201C'},
                                                                                {"rdblquote", U'\u201D'},
                                                                                {"bullet", U'\u2022'},
                                                                                {"endash", U'\u2013'},
                                                                                {"emdash", U'\u2014'},
                                                                                {"enspace", U' '},
                                                                                {"emspace", U' '}}};

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsSpecial(char c) {
    return c == '\\' || c == '{' || c == '}' || c == '\r' || c == '\n';
}

/// The byte as a character of the Windows code page, the only one that the centers' editors write.
char32_t CharacterOf(unsigned char byte) {
    if (byte < 0x80) return byte;
    const std::string utf8 = FromWindows1252(std::string(1, static_cast<char>(byte)));
    const auto bits = [&](std::size_t i) { return static_cast<char32_t>(static_cast<unsigned char>(utf8[i])); };
    return utf8.size() == 2 ? ((bits(0) & 0x1FU) << 6U) | (bits(1) & 0x3FU)
                            : ((bits(0) & 0x0FU) << 12U) | ((bits(1) & 0x3FU) << 6U) | (bits(2) & 0x3FU);
}

}  // namespace

RtfScanner::RtfScanner(std::string_view rtf) : rtf_(rtf) {
    if (!StartsWith(rtf, "{\\rtf")) throw RichTextError("is no rich-text document");
}

bool RtfScanner::Next(RtfPiece& piece) {
    const std::size_t begin = at_;
    piece = {};
    if (at_ >= rtf_.size()) {
        if (!groups_.empty()) throw RichTextError("is damaged: it ends in the middle");
        return false;
    }
    const char c = rtf_[at_];
    if (isAtEnd_) {
        at_ = rtf_.size();
    } else if (c == '{') {
        OpenGroup(piece);
    } else if (c == '}') {
        CloseGroup(piece);
    } else if (c == '\\') {
        ReadControl(piece);
    } else if (c == '\r' || c == '\n') {
        ++at_;
    } else {
        ReadText(piece);
    }
    piece.source = rtf_.substr(begin, at_ - begin);
    return true;
}

void RtfScanner::OpenGroup(RtfPiece& piece) {
    if (groups_.size() >= deepestGroup) throw RichTextError("is damaged: its groups are nested without end");
    Group group = groups_.empty() ? Group() : groups_.back();
    group.isEmpty = true;
    if (!groups_.empty()) groups_.back().isEmpty = false;
    groups_.push_back(group);
    ++at_;
    piece.kind = RtfPiece::Kind::Open;
}

void RtfScanner::CloseGroup(RtfPiece& piece) {
    groups_.pop_back();
    // Text after the closing brace is not part of the document.
    isAtEnd_ = groups_.empty();
    ++at_;
    piece.kind = RtfPiece::Kind::Close;
}

void RtfScanner::ReadControl(RtfPiece& piece) {
    ++at_;
    if (at_ < rtf_.size() && IsLetter(rtf_[at_])) {
        ReadWord(piece);
    } else {
        ReadSymbol(piece);
    }
    groups_.back().isEmpty = false;
}

void RtfScanner::ReadWord(RtfPiece& piece) {
    const std::size_t begin = at_;
    while (at_ < rtf_.size() && IsLetter(rtf_[at_])) ++at_;
    piece.word = rtf_.substr(begin, at_ - begin);
    std::size_t end = at_ + (at_ < rtf_.size() && rtf_[at_] == '-' ? 1 : 0);
    while (end < rtf_.size() && IsDigit(rtf_[end])) ++end;
    if (end > at_ && IsDigit(rtf_[end - 1])) {
        std::from_chars(rtf_.data() + at_, rtf_.data() + end, piece.number);
        at_ = end;
    }
    piece.needsDelimiter = at_ >= rtf_.size() || rtf_[at_] != ' ';
    if (!piece.needsDelimiter) ++at_;

    Group& group = groups_.back();
    const bool isFirst = group.isEmpty;
    if (isFirst &&
        std::find(hiddenDestinations.begin(), hiddenDestinations.end(), piece.word) != hiddenDestinations.end()) {
        group.isHidden = true;
    }
    if (piece.word == "bin") at_ = std::min(rtf_.size(), at_ + static_cast<std::size_t>(std::max(piece.number, 0)));
    if (group.isHidden) return;
    piece.kind = RtfPiece::Kind::Word;
    if (piece.word == "uc") group.fallbackLength = std::clamp(piece.number, 0, 100);
    if (piece.word == "u") {
        SkipFallback();
        BecomeCharacter(piece, static_cast<char32_t>(piece.number & 0xFFFF));
    }
    for (const auto& [word, character] : characterWords) {
        if (piece.word == word) BecomeCharacter(piece, character);
    }
}

void RtfScanner::SkipFallback() {
    for (int i = 0; i < groups_.back().fallbackLength && at_ < rtf_.size(); ++i) {
        const bool isHex = rtf_.substr(at_, 2) == "\\'";
        if (!isHex && IsSpecial(rtf_[at_])) return;
        at_ = std::min(rtf_.size(), at_ + (isHex ? 4 : 1));
    }
}

void RtfScanner::ReadSymbol(RtfPiece& piece) {
    const char symbol = at_ < rtf_.size() ? rtf_[at_++] : '\0';
    Group& group = groups_.back();
    if (symbol == '*' && group.isEmpty) group.isHidden = true;
    if (symbol == '\'') {
        unsigned byte = 0;
        const char* first = rtf_.data() + at_;
        const char* last = rtf_.data() + std::min(rtf_.size(), at_ + 2);
        at_ += static_cast<std::size_t>(std::from_chars(first, last, byte, 16).ptr - first);
        BecomeCharacter(piece, CharacterOf(static_cast<unsigned char>(byte)));
    } else if (symbol == '\\' || symbol == '{' || symbol == '}') {
        BecomeCharacter(piece, static_cast<char32_t>(symbol));
    } else if (symbol == '\r' || symbol == '\n') {
        BecomeCharacter(piece, U'\n');
    } else if (symbol == '~') {
        BecomeCharacter(piece, U'\u00A0');
    } else if (symbol == '_') {
        BecomeCharacter(piece, U'-');
    }
}

void RtfScanner::ReadText(RtfPiece& piece) {
    const std::size_t begin = at_;
    while (at_ < rtf_.size() && !IsSpecial(rtf_[at_])) ++at_;
    groups_.back().isEmpty = false;
    const bool isBody = !groups_.back().isHidden && at_ > begin;
    piece.kind = isBody ? RtfPiece::Kind::Text : RtfPiece::Kind::Other;
}

void RtfScanner::BecomeCharacter(RtfPiece& piece, char32_t character) const {
    if (groups_.back().isHidden) return;
    piece.kind = RtfPiece::Kind::Character;
    piece.character = character;
}

}  // namespace bellmark
