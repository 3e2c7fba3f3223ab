#include "results/rich_text_reader.h"

#include "platform/text.h"
#include "results/rtf_scanner.h"

namespace bellmark {

namespace {

constexpr double twipsPerPoint = 20;

void AppendUtf8(std::string& text, char32_t c) {
    const auto add = [&](char32_t bits) { text += static_cast<char>(static_cast<unsigned char>(bits)); };
    if (c < 0x80) {
        add(c);
    } else if (c < 0x800) {
        add(0xC0 | (c >> 6U));
        add(0x80 | (c & 0x3FU));
    } else {
        add(0xE0 | (c >> 12U));
        add(0x80 | ((c >> 6U) & 0x3FU));
        add(0x80 | (c & 0x3FU));
    }
}

bool SameFormat(const FormattedRun& a, const FormattedRun& b) {
    return a.pointSize == b.pointSize && a.isBold == b.isBold && a.isItalic == b.isItalic &&
           a.isUnderlined == b.isUnderlined;
}

class Reader {
  public:
    explicit Reader(std::string_view rtf) {
        RtfScanner scanner(rtf);
        for (RtfPiece piece; scanner.Next(piece);) Take(piece);
        if (!paragraph_.runs.empty()) EndParagraph();
    }

    FormattedText text;

  private:
    void Take(const RtfPiece& piece) {
        switch (piece.kind) {
            case RtfPiece::Kind::Text:
                Add(FromWindows1252(piece.source));
                break;
            case RtfPiece::Kind::Character:
                TakeCharacter(piece);
                break;
            case RtfPiece::Kind::Open:
                outer_.push_back(format_);
                break;
            case RtfPiece::Kind::Close:
                if (!outer_.empty()) {
                    format_ = outer_.back();
                    outer_.pop_back();
                }
                break;
            case RtfPiece::Kind::Word:
                TakeWord(piece.word, piece.number);
                break;
            case RtfPiece::Kind::Other:
                break;
        }
    }

    void TakeCharacter(const RtfPiece& piece) {
        const bool breaksLine = piece.word == "line";
        if (piece.character == U'\n' && !breaksLine) {
            EndParagraph();
        } else if (piece.character == U'\f') {
            if (!paragraph_.runs.empty()) EndParagraph();
            paragraph_.beginsPage = true;
        } else if (piece.character == U'\a') {
            Add("\t");
        } else {
            std::string letter;
            AppendUtf8(letter, piece.character);
            Add(letter);
        }
    }

    void TakeWord(std::string_view word, int number) {
        FormattedRun& run = format_.run;
        if (word == "b") run.isBold = number != 0;
        if (word == "i") run.isItalic = number != 0;
        if (word == "ul") run.isUnderlined = number != 0;
        if (word == "ulnone") run.isUnderlined = false;
        if (word == "fs" && number > 0) run.pointSize = number / 2.0;
        if (word == "plain") run = {};
        TakeParagraphWord(word, number / twipsPerPoint);
    }

    void TakeParagraphWord(std::string_view word, double points) {
        FormattedParagraph& shape = format_.paragraph;
        if (word == "pard") {
            shape = {};
            nextTab_ = Alignment::Left;
        }
        if (word == "ql") shape.alignment = Alignment::Left;
        if (word == "qc") shape.alignment = Alignment::Center;
        if (word == "qr") shape.alignment = Alignment::Right;
        if (word == "qj") shape.alignment = Alignment::Justified;
        if (word == "li") shape.leftIndent = points;
        if (word == "fi") shape.firstLineIndent = points;
        if (word == "sb") shape.spaceBefore = points;
        if (word == "sa") shape.spaceAfter = points;
        if (word == "brdrb") shape.hasRuleBelow = true;
        if (word == "brdrnone") shape.hasRuleBelow = false;
        if (word == "tqc") nextTab_ = Alignment::Center;
        if (word == "tqr" || word == "tqdec") nextTab_ = Alignment::Right;
        if (word == "tx") {
            shape.tabs.push_back({points, nextTab_});
            nextTab_ = Alignment::Left;
        }
    }

    void Add(std::string_view letters) {
        auto& runs = paragraph_.runs;
        if (runs.empty() || !SameFormat(runs.back(), format_.run)) {
            runs.push_back(format_.run);
            runs.back().text.clear();
        }
        runs.back().text += letters;
    }

    /// The settings at a paragraph's end apply to all of it.
    void EndParagraph() {
        FormattedParagraph ended = format_.paragraph;
        ended.runs = std::move(paragraph_.runs);
        ended.beginsPage = paragraph_.beginsPage;
        text.paragraphs.push_back(std::move(ended));
        paragraph_ = {};
    }

    struct Format {
        FormattedRun run;
        FormattedParagraph paragraph;
    };
    Format format_;
    std::vector<Format> outer_;
    FormattedParagraph paragraph_;  ///< the one being read: its runs and its page break
    Alignment nextTab_ = Alignment::Left;
};

}  // namespace

FormattedText ReadRichText(std::string_view rtf) {
    return Reader(rtf).text;
}

}  // namespace bellmark
