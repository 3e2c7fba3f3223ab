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
    explicit SampleScreen(ScreenStack& stack, const std::string& name = "frmSample") : Screen(stack, name, "Sample") {
        fraInner.PutInto(fraOuter);
    }

    Frame fraOuter{*this, "fraOuter", "Outer"};
    Frame fraInner{*this, "fraInner", "Inner"};
    Button cmdGo{*this, "cmdGo", "&Go"};
    Label lblText{*this, "lblText"};
    TextBox txtName{*this, "txtName"};
    CheckBox chkSound{*this, "chkSound", "Sound"};
    OptionButton optFirst{*this, "optFirst", "pair", "First"};
    OptionButton optSecond{*this, "optSecond", "pair", "Second"};
    OptionButton optOther{*this, "optOther", "other", "Other"};
    ComboBox cboList{*this, "cboList"};
    Grid grdRows{*this, "grdRows"};
    Picture picPlot{*this, "picPlot"};
    Timer tmrTick{*this, "tmrTick", std::chrono::milliseconds(10)};

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
