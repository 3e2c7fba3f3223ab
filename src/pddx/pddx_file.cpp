#include "pddx/pddx_file.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "pddx/pddx_template.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::string_view lineEnd = "\r\n";

void AddKeys(PDDXSection& section, std::span<const PDDXTemplateKey> keys, std::string_view description) {
    for (const PDDXTemplateKey& key : keys) section.AddElement(key.handle, description, key.dataType, key.value);
}

}  // namespace

int PDDXCount(std::string_view value) {
    // The leading zero makes an empty or negative text read as 0. The limit is one below the greatest int, so that
    // counting up stays in range.
    const double greatest = std::numeric_limits<int>::max() - 1;
    const double number = ReadNumber(std::string("0").append(Trim(value)));
    return static_cast<int>(RoundToWhole(std::min(number, greatest)));
}

PDDXElement::PDDXElement(PDDXSection& parent, std::string_view handle, std::string_view description,
                         PDDXDataType dataType, std::string_view value)
    : parent_(parent), handle_(handle), description_(description), dataType_(dataType), value_(value) {}

void PDDXElement::SetHandle(std::string_view handle) {
    parent_.Elements().Rename(handle_, std::string(handle));
}

void PDDXElement::SetValue(std::string value) {
    value_ = std::move(value);
    ValueChange.Raise();
    parent_.ForwardValueChange(*this);
}

void PDDXElement::PDDX_Output(std::string& text) const {
    if (value_.empty()) return;
    text.append(handle_).append(" = ").append(value_).append(lineEnd);
}

PDDXSection::PDDXSection(PDDXFile& parent, std::string_view handle) : parent_(parent), handle_(handle) {}

void PDDXSection::SetHandle(std::string_view handle) {
    parent_.Sections().Rename(handle_, std::string(handle));
}

PDDXElement& PDDXSection::AddElement(std::string_view handle, std::string_view description, PDDXDataType dataType,
                                     std::string_view value) {
    return elements_.Add(*this, handle, description, dataType, value);
}

PDDXElement& PDDXSection::AddDropData(int index) {
    if (index == 0) {
        PDDXElement& numberOfDrops = Elements("NumberOfDrops");
        index = PDDXCount(numberOfDrops.Value()) + 1;
        numberOfDrops.SetValue(NumberText(index));
    }
    return AddElement("DropData_" + NumberText(index), {}, PDDXDataType::Number, {});
}

PDDXElement& PDDXSection::AddHistoryData(int first, int second) {
    return AddElement("DropHistoryData_" + NumberText(first) + "_" + NumberText(second), {}, PDDXDataType::Number, {});
}

void PDDXSection::RemoveElement(std::string_view handle, std::string_view /*description*/, PDDXDataType /*dataType*/,
                                std::string_view /*value*/) {
    elements_.Remove(handle);
}

void PDDXSection::PDDX_Output(std::string& text) const {
    const bool hasValue = std::any_of(elements_.begin(), elements_.end(),
                                      [](const PDDXElement& element) { return element.PDDX_SectionName(); });
    if (!hasValue) return;
    text.append("[").append(handle_).append("]").append(lineEnd);
    for (const PDDXElement& element : elements_) element.PDDX_Output(text);
    text.append(lineEnd);
}

void PDDXSection::ForwardValueChange(PDDXElement& element) {
    parent_.RaiseValueChange(element);
}

PDDXFile::PDDXFile() {
    for (const PDDXTemplateSection& section : PDDXTemplate()) {
        AddKeys(AddSection(section.handle), section.keys, section.description);
    }
}

PDDXSection& PDDXFile::AddSection(std::string_view handle) {
    return sections_.Contains(handle) ? sections_.At(handle) : sections_.Add(*this, handle);
}

PDDXSection& PDDXFile::AddInterimGain(int loadCellRefTrials) {
    const std::string trials = NumberText(loadCellRefTrials);
    PDDXSection& section = Sections("Device Calibration");
    const std::string_view countHandle = "LoadCellCalibrationCenterReferenceTrials";
    // Each trial has its own date and list; all trials share the count.
    if (!section.Elements().Contains(countHandle)) section.AddElement(countHandle, {}, PDDXDataType::Number, {});
    section.AddElement("LoadCellCalibrationCenterReferenceDate " + trials, {}, PDDXDataType::Date, {});
    section.AddElement("LoadCellCalibrationCenterAdjustmentFactors " + trials, {}, PDDXDataType::Number, {});
    return section;
}

PDDXSection& PDDXFile::AddTestLocation(int index) {
    if (index == 0) {
        PDDXElement& numberOfLocations = Sections("Deflection Data").Elements("NumberOfTestLocations");
        index = PDDXCount(numberOfLocations.Value()) + 1;
        numberOfLocations.SetValue(NumberText(index));
    }
    PDDXSection& section = AddSection("Test Location " + NumberText(index));
    AddKeys(section, TestLocationKeys(), {});
    return section;
}

PDDXSection& PDDXFile::AddBellmarkHistory(int index) {
    if (index == 0) {
        index = PDDXCount(Sections("Device Calibration").Elements("NumberCalibrations").Value()) + 1;
    }
    PDDXSection& section = AddSection("Device Calibration_" + NumberText(index));
    AddKeys(section, BellmarkHistoryKeys(), {});
    return section;
}

void PDDXFile::PDDX_Output(std::string& text) const {
    for (const PDDXSection& section : sections_) section.PDDX_Output(text);
}

}  // namespace bellmark
