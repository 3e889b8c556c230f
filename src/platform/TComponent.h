#pragma once

#include "QXExport.h"
#include "TCanvas.h"
#include "TColor.h"
#include "TFont.h"
#include "TSet.h"

#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

enum TComponentStateFlag { csLoading, csReading, csWriting, csDestroying, csDesigning };
using TComponentState = TSet<TComponentStateFlag>;
enum TOperation { opInsert, opRemove };
// Where a control keeps itself in its parent: nowhere special, along a side, or filling it.
enum TAlign { alNone, alTop, alBottom, alLeft, alRight, alClient };

// An event handler that only learns who sent it.
using TNotifyEvent = std::function<void(QObject* Sender)>;

// What components and controls share beside their Qt base: the component state, the loading
// phase ending in Loaded(), and notifications about referenced components going away.
class QXT_EXPORT TComponentBase {
public:
    // Frees the component.
    virtual ~TComponentBase();
    // csLoading until loading ends; csDesigning inside Designer.
    TComponentState ComponentState() const { return m_state; }
    // Set by the Designer plugin on the instances it places on a form.
    void SetDesigning(bool value);
    // Ends the loading phase now (once): clears csLoading and calls Loaded().
    void EndLoading();
    // Asks for Notification(other, opRemove) when other is destroyed.
    void FreeNotification(QObject* other);
    // The object the component is (its QObject side).
    virtual QObject* AsObject() = 0;

protected:
    // Starts in the loading phase.
    TComponentBase();
    // Runs once after the properties have been set (the end of the loading phase).
    virtual void Loaded();
    // Tells that a component this one refers to is going away (opRemove).
    virtual void Notification(QObject* component, TOperation operation);

private:
    TComponentState m_state{csLoading};
};

// A non-visual component. Owner = Qt parent, Name = objectName. The loading phase ends at the
// first turn of the event loop, or earlier through EndLoading().
class QXT_EXPORT TComponent : public QObject, public TComponentBase {
    Q_OBJECT
public:
    // A component owned (and deleted) by owner.
    explicit TComponent(QObject* owner = nullptr);
    ~TComponent() override;
    // The component's name (its objectName).
    QString Name() const { return objectName(); }
    void SetName(const QString& name) { setObjectName(name); }
    // The owner, which deletes the component with itself.
    QObject* Owner() const { return parent(); }
    // The class name as user code spells it ("TQXCopy").
    QString ClassName() const { return QString::fromLatin1(metaObject()->className()); }
    // The component itself.
    QObject* AsObject() override { return this; }
    // Free-form value for the application.
    int Tag() const { return m_tag; }
    void SetTag(int value) { m_tag = value; }

private:
    int m_tag = 0;
};

// A visual control: geometry, colour and font in the framework's terms. The loading phase
// ends at the first polish (just before the control is first shown).
class QXT_EXPORT TControl : public QWidget, public TComponentBase {
    Q_OBJECT
public:
    // A control on parent, in clBtnFace.
    explicit TControl(QWidget* parent = nullptr);
    ~TControl() override;
    // The control's name (its objectName).
    QString Name() const { return objectName(); }
    void SetName(const QString& name) { setObjectName(name); }
    // The class name as user code spells it ("TQXGauge").
    QString ClassName() const { return QString::fromLatin1(metaObject()->className()); }
    // The control itself.
    QObject* AsObject() override { return this; }

    // The left edge in the parent.
    int Left() const { return x(); }
    // The top edge in the parent.
    int Top() const { return y(); }
    // The width in pixels.
    int Width() const { return width(); }
    // The height in pixels.
    int Height() const { return height(); }
    // Moves the control horizontally.
    virtual void SetLeft(int value) { move(value, y()); }
    // Moves the control vertically.
    virtual void SetTop(int value) { move(x(), value); }
    // Gives the control a new width.
    virtual void SetWidth(int value) { resize(value, height()); }
    // Gives the control a new height.
    virtual void SetHeight(int value) { resize(width(), value); }
    // Moves and sizes the control at once.
    void SetBounds(int left, int top, int width, int height) {
        setGeometry(left, top, width, height);
    }
    // The control's own area, from (0, 0).
    TRect ClientRect() const { return {0, 0, width(), height()}; }
    // The background colour; system colours follow the palette.
    TColor Color() const { return m_color; }
    // Sets the background colour and repaints.
    virtual void SetColor(TColor value);
    // The control's font with its colour.
    TFont* Font() { return &m_font; }
    // Whether the control shows when its parent does.
    bool Visible() const { return isVisibleTo(parentWidget()); }
    void SetVisible(bool value) { setVisible(value); }
    // Where the control keeps itself in its parent; set, it follows the parent's size.
    TAlign Align() const { return m_align; }
    void SetAlign(TAlign value);
    // Free-form value for the application.
    int Tag() const { return m_tag; }
    void SetTag(int value) { m_tag = value; }
    // Schedules a repaint.
    void Invalidate() { update(); }
    // Repaints now.
    void Refresh() { repaint(); }
    // The size the control was created with.
    QSize sizeHint() const override;

protected:
    // The size a new control takes (the framework's constructor defaults).
    void SetDefaultSize(int width, int height);
    // Ends loading at the first polish and follows a new parent for Align.
    bool event(QEvent* e) override;
    // Called when Font changed; gives the widget the font and repaints by default.
    virtual void FontChanged();
    // Keeps the alignment when the parent is resized.
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void realign();
    TColor m_color = clBtnFace;
    TFont m_font;
    TAlign m_align = alNone;
    QSize m_defaultSize{-1, -1};
    int m_tag = 0;
};

// A control that paints itself: Paint() runs inside paintEvent with Canvas drawing on it.
class QXT_EXPORT TGraphicControl : public TControl {
    Q_OBJECT
public:
    // A control on parent that paints through Paint().
    explicit TGraphicControl(QWidget* parent = nullptr);
    ~TGraphicControl() override;
    // Valid during Paint().
    TCanvas* Canvas() { return &m_canvas; }

protected:
    // Draws the control on Canvas; nothing by default.
    virtual void Paint();
    // Runs Paint() with Canvas on the control. An exception from it (a picture that fails to
    // decode) ends that paint and is shown once as a message after the paint, until a paint
    // succeeds again.
    void paintEvent(QPaintEvent* e) override;

private:
    TCanvas m_canvas;
    QString m_paintError;
};

// A windowed control that paints itself and can take the focus.
class QXT_EXPORT TCustomControl : public TGraphicControl {
    Q_OBJECT
public:
    // A control on parent that takes the focus and erases its background with Color.
    explicit TCustomControl(QWidget* parent = nullptr);
    ~TCustomControl() override;
};
