#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "run/procedure.h"

/// How screens reach each other: for each screen the few entry points that others call. The screen implements its door,
/// and a test can put another implementation behind it.
namespace bellmark {

class MainFrameDoor {  // frmMaster
  public:
    virtual ~MainFrameDoor() = default;
    virtual void AllowProcedures(bool loadCell, bool sensors) = 0;  ///< the menu items of the two calibrations
    virtual void AllowWhatNeedsARun(bool isInHand) = 0;             ///< set-up, accelerometer, results
    /// While the board measures, only the screen in front can be used: a screen opened by a menu could ask the board
    /// for the temperature.
    virtual void SetMeasuring(bool measuring) = 0;
    virtual void BeginWaiting(const std::string& text) = 0;  ///< says what is waited for, with a button to end it
    virtual bool WaitingCancelled() const = 0;
    virtual void EndWaiting() = 0;
};

class StartFormDoor {  // frmAbout
  public:
    virtual ~StartFormDoor() = default;
    virtual void ShowStart() = 0;
    virtual void ShowAbout() = 0;
    virtual void EnableInterimButtons() = 0;
    virtual void AllowReadingCenter(bool allowed) = 0;
    virtual void AnnounceReviewMode() = 0;
    virtual void StartShowTimer() = 0;
};

class MainMenuDoor {  // frmMainMenu
  public:
    virtual ~MainMenuDoor() = default;
    virtual void Open() = 0;
    virtual void MarkAccelerometer() = 0;  ///< shows whether its daily calibration holds or must be done
    virtual void AllowProcedures(bool loadCell, bool sensors) = 0;
    virtual void EditSetup() = 0;
    virtual void CalibrateAccelerometer() = 0;
    virtual void CalibrateLoadCell() = 0;
    virtual void CalibrateSensors() = 0;
};

class SetupDoor {  // frmSetup
  public:
    virtual ~SetupDoor() = default;
    virtual void Open() = 0;
    virtual void BeginRun() = 0;          ///< the run's record is a fresh one
    virtual void OpenCenterPage() = 0;    ///< optCalCenter
    virtual void OpenPage(int step) = 0;  ///< 11 the center, 12 the FWD, 13 the sequence
    virtual bool ReadCalCenter() = 0;     ///< cmdReadCalCenter: the operator picks a file; false when none was taken
    virtual void ShowCenter() = 0;        ///< the center's configuration was read
    virtual bool ReadCalCenterFromFolderOf(const Path& configuration) = 0;
    virtual void AllowCalibration() = 0;
    virtual void SetReviewChoices(bool reviewMode) = 0;
    virtual void RefreshFromRun() = 0;
    virtual void TriggerLevelMeasured() = 0;   ///< a level was accepted: the screen comes back with it
    virtual void NumberOfDropsMeasured() = 0;  ///< the same for the run's number of drops
    virtual void ReturnFromMeasurement() = 0;  ///< nothing was accepted
};

/// frmDAQ: all analog input of the program.
class AcquisitionDoor {
  public:
    virtual ~AcquisitionDoor() = default;
    virtual std::string FindBoard() = 0;   ///< name of the board in use; "Simulator" when there is none
    virtual bool HasHardware() const = 0;  ///< a real board was found: the simulated one does not count
    virtual bool IsDemonstration() const { return false; }  ///< the board in use plays a demonstration
    /// Why FindBoard found a board but cannot use it, for the operator; empty when there is none, or all is well.
    virtual std::string WhyNoBoard() const { return {}; }
    /// Why the capture in hand failed, for the operator; empty while it goes on or when it is complete.
    virtual std::string CaptureProblem() const { return {}; }
    virtual bool BoardAvailable() = 0;
    virtual void InitializeBoard() = 0;
    virtual void ShowDAQ(bool visible) = 0;
    virtual float OneConversion(int channel) = 0;  ///< volts; throws BoardError when the board cannot be read
    virtual int DAQWaitforButton(int channel) = 0;
    virtual void CaptureBlock(int channel) = 0;
    virtual bool BlockCaptured() = 0;
    virtual void GetResultsVolts(std::vector<float>& volts, int& count) = 0;
    virtual void AbortAcquisition() = 0;
    virtual int CurrentChannelType() const = 0;
    virtual void SetCurrentChannelType(int type) = 0;
    virtual int TriggerThreshold() const = 0;
    virtual void SetTriggerThreshold(int threshold) = 0;
    virtual void Unload() = 0;
};

/// frmSimulator, where callers choose what the simulated board delivers.
class SimulatorDoor {
  public:
    virtual ~SimulatorDoor() = default;
    virtual void SetFile(const std::string& baseName) = 0;
    virtual void SetRandom(float mean, float amplitude) = 0;  ///< volts
};

/// frmKUSB, the hardware board. There is none behind the door when no back-end can reach one.
class BoardDoor {
  public:
    virtual ~BoardDoor() = default;
};

class CollectionDoor {  // frmBellmark_Accel
  public:
    virtual ~CollectionDoor() = default;
    virtual void Bellmark() = 0;    ///< entry for a trial
    virtual void Start() = 0;       ///< prepares a trial
    virtual void GetResults() = 0;  ///< takes the accepted drop into the grid and moves on
    virtual void ClearDropData() = 0;
    virtual void PollButton(bool poll) = 0;
    virtual void DisableButtons() = 0;  ///< until it is entered again
};

class DropDoor {  // frmBellmark_AccelDrop
  public:
    virtual ~DropDoor() = default;
    virtual void Start() = 0;           ///< captures, analyses and saves the drop in hand
    virtual void StartReview() = 0;     ///< shows a drop of the trial again
    virtual void DisableButtons() = 0;  ///< until the next drop
    /// The board's trigger in software, called for each sample of a capture in its order. True once the drop has begun.
    virtual bool CheckTrigger(double volts) = 0;
    /// The board fell behind while it waited for the pulse, and the capture was started anew.
    virtual void TellOfNewStart() = 0;
};

class PrerequisitesDoor {  // frmPrerequisites
  public:
    virtual ~PrerequisitesDoor() = default;
    virtual bool PrerequisitesMet(Procedure procedure) = 0;  ///< shows its list when they are not
    virtual void ResetPreReq() = 0;
};

class FlipCalibrationDoor {  // frmFlipCalibration
  public:
    virtual ~FlipCalibrationDoor() = default;
    virtual void Start() = 0;
};

class FWDDataDoor {  // frmGetFWDData
  public:
    virtual ~FWDDataDoor() = default;
    virtual void Start() = 0;           ///< takes the trial in hand, or the unaccepted one again
    virtual void Refresh() = 0;         ///< back from the review of one of the trial's drops
    virtual void ReturnFromPlot() = 0;  ///< shows the trial as it was left
    virtual void AcceptTrial() = 0;     ///< report, store, and on to the next trial or the results
    virtual void RejectTrial() = 0;     ///< asks, twice
    virtual void PrintReport() = 0;     ///< text reports of the trial in hand
};

class RegressionPlotDoor {  // frmRegressionPlot
  public:
    virtual ~RegressionPlotDoor() = default;
    /// sensor: from 1, with a KUAB too; the load cell is 1.
    virtual void PlotGraph(const Path& file, int sensor, double stdErrSlope) = 0;
};

class ReferenceReviewDoor {  // frmRefReview
  public:
    virtual ~ReferenceReviewDoor() = default;
    virtual void Start() = 0;
};

class ResultsDoor {  // frmResults
  public:
    virtual ~ResultsDoor() = default;
    virtual void Open() = 0;
    virtual void OpenLoadCell() = 0;
    virtual void OpenAccelerometer() = 0;
    virtual void OpenReference() = 0;  ///< the deflection sensors
    virtual void Recompute() = 0;
};

class ReportDoor {  // frmReport
  public:
    virtual ~ReportDoor() = default;
    /// Fills the certificate's template, keeps it with the run and shows it. False, after a box, when that fails.
    virtual bool PrintReferenceCalReport() = 0;
};

class TriggerDoor {  // frmBellmark_AccelTrigger
  public:
    virtual ~TriggerDoor() = default;
    virtual void LoadStart() = 0;              ///< measures the trigger level
    virtual void NumDropsStart(int drop) = 0;  ///< measures the number of drops; 1 is the drop from the highest height
};

class CenterRelativeDoor {  // frmCenterRelative
  public:
    virtual ~CenterRelativeDoor() = default;
    virtual void Start() = 0;                ///< the next trial, or the results when enough are done
    virtual void BeginTrial() = 0;           ///< one more trial, which the operator has asked for
    virtual void ReturnFromPlot() = 0;       ///< shows the trial in hand as it was left
    virtual void AcceptRelativeTrial() = 0;  ///< counts the trial in hand and goes on
};

class CenterRelPlotDoor {  // frmCenterRelPlot
  public:
    virtual ~CenterRelPlotDoor() = default;
    virtual void DrawRelativePlot() = 0;  ///< shows the relative trial in hand
};

class RelativeResultsDoor {  // frmRelResults
  public:
    virtual ~RelativeResultsDoor() = default;
    virtual bool Start() = 0;     ///< reads the drops of the FWD's file; false, after a box, when they cannot be used
    virtual void Open() = 0;      ///< shows the trial as it was left
    virtual void OpenNext() = 0;  ///< the same, and goes on to the final gains
};

class RelativeDoor {  // frmRelative
  public:
    virtual ~RelativeDoor() = default;
    virtual void Start() = 0;          ///< asks which of the two is to be done
    virtual void SetupMonthly() = 0;   ///< the next trial of a monthly calibration
    virtual void SetupGeophone() = 0;  ///< the next trial of a sensor's replacement
};

}  // namespace bellmark
