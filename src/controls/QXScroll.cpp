#include "QXScroll.h"

#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"

#include <cstdlib>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXScrollText>());

constexpr int shortestTick = 20;
// Where a text with a negative interval starts, from the left edge.
constexpr int negativeStartX = 10;

} // namespace

TQXScrollText::TQXScrollText(QWidget* parent)
    : TGraphicControl(parent), TQXAboutCarrier(QXScrollTextVersion) {
    SetDefaultSize(75, 50);
    setAccessibleName(QStringLiteral("Laufschrift"));
    setAccessibleDescription(QStringLiteral("Text, der durch das Feld läuft"));
    m_timer = new TTimer(this);
    m_timer->OnTimer = [this](QObject* sender) { QXOnTime(sender); };
    SetInterval(0);
}

TQXScrollText::~TQXScrollText() = default;

void TQXScrollText::SetCaption(const QString& Value) {
    m_caption = Value;
    if (m_autoScroll) {
        Canvas()->Font.Assign(*Font());
        const bool fits = Canvas()->TextWidth(m_caption) + 10 <= Width();
        m_posX = 0;
        m_posY = 0;
        m_timer->SetEnabled(!fits);
    }
    Invalidate();
}

void TQXScrollText::SetInterval(int Value) {
    if (Value == 0) {
        m_posX = 0;
        m_posY = 0;
    } else if (Value < 0) {
        m_posX = negativeStartX;
        m_posY = 0;
    }
    if (Value > 0 && Value < shortestTick)
        Value = shortestTick;
    else if (Value < 0 && Value > -shortestTick)
        Value = -shortestTick;
    m_interval = Value;
    m_timer->SetInterval(std::abs(Value));
    if (Value > 0) {
        m_posX = Width();
        m_posY = Height();
    }
    m_timer->SetEnabled(Value != 0);
    Invalidate();
}

void TQXScrollText::SetScrollHorizontal(bool Value) {
    m_scrollHorizontal = Value;
    m_posX = 0;
    m_posY = 0;
    Invalidate();
}

void TQXScrollText::SetShadow(bool Value) {
    m_shadow = Value;
    Invalidate();
}

void TQXScrollText::SetShadowColor(TColor Value) {
    m_shadowColor = Value;
    Invalidate();
}

void TQXScrollText::SetShadowDepth(int Value) {
    qxtMinMaxInteger(Value, 1, 50);
    m_shadowDepth = Value;
    Invalidate();
}

void TQXScrollText::QXOnTime(QObject*) {
    if (OnScroll)
        OnScroll(this);
    TCanvas* canvas = Canvas();
    canvas->Font.Assign(*Font());
    if (m_scrollHorizontal)
        m_posX -= m_steps ? m_steps : canvas->TextWidth(QStringLiteral("X"));
    else
        m_posY -= m_steps ? m_steps : canvas->TextHeight(QStringLiteral("X"));
    // The timer rests while the frame is drawn, so a slow frame cannot pile up ticks.
    const bool running = m_timer->Enabled();
    m_timer->SetEnabled(false);
    PaintBMP();
    m_timer->SetEnabled(running);
}

QString TQXScrollText::verticalText() const {
    QString s = m_caption;
    qxtReplaceString(s, QStringLiteral("^M"), QStringLiteral("\n\r"));
    return s;
}

void TQXScrollText::compose() {
    if (m_frame.size() != size())
        m_frame = QImage(size(), QImage::Format_RGB32);
    if (m_frame.isNull())
        return;
    TCanvas canvas(&m_frame);
    canvas.SetPalette(palette());
    canvas.Brush.Color = Color();
    canvas.Brush.Style = bsSolid;
    canvas.FillRect(ClientRect());
    canvas.Font.Assign(*Font());

    if (m_scrollHorizontal) {
        m_posY = (Height() - canvas.TextHeight(m_caption)) / 2;
        if (m_posX < -canvas.TextWidth(m_caption)) {
            m_posX = Width();
            if (OnStartText)
                OnStartText(this);
        }
        if (m_shadow) {
            canvas.SetBkMode(TRANSPARENT);
            canvas.Font.SetColor(m_shadowColor);
            canvas.TextOut(m_posX + m_shadowDepth, m_posY + m_shadowDepth, m_caption);
            canvas.Font.Assign(*Font());
        }
        canvas.TextOut(m_posX, m_posY, m_caption);
        return;
    }

    const QString text = verticalText();
    TRect r = {0, 0, Width(), Height()};
    canvas.DrawText(text, r, DT_CALCRECT | DT_WORDBREAK | DT_CENTER);
    m_posX = (Width() - r.Width()) / 2;
    OffsetRect(r, m_posX - r.Left, m_posY - r.Top);
    if (m_posY < -r.Height()) {
        m_posY = Height();
        if (OnStartText)
            OnStartText(this);
    }
    if (m_shadow) {
        canvas.SetBkMode(TRANSPARENT);
        canvas.Font.SetColor(m_shadowColor);
        OffsetRect(r, m_shadowDepth, m_shadowDepth);
        canvas.DrawText(text, r, DT_CENTER | DT_WORDBREAK);
        OffsetRect(r, -m_shadowDepth, -m_shadowDepth);
        canvas.Font.Assign(*Font());
    }
    canvas.DrawText(text, r, DT_CENTER | DT_WORDBREAK);
}

void TQXScrollText::PaintBMP() {
    if (!Visible() && !ComponentState().Contains(csDesigning))
        return;
    compose();
    // Inside a paint the frame goes straight onto the control; a tick asks for a paint.
    if (Canvas()->IsDrawable())
        Canvas()->DrawImage(ClientRect(), m_frame);
    else
        update();
}

void TQXScrollText::Paint() {
    PaintBMP();
}

void QXScroll::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXScrollText");
}
