#include "daq/frm_daq.h"

#include "app/program.h"

namespace bellmark {

frmDAQ::frmDAQ(const Program& program, Board& simulator, Board* hardware)
    : program_(program), simulator_(simulator), hardware_(hardware), current_(&simulator) {}

std::string frmDAQ::FindBoard() {
    current_ = &simulator_;
    whyNoBoard_.clear();
    if (hardware_) {
        const std::string name = hardware_->FindBoard();
        if (hardware_->BoardAvailable()) {
            current_ = hardware_;
            return name;
        }
        whyNoBoard_ = hardware_->Problem();
        hardware_->Unload();
    }
    return simulator_.FindBoard();
}

void frmDAQ::ShowDAQ(bool visible) {
    // With hardware the simulator's screen appears only for a review; the board's own screen does not change.
    if (!HasHardware() || program_.Run.ReviewMode) simulator_.ShowBoard(visible);
}

void frmDAQ::Unload() {
    if (hardware_) hardware_->Unload();
    simulator_.Unload();
}

Board& frmDAQ::Capturing() const {
    return program_.Run.Trial.ReplayMode() ? simulator_ : *current_;
}

}  // namespace bellmark
