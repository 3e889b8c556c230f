#include "QxutilFiles.h"
#include "TIniFile.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

QByteArray contents(const QString& file) {
    QFile f(file);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

// Points the configuration directory (WININIT.INI, autostart) into a temporary directory.
class WinStart : public ::testing::Test {
protected:
    void SetUp() override {
        m_oldConfig = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", dir.file(QStringLiteral("config")).toUtf8());
    }
    void TearDown() override { qputenv("XDG_CONFIG_HOME", m_oldConfig); }
    QString wininit() const { return dir.file(QStringLiteral("config/WININIT.INI")); }
    qxtest::TempDir dir;

private:
    QByteArray m_oldConfig;
};

} // namespace

TEST_F(WinStart, RecordsTheRenameAndCarriesItOutLater) {
    dir.write(QStringLiteral("new/app.bin"), "version 2");
    const QString old = dir.write(QStringLiteral("inst/app.bin"), "version 1");
    const QString instDir = dir.file(QStringLiteral("inst"));
    ASSERT_TRUE(qxtInstallFileOnWinStart(dir.file(QStringLiteral("new")), instDir,
                                         QStringLiteral("app.bin")));
    // The file in use stays as it is until the next start.
    EXPECT_EQ(contents(old), QByteArray("version 1"));
    EXPECT_EQ(contents(instDir + QStringLiteral("/app.NEW")), QByteArray("version 2"));
    TIniFile ini(wininit());
    EXPECT_EQ(ini.ReadString(QStringLiteral("rename"), old, QString()),
              instDir + QStringLiteral("/app.NEW"));
    const QByteArray entry =
        contents(dir.file(QStringLiteral("config/autostart/qxtools-winstart.desktop")));
    EXPECT_TRUE(entry.contains("winstart")) << entry.constData();

    QStringList failed;
    EXPECT_EQ(qxtProcessPendingRenames(&failed), 1);
    EXPECT_TRUE(failed.isEmpty());
    EXPECT_EQ(contents(old), QByteArray("version 2"));
    EXPECT_FALSE(QFile::exists(instDir + QStringLiteral("/app.NEW")));
    EXPECT_FALSE(TIniFile(wininit()).SectionExists(QStringLiteral("rename")));
}

TEST_F(WinStart, AMissingSourceRecordsNothingAndFailuresStayPending) {
    EXPECT_FALSE(qxtInstallFileOnWinStart(dir.file(QStringLiteral("none")), dir.path(),
                                          QStringLiteral("x.bin")));
    EXPECT_FALSE(QFile::exists(wininit()));

    // One rename whose .NEW file has gone, one deletion through the key NUL.
    const QString gone = dir.file(QStringLiteral("gone.NEW"));
    const QString doomed = dir.write(QStringLiteral("doomed.tmp"), "x");
    TIniFile ini(wininit());
    ini.WriteString(QStringLiteral("rename"), dir.file(QStringLiteral("target.bin")), gone);
    ini.WriteString(QStringLiteral("rename"), QStringLiteral("NUL"), doomed);
    QStringList failed;
    EXPECT_EQ(qxtProcessPendingRenames(&failed), 1);
    EXPECT_FALSE(QFile::exists(doomed));
    EXPECT_EQ(failed, QStringList{dir.file(QStringLiteral("target.bin"))});
    EXPECT_EQ(TIniFile(wininit()).ReadString(QStringLiteral("rename"),
                                             dir.file(QStringLiteral("target.bin")), QString()),
              gone);

    // qxtool winstart reports the one still pending and fails.
    const auto run = qxtest::runQxtool({QStringLiteral("winstart")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains(QStringLiteral("Replaced: 0\nPending: 1")))
        << run.out.toStdString();
}
