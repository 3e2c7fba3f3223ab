#pragma once

#include <array>

#include "platform/dialogs.h"

/// Titles, texts and styles of the numbered messages, for error_messages.cpp alone.
namespace bellmark::message_texts {

/// One numbered message. "{1}" to "{9}" in title and text are replaced by values; a line ends in '\n'.
struct MessageEntry {
    int code;
    int style;
    const char* title;
    const char* text;
};

using namespace box;

// Messages that no caller composes yet, or that are shown on a panel.
inline constexpr int plain = helpButton;

// 251 has this value where the others have the help button.
inline constexpr int inPlaceOfHelp = 32768;

// The texts are shown exactly as here, misspellings included: operators and handbooks know them this way.
inline constexpr std::array messages{
    MessageEntry{5, plain, "Accelerometer Trigger (005)",
                 "To determine the accelerometer trigger level, prepare an FWD drop at the LOWEST level to be used in "
                 "sensor calibration.\n"
                 "--------------------------------------------------------------\n"
                 "Lower FWD load plate and set up for the drop at the LOWEST drop height to be used in the "
                 "calibration.\n\n"
                 "Press OK to continue.\n\n"
                 "Press Start when ready to perform drop."},
    MessageEntry{6, plain, "Determine Number of Drops per Each Height - HIGH DROP (006)",
                 "To determine the number of drops needed at each level, prepare 2 FWD drops (the first drop from the "
                 "HIGHEST drop height and the second one from the LOWEST drop height to be used in sensor "
                 "calibration).\n"
                 "-----------------------------------------------------------------\n"
                 "Lower FWD load plate and set up for the drop at the HIGHEST drop height to be used in the "
                 "calibration.\n\n"
                 "Press OK to continue.\n\n"
                 "Press Start when ready to perform drop."},
    MessageEntry{7, plain, "Determine Number of Drops per Each Height - LOW DROP (007)",
                 "Set up the FWD for a drop from the LOWEST drop height to be used in sensor calibration.\n\n"
                 "Press OK to continue.\n\n"
                 "Press Start when ready to perform drop."},
    MessageEntry{10, helpButton + information + okCancel, "Minimum Number of Drops per Drop Height (010)",
                 "The calculated minimum number of drops is {1}.\n"
                 "More drops may be done if desired.\n\n"
                 "Press <OK> to accept or <Cancel> to try again."},
    MessageEntry{12, helpButton, "Attach Reference Load Cell (012)",
                 "If planning to do a FWD Load Cell calibration,\n"
                 "go ahead and remove the acceleromter cable and hook\n"
                 "up the Reference Load Cell.\n\n"
                 "Press <OK> to continue..."},
    MessageEntry{100, helpButton + secondIsDefault + question + okCancel,
                 "Select the BellmarkCenterConfig.ini File to Be Used in the Review (100)",
                 "Please select the BellmarkCenterConfig.ini to be used in this Review.\n\n"
                 "Press <OK> to search for the INI file."},
    MessageEntry{101, helpButton + secondIsDefault + exclamation + okCancel,
                 "Overwrite existing BellmarkCenterConfig.ini File (101)",
                 "Do you really want to read in an updated Calibration Center Configuration file?\n"
                 "Doing so will overwrite the exisintg file. Please make a back up before proceeding.\n\n"
                 "Press <OK> to read a new INI file or <Cancel> to continue with current INI file."},
    MessageEntry{102, plain, "Need to Finish Setup (102)",
                 "The Setup needs to be finished before a PDDX file\n"
                 "can be created. No data available to make Calibration file.\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{103, plain, "Excess Noise in the Load Cell Average Zero Array (103)",
                 "Noise in excess of {1} has been detected in the Average Zero calculation.  Carefully review the "
                 "graphical data that is coming up next ...\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{104, helpButton + exclamation + yesNo, "Error in +/- {1} readings (104)",
                 "A difference of {2} v. was measured.  This differs from the\n"
                 "reference value {3} v. by more than the limit of 0.5% and 10 mv.\n"
                 "Be sure the 2310 Signal Conditioner is properly warmed up!\n"
                 "Verify that the signal conditioner gain knob is set EXACTLY\n"
                 "on {4}.\n\n"
                 "Do you wish to Repeat the zero check and gain setting\n"
                 "verifications? You may press <No>  to exit to the Main Menu"},
    MessageEntry{105, plain, "Calibration Folder Already Exists (105)",
                 "The folder {1}already exists.\n"
                 "Be sure to save any calibrations with a new name\n"
                 " or you may overwrite existing data.\n"
                 "Press <OK> to continue."},
    MessageEntry{106, helpButton + exclamation, "FWD Data File Does Not Contain Drop Data (106)",
                 "The FWD data file did not contain any drop data.\n"
                 "Please check the data file and try Browse again. \n\n"
                 "Press <OK> to continue."},
    MessageEntry{110, plain, "Please select Interim Calibration (110)",
                 "Please select an Interim Calibration before continuing.\n"
                 "Select from the list by clicking on any cell. \n\n"
                 "Press <OK> to continue."},
    MessageEntry{112, helpButton + information, "Reference Load Cell Calibration Out of Date (112)",
                 "Most recent load cell calibration: {1}\n"
                 "                            Today:{2}\n\n"
                 "The most recent calibration of the reference load cell was performed\n"
                 "more than 1 year ago!  The reference load cell must be recalibrated\n"
                 "as soon as possible.  Continue with today's work.\n"
                 "Press <OK> to continue."},
    MessageEntry{113, plain, "Excess noise in the Zero Adjustment Array (113)",
                 "Noise in excess of {1} has been detected in the Average Zero calculation.  Carefully review the "
                 "graphical data that is coming up next ...\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{120, helpButton + question + yesNo, "Reject Drop (120)",
                 "Do you really want to reject and repeat this drop?\n\n"
                 "Clicking on Yes will cause this drop's data to be lost!"},
    MessageEntry{150, helpButton + exclamation, "Error reading the FWD History (150)",
                 "The {1} does not match the {1} in the file\n"
                 "Be sure the data are for the same FWD ...\n"
                 "Press <OK> to continue ..."},
    MessageEntry{160, helpButton + secondIsDefault + question + yesNo, "Approve Load Cell Sequence ONLY (160)",
                 "Do you really only want to perform Load Cell Calibration?\n"
                 "Clicking <YES> will force you to redetermine the number\n"
                 "of drops to perform deflection sensor calibration!\n"},
    MessageEntry{170, helpButton + information, "No change of the Gain Factors (170)",
                 "The calculated adjustments are trivial. The calibration \n"
                 "test is complete, and no change of the Gain Factors shall be made. \n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{171, helpButton + information, "Update Gain Factors in FWD (171)",
                 "Please update the Calculated Relative Gains in \n"
                 "the FWD Operating System. \n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{172, helpButton + information, "Trial Gain Factor for Replacement Sensor (172)",
                 "{1}\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{173, helpButton + information, "Gain Factor for Replacement Sensor (173)",
                 "{1}\n"
                 "Please update its Relative Gain in the FWD Operating System. \n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{201, helpButton + exclamation, "Excessive Load Cell Zero Offset (201)",
                 "Be SURE the FWD load plate is NOT on the Load Cell.\n"
                 "Rezero the Load Cell using the Signal Conditioner Auto Balance.\n\n"
                 "Then press <OK> to continue ..."},
    MessageEntry{202, helpButton + exclamation, "Polarity Issue (202)",
                 "The measured voltage has polarity opposite of the required\n"
                 "polarity.  Be sure you pushed and held the calibration switch\n"
                 "in the correct direction.\n"
                 "Press <OK> to continue ..."},
    MessageEntry{203, helpButton + information + okCancel, "Too Many Drops Needed (203)",
                 "The number of drops needed to ensure the error on the gain\n"
                 "is less than 0.3% is more than 10.\n"
                 "Try moving the FWD closer to obtain higher peak deflections{1}.\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{204, plain, "Cannot Read Interim Calibration File (204)",
                 "Cannot read the InterimCal.ddx file.\n"
                 "It may be corrupted or just incomplete.\n"
                 "Check file and try again or just read setup data manually.\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{206, helpButton + exclamation, "Load Cell Gain Outside Recommended Limits (206)",
                 "Calibration factor for the Load Cell is outside\n"
                 "of the 2 percent limits RECOMMENDED by the FWD manufacturer.\n\n"
                 "Check the historical results for this load cell carefully."},
    MessageEntry{207, plain, "Sensor Gain Outside Recommended Limits (207)",
                 "Calibration factor for the Sensor\n"
                 "of the 2 percent limits RECOMMENDED by the FWD manufacturer.\n\n"
                 "Check the historical results for this sensor carefully."},
    MessageEntry{210, helpButton + exclamation, "Unbalanced Zero (210)",
                 "The Reference Load Cell has a measured unbalanced zero of {1} v.\n"
                 "This differs from the stored value of {2} v. by more than the\n"
                 "limit of 5.0% or 100 mv.  Verify that the Signal Conditioner Gain and\n"
                 "Excitation are correctly set, that the Excitation switch is ON,\n"
                 "and that the FWD load plate is up, then ...\n\n"
                 "Press <OK> to continue."},
    MessageEntry{211, critical, "Shunt Switch Not Set to Neutral Position (211)",
                 "The Reference Load Cell has a measured unbalanced zero of {1} v.\n"
                 "This may be due to the +/-{2} switch not being in the neutral position.\n"
                 "It may also occur if the load plate is already down on the load cell. \n"
                 "Verify that the Signal Conditioner +/-{2} switch\n"
                 "is in the neutral position, then ...\n\n"
                 "Press <OK> to continue."},
    MessageEntry{212, helpButton + exclamation, "Excess Standard Error (212)",
                 "The Standard Error of the Adjustment Factor is greater than the\n"
                 "normal limit of \u00B10.0020.  This suggests that there is an excessive\n"
                 "amount of data scatter.  Check the graphical display carefully.\n\n"
                 "You may need to repeat the calibration of this sensor."},
    MessageEntry{214, helpButton + exclamation, "Standard Deviation Too Large (214)",
                 "The ratio of the standard deviations for one of the Drop Heights is\n"
                 "greater than the limit of 3.  Examine the data carefully.\n"
                 "You may need to repeat this calibration step.\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{215, plain, "Need to Finish Setup (215)",
                 "Need to read the FWD Configuration and\n"
                 "set up FWD name before trying to write PDDX output.\n\n"
                 "Please go to Setup from Main Menu\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{216, helpButton + critical, "Need to Recalibrate the Accelerometer (216)",
                 "The accelerometer is out of calibration specifications.\n"
                 "Need to perform the daily calibration of the accelerometer.\n\n"
                 "Will go to the the Accelerometer Calibration\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{220, plain, "Excess Drop-to-drop Deflection Variation (220)",
                 "The drop-to-drop variation for Height {1} is {2}.\n"
                 "For the average deflection of {3} the maximum expected variation is {4}.\n\n"
                 "Please be sure each drop was at the proper height, \n"
                 "the FWD is providing a consistent force, and\n"
                 "the reference accelerometer is working properly\n\n"
                 "Press <OK> to Continue..."},
    MessageEntry{221, plain, "Excess Drop-to-drop Load Variation (221)",
                 "The drop-to-drop variation for Height {1} is{2}.\n"
                 "For the average load of {3} the maximum expected variation is {4}.\n\n"
                 "Please be sure each drop was at the proper height and be sure\n"
                 "the FWD is providing a consistent force, and\n"
                 "the reference load cell is working properly\n\n"
                 "Press <OK> to Continue..."},
    MessageEntry{250, helpButton + critical, "Number of Sensors in the FWD Data File is Zero (250)",
                 "The FWD data file contains no sensor data.\n"
                 "Please review the FWD file to be sure it contains the proper data.\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{251, inPlaceOfHelp + critical, "The Number of Drops in the FWD Data File is Incorrect (251)",
                 "The number of drops in the FWD data file should be 5 times the number of sensors.\n"
                 "Please review the FWD file to be sure it contains the proper number of drops.\n\n"
                 "Drops in File = {1}\n\n"
                 "Number of Sensors = {2}\n"
                 "Drops Needed = {3}\n\n"
                 "Press <OK> to continue ..."},
    MessageEntry{252, helpButton + secondIsDefault + critical + okCancel,
                 "The Difference in the Relative Trail Gains is Too Large (252)",
                 "One or more of the sensors shows a difference in the calculated gains for the two\n"
                 "relative trials greater than 0.003. Clicking OK will Reject the first two trials.\n"
                 "If a second attempt also exceeds the allowable difference, the Annual Calibration \n"
                 "procedure shall be performed as soon as possible.\n\n"
                 "Click <OK> to try two new trials or <Cancel> to review the last relative trial..."},
    MessageEntry{260, plain, "Initial Burst Reading Problem (260)",
                 "{1}\n"
                 "Make sure the stand is properly supported and held and try this drop again.\n\n"
                 "Click <OK> to continue..."},
    MessageEntry{270, helpButton + critical, "Error in Calculating Deflection (270)",
                 "{1}\n"
                 "There was an error in calculating the peak deflection.\n"
                 "Please repeat this drop.\n\n"
                 "Click <OK> to continue..."},
    MessageEntry{271, plain, "Large Gap Between Fulcrum and Pulse (271)",
                 "{1}\n"
                 "There is more than 5 mSec between the fulcrum and the start of rise.\n"
                 "Please repeat examine the drop carefully.\n\n"
                 "Click <OK> to continue..."},
    MessageEntry{300, helpButton + critical, "Missing Critical {1} (300)",
                 "The following {2} missing from the program directory: \n"
                 "{3}\n\n"
                 "{4}"
                 "\n"
                 "Please copy the {5} into this directory before continuing.\n"
                 "Execution will terminate."},
    MessageEntry{302, helpButton + critical, "Acceleration Outside Acceptable Limits (302)",
                 "The maximum relative acceleration of the drop was {1}g.\n"
                 "The minimum relative acceleration of the drop was {2}g.\n"
                 "The allowable range is +3.9 to -5.9 g.\n\n"
                 "Check to be sure the FWD load pulse is not too short, or \n"
                 "Move the FWD away from the ball joint if possible, or\n"
                 "Lower the forces on the FWD. \n\n"
                 "You should not use this data!!!\n"
                 "Please reject!!"},
    MessageEntry{303, helpButton + critical, "Peak Load Above Acceptable Limits (303)",
                 "The maximum load of the drop was {1}.\n"
                 "The allowable maximum is {2}\n"
                 "Check to be sure the FWD loads are set up properly.\n\n"
                 "You should not use this data!!!\n"
                 "Please reject!!"},
    MessageEntry{304, plain, "Cannot Read Interim Calibration File (304)",
                 "Cannot read the InterimCal.ddx file.\n"
                 "It may be corrupted or just incomplete.\n"
                 "Check file and start Bellmark again\n\n"
                 "Bellmark will now close..."},
};

}  // namespace bellmark::message_texts
