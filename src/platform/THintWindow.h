#pragma once

#include "Application.h"
#include "QXExport.h"
#include "TCanvas.h"
#include "TColor.h"
#include "TTypes.h"

#include <QString>
#include <QWidget>

// What a hint window is made with, read once before it is first shown.
struct TCreateParams {
    // A pop-up that never takes the focus nor the mouse (a disabled pop-up window).
    Qt::WindowFlags Flags = Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus |
                            Qt::WindowTransparentForInput;
    // A one-pixel frame around the hint.
    bool Border = true;
    // The window keeps the alpha of what Paint draws (needs a compositing window system).
    bool Translucent = false;
};

// The window hints show in. The application makes one from its HintWindowClass, sizes it with
// CalcHintRect, shows it with ActivateHint and asks IsHintMsg about every event while it is
// up. Showing it never takes the focus from the application.
class QXT_EXPORT THintWindow : public QWidget {
    Q_OBJECT
public:
    THintWindow();
    ~THintWindow() override;
    // The rectangle at (0, 0) the hint needs when wrapped at maxWidth.
    virtual TRect CalcHintRect(int maxWidth, const QString& hint);
    // Shows hint on rect (global coordinates), painted before it appears.
    virtual void ActivateHint(const TRect& rect, const QString& hint);
    // True when e, seen anywhere in the application while the hint is up, ends the hint: a key,
    // a mouse button, the wheel, or the application losing the focus.
    virtual bool IsHintMsg(QObject* watched, QEvent* e);
    // The text shown.
    QString Caption() const { return m_caption; }
    // The background Paint fills first.
    TColor Color() const { return m_color; }
    void SetColor(TColor value) { m_color = value; }
    // Valid during Paint.
    TCanvas* Canvas() { return &m_canvas; }
    // The parameters the window was made with.
    const TCreateParams& Params() const { return m_params; }

protected:
    // Fills in the parameters the window is made with; derived windows change them.
    virtual void CreateParams(TCreateParams& params);
    // Makes the window from CreateParams once, before it is first shown.
    void HandleNeeded();
    // The text on Color inside the frame.
    virtual void Paint();
    // Runs Paint() with the canvas on the window.
    void paintEvent(QPaintEvent* e) override;

private:
    TCanvas m_canvas;
    TCreateParams m_params;
    QString m_caption;
    TColor m_color = clInfoBk;
    bool m_created = false;
};

template <typename T> THintWindowClass HintWindowClassOf() {
    return {T::staticMetaObject.className(), []() -> THintWindow* { return new T; }};
}
