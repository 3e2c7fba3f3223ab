#include "app/error_messages.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace bellmark {
namespace {

using namespace std::string_literals;

constexpr int plain = 16384;

struct Expected {
    int code;
    int style;
    std::vector<MessageValue> values;
    std::string title;
    std::string text;          // with pounds and mils, lines ending in '\n'
    std::string english = {};  // this part of the text ...
    std::string metric = {};   // ... reads like this with kN and microns
};

const std::vector<Expected> expectedMessages{
    {5,
     plain,
     {},
     "Accelerometer Trigger (005)",
     "To determine the accelerometer trigger level, prepare an FWD drop at the LOWEST level to be used in sensor "
     "calibration.\n"
     "--------------------------------------------------------------\n"
     "Lower FWD load plate and set up for the drop at the LOWEST drop height to be used in the calibration.\n\n"
     "Press OK to continue.\n\n"
     "Press Start when ready to perform drop."},
    {6,
     plain,
     {},
     "Determine Number of Drops per Each Height - HIGH DROP (006)",
     "To determine the number of drops needed at each level, prepare 2 FWD drops (the first drop from the HIGHEST drop "
     "height and the second one from the LOWEST drop height to be used in sensor calibration).\n"
     "-----------------------------------------------------------------\n"
     "Lower FWD load plate and set up for the drop at the HIGHEST drop height to be used in the calibration.\n\n"
     "Press OK to continue.\n\n"
     "Press Start when ready to perform drop."},
    {7,
     plain,
     {},
     "Determine Number of Drops per Each Height - LOW DROP (007)",
     "Set up the FWD for a drop from the LOWEST drop height to be used in sensor calibration.\n\n"
     "Press OK to continue.\n\n"
     "Press Start when ready to perform drop."},
    {10,
     16449,
     {},
     "Minimum Number of Drops per Drop Height (010)",
     "The calculated minimum number of drops is 6.\n"
     "More drops may be done if desired.\n\n"
     "Press <OK> to accept or <Cancel> to try again."},
    {12,
     16384,
     {},
     "Attach Reference Load Cell (012)",
     "If planning to do a FWD Load Cell calibration,\n"
     "go ahead and remove the acceleromter cable and hook\n"
     "up the Reference Load Cell.\n\n"
     "Press <OK> to continue..."},
    {100,
     16673,
     {},
     "Select the BellmarkCenterConfig.ini File to Be Used in the Review (100)",
     "Please select the BellmarkCenterConfig.ini to be used in this Review.\n\n"
     "Press <OK> to search for the INI file."},
    {101,
     16689,
     {},
     "Overwrite existing BellmarkCenterConfig.ini File (101)",
     "Do you really want to read in an updated Calibration Center Configuration file?\n"
     "Doing so will overwrite the exisintg file. Please make a back up before proceeding.\n\n"
     "Press <OK> to read a new INI file or <Cancel> to continue with current INI file."},
    {102,
     plain,
     {},
     "Need to Finish Setup (102)",
     "The Setup needs to be finished before a PDDX file\n"
     "can be created. No data available to make Calibration file.\n\n"
     "Press <OK> to continue ..."},
    {103,
     plain,
     {12.0},
     "Excess Noise in the Load Cell Average Zero Array (103)",
     "Noise in excess of 12 pounds has been detected in the Average Zero calculation.  Carefully review the graphical "
     "data that is coming up next ...\n\n"
     "Press <OK> to continue ...",
     "12 pounds",
     "0.053 kN"},
    {104,
     16436,
     {"B"s, 3.5, 3.456, "1000"s},
     "Error in +/- B readings (104)",
     "A difference of 3.500 v. was measured.  This differs from the\n"
     "reference value 3.456 v. by more than the limit of 0.5% and 10 mv.\n"
     "Be sure the 2310 Signal Conditioner is properly warmed up!\n"
     "Verify that the signal conditioner gain knob is set EXACTLY\n"
     "on 1000.\n\n"
     "Do you wish to Repeat the zero check and gain setting\n"
     "verifications? You may press <No>  to exit to the Main Menu"},
    {105,
     plain,
     {"{2} "s},
     "Calibration Folder Already Exists (105)",
     "The folder {2} already exists.\n"
     "Be sure to save any calibrations with a new name\n"
     " or you may overwrite existing data.\n"
     "Press <OK> to continue."},
    {106,
     16432,
     {},
     "FWD Data File Does Not Contain Drop Data (106)",
     "The FWD data file did not contain any drop data.\n"
     "Please check the data file and try Browse again. \n\n"
     "Press <OK> to continue."},
    {110,
     plain,
     {},
     "Please select Interim Calibration (110)",
     "Please select an Interim Calibration before continuing.\n"
     "Select from the list by clicking on any cell. \n\n"
     "Press <OK> to continue."},
    {112,
     16448,
     {MakeDateTime(2011, 3, 9)},
     "Reference Load Cell Calibration Out of Date (112)",
     "Most recent load cell calibration: 09-Mar-2011\n"
     "                            Today:10-Mar-2012\n\n"
     "The most recent calibration of the reference load cell was performed\n"
     "more than 1 year ago!  The reference load cell must be recalibrated\n"
     "as soon as possible.  Continue with today's work.\n"
     "Press <OK> to continue."},
    {113,
     plain,
     {5.08},
     "Excess noise in the Zero Adjustment Array (113)",
     "Noise in excess of 0.20 mils has been detected in the Average Zero calculation.  Carefully review the graphical "
     "data that is coming up next ...\n\n"
     "Press <OK> to continue ...",
     "0.20 mils",
     "5.1 microns"},
    {120,
     16420,
     {},
     "Reject Drop (120)",
     "Do you really want to reject and repeat this drop?\n\n"
     "Clicking on Yes will cause this drop's data to be lost!"},
    {150,
     16432,
     {"Serial Number"s},
     "Error reading the FWD History (150)",
     "The Serial Number does not match the Serial Number in the file\n"
     "Be sure the data are for the same FWD ...\n"
     "Press <OK> to continue ..."},
    {160,
     16676,
     {},
     "Approve Load Cell Sequence ONLY (160)",
     "Do you really only want to perform Load Cell Calibration?\n"
     "Clicking <YES> will force you to redetermine the number\n"
     "of drops to perform deflection sensor calibration!\n"},
    {170,
     16448,
     {},
     "No change of the Gain Factors (170)",
     "The calculated adjustments are trivial. The calibration \n"
     "test is complete, and no change of the Gain Factors shall be made. \n\n"
     "Press <OK> to continue ..."},
    {171,
     16448,
     {},
     "Update Gain Factors in FWD (171)",
     "Please update the Calculated Relative Gains in \n"
     "the FWD Operating System. \n\n"
     "Press <OK> to continue ..."},
    {172,
     16448,
     {},
     "Trial Gain Factor for Replacement Sensor (172)",
     "Sensor 3\n\n"
     "Press <OK> to continue ..."},
    {173,
     16448,
     {},
     "Gain Factor for Replacement Sensor (173)",
     "Sensor 3\n"
     "Please update its Relative Gain in the FWD Operating System. \n\n"
     "Press <OK> to continue ..."},
    {201,
     16432,
     {},
     "Excessive Load Cell Zero Offset (201)",
     "Be SURE the FWD load plate is NOT on the Load Cell.\n"
     "Rezero the Load Cell using the Signal Conditioner Auto Balance.\n\n"
     "Then press <OK> to continue ..."},
    {202,
     16432,
     {},
     "Polarity Issue (202)",
     "The measured voltage has polarity opposite of the required\n"
     "polarity.  Be sure you pushed and held the calibration switch\n"
     "in the correct direction.\n"
     "Press <OK> to continue ..."},
    {203,
     16449,
     {},
     "Too Many Drops Needed (203)",
     "The number of drops needed to ensure the error on the gain\n"
     "is less than 0.3% is more than 10.\n"
     "Try moving the FWD closer to obtain higher peak deflections.\n\n"
     "Press <OK> to continue ..."},
    {204,
     plain,
     {},
     "Cannot Read Interim Calibration File (204)",
     "Cannot read the InterimCal.ddx file.\n"
     "It may be corrupted or just incomplete.\n"
     "Check file and try again or just read setup data manually.\n\n"
     "Press <OK> to continue ..."},
    {206,
     16432,
     {},
     "Load Cell Gain Outside Recommended Limits (206)",
     "Calibration factor for the Load Cell is outside\n"
     "of the 2 percent limits RECOMMENDED by the FWD manufacturer.\n\n"
     "Check the historical results for this load cell carefully."},
    {207,
     plain,
     {},
     "Sensor Gain Outside Recommended Limits (207)",
     "Calibration factor for the Sensor\n"
     "of the 2 percent limits RECOMMENDED by the FWD manufacturer.\n\n"
     "Check the historical results for this sensor carefully."},
    {210,
     16432,
     {0.123, 0.001},
     "Unbalanced Zero (210)",
     "The Reference Load Cell has a measured unbalanced zero of 0.123 v.\n"
     "This differs from the stored value of 0.001 v. by more than the\n"
     "limit of 5.0% or 100 mv.  Verify that the Signal Conditioner Gain and\n"
     "Excitation are correctly set, that the Excitation switch is ON,\n"
     "and that the FWD load plate is up, then ...\n\n"
     "Press <OK> to continue."},
    {211,
     16,
     {0.05, "A"s},
     "Shunt Switch Not Set to Neutral Position (211)",
     "The Reference Load Cell has a measured unbalanced zero of 0.050 v.\n"
     "This may be due to the +/-A switch not being in the neutral position.\n"
     "It may also occur if the load plate is already down on the load cell. \n"
     "Verify that the Signal Conditioner +/-A switch\n"
     "is in the neutral position, then ...\n\n"
     "Press <OK> to continue."},
    {212,
     16432,
     {},
     "Excess Standard Error (212)",
     "The Standard Error of the Adjustment Factor is greater than the\n"
     "normal limit of ±0.0020.  This suggests that there is an excessive\n"
     "amount of data scatter.  Check the graphical display carefully.\n\n"
     "You may need to repeat the calibration of this sensor."},
    {214,
     16432,
     {},
     "Standard Deviation Too Large (214)",
     "The ratio of the standard deviations for one of the Drop Heights is\n"
     "greater than the limit of 3.  Examine the data carefully.\n"
     "You may need to repeat this calibration step.\n\n"
     "Press <OK> to continue ..."},
    {215,
     plain,
     {},
     "Need to Finish Setup (215)",
     "Need to read the FWD Configuration and\n"
     "set up FWD name before trying to write PDDX output.\n\n"
     "Please go to Setup from Main Menu\n\n"
     "Press <OK> to continue ..."},
    {216,
     16400,
     {},
     "Need to Recalibrate the Accelerometer (216)",
     "The accelerometer is out of calibration specifications.\n"
     "Need to perform the daily calibration of the accelerometer.\n\n"
     "Will go to the the Accelerometer Calibration\n\n"
     "Press <OK> to continue ..."},
    {220,
     plain,
     {1.25, 10.0},
     "Excess Drop-to-drop Deflection Variation (220)",
     "The drop-to-drop variation for Height 2 is 1.25 mils.\n"
     "For the average deflection of 10.00 the maximum expected variation is 0.18.\n\n"
     "Please be sure each drop was at the proper height, \n"
     "the FWD is providing a consistent force, and\n"
     "the reference accelerometer is working properly\n\n"
     "Press <OK> to Continue...",
     "1.25 mils.\nFor the average deflection of 10.00 the maximum expected variation is 0.18",
     "1.3 microns.\nFor the average deflection of 10.0 the maximum expected variation is 2.1"},
    {221,
     plain,
     {100.0, 9000.0},
     "Excess Drop-to-drop Load Variation (221)",
     "The drop-to-drop variation for Height 2 is100.0 pounds.\n"
     "For the average load of 9000.0 the maximum expected variation is 225.0.\n\n"
     "Please be sure each drop was at the proper height and be sure\n"
     "the FWD is providing a consistent force, and\n"
     "the reference load cell is working properly\n\n"
     "Press <OK> to Continue...",
     "100.0 pounds.\nFor the average load of 9000.0 the maximum expected variation is 225.0",
     "100.000 kN.\nFor the average load of 9000.000 the maximum expected variation is 180.200"},
    {250,
     16400,
     {},
     "Number of Sensors in the FWD Data File is Zero (250)",
     "The FWD data file contains no sensor data.\n"
     "Please review the FWD file to be sure it contains the proper data.\n\n"
     "Press <OK> to continue ..."},
    {251,
     32784,
     {},
     "The Number of Drops in the FWD Data File is Incorrect (251)",
     "The number of drops in the FWD data file should be 5 times the number of sensors.\n"
     "Please review the FWD file to be sure it contains the proper number of drops.\n\n"
     "Drops in File = 6\n\n"
     "Number of Sensors = 7\n"
     "Drops Needed = 35\n\n"
     "Press <OK> to continue ..."},
    {252,
     16657,
     {},
     "The Difference in the Relative Trail Gains is Too Large (252)",
     "One or more of the sensors shows a difference in the calculated gains for the two\n"
     "relative trials greater than 0.003. Clicking OK will Reject the first two trials.\n"
     "If a second attempt also exceeds the allowable difference, the Annual Calibration \n"
     "procedure shall be performed as soon as possible.\n\n"
     "Click <OK> to try two new trials or <Cancel> to review the last relative trial..."},
    {260,
     plain,
     {},
     "Initial Burst Reading Problem (260)",
     "Sensor 3\n"
     "Make sure the stand is properly supported and held and try this drop again.\n\n"
     "Click <OK> to continue..."},
    {270,
     16400,
     {},
     "Error in Calculating Deflection (270)",
     "Sensor 3\n"
     "There was an error in calculating the peak deflection.\n"
     "Please repeat this drop.\n\n"
     "Click <OK> to continue..."},
    {271,
     plain,
     {},
     "Large Gap Between Fulcrum and Pulse (271)",
     "Sensor 3\n"
     "There is more than 5 mSec between the fulcrum and the start of rise.\n"
     "Please repeat examine the drop carefully.\n\n"
     "Click <OK> to continue..."},
    {302,
     16400,
     {5.25, -5.0},
     "Acceleration Outside Acceptable Limits (302)",
     "The maximum relative acceleration of the drop was 4.25g.\n"
     "The minimum relative acceleration of the drop was -6.00g.\n"
     "The allowable range is +3.9 to -5.9 g.\n\n"
     "Check to be sure the FWD load pulse is not too short, or \n"
     "Move the FWD away from the ball joint if possible, or\n"
     "Lower the forces on the FWD. \n\n"
     "You should not use this data!!!\n"
     "Please reject!!"},
    {303,
     16400,
     {24000.0},
     "Peak Load Above Acceptable Limits (303)",
     "The maximum load of the drop was 24,000pound-force.\n"
     "The allowable maximum is 23,500 pound-force\n"
     "Check to be sure the FWD loads are set up properly.\n\n"
     "You should not use this data!!!\n"
     "Please reject!!"},
    {304,
     plain,
     {},
     "Cannot Read Interim Calibration File (304)",
     "Cannot read the InterimCal.ddx file.\n"
     "It may be corrupted or just incomplete.\n"
     "Check file and start Bellmark again\n\n"
     "Bellmark will now close..."},
};

std::string WithCarriageReturns(const std::string& lines) {
    std::string text;
    for (const char letter : lines) text += letter == '\n' ? "\r\n" : std::string(1, letter);
    return text;
}

std::string InMetricUnits(const Expected& expected) {
    std::string text = expected.text;
    if (!expected.english.empty()) text.replace(text.find(expected.english), expected.english.size(), expected.metric);
    return text;
}

CalibrationRun RunWithCounts(bool englishUnits) {
    CalibrationRun run;
    run.EnglishUnits = englishUnits;
    run.NumberLoadLevels = 4;
    run.NumberDropsPerLoadLevel = 6;
    run.NumberSensors = 7;
    run.CurrentHeightIndex = 2;
    run.MessageParameters[1] = "Sensor 3";
    return run;
}

const MessageFacts facts{"/bellmark", MakeDateTime(2012, 3, 10), "pound-force"};

TEST(ErrorMessages, EveryMessageReadsAsItShouldInBothUnitSystems) {
    for (const auto& expected : expectedMessages) {
        for (const bool english : {true, false}) {
            SCOPED_TRACE(std::to_string(expected.code) + (english ? " English" : " metric"));
            auto run = RunWithCounts(english);
            ErrorMessages(run, expected.code, expected.values, facts);
            const auto box = ComposedBox(run);
            EXPECT_EQ(box.title, expected.title);
            EXPECT_EQ(box.text, WithCarriageReturns(english ? expected.text : InMetricUnits(expected)));
            EXPECT_EQ(box.style, expected.style);
            EXPECT_EQ(box.helpContext, 10000 + expected.code);
            EXPECT_EQ(run.LastMessageCode, expected.code);
            const bool usesElementOne = box.text.find("Sensor 3") != std::string::npos;
            EXPECT_EQ(std::holds_alternative<std::monostate>(run.MessageParameters[1]), usesElementOne);
        }
    }
}

TEST(ErrorMessages, LoadAboveTheLimitFollowsTheLoadCellsUnit) {
    auto run = RunWithCounts(true);
    ErrorMessages(run, 303, {24000.0}, {{}, {}, "newton"});
    // 24000 lb x 0.0044482 kN/lb = 106.7568 kN
    EXPECT_EQ(run.MessageText.substr(0, run.MessageText.find("\r\nCheck")),
              "The maximum load of the drop was 106.8kN.\r\nThe allowable maximum is 105 kN");
}

TEST(ErrorMessages, NoiseIsToldInTheUnitsOfTheTrial) {
    CalibrationRun run = RunWithCounts(true);
    run.Trial.procedure = Procedure::Sensors;
    run.Trial.shape.englishUnits = false;
    ErrorMessages(run, 113, {5.04});
    EXPECT_NE(run.MessageText.find("5.0 microns"), std::string::npos);
    ErrorMessages(run, 103, {100.0});
    EXPECT_NE(run.MessageText.find("0.445 kN"), std::string::npos);
}

TEST(ErrorMessages, FewerThanFourHeightsMayBecomeFour) {
    auto run = RunWithCounts(true);
    run.NumberLoadLevels = 3;
    ErrorMessages(run, 203);
    EXPECT_EQ(run.MessageText,
              "The number of drops needed to ensure the error on the gain\r\n"
              "is less than 0.3% is more than 10.\r\n"
              "Try moving the FWD closer to obtain higher peak deflections\r\n"
              "or go to four (4) drop heights.\r\n\r\n"
              "Press <OK> to continue ...");
}

TEST(ErrorMessages, MissingFilesAreListed) {
    CalibrationRun run;
    run.MessageParameters[2] = "missing";
    run.MessageParameters[5] = 1.0;
    ErrorMessages(run, 300, {}, facts);
    EXPECT_EQ(run.MessageTitle, "Missing Critical File (300)");
    EXPECT_EQ(run.MessageText,
              "The following file is missing from the program directory: \r\n/bellmark\r\n\r\n"
              "\t\u2022Ferrylink.exe - FWD file conversion software \r\n\r\n"
              "Please copy the file into this directory before continuing.\r\nExecution will terminate.");
    EXPECT_EQ(ComposedBox(run).style, 16400);
    EXPECT_EQ(ComposedBox(run).helpContext, 10300);

    for (std::size_t file = 1; file <= 4; ++file) run.MessageParameters[file] = "missing";
    run.MessageParameters[5] = 4.0;
    ErrorMessages(run, 300, {}, facts);
    EXPECT_EQ(run.MessageTitle, "Missing Critical Files (300)");
    EXPECT_EQ(run.MessageText,
              "The following files are missing from the program directory: \r\n/bellmark\r\n\r\n"
              "\t\u2022BellmarkCenterConfig.ini - center configuration file \r\n"
              "\t\u2022Ferrylink.exe - FWD file conversion software \r\n"
              "\t\u2022CertificateTemplate.rtf - calibration certificate template\r\n"
              "\t\u2022'FWD Calibration History.mdb' - FWD Calibration History database \r\n\r\n"
              "Please copy the files into this directory before continuing.\r\nExecution will terminate.");
}

TEST(ErrorMessages, NumbersWithoutMessage) {
    struct Case {
        int code;
        const char* textAfter;
    };
    for (const auto& [code, textAfter] : {Case{99, "before"}, Case{-1, "before"}, Case{305, ""}}) {
        CalibrationRun run;
        run.MessageTitle = "title";
        run.MessageText = "before";
        ErrorMessages(run, code);
        EXPECT_EQ(run.MessageText, textAfter) << code;
        EXPECT_EQ(run.MessageTitle, "title") << code;
        EXPECT_EQ(run.LastMessageCode, code);
    }
}

TEST(ErrorMessages, CallersStyleReplacesTheMessagesOwn) {
    CalibrationRun run;
    ErrorMessages(run, 120);
    EXPECT_EQ(ComposedBox(run, 52).style, 52);
}

TEST(ErrorMessages, MissingAndWrongValuesAreNamed) {
    auto run = RunWithCounts(true);
    const auto failure = [&run](int code, const std::vector<MessageValue>& values) -> std::string {
        try {
            ErrorMessages(run, code, values);
        } catch (const std::invalid_argument& error) {
            return error.what();
        }
        return "none";
    };
    EXPECT_EQ(failure(104, {"A"s, 1.0}), "message 104 needs a number as value 3");
    EXPECT_EQ(failure(303, {"much"s}), "message 303 needs a number as value 1");
    EXPECT_EQ(failure(112, {}), "message 112 needs a date as value 1");
    EXPECT_EQ(failure(211, {1.0, 2.0}), "message 211 needs a text as value 2");
    run.MessageParameters[1] = 3.0;
    EXPECT_EQ(failure(270, {}), "message 270 needs a text as message parameter 1");
    EXPECT_EQ(run.LastMessageCode, 0);
}

}  // namespace
}  // namespace bellmark
