#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>

namespace qxtool {

// Output streams of the running subcommand.
QTextStream& out();
QTextStream& err();

// A subcommand: gets its arguments (after its name), returns the exit code.
struct Command {
    QString name;
    QString usage;   // "gif2bmp IN.gif OUT.bmp"
    QString summary; // one line for --help
    std::function<int(const QStringList& args)> run;
};

// Adds a subcommand; returns true so it can initialise a static.
bool registerCommand(Command command);

// Prints "usage: qxtool USAGE" to standard error and returns the exit code 2.
int usageError(const Command& command);

} // namespace qxtool

#define QXTOOL_CONCAT_(a, b) a##b
#define QXTOOL_CONCAT(a, b) QXTOOL_CONCAT_(a, b)
// Registers a subcommand at program start: QXTOOL_COMMAND({"name", "usage", "summary", fn});
#define QXTOOL_COMMAND(...)                                                                        \
    namespace {                                                                                    \
    const bool QXTOOL_CONCAT(qxtoolRegistered_, __LINE__) = qxtool::registerCommand(__VA_ARGS__);  \
    }
