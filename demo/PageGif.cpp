// The GIF picture: a file loaded through TPicture by its extension and drawn stretched.
#include "DemoGif.h"
#include "DemoPage.h"
#include "Dialogs.h"
#include "QXGif.h"
#include "TPicture.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace {

// Draws the picture's graphic stretched by the zoom factor through TGraphic::Draw.
class GifView : public QWidget {
public:
    explicit GifView(QWidget* parent) : QWidget(parent) { setMinimumSize(360, 240); }
    TPicture picture;
    int zoom = 3;
    QString error;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), palette().window());
        TGraphic* graphic = picture.Graphic();
        if (!graphic || !error.isEmpty()) {
            p.drawText(rect(), Qt::AlignCenter,
                       error.isEmpty() ? QStringLiteral("No picture") : error);
            return;
        }
        TBitmap target(width(), height());
        target.Canvas()->Brush.Color = clBtnFace;
        target.Canvas()->FillRect(Rect(0, 0, width(), height()));
        try {
            const int w = graphic->Width() * zoom;
            const int h = graphic->Height() * zoom;
            target.Canvas()->StretchDraw(Bounds((width() - w) / 2, (height() - h) / 2, w, h),
                                         graphic);
        } catch (const Exception& e) {
            error = e.Message();
            update();
            return;
        }
        p.drawImage(0, 0, target.Image());
    }
};

class GifPage : public QWidget {
public:
    explicit GifPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        auto* open = new QPushButton(QStringLiteral("Open GIF…"));
        auto* still = new QPushButton(QStringLiteral("Sample"));
        auto* looping = new QPushButton(QStringLiteral("Looping sample"));
        auto* zoom = new QSpinBox;
        zoom->setRange(1, 8);
        zoom->setValue(3);
        zoom->setPrefix(QStringLiteral("Zoom "));
        zoom->setSuffix(QStringLiteral("×"));
        bar->addWidget(open);
        bar->addWidget(still);
        bar->addWidget(looping);
        bar->addWidget(zoom);
        bar->addStretch(1);
        layout->addLayout(bar);
        m_view = new GifView(this);
        layout->addWidget(m_view, 1);
        m_info = new QLabel;
        m_info->setWordWrap(true);
        layout->addWidget(m_info);

        connect(zoom, &QSpinBox::valueChanged, this, [this](int value) {
            m_view->zoom = value;
            m_view->update();
        });
        connect(open, &QPushButton::clicked, this, [this]() {
            QString file;
            if (OpenFileDialog(QStringLiteral("Open GIF"), TPicture::FileDialogFilter(), file))
                load(file);
        });
        connect(still, &QPushButton::clicked, this, [this]() { loadSample(false); });
        connect(looping, &QPushButton::clicked, this, [this]() { loadSample(true); });
        loadSample(false);
    }

    // Loads the sample picture; the looping one carries an animation's NETSCAPE block.
    void loadSample(bool looping) {
        const QString sample =
            m_dir.filePath(looping ? QStringLiteral("looping.gif") : QStringLiteral("sample.gif"));
        QFile f(sample);
        if (f.open(QIODevice::WriteOnly))
            f.write(qxdemo::writeGif(qxdemo::sampleArtwork(), "QXTools sample", looping));
        f.close();
        load(sample);
    }

private:
    void load(const QString& file) {
        m_view->error.clear();
        try {
            m_view->picture.LoadFromFile(file);
        } catch (const Exception& e) {
            m_view->error = e.Message();
        }
        describe(file);
        m_view->update();
    }

    void describe(const QString& file) {
        auto* gif = dynamic_cast<TGIFImage*>(m_view->picture.Graphic());
        QString text = QStringLiteral("%1 — %2").arg(
            file.section(QLatin1Char('/'), -1),
            m_view->picture.Graphic() ? m_view->picture.Graphic()->ClassName() : QString());
        if (gif && m_view->error.isEmpty()) {
            try {
                if (gif->GetBitmap()->Empty()) {
                    m_view->error = QStringLiteral(
                        "No image found: the decoder reads only the blocks before the first "
                        "image,\nand an application block such as an animation's NETSCAPE "
                        "loop ends that walk.\nQt's own GIF reader (QImageReader) shows such "
                        "files.");
                    m_info->setText(text);
                    return;
                }
                QStringList delays;
                for (const TDelay& d : gif->Delays())
                    delays << QStringLiteral("%1 ms").arg(d.Delay);
                text += QStringLiteral(": %1 × %2 pixels, delays: %3, comment: \"%4\"")
                            .arg(gif->Width())
                            .arg(gif->Height())
                            .arg(delays.isEmpty() ? QStringLiteral("none") : delays.join(", "))
                            .arg(gif->Comment());
            } catch (const Exception& e) {
                m_view->error = e.Message();
            }
        }
        m_info->setText(text);
    }

    QTemporaryDir m_dir;
    GifView* m_view = nullptr;
    QLabel* m_info = nullptr;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Images, QStringLiteral("GIF picture (TGIFImage)"),
             [](QWidget* parent) -> QWidget* { return new GifPage(parent); }})
