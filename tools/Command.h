#pragma once

// The qxtool command framework. A family of subcommands is one file tools/Cmd<Family>.cpp that
// declares each command as a qxtool::Command and registers it with QXTOOL_COMMAND. The framework
// answers -h/--help, ends options at "--", refuses unknown options and wrong argument counts
// (exit 2, before the command runs) and hands the command what was given.

#include <QList>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <functional>

namespace qxtool {

// Output streams of the running subcommand.
QTextStream& out();
QTextStream& err();

// A named line of a command's help: an argument ("DIR"), or an exit code ("1").
struct Entry {
    QString name;
    QString text;
};

// An option a command accepts besides -h/--help, written anywhere before "--".
struct Option {
    QString name;  // "--subdirs"
    QString value; // the value's name for "--delay N" or "--delay=N"; empty for a flag
    QString text;  // one line for the help
};

struct Command;

// What the command line gave a command.
struct Call {
    const Command& command;
    QStringList args;                   // the arguments, options taken out
    QList<QPair<QString, QString>> set; // the options given, in order, with their values

    // Whether the option (its name, "--subdirs") was given.
    bool has(const QString& option) const;
    // The value of the option's last use, or fallback.
    QString value(const QString& option, const QString& fallback = QString()) const;
    // Prints the reason, the usage line and where to find help on standard error; returns 2.
    int usageError(const QString& reason) const;
};

// A subcommand. Declare it with designated initialisers in this order, leaving out what it
// does not need:
//   const qxtool::Command find{
//       .name = "find",
//       .summary = "list the files matching a pattern, then the counts",
//       .arguments = {{"DIR", "the directory to search"}, {"PATTERN", "masks joined by ;"}},
//       .options = {{"--subdirs", "", "search the subdirectories too"}},
//       .exitCodes = {{"0", "the search ran"}, {"1", "DIR is not a directory"}},
//       .examples = {"qxtool find ~/Bilder '*.gif' --subdirs"},
//       .run = [](const qxtool::Call& call) { ... return 0; }};
//   QXTOOL_COMMAND(find)
struct Command {
    QString name{};
    // One short line for "qxtool --help", lower case, no full stop.
    QString summary{};
    // In order; "[NAME]" is optional, "NAME..." takes one or more, "[NAME...]" any number.
    QList<Entry> arguments{};
    QList<Option> options{};
    // Further paragraphs of the help (verbs, rules, safety), or empty.
    QString details{};
    // Exit 2 for wrong usage is added by the framework.
    QList<Entry> exitCodes{};
    QStringList examples{};
    std::function<int(const Call&)> run{};

    // "find [--subdirs] DIR PATTERN"
    QString usage() const;
};

// Adds a subcommand; returns true so it can initialise a static.
bool registerCommand(const Command& command);

} // namespace qxtool

#define QXTOOL_CONCAT_(a, b) a##b
#define QXTOOL_CONCAT(a, b) QXTOOL_CONCAT_(a, b)
// Registers a subcommand at program start: QXTOOL_COMMAND(command)
#define QXTOOL_COMMAND(...)                                                                        \
    namespace {                                                                                    \
    const bool QXTOOL_CONCAT(qxtoolRegistered_, __LINE__) = qxtool::registerCommand(__VA_ARGS__);  \
    }
