#include "screens/tones.h"

#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>

namespace bellmark {

namespace {

constexpr Tone tones[] = {
    // Text
    {"text", 0x1f2a37, 0xe4e9ee},
    {"title", 0x233443, 0xe4e9ee},
    {"strong", 0x16202b, 0xf2f5f8},
    {"soft", 0x465563, 0xb6c1cb},
    {"faint", 0x55636f, 0xa7b2bc},
    {"off-text", 0x646f7a, 0x9aa5af},
    {"required", 0x8a4b00, 0xf0b46a},
    {"step-number", 0x66737f, 0x9aa6b1},
    // Backgrounds
    {"window", 0xeef1f4, 0x1b2229},
    {"surface", 0xffffff, 0x242d36},
    {"status", 0xf7f9fa, 0x20282f},
    {"read-only", 0xf4f6f8, 0x20282f},
    {"off-surface", 0xe8ebee, 0x2a323a},
    {"table-head", 0xe6ebf0, 0x2c3640},
    {"hover", 0xf0f5fa, 0x2d3843},
    {"pressed", 0xd3e2f1, 0x35506b},
    {"chosen", 0xdbe7f3, 0x2f4a66},
    {"selection", 0xcfe2f5, 0x2f4a66},
    {"selection-text", 0x101820, 0xffffff},
    {"notice", 0xfff4d6, 0x463813},
    {"notice-line", 0xb26a00, 0xe0a040},
    // The band on top of each screen
    {"header", 0x233443, 0x121920},
    {"header-text", 0xdfe7ee, 0xdfe7ee},
    {"header-title", 0xffffff, 0xffffff},
    // The next step, the keyboard, links
    {"accent", 0x1f5fa8, 0x5aa0e6},
    {"accent-hover", 0x2a70be, 0x74b1ef},
    {"accent-strong", 0x174a84, 0x9cc8f5},
    {"on-accent", 0xffffff, 0x0c1a28},
    {"focus-on-accent", 0x0c2c52, 0xdcecfd},
    // Lines
    {"line", 0xcfd6de, 0x3d4954},
    {"grid", 0xdde3e9, 0x36414b},
    {"control-line", 0x8595a5, 0x73818e},
    {"off-line", 0xc9d0d7, 0x3a444e},
    {"indicator", 0x6c7a87, 0x8d9aa6},
    {"off-indicator", 0xb3bcc5, 0x4c5761},
    {"off-checked", 0x8ba6c4, 0x3f5f80},
};

/// Relative luminance of a colour's part, 0 to 1.
double Linear(double part) {
    constexpr double knee = 0.03928;
    return part <= knee ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

}  // namespace

std::span<const Tone> Tones() {
    return tones;
}

QColor ToneColor(const QString& name, bool isDark) {
    const auto found =
        std::find_if(std::begin(tones), std::end(tones), [&](const Tone& tone) { return name == tone.name; });
    if (found == std::end(tones)) throw std::logic_error("There is no tone " + name.toStdString());
    return QColor(isDark ? found->dark : found->light);
}

QString WithTones(const QString& sheet, bool isDark) {
    static const QRegularExpression toneName(QStringLiteral("@([a-z-]+)"));
    QString filled;
    qsizetype end = 0;
    for (auto names = toneName.globalMatch(sheet); names.hasNext();) {
        const QRegularExpressionMatch match = names.next();
        filled += QStringView(sheet).mid(end, match.capturedStart() - end);
        filled += ToneColor(match.captured(1), isDark).name();
        end = match.capturedEnd();
    }
    filled += QStringView(sheet).mid(end);
    return filled;
}

double Contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace bellmark
