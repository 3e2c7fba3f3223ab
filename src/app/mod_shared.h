#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

/// Small routines that every subsystem calls.
namespace bellmark {

class Dialogs;
class PDDXFile;
class Printer;
class Program;
class Random;
struct CalibrationRun;
struct CenterConfig;

inline constexpr double standardGravity = 9.80665;  ///< m/s²

/// True when the path, which may hold wild cards in its last part, matches a file; names compare without case.
bool FileExists(const FileSystem& files, const Path& path);

/// The folder that the operator picks, or an empty path.
Path BrowseForFolder(Dialogs& dialogs, const std::string& prompt);

/// The text behind the last point; the whole text when it has none.
std::string FileExtension(std::string_view path);

int RandomSign(Random& random);  ///< 1 or -1 with even chance

std::string ZeroIfEmpty(const std::string& text);  ///< "0" for an empty text

/// The value lies above its limit. Limits are decimal numbers that a double cannot hold exactly: within 1e-9 of the
/// limit the value counts as equal to it, so that 1 - 0.997 does not exceed 0.003. "At least the limit" is
/// !ExceedsLimit(limit, value).
bool ExceedsLimit(double value, double limit);

double CelsiusToFahrenheit(double degrees);
double FahrenheitToCelsius(double degrees);

/// Names of the subfolders that begin with the prefix, without case; an empty prefix takes all.
std::vector<std::string> ListSubFolders(const FileSystem& files, const Path& folder, std::string_view prefix);
/// Names of the files that match a wild-card pattern, or begin with a prefix. None is an empty list.
std::vector<std::string> ListFiles(const FileSystem& files, const Path& folder, std::string_view pattern);
std::vector<std::string> ListFilesWithPrefix(const FileSystem& files, const Path& folder, std::string_view prefix);

/// The field of a comma-separated list, counted from 1, with the blank that stood before it; empty past the end.
std::string GetListField(int index, std::string_view list);

/// Blanks off both ends, and every run of blanks made one.
std::string CompressBlanks(std::string_view text);

/// Pages for a fixed-pitch printer: eight empty lines on top of each, lines broken after 87 characters at the last
/// blank, their continuation indented by six. A form feed begins a new page.
std::vector<std::vector<std::string>> PrinterPages(std::string_view text);
void PrintTextFile(const FileSystem& files, Printer& printer, const Path& file);

/// Kinds of values that share a picture.
enum class Field {
    Load = 0,
    Deflection = 1,
    Date = 2,
    Time = 3,
    TwoPlaces = 4,
    ThreePlaces = 5,
    FourPlaces = 6,
    Other = 7
};
const char* FieldFormat(Field kind, bool englishUnits);

/// Temperature at the accelerometer now, in degrees Celsius: from the board, or near the stored one when there is none.
double ReadTemperature(Program& program);

/// Minutes, in whole ones, from the accelerometer's daily calibration until now.
double MinutesSinceAccelCal(const Program& program);

/// The accelerometer's daily calibration still holds: at most 480 minutes old and at most 5.0 °C away (AASHTO R32).
bool AccelCalCurrent(Program& program);

/// Derives the day's conversion of the accelerometer from its certificate and its daily readings. Slope and offset stay
/// as they were when the daily half-span is not above 0; the polynomial stays when it is 0, or when the certificate's
/// polynomial gives the same at both of its voltages.
void ComputeAccelAdjustment(CenterConfig& center);

/// "A" to "W" for 1 to 23; empty otherwise.
std::string ColumnLetter(int index);

/// Writes the document in place of the file. A failure is shown in a box and leaves the old file; an empty path does
/// nothing.
bool SavePDDX(Program& program, const PDDXFile& document, const Path& path);

struct ProgramVersion {
    std::string number;  ///< major.minor.revision
    std::string buildDate;
};
ProgramVersion VersionOfProgram();

/// Version and build date, as the start form shows them and files carry them.
std::string VersionText();

}  // namespace bellmark
