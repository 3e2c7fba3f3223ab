#pragma once

#include <string>
#include <string_view>

#include "pddx/pddx_collection.h"
#include "pddx/pddx_event.h"

/// A Pavement Deflection Data Exchange file in memory: an ordered tree of sections and keyed values.
namespace bellmark {

class PDDXFile;
class PDDXSection;

/// What a value is. Kept with the element for its users; neither writer nor reader looks at it.
enum class PDDXDataType { Number = 1, Text = 2, TimeOfDay = 3, Date = 4, UnitName = 5 };

/// The value of a count such as "NumberOfDrops"; 0 for an empty or negative text and for one that is not a number.
int PDDXCount(std::string_view value);

/// One keyed value of a section.
class PDDXElement {
  public:
    static constexpr std::string_view kind = "element";

    /// Made by PDDXSection::AddElement.
    PDDXElement(PDDXSection& parent, std::string_view handle, std::string_view description, PDDXDataType dataType,
                std::string_view value);
    PDDXElement(const PDDXElement&) = delete;
    PDDXElement& operator=(const PDDXElement&) = delete;

    PDDXSection& Parent() const { return parent_; }

    /// The key as written in the file, and in the section's collection. A new one must be free there, or PDDXError.
    const std::string& Handle() const { return handle_; }
    void SetHandle(std::string_view handle);

    /// Free text, never written to a file.
    const std::string& Description() const { return description_; }
    void SetDescription(std::string_view description) { description_ = description; }

    PDDXDataType DataType() const { return dataType_; }
    void SetDataType(PDDXDataType dataType) { dataType_ = dataType; }

    /// The text written to the file. Each setting raises ValueChange of the element and then of the file, also when the
    /// text stays the same.
    const std::string& Value() const { return value_; }
    void SetValue(std::string value);

    /// A mark for callers, not written.
    bool Flagged() const { return flagged_; }
    void SetFlagged(bool flagged) { flagged_ = flagged; }

    /// Adds the element's line; nothing when it has no value.
    void PDDX_Output(std::string& text) const;

    /// Whether the element has a value, and its section therefore a header in the file.
    bool PDDX_SectionName() const { return !value_.empty(); }

    PDDXEvent<> Invalid;  ///< never raised: no value is refused
    PDDXEvent<> ValueChange;

  private:
    friend class PDDXCollection<PDDXElement>;

    PDDXSection& parent_;
    std::string handle_;
    std::string description_;
    PDDXDataType dataType_;
    std::string value_;
    bool flagged_ = false;
};

/// One section and its elements, which are written in the order in which they were added.
class PDDXSection {
  public:
    static constexpr std::string_view kind = "section";

    /// Made by PDDXFile::AddSection.
    PDDXSection(PDDXFile& parent, std::string_view handle);
    PDDXSection(const PDDXSection&) = delete;
    PDDXSection& operator=(const PDDXSection&) = delete;

    PDDXFile& Parent() const { return parent_; }

    /// Name of the section, without brackets. A new one must be free in the file, or PDDXError.
    const std::string& Handle() const { return handle_; }
    void SetHandle(std::string_view handle);

    PDDXCollection<PDDXElement>& Elements() { return elements_; }
    const PDDXCollection<PDDXElement>& Elements() const { return elements_; }

    /// Throw PDDXError when the section has no such element.
    PDDXElement& Elements(std::string_view handle) { return elements_.At(handle); }
    const PDDXElement& Elements(std::string_view handle) const { return elements_.At(handle); }

    /// Throws PDDXError when the handle is there already.
    PDDXElement& AddElement(std::string_view handle, std::string_view description, PDDXDataType dataType,
                            std::string_view value);

    /// Adds the empty element "DropData_" + index. Index 0 counts "NumberOfDrops" up and takes the new count.
    PDDXElement& AddDropData(int index);

    /// Adds the empty element "DropHistoryData_" + first + "_" + second.
    PDDXElement& AddHistoryData(int first, int second);

    /// Removes the element that AddElement made; only the handle counts. Throws PDDXError when it is not there.
    void RemoveElement(std::string_view handle, std::string_view description, PDDXDataType dataType,
                       std::string_view value);

    /// Adds the header, the lines and an empty line; nothing when no element has a value.
    void PDDX_Output(std::string& text) const;

  private:
    friend class PDDXCollection<PDDXSection>;
    friend class PDDXElement;

    void ForwardValueChange(PDDXElement& element);

    PDDXFile& parent_;
    std::string handle_;
    PDDXCollection<PDDXElement> elements_;
};

/// One document. A new one holds the sections and keys of a calibration record, nearly all without a value.
class PDDXFile {
  public:
    PDDXFile();
    PDDXFile(const PDDXFile&) = delete;
    PDDXFile& operator=(const PDDXFile&) = delete;

    PDDXCollection<PDDXSection>& Sections() { return sections_; }
    const PDDXCollection<PDDXSection>& Sections() const { return sections_; }

    /// Throw PDDXError when the document has no such section.
    PDDXSection& Sections(std::string_view handle) { return sections_.At(handle); }
    const PDDXSection& Sections(std::string_view handle) const { return sections_.At(handle); }

    /// The section of that name, added as the last when it is not there yet.
    PDDXSection& AddSection(std::string_view handle);

    /// Adds the keys of one more load cell trial to "Device Calibration" and returns that section.
    /// Throws PDDXError when the trial's keys are there already.
    PDDXSection& AddInterimGain(int loadCellRefTrials);

    /// Adds "Test Location " + index. Index 0 counts "NumberOfTestLocations" up and takes the new count.
    /// Throws PDDXError when the location is there already.
    PDDXSection& AddTestLocation(int index);

    /// Adds "Device Calibration_" + index. Index 0 takes "NumberCalibrations" + 1; counting up is left to the caller.
    /// Throws PDDXError when the entry is there already.
    PDDXSection& AddBellmarkHistory(int index);

    /// Adds the whole document, lines ending in CR LF. The text is UTF-8; it is converted to the file's code page when
    /// it is stored.
    void PDDX_Output(std::string& text) const;

    /// Raised at every setting of a value anywhere in the document.
    PDDXEvent<PDDXElement&> ValueChange;

  private:
    friend class PDDXSection;

    void RaiseValueChange(PDDXElement& element) { ValueChange.Raise(element); }

    PDDXCollection<PDDXSection> sections_;
};

}  // namespace bellmark
