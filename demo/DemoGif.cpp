#include "DemoGif.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPolygon>

namespace qxdemo {

QByteArray writeGif(const QImage& indexed, const QByteArray& comment, bool looping) {
    QByteArray out("GIF89a");
    auto put16 = [&](int v) {
        out.append(char(v & 0xFF));
        out.append(char(v >> 8));
    };
    put16(indexed.width());
    put16(indexed.height());
    out.append(char(0xF7)); // global table of 256 entries
    out.append(2, '\0');
    for (int i = 0; i < 256; ++i) {
        const QRgb c = i < indexed.colorCount() ? indexed.color(i) : 0;
        out.append(char(qRed(c)));
        out.append(char(qGreen(c)));
        out.append(char(qBlue(c)));
    }
    if (looping) // an animation's "loop for ever" block
        out.append(QByteArray("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00", 19));
    out.append(QByteArray("\x21\xF9\x04\x00\x07\x00\x00\x00", 8)); // 70 ms
    out.append("\x21\xFE");
    out.append(char(comment.size()));
    out.append(comment);
    out.append('\0');
    out.append(',');
    put16(0);
    put16(0);
    put16(indexed.width());
    put16(indexed.height());
    out.append('\0');
    out.append(char(8));
    QByteArray data;
    quint32 acc = 0;
    int bits = 0;
    auto code = [&](quint32 c) {
        acc |= c << bits;
        for (bits += 9; bits >= 8; bits -= 8, acc >>= 8)
            data.append(char(acc & 0xFF));
    };
    int run = 254;
    for (int y = 0; y < indexed.height(); ++y)
        for (int x = 0; x < indexed.width(); ++x) {
            if (run == 254) {
                code(256);
                run = 0;
            }
            code(indexed.pixelIndex(x, y));
            ++run;
        }
    code(257);
    if (bits > 0)
        data.append(char(acc & 0xFF));
    for (qsizetype at = 0; at < data.size(); at += 255) {
        const QByteArray block = data.mid(at, 255);
        out.append(char(block.size()));
        out.append(block);
    }
    out.append('\0');
    out.append(';');
    return out;
}

QImage sampleArtwork() {
    QImage art(120, 80, QImage::Format_RGB32);
    QPainter p(&art);
    QLinearGradient sky(0, 0, 0, 80);
    sky.setColorAt(0, QColor(40, 70, 160));
    sky.setColorAt(1, QColor(250, 200, 120));
    p.fillRect(art.rect(), sky);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 230, 90));
    p.drawEllipse(QPoint(88, 30), 16, 16);
    p.setBrush(QColor(30, 110, 60));
    p.drawPolygon(QPolygon({QPoint(0, 80), QPoint(30, 45), QPoint(60, 80)}));
    p.drawPolygon(QPolygon({QPoint(40, 80), QPoint(75, 52), QPoint(120, 80)}));
    p.setPen(Qt::white);
    p.setFont(QFont(QStringLiteral("Sans"), 11, QFont::Bold));
    p.drawText(QRect(4, 4, 60, 20), Qt::AlignLeft, QStringLiteral("GIF"));
    p.end();
    return art.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
}

} // namespace qxdemo
