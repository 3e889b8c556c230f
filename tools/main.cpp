#include "Dispatch.h"

#include "Dialogs.h"

#include <QApplication>
#include <QCoreApplication>
#include <algorithm>
#include <memory>

namespace {

// Qt warns when XDG_RUNTIME_DIR is unset (servers, containers, cron) as soon as anything asks
// for the runtime directory; the GUI application does at start-up. That is not about the
// user's work, so it is the one message dropped; everything else goes through.
QtMessageHandler previousHandler = nullptr;

void quietHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg &&
        message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    previousHandler(type, context, message);
}

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

// The application object the command needs: drawing needs a GUI application (offscreen when
// there is no display), everything else the plain core application, which loads no platform.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv, bool gui) {
    if (!gui)
        return std::make_unique<QCoreApplication>(argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv) {
    previousHandler = qInstallMessageHandler(quietHandler);
    // Taken before the application object, which removes the words Qt knows (-platform, ...).
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    const qxtool::Command* command = words.isEmpty() ? nullptr : qxtool::findCommand(words[0]);
    const auto app = makeApplication(argc, argv, command && command->gui);
    QCoreApplication::setApplicationName(QStringLiteral("qxtool"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QXTOOLS_VERSION));
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
        qxtool::out() << "qxtool " << QXTOOLS_VERSION << Qt::endl;
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
