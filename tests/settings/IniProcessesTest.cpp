#include "TIniFile.h"

#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <gtest/gtest.h>

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

const QByteArray base = [] {
    QByteArray b = "; kept as it is\n[Base]\n";
    for (int i = 0; i < 200; ++i)
        b += "b" + QByteArray::number(i) + "=" + QByteArray::number(i * i) + "\n";
    return b + "\n; before the data\n";
}();

// The whole file as the writer leaves it after version n.
QByteArray versionFile(int n) {
    return base + "[Data]\npayload=" + QByteArray::number(n) + ":" +
           QByteArray(100000, char('a' + n % 26)) + "\n";
}

// Every name in the directory, hidden ones included.
QStringList entries(const QString& dir) {
    return QDir(dir).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                               QDir::NoDotAndDotDot);
}

} // namespace

TEST(IniFileProcesses, TwoWritersLoseNothing) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("shared.ini"), base);
    QProcess a;
    QProcess b;
    // Each waits after its first key for the other's, so they overlap however loaded the
    // machine is.
    a.start(QStringLiteral(QX_INI_WRITER), {QStringLiteral("keys"), f, QStringLiteral("A"),
                                            QStringLiteral("500"), QStringLiteral("B")});
    b.start(QStringLiteral(QX_INI_WRITER), {QStringLiteral("keys"), f, QStringLiteral("B"),
                                            QStringLiteral("500"), QStringLiteral("A")});
    ASSERT_TRUE(a.waitForFinished(300000));
    ASSERT_TRUE(b.waitForFinished(300000));
    ASSERT_EQ(a.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(a.exitCode(), 0) << a.readAllStandardError().constData();
    ASSERT_EQ(b.exitCode(), 0) << b.readAllStandardError().constData();

    const TIniFile ini(f);
    TStringList keys;
    ini.ReadSection(QStringLiteral("Data"), &keys);
    ASSERT_EQ(keys.Count(), 1000);
    for (const char* prefix : {"A", "B"})
        for (int i = 0; i < 500; ++i) {
            const QString key = QLatin1String(prefix) + QString::number(i);
            EXPECT_EQ(ini.ReadString(QStringLiteral("Data"), key, QString()),
                      QStringLiteral("value %1 of %2").arg(i).arg(QLatin1String(prefix)));
        }
    // The writers really overlapped: their keys are interleaved in the file.
    const QStringList order = keys.ToStringList();
    EXPECT_LT(order.indexOf(QStringLiteral("B0")), order.indexOf(QStringLiteral("A499")));
    EXPECT_LT(order.indexOf(QStringLiteral("A0")), order.indexOf(QStringLiteral("B499")));
    // Everything else is untouched, and the lock left nothing beside the file.
    EXPECT_TRUE(readAll(f).startsWith(base + "\n[Data]\n"));
    EXPECT_EQ(entries(dir.path()), QStringList{QStringLiteral("shared.ini")});
}

// Writing nothing to a missing file creates it only for the time of the lock; a writer that
// creates the file at the same moment loses nothing to that removal.
TEST(IniFileProcesses, WriterBesideANoOpOnAMissingFile) {
    qxtest::TempDir dir;
    const QString f = dir.file(QStringLiteral("new.ini"));
    QProcess eraser;
    QProcess writer;
    eraser.start(QStringLiteral(QX_INI_WRITER),
                 {QStringLiteral("erase"), f, QStringLiteral("W299")});
    ASSERT_TRUE(eraser.waitForStarted(60000));
    writer.start(QStringLiteral(QX_INI_WRITER),
                 {QStringLiteral("keys"), f, QStringLiteral("W"), QStringLiteral("300")});
    ASSERT_TRUE(writer.waitForFinished(300000));
    ASSERT_TRUE(eraser.waitForFinished(300000));
    EXPECT_EQ(writer.exitCode(), 0) << writer.readAllStandardError().constData();
    EXPECT_EQ(eraser.exitCode(), 0) << eraser.readAllStandardError().constData();
    TStringList keys;
    TIniFile(f).ReadSection(QStringLiteral("Data"), &keys);
    EXPECT_EQ(keys.Count(), 300);
    EXPECT_EQ(entries(dir.path()), QStringList{QStringLiteral("new.ini")});
}

TEST(IniFileProcesses, KilledWriterLeavesOldOrNewFile) {
    qxtest::TempDir dir;
    const QString f = dir.write(QStringLiteral("killed.ini"), versionFile(0));
    for (int round = 0; round < 6; ++round) {
        QProcess writer;
        writer.start(QStringLiteral(QX_INI_WRITER), {QStringLiteral("versions"), f});
        ASSERT_TRUE(writer.waitForReadyRead(60000)) << round;
        QThread::msleep(7 + 13 * round);
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished(60000));

        const QByteArray now = readAll(f);
        const qsizetype start = now.indexOf("payload=") + 8;
        ASSERT_GT(start, 8) << round;
        const int n = now.mid(start, now.indexOf(':', start) - start).toInt();
        EXPECT_GE(n, 1) << round;
        EXPECT_TRUE(now == versionFile(n))
            << "round " << round << ": torn file of " << now.size() << " bytes";
        // The lock died with the writer: the next write goes through at once.
        TIniFile(f).WriteString(QStringLiteral("Data"), QStringLiteral("payload"),
                                QStringLiteral("0:") + QString(100000, QLatin1Char('a')));
        ASSERT_TRUE(readAll(f) == versionFile(0));
    }
}
