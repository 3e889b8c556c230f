#pragma once

// Program launching, windows of other programs and system information.
//
// Windows are the X11 top-level windows when the program runs on X11 (the window manager's
// client list, or the root window's children without one; class = WM_CLASS, title =
// _NET_WM_NAME), and the program's own top-level widgets on any other platform (class = the
// widget's class name). A handle is the X11 window id or the own window's native id.

#include "QXExport.h"

#include <QEvent>
#include <QString>
#include <functional>

// A window handle; 0 is no window.
using HWND = quintptr;

// The message that asks a window to close.
constexpr quint16 WM_CLOSE = 0x0010;

// What qxtSendMessage delivers to the program's own windows. A handler sets Result and
// accepts the event; a WM_CLOSE nobody accepted closes the window.
class QXT_EXPORT TWindowMessageEvent : public QEvent {
public:
    // A message msg (WM_CLOSE, ...) with Result 0.
    explicit TWindowMessageEvent(quint16 msg);
    ~TWindowMessageEvent() override;
    // The event type, registered once.
    static QEvent::Type EventType();
    // The message number.
    quint16 Msg() const { return m_msg; }
    // The handler's answer, returned by qxtSendMessage.
    qint32 Result = 0;

private:
    quint16 m_msg;
};

// Waits Milliseconds while the program keeps handling its events; at least one round of
// pending events is handled, also for 0 or a negative time.
QXT_EXPORT void qxtDelay(int Milliseconds);
// Starts an executable file directly (Params split as a shell would, DefaultDir as working
// directory) or opens any other file with xdg-open. Returns a value above 32 on success;
// on failure shows "Fehler beim Programm-Aufruf" and returns 2 (file not found), 3 (directory
// not found), 5 (cannot be started) or 31 (nothing to open it with). ShowCmd is not used.
QXT_EXPORT qint32 qxtExecuteFile(const QString& FileName, const QString& Params,
                                 const QString& DefaultDir, int ShowCmd);
// Runs CommandLine (through sh) once at the next login: an autostart entry Name.desktop in
// the configuration directory's "autostart" folder that deletes itself when it starts.
QXT_EXPORT void qxtRunOnce(const QString& Name, const QString& CommandLine);
// Runs CommandLine (split as a shell would, but without a shell) and waits for its end.
// Returns its exit code, or 0 when it cannot be started. ShowCmd is not used.
QXT_EXPORT qint32 qxtRunAndWait(const QString& CommandLine, int ShowCmd);
// Beeps and sends Msg to the first top-level window whose class contains ClassPart
// (case-sensitive); returns the window's result, or 0 when none matches (an empty ClassPart
// never matches). Another program's window only understands WM_CLOSE (as the window
// manager's close request) and gives 0.
QXT_EXPORT qint32 qxtSendMessage(const QString& ClassPart, quint16 Msg);
// All three log the user off the same way, through the log-off handler.
QXT_EXPORT bool qxtRestart();
QXT_EXPORT bool qxtReboot();
QXT_EXPORT bool qxtShutdown();
// False: this is no Windows NT system.
QXT_EXPORT bool qxtIsWinNT();
// -1: there is no Windows platform identifier.
QXT_EXPORT qint32 qxtGetWinVersion();
// Shows the size of the load value read ("4") and returns the CPU load in percent since the
// previous call (0 on the first); -1 when the system's statistics cannot be read.
QXT_EXPORT qint32 qxtGetCPULast();
// The first top-level window whose title, trimmed, equals Title, trimmed, ignoring case; 0
// when there is none.
QXT_EXPORT HWND qxtGetWindowsHandle(const QString& Title);
// The window's title (at most 255 characters); empty for an unknown handle.
QXT_EXPORT QString qxtGetWindowTitle(HWND Wnd);

// Logs the user off; returns whether the request was accepted.
using TLogOffHandler = std::function<bool()>;
// Replaces the log-off handler (tests); an empty handler restores the default, which asks
// the login manager (logind, over D-Bus) to end the session. Returns the previous handler.
QXT_EXPORT TLogOffHandler SetLogOffHandler(TLogOffHandler handler);
