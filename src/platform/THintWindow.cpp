#include "THintWindow.h"

#include "THintWindow_p.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTextDocumentFragment>

namespace {

// The pointer's height below its hot spot; a hint starts beneath it.
constexpr int cursorHeight = 20;

QString plainHint(const QString& tip) {
    return Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip;
}

} // namespace

THintWindow::THintWindow() {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(QStringLiteral("Hinweis"));
}

THintWindow::~THintWindow() = default;

void THintWindow::CreateParams(TCreateParams&) {}

void THintWindow::HandleNeeded() {
    if (m_created)
        return;
    m_created = true;
    CreateParams(m_params);
    setWindowFlags(m_params.Flags);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents,
                 m_params.Flags.testFlag(Qt::WindowTransparentForInput));
    setAttribute(Qt::WA_TranslucentBackground, m_params.Translucent);
    // Paint covers every pixel, so nothing is erased first (no flash of the background).
    setAttribute(Qt::WA_OpaquePaintEvent, !m_params.Translucent);
    setAttribute(Qt::WA_NoSystemBackground, true);
}

TRect THintWindow::CalcHintRect(int maxWidth, const QString& hint) {
    m_canvas.Font.SetQFont(QApplication::font("QToolTip"));
    TRect r{0, 0, maxWidth, 0};
    m_canvas.DrawText(hint, r, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    r.Right += 6;
    r.Bottom += 2;
    if (m_params.Border) {
        r.Right += 2;
        r.Bottom += 2;
    }
    return r;
}

void THintWindow::ActivateHint(const TRect& rect, const QString& hint) {
    HandleNeeded();
    m_caption = hint;
    if (QScreen* screen = QGuiApplication::screenAt(rect.ToQRect().center()))
        setScreen(screen);
    setGeometry(rect.ToQRect());
    if (isVisible()) {
        repaint();
    } else {
        show();
    }
}

bool THintWindow::IsHintMsg(QObject*, QEvent* e) {
    switch (e->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::Wheel:
    case QEvent::ApplicationDeactivate:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

void THintWindow::Paint() {
    TRect r = TRect::FromQRect(rect());
    m_canvas.Brush.Color = m_color;
    m_canvas.Brush.Style = bsSolid;
    m_canvas.FillRect(r);
    if (m_params.Border) {
        m_canvas.Brush.Color = clWindowFrame;
        m_canvas.FrameRect(r);
        InflateRect(r, -1, -1);
    }
    m_canvas.Font.SetQFont(QApplication::font("QToolTip"));
    m_canvas.Font.SetColor(clInfoText);
    m_canvas.SetBkMode(TRANSPARENT);
    InflateRect(r, -2, 0);
    r.Top += 1;
    m_canvas.DrawText(m_caption, r, DT_LEFT | DT_WORDBREAK | DT_NOPREFIX);
}

void THintWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (m_params.Translucent) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    m_canvas.SetPalette(palette());
    m_canvas.Attach(&painter, rect());
    Paint();
    m_canvas.Detach();
}

// ---------------------------------------------------------------------------------------------

THintManager::THintManager(TApplication* app) : QObject(app), m_app(app) {
    m_showTimer.setSingleShot(true);
    m_hideTimer.setSingleShot(true);
    connect(&m_showTimer, &QTimer::timeout, this, [this]() { showDue(); });
    connect(&m_hideTimer, &QTimer::timeout, this, [this]() { hide(); });
    QCoreApplication::instance()->installEventFilter(this);
}

THintManager::~THintManager() = default;

void THintManager::RecreateWindow(const THintWindowClass& windowClass) {
    DestroyWindow();
    if (windowClass.Create)
        m_window.reset(windowClass.Create());
}

void THintManager::DestroyWindow() {
    CancelHint();
    m_control = nullptr;
    m_window.reset();
}

QWidget* THintManager::HintControl(QWidget* w) {
    for (; w; w = w->parentWidget()) {
        if (!w->toolTip().isEmpty())
            return w;
        if (w->isWindow())
            break;
    }
    return nullptr;
}

void THintManager::ActivateHint(const QPoint& cursorPos) {
    QWidget* control = HintControl(QApplication::widgetAt(cursorPos));
    if (!m_window || !control)
        return;
    m_control = control;
    m_showTimer.stop();
    const QString hint = plainHint(control->toolTip());
    const QScreen* screen = QGuiApplication::screenAt(cursorPos);
    const QRect area = screen ? screen->geometry() : QRect(0, 0, 640, 480);
    TRect r = m_window->CalcHintRect(area.width(), hint);
    OffsetRect(r, cursorPos.x(), cursorPos.y() + cursorHeight);
    // Kept on the screen that holds the pointer.
    if (r.Right > area.right() + 1)
        OffsetRect(r, area.right() + 1 - r.Right, 0);
    if (r.Bottom > area.bottom() + 1)
        OffsetRect(r, 0, cursorPos.y() - cursorHeight / 4 - r.Bottom);
    OffsetRect(r, std::max(0, area.left() - r.Left), std::max(0, area.top() - r.Top));
    m_window->ActivateHint(r, hint);
    m_shown = true;
    m_hideTimer.start(m_app->HintHidePause());
}

void THintManager::CancelHint() {
    m_showTimer.stop();
    hide();
}

void THintManager::hide() {
    m_hideTimer.stop();
    m_shown = false;
    if (m_window)
        m_window->hide();
}

void THintManager::showDue() {
    const QPoint pos = QCursor::pos();
    if (m_control && HintControl(QApplication::widgetAt(pos)) == m_control)
        ActivateHint(pos);
}

void THintManager::pointerOver(QWidget* w) {
    QWidget* control = HintControl(w);
    if (control == m_control) {
        // Resting again on the same control brings its hint back; while it is up it stays.
        if (control && !m_shown)
            m_showTimer.start(m_app->HintPause());
        return;
    }
    const bool wasShown = m_shown;
    hide();
    m_control = control;
    if (control)
        m_showTimer.start(wasShown ? m_app->HintShortPause() : m_app->HintPause());
    else
        m_showTimer.stop();
}

bool THintManager::eventFilter(QObject* watched, QEvent* e) {
    if (e->type() == QEvent::ToolTip) {
        // Ours where we have a hint window and the control a hint; Qt's elsewhere (item
        // views' own tips), and none at all while hints are off.
        if (!m_app->ShowHint())
            return true;
        auto* w = qobject_cast<QWidget*>(watched);
        return m_window && w && HintControl(w);
    }
    if (!m_window || !watched->isWidgetType() || watched == m_window.get())
        return false;
    if (m_shown && m_window->IsHintMsg(watched, e)) {
        CancelHint();
        return false;
    }
    switch (e->type()) {
    case QEvent::MouseMove:
        if (static_cast<QMouseEvent*>(e)->buttons() == Qt::NoButton)
            pointerOver(static_cast<QWidget*>(watched));
        break;
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::Wheel:
        m_showTimer.stop();
        break;
    case QEvent::Leave: {
        // Some window systems report a leave when the hint appears over the window's edge;
        // only a pointer that really left the window ends the hint.
        auto* w = static_cast<QWidget*>(watched);
        if (w->isWindow() && !w->rect().contains(w->mapFromGlobal(QCursor::pos()))) {
            CancelHint();
            m_control = nullptr;
        }
        break;
    }
    default:
        break;
    }
    return false;
}
