// The effects image: two pictures taking turns with each transition, and a caption.
#include "DemoPage.h"
#include "Qxfximg.h"
#include "SysUtils.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <memory>

namespace {

constexpr int pictureWidth = 360;
constexpr int pictureHeight = 180;

// A day or a night over hills, drawn for the page.
std::unique_ptr<TBitmap> scene(bool night) {
    QImage art(pictureWidth, pictureHeight, QImage::Format_RGB32);
    QPainter p(&art);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, pictureHeight);
    sky.setColorAt(0, night ? QColor(10, 15, 50) : QColor(60, 120, 210));
    sky.setColorAt(1, night ? QColor(60, 40, 110) : QColor(250, 210, 140));
    p.fillRect(art.rect(), sky);
    p.setPen(Qt::NoPen);
    if (night) {
        p.setBrush(QColor(240, 240, 210));
        for (int i = 0; i < 40; ++i)
            p.drawEllipse(QPointF((i * 97) % pictureWidth, (i * 53) % 110), 1.2, 1.2);
        p.drawEllipse(QPoint(280, 45), 22, 22);
        p.setBrush(sky);
        p.drawEllipse(QPoint(291, 38), 20, 20);
    } else {
        p.setBrush(QColor(255, 225, 80));
        p.drawEllipse(QPoint(270, 55), 28, 28);
    }
    p.setBrush(night ? QColor(20, 45, 40) : QColor(40, 130, 70));
    p.drawPolygon(QPolygon({QPoint(0, 180), QPoint(90, 100), QPoint(200, 180)}));
    p.setBrush(night ? QColor(15, 35, 30) : QColor(30, 100, 55));
    p.drawPolygon(QPolygon({QPoint(120, 180), QPoint(250, 120), QPoint(360, 180)}));
    p.end();
    auto bitmap = std::make_unique<TBitmap>();
    bitmap->SetImage(art);
    return bitmap;
}

class FxImagePage : public QWidget {
public:
    explicit FxImagePage(QWidget* parent) : QWidget(parent), m_scenes{scene(false), scene(true)} {
        auto* layout = new QVBoxLayout(this);
        m_fx = new TQXFxImage(this);
        m_fx->setFixedSize(pictureWidth, pictureHeight);
        m_fx->SetColor(0x202020);
        m_fx->SetPicture(m_scenes[0].get());
        layout->addWidget(m_fx);

        auto* bar = new QHBoxLayout;
        const std::array<std::pair<const char*, TFadeStyle>, 4> styles = {{
            {"Random dissolve", qxfsRandom},
            {"Slide in", qxfsFadeLeft},
            {"Wipe", qxfsWipeLeft},
            {"At once", qxfsNONE},
        }};
        for (const auto& [text, style] : styles) {
            auto* button = new QPushButton(QLatin1String(text));
            connect(button, &QPushButton::clicked, this, [this, s = style]() { next(s); });
            bar->addWidget(button);
        }
        auto* caption = new QPushButton(QStringLiteral("Caption"));
        connect(caption, &QPushButton::clicked, this, [this]() { showCaption(); });
        bar->addWidget(caption);
        auto* tiny = new QPushButton(QStringLiteral("5 × 5 dissolve"));
        tiny->setToolTip(QStringLiteral("Fewer than 100 blocks: the dissolve fails"));
        connect(tiny, &QPushButton::clicked, this, [this]() { tinyDissolve(); });
        bar->addWidget(tiny);
        bar->addStretch(1);
        layout->addLayout(bar);
        m_status = new QLabel(QStringLiteral("Each button takes the picture out with its "
                                             "transition and brings the other one in."));
        layout->addWidget(m_status);
    }

private:
    // Runs f; a failed transition is reported on the page instead of ending the program.
    template <typename F> void guarded(F f) {
        try {
            f();
        } catch (const Exception& e) {
            m_status->setText(QStringLiteral("Transition failed: %1").arg(e.Message()));
        }
    }

    void next(TFadeStyle style) {
        guarded([&]() {
            m_fx->SetFadeStyle(style);
            m_fx->FadeOut();
            m_current = 1 - m_current;
            m_fx->SetPicture(m_scenes[std::size_t(m_current)].get());
            m_fx->FadeIn();
            m_status->setText(QStringLiteral("%1 blocks of %2 × %2 pixels")
                                  .arg(m_fx->Count())
                                  .arg(m_fx->BlockSize()));
        });
    }

    void showCaption() {
        guarded([&]() {
            m_fx->SetFadeStyle(qxfsFadeLeft);
            m_fx->FadeOut();
            m_fx->Font()->SetQFont(QFont(QStringLiteral("Sans"), 28, QFont::Bold));
            m_fx->Font()->SetColor(0x40D0FF);
            m_fx->SetCaption(QStringLiteral("QXTools"));
            m_fx->SetCenter(true);
            m_fx->FadeIn();
            m_fx->SetCenter(false);
        });
    }

    void tinyDissolve() {
        guarded([&]() {
            TBitmap tiny(5, 5);
            m_fx->SetFadeStyle(qxfsNONE);
            m_fx->FadeOut();
            m_fx->SetPicture(&tiny);
            m_fx->SetFadeStyle(qxfsRandom);
            m_fx->FadeIn();
        });
    }

    std::array<std::unique_ptr<TBitmap>, 2> m_scenes;
    int m_current = 0;
    TQXFxImage* m_fx = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Images, QStringLiteral("Effects image (TQXFxImage)"),
             [](QWidget* parent) -> QWidget* { return new FxImagePage(parent); }})
