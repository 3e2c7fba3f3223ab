#pragma once

#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "controls/screen_stack.h"
#include "platform/clock.h"
#include "platform/timers.h"

namespace bellmark {

/// A screen with one control of each kind.
struct SampleScreen : Screen {
    explicit SampleScreen(ScreenStack& stack, const std::string& name = "frmSample") : Screen(stack, name, "Sample") {}

    Frame fraOuter{*this, "fraOuter", "Outer"};
    Frame fraInner{fraOuter, "fraInner", "Inner"};
    Button cmdGo{fraInner, "cmdGo", "&Go"};
    Label lblText{fraInner, "lblText"};
    TextBox txtName{fraInner, "txtName"};
    CheckBox chkSound{fraInner, "chkSound", "Sound"};
    OptionButton optFirst{fraInner, "optFirst", "pair", "First"};
    OptionButton optSecond{fraInner, "optSecond", "pair", "Second"};
    OptionButton optOther{fraInner, "optOther", "other", "Other"};
    ComboBox cboList{fraInner, "cboList"};
    Grid grdRows{fraInner, "grdRows"};
    Picture picPlot{fraInner, "picPlot"};
    Timer tmrTick{fraInner, "tmrTick", std::chrono::milliseconds(10)};

    int activations = 0;
    void Activated() override { ++activations; }
};

struct SampleProgram {
    ScriptClock clock;
    Timers timers{clock};
    ScreenStack screens{timers};
    SampleScreen screen{screens};

    SampleProgram() { clock.Set(MakeDateTime(2012, 3, 9)); }
    void Advance(int milliseconds) {
        clock.Advance(std::chrono::milliseconds(milliseconds));
        timers.RunDue();
    }
};

}  // namespace bellmark
