#include "Command.h"
#include "Dialogs.h"
#include "QXFind.h"
#include "QxutilFiles.h"

namespace {

// Shows the library's messages on standard error while alive; warnings with an OK button are
// acknowledged.
class MessagesToStderr {
public:
    MessagesToStderr() {
        m_previous = SetDialogHandler([](TDialogRequest& r) {
            qxtool::err() << r.Text << Qt::endl;
            return r.Buttons.Contains(mbOK) ? mrOk : mrCancel;
        });
    }
    ~MessagesToStderr() { SetDialogHandler(std::move(m_previous)); }
    MessagesToStderr(const MessagesToStderr&) = delete;
    MessagesToStderr& operator=(const MessagesToStderr&) = delete;

private:
    TDialogHandler m_previous;
};

const qxtool::Command matchCommand{
    QStringLiteral("match"), QStringLiteral("match NAME PATTERNS"),
    QStringLiteral("whether NAME matches one of the ;-separated PATTERNS (case-sensitive)"),
    [](const QStringList& args) {
        if (args.size() != 2)
            return qxtool::usageError(matchCommand);
        qxtool::out() << (qxtIsMatch(args[0], args[1]) ? "true" : "false") << Qt::endl;
        return 0;
    }};

const qxtool::Command nextnameCommand{
    QStringLiteral("nextname"), QStringLiteral("nextname PATTERN"),
    QStringLiteral("the next free name of a series such as /scans/SCAN###.BMP"),
    [](const QStringList& args) {
        if (args.size() != 1)
            return qxtool::usageError(nextnameCommand);
        const MessagesToStderr messages;
        const QString name = qxtGetNextFileName(args[0]);
        if (name.isEmpty())
            return 1;
        qxtool::out() << name << Qt::endl;
        return 0;
    }};

const qxtool::Command killpathCommand{
    QStringLiteral("killpath"), QStringLiteral("killpath PATH"),
    QStringLiteral("delete a directory tree (a drive root is emptied and kept)"),
    [](const QStringList& args) {
        // An empty path would name the current directory.
        if (args.size() != 1 || args[0].isEmpty())
            return qxtool::usageError(killpathCommand);
        const MessagesToStderr messages;
        return qxtKillPath(args[0]) ? 0 : 1;
    }};

const qxtool::Command findCommand{
    QStringLiteral("find"), QStringLiteral("find DIR PATTERN [--subdirs]"),
    QStringLiteral("the files matching PATTERN (masks joined by ;), then the counts"),
    [](const QStringList& args) {
        QStringList rest = args;
        const bool subdirs = rest.removeAll(QStringLiteral("--subdirs")) > 0;
        if (rest.size() != 2)
            return qxtool::usageError(findCommand);
        TQXFind find;
        find.SetStartPath(rest[0]);
        find.SetFilePattern(rest[1]);
        find.SetSubdirs(subdirs);
        find.OnFindFile = [](QObject*, const TSearchRec& rec, const QString& path, const QString&) {
            qxtool::out() << path << rec.Name << '\n';
        };
        find.Execute();
        qxtool::out() << "Dirs: " << find.DirCount() << '\n'
                      << "Files: " << find.FileCount() << Qt::endl;
        return 0;
    }};

const qxtool::Command winstartCommand{
    QStringLiteral("winstart"), QStringLiteral("winstart"),
    QStringLiteral("replace the files waiting in WININIT.INI [rename]"),
    [](const QStringList& args) {
        if (!args.isEmpty())
            return qxtool::usageError(winstartCommand);
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
