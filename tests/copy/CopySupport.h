#pragma once

#include "Qxcopy.h"
#include "TestSupport.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <gtest/gtest.h>

namespace copytest {

// Bytes that differ from run to run of the seed only, so a shifted or dropped block shows.
QByteArray bytes(qsizetype size, quint32 seed = 1);
// The whole file; an empty array for a missing one.
QByteArray readFile(const QString& name);
// The names in a directory, hidden ones included, sorted.
QStringList entries(const QString& dir);
// The file's modification time in seconds since 1970; -1 when it is missing.
qint64 mtime(const QString& name);
void setMtime(const QString& name, qint64 seconds);
// The permission bits.
int mode(const QString& name);

// A temporary directory with src/ and dst/, a dialog recorder and a log of the events of one
// TQXCopy ("start", "change N SOURCE DEST" with names relative to the directory, "end").
class CopyTest : public ::testing::Test {
protected:
    CopyTest();
    ~CopyTest() override;
    // Writes src/<name> (or any relative name) and returns its full name.
    QString src(const QString& name, const QByteArray& data);
    QString path(const QString& relative) const { return dir.file(relative); }
    // Watches copy's events in log.
    void watch(TQXCopy& copy);

    qxtest::TempDir dir;
    qxtest::DialogRecorder dialogs;
    QStringList log;
};

} // namespace copytest
