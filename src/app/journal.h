#pragma once

#include <string>

#include "platform/dialogs.h"

/// The account of a run: "Journal.txt" in its data folder. Each event is a line with date and time, operator, procedure
/// and step, and what happened, with tabs between them. Lines are added, never changed.
namespace bellmark {

class Program;

inline constexpr const char* journalName = "Journal.txt";

/// Begins the account of a new run, or that of a resumed one goes on.
void BeginJournal(Program& program, const std::string& event);

/// Adds an event. Lines of before the run has its folder wait for it. Without a run nothing is written. A journal that
/// cannot be written is told in the log: the calibration goes on.
void AddToJournal(Program& program, const std::string& event);

/// Adds a message that was shown, with its answer.
void AddToJournal(Program& program, const MessageBox& message, Answer answer);

}  // namespace bellmark
