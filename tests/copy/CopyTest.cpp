#include "CopySupport.h"
#include "Dialogs.h"
#include "QXDesign.h"
#include "QXGauge.h"
#include "QXTools.h"
#include "Qxcopy.h"

#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

using namespace copytest;

namespace {

// The block sizes seen through the progress signal, and the last gauge values it reported.
struct Blocks {
    QList<qint64> sizes;
    qint64 lastFileDone = 0, lastRunDone = 0, lastRunSize = 0;
    void watch(TQXCopy& copy) {
        QObject::connect(&copy, &TQXCopy::progressed, &copy,
                         [this](qint64 fileDone, qint64, qint64 runDone, qint64 runSize) {
                             sizes << runDone - lastRunDone;
                             lastFileDone = fileDone;
                             lastRunDone = runDone;
                             lastRunSize = runSize;
                         });
    }
};

} // namespace

TEST(Copy, DefaultsAndTheBufferSizeIsKeptAsGiven) {
    TQXCopy copy;
    EXPECT_EQ(copy.BufferSize(), 8192);
    EXPECT_FALSE(copy.CopyAttrib());
    EXPECT_FALSE(copy.CopyDate());
    EXPECT_EQ(copy.CopyProgressGauge(), nullptr);
    EXPECT_EQ(copy.FileProgressGauge(), nullptr);
    EXPECT_TRUE(copy.Dest().isEmpty());
    EXPECT_TRUE(copy.Source().isEmpty());
    EXPECT_EQ(copy.DialogCaption(), QStringLiteral("Kopiere Dateien..."));
    EXPECT_FALSE(copy.OverWrite());
    EXPECT_TRUE(copy.OverWriteMsg());
    EXPECT_FALSE(copy.ProcessMessages());
    EXPECT_FALSE(copy.ShowCopyDialog());
    EXPECT_EQ(copy.About_QXTools(), QStringLiteral("25.04.98"));
    EXPECT_EQ(copy.ClassName(), QStringLiteral("TQXCopy"));
    TPaletteRegistry::Instance().Clear();
    Qxcopy::Register();
    const QList<TComponentClass> onPage =
        TPaletteRegistry::Instance().ClassesOnPage(QLatin1String(QXPalettePage));
    ASSERT_EQ(onPage.size(), 1);
    EXPECT_EQ(onPage[0].Name, QStringLiteral("TQXCopy"));
    EXPECT_FALSE(onPage[0].IsWidget);
    TPaletteRegistry::Instance().Clear();

    // No clamping at either end of the 16-bit range, through the setter and the property.
    for (int size : {100, 0, 1, 1023, 16385, 65535}) {
        copy.SetBufferSize(quint16(size));
        EXPECT_EQ(copy.BufferSize(), size);
        EXPECT_TRUE(copy.setProperty("BufferSize", size));
        EXPECT_EQ(copy.property("BufferSize").toInt(), size);
    }
}

TEST(Copy, GaugeReferencesAreClearedWhenTheGaugesGo) {
    TQXCopy copy;
    auto total = std::make_unique<TQXGauge>();
    auto file = std::make_unique<TQXGauge>();
    copy.SetCopyProgressGauge(total.get());
    copy.SetFileProgressGauge(file.get());
    EXPECT_EQ(copy.property("CopyProgressGauge").value<TQXGauge*>(), total.get());
    file.reset();
    EXPECT_EQ(copy.FileProgressGauge(), nullptr);
    EXPECT_EQ(copy.CopyProgressGauge(), total.get());
    total.reset();
    EXPECT_EQ(copy.CopyProgressGauge(), nullptr);
}

TEST_F(CopyTest, OneFileInSmallBlocksWithTheEventsInOrderAndFullGauges) {
    const QByteArray data = bytes(100'050);
    const QString from = src(QStringLiteral("a.bin"), data);
    TQXCopy copy;
    watch(copy);
    TQXGauge total, file;
    copy.SetCopyProgressGauge(&total);
    copy.SetFileProgressGauge(&file);
    copy.SetBufferSize(100);
    copy.SetSource(from);
    copy.SetDest(path(QStringLiteral("dst")));
    Blocks blocks;
    blocks.watch(copy);

    ASSERT_TRUE(copy.Copy());
    EXPECT_EQ(readFile(path(QStringLiteral("dst/a.bin"))), data);
    EXPECT_EQ(copy.BufferSize(), 100);
    EXPECT_EQ(log, QStringList({"start", "change 0 src/a.bin dst/a.bin", "end"}));
    EXPECT_EQ(copy.CopiedFiles(), 1);
    EXPECT_TRUE(dialogs.requests.isEmpty());
    // 1000 full blocks and the rest of 50.
    ASSERT_EQ(blocks.sizes.size(), 1001);
    EXPECT_EQ(blocks.sizes.first(), 100);
    EXPECT_EQ(blocks.sizes.last(), 50);
    EXPECT_EQ(total.MaxValue(), 100'050);
    EXPECT_EQ(total.Progress(), total.MaxValue());
    EXPECT_EQ(file.MaxValue(), 100'050);
    EXPECT_EQ(file.Progress(), file.MaxValue());
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"a.bin"}));
}

TEST_F(CopyTest, BufferSizeZeroCopiesIn64KiBBlocksAndAnExactMultipleEndsWithAnEmptyRead) {
    const QByteArray data = bytes(3 * 65536, 7);
    const QString from = src(QStringLiteral("z.bin"), data);
    TQXCopy copy;
    copy.SetBufferSize(0);
    Blocks blocks;
    blocks.watch(copy);
    ASSERT_TRUE(copy.CopyFile(from, path(QStringLiteral("dst/renamed.bin")), false));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/renamed.bin"))), data);
    EXPECT_EQ(blocks.sizes, QList<qint64>({65536, 65536, 65536, 0}));

    // An empty file is one empty block, and its gauge still ends full.
    TQXGauge file;
    copy.SetFileProgressGauge(&file);
    ASSERT_TRUE(
        copy.CopyFile(src(QStringLiteral("empty"), {}), path(QStringLiteral("dst/")), false));
    EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("dst/empty"))));
    EXPECT_EQ(file.Progress(), file.MaxValue());
}

// Reads of /proc files stop at a page even when more is asked for; taking such a read for the
// end of the file would copy only the first page.
TEST_F(CopyTest, ShortReadsAreNotTheEndOfTheFile) {
    const QString proc = QStringLiteral("/proc/kallsyms");
    const QByteArray expected = readFile(proc);
    if (expected.size() < 200'000)
        GTEST_SKIP() << "no large /proc file to read";
    TQXCopy copy;
    copy.SetBufferSize(0);
    ASSERT_TRUE(copy.CopyFile(proc, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/kallsyms"))), expected);
}

TEST_F(CopyTest, AMaskCopiesItsFilesIntoTheDestinationDirectory) {
    const QByteArray a = bytes(30'000, 1), b = bytes(5, 2), c = bytes(70'000, 3);
    src(QStringLiteral("a.txt"), a);
    src(QStringLiteral("b.TXT"), b);
    src(QStringLiteral(".c.txt"), c);
    src(QStringLiteral("d.bin"), "no");
    src(QStringLiteral("src/sub.txt/inner.txt"), "a directory is not copied");
    TQXCopy copy;
    watch(copy);
    TQXGauge total;
    copy.SetCopyProgressGauge(&total);
    const QString mask = path(QStringLiteral("src/*.txt"));
    EXPECT_EQ(copy.GetFileCount(mask), 3);
    EXPECT_EQ(copy.GetFileSize(mask), 100'005);

    // Without a trailing "/" a missing destination is still the directory for the files.
    dialogs.answers = {mrYes};
    ASSERT_TRUE(copy.CopyFile(mask, path(QStringLiteral("dst/new")), false));
    EXPECT_EQ(dialogs.texts(), QStringList({"Zielverzeichnis " + path("dst/new/") +
                                            " existiert nicht. Soll es erstellt werden ?"}));
    EXPECT_EQ(entries(path(QStringLiteral("dst/new"))), QStringList({".c.txt", "a.txt", "b.TXT"}));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/new/.c.txt"))), c);
    EXPECT_EQ(readFile(path(QStringLiteral("dst/new/b.TXT"))), b);
    // Names come in upper-cased order; the count is that of the files done before.
    EXPECT_EQ(log, QStringList({"start", "change 0 src/.c.txt dst/new/.c.txt",
                                "change 1 src/a.txt dst/new/a.txt",
                                "change 2 src/b.TXT dst/new/b.TXT", "end"}));
    EXPECT_EQ(copy.CopiedFiles(), 3);
    EXPECT_EQ(total.MaxValue(), 100'005);
    EXPECT_EQ(total.Progress(), 100'005);
}

TEST_F(CopyTest, AMissingSourceAsksAbortRetryOrIgnore) {
    const QString missing = path(QStringLiteral("src/late.txt"));
    const QString question = "Datei >" + missing + "< nicht gefunden";
    TQXCopy copy;
    watch(copy);

    dialogs.answers = {mrAbort};
    EXPECT_FALSE(copy.CopyFile(missing, path(QStringLiteral("dst/")), false));
    ASSERT_EQ(dialogs.requests.size(), 1);
    EXPECT_EQ(dialogs.requests[0].Text, question);
    EXPECT_EQ(dialogs.requests[0].Type, mtWarning);
    EXPECT_EQ(dialogs.requests[0].Buttons, TMsgDlgButtons({mbAbort, mbRetry, mbIgnore}));
    // OnEnd once: the run's end reports it.
    EXPECT_EQ(log, QStringList({"start", "end"}));

    // Ignore leaves the file out and lets the run succeed with nothing copied.
    dialogs.requests.clear();
    dialogs.answers = {mrIgnore};
    EXPECT_TRUE(copy.CopyFile(missing, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(copy.CopiedFiles(), 0);
    EXPECT_TRUE(entries(path(QStringLiteral("dst"))).isEmpty());

    // Retry looks again: the file has come meanwhile.
    dialogs.requests.clear();
    SetDialogHandler([&](TDialogRequest& r) {
        dialogs.requests << r;
        src(QStringLiteral("late.txt"), "here now");
        return mrRetry;
    });
    EXPECT_TRUE(copy.CopyFile(missing, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(dialogs.texts(), QStringList({question}));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/late.txt"))), QByteArray("here now"));

    // Called on its own, KopiereDatei reports the end of an abort itself.
    log.clear();
    QFile::remove(missing);
    SetDialogHandler([](TDialogRequest&) { return mrAbort; });
    EXPECT_FALSE(copy.KopiereDatei(missing, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(log, QStringList({"end"}));
}

TEST_F(CopyTest, AMissingDestinationDirectoryIsCreatedOnlyWhenWanted) {
    const QString from = src(QStringLiteral("a.txt"), "text");
    const QString deep = path(QStringLiteral("dst/x/y/"));
    const QString question =
        "Zielverzeichnis " + deep + " existiert nicht. Soll es erstellt werden ?";
    TQXCopy copy;

    dialogs.answers = {mrNo};
    EXPECT_FALSE(copy.CopyFile(from, deep + "b.txt", false));
    EXPECT_EQ(dialogs.texts(), QStringList({question}));
    EXPECT_EQ(dialogs.requests[0].Buttons, TMsgDlgButtons({mbYes, mbNo}));
    EXPECT_TRUE(entries(path(QStringLiteral("dst"))).isEmpty());

    dialogs.requests.clear();
    dialogs.answers = {mrYes};
    EXPECT_TRUE(copy.CopyFile(from, deep + "b.txt", false));
    EXPECT_EQ(dialogs.texts(), QStringList({question}));
    EXPECT_EQ(readFile(deep + "b.txt"), QByteArray("text"));

    // A directory that cannot be made is a "Problem": /proc takes no new directories (and, a
    // file system of its own with no room, asks about the room first).
    dialogs.requests.clear();
    dialogs.answers = {mrIgnore, mrYes};
    EXPECT_FALSE(copy.CopyFile(from, QStringLiteral("/proc/qxcopy-test/"), false));
    ASSERT_EQ(dialogs.requests.size(), 3);
    EXPECT_EQ(dialogs.requests[1].Text,
              QStringLiteral("Zielverzeichnis /proc/qxcopy-test/ existiert nicht. Soll es "
                             "erstellt werden ?"));
    EXPECT_EQ(dialogs.requests[2].Kind, dkMessage);
    EXPECT_EQ(dialogs.requests[2].Caption, QStringLiteral("Problem"));
    EXPECT_EQ(dialogs.requests[2].Text, QStringLiteral("Verzeichnis konnte nicht erstellt werden"));
}

TEST_F(CopyTest, AnExistingFileAnsweredNoIsSkippedButCountedInTheGauges) {
    src(QStringLiteral("a.txt"), bytes(4000, 1));
    src(QStringLiteral("b.txt"), bytes(6000, 2));
    dir.write(QStringLiteral("dst/a.txt"), "old a");
    TQXCopy copy;
    watch(copy);
    TQXGauge total;
    copy.SetCopyProgressGauge(&total);
    dialogs.answers = {mrNo};
    ASSERT_TRUE(
        copy.CopyFile(path(QStringLiteral("src/*.txt")), path(QStringLiteral("dst")), false));
    EXPECT_EQ(dialogs.texts(), QStringList({"Datei " + path("dst/a.txt") +
                                            " schon vorhanden. Soll sie überschrieben werden ?"}));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/a.txt"))), QByteArray("old a"));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/b.txt"))), bytes(6000, 2));
    EXPECT_EQ(log, QStringList({"start", "change 0 src/b.txt dst/b.txt", "end"}));
    EXPECT_EQ(copy.CopiedFiles(), 1);
    EXPECT_EQ(total.Progress(), 10'000);
    EXPECT_EQ(total.Progress(), total.MaxValue());
}

TEST_F(CopyTest, OverWriteReplacesWithoutAskingAndKeepsTheOldPermissions) {
    const QString from = src(QStringLiteral("a.txt"), "new text");
    const QString to = dir.write(QStringLiteral("dst/a.txt"), "old");
    ASSERT_EQ(::chmod(QFile::encodeName(to).constData(), 0640), 0);
    const QString other = path(QStringLiteral("other-name.txt"));
    ASSERT_EQ(::link(QFile::encodeName(to).constData(), QFile::encodeName(other).constData()), 0);
    TQXCopy copy;
    copy.SetOverWrite(true);
    ASSERT_TRUE(copy.CopyFile(from, path(QStringLiteral("dst/")), false));
    EXPECT_TRUE(dialogs.requests.isEmpty());
    EXPECT_EQ(readFile(to), QByteArray("new text"));
    EXPECT_EQ(mode(to), 0640);
    // The new text is a new file put in the old one's place; another link keeps the old text.
    EXPECT_EQ(readFile(other), QByteArray("old"));

    // Without the question the file is replaced too.
    copy.SetOverWrite(false);
    copy.SetOverWriteMsg(false);
    src(QStringLiteral("a.txt"), "newer");
    ASSERT_TRUE(copy.CopyFile(from, to, false));
    EXPECT_TRUE(dialogs.requests.isEmpty());
    EXPECT_EQ(readFile(to), QByteArray("newer"));
}

TEST_F(CopyTest, AReadOnlyDestinationIsAskedAboutEvenWithOverWrite) {
    const QString from = src(QStringLiteral("a.txt"), "new");
    const QString to = dir.write(QStringLiteral("dst/a.txt"), "protected");
    ASSERT_EQ(::chmod(QFile::encodeName(to).constData(), 0444), 0);
    const QString question = "Datei " + to + " Schreibgeschützt. Soll sie überschrieben werden ?";
    TQXCopy copy;
    copy.SetOverWrite(true);

    dialogs.answers = {mrNo};
    ASSERT_TRUE(copy.CopyFile(from, to, false));
    EXPECT_EQ(dialogs.texts(), QStringList({question}));
    EXPECT_EQ(readFile(to), QByteArray("protected"));
    EXPECT_EQ(mode(to), 0444);

    // Yes clears the read-only attribute, and the file is replaced.
    dialogs.requests.clear();
    dialogs.answers = {mrYes};
    ASSERT_TRUE(copy.CopyFile(from, to, false));
    EXPECT_EQ(dialogs.texts(), QStringList({question}));
    EXPECT_EQ(readFile(to), QByteArray("new"));
    EXPECT_EQ(mode(to), 0644);
}

TEST_F(CopyTest, CopyDateAndCopyAttribGiveTheSourcesTimeAndPermissions) {
    const QString from = src(QStringLiteral("a.txt"), "dated");
    ASSERT_EQ(::chmod(QFile::encodeName(from).constData(), 0604), 0);
    setMtime(from, 1'000'000'000);
    TQXCopy copy;
    ASSERT_TRUE(copy.CopyFile(from, path(QStringLiteral("dst/plain.txt")), false));
    EXPECT_GT(mtime(path(QStringLiteral("dst/plain.txt"))), 1'600'000'000);
    EXPECT_NE(mode(path(QStringLiteral("dst/plain.txt"))), 0604);

    copy.SetCopyDate(true);
    copy.SetCopyAttrib(true);
    ASSERT_TRUE(copy.CopyFile(from, path(QStringLiteral("dst/kept.txt")), false));
    EXPECT_EQ(mtime(path(QStringLiteral("dst/kept.txt"))), 1'000'000'000);
    EXPECT_EQ(mode(path(QStringLiteral("dst/kept.txt"))), 0604);
    EXPECT_EQ(readFile(path(QStringLiteral("dst/kept.txt"))), QByteArray("dated"));
}

TEST_F(CopyTest, AFileCopiedOntoItselfIsLeftWhole) {
    const QByteArray data = bytes(50'000);
    const QString file = src(QStringLiteral("self.bin"), data);
    const QString link = path(QStringLiteral("src/hard.bin"));
    ASSERT_EQ(::link(QFile::encodeName(file).constData(), QFile::encodeName(link).constData()), 0);
    TQXCopy copy;
    TQXGauge total;
    copy.SetCopyProgressGauge(&total);
    for (const QString& dest : {file, path(QStringLiteral("src/")), link}) {
        ASSERT_TRUE(copy.CopyFile(file, dest, false)) << dest.toStdString();
        EXPECT_EQ(readFile(file), data);
        EXPECT_EQ(copy.CopiedFiles(), 1);
        EXPECT_EQ(total.Progress(), total.MaxValue());
    }
    EXPECT_TRUE(dialogs.requests.isEmpty());
    EXPECT_EQ(entries(path(QStringLiteral("src"))), QStringList({"hard.bin", "self.bin"}));
}

TEST_F(CopyTest, ADestinationLinkIsWrittenThroughAndStaysALink) {
    const QString from = src(QStringLiteral("a.txt"), "through the link");
    const QString real = dir.write(QStringLiteral("dst/real.txt"), "old");
    const QString link = path(QStringLiteral("dst/link.txt"));
    ASSERT_TRUE(QFile::link(real, link));
    TQXCopy copy;
    copy.SetOverWrite(true);
    ASSERT_TRUE(copy.CopyFile(from, link, false));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(readFile(real), QByteArray("through the link"));
}

TEST_F(CopyTest, SourcesThatAreNoRegularFilesFailWithAMessage) {
    const QString fifo = path(QStringLiteral("src/pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    TQXCopy copy;
    EXPECT_FALSE(copy.CopyFile(fifo, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(dialogs.texts(), QStringList({"Fehler beim lesen von " + fifo}));
    EXPECT_TRUE(entries(path(QStringLiteral("dst"))).isEmpty());
}
