#include "Application.h"
#include "Qxpicbox.h"
#include "TestSupport.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QMutex>
#include <QScrollBar>
#include <QThread>
#include <atomic>
#include <gtest/gtest.h>

namespace {

// Lets queued work run until done() holds (at most 20 s, for a loaded machine).
bool runUntil(const std::function<bool()>& done) {
    QDeadlineTimer deadline(20000);
    while (!done() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return done();
}

// A BMP file of one colour, padded with zero bytes to size bytes.
QByteArray bmpFile(QRgb colour, int size = 0) {
    QImage image(8, 8, QImage::Format_RGB888);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "BMP");
    if (size > bytes.size())
        bytes.append(size - bytes.size(), '\0');
    return bytes;
}

QByteArray icoFile(QRgb colour) {
    QImage image(32, 32, QImage::Format_ARGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "ICO");
    return bytes;
}

QString pe(const char* name) {
    return QStringLiteral(QX_PE_DIR "/") + QLatin1String(name);
}

QStringList items(const TQXPicBox& box) {
    return box.Items()->ToStringList();
}

// Starts a scan of pattern and waits for its end handler.
void scan(TQXPicBox& box, const QString& pattern) {
    box.SetPicPattern(pattern);
    if (!box.Active())
        box.SetActive(true);
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
}

// A tree of dirs x files empty bitmaps, large enough that a scan is still running when a test
// looks at it.
void writeTree(const qxtest::TempDir& dir, int dirs, int files) {
    for (int d = 0; d < dirs; ++d)
        for (int f = 0; f < files; ++f)
            dir.write(QStringLiteral("d%1/f%2.bmp").arg(d, 2, 10, QLatin1Char('0')).arg(f), "");
}

// Holds the scanning thread in its count event once Count reaches at, until the scan is asked
// to end; the test sees the box in the middle of a scan.
struct Holder {
    std::atomic<TFillListThread*> thread{nullptr};
    int at = 0;
    TChangePicCount handler() {
        return [this](QObject*, int count) {
            if (count != at || QThread::currentThread() == qApp->thread())
                return;
            TFillListThread* t = nullptr;
            while (!(t = thread.load()))
                QThread::yieldCurrentThread();
            while (!t->Terminated())
                QThread::msleep(1);
        };
    }
};

} // namespace

TEST(PicBox, FilterFollowsPicTypeWithGifLast) {
    TQXPicBox box;
    EXPECT_EQ(box.Filter(), QStringLiteral("*.BMP;*.ICO"));
    box.SetPicType({ptGIF});
    EXPECT_EQ(box.Filter(), QStringLiteral(";*.GIF"));
    box.SetPicType({ptGIF, ptJPG, ptBMP});
    EXPECT_EQ(box.Filter(), QStringLiteral("*.BMP;*.JPG;*.GIF"));
    box.SetPicType({ptICL, ptDLL, ptEXE, ptICO});
    EXPECT_EQ(box.Filter(), QStringLiteral(";*.ICO;*.EXE;*.DLL;*.ICL"));
    box.SetPicType({ptBMP, ptGIF, ptICO, ptEXE, ptDLL, ptICL, ptJPG});
    EXPECT_EQ(box.Filter(), QStringLiteral("*.BMP;*.ICO;*.EXE;*.DLL;*.ICL;*.JPG;*.GIF"));
    box.SetPicType({});
    EXPECT_EQ(box.Filter(), QString());

    // The filter is rebuilt only when the set changes: a hand-made one survives the same set.
    box.SetPicType({ptICO});
    box.SetFilter(QStringLiteral("*.PNG"));
    box.SetPicType({ptICO});
    EXPECT_EQ(box.Filter(), QStringLiteral("*.PNG"));

    // Designer edits the set as flags.
    EXPECT_TRUE(box.setProperty("PicType", QVariant::fromValue(QXPicBoxEnums::TPicTypeFlags(
                                               QXPicBoxEnums::PicJPG | QXPicBoxEnums::PicBMP))));
    EXPECT_EQ(box.PicType(), (TPicType{ptBMP, ptJPG}));
    EXPECT_EQ(box.Filter(), QStringLiteral("*.BMP;*.JPG"));
    EXPECT_EQ(box.property("PicType").value<QXPicBoxEnums::TPicTypeFlags>(),
              QXPicBoxEnums::PicJPG | QXPicBoxEnums::PicBMP);
}

TEST(PicBox, PropertiesKeepTheirBoundsAndDefaults) {
    TQXPicBox box;
    EXPECT_EQ(box.BorderSpace(), 10);
    EXPECT_EQ(box.BorderWidth(), 2);
    EXPECT_EQ(box.PicWidth(), 100);
    EXPECT_EQ(box.PicHeight(), 70);
    EXPECT_EQ(box.PicNoCacheSize(), 1000);
    EXPECT_EQ(box.PicType(), (TPicType{ptBMP, ptICO}));
    EXPECT_EQ(box.ItemHeight(), 60);
    EXPECT_EQ(box.Style(), lbOwnerDrawFixed);
    EXPECT_FALSE(box.MultiSelect());
    EXPECT_FALSE(box.Active());
    EXPECT_EQ(box.sizeHint(), box.size());
    EXPECT_FALSE(box.accessibleName().isEmpty());

    const struct {
        void (TQXPicBox::*set)(int);
        int (TQXPicBox::*get)() const;
        int value;
        int stored;
    } clamps[] = {
        {&TQXPicBox::SetBorderSpace, &TQXPicBox::BorderSpace, 0, 1},
        {&TQXPicBox::SetBorderSpace, &TQXPicBox::BorderSpace, 50, 20},
        {&TQXPicBox::SetBorderSpace, &TQXPicBox::BorderSpace, 20, 20},
        {&TQXPicBox::SetBorderWidth, &TQXPicBox::BorderWidth, 50, 20},
        {&TQXPicBox::SetBorderWidth, &TQXPicBox::BorderWidth, 0, 0},
        {&TQXPicBox::SetPicHeight, &TQXPicBox::PicHeight, 10, 32},
        {&TQXPicBox::SetPicHeight, &TQXPicBox::PicHeight, 33, 33},
        {&TQXPicBox::SetPicWidth, &TQXPicBox::PicWidth, -5, 32},
        {&TQXPicBox::SetPicNoCacheSize, &TQXPicBox::PicNoCacheSize, 0, 1},
        {&TQXPicBox::SetPicNoCacheSize, &TQXPicBox::PicNoCacheSize, 1000001, 1000000},
        {&TQXPicBox::SetPicNoCacheSize, &TQXPicBox::PicNoCacheSize, 500, 500},
        {&TQXPicBox::SetRows, &TQXPicBox::Rows, 0, 1},
        {&TQXPicBox::SetRows, &TQXPicBox::Rows, -3, 1},
    };
    for (const auto& c : clamps) {
        (box.*c.set)(c.value);
        EXPECT_EQ((box.*c.get)(), c.stored) << c.value;
    }

    box.Items()->Add(QStringLiteral("x.bmp"));
    box.SetPicCount(7);
    EXPECT_EQ(box.PicCount(), 1);
}

TEST(PicBox, ActiveWithoutAPatternOrFilterClearsAndReportsNothingFound) {
    TQXPicBox box;
    box.Items()->Add(QStringLiteral("old.bmp"));
    QList<int> counts;
    int starts = 0;
    box.OnChangePicCount = [&](QObject*, int count) { counts << count; };
    box.OnStartScan = [&](QObject*) { ++starts; };
    box.SetActive(true);
    EXPECT_EQ(box.PicCount(), 0);
    EXPECT_EQ(counts, QList<int>{0});
    EXPECT_EQ(starts, 0);
    EXPECT_FALSE(box.Scanning());

    // Inactive, a pattern only stores.
    box.SetActive(false);
    box.SetPicPattern(QStringLiteral("/nonexistent/*.*"));
    EXPECT_FALSE(box.Scanning());
    EXPECT_EQ(counts, QList<int>{0});

    // An empty filter clears and reports, but does not scan either.
    box.Items()->Add(QStringLiteral("old.bmp"));
    box.SetPicType({});
    box.SetActive(true);
    EXPECT_EQ(box.PicCount(), 0);
    EXPECT_EQ(counts, (QList<int>{0, 0}));
    EXPECT_EQ(starts, 0);
    EXPECT_FALSE(box.Scanning());
}

TEST(PicBox, ScanListsSubdirectoriesFirstCountingOnTheScanningThread) {
    qxtest::TempDir dir;
    const QByteArray bmp = bmpFile(qRgb(0, 0, 255));
    dir.write(QStringLiteral("b.ico"), icoFile(qRgb(255, 0, 0)));
    dir.write(QStringLiteral("a.bmp"), bmp);
    dir.write(QStringLiteral("Z.BMP"), bmp);
    dir.write(QStringLiteral("notes.txt"), "x");
    dir.write(QStringLiteral("noext"), "x");
    dir.write(QStringLiteral("pic.gif"), "x");
    dir.write(QStringLiteral("sub2/deeper/y.bmp"), bmp);
    dir.write(QStringLiteral("sub2/w.bmp"), bmp);
    dir.write(QStringLiteral("sub1/x.bmp"), bmp);
    dir.write(QStringLiteral(".hidden/h.bmp"), bmp);
    const QString root = dir.path() + QLatin1Char('/');

    TQXPicBox box;
    QMutex mutex;
    QList<int> counts;
    QList<bool> onGui;
    int starts = 0;
    int stops = 0;
    box.OnChangePicCount = [&](QObject* sender, int count) {
        QMutexLocker lock(&mutex);
        EXPECT_EQ(sender, &box);
        counts << count;
        onGui << (QThread::currentThread() == box.thread());
    };
    box.OnStartScan = [&](QObject*) { ++starts; };
    box.OnStopScan = [&](QObject*) {
        ++stops;
        EXPECT_FALSE(box.Scanning());
    };
    const TCursor before = Screen()->Cursor();
    box.SetSubDirs(true);
    scan(box, root + QStringLiteral("*.*"));
    EXPECT_EQ(items(box),
              (QStringList{root + QStringLiteral("sub1/x.bmp"),
                           root + QStringLiteral("sub2/deeper/y.bmp"),
                           root + QStringLiteral("sub2/w.bmp"), root + QStringLiteral("a.bmp"),
                           root + QStringLiteral("b.ico"), root + QStringLiteral("Z.BMP")}));
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(stops, 1);
    // 0 when the list is cleared, 1..6 from the scan, 6 again from the end handler.
    EXPECT_EQ(counts, (QList<int>{0, 1, 2, 3, 4, 5, 6, 6}));
    EXPECT_EQ(onGui, (QList<bool>{true, false, false, false, false, false, false, true}));
    EXPECT_EQ(Screen()->Cursor(), before);

    // The name pattern applies in every subdirectory; directories are walked whatever it is.
    scan(box, root + QStringLiteral("?.BMP"));
    EXPECT_EQ(items(box),
              (QStringList{root + QStringLiteral("sub1/x.bmp"),
                           root + QStringLiteral("sub2/deeper/y.bmp"),
                           root + QStringLiteral("sub2/w.bmp"), root + QStringLiteral("a.bmp"),
                           root + QStringLiteral("Z.BMP")}));

    box.SetPicPattern(root + QStringLiteral("*.*"));
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
    box.SetSubDirs(false);
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
    EXPECT_EQ(items(box),
              (QStringList{root + QStringLiteral("a.bmp"), root + QStringLiteral("b.ico"),
                           root + QStringLiteral("Z.BMP")}));
    EXPECT_TRUE(box.FindItem(root + QStringLiteral("B.ICO")));
    EXPECT_EQ(box.ItemIndex(), 1);
    EXPECT_FALSE(box.FindItem(root + QStringLiteral("c.bmp")));
    EXPECT_EQ(box.ItemIndex(), -1);

    // Adding GIF to the kinds rescans at once.
    const int before2 = stops;
    box.SetPicType({ptBMP, ptICO, ptGIF});
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
    EXPECT_EQ(stops, before2 + 1);
    EXPECT_TRUE(items(box).contains(root + QStringLiteral("pic.gif")));
}

TEST(PicBox, CheckForIconsListsOnlyFilesWithIconsButEveryBitmap) {
    qxtest::TempDir dir;
    const QString root = dir.path() + QLatin1Char('/');
    dir.write(QStringLiteral("a.bmp"), bmpFile(qRgb(0, 0, 255)));
    dir.write(QStringLiteral("broken.bmp"), "not a bitmap");
    dir.write(QStringLiteral("good.ico"), icoFile(qRgb(255, 0, 0)));
    dir.write(QStringLiteral("empty.ico"), "");
    dir.write(QStringLiteral("prog.exe"), "MZ but no icons");
    ASSERT_TRUE(QFile::copy(pe("known.exe"), dir.file(QStringLiteral("known.exe"))));
    ASSERT_TRUE(QFile::copy(pe("noversion.exe"), dir.file(QStringLiteral("plain.exe"))));
    TQXPicBox box;
    box.SetPicType({ptBMP, ptICO, ptEXE});
    box.SetCheckForIcons(true);
    scan(box, root + QStringLiteral("*.*"));
    EXPECT_EQ(items(box),
              (QStringList{root + QStringLiteral("a.bmp"), root + QStringLiteral("broken.bmp"),
                           root + QStringLiteral("good.ico"), root + QStringLiteral("known.exe")}));
    // The icon found by the scan is the item's thumbnail; bitmaps get theirs when painted.
    EXPECT_EQ(box.Items()->Objects(0), nullptr);
    auto* icon = static_cast<TBitmap*>(box.Items()->Objects(2));
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(icon->Width(), 32);
    EXPECT_EQ(icon->Height(), 32);
    EXPECT_EQ(qxtest::pixelBGR(icon->Image(), 16, 16), int(clRed));
    auto* program = static_cast<TBitmap*>(box.Items()->Objects(3));
    ASSERT_NE(program, nullptr);
    EXPECT_EQ(qxtest::pixelBGR(program->Image(), 5, 5), int(clBlue));

    box.SetCheckForIcons(false);
    box.FillItems(box.PicPattern());
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
    EXPECT_EQ(box.PicCount(), 7);
    EXPECT_EQ(box.Items()->Objects(2), nullptr);
}

TEST(PicBox, ANewScanStopsTheRunningOneFirst) {
    qxtest::TempDir big;
    qxtest::TempDir small;
    writeTree(big, 20, 50);
    small.write(QStringLiteral("only.bmp"), "");
    TQXPicBox box;
    Holder hold;
    hold.at = 5;
    box.OnChangePicCount = hold.handler();
    QList<int> countsAtStop;
    box.OnStopScan = [&](QObject*) { countsAtStop << box.PicCount(); };
    const TCursor before = Screen()->Cursor();
    box.SetSubDirs(true);
    box.SetActive(true);
    box.SetPicPattern(big.path() + QStringLiteral("/*.*"));
    hold.thread = box.ScanThread();
    ASSERT_NE(hold.thread.load(), nullptr);
    ASSERT_TRUE(runUntil([&]() { return box.PicCount() == 5; }));
    EXPECT_TRUE(box.Scanning());
    EXPECT_EQ(Screen()->Cursor(), crHourGlass);
    EXPECT_EQ(items(box).first(), big.path() + QStringLiteral("/d00/f0.bmp"));

    box.SetPicPattern(small.path() + QStringLiteral("/*.*"));
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
    // The first scan ended at its next entry, before the list was cleared for the second.
    EXPECT_EQ(countsAtStop, (QList<int>{5, 1}));
    EXPECT_EQ(items(box), QStringList{small.path() + QStringLiteral("/only.bmp")});
    EXPECT_EQ(Screen()->Cursor(), before);
}

TEST(PicBox, BreakScanEndsTheScanAtTheNextEntry) {
    qxtest::TempDir big;
    writeTree(big, 20, 50);
    TQXPicBox box;
    Holder hold;
    hold.at = 3;
    box.OnChangePicCount = hold.handler();
    int stops = 0;
    box.OnStopScan = [&](QObject*) { ++stops; };
    box.SetSubDirs(true);
    box.SetActive(true);
    box.SetPicPattern(big.path() + QStringLiteral("/*.*"));
    hold.thread = box.ScanThread();
    ASSERT_TRUE(runUntil([&]() { return box.PicCount() == 3; }));
    box.BreakScan();
    ASSERT_TRUE(runUntil([&]() { return !box.Scanning(); }));
    EXPECT_EQ(stops, 1);
    EXPECT_EQ(box.PicCount(), 3);
    // Breaking when idle does nothing.
    box.BreakScan();
    EXPECT_EQ(stops, 1);
}

TEST(PicBox, DeletingTheBoxWhileItScansIsSafe) {
    qxtest::TempDir big;
    writeTree(big, 20, 50);
    const TCursor before = Screen()->Cursor();
    int stops = 0;

    // Held in the middle of the walk, with the wait cursor up.
    {
        Holder hold;
        hold.at = 5;
        auto* box = new TQXPicBox;
        box->OnChangePicCount = hold.handler();
        box->OnStopScan = [&](QObject*) { ++stops; };
        box->SetSubDirs(true);
        box->SetActive(true);
        box->SetPicPattern(big.path() + QStringLiteral("/*.*"));
        hold.thread = box->ScanThread();
        ASSERT_TRUE(runUntil([&]() { return box->PicCount() == 5; }));
        EXPECT_EQ(Screen()->Cursor(), crHourGlass);
        delete box;
        EXPECT_EQ(Screen()->Cursor(), before);
    }
    // Before the thread has handed anything over.
    {
        auto* box = new TQXPicBox;
        box->OnStopScan = [&](QObject*) { ++stops; };
        box->SetSubDirs(true);
        box->SetActive(true);
        box->SetPicPattern(big.path() + QStringLiteral("/*.*"));
        delete box;
    }
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(stops, 0);
    EXPECT_EQ(Screen()->Cursor(), before);
}

namespace {

// A shown box whose client area is exactly w x h pixels.
void showWithClient(TQXPicBox& box, int w, int h) {
    box.show();
    box.resize(w + box.width() - box.ClientWidth(), h + box.height() - box.ClientHeight());
    QCoreApplication::processEvents();
    ASSERT_EQ(box.ClientWidth(), w);
    ASSERT_EQ(box.ClientHeight(), h);
}

QRgb centreOf(const QImage& shot, const TRect& r) {
    return shot.pixel((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
}

} // namespace

TEST(PicBox, SmallFilesAreReadAtEveryPaintLargeOnesOnce) {
    qxtest::TempDir dir;
    const QStringList names = {QStringLiteral("500.bmp"), QStringLiteral("999.bmp"),
                               QStringLiteral("1000.bmp")};
    const int sizes[] = {500, 999, 1000};
    TQXPicBox box;
    box.SetBorderWidth(0);
    for (int i = 0; i < 3; ++i)
        box.Items()->Add(dir.write(names[i], bmpFile(qRgb(255, 0, 0), sizes[i])));
    showWithClient(box, 298, 138);
    QImage shot = box.viewport()->grab().toImage();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(centreOf(shot, box.ItemRect(i)), qRgb(255, 0, 0)) << i;
    EXPECT_EQ(box.Items()->Objects(0), nullptr);
    EXPECT_EQ(box.Items()->Objects(1), nullptr);
    auto* cached = static_cast<TBitmap*>(box.Items()->Objects(2));
    ASSERT_NE(cached, nullptr);
    // Thumbnails are made at the cell size, the picture fitted into it.
    EXPECT_EQ(cached->Width(), 70);
    EXPECT_EQ(cached->Height(), 70);

    for (int i = 0; i < 3; ++i)
        dir.write(names[i], bmpFile(qRgb(0, 0, 255), sizes[i]));
    shot = box.viewport()->grab().toImage();
    EXPECT_EQ(centreOf(shot, box.ItemRect(0)), qRgb(0, 0, 255)) << "500 bytes: read again";
    EXPECT_EQ(centreOf(shot, box.ItemRect(1)), qRgb(0, 0, 255)) << "999 bytes: read again";
    EXPECT_EQ(centreOf(shot, box.ItemRect(2)), qRgb(255, 0, 0)) << "1000 bytes: cached";

    // A smaller limit caches the 500-byte file as well.
    box.SetPicNoCacheSize(500);
    shot = box.viewport()->grab().toImage();
    EXPECT_NE(box.Items()->Objects(0), nullptr);
    box.FreeBitmaps();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(box.Items()->Objects(i), nullptr);

    // A new cell size drops the thumbnails.
    shot = box.viewport()->grab().toImage();
    ASSERT_NE(box.Items()->Objects(2), nullptr);
    box.SetPicWidth(120);
    shot = box.viewport()->grab().toImage();
    EXPECT_EQ(box.CellWidth(), 120);
    EXPECT_EQ(static_cast<TBitmap*>(box.Items()->Objects(2))->Width(), 70)
        << "fitted into 120 x 70, the square picture stays 70 wide";
}

TEST(PicBox, CellsRunDownTheColumnsWithViewIndexesAndMissingFilesShowARedCross) {
    qxtest::TempDir dir;
    TQXPicBox box;
    box.SetBorderWidth(0);
    box.SetCaption(true);
    for (int i = 0; i < 6; ++i)
        box.Items()->Add(
            dir.write(QStringLiteral("blue%1.bmp").arg(i), bmpFile(qRgb(0, 0, 255), 2000)));
    QMap<int, int> itemOfView;
    box.OnRequestFileName = [&](QObject*, int viewIndex, QString& fileName, QString& caption) {
        itemOfView.insert(viewIndex, box.Items()->IndexOf(fileName));
        if (viewIndex == 1)
            fileName = dir.file(QStringLiteral("missing.bmp"));
        caption = QStringLiteral("Nr. %1").arg(viewIndex);
    };
    // (238 + 2) div 100 = 2 columns, (138 + 2) div 70 = 2 rows of 69 pixels.
    showWithClient(box, 238, 138);
    const QImage shot = box.viewport()->grab().toImage();
    EXPECT_EQ(box.Columns(), 2);
    EXPECT_EQ(box.Rows(), 2);
    EXPECT_EQ(box.ItemHeight(), 69);
    EXPECT_EQ(box.ItemRect(1), (TRect{0, 69, 119, 138}));
    EXPECT_EQ(box.ItemRect(2), (TRect{119, 0, 238, 69}));
    EXPECT_EQ(itemOfView.keys(), (QList<int>{0, 1, 2, 3}));

    // Item 1 (second row, first column) names a missing file: a cross from corner to corner of
    // the picture area, 10 pixels inside the cell.
    const TRect cell = box.ItemRect(1);
    const int space = box.BorderSpace();
    const int cx = (cell.Left + cell.Right) / 2;
    const int cy = (cell.Top + cell.Bottom) / 2;
    EXPECT_EQ(qxtest::pixelBGR(shot, cell.Left + space + 1, cell.Top + space + 1), int(clRed));
    EXPECT_EQ(qxtest::pixelBGR(shot, cell.Right - space - 2, cell.Top + space + 1), int(clRed));
    EXPECT_NE(qxtest::pixelBGR(shot, cell.Left + space + 1, cy), int(clRed));
    EXPECT_NE(qxtest::pixelBGR(shot, cell.Left + space - 3, cell.Top + space - 3), int(clRed));
    EXPECT_NE(qxtest::pixelBGR(shot, cx, cell.Top + space + 2), int(clBlue));
    // The others show the picture, their caption at the bottom.
    EXPECT_EQ(qxtest::pixelBGR(shot, 119 + 59, 20), int(clBlue));
    int dark = 0;
    for (int y = 138 - 16; y < 138; ++y)
        for (int x = 119; x < 238; ++x)
            dark += qGray(shot.pixel(x, y)) < 100 ? 1 : 0;
    EXPECT_GT(dark, 10) << "caption under the picture";

    // Scrolled one column on, items 2 to 5 are the cells 0 to 3 of the view.
    itemOfView.clear();
    box.horizontalScrollBar()->setValue(box.horizontalScrollBar()->value() + 1);
    box.viewport()->grab();
    EXPECT_EQ(itemOfView.value(0, -1), 2);
    EXPECT_EQ(itemOfView.value(1, -1), 3);
    EXPECT_EQ(itemOfView.value(2, -1), 4);
    EXPECT_EQ(itemOfView.value(3, -1), 5);
}

TEST(PicBox, CellGeometryInScaledModeAndTheClientAreaHoldsOneCell) {
    TQXPicBox box;
    box.SetScaled(true);
    box.SetColumns(3);
    box.SetRows(2);
    showWithClient(box, 300, 140);
    box.CheckPicSize();
    EXPECT_EQ(box.CellWidth(), 100);
    EXPECT_EQ(box.CellHeight(), 70);
    EXPECT_EQ(box.ItemHeight(), 70);
    EXPECT_EQ(box.Columns(), 3);
    EXPECT_EQ(box.Rows(), 2);

    // Sized below one cell, the box grows back to a client area of PicWidth x PicHeight.
    box.SetScaled(false);
    box.resize(40, 30);
    QCoreApplication::processEvents();
    EXPECT_GE(box.ClientWidth(), box.PicWidth());
    EXPECT_GE(box.ClientHeight(), box.PicHeight());
}

TEST(PicBox, SaveToBmpCopiesConvertsIconsAndExplainsWhatItCannotDo) {
    qxtest::TempDir dir;
    qxtest::DialogRecorder dialogs;
    const QString bmp = dir.write(QStringLiteral("a.bmp"), bmpFile(qRgb(0, 255, 0)));
    const QString ico = dir.write(QStringLiteral("a.ico"), icoFile(qRgb(255, 0, 0)));
    const QString noIcon = dir.write(QStringLiteral("b.exe"), "MZ");
    TQXPicBox box;
    box.SaveToBMP(bmp, dir.file(QStringLiteral("copy.bmp")));
    EXPECT_EQ(QFile(dir.file(QStringLiteral("copy.bmp"))).size(), QFile(bmp).size());
    EXPECT_TRUE(dialogs.texts().isEmpty());
    box.SaveToBMP(bmp, dir.file(QStringLiteral("no/such/dir/copy.bmp")));

    box.SaveToBMP(ico, dir.file(QStringLiteral("icon.bmp")));
    const QImage icon(dir.file(QStringLiteral("icon.bmp")), "BMP");
    ASSERT_EQ(icon.size(), QSize(32, 32));
    EXPECT_EQ(qxtest::pixelBGR(icon, 3, 3), int(clRed));
    box.SaveToBMP(pe("known.exe"), dir.file(QStringLiteral("known.bmp")));
    const QImage program(dir.file(QStringLiteral("known.bmp")), "BMP");
    ASSERT_EQ(program.size(), QSize(32, 32));
    EXPECT_EQ(qxtest::pixelBGR(program, 5, 5), int(clBlue));
    EXPECT_EQ(dialogs.texts().size(), 1);

    box.SaveToBMP(noIcon, dir.file(QStringLiteral("b.bmp")));
    for (const char* name : {"c.gif", "c.jpg", "c.icl", "c.png"})
        box.SaveToBMP(dir.write(QLatin1String(name), "x"), dir.file(QStringLiteral("c.bmp")));
    const QString cannot = QStringLiteral("Datei kann nicht konvertiert werden");
    EXPECT_EQ(dialogs.texts(), (QStringList{QStringLiteral("Fehler beim Kopieren"),
                                            QStringLiteral("Datei enthält kein Icon"), cannot,
                                            cannot, cannot, cannot}));
    EXPECT_FALSE(QFile::exists(dir.file(QStringLiteral("b.bmp"))));
    EXPECT_FALSE(QFile::exists(dir.file(QStringLiteral("c.bmp"))));

    // A converted icon that cannot be written says where it should have gone.
    dialogs.requests.clear();
    const QString nowhere = dir.file(QStringLiteral("no/such/dir/icon.bmp"));
    box.SaveToBMP(ico, nowhere);
    EXPECT_EQ(dialogs.texts(),
              QStringList{QStringLiteral("Fehler beim Speichern von \"%1\"").arg(nowhere)});
}

TEST(PicBox, PatternEditorChoosesADirectoryAndAddsTheMask) {
    TQXPicBox box;
    box.SetPicPattern(QStringLiteral("/home/user/Bilder/*.*"));
    TPicPatternProperty editor({&box}, "PicPattern");
    EXPECT_TRUE(editor.GetAttributes().Contains(paDialog));
    {
        qxtest::DialogRecorder dialogs;
        dialogs.answers << mrCancel;
        editor.Edit();
        ASSERT_EQ(dialogs.requests.size(), 1);
        EXPECT_EQ(dialogs.requests[0].Kind, dkSelectDirectory);
        EXPECT_EQ(dialogs.requests[0].Path, QStringLiteral("/home/user/Bilder/"));
    }
    EXPECT_EQ(box.PicPattern(), QStringLiteral("/home/user/Bilder/*.*"));
    for (const auto& [chosen, pattern] :
         {std::pair{QStringLiteral("/srv/Fotos/"), QStringLiteral("/srv/Fotos/*.*")},
          std::pair{QStringLiteral("/srv/Scans"), QStringLiteral("/srv/Scans/*.*")},
          std::pair{QStringLiteral("/"), QStringLiteral("/*.*")}}) {
        const QString answer = chosen;
        TDialogHandler previous = SetDialogHandler([answer](TDialogRequest& r) {
            r.Path = answer;
            return int(mrOk);
        });
        editor.Edit();
        SetDialogHandler(std::move(previous));
        EXPECT_EQ(box.PicPattern(), pattern);
    }
}

TEST(PicBox, ASelectedCellIsHighlightedAndKeepsItsPlainLookWhileTheBoxHasTheFocus) {
    qxtest::TempDir dir;
    TQXPicBox box;
    box.SetBorderWidth(0);
    for (int i = 0; i < 2; ++i)
        box.Items()->Add(
            dir.write(QStringLiteral("p%1.bmp").arg(i), bmpFile(qRgb(0, 0, 255), 2000)));
    showWithClient(box, 238, 138);
    box.SetItemIndex(1);
    const TRect cell = box.ItemRect(1);
    // A corner of the cell, outside the picture: the cell's background.
    const auto corner = [&]() {
        return box.viewport()->grab().toImage().pixel(cell.Left + 3, cell.Top + 3);
    };
    const QRgb highlight = box.palette().color(QPalette::Highlight).rgb();
    const QRgb base = box.palette().color(QPalette::Base).rgb();
    box.clearFocus();
    QCoreApplication::processEvents();
    ASSERT_FALSE(box.hasFocus());
    EXPECT_EQ(corner(), highlight);
    box.activateWindow();
    box.setFocus();
    QCoreApplication::processEvents();
    ASSERT_TRUE(box.hasFocus());
    EXPECT_EQ(corner(), base);
}
