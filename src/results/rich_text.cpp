#include "results/rich_text.h"

#include <algorithm>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr char unsearchable = '\x1A';  // stands for a letter beyond ASCII: no keyword has one

std::string HexByte(char byte) {
    constexpr const char* digits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    return std::string("\\'") + digits[value >> 4U] + digits[value & 0x0FU];
}

/// The UTF-16 code units of a UTF-8 character, as \u needs them.
std::string UnicodeControls(std::string_view character) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(character[i])); };
    const auto control = [](unsigned unit) {
        return "\\u" + NumberText(unit > 0x7FFFU ? static_cast<int>(unit) - 0x10000 : static_cast<int>(unit)) + '?';
    };
    unsigned code = byte(0) & (character.size() == 2 ? 0x1FU : character.size() == 3 ? 0x0FU : 0x07U);
    for (std::size_t i = 1; i < character.size(); ++i) code = (code << 6U) | (byte(i) & 0x3FU);
    if (code < 0x10000U) return "{\\uc1" + control(code) + '}';
    code -= 0x10000U;
    return "{\\uc1" + control(0xD800U + (code >> 10U)) + control(0xDC00U + (code & 0x3FFU)) + '}';
}

std::string EscapedLetter(std::string_view character, bool isWindows1252) {
    if (isWindows1252) {
        try {
            return HexByte(ToWindows1252(character)[0]);
        } catch (const EncodingError&) {
            // Not in the code page: written as its Unicode number.
        }
    }
    return UnicodeControls(character);
}

bool IsTableWord(std::string_view word) {
    return word == "intbl" || word == "cellx" || StartsWith(word, "tr") || StartsWith(word, "cl");
}

}  // namespace

std::string EscapedForRtf(std::string_view value, bool isWindows1252) {
    std::string rtf;
    while (!value.empty()) {
        const std::string character = FirstCharacters(value, 1);
        value.remove_prefix(character.size());
        const char c = character[0];
        if (c == '\r' && !value.empty() && value[0] == '\n') continue;
        if (c == '\r' || c == '\n') {
            rtf += "\\par ";
        } else if (c == '\t') {
            rtf += "\\tab ";
        } else if (c == '\\' || c == '{' || c == '}') {
            (rtf += '\\') += c;
        } else if (character.size() > 1) {
            rtf += EscapedLetter(character, isWindows1252);
        } else if (c >= ' ' && c != '\x7F') {
            rtf += c;
        }
    }
    return rtf;
}

RichText::RichText(std::string rtf) : rtf_(std::move(rtf)) {
    RtfScanner scanner(rtf_);
    for (RtfPiece piece; scanner.Next(piece);) {
        if (piece.kind == RtfPiece::Kind::Text) text_ += piece.source;
        if (piece.kind == RtfPiece::Kind::Character) {
            text_ += piece.character < 0x80 ? static_cast<char>(piece.character) : unsearchable;
        }
        if (piece.kind == RtfPiece::Kind::Word && piece.word == "ansicpg") isWindows1252_ = piece.number == 1252;
    }
}

void RichText::Cover(std::size_t begin, std::size_t end) {
    std::fill(text_.begin() + static_cast<std::ptrdiff_t>(begin), text_.begin() + static_cast<std::ptrdiff_t>(end),
              '\0');
}

bool RichText::ReplaceKeyword(std::string_view value, std::string_view keyword) {
    const auto begin = text_.find(keyword);
    if (begin == std::string::npos) return false;
    const auto end = begin + keyword.size();
    const std::string escaped = EscapedForRtf(value, isWindows1252_);
    edits_.push_back({begin, end, escaped.empty() ? escaped : "{\\highlight0 " + escaped + '}', false});
    Cover(begin, end);
    return true;
}

bool RichText::RemoveBetween(std::string_view from, std::string_view upTo) {
    const auto begin = text_.find(from);
    if (begin == std::string::npos) return false;
    const auto end = text_.find(upTo, begin);
    if (end == std::string::npos || end == begin) return false;
    std::erase_if(edits_, [&](const Edit& edit) { return edit.begin >= begin && edit.end <= end; });
    edits_.push_back({begin, end, {}, true});
    Cover(begin, end);
    return true;
}

/// Copies the source without the parts that the edits cover.
class RichText::Writer {
  public:
    Writer(const RichText& text, std::vector<Edit> edits) : edits_(std::move(edits)) {
        rtf_.reserve(text.rtf_.size() + text.rtf_.size() / 8);
        std::sort(edits_.begin(), edits_.end(), [](const Edit& a, const Edit& b) { return a.begin < b.begin; });
        RtfScanner scanner(text.rtf_);
        for (RtfPiece piece; scanner.Next(piece);) Add(piece);
    }

    std::string Take() { return std::move(rtf_); }

  private:
    void Add(const RtfPiece& piece) {
        if (piece.kind == RtfPiece::Kind::Text) {
            AddText(piece.source);
        } else if (piece.kind == RtfPiece::Kind::Character) {
            AddVisible(piece.source, 1);
        } else if (IsInsideRemovedBlock()) {
            AddOfRemovedBlock(piece);
        } else {
            AddAsItIs(piece.source);
            needsDelimiter_ = piece.kind == RtfPiece::Kind::Word && piece.needsDelimiter;
        }
    }

    void AddText(std::string_view text) {
        while (!text.empty()) {
            LeaveRemovedBlock();
            const std::size_t boundary = next_ < edits_.size()
                                             ? (at_ < edits_[next_].begin ? edits_[next_].begin : edits_[next_].end)
                                             : at_ + text.size();
            const std::size_t length = std::min(text.size(), boundary - at_);
            AddVisible(text.substr(0, length), length);
            text.remove_prefix(length);
        }
    }

    /// characters: those that the source shows. An edit covers either all or none of them.
    void AddVisible(std::string_view source, std::size_t characters) {
        LeaveRemovedBlock();
        if (next_ < edits_.size() && at_ >= edits_[next_].begin) {
            LeaveOut(characters);
        } else {
            AddAsItIs(source);
            at_ += characters;
        }
    }

    void LeaveOut(std::size_t characters) {
        const Edit& edit = edits_[next_];
        // The delimiter keeps the following text from becoming part of the control word.
        if (needsDelimiter_) AddAsItIs(" ");
        if (at_ == edit.begin) AddAsItIs(edit.value);
        at_ += characters;
        if (at_ >= edit.end && !edit.removesBlock) ++next_;
    }

    /// A removed block reaches to the next letter: controls in between are removed with it.
    void LeaveRemovedBlock() {
        if (!IsInsideRemovedBlock() || at_ < edits_[next_].end) return;
        if (needsDelimiter_) AddAsItIs(" ");
        ++next_;
        opened_.clear();
    }

    bool IsInsideRemovedBlock() const {
        return next_ < edits_.size() && edits_[next_].removesBlock && at_ > edits_[next_].begin;
    }

    /// A group that begins and ends in the block is removed. Other groups keep their braces and formatting.
    void AddOfRemovedBlock(const RtfPiece& piece) {
        if (piece.kind == RtfPiece::Kind::Close && !opened_.empty()) {
            rtf_.resize(opened_.back().begin);
            needsDelimiter_ = opened_.back().neededDelimiter;
            opened_.pop_back();
            return;
        }
        if (piece.kind == RtfPiece::Kind::Open) opened_.push_back({rtf_.size(), needsDelimiter_});
        const bool isOfTable = piece.kind == RtfPiece::Kind::Word && IsTableWord(piece.word);
        if (isOfTable) return;
        AddAsItIs(piece.source);
        needsDelimiter_ = piece.kind == RtfPiece::Kind::Word && piece.needsDelimiter;
    }

    void AddAsItIs(std::string_view source) {
        rtf_ += source;
        if (!source.empty()) needsDelimiter_ = false;
    }

    std::vector<Edit> edits_;
    std::size_t next_ = 0;  ///< index of the current or next edit
    std::size_t at_ = 0;    ///< in the text
    std::string rtf_;
    bool needsDelimiter_ = false;

    /// A group opened within the removed block: where it begins, and what was written before it.
    struct OpenedGroup {
        std::size_t begin = 0;
        bool neededDelimiter = false;
    };
    std::vector<OpenedGroup> opened_;
};

std::string RichText::Rtf() const {
    return Writer(*this, edits_).Take();
}

}  // namespace bellmark
