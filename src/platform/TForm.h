#pragma once

#include "QXExport.h"

#include <QWidget>

// A form: any top-level widget.
using TForm = QWidget;

enum TWindowState { wsNormal, wsMinimized, wsMaximized };

// The form's state; a full-screen form counts as maximised.
QXT_EXPORT TWindowState FormWindowState(const TForm* form);
// Minimises, maximises or restores the form, keeping its other state flags.
QXT_EXPORT void SetFormWindowState(TForm* form, TWindowState state);
