#include "CopySupport.h"

#include <QFile>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace copytest;
using qxtest::runQxtool;

namespace {

// qxtool run with standard input and standard error on a terminal; answer is typed once the
// text prompt has appeared. What the terminal showed goes to shown.
int runOnTerminal(const QStringList& args, const QByteArray& prompt, const QByteArray& answer,
                  QByteArray& shown) {
    int master = -1, slave = -1;
    if (::openpty(&master, &slave, nullptr, nullptr, nullptr) != 0)
        return -1;
    QList<QByteArray> words{QByteArrayLiteral(QXTOOL_PATH)};
    for (const QString& a : args)
        words << QFile::encodeName(a);
    std::vector<char*> argv;
    for (QByteArray& w : words)
        argv.push_back(w.data());
    argv.push_back(nullptr);
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::setsid();
        ::dup2(slave, STDIN_FILENO);
        ::dup2(slave, STDERR_FILENO);
        const int devNull = ::open("/dev/null", O_WRONLY);
        ::dup2(devNull, STDOUT_FILENO);
        ::close(master);
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    ::close(slave);
    bool answered = answer.isEmpty();
    for (;;) {
        pollfd p{master, POLLIN, 0};
        if (::poll(&p, 1, 60'000) <= 0)
            break;
        char buffer[4096];
        const ssize_t n = ::read(master, buffer, sizeof buffer);
        if (n <= 0)
            break;
        shown.append(buffer, n);
        if (!answered && shown.contains(prompt)) {
            answered = ::write(master, answer.constData(), size_t(answer.size())) == answer.size();
        }
    }
    ::close(master);
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST_F(CopyTest, ToolCopiesAMaskAndAnswersNoWithoutATerminal) {
    src(QStringLiteral("a.txt"), bytes(20'000, 1));
    src(QStringLiteral("b.txt"), "b");
    const QString mask = path(QStringLiteral("src/*.txt"));

    const auto refused = runQxtool({"copy", mask, path(QStringLiteral("dst/new"))});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.err, "Zielverzeichnis " + path("dst/new/") +
                               " existiert nicht. Soll es erstellt werden ? nein\n");
    EXPECT_EQ(refused.out, QStringLiteral("Copied: 0\nFiles: 2\n"));

    // No terminal on standard error: no progress line either.
    const auto done = runQxtool({"copy", mask, path(QStringLiteral("dst"))});
    EXPECT_EQ(done.exitCode, 0);
    EXPECT_EQ(done.out, QStringLiteral("Copied: 2\nFiles: 2\n"));
    EXPECT_TRUE(done.err.isEmpty()) << done.err.toStdString();
    EXPECT_EQ(readFile(path(QStringLiteral("dst/a.txt"))), bytes(20'000, 1));

    // Existing files are kept unless --overwrite; a skipped file makes the exit code 1.
    src(QStringLiteral("b.txt"), "b2");
    const auto kept = runQxtool({"copy", mask, path(QStringLiteral("dst"))});
    EXPECT_EQ(kept.exitCode, 1);
    EXPECT_TRUE(kept.err.contains(" schon vorhanden. Soll sie überschrieben werden ? nein\n"));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/b.txt"))), QByteArray("b"));
    const auto replaced = runQxtool({"copy", "--overwrite", mask, path(QStringLiteral("dst"))});
    EXPECT_EQ(replaced.exitCode, 0);
    EXPECT_EQ(readFile(path(QStringLiteral("dst/b.txt"))), QByteArray("b2"));

    const auto none = runQxtool({"copy", path(QStringLiteral("src/*.wav")), path("dst")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.err, "qxtool copy: keine Datei passt zu " + path("src/*.wav") + "\n");
}

TEST_F(CopyTest, ToolReportsAMissingSourceAndChecksItsOptions) {
    const QString missing = path(QStringLiteral("src/gone.txt"));
    const auto run = runQxtool({"copy", missing, path(QStringLiteral("dst"))});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err, "Datei >" + missing + "< nicht gefunden abbrechen\n");

    const QString from = src(QStringLiteral("t.txt"), "timed");
    ASSERT_EQ(::chmod(QFile::encodeName(from).constData(), 0600), 0);
    setMtime(from, 1'200'000'000);
    EXPECT_EQ(runQxtool({"copy", "--buffer", "70000", from, path("dst")}).exitCode, 2);
    EXPECT_EQ(runQxtool({"copy", "--buffer=x", from, path("dst")}).exitCode, 2);
    EXPECT_EQ(runQxtool({"copy", "--recursive", from, path("dst")}).exitCode, 2);
    EXPECT_EQ(runQxtool({"copy", from}).exitCode, 2);
    EXPECT_TRUE(entries(path(QStringLiteral("dst"))).isEmpty());

    const auto kept =
        runQxtool({"copy", "--date", "--attrib", "--buffer", "0", from, path("dst/t.txt")});
    EXPECT_EQ(kept.exitCode, 0);
    EXPECT_EQ(readFile(path(QStringLiteral("dst/t.txt"))), QByteArray("timed"));
    EXPECT_EQ(mtime(path(QStringLiteral("dst/t.txt"))), 1'200'000'000);
    EXPECT_EQ(mode(path(QStringLiteral("dst/t.txt"))), 0600);
}

TEST_F(CopyTest, ToolAsksOnTheTerminalAndDrawsTheProgress) {
    const QString from = src(QStringLiteral("a.bin"), bytes(100'000, 2));
    const QString to = dir.write(QStringLiteral("dst/a.bin"), "old");
    QByteArray shown;
    const int rc = runOnTerminal({"copy", "--buffer", "1000", from, path("dst")},
                                 "[j = ja, n = nein] ", "j\n", shown);
    EXPECT_EQ(rc, 0) << shown.constData();
    EXPECT_TRUE(shown.contains(("Datei " + to +
                                " schon vorhanden. Soll sie überschrieben "
                                "werden ? [j = ja, n = nein] ")
                                   .toUtf8()))
        << shown.constData();
    EXPECT_TRUE(shown.contains("gesamt [##########..........]  50%  datei [##########..........]"
                               "  50%  a.bin"))
        << shown.constData();
    EXPECT_TRUE(shown.contains("gesamt [####################] 100%")) << shown.constData();
    EXPECT_EQ(readFile(to), bytes(100'000, 2));

    // "n" keeps the file.
    shown.clear();
    src(QStringLiteral("a.bin"), "newer");
    EXPECT_EQ(runOnTerminal({"copy", from, path("dst")}, "[j = ja, n = nein] ", "n\n", shown), 1);
    EXPECT_EQ(readFile(to), bytes(100'000, 2));
}
