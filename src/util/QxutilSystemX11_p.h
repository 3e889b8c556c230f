#pragma once

#include "QxutilSystem.h"

#include <QList>
#include <QString>

// The X11 side of the window functions, on the connection Qt's xcb platform opened.
namespace qxt_x11 {

// True when the program runs on X11.
bool available();
// The top-level windows, topmost first: the window manager's client list in stacking order,
// or the root window's children when no window manager keeps one.
QList<HWND> topLevelWindows();
// Both parts of WM_CLASS (instance and class).
QStringList windowClass(HWND window);
// _NET_WM_NAME, else WM_NAME.
QString windowTitle(HWND window);
// Asks the window to close the way a window manager does (WM_DELETE_WINDOW).
void requestClose(HWND window);

} // namespace qxt_x11
