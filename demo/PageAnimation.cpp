// Display section: a star field, a bouncing ball with its hit counters and a blinking button.
#include "DemoPage.h"

#include "QxBlink.h"
#include "Qxbounce.h"
#include "Qxstars.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

class AnimationPage : public QWidget {
public:
    explicit AnimationPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QGridLayout(this);

        auto* stars = new TQXStars;
        stars->setFixedSize(300, 160);
        stars->SetMaxStars(300);
        stars->SetZoom(3);
        stars->SetInterval(40);
        layout->addWidget(new QLabel(QStringLiteral("Star field: 300 stars, zoom 3")), 0, 0);
        layout->addWidget(stars, 1, 0);

        m_bounce = new TQXBounce;
        m_bounce->setFixedSize(300, 160);
        m_bounce->SetColor(clNavy);
        m_bounce->SetStartXSpeed(6);
        m_bounce->SetStartYSpeed(-4);
        m_bounce->SetFriction(40);
        m_bounce->SetInterval(30);
        m_counters = new QLabel;
        m_bounce->OnHitFloor = [this](QObject*) { ++m_floor, showCounters(); };
        m_bounce->OnHitRoof = [this](QObject*) { ++m_roof, showCounters(); };
        m_bounce->OnHitLeftWall = [this](QObject*) { ++m_walls, showCounters(); };
        m_bounce->OnHitRightWall = [this](QObject*) { ++m_walls, showCounters(); };
        m_bounce->OnStop = [this](QObject*) {
            m_stopped = true;
            showCounters();
        };
        auto* throwAgain = new QPushButton(QStringLiteral("Throw again"));
        connect(throwAgain, &QPushButton::clicked, this, [this] {
            m_floor = m_roof = m_walls = 0;
            m_stopped = false;
            showCounters();
            m_bounce->Start();
        });
        showCounters();
        auto* ballColumn = new QVBoxLayout;
        ballColumn->addWidget(m_bounce);
        ballColumn->addWidget(m_counters);
        ballColumn->addWidget(throwAgain, 0, Qt::AlignLeft);
        layout->addWidget(new QLabel(QStringLiteral("Bouncing ball: gravity 1, friction 4 %")), 0,
                          1);
        layout->addLayout(ballColumn, 1, 1, 2, 1);

        auto* button = new QPushButton(QStringLiteral("Achtung!"));
        auto* blinker = new TQXBlinker(this);
        blinker->SetControl(button);
        blinker->SetInterval(500);
        blinker->SetBlink(true);
        auto* blinking = new QCheckBox(QStringLiteral("Blink (yellow and olive every 500 ms)"));
        blinking->setChecked(true);
        connect(blinking, &QCheckBox::toggled, this, [blinker](bool on) { blinker->SetBlink(on); });
        auto* blinkColumn = new QVBoxLayout;
        blinkColumn->addWidget(new QLabel(QStringLiteral("Blinker on a button")));
        blinkColumn->addWidget(button, 0, Qt::AlignLeft);
        blinkColumn->addWidget(blinking);
        layout->addLayout(blinkColumn, 2, 0);
        layout->setColumnStretch(2, 1);
    }

private:
    void showCounters() {
        m_counters->setText(QStringLiteral("Floor %1, roof %2, walls %3%4")
                                .arg(m_floor)
                                .arg(m_roof)
                                .arg(m_walls)
                                .arg(m_stopped ? QStringLiteral(", at rest") : QString()));
    }

    TQXBounce* m_bounce = nullptr;
    QLabel* m_counters = nullptr;
    int m_floor = 0;
    int m_roof = 0;
    int m_walls = 0;
    bool m_stopped = false;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Display,
             QStringLiteral("Star field, bouncing ball, blinker (TQXStars, TQXBounce, "
                            "TQXBlinker)"),
             [](QWidget* parent) -> QWidget* { return new AnimationPage(parent); }})
