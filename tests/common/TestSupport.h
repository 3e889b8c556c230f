#pragma once

#include "Dialogs.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

namespace qxtest {

// A temporary directory removed with the object; path() ends without "/".
class TempDir {
public:
    TempDir();
    QString path() const { return m_dir.path(); }
    // The absolute name of a file inside.
    QString file(const QString& name) const { return m_dir.filePath(name); }
    // Writes bytes to name (creating parent directories) and returns the full path.
    QString write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir m_dir;
};

// Replaces the dialog service while alive: records every request and answers questions and
// choosers with the queued answers in order (mrOk when the queue is empty); messages get mrOk.
class DialogRecorder {
public:
    DialogRecorder();
    ~DialogRecorder();
    DialogRecorder(const DialogRecorder&) = delete;
    DialogRecorder& operator=(const DialogRecorder&) = delete;
    QList<TDialogRequest> requests;
    QList<int> answers;
    // The texts of all requests, in order.
    QStringList texts() const;

private:
    TDialogHandler m_previous;
};

// What a run of the built qxtool printed and returned.
struct ToolResult {
    int exitCode = -1;
    QString out;
    QString err;
};
ToolResult runQxtool(const QStringList& args);
// The same with the environment given (empty: none at all) instead of the test's own.
ToolResult runQxtool(const QStringList& args, const QProcessEnvironment& environment);

// The colour at (x, y) as 0x00BBGGRR, for comparing with TColor constants.
int pixelBGR(const QImage& image, int x, int y);

// Waits (at most a clock tick) until the file system's time stamps of every change made so far
// lie in the past, so that a later change gets a time stamp of its own.
void passClockTick();

} // namespace qxtest
