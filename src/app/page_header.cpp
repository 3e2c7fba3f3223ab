#include "app/page_header.h"

#include "controls/screen.h"

namespace bellmark {

void PageHeader::SetBoardName(std::string text, Color color) {
    boardName_ = std::move(text);
    boardColor_ = color;
    Tell();
}

void PageHeader::SetRunName(std::string text) {
    runName_ = std::move(text);
    Tell();
}

void PageHeader::SetFWDOwnerName(std::string text) {
    fwdOwnerName_ = std::move(text);
    Tell();
}

void PageHeader::SetFWDNameCtrl(std::string text) {
    fwdName_ = std::move(text);
    Tell();
}

void PageHeader::SetProcedureName(std::string text) {
    procedureName_ = std::move(text);
    Tell();
}

void PageHeader::Tell() {
    for (ctrlHeader* shown : shownBy_) shown->Show();
}

ctrlHeader::ctrlHeader(Screen& host, PageHeader& header)
    : BoardName(host, "BoardName"),
      FWDOwnerName(host, "FWDOwnerName"),
      FWDNameCtrl(host, "FWDNameCtrl"),
      ProcedureName(host, "ProcedureName"),
      PageTitle(host, "PageTitle", host.Title()),
      header_(header) {
    header_.shownBy_.push_back(this);
    Show();
}

ctrlHeader::~ctrlHeader() {
    std::erase(header_.shownBy_, this);
}

void ctrlHeader::Show() {
    const bool showsBoard = header_.runName_.empty();
    BoardName.Caption = showsBoard ? header_.boardName_ : header_.runName_;
    BoardName.BackColor = showsBoard ? header_.boardColor_ : colors::buttonFace;
    FWDOwnerName.Caption = header_.fwdOwnerName_;
    FWDNameCtrl.Caption = header_.fwdName_;
    ProcedureName.Caption = header_.procedureName_;
}

}  // namespace bellmark
