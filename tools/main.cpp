#include "Dispatch.h"

#include "Dialogs.h"
#include "QXToolsVersion.h"

#include <QCoreApplication>
#include <algorithm>

namespace {

// The library's messages go to standard error; a question is answered with its cancel button.
int messageToStderr(TDialogRequest& request) {
    qxtool::err() << request.Text << Qt::endl;
    return request.Buttons.Contains(mbOK) ? mrOk : mrCancel;
}

void printOverview(QTextStream& s) {
    s << "usage: qxtool [--help] [--version] COMMAND [ARGS...]\n"
         "       qxtool help COMMAND\n\n"
         "Command-line access to the non-visual functions of QXTools.\n\n"
         "Commands:\n";
    QList<qxtool::Command> list = qxtool::commands();
    std::sort(list.begin(), list.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    qsizetype width = 0;
    for (const auto& c : list)
        width = std::max(width, c.name.size());
    for (const auto& c : list)
        s << "  " << c.name.leftJustified(width) << "  " << c.summary << '\n';
    s << "\n\"qxtool help COMMAND\" or \"qxtool COMMAND --help\" shows a command's arguments,\n"
         "exit codes and an example.\n";
    s.flush();
}

int unknownCommand(const QString& name) {
    if (name.startsWith(QLatin1Char('-')))
        qxtool::err() << "qxtool: unbekannte Option '" << name << "'\n";
    else
        qxtool::err() << "qxtool: unbekannter Befehl '" << name << "'\n";
    printOverview(qxtool::err());
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    // Taken before the application object, which removes the words Qt knows (-platform, ...).
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    const qxtool::Command* command = words.isEmpty() ? nullptr : qxtool::findCommand(words[0]);
    // The core application: a GUI one would load a platform plugin, and Qt's start-up of that
    // looks for the runtime directory and warns on every call where XDG_RUNTIME_DIR is unset.
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("qxtool"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QXTOOLS_VERSION_STR));
    SetDialogHandler(messageToStderr);

    if (command) {
        const int rc = qxtool::runCommand(*command, words.sliced(1));
        qxtool::out().flush();
        qxtool::err().flush();
        return rc;
    }
    if (words.isEmpty()) {
        printOverview(qxtool::err());
        return 2;
    }
    const QString& first = words[0];
    if (first == QLatin1String("--help") || first == QLatin1String("-h") ||
        (first == QLatin1String("help") && words.size() == 1)) {
        printOverview(qxtool::out());
        return 0;
    }
    if (first == QLatin1String("--version") && words.size() == 1) {
        qxtool::out() << "qxtool " << QXTOOLS_VERSION_STR << Qt::endl;
        return 0;
    }
    if (first == QLatin1String("help") && words.size() == 2) {
        const qxtool::Command* topic = qxtool::findCommand(words[1]);
        if (!topic)
            return unknownCommand(words[1]);
        qxtool::printHelp(*topic);
        return 0;
    }
    if (first == QLatin1String("help") || first == QLatin1String("--version")) {
        qxtool::err() << "qxtool: zu viele Argumente nach " << first << '\n';
        printOverview(qxtool::err());
        return 2;
    }
    return unknownCommand(first);
}
