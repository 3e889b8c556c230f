// TQXWAV as a component: defaults and setter rules, the waveform, the palette and the file
// name editor.
#include "QXWAV.h"

#include "QXDesign.h"
#include "QXTools.h"

#include "SoundBuilder.h"
#include "TestSupport.h"

#include <QImage>
#include <gtest/gtest.h>

using namespace sound;

namespace {

QImage render(TQXWAV& wav) {
    return wav.grab().toImage();
}

} // namespace

TEST(WavComponent, Defaults) {
    TQXWAV wav;
    EXPECT_EQ(wav.sizeHint(), QSize(25, 25));
    EXPECT_EQ(wav.SNDFlags(), TwFlags{ASYNC});
    EXPECT_EQ(wav.Color(), clBlack);
    EXPECT_EQ(wav.Interval(), 100);
    EXPECT_EQ(wav.Timer()->Interval(), 100);
    EXPECT_TRUE(wav.Timer()->Enabled());
    EXPECT_FALSE(wav.Silence());
    EXPECT_EQ(wav.FileName(), QString());
    EXPECT_EQ(wav.DeviceID(), 0u);
    EXPECT_EQ(wav.NotifyValue(), nvSuccessful);
    EXPECT_FALSE(wav.accessibleName().isEmpty());
    EXPECT_FALSE(wav.accessibleDescription().isEmpty());
    EXPECT_TRUE(wav.setProperty("About_QXTools", QStringLiteral("x")));
    EXPECT_EQ(wav.property("About_QXTools").toString(), QStringLiteral("15.11.96"));

    // The set of flags as Designer sees it, bit n for flag n.
    EXPECT_EQ(wav.property("SNDFlags").value<QXWAVEnums::TwFlagBits>().toInt(), 0x2);
    EXPECT_TRUE(wav.setProperty("SNDFlags", QVariant::fromValue(QXWAVEnums::TwFlagBits(
                                                QXWAVEnums::SYNCBit | QXWAVEnums::LOOPBit))));
    EXPECT_EQ(wav.SNDFlags(), (TwFlags{SYNC, LOOP}));
    // The format fields are writable as stored properties, in types Designer edits; the 16-bit
    // fields keep to their range.
    EXPECT_TRUE(wav.setProperty("SamplesPerSec", 22050u));
    EXPECT_TRUE(wav.setProperty("PlayTime", 1.5));
    EXPECT_TRUE(wav.setProperty("FormatTag", 0xFFFE));
    EXPECT_TRUE(wav.setProperty("Channels", 6));
    EXPECT_EQ(wav.SamplesPerSec(), 22050u);
    EXPECT_EQ(wav.PlayTime(), 1.5f);
    EXPECT_EQ(wav.property("FormatTag").toInt(), 0xFFFE);
    EXPECT_EQ(wav.Channels(), 6);
    wav.setProperty("FormatTag", 70000);
    wav.setProperty("Channels", -2);
    EXPECT_EQ(wav.FormatTag(), 0xFFFF);
    EXPECT_EQ(wav.Channels(), 0);
}

TEST(WavComponent, IntervalRule) {
    TQXWAV wav;
    const struct {
        int set, stored;
        bool ticking;
    } cases[] = {{5, 20, true},    {1, 20, true}, {19, 20, true},  {20, 20, true},
                 {150, 150, true}, {0, 0, false}, {-3, -3, false}, {250, 250, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.set);
        wav.SetInterval(c.set);
        EXPECT_EQ(wav.Interval(), c.stored);
        EXPECT_EQ(wav.Timer()->Interval(), c.stored);
        EXPECT_EQ(wav.Timer()->IsActive(), c.ticking);
    }
}

TEST(WavComponent, StatusTickWithoutDevice) {
    TQXWAV wav;
    QList<std::pair<int, int>> reports;
    wav.OnShowStatus = [&](QObject* sender, std::int32_t position, std::int32_t length) {
        EXPECT_EQ(sender, &wav);
        // The timer is off while the handler runs.
        EXPECT_FALSE(wav.Timer()->Enabled());
        reports.append({position, length});
    };
    wav.QXOnTime();
    wav.QXOnTime();
    EXPECT_EQ(reports, (QList<std::pair<int, int>>{{0, 0}, {0, 0}}));
    EXPECT_TRUE(wav.Timer()->Enabled());
    EXPECT_EQ(wav.GetLength(), 0);
    EXPECT_NE(wav.LastResult(), 0u);
    EXPECT_FALSE(wav.LastResultText().isEmpty());
}

TEST(WavComponent, NoticesMapToNotifyValues) {
    TQXWAV wav;
    QList<TMPNotifyValues> seen;
    wav.OnNotify = [&](QObject* sender, TMPNotifyValues value) {
        EXPECT_EQ(sender, &wav);
        seen.append(value);
    };
    for (std::uint32_t code : {MCI_NOTIFY_ABORTED, 3u, MCI_NOTIFY_FAILURE, 0u,
                               MCI_NOTIFY_SUPERSEDED, MCI_NOTIFY_SUCCESSFUL, 16u})
        wav.MMMCINotify(code);
    // Unknown codes repeat the stored value, and the handler still hears them.
    EXPECT_EQ(seen, (QList<TMPNotifyValues>{nvAborted, nvAborted, nvFailure, nvFailure,
                                            nvSuperseded, nvSuccessful, nvSuccessful}));
    EXPECT_EQ(wav.NotifyValue(), nvSuccessful);
}

TEST(WavComponent, WaveformOneColumnPerStep) {
    qxtest::TempDir dir;
    // 1,000,000 bytes in 100 columns: one sample every 10,000 bytes from byte 45. Samples
    // at 160 lie 8 pixels below the middle, every tenth at 96 lies 8 above; every other byte
    // after the header is 0, which would reach the top edge if it were read.
    QByteArray bytes = pcmWav(8000, 1, 8, QByteArray(1000000 - 44, '\0'));
    ASSERT_EQ(bytes.size(), 1000000);
    for (int k = 0; k < 100; ++k)
        bytes[45 + k * 10000] = char(k % 10 == 0 ? 96 : 160);
    TQXWAV wav;
    wav.resize(100, 64);
    wav.SetFileName(dir.write("wave.wav", bytes));
    const QImage image = render(wav);
    ASSERT_EQ(image.size(), QSize(100, 64));
    for (int x = 0; x < 99; ++x) {
        SCOPED_TRACE(x);
        EXPECT_EQ(qxtest::pixelBGR(image, x, x % 10 == 0 ? 24 : 40), clLime);
    }
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 100; ++x)
            ASSERT_NE(qxtest::pixelBGR(image, x, y), clLime) << x << "," << y;
    // The centre line shows where the trace does not cross it; Color elsewhere.
    EXPECT_EQ(qxtest::pixelBGR(image, 5, 32), clRed);
    EXPECT_EQ(qxtest::pixelBGR(image, 99, 32), clRed);
    EXPECT_EQ(qxtest::pixelBGR(image, 50, 60), clBlack);

    // A step of 0 draws the centre line only; a missing file only the background.
    wav.SetColor(clNavy);
    wav.SetFileName(dir.write("short.wav", pcmWav(8000, 1, 8, QByteArray(50, char(255)))));
    QImage line = render(wav);
    for (int x = 0; x < 100; ++x) {
        EXPECT_EQ(qxtest::pixelBGR(line, x, 32), clRed);
        EXPECT_EQ(qxtest::pixelBGR(line, x, 63), clNavy);
    }
    wav.SetFileName(dir.file("missing.wav"));
    line = render(wav);
    EXPECT_EQ(qxtest::pixelBGR(line, 50, 32), clNavy);
    EXPECT_EQ(qxtest::pixelBGR(line, 0, 0), clNavy);
}

TEST(WavComponent, WaveformOfARealFile) {
    qxtest::TempDir dir;
    TQXWAV wav;
    wav.resize(400, 100);
    wav.Font()->SetColor(clWhite);
    // 8-bit samples of a slow full-scale sawtooth after the 44-byte header.
    QByteArray samples(40000, '\0');
    for (int i = 0; i < samples.size(); ++i)
        samples[i] = char(i % 256);
    wav.SetFileName(dir.write("saw.wav", pcmWav(8000, 1, 8, samples)));
    const QImage image = render(wav);
    image.save(dir.file("saw.png"));
    int green = 0;
    int topmost = 100;
    int lowest = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 400; ++x)
            if (qxtest::pixelBGR(image, x, y) == clLime) {
                ++green;
                topmost = std::min(topmost, y);
                lowest = std::max(lowest, y);
            }
    // The trace spans the whole height, and the file name is written in the font's colour.
    EXPECT_GT(green, 400);
    EXPECT_LE(topmost, 1);
    EXPECT_GE(lowest, 98);
    bool text = false;
    for (int y = 0; y < 12 && !text; ++y)
        for (int x = 0; x < 60 && !text; ++x)
            text = qxtest::pixelBGR(image, x, y) == clWhite;
    EXPECT_TRUE(text);
}

TEST(WavComponent, OnThePaletteWithItsEditor) {
    TPaletteRegistry::Instance().Clear();
    QXWAV::Register();
    const QList<TComponentClass> classes =
        TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools"));
    ASSERT_EQ(classes.size(), 1);
    EXPECT_EQ(classes[0].Name, QStringLiteral("TQXWAV"));
    ASSERT_EQ(TPaletteRegistry::Instance().EditorCalls().size(), 1);
    const TEditorRegistration& row = TPaletteRegistry::Instance().EditorCalls()[0];
    EXPECT_EQ(row.PropertyType, QStringLiteral("string"));
    EXPECT_EQ(row.ComponentClass, QStringLiteral("TQXWAV"));
    EXPECT_EQ(row.PropertyName, QStringLiteral("Filename"));
    EXPECT_EQ(row.Editor.Name, QStringLiteral("TWaveFileProperty"));

    // The central registration places it and its editor as well.
    TPaletteRegistry::Instance().Clear();
    QXTools::Register();
    QStringList names;
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QStringLiteral("QX Tools")))
        names << c.Name;
    EXPECT_TRUE(names.contains(QStringLiteral("TQXWAV")));
    TQXWAV wav;
    const TEditorRegistration* editor =
        TPaletteRegistry::Instance().EditorFor(&wav, QStringLiteral("FileName"));
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->Editor.Name, QStringLiteral("TWaveFileProperty"));
    TPaletteRegistry::Instance().Clear();
}

TEST(WavComponent, FileNameEditor) {
    qxtest::TempDir dir;
    const QString chosen = dir.write("chosen.wav", toneWav(0.25));
    TQXWAV wav;
    wav.SetFileName(dir.file("old.wav"));
    const TPropertyEditorClass* cls = FindEditorClass(QStringLiteral("TWaveFileProperty"));
    ASSERT_NE(cls, nullptr);
    std::unique_ptr<TPropertyEditor> editor(cls->Create({&wav}, "FileName"));
    EXPECT_EQ(editor->GetAttributes(), TPropertyAttributes{paDialog});
    {
        // Cancelled: nothing changes.
        qxtest::DialogRecorder dialogs;
        dialogs.answers << mrCancel;
        editor->Edit();
        ASSERT_EQ(dialogs.requests.size(), 1);
        const TDialogRequest& r = dialogs.requests[0];
        EXPECT_EQ(r.Kind, dkOpenFile);
        EXPECT_EQ(r.Filter, QStringLiteral("Wave Dateien (*.wav)|*.WAV|All files (*.*)|*.*"));
        EXPECT_EQ(r.Path, dir.file("old.wav"));
        EXPECT_EQ(wav.FileName(), dir.file("old.wav"));
    }
    {
        // Confirmed: the choice becomes the file name, and its format is read.
        TDialogHandler previous = SetDialogHandler([&](TDialogRequest& r) {
            r.Path = chosen;
            return mrOk;
        });
        editor->Edit();
        SetDialogHandler(previous);
        EXPECT_EQ(wav.FileName(), chosen);
        EXPECT_EQ(wav.SamplesPerSec(), 44100u);
        EXPECT_NEAR(wav.PlayTime(), 0.25, 1e-6);
    }
    // The Qt file dialog gets the filter in its own form.
    EXPECT_EQ(QtFileFilter(QLatin1String(TWaveFileProperty::Filter)),
              QStringLiteral("Wave Dateien (*.WAV);;All files (*)"));
    EXPECT_EQ(QtFileFilter(QStringLiteral("Bilder|*.bmp;*.gif")),
              QStringLiteral("Bilder (*.bmp *.gif)"));
    EXPECT_EQ(QtFileFilter(QStringLiteral("Images (*.gif)")), QStringLiteral("Images (*.gif)"));
}
