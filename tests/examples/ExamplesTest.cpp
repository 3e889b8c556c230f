#include "SoundBuilder.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <cmath>
#include <gtest/gtest.h>

// The README's family guides show the programs of examples/ verbatim, and each program is
// built against the library and run here with what it documents checked.

namespace {

QString readText(const QString& fileName) {
    QFile f(fileName);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

QString sourceFile(const QString& name) {
    return QStringLiteral(QX_SOURCE_DIR "/") + name;
}

// Runs examples/<name> with the arguments; the process starts in dir.
qxtest::ToolResult runExample(const QString& name, const QStringList& args, const QString& dir) {
    QProcess p;
    p.setWorkingDirectory(dir);
    p.start(QStringLiteral(QX_EXAMPLES_BIN "/example_") + name, args);
    if (!p.waitForFinished(60000))
        return {};
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

// Whether some pixel of the image is near the colour.
bool holdsColour(const QImage& image, QColor colour) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (qAbs(c.red() - colour.red()) < 8 && qAbs(c.green() - colour.green()) < 8 &&
                qAbs(c.blue() - colour.blue()) < 8)
                return true;
        }
    return false;
}

} // namespace

// Each example appears in the README exactly as the file holds it, and every example block
// of the README is a file; a changed example or an edited snippet fails here.
TEST(Examples, ReadmeShowsEveryExampleVerbatim) {
    const QString readme = readText(sourceFile(QStringLiteral("README.md")));
    ASSERT_FALSE(readme.isEmpty());
    const QStringList files =
        QDir(sourceFile(QStringLiteral("examples"))).entryList({QStringLiteral("*.cpp")});
    ASSERT_FALSE(files.isEmpty());
    for (const QString& file : files) {
        SCOPED_TRACE(file.toStdString());
        const QString code = readText(sourceFile(QStringLiteral("examples/") + file));
        ASSERT_TRUE(code.startsWith(QStringLiteral("// examples/") + file + QLatin1Char(':')));
        EXPECT_TRUE(readme.contains(QStringLiteral("```cpp\n") + code + QStringLiteral("```\n")));
    }
    static const QRegularExpression block(QStringLiteral("```cpp\n// (examples/[^:]+):"));
    int blocks = 0;
    for (auto m = block.globalMatch(readme); m.hasNext(); ++blocks) {
        const QString name = m.next().captured(1);
        EXPECT_TRUE(QFile::exists(sourceFile(name))) << name.toStdString();
    }
    EXPECT_EQ(blocks, files.size());
}

// The values, the list and the font come back through a second component, and the file is an
// ordinary INI file.
TEST(Examples, SettingsKeepsValuesAndFontInTheFile) {
    qxtest::TempDir dir;
    const QString ini = dir.file(QStringLiteral("Demo.INI"));
    const qxtest::ToolResult run = runExample(QStringLiteral("settings"), {ini}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out,
              QStringLiteral("Tabweite 4, Zeilennummern an, Schrift DejaVu Sans Mono 11\n"));
    const QString text = readText(ini);
    EXPECT_TRUE(text.contains(QStringLiteral("[Editor]")));
    EXPECT_TRUE(text.contains(QStringLiteral("Tabweite=4")));
    EXPECT_TRUE(text.contains(QStringLiteral("Schrift_Name=DejaVu Sans Mono")));
}

TEST(Examples, UtilitiesPrintWhatTheGuideSays) {
    qxtest::TempDir dir;
    const qxtest::ToolResult run = runExample(QStringLiteral("utilities"), {}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.toStdString(),
              std::string("Ort: Köln\nZeile eins / Zeile zwei\n[Summe   ]\npasst\n"));
}

// The text files of a tree are found and grouped by directory (without the last one, b.txt);
// those of the top directory are copied byte for byte, the others and files of other kinds are
// left where they are.
TEST(Examples, FilesFindsGroupsAndCopies) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("Briefe/a.txt"), "Anfang");
    dir.write(QStringLiteral("Briefe/b.txt"), "B");
    dir.write(QStringLiteral("Briefe/Alt/c.txt"), "C");
    dir.write(QStringLiteral("Briefe/Alt/d.txt"), "D");
    dir.write(QStringLiteral("Briefe/Alt/e.log"), "E");
    const QString root = dir.file(QStringLiteral("Briefe"));
    const qxtest::ToolResult run = runExample(QStringLiteral("files"), {root}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.toStdString(), std::string("4 Dateien\nAlt: 2\nBriefe: 1\n2 kopiert\n"));
    EXPECT_EQ(readText(root + QStringLiteral("/Sicherung/a.txt")), QStringLiteral("Anfang"));
    EXPECT_TRUE(QFile::exists(root + QStringLiteral("/Sicherung/b.txt")));
    EXPECT_FALSE(QFile::exists(root + QStringLiteral("/Sicherung/c.txt")));
    EXPECT_FALSE(QFile::exists(root + QStringLiteral("/Sicherung/e.log")));
}

// The GIF decoder reads the size Qt's own reader reads; the fill runs from navy at the top to
// aqua at the bottom, and the proportional image shows the GIF 80 pixels wide in the middle.
TEST(Examples, ImagesDecodesTheGifAndShowsItOverTheBands) {
    qxtest::TempDir dir;
    const QString gif = sourceFile(QStringLiteral("fuzz/seeds/gif/two-colour.gif"));
    const QString png = dir.file(QStringLiteral("images.png"));
    const qxtest::ToolResult run = runExample(QStringLiteral("images"), {gif, png}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage reference(gif);
    ASSERT_FALSE(reference.isNull());
    EXPECT_EQ(run.out.toStdString(), QStringLiteral("TGIFImage %1 x %2\n")
                                         .arg(reference.width())
                                         .arg(reference.height())
                                         .toStdString());
    const QImage shot = QImage(png).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(shot.size(), QSize(240, 120));
    EXPECT_EQ(shot.pixelColor(120, 0), QColor(0, 0, 0x80));
    const QColor bottom = shot.pixelColor(120, 119);
    EXPECT_EQ(bottom.red(), 0);
    EXPECT_GT(bottom.green(), 0xd0);
    EXPECT_GT(bottom.blue(), 0xd0);
    // 80 pixels wide and high in proportion, centred in the 80 x 80 box at (80, 20).
    const int height = reference.height() * 80 / reference.width();
    const int top = 20 + (80 - height) / 2;
    for (const QPoint& at : {QPoint(1, 1), QPoint(reference.width() - 2, reference.height() - 2),
                             QPoint(reference.width() / 2, reference.height() / 2)}) {
        // The middle of the cell the source pixel is stretched to.
        const QPoint in(80 + (2 * at.x() + 1) * 80 / (2 * reference.width()),
                        top + (2 * at.y() + 1) * height / (2 * reference.height()));
        EXPECT_EQ(shot.pixelColor(in), reference.pixelColor(at).toRgb()) << at.x() << "," << at.y();
    }
}

// A second of a 5 Hz sine in 8-bit samples at 8000 Hz is described by its rate and length and
// drawn as five waves swinging about the red centre line under its white name; the MP3 file's
// header and tag are printed as the guide says.
TEST(Examples, SoundDescribesBothFilesAndDrawsTheWave) {
    qxtest::TempDir dir;
    QByteArray samples(8000, '\0');
    for (int i = 0; i < samples.size(); ++i)
        samples[i] = char(128 + int(std::lround(100 * std::sin(2 * M_PI * 5 * i / 8000.0))));
    const QString wav = dir.write(QStringLiteral("ton.wav"), sound::pcmWav(8000, 1, 8, samples));
    // MPEG-1 Layer III, 128 kbit/s, 44.1 kHz, joint stereo; the tag needs a file of 1000 bytes.
    const QString mp3 =
        dir.write(QStringLiteral("lied.mp3"),
                  sound::mpegHeader(0xFF, 0xFB, 0x90, 0x44) + QByteArray(1000, '\0') +
                      sound::id3v1("Abendlied", "Chor", "Lieder", "1999", "", 17));
    const QString png = dir.file(QStringLiteral("welle.png"));
    const qxtest::ToolResult run = runExample(QStringLiteral("sound"), {wav, mp3, png}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.toStdString(), std::string("064 kbps, 8 kHz, Mono, 1 s\n"
                                                 "MPEG-1 Layer-III, 128 kbps, j-stereo\n"
                                                 "Chor: Abendlied (Rock)\n"));

    const QImage shot = QImage(png).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(shot.size(), QSize(320, 80));
    EXPECT_EQ(shot.pixelColor(319, 79), QColor(Qt::black));
    // The trace reaches 100 / 256 of the height above and below the middle, and nowhere
    // near the top or bottom edge.
    int above = 0, below = 0, red = 0, edge = 0;
    for (int x = 0; x < shot.width(); ++x)
        for (int y = 0; y < shot.height(); ++y) {
            const QColor c = shot.pixelColor(x, y);
            if (c == QColor(Qt::green)) {
                above += y < 40 - 25;
                below += y > 40 + 25;
                edge += y < 4 || y > 75;
            }
            red += c == QColor(Qt::red) && y == 40;
        }
    EXPECT_GE(above, 5);
    EXPECT_GE(below, 5);
    EXPECT_EQ(edge, 0);
    EXPECT_GT(red, 0);
    // The file name is written in white in the top left corner.
    int white = 0;
    for (int x = 0; x < 60; ++x)
        for (int y = 0; y < 16; ++y)
            white += shot.pixelColor(x, y) == QColor(Qt::white);
    EXPECT_GT(white, 10);

    // A file that is no WAVE file is told in the reader's English words, and no picture is made.
    const QString text = dir.write(QStringLiteral("text.wav"), "no sound here, only text");
    const QString none = dir.file(QStringLiteral("none.png"));
    const qxtest::ToolResult bad =
        runExample(QStringLiteral("sound"), {text, mp3, none}, dir.path());
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_FALSE(bad.err.trimmed().isEmpty());
    EXPECT_FALSE(QFile::exists(none));
}

// The window shows the LCD panel's black face and the label in the blinker's first colour.
TEST(Examples, DisplayDrawsThePanelAndTheBlinkingLabel) {
    qxtest::TempDir dir;
    const QString png = dir.file(QStringLiteral("display.png"));
    const qxtest::ToolResult run = runExample(QStringLiteral("display"), {png}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage shot = QImage(png).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(shot.isNull());
    EXPECT_TRUE(holdsColour(shot, Qt::yellow));
    EXPECT_TRUE(holdsColour(shot, Qt::black));
}

// "dejavu sans" selects the family whatever its case.
TEST(Examples, ApplicationSelectsTheFontInAnyCase) {
    qxtest::TempDir dir;
    const QString png = dir.file(QStringLiteral("application.png"));
    const qxtest::ToolResult run = runExample(QStringLiteral("application"), {png}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.toStdString(), std::string("Schrift: DejaVu Sans\n"));
    EXPECT_FALSE(QImage(png).isNull());
}

// A form as Designer saves it loads with the plugin: the widgets are the package's classes,
// given the values of the form.
TEST(Examples, FormsLoadsTheWidgetsOfAForm) {
#ifndef QX_DESIGNER_PLUGIN_DIR
    GTEST_SKIP() << "built without the Designer plugin";
#else
    qxtest::TempDir dir;
    const QString ui =
        dir.write(QStringLiteral("form.ui"), R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="Form">
  <widget class="TQXGauge" name="level">
   <property name="Progress" stdset="0"><number>40</number></property>
  </widget>
  <widget class="TQXLCDPanel" name="clock">
   <property name="Caption" stdset="0"><string>12:00</string></property>
  </widget>
 </widget>
</ui>
)");
    const qxtest::ToolResult run = runExample(
        QStringLiteral("forms"), {ui, QStringLiteral(QX_DESIGNER_PLUGIN_DIR)}, dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.toStdString(), std::string("TQXGauge level\nTQXLCDPanel clock\n"));
#endif
}
