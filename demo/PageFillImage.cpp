// The fill image: rainbows with their band count, user bitmaps and the eight patterns.
#include "DemoControls.h"
#include "DemoPage.h"
#include "Qxfimage.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QMetaEnum>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

// The user bitmaps offered for the BITMAP style: a tile, a brush and one too large to draw.
QImage userBitmap(int index) {
    const QSize sizes[] = {{32, 32}, {8, 8}, {300, 20}};
    QImage image(sizes[index], QImage::Format_RGB32);
    QPainter p(&image);
    if (index == 0) {
        // Bricks: two offset rows of mortar-framed stones.
        p.fillRect(image.rect(), QColor(200, 200, 190));
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(170, 70, 50));
        p.drawRect(1, 1, 30, 14);
        p.drawRect(-15, 17, 30, 14);
        p.drawRect(17, 17, 30, 14);
    } else if (index == 1) {
        p.fillRect(image.rect(), QColor(250, 240, 200));
        p.fillRect(0, 0, 4, 4, QColor(200, 120, 40));
        p.fillRect(4, 4, 4, 4, QColor(200, 120, 40));
    } else {
        p.fillRect(image.rect(), Qt::magenta);
    }
    return image;
}

class FillImagePage : public QWidget {
public:
    explicit FillImagePage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        m_style = new QComboBox;
        const QMetaEnum styles = QMetaEnum::fromType<TFStyle>();
        for (int i = 0; i < styles.keyCount(); ++i)
            m_style->addItem(QLatin1String(styles.key(i)), styles.value(i));
        m_steps = qxdemo::spin(QStringLiteral("Bands "), 0, 255, 64);
        m_from = qxdemo::colourButton(QStringLiteral("From"), 0x00FF00,
                                      [this](TColor c) { m_fill->SetRBFromColor(c); });
        m_to = qxdemo::colourButton(QStringLiteral("To"), 0xFFFF00,
                                    [this](TColor c) { m_fill->SetRBToColor(c); });
        m_bitmap = new QComboBox;
        m_bitmap->addItems({QStringLiteral("Bricks 32 × 32 (tiled)"),
                            QStringLiteral("Check 8 × 8 (brush)"),
                            QStringLiteral("300 × 20 (too large: nothing)")});
        for (QWidget* w : {static_cast<QWidget*>(m_style), static_cast<QWidget*>(m_steps),
                           static_cast<QWidget*>(m_from), static_cast<QWidget*>(m_to),
                           static_cast<QWidget*>(m_bitmap)})
            bar->addWidget(w);
        bar->addStretch(1);
        layout->addLayout(bar);

        m_fill = new TQXFillImage(this);
        m_fill->setFixedSize(400, 140);
        layout->addWidget(m_fill);

        connect(m_style, &QComboBox::currentIndexChanged, this, [this]() { apply(); });
        connect(m_steps, &QSpinBox::valueChanged, this, [this]() { apply(); });
        connect(m_bitmap, &QComboBox::currentIndexChanged, this, [this]() { apply(); });
        m_steps->setValue(m_fill->RBSteps());
        m_style->setCurrentIndex(m_style->findData(int(vRAINBOW)));
        apply();
    }

private:
    void apply() {
        const auto style = TFStyle(m_style->currentData().toInt());
        m_fill->SetRBSteps(std::uint8_t(m_steps->value()));
        TBitmap bitmap;
        bitmap.SetImage(userBitmap(std::max(0, m_bitmap->currentIndex())));
        m_fill->SetFillBitmap(&bitmap);
        m_fill->SetFillStyle(style);
        const bool rainbow = style == vRAINBOW || style == hRAINBOW;
        m_steps->setEnabled(rainbow);
        m_from->setEnabled(rainbow);
        m_to->setEnabled(rainbow);
        m_bitmap->setEnabled(style == BITMAP);
    }

    QComboBox* m_style = nullptr;
    QSpinBox* m_steps = nullptr;
    QPushButton* m_from = nullptr;
    QPushButton* m_to = nullptr;
    QComboBox* m_bitmap = nullptr;
    TQXFillImage* m_fill = nullptr;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Images, QStringLiteral("Fill image (TQXFillImage)"),
             [](QWidget* parent) -> QWidget* { return new FillImagePage(parent); }})
