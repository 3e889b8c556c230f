#include "AppSupport.h"

#include <QDir>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>

namespace apptest {

QImage busyBackground(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient ramp(0, 0, width, height);
    ramp.setColorAt(0.0, QColor(30, 90, 200));
    ramp.setColorAt(0.5, QColor(240, 120, 40));
    ramp.setColorAt(1.0, QColor(40, 170, 90));
    p.fillRect(image.rect(), ramp);
    p.setPen(Qt::NoPen);
    for (int x = -height; x < width; x += 24) {
        p.setBrush(QColor(255, 255, 255, 70));
        p.drawPolygon(QPolygon({QPoint(x, 0), QPoint(x + 10, 0), QPoint(x + 10 + height, height),
                                QPoint(x + height, height)}));
    }
    for (int y = 0; y < height; y += 16)
        for (int x = (y / 16) % 2 * 16; x < width; x += 32)
            p.fillRect(x, y, 16, 8, QColor(20, 20, 60, 60));
    p.setPen(QColor(250, 250, 210));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(18);
    p.setFont(font);
    for (int y = 24; y < height; y += 48)
        p.drawText(8, y, QStringLiteral("Hintergrund mit Muster 0123456789 – Hintergrund"));
    return image;
}

QImage zoomed(const QImage& image, const QRect& area, int factor) {
    const QImage part = image.copy(area & image.rect());
    return part.scaled(part.size() * factor, Qt::IgnoreAspectRatio, Qt::FastTransformation);
}

QString artefact(const QString& name) {
    const QString dir = QStringLiteral(QXT_ARTEFACT_DIR);
    QDir().mkpath(dir);
    return dir + QLatin1Char('/') + name;
}

} // namespace apptest
