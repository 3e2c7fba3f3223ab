#include "platform/profile_strings.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <string>
#include <unordered_map>

#include "platform/files.h"
#include "platform/text.h"

namespace bellmark {

namespace {

enum class LineKind { Header, Key, Other };

struct Line {
    LineKind kind;
    std::string text;  ///< with its line ending
};

using Lines = std::list<Line>;  // positions must outlive insertions and removals elsewhere

/// A section that can be reached: the first of its name.
struct Section {
    Lines::iterator lastKeyOrHeader;
    std::unordered_map<std::string, Lines::iterator> keys;  ///< by name in lower case, the first of each
    bool hasRepeatedKeys = false;
};

/// Where the line ends that the text starts with.
std::size_t LineEnd(std::string_view text) {
    const auto end = std::find_if(text.begin(), text.end(), [](char byte) { return byte == '\n' || byte == '\r'; });
    return static_cast<std::size_t>(end - text.begin());
}

std::string_view WithoutEnding(std::string_view line) {
    return line.substr(0, LineEnd(line));
}

LineKind KindOf(std::string_view line) {
    const std::string_view content = Trim(WithoutEnding(line));
    if (StartsWith(content, "[")) return LineKind::Header;
    if (StartsWith(content, ";")) return LineKind::Other;
    return content.find('=') != std::string_view::npos ? LineKind::Key : LineKind::Other;
}

std::string_view SectionName(std::string_view headerLine) {
    const std::string_view behindBracket = Trim(WithoutEnding(headerLine)).substr(1);
    return Trim(behindBracket.substr(0, behindBracket.find(']')));
}

std::string_view KeyName(std::string_view keyLine) {
    return Trim(keyLine.substr(0, keyLine.find('=')));
}

std::string_view KeyValue(std::string_view keyLine) {
    const std::string_view content = WithoutEnding(keyLine);
    const std::string_view value = Trim(content.substr(content.find('=') + 1));
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Bytes of the text's first line with its ending.
std::size_t LineLength(std::string_view text) {
    const std::size_t end = LineEnd(text);
    return std::min(end + (StartsWith(text.substr(end), "\r\n") ? 2 : 1), text.size());
}

/// A byte order mark at the start of the text: the character itself, or its three bytes each read as Windows-1252.
std::string_view ByteOrderMark(std::string_view text) {
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xC3\xAF\xC2\xBB\xC2\xBF"}) {
        if (StartsWith(text, mark)) return text.substr(0, mark.size());
    }
    return {};
}

void CompleteEnding(std::string& line) {
    if (line.empty() || (line.back() != '\n' && line.back() != '\r')) line += "\r\n";
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

bool HasLineBreak(std::string_view text) {
    return LineEnd(text) < text.size();
}

}  // namespace

struct ProfileStrings::Image {
    std::string byteOrderMark;
    Lines lines;
    std::unordered_map<std::string, Section> sections;  ///< by name in lower case

    explicit Image(std::string_view text) {
        byteOrderMark = ByteOrderMark(text);
        text.remove_prefix(byteOrderMark.size());
        Section* current = nullptr;
        while (!text.empty()) {
            const std::string_view line = text.substr(0, LineLength(text));
            AddLine(line, current);
            text.remove_prefix(line.size());
        }
    }

    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// current: the section that the last lines belong to, kept between calls; null when it cannot be reached.
    void AddLine(std::string_view line, Section*& current) {
        const LineKind kind = KindOf(line);
        if (kind == LineKind::Other && !lines.empty() && lines.back().kind == LineKind::Other) {
            lines.back().text += line;
            return;
        }
        lines.push_back({kind, std::string(line)});
        const auto position = std::prev(lines.end());
        if (kind == LineKind::Header) {
            const auto [section, isFirst] = sections.try_emplace(LowerCase(SectionName(line)));
            current = isFirst ? &section->second : nullptr;
        }
        if (!current || kind == LineKind::Other) return;
        current->lastKeyOrHeader = position;
        if (kind == LineKind::Key && !current->keys.try_emplace(LowerCase(KeyName(line)), position).second) {
            current->hasRepeatedKeys = true;
        }
    }

    Section* Find(std::string_view section) {
        const auto found = sections.find(LowerCase(Trim(section)));
        return found == sections.end() ? nullptr : &found->second;
    }

    std::string Text() const {
        std::size_t size = byteOrderMark.size();
        for (const Line& line : lines) size += line.text.size();
        std::string text;
        text.reserve(size);
        text = byteOrderMark;
        for (const Line& line : lines) text += line.text;
        return text;
    }

    Section& AddSection(std::string_view name) {
        if (!lines.empty()) CompleteEnding(lines.back().text);
        lines.push_back({LineKind::Header, "[" + std::string(name) + "]\r\n"});
        Section& section = sections[LowerCase(name)];
        section.lastKeyOrHeader = std::prev(lines.end());
        return section;
    }

    void AddKey(Section& section, std::string_view key, std::string_view value) {
        CompleteEnding(section.lastKeyOrHeader->text);
        section.lastKeyOrHeader = lines.insert(std::next(section.lastKeyOrHeader),
                                               {LineKind::Key, std::string(key) + "=" + std::string(value) + "\r\n"});
        section.keys[LowerCase(key)] = section.lastKeyOrHeader;
    }

    /// A line before this place was removed. False when its neighbours now join into one line: CR before LF.
    bool StayApart(Lines::iterator place) const {
        if (place == lines.begin() || place == lines.end()) return true;
        return std::prev(place)->text.back() != '\r' || place->text.front() != '\n';
    }

    /// Makes the next key of that name in the section, from this place on, the one that is found.
    void UncoverRepeatedKey(Section& section, const std::string& lowerKey, Lines::iterator place) {
        for (; place != lines.end() && place->kind != LineKind::Header; ++place) {
            if (place->kind == LineKind::Key && EqualIgnoringCase(KeyName(place->text), lowerKey)) {
                section.keys[lowerKey] = place;
                return;
            }
        }
    }
};

ProfileStrings::ProfileStrings() : ProfileStrings(std::string_view()) {}
ProfileStrings::ProfileStrings(std::string_view text) : image_(std::make_unique<Image>(text)) {}
ProfileStrings::~ProfileStrings() = default;
ProfileStrings::ProfileStrings(ProfileStrings&&) noexcept = default;
ProfileStrings& ProfileStrings::operator=(ProfileStrings&&) noexcept = default;

std::string ProfileStrings::Get(std::string_view section, std::string_view key, std::string_view defaultText,
                                std::size_t size) const {
    const std::size_t limit = size > 0 ? size - 1 : 0;
    if (const Section* found = image_->Find(section)) {
        const auto line = found->keys.find(LowerCase(Trim(key)));
        if (line != found->keys.end()) return FirstCharacters(KeyValue(line->second->text), limit);
    }
    return FirstCharacters(WithoutTrailingBlanks(defaultText), limit);
}

bool ProfileStrings::HasSection(std::string_view section) const {
    return image_->Find(section) != nullptr;
}

std::vector<std::string> ProfileStrings::SectionNames() const {
    std::vector<std::string> names;
    names.reserve(image_->sections.size());
    for (const auto& [name, section] : image_->sections) names.push_back(name);
    return names;
}

std::string ProfileStrings::SectionText(std::string_view section) const {
    const Section* found = image_->Find(section);
    if (!found) return {};
    auto line = found->lastKeyOrHeader;
    while (line->kind != LineKind::Header) --line;
    std::string text = line->text;
    for (++line; line != image_->lines.end() && line->kind != LineKind::Header; ++line) text += line->text;
    return text;
}

void ProfileStrings::Set(std::string_view section, std::string_view key, std::string_view value) {
    const std::string_view sectionName = Trim(section);
    const std::string_view keyName = Trim(key);
    Section* found = image_->Find(sectionName);
    if (!found) found = &image_->AddSection(sectionName);
    const auto line = found->keys.find(LowerCase(keyName));
    if (line == found->keys.end()) {
        image_->AddKey(*found, keyName, value);
    } else {
        std::string& text = line->second->text;
        text = std::string(KeyName(text)) + "=" + std::string(value) + "\r\n";
    }
    // Unquoted, these values would be read back differently.
    const bool readsBackOtherwise = HasLineBreak(value) || HasLineBreak(sectionName) || HasLineBreak(keyName) ||
                                    sectionName.find(']') != std::string_view::npos ||
                                    keyName.find('=') != std::string_view::npos || StartsWith(keyName, "[") ||
                                    StartsWith(keyName, ";");
    if (readsBackOtherwise) image_ = std::make_unique<Image>(Text());
}

void ProfileStrings::RemoveKey(std::string_view section, std::string_view key) {
    Section* found = image_->Find(section);
    if (!found) return;
    const std::string lowerKey = LowerCase(Trim(key));
    const auto entry = found->keys.find(lowerKey);
    if (entry == found->keys.end()) return;
    const auto line = entry->second;
    if (line == found->lastKeyOrHeader) {
        do --found->lastKeyOrHeader;
        while (found->lastKeyOrHeader->kind == LineKind::Other);
    }
    found->keys.erase(entry);
    const auto next = image_->lines.erase(line);
    if (found->hasRepeatedKeys) image_->UncoverRepeatedKey(*found, lowerKey, next);
    if (!image_->StayApart(next)) image_ = std::make_unique<Image>(Text());
}

void ProfileStrings::RemoveSection(std::string_view section) {
    Section* found = image_->Find(section);
    if (!found) return;
    auto line = found->lastKeyOrHeader;
    while (line->kind != LineKind::Header) {
        const auto previous = std::prev(line);
        if (line->kind == LineKind::Key) image_->lines.erase(line);
        line = previous;
    }
    image_->lines.erase(line);
    // A second section of that name, unreachable until now, becomes the first.
    image_ = std::make_unique<Image>(Text());
}

std::string ProfileStrings::Text() const {
    return image_->Text();
}

ProfileStrings OpenProfileStrings(const FileSystem& files, const std::filesystem::path& path) {
    try {
        return ProfileStrings(ReadTextFile(files, path));
    } catch (const FileError&) {
        return {};
    }
}

void SaveProfileStrings(FileSystem& files, const std::filesystem::path& path, const ProfileStrings& strings) {
    ReplaceTextFile(files, path, strings.Text());
}

}  // namespace bellmark
