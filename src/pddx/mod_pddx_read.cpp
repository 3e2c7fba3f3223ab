#include "pddx/mod_pddx_read.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "platform/numbers.h"
#include "platform/profile_strings.h"

namespace bellmark {

namespace {

constexpr std::size_t bufferSize = 255;  // a value keeps one character less

std::string Reply(const ProfileStrings& strings, std::string_view section, std::string_view key) {
    return strings.Get(section, key, {}, bufferSize);
}

/// Some programs pad names with NUL bytes, which no list or file name can hold. Numbers keep them: the rest of a
/// damaged number must not be taken for a number.
std::string ReplyFor(const PDDXElement& element, const ProfileStrings& strings, std::string_view section) {
    std::string reply = Reply(strings, section, element.Handle());
    if (element.DataType() == PDDXDataType::Text) std::erase(reply, '\0');
    return reply;
}

bool IsCount(std::string_view handle) {
    return handle == "NumberOfTestLocations" || handle == "NumberOfDrops" || handle == "NumberCalibrations";
}

/// One reading of one file into one document.
class Reading {
  public:
    Reading(const ProfileStrings& strings, PDDXFile& document, bool keepExisting)
        : strings_(strings), document_(document), keepExisting_(keepExisting) {}

    void ReadKnownSections() {
        for (PDDXSection& section : document_.Sections()) {
            for (PDDXElement& element : section.Elements()) ReadPDDXElement(strings_, element, keepExisting_);
        }
    }

    std::optional<int> NumberOfSensors() const {
        const auto& value = document_.Sections("Device Configuration").Elements("NumberOfDeflectionSensors").Value();
        const int number = PDDXCount(value);
        if (number == 0 || number > std::numeric_limits<std::int16_t>::max()) return std::nullopt;
        return number;
    }

    void ReadTestLocations() {
        const int count = Count("Deflection Data", "NumberOfTestLocations");
        for (int index = 1; index <= count; ++index) {
            const std::string source = "Test Location " + NumberText(index);
            if (!Believable(strings_.HasSection(source))) return;
            PDDXSection& location = keepExisting_     ? document_.AddTestLocation(0)
                                    : IsThere(source) ? document_.Sections(source)
                                                      : document_.AddTestLocation(index);
            ReadAdded(location, source);
            ReadDrops(location, source);
        }
    }

    void ReadHistory() {
        const int count = Count("Device Calibration", "NumberCalibrations");
        for (int index = 1; index <= count; ++index) {
            const std::string source = "Device Calibration_" + NumberText(index);
            if (!Believable(strings_.HasSection(source))) return;
            PDDXSection& entry = keepExisting_     ? AppendedHistory()
                                 : IsThere(source) ? document_.Sections(source)
                                                   : document_.AddBellmarkHistory(index);
            ReadAdded(entry, source);
        }
    }

  private:
    int Count(std::string_view section, std::string_view key) const { return PDDXCount(Reply(strings_, section, key)); }

    /// True when the location or entry exists, as in a document that was read before.
    bool IsThere(std::string_view section) const { return document_.Sections().Contains(section); }

    /// Whether to take in one more announced entry.
    bool Believable(bool isInFile) {
        if (isInFile) {
            ++missingAllowed_;
            return true;
        }
        if (missingAllowed_ == 0) return false;
        --missingAllowed_;
        return true;
    }

    void ReadAdded(PDDXSection& section, std::string_view source) {
        for (PDDXElement& element : section.Elements()) {
            if (keepExisting_ && IsCount(element.Handle())) continue;
            element.SetValue(ReplyFor(element, strings_, source));
        }
    }

    void ReadDrops(PDDXSection& location, std::string_view source) {
        const int count = Count(source, "NumberOfDrops");
        for (int index = 1; index <= count; ++index) {
            const std::string handle = "DropData_" + NumberText(index);
            std::string reply = Reply(strings_, source, handle);
            if (!Believable(!reply.empty())) return;
            PDDXElement& drop = keepExisting_                          ? location.AddDropData(0)
                                : location.Elements().Contains(handle) ? location.Elements(handle)
                                                                       : location.AddDropData(index);
            drop.SetValue(std::move(reply));
        }
    }

    PDDXSection& AppendedHistory() {
        PDDXElement& count = document_.Sections("Device Calibration").Elements("NumberCalibrations");
        PDDXSection& entry = document_.AddBellmarkHistory(0);
        count.SetValue(NumberText(PDDXCount(count.Value()) + 1));
        return entry;
    }

    const ProfileStrings& strings_;
    PDDXFile& document_;
    bool keepExisting_;
    std::int64_t missingAllowed_ = 1000;
};

/// A step ends early when the document has no such handle or the number is taken; reading goes on with the next step.
template <class Step>
void GoOnAfter(Step step) {
    try {
        step();
    } catch (const PDDXError&) {
    }
}

}  // namespace

void ReadPDDXElement(const ProfileStrings& strings, PDDXElement& element, bool keepExisting) {
    if (keepExisting && IsCount(element.Handle())) return;
    std::string reply = ReplyFor(element, strings, element.Parent().Handle());
    if (!reply.empty() || !keepExisting) element.SetValue(std::move(reply));
}

PDDXReadResult ReadPDDXFile(const FileSystem& files, const Path& path, PDDXFile& document, bool keepExisting) {
    ProfileStrings strings;
    bool readable = true;
    try {
        strings = ProfileStrings(ReadTextFile(files, path));
    } catch (const FileError&) {
        // The result reports it; callers judge the empty file.
        readable = false;
    }
    PDDXReadResult result = ReadPDDX(strings, document, keepExisting);
    result.readable = readable;
    return result;
}

PDDXReadResult ReadPDDX(const ProfileStrings& strings, PDDXFile& document, bool keepExisting) {
    PDDXReadResult result;
    result.readable = true;
    Reading reading(strings, document, keepExisting);
    reading.ReadKnownSections();
    GoOnAfter([&] { result.numberOfSensors = reading.NumberOfSensors(); });
    GoOnAfter([&] { reading.ReadTestLocations(); });
    GoOnAfter([&] { reading.ReadHistory(); });
    return result;
}

}  // namespace bellmark
