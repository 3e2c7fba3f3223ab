#pragma once

#include "app/doors.h"
#include "pddx/pddx_file.h"

namespace bellmark {

/// Stands in for the set-up screen, and counts who asked it for what.
struct FakeSetup : SetupDoor {
    int opened = 0;
    int centerPageOpened = 0;
    int centerReads = 0;
    Path configurationRead;
    bool reviewChoices = false;
    Path simDataLocation;
    PDDXFile runDocument;

    void Open() override { ++opened; }
    void BeginRun() override {}
    void OpenCenterPage() override { ++centerPageOpened; }
    void OpenPage(int) override { ++opened; }
    bool HasBeenThroughCenterPage() const override { return centerPageOpened > 0; }
    void ReadCalCenter() override { ++centerReads; }
    void ReadCalCenterConfig(const Path& path) override { configurationRead = path; }
    void ReadCalCenterFromFolderOf(const Path& configuration) override { configurationRead = configuration; }
    void ReadFWDConfig(const Path&) override {}
    PDDXFile& RunDocument() override { return runDocument; }
    void AllowCalibration() override {}
    void SetReviewChoices(bool reviewMode) override { reviewChoices = reviewMode; }
    void RefreshFromRun() override {}
    Path SimDataLocation() const override { return simDataLocation; }
    std::string LoadCellCalDate() const override { return "01-Mar-2011"; }
    std::string SensorCalDate() const override { return "02-Mar-2011"; }
};

}  // namespace bellmark
