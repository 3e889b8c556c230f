#pragma once

// What qxtool's main needs of the command framework beyond what commands use.

#include "Command.h"

namespace qxtool {

// Every registered command, in registration order.
const QList<Command>& commands();
// The command of that name, or nullptr.
const Command* findCommand(const QString& name);
// Prints reason, the usage line and where to find help on standard error; returns 2.
int usageError(const Command& command, const QString& reason);
// The command's usage, arguments, options, details, exit codes and examples on standard output.
void printHelp(const Command& command);
// Parses the words after the command's name and runs it; returns the exit code.
int runCommand(const Command& command, const QStringList& words);

} // namespace qxtool
