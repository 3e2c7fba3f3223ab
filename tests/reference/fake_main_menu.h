#pragma once

#include "app/doors.h"
#include "app/program.h"
#include "controls/screen.h"

namespace bellmark {

/// Stands in for the main menu.
struct FakeMainMenu : Screen, MainMenuDoor {
    explicit FakeMainMenu(Program& program) : Screen(program.Screens, "frmMainMenu", "Main Menu") {}
    int opened = 0;
    void Open() override {
        ++opened;
        Show();
    }
    void MarkAccelerometer() override {}
    void AllowProcedures(bool, bool) override {}
    void EditSetup() override {}
    void CalibrateAccelerometer() override {}
    void CalibrateLoadCell() override {}
    void CalibrateSensors() override {}
};

}  // namespace bellmark
