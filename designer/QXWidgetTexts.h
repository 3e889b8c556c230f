#pragma once

#include <QString>

// What Designer tells about a widget class of the package: the tool tip of its palette entry
// and its "What's this" text, in German.
struct QXWidgetTexts {
    QString ToolTip;
    QString WhatsThis;
};

// The texts of a widget class; empty texts when the class has none yet.
QXWidgetTexts QXWidgetTextsOf(const QString& className);
