#pragma once

#include "QXExport.h"
#include "TComponent.h"
#include "TPicture.h"

#include <QImage>

// A picture control like TImage, with three differences:
//
// - Stretch fits the picture into the control keeping its proportions and centres it: the
//   picture's height for the full width (PH * Width div PW) when that fits, else the full
//   height with its width (PW * Height div PH).
// - Whenever the rectangle the picture is drawn into changes, the whole control is first
//   filled with Color, so nothing of a larger earlier picture stays behind.
// - The control counts as opaque when its graphic is not transparent and covers it, stretched
//   or at least as large; a GIF always makes it opaque, whatever its size. A control that is
//   not opaque fills itself with Color before every paint of the picture; an opaque one leaves
//   what it showed before around the picture until the target changes.
//
// The control keeps what it shows in a screen image of its own, so what an opaque paint leaves
// is always its own last picture.
//
// Example, a photo as large as it fits, in its proportions:
//
//     auto* photo = new TQXImage(window);
//     photo->SetStretch(true);
//     photo->Picture()->LoadFromFile(QStringLiteral("urlaub.gif"));
class QXT_EXPORT TQXImage : public TGraphicControl {
    Q_OBJECT
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize)
    Q_PROPERTY(bool Center READ Center WRITE SetCenter)
    Q_PROPERTY(bool IncrementalDisplay READ IncrementalDisplay WRITE SetIncrementalDisplay)
    Q_PROPERTY(bool Stretch READ Stretch WRITE SetStretch)
    Q_PROPERTY(bool Transparent READ Transparent WRITE SetTransparent)

public:
    // A 105 x 105 pixel control without a picture.
    explicit TQXImage(QWidget* parent = nullptr);
    ~TQXImage() override;

    // The picture shown; assigning copies the given one.
    TPicture* Picture() { return &m_picture; }
    void SetPicture(TPicture* Value) { m_picture.Assign(Value); }
    // Sizes the control to the picture.
    bool AutoSize() const { return m_autoSize; }
    void SetAutoSize(bool Value);
    // Centres the picture at its natural size.
    bool Center() const { return m_center; }
    void SetCenter(bool Value);
    // Repaints while a picture loads, as each part of it arrives.
    bool IncrementalDisplay() const { return m_incrementalDisplay; }
    void SetIncrementalDisplay(bool Value) { m_incrementalDisplay = Value; }
    // Fits the picture proportionally and centres it (before Center).
    bool Stretch() const { return m_stretch; }
    void SetStretch(bool Value);
    // Passed on to the picture's graphic (icons keep their own mask).
    bool Transparent() const { return m_transparent; }
    void SetTransparent(bool Value);
    // The canvas of the picture's bitmap; an empty picture first gets a bitmap of the control's
    // size. Raises EInvalidOperation when the picture holds another kind of graphic.
    TCanvas* Canvas();
    // Passed on from the picture while it loads.
    TProgressEvent OnProgress;
    // Whether a paint leaves the surroundings of the picture as they were.
    bool Opaque() const { return m_opaque; }
    // What the control shows now.
    const QImage& ScreenImage() const { return m_screen; }

protected:
    void Paint() override;
    // Where Paint draws the picture; a new rectangle fills the control with Color first.
    TRect DestRect();
    // Runs when the picture changes and from the setters: sizes, sets transparency and opacity.
    void PictureChanged();
    // Follows the loading picture; repaints with IncrementalDisplay when a part is ready.
    void Progress(TPersistent* Sender, TProgressStage Stage, int PercentDone, bool RedrawNow,
                  const TRect& R, const QString& Msg);
    // Takes note of a new palette of the graphic; true when the control should update at once.
    bool DoPaletteChange();

private:
    TPicture m_picture;
    bool m_autoSize = false;
    bool m_stretch = false;
    bool m_center = false;
    bool m_incrementalDisplay = false;
    bool m_transparent = false;
    bool m_drawing = false;
    bool m_opaque = false;
    TRect m_lastTarget;
    QImage m_screen;
    TCanvas m_screenCanvas{&m_screen};
};

namespace QXImage {
// Puts TQXImage on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace QXImage
