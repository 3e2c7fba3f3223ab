#pragma once

#include <string>
#include <vector>

/// A text with its formatting, as it is shown and printed. Lengths are in points, a 72nd of an inch.
namespace bellmark {

struct FormattedRun {
    std::string text;  ///< UTF-8; '\t' goes to the next tab stop, '\n' breaks the line within the paragraph
    double pointSize = 12;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    friend bool operator==(const FormattedRun&, const FormattedRun&) = default;
};

enum class Alignment { Left, Center, Right, Justified };

struct TabStop {
    double position = 0;  ///< from the left margin
    Alignment alignment = Alignment::Left;
    friend bool operator==(const TabStop&, const TabStop&) = default;
};

struct FormattedParagraph {
    std::vector<FormattedRun> runs;
    Alignment alignment = Alignment::Left;
    double leftIndent = 0;
    double firstLineIndent = 0;
    double spaceBefore = 0;
    double spaceAfter = 0;
    std::vector<TabStop> tabs;
    bool beginsPage = false;
    bool hasRuleBelow = false;  ///< a line across the sheet, as under a heading
    friend bool operator==(const FormattedParagraph&, const FormattedParagraph&) = default;
};

struct FormattedText {
    std::vector<FormattedParagraph> paragraphs;
    friend bool operator==(const FormattedText&, const FormattedText&) = default;
};

/// The text without formatting, one line per paragraph, separated by '\n'.
inline std::string PlainText(const FormattedText& text) {
    std::string plain;
    for (const auto& paragraph : text.paragraphs) {
        if (&paragraph != &text.paragraphs.front()) plain += '\n';
        for (const auto& run : paragraph.runs) plain += run.text;
    }
    return plain;
}

}  // namespace bellmark
