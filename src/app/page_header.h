#pragma once

#include <string>
#include <vector>

#include "controls/controls.h"

namespace bellmark {

class ctrlHeader;

/// The text of the page header: one text for the whole program, shown by the header of each screen.
class PageHeader {
  public:
    void SetBoardName(std::string text, Color color = colors::buttonFace);
    /// Shown in place of the board while a run needs none; empty shows the board.
    void SetRunName(std::string text);
    void SetFWDOwnerName(std::string text);
    void SetFWDNameCtrl(std::string text);
    void SetProcedureName(std::string text);
    const std::string& ProcedureName() const { return procedureName_; }

  private:
    friend class ctrlHeader;
    void Tell();

    std::string boardName_;
    Color boardColor_ = colors::buttonFace;
    std::string runName_;
    std::string fwdOwnerName_;
    std::string fwdName_;
    std::string procedureName_;
    std::vector<ctrlHeader*> shownBy_;
};

/// The page header of one screen.
class ctrlHeader {
  public:
    ctrlHeader(Screen& host, PageHeader& header);
    ~ctrlHeader();
    ctrlHeader(const ctrlHeader&) = delete;
    ctrlHeader& operator=(const ctrlHeader&) = delete;

    Label BoardName;
    Label FWDOwnerName;
    Label FWDNameCtrl;
    Label ProcedureName;
    Label PageTitle;

  private:
    friend class PageHeader;
    void Show();

    PageHeader& header_;
};

}  // namespace bellmark
