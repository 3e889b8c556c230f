#include "Command.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QList>
#include <algorithm>
#include <cstdio>

namespace qxtool {

namespace {
QList<Command>& commands() {
    static QList<Command> list;
    return list;
}
} // namespace

QTextStream& out() {
    static QTextStream s(stdout);
    return s;
}

QTextStream& err() {
    static QTextStream s(stderr);
    return s;
}

bool registerCommand(Command command) {
    commands().append(std::move(command));
    return true;
}

int usageError(const Command& command) {
    err() << "usage: qxtool " << command.usage << Qt::endl;
    return 2;
}

} // namespace qxtool

namespace {

void printHelp() {
    auto& o = qxtool::out();
    o << "usage: qxtool [--help] [--version] COMMAND [ARGS...]\n\n"
         "Command-line access to the non-visual functions of QXTools.\n\n"
         "Commands:\n";
    QList<qxtool::Command> list = qxtool::commands();
    std::sort(list.begin(), list.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    for (const auto& c : list)
        o << "  " << c.usage.leftJustified(40) << ' ' << c.summary << '\n';
    o.flush();
}

} // namespace

int main(int argc, char** argv) {
    // Graphics need a GUI application; without a display the offscreen platform serves.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("qxtool"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QXTOOLS_VERSION));
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty() || args[0] == QLatin1String("--help") || args[0] == QLatin1String("-h")) {
        printHelp();
        return args.isEmpty() ? 2 : 0;
    }
    if (args[0] == QLatin1String("--version")) {
        qxtool::out() << "qxtool " << QXTOOLS_VERSION << Qt::endl;
        return 0;
    }
    const QString name = args.takeFirst();
    for (const auto& c : qxtool::commands())
        if (c.name == name) {
            const int rc = c.run(args);
            qxtool::out().flush();
            qxtool::err().flush();
            return rc;
        }
    qxtool::err() << "qxtool: unknown command '" << name << "' (see qxtool --help)" << Qt::endl;
    return 2;
}
