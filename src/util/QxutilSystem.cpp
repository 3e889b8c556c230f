#include "QxutilSystem.h"

#include "Application.h"
#include "Dialogs.h"
#include "QxutilFiles.h"
#include "QxutilSysStat.h"
#include "QxutilSystemX11_p.h"
#include "SysUtils.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace {

// Launch results in the range the callers know (below 33 is a failure).
constexpr qint32 errFileNotFound = 2;
constexpr qint32 errPathNotFound = 3;
constexpr qint32 errAccessDenied = 5;
constexpr qint32 errNoAssociation = 31;
constexpr qint32 launched = 42;

bool logOffThroughLogind() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"),
        QStringLiteral("/org/freedesktop/login1/session/auto"),
        QStringLiteral("org.freedesktop.login1.Session"), QStringLiteral("Terminate"));
    return QDBusConnection::systemBus().call(call).type() == QDBusMessage::ReplyMessage;
}

TLogOffHandler& logOffHandler() {
    static TLogOffHandler handler;
    return handler;
}

bool logOff() {
    const TLogOffHandler& h = logOffHandler();
    return h ? h() : logOffThroughLogind();
}

// The program's own top-level windows, the desktop pseudo-widget left out.
QList<QWidget*> ownWindows() {
    QList<QWidget*> result;
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return result;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->windowType() != Qt::Desktop)
            result.append(w);
    return result;
}

QString ownTitle(const QWidget* w) {
    QString title = w->windowTitle();
    title.remove(QStringLiteral("[*]"));
    return title;
}

QString normalisedTitle(const QString& title) {
    return Trim(title).toUpper();
}

// Splits a command line into words as a shell does, without expanding anything: blanks
// separate words, single quotes keep everything, double quotes keep all but a backslash
// before " \ $ `, and a backslash outside quotes keeps the next character.
QStringList splitCommandLine(const QString& line) {
    QStringList words;
    QString word;
    bool inWord = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (c == u'\'') {
            const qsizetype end = line.indexOf(QLatin1Char('\''), i + 1);
            const qsizetype stop = end < 0 ? line.size() : end;
            word += line.mid(i + 1, stop - i - 1);
            i = stop;
            inWord = true;
        } else if (c == u'"') {
            for (++i; i < line.size() && line[i] != u'"'; ++i) {
                if (line[i] == u'\\' && i + 1 < line.size() &&
                    QStringView(u"\"\\$`").contains(line[i + 1]))
                    ++i;
                word += line[i];
            }
            inWord = true;
        } else if (c == u'\\') {
            if (i + 1 < line.size())
                word += line[++i];
            inWord = true;
        } else if (c.isSpace()) {
            if (inWord)
                words.append(word);
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        words.append(word);
    return words;
}

// Where a file named for launching is: the name itself with a directory part, else in
// DefaultDir, the working directory or the search path.
QString locate(const QString& fileName, const QString& defaultDir) {
    const QDir base(defaultDir.isEmpty() ? QDir::currentPath() : defaultDir);
    if (fileName.contains(QLatin1Char('/')))
        return base.absoluteFilePath(fileName);
    for (const QString& candidate :
         {base.absoluteFilePath(fileName), QDir::current().absoluteFilePath(fileName)})
        if (QFileInfo::exists(candidate))
            return candidate;
    const QString onPath = QStandardPaths::findExecutable(fileName);
    return onPath.isEmpty() ? base.absoluteFilePath(fileName) : onPath;
}

qint32 launch(const QString& fileName, const QString& params, const QString& defaultDir) {
    if (fileName.contains(QStringLiteral("://"))) {
        const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
        if (opener.isEmpty())
            return errNoAssociation;
        return QProcess::startDetached(opener, {fileName}, defaultDir) ? launched : errAccessDenied;
    }
    const QString path = locate(fileName, defaultDir);
    const QFileInfo info(path);
    if (!info.exists())
        return info.absoluteDir().exists() ? errFileNotFound : errPathNotFound;
    if (!defaultDir.isEmpty() && !QFileInfo(defaultDir).isDir())
        return errPathNotFound;
    if (info.isFile() && info.isExecutable())
        return QProcess::startDetached(path, splitCommandLine(params), defaultDir)
                   ? launched
                   : errAccessDenied;
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (opener.isEmpty())
        return errNoAssociation;
    return QProcess::startDetached(opener, {path}, defaultDir) ? launched : errAccessDenied;
}

// One argument of a desktop entry's Exec key: quoted, with the characters the quoting
// reserves escaped and "%" doubled so it is no field code.
QString execArgument(QString s) {
    s.replace(QLatin1Char('%'), QStringLiteral("%%"));
    QString quoted = QStringLiteral("\"");
    for (QChar c : s) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    return quoted + QLatin1Char('"');
}

// A desktop entry value: backslashes and line breaks escaped.
QString entryValue(const QString& s) {
    QString out;
    for (QChar c : s) {
        if (c == u'\\')
            out += QStringLiteral("\\\\");
        else if (c == u'\n')
            out += QStringLiteral("\\n");
        else if (c == u'\r')
            out += QStringLiteral("\\r");
        else if (c == u'\t')
            out += QStringLiteral("\\t");
        else
            out += c;
    }
    return out;
}

} // namespace

TWindowMessageEvent::TWindowMessageEvent(quint16 msg) : QEvent(EventType()), m_msg(msg) {
    setAccepted(false);
}

TWindowMessageEvent::~TWindowMessageEvent() = default;

QEvent::Type TWindowMessageEvent::EventType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

void qxtDelay(int Milliseconds) {
    QElapsedTimer clock;
    clock.start();
    TApplication::ProcessMessages();
    if (Milliseconds <= 0 || !QCoreApplication::instance())
        return;
    // A local event loop keeps the interface live without spinning.
    QEventLoop loop;
    QTimer::singleShot(std::max<qint64>(0, Milliseconds - clock.elapsed()), &loop,
                       &QEventLoop::quit);
    loop.exec();
}

qint32 qxtExecuteFile(const QString& FileName, const QString& Params, const QString& DefaultDir,
                      int) {
    const qint32 result = launch(FileName, Params, DefaultDir);
    if (result < 33)
        ShowMessage(QStringLiteral("Fehler beim Programm-Aufruf"));
    return result;
}

void qxtRunOnce(const QString& Name, const QString& CommandLine) {
    const QString dir = qxtWinDir() + QStringLiteral("autostart/");
    QDir().mkpath(dir);
    QString fileName = Name;
    fileName.replace(QLatin1Char('/'), QLatin1Char('_'));
    const QString path = dir + fileName + QStringLiteral(".desktop");
    // The entry deletes itself ("$0" is its own path) before the command runs.
    const QString exec =
        QStringList{execArgument(QStringLiteral("sh")), execArgument(QStringLiteral("-c")),
                    execArgument(QStringLiteral("rm -f -- \"$0\"; ") + CommandLine),
                    execArgument(path)}
            .join(QLatin1Char(' '));
    const QString entry = QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n")
                              .arg(entryValue(Name), entryValue(exec));
    QSaveFile out(path);
    if (out.open(QIODevice::WriteOnly)) {
        out.write(entry.toUtf8());
        out.commit();
    }
}

qint32 qxtRunAndWait(const QString& CommandLine, int) {
    QStringList args = splitCommandLine(CommandLine);
    if (args.isEmpty())
        return 0;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    const QString program = args.takeFirst();
    process.start(program, args);
    if (!process.waitForStarted(-1))
        return 0;
    process.waitForFinished(-1);
    return process.exitCode();
}

qint32 qxtSendMessage(const QString& ClassPart, quint16 Msg) {
    if (ClassPart.isEmpty())
        return 0;
    QWidget* target = nullptr;
    if (qxt_x11::available()) {
        for (HWND w : qxt_x11::topLevelWindows()) {
            const QStringList classes = qxt_x11::windowClass(w);
            if (std::none_of(classes.begin(), classes.end(),
                             [&](const QString& c) { return c.contains(ClassPart); }))
                continue;
            QApplication::beep();
            target = QWidget::find(WId(w));
            if (target)
                break;
            if (Msg == WM_CLOSE)
                qxt_x11::requestClose(w);
            return 0;
        }
    } else {
        for (QWidget* w : ownWindows())
            if (QString::fromLatin1(w->metaObject()->className()).contains(ClassPart)) {
                QApplication::beep();
                target = w;
                break;
            }
    }
    if (!target)
        return 0;
    TWindowMessageEvent event(Msg);
    QCoreApplication::sendEvent(target, &event);
    if (!event.isAccepted() && Msg == WM_CLOSE)
        target->close();
    return event.Result;
}

bool qxtRestart() {
    return logOff();
}

bool qxtReboot() {
    return logOff();
}

bool qxtShutdown() {
    return logOff();
}

bool qxtIsWinNT() {
    return false;
}

qint32 qxtGetWinVersion() {
    return -1;
}

qint32 qxtGetCPULast() {
    static TCPUUsage usage;
    qint32 load = 0;
    if (!usage.Read(load))
        return -1;
    // The load is a 32-bit value, as the statistics deliver it.
    ShowMessage(QString::number(sizeof(qint32)));
    return load;
}

HWND qxtGetWindowsHandle(const QString& Title) {
    const QString wanted = normalisedTitle(Title);
    if (qxt_x11::available()) {
        for (HWND w : qxt_x11::topLevelWindows())
            if (normalisedTitle(qxtGetWindowTitle(w)) == wanted)
                return w;
        return 0;
    }
    for (QWidget* w : ownWindows())
        if (normalisedTitle(ownTitle(w).left(255)) == wanted)
            return w->winId();
    return 0;
}

QString qxtGetWindowTitle(HWND Wnd) {
    if (Wnd == 0)
        return QString();
    if (qxt_x11::available())
        return qxt_x11::windowTitle(Wnd).left(255);
    for (QWidget* w : ownWindows())
        if (w->internalWinId() == Wnd)
            return ownTitle(w).left(255);
    return QString();
}

TLogOffHandler SetLogOffHandler(TLogOffHandler handler) {
    TLogOffHandler previous = std::move(logOffHandler());
    logOffHandler() = std::move(handler);
    return previous;
}
