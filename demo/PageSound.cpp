// The sound section: a WAV file's waveform, format and information, played with its position
// shown live, and an MP3 file described by TQXMp3Info.
#include "DemoPage.h"
#include "Dialogs.h"
#include "QXMp3Info.h"
#include "QXWAV.h"
#include "Qxutil.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaEnum>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtEndian>
#include <cmath>
#include <map>
#include <numbers>
#include <string>

namespace {

QByteArray le32(quint32 v) {
    QByteArray out(4, '\0');
    qToLittleEndian(v, out.data());
    return out;
}

// A bell-like chord of 8-bit samples that swells and dies away, so the waveform shows a shape.
QByteArray sampleWav() {
    constexpr quint32 rate = 11025;
    constexpr int frames = rate * 2;
    QByteArray data(frames, '\0');
    for (int i = 0; i < frames; ++i) {
        const double t = double(i) / rate;
        const double envelope = std::min(1.0, t * 20) * std::exp(-2.2 * t);
        const double v = std::sin(2 * std::numbers::pi * 523.25 * t) +
                         0.6 * std::sin(2 * std::numbers::pi * 659.25 * t) +
                         0.4 * std::sin(2 * std::numbers::pi * 783.99 * t);
        data[i] = char(128 + std::lround(envelope * 60 * v));
    }
    const QByteArray fmt =
        QByteArray::fromHex("01000100") + le32(rate) + le32(rate) + QByteArray::fromHex("01000800");
    return "RIFF" + le32(quint32(4 + 8 + fmt.size() + 8 + data.size())) + "WAVE" + "fmt " +
           le32(quint32(fmt.size())) + fmt + "data" + le32(quint32(data.size())) + data;
}

// Four seconds of MPEG-1 Layer III at 128 kbps with an ID3 version 1 tag.
QByteArray sampleMp3() {
    QByteArray out = QByteArray::fromHex("FFFB9044");
    out.resize(16000 * 4 - 128, '\0');
    auto field = [](QByteArray s, int n) {
        s.resize(n, '\0');
        return s;
    };
    return out + "TAG" + field("Glockenspiel", 30) + field("QXTools", 30) + field("Beispiele", 30) +
           "1998" + field("erzeugt von qxdemo", 30) + char(12);
}

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& bytes) {
    QFile f(dir.filePath(name));
    if (f.open(QIODevice::WriteOnly))
        f.write(bytes);
    return f.fileName();
}

class SoundPage : public QWidget {
public:
    explicit SoundPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        auto* wavBox = new QGroupBox(QStringLiteral("WAV file (TQXWAV)"));
        auto* wavLayout = new QVBoxLayout(wavBox);
        layout->addWidget(wavBox);

        auto* bar = new QHBoxLayout;
        auto* open = new QPushButton(QStringLiteral("Open WAV…"));
        auto* sample = new QPushButton(QStringLiteral("Sample"));
        auto* play = new QPushButton(QStringLiteral("Play"));
        auto* stop = new QPushButton(QStringLiteral("Stop"));
        auto* beep = new QPushButton(QStringLiteral("Beep"));
        auto* silence = new QCheckBox(QStringLiteral("Silence"));
        for (QWidget* w : {static_cast<QWidget*>(open), static_cast<QWidget*>(sample),
                           static_cast<QWidget*>(play), static_cast<QWidget*>(stop),
                           static_cast<QWidget*>(beep), static_cast<QWidget*>(silence)})
            bar->addWidget(w);
        bar->addStretch(1);
        wavLayout->addLayout(bar);

        m_wav = new TQXWAV;
        m_wav->setMinimumSize(480, 120);
        m_wav->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_wav->Font()->SetColor(clWhite);
        wavLayout->addWidget(m_wav);

        m_position = new QProgressBar;
        m_position->setFormat(QStringLiteral("%v ms of %m ms"));
        m_position->setRange(0, 1);
        m_position->setValue(0);
        wavLayout->addWidget(m_position);

        auto* details = new QHBoxLayout;
        m_format = new QLabel;
        m_info = new QLabel;
        m_notice = new QLabel;
        for (QLabel* l : {m_format, m_info}) {
            l->setTextFormat(Qt::PlainText);
            l->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            details->addWidget(l, 1);
        }
        wavLayout->addLayout(details);
        wavLayout->addWidget(m_notice);

        m_wav->OnShowStatus = [this](QObject*, std::int32_t position, std::int32_t length) {
            // Without an open device the range stays at the file's playing time.
            if (length > 0)
                m_position->setRange(0, length);
            m_position->setValue(std::clamp(int(position), 0, m_position->maximum()));
        };
        m_wav->OnNotify = [this](QObject*, TMPNotifyValues value) {
            m_notice->setText(
                QStringLiteral("Last play ended: %1")
                    .arg(QLatin1String(QMetaEnum::fromType<TMPNotifyValues>().valueToKey(value))));
        };
        connect(open, &QPushButton::clicked, this, [this]() {
            QString file = m_wav->FileName();
            if (OpenFileDialog(QStringLiteral("Open WAV"), QLatin1String(TWaveFileProperty::Filter),
                               file))
                loadWav(file);
        });
        connect(sample, &QPushButton::clicked, this,
                [this]() { loadWav(writeFile(m_dir, QStringLiteral("chime.wav"), sampleWav())); });
        connect(play, &QPushButton::clicked, this, [this]() {
            m_wav->Play();
            if (!m_wav->DeviceID())
                m_notice->setText(QStringLiteral("Cannot play: %1").arg(m_wav->LastResultText()));
        });
        connect(stop, &QPushButton::clicked, this, [this]() { m_wav->CloseMedia(); });
        connect(beep, &QPushButton::clicked, this, [this]() { m_wav->Beep(); });
        connect(silence, &QCheckBox::toggled, this, [this](bool on) { m_wav->SetSilence(on); });

        layout->addWidget(createMp3Box());
        layout->addStretch(1);
        loadWav(writeFile(m_dir, QStringLiteral("chime.wav"), sampleWav()));
    }

private:
    QGroupBox* createMp3Box() {
        auto* box = new QGroupBox(QStringLiteral("MP3 file (TQXMp3Info)"));
        auto* boxLayout = new QVBoxLayout(box);
        auto* bar = new QHBoxLayout;
        auto* open = new QPushButton(QStringLiteral("Open MP3…"));
        auto* sample = new QPushButton(QStringLiteral("Sample"));
        bar->addWidget(open);
        bar->addWidget(sample);
        bar->addStretch(1);
        boxLayout->addLayout(bar);
        auto* columns = new QHBoxLayout;
        auto* left = new QFormLayout;
        auto* right = new QFormLayout;
        columns->addLayout(left, 1);
        columns->addLayout(right, 1);
        boxLayout->addLayout(columns);
        const char* const leftNames[] = {"Name",    "Status",    "Version", "Layer",
                                         "Bitrate", "Frequency", "Mode",    "Duration"};
        const char* const rightNames[] = {"Seconds", "Size", "Title",   "Artist",
                                          "Album",   "Year", "Comment", "Genre"};
        for (const char* name : leftNames)
            left->addRow(QLatin1String(name) + QLatin1Char(':'), m_mp3[name] = new QLabel);
        for (const char* name : rightNames)
            right->addRow(QLatin1String(name) + QLatin1Char(':'), m_mp3[name] = new QLabel);

        m_mp3Info = new TQXMp3Info(this);
        connect(open, &QPushButton::clicked, this, [this]() {
            QString file = m_mp3Info->FileName();
            if (OpenFileDialog(
                    QStringLiteral("Open MP3"),
                    QStringLiteral("MP3 Dateien (*.mp3)|*.mp3;*.MP3|All files (*.*)|*.*"), file))
                loadMp3(file);
        });
        connect(sample, &QPushButton::clicked, this,
                [this]() { loadMp3(writeFile(m_dir, QStringLiteral("sample.mp3"), sampleMp3())); });
        loadMp3(writeFile(m_dir, QStringLiteral("sample.mp3"), sampleMp3()));
        return box;
    }

    void loadWav(const QString& file) {
        QString error;
        try {
            m_wav->SetFileName(file);
        } catch (const Exception& e) {
            error = e.Message();
            m_wav->update();
        }
        m_format->setText(QStringLiteral("FormatTag: %1\nChannels: %2\nSamplesPerSec: %3\n"
                                         "DataSize: %4 bytes\nPlayTime: %5 s%6")
                              .arg(m_wav->FormatTag())
                              .arg(m_wav->Channels())
                              .arg(m_wav->SamplesPerSec())
                              .arg(m_wav->DataSize())
                              .arg(double(m_wav->PlayTime()), 0, 'f', 3)
                              .arg(error.isEmpty() ? QString() : QStringLiteral("\n") + error));
        TWAVInfo info;
        qxtGetWavInfo(file, info);
        m_info->setText(QStringLiteral("qxtGetWavInfo:\n%1\n%2 bytes, %3\n%4 s")
                            .arg(info.InfoText)
                            .arg(info.FileSize)
                            .arg(info.FileDate.toString(QStringLiteral("dd.MM.yyyy hh:mm")))
                            .arg(info.PlayTime));
        m_position->setRange(0, std::max(1, int(m_wav->PlayTime() * 1000)));
        m_position->setValue(0);
        m_notice->clear();
    }

    void loadMp3(const QString& file) {
        m_mp3Info->SetFileName(file);
        const TMP3Format& f = m_mp3Info->MP3Format();
        const Tmp3TAG& tag = m_mp3Info->MP3Tag();
        const QString noTag = tag.TagFound ? QString() : QStringLiteral("(no tag)");
        const std::pair<const char*, QString> rows[] = {
            {"Name", f.Name},
            {"Status", f.Status},
            {"Version", f.Version},
            {"Layer", f.Layer},
            {"Bitrate", f.Bitrate},
            {"Frequency", f.Frequency},
            {"Mode", f.Mode},
            {"Duration", f.Duration},
            {"Seconds", QString::number(f.Seconds)},
            {"Size", f.SizeText + QStringLiteral("(%1 bytes)").arg(f.FileSize)},
            {"Title", tag.TagFound ? Mp3TagText(tag.Title) : noTag},
            {"Artist", Mp3TagText(tag.Artist)},
            {"Album", Mp3TagText(tag.Album)},
            {"Year", Mp3TagText(tag.Year)},
            {"Comment", Mp3TagText(tag.Comment)},
            {"Genre", QStringLiteral("%1 (%2)").arg(GetGenreString(tag.Genre)).arg(tag.Genre)},
        };
        for (const auto& [name, value] : rows)
            m_mp3[name]->setText(value);
    }

    QTemporaryDir m_dir;
    TQXWAV* m_wav = nullptr;
    QProgressBar* m_position = nullptr;
    QLabel* m_format = nullptr;
    QLabel* m_info = nullptr;
    QLabel* m_notice = nullptr;
    TQXMp3Info* m_mp3Info = nullptr;
    std::map<std::string, QLabel*> m_mp3;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Sound, QStringLiteral("WAV and MP3 (TQXWAV, TQXMp3Info)"),
             [](QWidget* parent) -> QWidget* { return new SoundPage(parent); }})
