#pragma once

#include "Qxhint.h"

#include <QImage>
#include <QString>

// Where a bubble goes and what it holds.
struct TQXHintLayout {
    // The window in global coordinates: balloon plus shadow.
    TRect Window;
    // The side taken.
    THintPosition Position = hpAboveRight;
    // The text's rectangle inside the window.
    TRect Text;
};

// Places a bubble for text of textWidth x textHeight at the pointer: QXH_HintPosition's side,
// mirrored where the screen ends, and kept on screen.
QXT_EXPORT TQXHintLayout QXHLayoutHint(TPoint cursor, int textWidth, int textHeight,
                                       const TRect& screen);
// The text as the bubble shows it: "^M" breaks the line.
QXT_EXPORT QString QXHHintText(const QString& hint);
// Measures text with QXH_Font wrapped at QXH_DefaultWidth.
QXT_EXPORT TRect QXHMeasure(const QString& text);
// Lays the shadow, the balloon and the text onto bak, which holds what is behind the hint.
// With alphaShadow bak is transparent and the shadow is drawn as a soft alpha shadow instead
// of darkening the background.
QXT_EXPORT void QXHCompose(TBitmap* bak, const TQXHintLayout& layout, const QString& text,
                           bool alphaShadow);
