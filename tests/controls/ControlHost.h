#pragma once

#include "ControlImage.h"

#include <QImage>
#include <QRect>
#include <QWidget>
#include <functional>

namespace qxtest {

// A shown window to put controls under test on. Its children, once shown themselves (a child
// added to a shown window stays hidden until then), count as visible and get their resize
// events at once, as on a form.
class ControlHost : public QWidget {
public:
    ControlHost() {
        resize(800, 600);
        show();
    }
};

// The smallest rectangle holding every pixel for which wanted is true (empty when none is).
inline QRect pixelBounds(const QImage& image, const std::function<bool(QRgb)>& wanted) {
    QRect r;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (wanted(image.pixel(x, y)))
                r |= QRect(x, y, 1, 1);
    return r;
}

} // namespace qxtest
