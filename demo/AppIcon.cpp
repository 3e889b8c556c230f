#include "AppIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <algorithm>

namespace qxdemo {

namespace {

// Four bars rising from green through yellow to red, as the gauge's level-meter zones do.
QPixmap tile(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    const QRectF outer(0.5, 0.5, s - 1, s - 1);
    QLinearGradient navy(outer.topLeft(), outer.bottomLeft());
    navy.setColorAt(0, QColor(0x2a, 0x52, 0xb8));
    navy.setColorAt(1, QColor(0x0b, 0x1d, 0x4d));
    p.setPen(QPen(QColor(0x06, 0x10, 0x2c), 1));
    p.setBrush(navy);
    p.drawRoundedRect(outer, s * 0.18, s * 0.18);

    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(Qt::NoPen);
    const QColor colours[] = {QColor(0x3c, 0xc8, 0x3c), QColor(0x3c, 0xc8, 0x3c),
                              QColor(0xf0, 0xd0, 0x20), QColor(0xe8, 0x3c, 0x28)};
    const int bottom = qRound(s * 0.82);
    const int barWidth = std::max(2, qRound(s * 0.14));
    const int gap = std::max(1, qRound(s * 0.05));
    const int left = (size - 4 * barWidth - 3 * gap) / 2;
    // From 48 pixels up a bar is cut into boxes like the gauge's segments, with a seam of a pixel
    // per 48; below that it is one box.
    const int seam = size / 48;
    for (int i = 0; i < 4; ++i) {
        const int box = seam > 0 ? qRound(s * 0.08) : qRound(s * (0.22 + 0.15 * i));
        // Whole boxes only: a sliver at the top would look like a drawing fault.
        const int height = box * qRound(s * (0.22 + 0.15 * i) / box);
        const QRect bar(left + i * (barWidth + gap), bottom - height, barWidth, height);
        p.setBrush(colours[i]);
        for (int y = bar.bottom() + 1; y > bar.top(); y -= box) {
            const int top = std::max(bar.top(), y - box);
            p.drawRect(QRect(bar.left(), top, barWidth, y - top - seam));
        }
    }
    return pixmap;
}

} // namespace

QIcon galleryIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(tile(size));
    return icon;
}

} // namespace qxdemo
