#include "CopySupport.h"
#include "Dialogs.h"
#include "QXGauge.h"
#include "QxcopyForm.h"

#include <QCoreApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaObject>
#include <QPushButton>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace copytest;

namespace {

// What the window showed while a file was being copied.
struct Seen {
    bool window = false;
    QString caption, source, dest;
    bool fileGauge = false;
    int totalMax = 0;
    int height = 0;
};

Seen look(const TQXCopy& copy) {
    Seen s;
    const TfrmQXCopy* w = copy.CopyDialog();
    if (!w)
        return s;
    s.window = w->isVisible();
    s.caption = w->windowTitle();
    s.source = w->panSource->text();
    s.dest = w->panDest->text();
    s.fileGauge = w->panFile->isVisibleTo(w);
    s.totalMax = w->dfgCopy->MaxValue();
    s.height = w->height();
    return s;
}

const QString cancelQuestion = QStringLiteral("Kopiervorgang abbrechen ?");

} // namespace

TEST_F(CopyTest, TheWindowShowsTheNamesAndHidesTheFileGaugeForOneFile) {
    src(QStringLiteral("a.txt"), bytes(3000, 1));
    src(QStringLiteral("b.txt"), bytes(5000, 2));
    TQXCopy copy;
    copy.SetDialogCaption(QStringLiteral("Sicherung"));
    QList<Seen> seen;
    copy.OnChange = [&](QObject*, int, const QString&, const QString&) { seen << look(copy); };

    ASSERT_TRUE(
        copy.CopyFile(path(QStringLiteral("src/*.txt")), path(QStringLiteral("dst/")), true));
    ASSERT_EQ(seen.size(), 2);
    EXPECT_TRUE(seen[0].window);
    EXPECT_EQ(seen[0].caption, QStringLiteral("Sicherung"));
    EXPECT_EQ(seen[1].source, path(QStringLiteral("src/b.txt")));
    EXPECT_EQ(seen[1].dest, path(QStringLiteral("dst/b.txt")));
    EXPECT_TRUE(seen[0].fileGauge);
    EXPECT_EQ(seen[0].totalMax, 8000);
    // The window belongs to the run.
    EXPECT_EQ(copy.CopyDialog(), nullptr);

    seen.clear();
    copy.SetOverWrite(true);
    ASSERT_TRUE(
        copy.CopyFile(path(QStringLiteral("src/a.txt")), path(QStringLiteral("dst/")), true));
    ASSERT_EQ(seen.size(), 1);
    EXPECT_TRUE(seen[0].window);
    EXPECT_FALSE(seen[0].fileGauge);
    EXPECT_EQ(seen[0].totalMax, 3000);
    EXPECT_EQ(seen[0].source, path(QStringLiteral("src/a.txt")));

    // Copy() shows the window only with ShowCopyDialog.
    seen.clear();
    copy.SetSource(path(QStringLiteral("src/a.txt")));
    copy.SetDest(path(QStringLiteral("dst/")));
    ASSERT_TRUE(copy.Copy());
    EXPECT_FALSE(seen[0].window);
    copy.SetShowCopyDialog(true);
    ASSERT_TRUE(copy.Copy());
    EXPECT_TRUE(seen[1].window);
}

TEST_F(CopyTest, TheWindowFitsItsHeightToTheGaugesShown) {
    TfrmQXCopy window;
    window.ShowFileProgress(true);
    window.show();
    const int both = window.height();
    window.ShowFileProgress(false);
    EXPECT_LT(window.height(), both);
    EXPECT_GE(window.height(), both - 2 * window.dfgFile->height());
    window.panSource->setText(QStringLiteral("/a/very/long/path/") + QString(300, u'x'));
    EXPECT_LT(window.width(), 800);
}

// Escape in the window after the first block: the old destination stays exactly as it was,
// no partial file is left, OnEnd comes once, and runs refuse to start until the flag is
// cleared.
TEST_F(CopyTest, CancelFromTheWindowLeavesTheOldDestinationUntouched) {
    const QByteArray data = bytes(64 * 1024, 5);
    const QString from = src(QStringLiteral("big.bin"), data);
    const QString to = dir.write(QStringLiteral("dst/big.bin"), "the old contents");
    ASSERT_EQ(::chmod(QFile::encodeName(to).constData(), 0640), 0);
    setMtime(to, 1'100'000'000);
    TQXCopy copy;
    watch(copy);
    copy.SetBufferSize(4096);
    copy.SetOverWrite(true);
    copy.SetShowCopyDialog(true);
    copy.SetSource(from);
    copy.SetDest(to);
    int blocks = 0;
    QObject::connect(&copy, &TQXCopy::progressed, &copy, [&blocks]() { ++blocks; });
    // Pressed before the first block; the copy lets the window see it after that block even
    // though ProcessMessages is off.
    copy.OnChange = [&copy](QObject*, int, const QString&, const QString&) {
        QCoreApplication::postEvent(
            copy.CopyDialog(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
    };
    dialogs.answers = {mrYes};
    EXPECT_FALSE(copy.Copy());

    EXPECT_EQ(dialogs.texts(), QStringList({cancelQuestion}));
    EXPECT_EQ(dialogs.requests[0].Type, mtConfirmation);
    EXPECT_EQ(dialogs.requests[0].Buttons, TMsgDlgButtons({mbYes, mbNo}));
    EXPECT_EQ(blocks, 0);
    EXPECT_EQ(readFile(to), QByteArray("the old contents"));
    EXPECT_EQ(mtime(to), 1'100'000'000);
    EXPECT_EQ(mode(to), 0640);
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"big.bin"}));
    EXPECT_EQ(log, QStringList({"start", "end"}));
    EXPECT_EQ(copy.CopyDialog(), nullptr);
    EXPECT_TRUE(TQXCopy::CopyCancelled());

    // While the flag is set a run does nothing at all.
    log.clear();
    EXPECT_FALSE(copy.Copy());
    EXPECT_FALSE(copy.CopyFile(from, path(QStringLiteral("dst/other.bin")), false));
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(dialogs.requests.size(), 1);
    EXPECT_EQ(entries(path(QStringLiteral("dst"))), QStringList({"big.bin"}));

    // A new component clears the flag, as ClearCancel does.
    const TQXCopy other;
    EXPECT_FALSE(TQXCopy::CopyCancelled());
    copy.OnChange = nullptr;
    EXPECT_TRUE(copy.Copy());
    EXPECT_EQ(readFile(to), data);
    EXPECT_EQ(mode(to), 0640);
}

TEST_F(CopyTest, TheButtonAsksAndANoLetsTheCopyGoOn) {
    const QByteArray data = bytes(40'000, 6);
    const QString from = src(QStringLiteral("b.bin"), data);
    TQXCopy copy;
    copy.SetBufferSize(1000);
    copy.OnChange = [&copy](QObject*, int, const QString&, const QString&) {
        QMetaObject::invokeMethod(copy.CopyDialog()->Button1, "click", Qt::QueuedConnection);
    };
    dialogs.answers = {mrNo};
    ASSERT_TRUE(copy.CopyFile(from, path(QStringLiteral("dst/")), true));
    EXPECT_EQ(dialogs.texts(), QStringList({cancelQuestion}));
    EXPECT_EQ(readFile(path(QStringLiteral("dst/b.bin"))), data);
    EXPECT_FALSE(TQXCopy::CopyCancelled());
}

TEST_F(CopyTest, ClosingTheWindowAsksTooAndAYesStopsAMaskRun) {
    src(QStringLiteral("1.bin"), bytes(20'000, 1));
    src(QStringLiteral("2.bin"), bytes(20'000, 2));
    TQXCopy copy;
    watch(copy);
    copy.SetBufferSize(1000);
    const auto close = [&copy](QObject*, int files, const QString&, const QString&) {
        if (files == 0)
            QMetaObject::invokeMethod(copy.CopyDialog(), "close", Qt::QueuedConnection);
    };
    copy.OnChange = close;
    dialogs.answers = {mrYes};
    EXPECT_FALSE(
        copy.CopyFile(path(QStringLiteral("src/*.bin")), path(QStringLiteral("dst/")), true));
    EXPECT_EQ(dialogs.texts(), QStringList({cancelQuestion}));
    EXPECT_TRUE(entries(path(QStringLiteral("dst"))).isEmpty());
    EXPECT_EQ(copy.CopiedFiles(), 0);
}

// Without the window, ProcessMessages lets an application's own cancel button work.
TEST_F(CopyTest, ProcessMessagesLetsCancelCopyStopARunWithoutTheWindow) {
    const QString from = src(QStringLiteral("c.bin"), bytes(30'000, 3));
    TQXCopy copy;
    copy.SetBufferSize(1000);
    int blocks = 0;
    QObject::connect(&copy, &TQXCopy::progressed, &copy, [&blocks]() { ++blocks; });
    copy.OnChange = [](QObject*, int, const QString&, const QString&) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), []() { TQXCopy::CancelCopy(); }, Qt::QueuedConnection);
    };
    // Without ProcessMessages the queued cancel only runs after the copy.
    ASSERT_TRUE(copy.CopyFile(from, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(blocks, 31); // 30 full blocks and the empty read at the end
    QCoreApplication::processEvents();
    ASSERT_TRUE(TQXCopy::CopyCancelled());
    TQXCopy::ClearCancel();

    blocks = 0;
    copy.SetProcessMessages(true);
    copy.SetOverWrite(true);
    EXPECT_FALSE(copy.CopyFile(from, path(QStringLiteral("dst/")), false));
    EXPECT_EQ(blocks, 0);
    EXPECT_EQ(readFile(path(QStringLiteral("dst/c.bin"))), bytes(30'000, 3));
}
