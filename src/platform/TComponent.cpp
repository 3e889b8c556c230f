#include "TComponent.h"

#include "Dialogs.h"
#include "SysUtils.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTimer>

TComponentBase::TComponentBase() = default;

TComponentBase::~TComponentBase() = default;

void TComponentBase::SetDesigning(bool value) {
    if (value)
        m_state.Include(csDesigning);
    else
        m_state.Exclude(csDesigning);
}

void TComponentBase::EndLoading() {
    if (!m_state.Contains(csLoading))
        return;
    m_state.Exclude(csLoading);
    Loaded();
}

void TComponentBase::FreeNotification(QObject* other) {
    if (!other)
        return;
    QObject* self = AsObject();
    QObject::connect(other, &QObject::destroyed, self,
                     [this, other]() { Notification(other, opRemove); });
}

void TComponentBase::Loaded() {}

void TComponentBase::Notification(QObject*, TOperation) {}

// ---------------------------------------------------------------------------------------------

TComponent::TComponent(QObject* owner) : QObject(owner) {
    QTimer::singleShot(0, this, [this]() { EndLoading(); });
}

TComponent::~TComponent() = default;

// ---------------------------------------------------------------------------------------------

TControl::TControl(QWidget* parent) : QWidget(parent) {
    m_font.OnChange = [this]() { FontChanged(); };
    SetColor(clBtnFace);
}

TControl::~TControl() = default;

void TControl::SetColor(TColor value) {
    m_color = value;
    QPalette p = palette();
    p.setColor(QPalette::Window, TColorToQColor(value, &p));
    setPalette(p);
    update();
}

void TControl::FontChanged() {
    setFont(m_font.ToQFont());
    update();
}

void TControl::SetDefaultSize(int width, int height) {
    m_defaultSize = QSize(width, height);
    resize(width, height);
}

QSize TControl::sizeHint() const {
    return m_defaultSize.isValid() ? m_defaultSize : QWidget::sizeHint();
}

bool TControl::event(QEvent* e) {
    if (e->type() == QEvent::Polish)
        EndLoading();
    if (e->type() == QEvent::ParentChange && parentWidget()) {
        parentWidget()->installEventFilter(this);
        realign();
    }
    return QWidget::event(e);
}

void TControl::SetAlign(TAlign value) {
    m_align = value;
    if (parentWidget())
        parentWidget()->installEventFilter(this);
    realign();
}

bool TControl::eventFilter(QObject* watched, QEvent* e) {
    if (watched == parentWidget() && e->type() == QEvent::Resize)
        realign();
    return QWidget::eventFilter(watched, e);
}

void TControl::realign() {
    QWidget* p = parentWidget();
    if (!p || m_align == alNone)
        return;
    const QRect area = p->contentsRect();
    switch (m_align) {
    case alTop:
        setGeometry(area.left(), area.top(), area.width(), height());
        break;
    case alBottom:
        setGeometry(area.left(), area.bottom() + 1 - height(), area.width(), height());
        break;
    case alLeft:
        setGeometry(area.left(), area.top(), width(), area.height());
        break;
    case alRight:
        setGeometry(area.right() + 1 - width(), area.top(), width(), area.height());
        break;
    case alClient:
        setGeometry(area);
        break;
    case alNone:
        break;
    }
}

// ---------------------------------------------------------------------------------------------

TGraphicControl::TGraphicControl(QWidget* parent) : TControl(parent) {}

TGraphicControl::~TGraphicControl() = default;

void TGraphicControl::Paint() {}

void TGraphicControl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    m_canvas.SetPalette(palette());
    m_canvas.Font.Assign(*Font());
    m_canvas.Attach(&painter, rect());
    try {
        Paint();
        m_paintError.clear();
    } catch (const Exception& e) {
        // A message box inside a paint event would paint again under it: show it afterwards.
        if (e.Message() != m_paintError) {
            m_paintError = e.Message();
            QTimer::singleShot(0, this, [message = m_paintError]() { ShowMessage(message); });
        }
    }
    m_canvas.Detach();
}

TCustomControl::TCustomControl(QWidget* parent) : TGraphicControl(parent) {
    setFocusPolicy(Qt::StrongFocus);
    // A windowed control erases its background with Color; a graphic control lets its parent
    // show through.
    setAutoFillBackground(true);
}

TCustomControl::~TCustomControl() = default;
