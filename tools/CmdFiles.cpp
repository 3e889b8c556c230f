// File functions: wildcard matching, numbered names, deleting trees, searching, pending renames.
#include "Command.h"
#include "Drives.h"
#include "QXFind.h"
#include "QxutilFiles.h"

#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <unistd.h>

namespace {

const qxtool::Command matchCommand{
    .name = "match",
    .summary = "whether a name matches one of several wildcard patterns",
    .arguments = {{"NAME", "the file name to test"},
                  {"PATTERNS", "wildcard patterns joined by \";\" (\"*.GIF;*.BMP\"), compared "
                               "case-sensitively; a star works first or last in a pattern, or "
                               "in pairs (\"*.*\" matches every name with a dot)"}},
    .exitCodes = {{"0", "NAME matches (prints \"true\")"},
                  {"1", "NAME matches none of the patterns (prints \"false\")"}},
    .examples = {"qxtool match README.TXT '*.BAK;*.TXT'"},
    .run = [](const qxtool::Call& call) {
        const bool matches = qxtIsMatch(call.args[0], call.args[1]);
        qxtool::out() << (matches ? "true" : "false") << Qt::endl;
        return matches ? 0 : 1;
    }};

const qxtool::Command nextnameCommand{
    .name = "nextname",
    .summary = "the next free file name of a numbered series",
    .arguments = {{"PATTERN", "a path whose name holds a run of # for the number "
                              "(/scans/SCAN###.BMP)"}},
    .exitCodes = {{"0", "the name is printed"},
                  {"1", "PATTERN has no run of #, or the series is full (message on "
                        "standard error)"}},
    .examples = {"qxtool nextname ~/scans/SCAN###.BMP"},
    .run = [](const qxtool::Call& call) {
        const QString name = qxtGetNextFileName(call.args[0]);
        if (name.isEmpty())
            return 1;
        qxtool::out() << name << Qt::endl;
        return 0;
    }};

// A directory whose loss would be a disaster: "/" and other mount points, the home directory
// and the directories above it.
bool isPrecious(const QString& path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    if (IsDriveRoot(path) || (!canonical.isEmpty() && IsDriveRoot(canonical)))
        return true;
    const QString home = QFileInfo(QDir::homePath()).canonicalFilePath();
    return !canonical.isEmpty() && !home.isEmpty() &&
           (home == canonical || home.startsWith(canonical + QLatin1Char('/')));
}

// Asks on the terminal; false without one.
bool confirmed(const QString& path) {
    if (!::isatty(STDIN_FILENO)) {
        qxtool::err() << "qxtool killpath: " << path
                      << " ist ein Laufwerk oder das Home-Verzeichnis; ohne Terminal wird es nur "
                         "mit --yes geleert."
                      << Qt::endl;
        return false;
    }
    qxtool::err() << "qxtool killpath: " << path
                  << " ist ein Laufwerk oder das Home-Verzeichnis. Wirklich alles darin löschen? "
                     "[j/N] "
                  << Qt::flush;
    char answer[16] = {};
    if (!std::fgets(answer, sizeof answer, stdin))
        return false;
    const QString word = QString::fromLocal8Bit(answer).trimmed().toLower();
    return word == QLatin1String("j") || word == QLatin1String("ja");
}

const qxtool::Command killpathCommand{
    .name = "killpath",
    .summary = "delete a directory tree",
    .arguments = {{"PATH", "the directory to delete with everything in it"}},
    .options = {{"--yes", "", "delete even when PATH is a drive or the home directory"}},
    .details = "A drive root (\"/\" or another mount point) is emptied and kept. PATH being a "
               "drive, the home directory or a directory above it needs --yes, or a \"j\" typed "
               "at the question on a terminal; without a terminal it is refused.",
    .exitCodes = {{"0", "everything was deleted"},
                  {"1", "something could not be deleted (messages on standard error), or the "
                        "deletion of a drive or the home directory was refused"}},
    .examples = {"qxtool killpath /tmp/build-old"},
    .run = [](const qxtool::Call& call) {
        const QString& path = call.args[0];
        // An empty path would name the current directory.
        if (path.isEmpty())
            return call.usageError(QStringLiteral("PATH ist leer"));
        if (isPrecious(path) && !call.has(QStringLiteral("--yes")) && !confirmed(path))
            return 1;
        return qxtKillPath(path) ? 0 : 1;
    }};

const qxtool::Command findCommand{
    .name = "find",
    .summary = "list the files matching a pattern, then the counts",
    .arguments = {{"DIR", "the directory to search"},
                  {"PATTERN", "wildcard masks joined by \";\" (\"*.gif;*.bmp\"), matched "
                              "case-blind"}},
    .options = {{"--subdirs", "", "search the subdirectories too"}},
    .details = "Prints the full name of every file found, one a line, then \"Dirs: N\" (the "
               "subdirectories searched) and \"Files: N\".",
    .exitCodes = {{"0", "the search ran (also when nothing matched)"},
                  {"1", "DIR is not a directory"}},
    .examples = {"qxtool find ~/Bilder '*.gif;*.bmp' --subdirs"},
    .run = [](const qxtool::Call& call) {
        const QString& dir = call.args[0];
        if (!QFileInfo(dir).isDir()) {
            qxtool::err() << "qxtool find: Verzeichnis " << dir << " nicht gefunden" << Qt::endl;
            return 1;
        }
        TQXFind find;
        find.SetStartPath(dir);
        find.SetFilePattern(call.args[1]);
        find.SetSubdirs(call.has(QStringLiteral("--subdirs")));
        find.OnFindFile = [](QObject*, const TSearchRec& rec, const QString& path, const QString&) {
            qxtool::out() << path << rec.Name << '\n';
        };
        find.Execute();
        qxtool::out() << "Dirs: " << find.DirCount() << '\n'
                      << "Files: " << find.FileCount() << Qt::endl;
        return 0;
    }};

const qxtool::Command winstartCommand{
    .name = "winstart",
    .summary = "carry out the file replacements waiting in WININIT.INI",
    .details = "Carries out the [rename] entries of WININIT.INI in the configuration directory, "
               "as the autostart entry does at the next login.",
    .exitCodes = {{"0", "every waiting replacement was done (prints the counts)"},
                  {"1", "some stay pending (listed on standard error)"}},
    .examples = {"qxtool winstart"},
    .run = [](const qxtool::Call&) {
        QStringList failed;
        const int done = qxtProcessPendingRenames(&failed);
        for (const QString& f : failed)
            qxtool::err() << "Failed: " << f << '\n';
        qxtool::out() << "Replaced: " << done << '\n' << "Pending: " << failed.size() << Qt::endl;
        return failed.isEmpty() ? 0 : 1;
    }};

} // namespace

QXTOOL_COMMAND(matchCommand)
QXTOOL_COMMAND(nextnameCommand)
QXTOOL_COMMAND(killpathCommand)
QXTOOL_COMMAND(findCommand)
QXTOOL_COMMAND(winstartCommand)
