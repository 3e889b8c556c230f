#pragma once

#include "QXExport.h"
#include "TComponent.h"
#include "TPicture.h"

// The framework's image control: shows a picture at its natural size from the top-left corner,
// centred, or stretched over the whole control.
class QXT_EXPORT TImage : public TGraphicControl {
    Q_OBJECT
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize)
    Q_PROPERTY(bool Center READ Center WRITE SetCenter)
    Q_PROPERTY(bool Stretch READ Stretch WRITE SetStretch)
    Q_PROPERTY(bool Transparent READ Transparent WRITE SetTransparent)

public:
    // An image control without a picture.
    explicit TImage(QWidget* parent = nullptr);
    ~TImage() override;

    // The picture shown; changing it repaints (and sizes the control with AutoSize).
    TPicture* Picture() { return &m_picture; }
    void SetPicture(TPicture* Value) { m_picture.Assign(Value); }
    // Sizes the control to the picture.
    bool AutoSize() const { return m_autoSize; }
    void SetAutoSize(bool Value);
    // Centres the picture at its natural size.
    bool Center() const { return m_center; }
    void SetCenter(bool Value);
    // Stretches the picture over the whole control (before Center).
    bool Stretch() const { return m_stretch; }
    void SetStretch(bool Value);
    // Passed on to the picture's graphic (icons keep their own mask).
    bool Transparent() const { return m_transparent; }
    void SetTransparent(bool Value);

protected:
    void Paint() override;
    // Runs when the picture changes: passes Transparent on, sizes with AutoSize, repaints.
    virtual void PictureChanged();
    // Where Paint draws the picture.
    virtual TRect DestRect() const;

private:
    TPicture m_picture;
    bool m_autoSize = false;
    bool m_center = false;
    bool m_stretch = false;
    bool m_transparent = false;
};
