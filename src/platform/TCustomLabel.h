#pragma once

#include "QXExport.h"
#include "TAlignment.h"
#include "TComponent.h"

#include <QColor>
#include <QObject>
#include <QString>

// A label as the framework draws it: Color behind the text unless Transparent, the caption in
// Font lined up by Alignment and broken at words when WordWrap is on; a disabled label shows
// its text engraved. While AutoSize is on the label takes the size of its text (a right-aligned
// label keeps its right edge), whenever the caption, the font or the wrapping changes.
class QXT_EXPORT TCustomLabel : public TGraphicControl {
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(TAlignmentEnums::TAlignment Alignment READ Alignment WRITE SetAlignment)
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize)
    Q_PROPERTY(bool ShowAccelChar READ ShowAccelChar WRITE SetShowAccelChar)
    Q_PROPERTY(bool Transparent READ Transparent WRITE SetTransparent)
    Q_PROPERTY(bool WordWrap READ WordWrap WRITE SetWordWrap)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)

public:
    // An empty left-justified label of 65 x 17 pixels that sizes itself to its caption.
    explicit TCustomLabel(QWidget* parent = nullptr);
    ~TCustomLabel() override;

    // The text shown.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // Where the lines of the caption line up (left by default).
    TAlignment Alignment() const { return m_alignment; }
    void SetAlignment(TAlignment Value);
    // Sizes the label to its text (on by default).
    bool AutoSize() const { return m_autoSize; }
    void SetAutoSize(bool Value);
    // "&" underlines the next character instead of showing itself (on by default).
    bool ShowAccelChar() const { return m_showAccelChar; }
    void SetShowAccelChar(bool Value);
    // Lets whatever is behind the label show around the text (off by default).
    bool Transparent() const { return m_transparent; }
    void SetTransparent(bool Value);
    // Breaks the caption at words to fit the width (off by default).
    bool WordWrap() const { return m_wordWrap; }
    void SetWordWrap(bool Value);

protected:
    void Paint() override;
    void FontChanged() override;
    // Repaints when enabled or disabled (disabled text is engraved).
    void changeEvent(QEvent* e) override;
    // Gives the label the size of its text while AutoSize is on.
    virtual void AdjustBounds();
    // Draws the caption into r on the paint canvas in Font, or with DT_CALCRECT only measures
    // it into r (an empty caption measures as one blank).
    void DoDrawText(TRect& r, unsigned flags);

private:
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    QString m_caption;
    TAlignment m_alignment = taLeftJustify;
    bool m_autoSize = true;
    bool m_showAccelChar = true;
    bool m_transparent = false;
    bool m_wordWrap = false;
};
