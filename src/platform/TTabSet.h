#pragma once

#include "QXExport.h"
#include "TCanvas.h"
#include "TComponent.h"
#include "TFont.h"
#include "TStrings.h"

#include <QTabBar>
#include <functional>
#include <memory>

enum TTabStyle { tsStandard, tsOwnerDraw };

// Adds to the width measured for a tab's text.
using TMeasureTabEvent = std::function<void(QObject* Sender, int Index, int& TabWidth)>;
// Draws the contents of a tab into R.
using TDrawTabEvent = std::function<void(QObject* Sender, TCanvas* TabCanvas, const TRect& R,
                                         int Index, bool Selected)>;

// The framework's tab set: a row of tabs under a page, one per string of Tabs (each with an
// object pointer). In the owner-drawn style the style draws each tab's outline and DrawTab its
// contents, in a tab as wide as MeasureTab makes it. Every change of the selected tab, by the
// user or by code, calls Click.
class QXT_EXPORT TTabSet : public QTabBar, public TComponentBase {
    Q_OBJECT
public:
    // A tab set without tabs on parent.
    explicit TTabSet(QWidget* parent = nullptr);
    ~TTabSet() override;
    // The tab set itself.
    QObject* AsObject() override { return this; }
    // The tab set's name (its objectName).
    QString Name() const { return objectName(); }
    void SetName(const QString& name) { setObjectName(name); }
    // The class name as user code spells it.
    QString ClassName() const { return QString::fromLatin1(metaObject()->className()); }

    // The tab texts and their objects; the tabs follow every change.
    TStrings* Tabs() const { return m_tabs.get(); }
    // Copies the strings and objects of value.
    void SetTabs(TStrings* value);
    // The selected tab, -1 when there is none.
    int TabIndex() const { return currentIndex(); }
    void SetTabIndex(int value);
    // Standard tabs, or tabs measured and drawn by MeasureTab and DrawTab.
    TTabStyle TabStyle() const { return m_tabStyle; }
    void SetTabStyle(TTabStyle value);
    // The font with its colour.
    TFont* Font() { return &m_font; }

    // The selected tab changed.
    TNotifyEvent OnClick;
    // Called by the default MeasureTab and DrawTab.
    TMeasureTabEvent OnMeasureTab;
    // Draws an owner-drawn tab when assigned.
    TDrawTabEvent OnDrawTab;

protected:
    // Owner-drawn style: TabWidth comes in as the width of the tab's text.
    virtual void MeasureTab(int Index, int& TabWidth);
    // Owner-drawn style: draws the contents of tab Index into R (the part of the tab that is
    // TabWidth wide, centred).
    virtual void DrawTab(TCanvas* TabCanvas, const TRect& R, int Index, bool Selected);
    // The selected tab changed: calls OnClick.
    virtual void Click();
    // A tab as wide as its text, or as MeasureTab says for owner-drawn tabs.
    QSize tabSizeHint(int index) const override;
    // Paints the tabs, the owner-drawn ones through DrawTab.
    void paintEvent(QPaintEvent* e) override;
    // Ends loading at the first polish.
    bool event(QEvent* e) override;

private:
    void syncTabs();
    int contentWidth(int index) const;

    std::unique_ptr<TStringList> m_tabs;
    TCanvas m_canvas;
    TFont m_font;
    TTabStyle m_tabStyle = tsStandard;
    bool m_syncing = false;
};
