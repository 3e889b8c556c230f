#include "AppIcon.h"
#include "TestSupport.h"

#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QSet>
#include <gtest/gtest.h>

namespace {

const QStringList tabNames = {"Images",   "Sound",       "Display",  "Files",
                              "Settings", "Application", "Utilities"};

// qxdemo with the arguments, in an environment holding only a private home: no display.
qxtest::ToolResult runGallery(const QStringList& args, const QString& home) {
    QProcessEnvironment env;
    env.insert(QStringLiteral("HOME"), home);
    env.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
    QProcess p;
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(QXDEMO_PROGRAM), args);
    if (!p.waitForFinished(120000))
        return {};
    return {p.exitCode(), QString::fromLocal8Bit(p.readAllStandardOutput()),
            QString::fromLocal8Bit(p.readAllStandardError())};
}

bool reddish(QRgb c) {
    return qRed(c) > 180 && qGreen(c) < 100 && qBlue(c) < 100;
}
bool greenish(QRgb c) {
    return qGreen(c) > 150 && qRed(c) < 100 && qBlue(c) < 100;
}
bool navy(QRgb c) {
    return qAlpha(c) == 255 && qBlue(c) > 60 && qBlue(c) > 2 * qRed(c);
}

} // namespace

// The window icon has a picture for every usual size, each one a navy tile with rounded (clear)
// corners and the level meter: a green bar on the left, a red one on the right, both standing
// on the same line near the bottom.
TEST(GalleryIcon, DrawnForEveryUsualSize) {
    const QIcon icon = qxdemo::galleryIcon();
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        SCOPED_TRACE(size);
        EXPECT_TRUE(icon.availableSizes().contains(QSize(size, size)));
        const QImage image = icon.pixmap(size).toImage().convertToFormat(QImage::Format_ARGB32);
        ASSERT_EQ(image.size(), QSize(size, size));
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
        EXPECT_EQ(qAlpha(image.pixel(size - 1, size - 1)), 0);
        EXPECT_TRUE(navy(image.pixel(size / 2, size / 10)));
        // A row through the bars' lowest boxes: scanned from the left, green comes first; from
        // the right, red.
        const int y = size * 3 / 4;
        int firstColour = -1;
        int lastColour = -1;
        for (int x = 0; x < size; ++x) {
            const QRgb c = image.pixel(x, y);
            if (reddish(c) || greenish(c)) {
                lastColour = x;
                firstColour = firstColour < 0 ? x : firstColour;
            }
        }
        ASSERT_GE(firstColour, 0);
        EXPECT_TRUE(greenish(image.pixel(firstColour, y)));
        EXPECT_TRUE(reddish(image.pixel(lastColour, y)));
        // The red bar is the tallest: it reaches into the upper half, the green one does not.
        bool redAbove = false;
        bool greenAbove = false;
        for (int above = size * 3 / 10; above < size / 2; ++above) {
            redAbove = redAbove || reddish(image.pixel(lastColour, above));
            greenAbove = greenAbove || greenish(image.pixel(firstColour, above));
        }
        EXPECT_TRUE(redAbove);
        EXPECT_FALSE(greenAbove);
    }
}

// A page name that does not exist is said, with the names that do, before any window opens.
TEST(GalleryCommandLine, UnknownPageIsRefusedWithTheList) {
    qxtest::TempDir dir;
    const QString shot = dir.file(QStringLiteral("shot.png"));
    const qxtest::ToolResult run =
        runGallery({"--page", "Bilder", "--screenshot", shot}, dir.path());
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("\"Bilder\" gibt es nicht")))
        << run.err.toStdString();
    for (const QString& name : tabNames)
        EXPECT_TRUE(run.err.contains(name)) << name.toStdString();
    EXPECT_FALSE(QFile::exists(shot));

    // The help names the pages too, and needs no display either.
    const qxtest::ToolResult help = runGallery({"--help"}, dir.path());
    EXPECT_EQ(help.exitCode, 0) << help.err.toStdString();
    for (const QString& name : tabNames)
        EXPECT_TRUE(help.out.contains(name)) << name.toStdString();
}

// A known name opens its tab whatever its case: the picture differs from the first tab's.
TEST(GalleryCommandLine, PageOpensItsTabInAnyCase) {
    qxtest::TempDir dir;
    QList<QImage> shots;
    for (const QStringList& args :
         {QStringList{}, QStringList{"--page", "files"}, QStringList{"--page", "FILES"}}) {
        const QString shot = dir.file(QStringLiteral("shot%1.png").arg(shots.size()));
        const qxtest::ToolResult run =
            runGallery(args + QStringList{"--screenshot", shot}, dir.path());
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        shots << QImage(shot);
        ASSERT_FALSE(shots.last().isNull());
    }
    EXPECT_NE(shots[0], shots[1]);
    EXPECT_NE(shots[0], shots[2]);
}

// --screenshot-all writes one picture per tab, named after it: none is blank, no two are alike,
// and a tab longer than the window is drawn whole instead of cut at the window's edge.
TEST(GalleryCommandLine, ScreenshotAllWritesEveryTabWhole) {
    qxtest::TempDir dir;
    const QString out = dir.file(QStringLiteral("shots"));
    const qxtest::ToolResult run = runGallery({"--screenshot-all", out}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QList<QImage> shots;
    for (const QString& name : tabNames) {
        SCOPED_TRACE(name.toStdString());
        const QImage shot(out + QLatin1Char('/') + name + QStringLiteral(".png"));
        ASSERT_FALSE(shot.isNull());
        EXPECT_GE(shot.width(), 900);
        EXPECT_GE(shot.height(), 640);
        // Below the tab bar a page with content holds text and controls in many shades.
        QSet<QRgb> shades;
        for (int y = 40; y < shot.height(); y += 2)
            for (int x = 0; x < shot.width(); x += 2)
                shades.insert(shot.pixel(x, y));
        EXPECT_GT(shades.size(), 16);
        for (const QImage& earlier : shots)
            EXPECT_NE(earlier, shot);
        shots << shot;
    }
    // The display tab holds more than a window of sections; its last one (the marquees) ends
    // clearly above the tab's bottom frame, so nothing was cut off.
    const QImage display(out + QStringLiteral("/Display.png"));
    EXPECT_GT(display.height(), 900);
    const int frame = display.height() - 6;
    const QRgb background = display.pixel(display.width() / 2, frame - 1);
    int lastContentRow = 0;
    for (int y = 0; y < frame; ++y)
        for (int x = 40; x < display.width() / 2; x += 4)
            if (qAbs(qGray(display.pixel(x, y)) - qGray(background)) > 40)
                lastContentRow = y;
    EXPECT_LT(lastContentRow, frame - 10);
}
