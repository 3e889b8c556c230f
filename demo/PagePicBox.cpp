// The thumbnail browser: a picture box on a directory the user chooses, its count and scan
// state live while the scanning thread fills it.
#include "DemoPage.h"
#include "Dialogs.h"
#include "Qxpicbox.h"

#include <QCheckBox>
#include <QDir>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <atomic>

namespace {

// A tile for the sample directory: a colour wheel slice with its number.
QImage sampleTile(int n, QSize size) {
    QImage tile(size, QImage::Format_ARGB32);
    QPainter p(&tile);
    const QColor base = QColor::fromHsv((n * 37) % 360, 150, 230);
    p.fillRect(tile.rect(), base.lighter(140));
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(base);
    p.drawEllipse(tile.rect().adjusted(size.width() / 8, size.height() / 8, -size.width() / 8,
                                       -size.height() / 8));
    p.setPen(Qt::white);
    QFont font = p.font();
    font.setPixelSize(size.height() / 3);
    font.setBold(true);
    p.setFont(font);
    p.drawText(tile.rect(), Qt::AlignCenter, QString::number(n));
    return tile;
}

// Writes bitmaps, JPEG pictures and icons, some in subdirectories, and one file that is no
// picture at all (it shows the no-picture symbol).
void writeSamples(const QString& root) {
    QDir dir(root);
    for (const char* sub : {"Urlaub", "Urlaub/Strand", "Icons"})
        dir.mkpath(QLatin1String(sub));
    for (int n = 1; n <= 30; ++n) {
        const QString where = n <= 12   ? QString()
                              : n <= 20 ? QStringLiteral("Urlaub/")
                                        : QStringLiteral("Urlaub/Strand/");
        const QImage tile = sampleTile(n, QSize(96, 72));
        if (n % 3 == 0)
            tile.convertToFormat(QImage::Format_RGB32)
                .save(root + QLatin1Char('/') + where + QStringLiteral("Bild%1.jpg").arg(n), "JPG");
        else
            tile.convertToFormat(QImage::Format_RGB888)
                .save(root + QLatin1Char('/') + where + QStringLiteral("Bild%1.bmp").arg(n), "BMP");
    }
    for (int n = 31; n <= 36; ++n)
        sampleTile(n, QSize(32, 32))
            .save(root + QStringLiteral("/Icons/Symbol%1.ico").arg(n), "ICO");
    QFile broken(root + QStringLiteral("/Kaputt.bmp"));
    if (broken.open(QIODevice::WriteOnly))
        broken.write(QByteArray(2000, 'x'));
}

class PicBoxPage : public QWidget {
public:
    explicit PicBoxPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        auto* choose = new QPushButton(QStringLiteral("Directory…"));
        auto* samples = new QPushButton(QStringLiteral("Samples"));
        auto* stop = new QPushButton(QStringLiteral("Stop scan"));
        auto* subDirs = new QCheckBox(QStringLiteral("Subdirectories"));
        auto* captions = new QCheckBox(QStringLiteral("Captions"));
        auto* icons = new QCheckBox(QStringLiteral("Only files with icons"));
        subDirs->setChecked(true);
        captions->setChecked(true);
        for (QWidget* w :
             std::initializer_list<QWidget*>{choose, samples, stop, subDirs, captions, icons})
            bar->addWidget(w);
        bar->addStretch(1);
        layout->addLayout(bar);

        m_box = new TQXPicBox(this);
        m_box->setMinimumSize(640, 250);
        m_box->SetPicType({ptBMP, ptICO, ptJPG, ptGIF});
        m_box->SetSubDirs(true);
        m_box->SetCaption(true);
        layout->addWidget(m_box, 1);
        m_state = new QLabel;
        layout->addWidget(m_state);

        // The count arrives on the scanning thread: keep it and show it from the GUI thread.
        m_box->OnChangePicCount = [this](QObject*, int count) {
            m_count.store(count);
            QMetaObject::invokeMethod(
                this, [this]() { showState(); }, Qt::QueuedConnection);
        };
        m_box->OnStartScan = [this](QObject*) {
            m_scanning = true;
            showState();
        };
        m_box->OnStopScan = [this](QObject*) {
            m_scanning = false;
            showState();
        };

        connect(choose, &QPushButton::clicked, this, [this]() {
            QString dir = QDir::homePath();
            if (SelectDirectory(QStringLiteral("Bildverzeichnis wählen"), dir))
                open(dir);
        });
        connect(samples, &QPushButton::clicked, this, [this]() { open(m_samples.path()); });
        connect(stop, &QPushButton::clicked, this, [this]() { m_box->BreakScan(); });
        connect(subDirs, &QCheckBox::toggled, this, [this](bool on) { m_box->SetSubDirs(on); });
        connect(captions, &QCheckBox::toggled, this, [this](bool on) { m_box->SetCaption(on); });
        connect(icons, &QCheckBox::toggled, this, [this](bool on) {
            m_box->SetCheckForIcons(on);
            m_box->FillItems(m_box->PicPattern());
        });

        writeSamples(m_samples.path());
        open(m_samples.path());
    }

    // The box stops its scan before the label it reports to goes.
    ~PicBoxPage() override {
        delete m_box;
        m_box = nullptr;
    }

private:
    void open(const QString& dir) {
        m_box->SetPicPattern(QDir(dir).filePath(QStringLiteral("*.*")));
        if (!m_box->Active())
            m_box->SetActive(true);
    }

    void showState() {
        if (!m_box)
            return;
        m_state->setText(
            QStringLiteral("%1 — %2 pictures, %3")
                .arg(m_box->PicPattern())
                .arg(m_count.load())
                .arg(m_scanning ? QStringLiteral("scanning…") : QStringLiteral("scan finished")));
    }

    QTemporaryDir m_samples;
    TQXPicBox* m_box = nullptr;
    QLabel* m_state = nullptr;
    std::atomic<int> m_count{0};
    bool m_scanning = false;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Images, QStringLiteral("Thumbnail browser (TQXPicBox)"),
             [](QWidget* parent) -> QWidget* { return new PicBoxPage(parent); }})
