#pragma once

#include "Application.h"
#include "THintWindow.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <memory>

// The application's hint machinery: watches the pointer over every widget, waits HintPause,
// shows the hovered control's tooltip in the hint window and takes it down after HintHidePause
// or when the hint window's IsHintMsg says so. Qt's own tooltip events are swallowed where a
// hint of ours is due, and all of them while ShowHint is off.
class THintManager : public QObject {
public:
    explicit THintManager(TApplication* app);
    ~THintManager() override;
    THintWindow* Window() const { return m_window.get(); }
    void RecreateWindow(const THintWindowClass& windowClass);
    void DestroyWindow();
    void ActivateHint(const QPoint& cursorPos);
    void CancelHint();
    // The widget whose tooltip serves w: w or its nearest parent in the window with one.
    static QWidget* HintControl(QWidget* w);

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void pointerOver(QWidget* w);
    void showDue();
    void hide();

    TApplication* m_app;
    std::unique_ptr<THintWindow> m_window;
    QPointer<QWidget> m_control;
    QTimer m_showTimer;
    QTimer m_hideTimer;
    bool m_shown = false;
};
