// The first display section: box gauges driven by a slider, with a simulated level meter.
#include "DemoPage.h"

#include "QXGauge.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRandomGenerator>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

namespace {

class GaugePage : public QWidget {
public:
    explicit GaugePage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QHBoxLayout(this);
        auto* left = new QVBoxLayout;
        layout->addLayout(left, 1);

        m_navy = new TQXGauge;
        m_navy->setFixedSize(300, 24);
        m_navy->SetBoxes(20);
        m_green = new TQXGauge;
        m_green->setFixedSize(300, 24);
        m_green->SetBoxColor(clGreen);
        m_green->SetBoxes(20);
        m_meter = new TQXGauge;
        m_meter->SetKind(qxgVertical);
        m_meter->setFixedSize(26, 150);
        m_meter->SetBoxColor(clGreen);
        m_meter->SetBoxes(15);
        m_meter->SetBoxPreview(false);
        layout->addWidget(m_meter);

        auto* slider = new QSlider(Qt::Horizontal);
        slider->setRange(0, 100);
        left->addWidget(new QLabel(QStringLiteral("Navy gauge (holds its value)")));
        left->addWidget(m_navy);
        left->addWidget(
            new QLabel(QStringLiteral("Green gauge (a level meter: falls back by itself)")));
        left->addWidget(m_green);
        left->addWidget(slider);

        auto* options = new QGridLayout;
        auto* boxes = new QSpinBox;
        boxes->setRange(1, 60);
        boxes->setValue(20);
        boxes->setPrefix(QStringLiteral("Boxes "));
        auto* preview = new QCheckBox(QStringLiteral("Box preview"));
        preview->setChecked(true);
        auto* peak = new QCheckBox(QStringLiteral("Peak hold"));
        peak->setChecked(true);
        auto* enabled = new QCheckBox(QStringLiteral("Enabled"));
        enabled->setChecked(true);
        auto* signal = new QCheckBox(QStringLiteral("Feed the vertical meter a signal"));
        signal->setChecked(true);
        options->addWidget(boxes, 0, 0);
        options->addWidget(preview, 0, 1);
        options->addWidget(peak, 0, 2);
        options->addWidget(enabled, 1, 0);
        options->addWidget(signal, 1, 1, 1, 2);
        left->addLayout(options);
        left->addStretch(1);

        connect(slider, &QSlider::valueChanged, this, [this](int value) {
            m_navy->SetProgress(value);
            m_green->SetProgress(value);
        });
        connect(boxes, &QSpinBox::valueChanged, this, [this](int value) {
            m_navy->SetBoxes(std::uint8_t(value));
            m_green->SetBoxes(std::uint8_t(value));
        });
        connect(preview, &QCheckBox::toggled, this, [this](bool on) {
            m_navy->SetBoxPreview(on);
            m_green->SetBoxPreview(on);
        });
        connect(peak, &QCheckBox::toggled, this, [this](bool on) {
            for (TQXGauge* g : {m_navy, m_green, m_meter})
                g->SetShowPeak(on);
        });
        connect(enabled, &QCheckBox::toggled, this, [this](bool on) {
            for (TQXGauge* g : {m_navy, m_green, m_meter})
                g->setEnabled(on);
        });
        // Beats of a drum: a jump now and then, the meter's own decay does the rest.
        auto* beat = new QTimer(this);
        connect(beat, &QTimer::timeout, this, [this] {
            if (QRandomGenerator::global()->bounded(3) == 0)
                m_meter->SetProgress(40 + QRandomGenerator::global()->bounded(61));
        });
        connect(signal, &QCheckBox::toggled, beat, [beat](bool on) {
            if (on)
                beat->start(120);
            else
                beat->stop();
        });
        beat->start(120);
        slider->setValue(65);
    }

private:
    TQXGauge* m_navy = nullptr;
    TQXGauge* m_green = nullptr;
    TQXGauge* m_meter = nullptr;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Display, QStringLiteral("Gauge (TQXGauge)"),
             [](QWidget* parent) -> QWidget* { return new GaugePage(parent); }})
