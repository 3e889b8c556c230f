#include "Application.h"

#include "THintWindow_p.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

QCursor CursorToQCursor(TCursor cursor) {
    switch (cursor) {
    case crNone:
        return QCursor(Qt::BlankCursor);
    case crCross:
        return QCursor(Qt::CrossCursor);
    case crIBeam:
        return QCursor(Qt::IBeamCursor);
    case crSizeNESW:
        return QCursor(Qt::SizeBDiagCursor);
    case crSizeNS:
        return QCursor(Qt::SizeVerCursor);
    case crSizeNWSE:
        return QCursor(Qt::SizeFDiagCursor);
    case crSizeWE:
        return QCursor(Qt::SizeHorCursor);
    case crUpArrow:
        return QCursor(Qt::UpArrowCursor);
    case crHourGlass:
    case crSQLWait:
        return QCursor(Qt::WaitCursor);
    case crDrag:
    case crMultiDrag:
        return QCursor(Qt::DragCopyCursor);
    case crNoDrop:
    case crNo:
        return QCursor(Qt::ForbiddenCursor);
    case crHSplit:
        return QCursor(Qt::SplitHCursor);
    case crVSplit:
        return QCursor(Qt::SplitVCursor);
    case crAppStart:
        return QCursor(Qt::BusyCursor);
    case crHelp:
        return QCursor(Qt::WhatsThisCursor);
    case crHandPoint:
        return QCursor(Qt::PointingHandCursor);
    case crSizeAll:
        return QCursor(Qt::SizeAllCursor);
    default:
        return QCursor(Qt::ArrowCursor);
    }
}

TApplication::TApplication() : QObject(QCoreApplication::instance()) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            [this]() { m_terminated = true; });
}

void TApplication::ProcessMessages() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

bool TEventBudget::Spend() {
    if (m_clock.isValid() && !m_clock.hasExpired(kIntervalMs))
        return false;
    TApplication::ProcessMessages();
    m_clock.start();
    return true;
}

QString TApplication::ExeName() {
    return QCoreApplication::applicationFilePath();
}

QObject* TApplication::Owner() {
    return QCoreApplication::instance();
}

THintManager* TApplication::hints() {
    if (!m_hints)
        m_hints = new THintManager(this);
    return m_hints;
}

void TApplication::SetShowHint(bool value) {
    if (value == m_showHint)
        return;
    m_showHint = value;
    if (value)
        hints()->RecreateWindow(m_hintWindowClass);
    else
        hints()->DestroyWindow();
}

void TApplication::SetHintPause(int value) {
    m_hintPause = value;
}

void TApplication::SetHintShortPause(int value) {
    m_hintShortPause = value;
}

void TApplication::SetHintHidePause(int value) {
    m_hintHidePause = value;
}

THintWindow* TApplication::HintWindow() const {
    return m_hints ? m_hints->Window() : nullptr;
}

void TApplication::ActivateHint(const QPoint& cursorPos) {
    if (m_showHint)
        hints()->ActivateHint(cursorPos);
}

void TApplication::CancelHint() {
    if (m_hints)
        m_hints->CancelHint();
}

TApplication* Application() {
    static TApplication* app = nullptr;
    if (!app)
        app = new TApplication;
    return app;
}

void TScreen::SetCursor(TCursor cursor) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        m_cursor = cursor;
        return;
    }
    if (cursor == crDefault) {
        while (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
    } else if (m_cursor == crDefault || !QGuiApplication::overrideCursor()) {
        QGuiApplication::setOverrideCursor(CursorToQCursor(cursor));
    } else {
        QGuiApplication::changeOverrideCursor(CursorToQCursor(cursor));
    }
    m_cursor = cursor;
}

QStringList TScreen::Fonts() const {
    QStringList fonts = QFontDatabase::families();
    fonts.sort(Qt::CaseInsensitive);
    return fonts;
}

int TScreen::Width() const {
    const QScreen* s = QGuiApplication::primaryScreen();
    return s ? s->geometry().width() : 0;
}

int TScreen::Height() const {
    const QScreen* s = QGuiApplication::primaryScreen();
    return s ? s->geometry().height() : 0;
}

TScreen* Screen() {
    static TScreen screen;
    return &screen;
}
