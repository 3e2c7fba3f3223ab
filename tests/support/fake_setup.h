#pragma once

#include "app/doors.h"

namespace bellmark {

/// Stands in for the set-up screen, and counts who asked it for what.
struct FakeSetup : SetupDoor {
    int opened = 0;
    int centerPageOpened = 0;
    int centerReads = 0;
    Path configurationRead;
    bool reviewChoices = false;
    Path simDataLocation;

    void Open() override { ++opened; }
    void BeginRun() override {}
    void OpenCenterPage() override { ++centerPageOpened; }
    void OpenPage(int) override { ++opened; }
    bool HasBeenThroughCenterPage() const override { return centerPageOpened > 0; }
    void ReadCalCenter() override { ++centerReads; }
    void ReadCalCenterConfig(const Path& path) override { configurationRead = path; }
    void ReadCalCenterFromFolderOf(const Path& configuration) override { configurationRead = configuration; }
    void AllowCalibration() override {}
    void SetReviewChoices(bool reviewMode) override { reviewChoices = reviewMode; }
    void RefreshFromRun() override {}
    Path SimDataLocation() const override { return simDataLocation; }
};

}  // namespace bellmark
