#include "QXAbout.h"

#include "Dialogs.h"
#include "QxutilText.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

namespace {

// The dialog is laid out at 120 pixels per inch; we place it at 96.
int px(int at120) {
    return at120 * 96 / 120;
}

QFont arialBold(int heightAt120) {
    QFont f(QStringLiteral("Arial"));
    f.setPixelSize(px(heightAt120));
    f.setBold(true);
    return f;
}

QLabel* label(QWidget* parent, int l, int t, int w, int h, int fontHeight, const QString& text) {
    auto* lbl = new QLabel(text, parent);
    lbl->setGeometry(px(l), px(t), px(w), px(h));
    lbl->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    lbl->setFont(arialBold(fontHeight));
    QPalette p = lbl->palette();
    p.setColor(QPalette::WindowText, Qt::black);
    lbl->setPalette(p);
    return lbl;
}

// A panel with a raised inner and a lowered outer bevel, or a plain raised one.
class BevelPanel : public QFrame {
public:
    BevelPanel(QWidget* parent, bool card) : QFrame(parent), m_card(card) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        const QRect r = rect();
        p.fillRect(r, m_card ? QColor(Qt::white) : palette().color(QPalette::Window));
        const QColor light = palette().color(QPalette::Light);
        const QColor dark = palette().color(QPalette::Dark);
        auto bevel = [&](QRect b, const QColor& topLeft, const QColor& bottomRight, int width) {
            for (int i = 0; i < width; ++i) {
                p.setPen(topLeft);
                p.drawLine(b.topLeft(), b.topRight());
                p.drawLine(b.topLeft(), b.bottomLeft());
                p.setPen(bottomRight);
                p.drawLine(b.bottomLeft(), b.bottomRight());
                p.drawLine(b.topRight(), b.bottomRight());
                b.adjust(1, 1, -1, -1);
            }
        };
        if (m_card) {
            bevel(r, dark, light, 1);
            bevel(r.adjusted(1, 1, -1, -1), light, dark, 1);
        } else {
            bevel(r, light, dark, 2);
        }
    }

private:
    bool m_card;
};

} // namespace

QImage QXProgramPicture(int size) {
    QImage img(size, size, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    QLinearGradient bg(0, 0, s, s);
    bg.setColorAt(0, QColor(0x10, 0x30, 0x80));
    bg.setColorAt(1, QColor(0x10, 0x90, 0xA0));
    p.setBrush(bg);
    p.setPen(QPen(QColor(0x08, 0x18, 0x40), s / 40));
    p.drawRoundedRect(QRectF(s * 0.04, s * 0.04, s * 0.92, s * 0.92), s * 0.14, s * 0.14);
    // A segment-style "QX" in the spirit of the package's LCD panel.
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setBold(true);
    f.setPixelSize(int(s * 0.42));
    p.setFont(f);
    p.setPen(QColor(0xFF, 0xD8, 0x40));
    p.drawText(QRectF(0, s * 0.12, s, s * 0.5), Qt::AlignCenter, QStringLiteral("QX"));
    f.setPixelSize(int(s * 0.17));
    p.setFont(f);
    p.setPen(Qt::white);
    p.drawText(QRectF(0, s * 0.62, s, s * 0.25), Qt::AlignCenter, QStringLiteral("Tools"));
    return img;
}

TfrmQXTVersion::TfrmQXTVersion(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmQXTVersion"));
    setWindowTitle(QStringLiteral("QXTools AboutDialog"));
    setWindowIcon(QIcon(QPixmap::fromImage(QXProgramPicture(32))));
    QFont formFont;
    formFont.setPixelSize(px(13));
    setFont(formFont);
    setFixedSize(px(330), px(274));

    Panel1 = new BevelPanel(this, false);
    Panel1->setObjectName(QStringLiteral("Panel1"));
    Panel1->setGeometry(rect());
    Panel = new BevelPanel(Panel1, true);
    Panel->setObjectName(QStringLiteral("Panel"));
    Panel->setGeometry(px(8), px(8), px(313), px(258));

    imgProgramIcon = new QLabel(Panel);
    imgProgramIcon->setObjectName(QStringLiteral("imgProgramIcon"));
    imgProgramIcon->setGeometry(px(8), px(8), px(97), px(97));
    imgProgramIcon->setAlignment(Qt::AlignCenter);
    imgProgramIcon->setScaledContents(true);
    imgProgramIcon->setPixmap(QPixmap::fromImage(QXProgramPicture(px(97))));

    lblQXTVersion = label(Panel, 108, 6, 199, 35, 25, QStringLiteral("QXTools V 3.0"));
    lblQXTVersion->setObjectName(QStringLiteral("lblQXTVersion"));
    lblClassName = label(Panel, 108, 76, 199, 25, 22, QStringLiteral("ClassName"));
    lblClassName->setObjectName(QStringLiteral("lblClassName"));
    lblClassName->setWordWrap(true);
    lblStand = label(Panel, 108, 108, 199, 41, 15, QStringLiteral("Stand :"));
    lblStand->setObjectName(QStringLiteral("lblStand"));
    lblStand->setWordWrap(true);

    btnOKButton = new QPushButton(style()->standardIcon(QStyle::SP_DialogOkButton),
                                  QStringLiteral("OK"), Panel);
    btnOKButton->setObjectName(QStringLiteral("btnOKButton"));
    btnOKButton->setGeometry(px(114), px(219), px(84), px(27));
    QFont buttonFont(QStringLiteral("MS Sans Serif"));
    buttonFont.setPixelSize(px(10));
    buttonFont.setBold(true);
    btnOKButton->setFont(buttonFont);
    btnOKButton->setDefault(true);
    btnOKButton->setFocus();
    connect(btnOKButton, &QPushButton::clicked, this, &QDialog::accept);

    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->geometry().center() - rect().center());
}

TfrmQXTVersion::~TfrmQXTVersion() = default;

TPropertyAttributes TQXAboutProperty::GetAttributes() const {
    return {paDialog};
}

QString TQXAboutProperty::GetValue() const {
    return QStringLiteral("Klick me..");
}

std::unique_ptr<TfrmQXTVersion> TQXAboutProperty::CreateDialog() const {
    auto dlg = std::make_unique<TfrmQXTVersion>();
    dlg->lblQXTVersion->setText(QStringLiteral("QXTools V 3.0d"));
    const QObject* component = GetComponent(0);
    dlg->lblClassName->setText(component ? QString::fromLatin1(component->metaObject()->className())
                                         : QString());
    QString stand = QStringLiteral("Stand : ") + GetStrValue();
    qxtReplaceString(stand, QStringLiteral("^M"), QStringLiteral("\n\r"));
    dlg->lblStand->setText(stand);
    return dlg;
}

void TQXAboutProperty::Edit() {
    ShowModalForm(CreateDialog().get());
}
