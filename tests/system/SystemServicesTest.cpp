#include "QxutilSystem.h"

#include "TestSupport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

// A form that answers messages: Result = message number + 1000.
class AnsweringForm : public QWidget {
    Q_OBJECT
public:
    QList<quint16> received;

protected:
    bool event(QEvent* e) override {
        if (e->type() == TWindowMessageEvent::EventType()) {
            auto* m = static_cast<TWindowMessageEvent*>(e);
            received.append(m->Msg());
            m->Result = m->Msg() + 1000;
            m->accept();
            return true;
        }
        return QWidget::event(e);
    }
};

// Shows a top-level window with a title and lets the window system see it.
void showWindow(QWidget& w, const QString& title) {
    w.setWindowTitle(title);
    w.resize(120, 80);
    w.show();
    QCoreApplication::processEvents();
}

bool waitFor(const std::function<bool()>& condition) {
    QDeadlineTimer deadline(20000);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(20);
        QCoreApplication::processEvents();
    }
    return true;
}

void writeScript(const QString& path, const QByteArray& body) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("#!/bin/sh\n" + body);
    f.close();
    f.setPermissions(f.permissions() | QFileDevice::ExeOwner);
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Sets an environment variable for the life of the object.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const QByteArray& value)
        : m_name(name), m_had(qEnvironmentVariableIsSet(name)), m_old(qgetenv(name)) {
        qputenv(name, value);
    }
    ~ScopedEnv() {
        if (m_had)
            qputenv(m_name, m_old);
        else
            qunsetenv(m_name);
    }

private:
    const char* m_name;
    bool m_had;
    QByteArray m_old;
};

} // namespace

TEST(SystemWindows, TitleSearchIsTrimmedCaseBlindAndExact) {
    QWidget first;
    QWidget second;
    showWindow(first, QStringLiteral("  Mein Fenster  "));
    showWindow(second, QStringLiteral("Mein Fenster Zwei"));
    const HWND found = qxtGetWindowsHandle(QStringLiteral(" mein FENSTER "));
    ASSERT_NE(found, HWND(0));
    EXPECT_EQ(found, HWND(first.winId()));
    EXPECT_EQ(qxtGetWindowTitle(found), QStringLiteral("  Mein Fenster  "));
    EXPECT_EQ(qxtGetWindowsHandle(QStringLiteral("mein fenster zwei")), HWND(second.winId()));
    // A title that only contains the text does not match.
    EXPECT_EQ(qxtGetWindowsHandle(QStringLiteral("Fenster")), HWND(0));
    EXPECT_EQ(qxtGetWindowTitle(0), QString());

    // Titles are cut at 255 characters.
    QWidget longTitle;
    showWindow(longTitle, QString(300, QLatin1Char('x')));
    EXPECT_EQ(qxtGetWindowTitle(longTitle.winId()), QString(255, QLatin1Char('x')));
}

TEST(SystemWindows, SendMessageByClassPart) {
    // On X11 the class is WM_CLASS (the program's name), elsewhere the widget's class name.
    const bool x11 = QGuiApplication::platformName() == QLatin1String("xcb");
    const QString answering = x11 ? QStringLiteral("test_system") : QStringLiteral("Answering");
    const QString plainClass = x11 ? QStringLiteral("test_system") : QStringLiteral("QWidget");
    {
        AnsweringForm form;
        showWindow(form, QStringLiteral("Empfänger"));
        EXPECT_EQ(qxtSendMessage(answering, 0x0400), 0x0400 + 1000);
        EXPECT_EQ(form.received, QList<quint16>{0x0400});
        // An empty part never matches; the search is case-sensitive.
        EXPECT_EQ(qxtSendMessage(QString(), 0x0400), 0);
        EXPECT_EQ(qxtSendMessage(answering.toUpper(), 0x0400), 0);
        EXPECT_EQ(qxtSendMessage(QStringLiteral("NoSuchClass"), 0x0400), 0);
        EXPECT_EQ(form.received.size(), 1);
    }
    // A WM_CLOSE nobody answers closes the window.
    QWidget plain;
    showWindow(plain, QStringLiteral("Schließ mich"));
    EXPECT_EQ(qxtSendMessage(plainClass, WM_CLOSE), 0);
    EXPECT_FALSE(plain.isVisible());
}

TEST(SystemWindows, OtherProgramOnX11) {
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        GTEST_SKIP() << "another program's windows are only seen on X11";
    // The gallery saves its settings when it ends; they go to a directory of the test.
    qxtest::TempDir config;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
    QProcess demo;
    demo.setProcessEnvironment(env);
    demo.start(QStringLiteral(QXDEMO_PROGRAM), QStringList{});
    ASSERT_TRUE(demo.waitForStarted(30000));
    HWND window = 0;
    ASSERT_TRUE(waitFor([&] {
        window = qxtGetWindowsHandle(QStringLiteral("qxtools gallery"));
        return window != 0;
    }));
    EXPECT_EQ(qxtGetWindowTitle(window), QStringLiteral("QXTools Gallery"));
    // The close request reaches the other program, which then ends.
    EXPECT_EQ(qxtSendMessage(QStringLiteral("qxdemo"), WM_CLOSE), 0);
    EXPECT_TRUE(demo.waitForFinished(30000));
    EXPECT_TRUE(QFile::exists(config.file(QStringLiteral("qxdemo.ini"))));
    if (demo.state() != QProcess::NotRunning) {
        demo.kill();
        demo.waitForFinished();
    }
}

TEST(SystemDelay, KeepsEventsRunning) {
    for (int ms : {-5, 0}) {
        bool ran = false;
        QTimer::singleShot(0, [&] { ran = true; });
        qxtDelay(ms);
        EXPECT_TRUE(ran) << ms;
    }
    bool ticked = false;
    QTimer::singleShot(10, [&] { ticked = true; });
    QElapsedTimer clock;
    clock.start();
    qxtDelay(60);
    EXPECT_GE(clock.elapsed(), 60);
    EXPECT_TRUE(ticked);
}

TEST(SystemLaunch, ExecuteFile) {
    qxtest::TempDir dir;
    qxtest::DialogRecorder dialogs;
    // A missing file: the message and a code below 33.
    EXPECT_EQ(qxtExecuteFile(dir.file(QStringLiteral("missing.sh")), QString(), QString(), 1), 2);
    EXPECT_EQ(qxtExecuteFile(dir.file(QStringLiteral("no/dir/x.sh")), QString(), QString(), 1), 3);
    EXPECT_EQ(dialogs.texts(),
              (QStringList{"Fehler beim Programm-Aufruf", "Fehler beim Programm-Aufruf"}));

    // An executable runs directly with its parameters, in DefaultDir.
    writeScript(dir.file(QStringLiteral("run.sh")), "printf '%s|' \"$@\" > \"$PWD/args\"\n");
    EXPECT_GT(qxtExecuteFile(QStringLiteral("run.sh"), QStringLiteral("one 'two words' $HOME"),
                             dir.path(), 1),
              32);
    ASSERT_TRUE(waitFor([&] { return readAll(dir.file(QStringLiteral("args"))).endsWith('|'); }));
    EXPECT_EQ(readAll(dir.file(QStringLiteral("args"))), QByteArray("one|two words|$HOME|"));

    // Any other file goes to xdg-open, found on the search path.
    const QString bin = dir.file(QStringLiteral("bin"));
    QDir().mkpath(bin);
    const QString doc = dir.write(QStringLiteral("brief.txt"), "Hallo");
    {
        ScopedEnv path("PATH", QFile::encodeName(bin));
        EXPECT_EQ(qxtExecuteFile(doc, QString(), QString(), 1), 31);
        writeScript(bin + QStringLiteral("/xdg-open"),
                    "printf '%s' \"$1\" > \"" + QFile::encodeName(dir.file("opened")) + "\"\n");
        EXPECT_GT(qxtExecuteFile(doc, QString(), QString(), 1), 32);
    }
    ASSERT_TRUE(waitFor([&] { return QFile::exists(dir.file(QStringLiteral("opened"))); }));
    ASSERT_TRUE(waitFor([&] { return !readAll(dir.file(QStringLiteral("opened"))).isEmpty(); }));
    EXPECT_EQ(readAll(dir.file(QStringLiteral("opened"))), QFile::encodeName(doc));
    EXPECT_EQ(dialogs.texts().size(), 3);
}

TEST(SystemLaunch, RunAndWaitUsesNoShell) {
    qxtest::TempDir dir;
    EXPECT_EQ(qxtRunAndWait(QStringLiteral("sh -c 'exit 7'"), 1), 7);
    EXPECT_EQ(qxtRunAndWait(QStringLiteral("true"), 1), 0);
    // A program that cannot start gives 0, like one that ends with 0.
    EXPECT_EQ(qxtRunAndWait(QStringLiteral("/no/such/program --flag"), 1), 0);
    EXPECT_EQ(qxtRunAndWait(QString(), 1), 0);
    // Quotes group words; a redirection is just another argument.
    const QString out = dir.file(QStringLiteral("out"));
    EXPECT_EQ(
        qxtRunAndWait(QStringLiteral("sh -c 'printf %s \"$1\" > \"$2\"' x \"a  b\" ") + out, 1), 0);
    EXPECT_EQ(readAll(out), QByteArray("a  b"));
    EXPECT_EQ(
        qxtRunAndWait(
            QStringLiteral("sh -c 'printf %s \"$1\" > \"$2\"' x \"\\\"q\\\" \\$b\"\\ c'd'\t") + out,
            1),
        0);
    EXPECT_EQ(readAll(out), QByteArray("\"q\" $b cd"));
    EXPECT_EQ(qxtRunAndWait(QStringLiteral("echo hi > ") + dir.file(QStringLiteral("none")), 1), 0);
    EXPECT_FALSE(QFile::exists(dir.file(QStringLiteral("none"))));
}

TEST(SystemLaunch, RunOnceEntryRunsAndRemovesItself) {
    qxtest::TempDir dir;
    ScopedEnv config("XDG_CONFIG_HOME", QFile::encodeName(dir.file(QStringLiteral("config"))));
    const QString marker = dir.file(QStringLiteral("ran \"1\" $HOME 50%"));
    QString quotedMarker = marker;
    quotedMarker.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
    qxtRunOnce(QStringLiteral("QX Test"),
               QStringLiteral("printf 'a\\\\b' > '%1'").arg(quotedMarker));
    const QString entry = dir.file(QStringLiteral("config/autostart/QX Test.desktop"));
    ASSERT_TRUE(QFile::exists(entry));
    EXPECT_TRUE(readAll(entry).startsWith("[Desktop Entry]\nType=Application\nName=QX Test\n"));

    // Start it the way a session does at login.
    const QString gio = QStandardPaths::findExecutable(QStringLiteral("gio"));
    if (gio.isEmpty())
        GTEST_SKIP() << "gio (libglib2.0-bin) is needed to launch the entry";
    QProcess launcher;
    launcher.start(gio, {QStringLiteral("launch"), entry});
    ASSERT_TRUE(launcher.waitForFinished(30000));
    ASSERT_EQ(launcher.exitCode(), 0) << launcher.readAllStandardError().constData();
    ASSERT_TRUE(waitFor([&] { return readAll(marker) == "a\\b"; }));
    EXPECT_FALSE(QFile::exists(entry));
}

TEST(SystemLogOff, ThreeNamesOnePath) {
    int calls = 0;
    bool answer = true;
    const TLogOffHandler previous = SetLogOffHandler([&] {
        ++calls;
        return answer;
    });
    EXPECT_TRUE(qxtRestart());
    EXPECT_TRUE(qxtReboot());
    answer = false;
    EXPECT_FALSE(qxtShutdown());
    EXPECT_EQ(calls, 3);
    SetLogOffHandler(previous);
}

TEST(SystemInfo, PlatformAndLoad) {
    EXPECT_FALSE(qxtIsWinNT());
    EXPECT_EQ(qxtGetWinVersion(), -1);
    qxtest::DialogRecorder dialogs;
    const qint32 first = qxtGetCPULast();
    QElapsedTimer busy;
    busy.start();
    volatile quint64 sink = 0;
    while (busy.elapsed() < 200)
        sink = sink + 1;
    const qint32 second = qxtGetCPULast();
    EXPECT_GE(first, 0);
    EXPECT_LE(first, 100);
    // The busy loop ran between the two reads, so the load is not zero.
    EXPECT_GT(second, 0);
    EXPECT_LE(second, 100);
    EXPECT_EQ(dialogs.texts(), (QStringList{"4", "4"}));
}

#include "SystemServicesTest.moc"
