#pragma once

#include "QXExport.h"

#include <QCursor>
#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <atomic>

class THintWindow;
class THintManager;

// How the application makes its hint window (see HintWindowClassOf in THintWindow.h).
struct THintWindowClass {
    // The hint window class's name.
    const char* Name = nullptr;
    // Makes a hint window of the class.
    THintWindow* (*Create)() = nullptr;
};

// Cursor numbers as the framework gives them.
using TCursor = int;
constexpr TCursor crDefault = 0;
constexpr TCursor crNone = -1;
constexpr TCursor crArrow = -2;
constexpr TCursor crCross = -3;
constexpr TCursor crIBeam = -4;
constexpr TCursor crSizeNESW = -6;
constexpr TCursor crSizeNS = -7;
constexpr TCursor crSizeNWSE = -8;
constexpr TCursor crSizeWE = -9;
constexpr TCursor crUpArrow = -10;
constexpr TCursor crHourGlass = -11;
constexpr TCursor crDrag = -12;
constexpr TCursor crNoDrop = -13;
constexpr TCursor crHSplit = -14;
constexpr TCursor crVSplit = -15;
constexpr TCursor crMultiDrag = -16;
constexpr TCursor crSQLWait = -17;
constexpr TCursor crNo = -18;
constexpr TCursor crAppStart = -19;
constexpr TCursor crHelp = -20;
constexpr TCursor crHandPoint = -21;
constexpr TCursor crSizeAll = -22;

// The Qt cursor shown for a framework cursor number.
QXT_EXPORT QCursor CursorToQCursor(TCursor cursor);

// Lets pending events run at most every few milliseconds: often enough to keep an interface live
// (and let it cancel) during a long loop, without a pass through the event loop for every step.
//
// Example, a long loop that keeps its cancel button answering:
//
//     TEventBudget events;
//     for (const QString& name : names) {
//         events.Spend();
//         if (cancelled)
//             break;
//         process(name);
//     }
class QXT_EXPORT TEventBudget {
public:
    // Runs pending events when the last run is kIntervalMs or more ago, or there was none yet;
    // whether they ran.
    bool Spend();
    // Forgets the last run, so the next Spend runs the events.
    void Reset() { m_clock.invalidate(); }

private:
    static constexpr qint64 kIntervalMs = 5;
    QElapsedTimer m_clock;
};

// The application object's services for components.
class QXT_EXPORT TApplication : public QObject {
    Q_OBJECT
public:
    // Lets pending events run (keeps the interface live during long loops).
    static void ProcessMessages();
    // True once the application has started to quit; worker threads may ask it too.
    bool Terminated() const { return m_terminated.load(std::memory_order_relaxed); }
    // The full path of the running program.
    static QString ExeName();
    // The object owning application-wide helpers (the application's QCoreApplication).
    static QObject* Owner();

    // Whether hints show at all; false hides every tooltip, Qt's own included. Switching it on
    // makes a new hint window of HintWindowClass.
    bool ShowHint() const { return m_showHint; }
    void SetShowHint(bool value);
    // Milliseconds the pointer rests on a control before its hint shows (default 500).
    int HintPause() const { return m_hintPause; }
    void SetHintPause(int value);
    // Milliseconds before the next control's hint shows while a hint is up (default 50).
    int HintShortPause() const { return m_hintShortPause; }
    void SetHintShortPause(int value);
    // Milliseconds a hint stays up (default 2500).
    int HintHidePause() const { return m_hintHidePause; }
    void SetHintHidePause(int value);
    // The class hints are shown with; without one, Qt's own tooltips serve. It takes effect
    // when ShowHint is next switched on.
    THintWindowClass HintWindowClass() const { return m_hintWindowClass; }
    void SetHintWindowClass(const THintWindowClass& value) { m_hintWindowClass = value; }
    // The window hints show in now, or nullptr.
    THintWindow* HintWindow() const;
    // Shows the hint of the control under the global position at once.
    void ActivateHint(const QPoint& cursorPos);
    // Hides the hint; the next pointer move starts waiting again.
    void CancelHint();

private:
    friend QXT_EXPORT TApplication* Application();
    TApplication();
    THintManager* hints();
    std::atomic<bool> m_terminated{false};
    bool m_showHint = true;
    int m_hintPause = 500;
    int m_hintShortPause = 50;
    int m_hintHidePause = 2500;
    THintWindowClass m_hintWindowClass;
    THintManager* m_hints = nullptr;
};

// The one application object (requires a QCoreApplication).
QXT_EXPORT TApplication* Application();

// The screen object: the cursor shown over the whole application.
class QXT_EXPORT TScreen {
public:
    // crDefault when no cursor is forced.
    TCursor Cursor() const { return m_cursor; }
    // Forces cursor over every window (crDefault lifts it) through the override cursor.
    void SetCursor(TCursor cursor);
    // The installed font families, sorted.
    QStringList Fonts() const;
    // The primary screen's width in pixels.
    int Width() const;
    // The primary screen's height in pixels.
    int Height() const;

private:
    TCursor m_cursor = crDefault;
};

QXT_EXPORT TScreen* Screen();
