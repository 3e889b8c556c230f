// The proportional image: a GIF fitted into the control, wide or tall, with its switches.
#include "DemoGif.h"
#include "DemoPage.h"
#include "QXImage.h"
#include "SysUtils.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QTemporaryDir>
#include <QTransform>
#include <QVBoxLayout>

namespace {

class QXImagePage : public QWidget {
public:
    explicit QXImagePage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        auto* picture = new QComboBox;
        picture->addItems(
            {QStringLiteral("Wide GIF (120 × 80)"), QStringLiteral("Tall GIF (80 × 120)")});
        bar->addWidget(picture);
        auto* stretch = new QCheckBox(QStringLiteral("Stretch"));
        auto* center = new QCheckBox(QStringLiteral("Center"));
        auto* transparent = new QCheckBox(QStringLiteral("Transparent"));
        bar->addWidget(stretch);
        bar->addWidget(center);
        bar->addWidget(transparent);
        bar->addStretch(1);
        layout->addLayout(bar);

        m_image = new TQXImage(this);
        m_image->setFixedSize(300, 160);
        m_image->SetColor(0xF0E0D0);
        layout->addWidget(m_image);
        m_status = new QLabel;
        layout->addWidget(m_status);

        connect(picture, &QComboBox::currentIndexChanged, this, [this](int i) { load(i == 1); });
        connect(stretch, &QCheckBox::toggled, this, [this](bool on) { m_image->SetStretch(on); });
        connect(center, &QCheckBox::toggled, this, [this](bool on) { m_image->SetCenter(on); });
        connect(transparent, &QCheckBox::toggled, this,
                [this](bool on) { m_image->SetTransparent(on); });
        stretch->setChecked(true);
        load(false);
    }

private:
    void load(bool tall) {
        QImage art = qxdemo::sampleArtwork();
        if (tall)
            art = art.transformed(QTransform().rotate(90))
                      .convertToFormat(QImage::Format_Indexed8, art.colorTable());
        const QString file =
            m_dir.filePath(tall ? QStringLiteral("tall.gif") : QStringLiteral("wide.gif"));
        QFile out(file);
        if (out.open(QIODevice::WriteOnly))
            out.write(qxdemo::writeGif(art, "QXTools sample", false));
        out.close();
        try {
            m_image->Picture()->LoadFromFile(file);
            m_status->setText(QStringLiteral("%1 × %2 pixels; a GIF always paints the whole "
                                             "control")
                                  .arg(m_image->Picture()->Width())
                                  .arg(m_image->Picture()->Height()));
        } catch (const Exception& e) {
            m_status->setText(e.Message());
        }
    }

    QTemporaryDir m_dir;
    TQXImage* m_image = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Images, QStringLiteral("Proportional image (TQXImage)"),
             [](QWidget* parent) -> QWidget* { return new QXImagePage(parent); }})
