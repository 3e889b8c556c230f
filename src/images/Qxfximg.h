#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "TComponent.h"
#include "TGraphic.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPixmap>
#include <memory>
#include <vector>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXFxImageEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// How FadeIn and FadeOut show and remove the picture: at once, dissolving in random blocks,
// sliding in from the right over the old content, or pushing the old content out to the left.
enum TFadeStyle { qxfsNONE, qxfsRandom, qxfsFadeLeft, qxfsWipeLeft };
Q_ENUM_NS(TFadeStyle)

} // namespace QXFxImageEnums

using TFadeStyle = QXFxImageEnums::TFadeStyle;
using enum QXFxImageEnums::TFadeStyle;

// A picture that appears and disappears with a transition.
//
// - FadeIn and FadeOut run to the end before they return. Every step is drawn into the
//   control's screen image and shown at once: a random dissolve shows itself at each of its
//   pauses (one per hundredth of the blocks), a slide after every one-pixel step.
// - The dissolve cuts the area into square blocks, growing the block size until the block list
//   fits into 1,000,000 bytes (8 bytes a block). With fewer than 100 blocks its pause interval
//   is 0 and the first block raises EDivByZero; use pictures of at least 10 x 10 pixels.
// - With Center the picture's top-left corner is placed so that the picture is centred; a
//   picture larger than the control gets a negative origin. The origin is taken at each FadeIn
//   and FadeOut.
// - Setting Caption replaces the picture by the text in Font on Color and hides it until the
//   next FadeIn.
// - Between transitions the control shows what the last one left on screen; a change of the
//   picture, colour or size draws it anew: Color, and the picture when it is shown.
//
// Example, a logo dissolving in:
//
//     auto* logo = new TQXFxImage(window);
//     logo->SetPicture(&bitmap);
//     logo->SetFadeStyle(qxfsRandom);
//     logo->FadeIn();
class QXT_EXPORT TQXFxImage : public TGraphicControl, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool Center READ Center WRITE SetCenter)
    Q_PROPERTY(QXFxImageEnums::TFadeStyle FadeStyle READ FadeStyle WRITE SetFadeStyle)
    Q_PROPERTY(QPixmap Picture READ pictureProperty WRITE setPictureProperty)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(QFont Font READ fontProperty WRITE setFontProperty)

public:
    // A 40 x 40 pixel control showing its picture at once, without a transition.
    explicit TQXFxImage(QWidget* parent = nullptr);
    ~TQXFxImage() override;

    // The text last rendered into the picture.
    QString Caption() const { return m_caption; }
    void SetCaption(const QString& Value);
    // Centre the picture in the control (taken at the next transition).
    bool Center() const { return m_center; }
    void SetCenter(bool Value);
    // The transition of FadeIn and FadeOut; qxfsNONE also counts the picture as shown.
    TFadeStyle FadeStyle() const { return m_fadeStyle; }
    void SetFadeStyle(TFadeStyle Value);
    // The picture (a copy of the given bitmap is kept).
    TBitmap* Picture() const { return m_picture.get(); }
    void SetPicture(TBitmap* Value);
    // Repaints with the new background, which FadeOut also paints with.
    void SetColor(TColor Value) override;

    // Shows the picture with the current transition.
    void FadeIn();
    // Removes the picture with the current transition, leaving Color.
    void FadeOut();
    // Makes the picture a copy of itself stretched to the control's size.
    void Stretch();
    // Waits at least Milliseconds without letting events run (the dissolve's pause).
    virtual void Delay(int Milliseconds);
    // Computes origin, block size and block list for the clip area of Canvas.
    void INITPoints(TCanvas* Canvas);
    // Puts the block list in random order.
    void ShufflePoints();

    // The state of the last INITPoints and FadeIn, for inspection.
    int BlockSize() const { return m_blockSize; }
    int Count() const { return m_count; }
    int Step() const { return m_step; }
    int X0() const { return m_x0; }
    int Y0() const { return m_y0; }
    const std::vector<TPoint>& Points() const { return m_points; }
    // Whether a repaint draws the picture.
    bool Shown() const { return m_shown; }
    // What the control shows now.
    const QImage& ScreenImage() const { return m_screen; }

protected:
    void Paint() override;
    // A new size draws the picture anew at the next paint.
    void resizeEvent(QResizeEvent* e) override;

private:
    void redrawScreen();
    void prepareScreen();
    void pause();
    void flush();
    QPixmap pictureProperty() const;
    void setPictureProperty(const QPixmap& value);
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }
    QFont fontProperty() { return Font()->ToQFont(); }
    void setFontProperty(const QFont& f) { Font()->SetQFont(f); }

    std::unique_ptr<TBitmap> m_picture;
    int m_blockSize = 1;
    int m_step = 100;
    std::vector<TPoint> m_points;
    int m_count = 0;
    int m_x0 = 0;
    int m_y0 = 0;
    bool m_shown = true;
    QString m_caption;
    bool m_center = false;
    TFadeStyle m_fadeStyle = qxfsNONE;
    // What the control shows; rebuilt from the state when stale, kept as drawn otherwise.
    QImage m_screen;
    std::unique_ptr<TCanvas> m_screenCanvas;
    bool m_screenStale = true;
};

namespace Qxfximg {
// Puts TQXFxImage on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxfximg
