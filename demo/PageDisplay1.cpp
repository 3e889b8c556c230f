// The first display sections: the LCD panel, the dot-matrix marquee and box gauges driven by
// a slider, with a simulated level meter.
#include "DemoControls.h"
#include "DemoPage.h"

#include "QXGauge.h"
#include "Qxdotpan.h"
#include "Qxlcdpan.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSlider>
#include <QSpinBox>
#include <QTime>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// Holds a control that chooses its own size (outside any layout) and asks the page's layout
// for exactly that room.
class Stage : public QWidget {
public:
    explicit Stage(QWidget* control) : m_control(control) {
        control->setParent(this);
        control->move(0, 0);
        control->installEventFilter(this);
    }
    QSize sizeHint() const override { return m_control->size(); }
    QSize minimumSizeHint() const override { return m_control->size(); }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (watched == m_control && e->type() == QEvent::Resize)
            updateGeometry();
        return QWidget::eventFilter(watched, e);
    }

private:
    QWidget* m_control;
};

using qxdemo::colourButton;
using qxdemo::spin;

class LCDPage : public QWidget {
public:
    explicit LCDPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        m_lcd = new TQXLCDPanel;
        layout->addWidget(new Stage(m_lcd));
        auto* text = new QPlainTextEdit(QStringLiteral("QXTools 3.0\nLCD panel 15 segments"));
        text->setMaximumHeight(60);
        layout->addWidget(text);
        auto* options = new QHBoxLayout;
        auto* columns = spin(QStringLiteral("Columns "), 1, 40, 20);
        auto* rows = spin(QStringLiteral("Rows "), 1, 8, 2);
        auto* clock = new QCheckBox(QStringLiteral("Clock"));
        options->addWidget(columns);
        options->addWidget(rows);
        options->addWidget(colourButton(QStringLiteral("Lit"), m_lcd->LCDHiColor(),
                                        [this](TColor c) { m_lcd->SetLCDHiColor(c); }));
        options->addWidget(colourButton(QStringLiteral("Unlit"), m_lcd->LCDLoColor(),
                                        [this](TColor c) { m_lcd->SetLCDLoColor(c); }));
        options->addWidget(colourButton(QStringLiteral("Background"), m_lcd->Color(),
                                        [this](TColor c) { m_lcd->SetColor(c); }));
        options->addWidget(clock);
        options->addStretch(1);
        layout->addLayout(options);

        auto fit = [this, columns, rows]() {
            m_lcd->SetColumns(std::uint8_t(columns->value()));
            m_lcd->SetRows(std::uint8_t(rows->value()));
            m_lcd->SetBounds(0, 0, columns->value() * 30, rows->value() * 40);
        };
        connect(columns, &QSpinBox::valueChanged, this, fit);
        connect(rows, &QSpinBox::valueChanged, this, fit);
        connect(text, &QPlainTextEdit::textChanged, this,
                [this, text]() { m_lcd->Items()->SetText(text->toPlainText()); });
        auto* tick = new QTimer(this);
        connect(tick, &QTimer::timeout, this, [this]() {
            m_lcd->SetCaption(QTime::currentTime().toString(QStringLiteral("hh:mm:ss")));
        });
        connect(clock, &QCheckBox::toggled, this, [tick, text](bool on) {
            if (on) {
                tick->start(1000);
            } else {
                tick->stop();
                emit text->textChanged();
            }
        });
        fit();
        m_lcd->Items()->SetText(text->toPlainText());
    }

private:
    TQXLCDPanel* m_lcd = nullptr;
};

class DOTPage : public QWidget {
public:
    explicit DOTPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        m_dot = new TQXDOTPanel;
        m_dot->EndLoading();
        layout->addWidget(new Stage(m_dot));
        auto* text = new QLineEdit(QStringLiteral("Welcome to QXTools: dot-matrix marquee "
                                                  "with 64 characters - 0123456789 +-*/ ?!"));
        layout->addWidget(text);
        auto* options = new QHBoxLayout;
        auto* columns = spin(QStringLiteral("Columns "), 1, 40, 30);
        auto* rows = spin(QStringLiteral("Rows "), 1, 4, 1);
        auto* interval = spin(QStringLiteral("Interval "), 0, 1000, 30);
        interval->setSuffix(QStringLiteral(" ms"));
        auto* pixels = new QCheckBox(QStringLiteral("By pixels"));
        pixels->setChecked(true);
        options->addWidget(columns);
        options->addWidget(rows);
        options->addWidget(interval);
        options->addWidget(pixels);
        options->addStretch(1);
        layout->addLayout(options);
        auto* colours = new QHBoxLayout;
        colours->addWidget(colourButton(QStringLiteral("Lit"), clLime,
                                        [this](TColor c) { m_dot->SetDOTHiColor(c); }));
        colours->addWidget(colourButton(QStringLiteral("Unlit"), 0x008000,
                                        [this](TColor c) { m_dot->SetDOTLoColor(c); }));
        colours->addWidget(colourButton(QStringLiteral("Background"), clBlack,
                                        [this](TColor c) { m_dot->SetColor(c); }));
        m_passes = new QLabel;
        colours->addWidget(m_passes);
        colours->addStretch(1);
        layout->addLayout(colours);

        connect(columns, &QSpinBox::valueChanged, this,
                [this](int v) { m_dot->SetColumns(std::uint8_t(v)); });
        connect(rows, &QSpinBox::valueChanged, this,
                [this](int v) { m_dot->SetRows(std::uint8_t(v)); });
        connect(interval, &QSpinBox::valueChanged, this, [this](int v) { m_dot->SetInterval(v); });
        connect(pixels, &QCheckBox::toggled, this, [this](bool on) { m_dot->SetScrollChar(!on); });
        connect(text, &QLineEdit::textChanged, this,
                [this](const QString& t) { m_dot->SetCaption(t); });
        m_dot->OnStartText = [this](QObject*) { showPasses(++m_passCount); };
        m_dot->SetColumns(30);
        m_dot->SetScrollChar(false);
        m_dot->SetCaption(text->text());
        m_dot->SetInterval(30);
        // Show the text already running in.
        for (int i = 0; i < 21 * 12; ++i)
            m_dot->QXOnTime();
        showPasses(0);
    }

private:
    void showPasses(int n) { m_passes->setText(QStringLiteral("Passes: %1").arg(n)); }
    TQXDOTPanel* m_dot = nullptr;
    QLabel* m_passes = nullptr;
    int m_passCount = 0;
};

class GaugePage : public QWidget {
public:
    explicit GaugePage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QHBoxLayout(this);
        auto* left = new QVBoxLayout;
        layout->addLayout(left);

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
        layout->addSpacing(24);
        layout->addWidget(m_meter);
        layout->addStretch(1);

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
        options->setColumnStretch(3, 1);
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

QXDEMO_PAGE({qxdemo::Family::Display, QStringLiteral("LCD panel (TQXLCDPanel)"),
             [](QWidget* parent) -> QWidget* { return new LCDPage(parent); }})
QXDEMO_PAGE({qxdemo::Family::Display, QStringLiteral("Dot-matrix panel (TQXDOTPanel)"),
             [](QWidget* parent) -> QWidget* { return new DOTPage(parent); }})
QXDEMO_PAGE({qxdemo::Family::Display, QStringLiteral("Gauge (TQXGauge)"),
             [](QWidget* parent) -> QWidget* { return new GaugePage(parent); }})
