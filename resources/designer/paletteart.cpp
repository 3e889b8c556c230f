// Draws the palette pictures of the package's widget classes, one per class at 22 and at 44
// pixels, and the resource list naming each after its class in upper case.
//
//   qxpaletteart OUTDIR        writes OUTDIR/22/TQXGAUGE.png, OUTDIR/44/... and OUTDIR/palette.qrc
//
// Every picture is laid out on a grid of 22 units. At 22 pixels one unit is one pixel, so lines
// sit on half units to stay sharp; at 44 pixels the same drawing doubles and the pictures add
// the finer detail that only the larger size can show.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QTextStream>

#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

using Draw = std::function<void(QPainter&, bool big)>;

struct Art {
    const char* className;
    Draw draw;
};

const QColor ink(0x20, 0x28, 0x38);
const QColor face(0xEC, 0xEE, 0xF2);
const QColor shade(0x9A, 0xA2, 0xB0);
const QColor screen(0x10, 0x18, 0x20);
const QColor accent(0x1E, 0x78, 0xD2);
const QColor warm(0xF0, 0x8C, 0x1E);
const QColor lime(0x5C, 0xE0, 0x4C);

QPen line(const QColor& c, qreal width = 1) {
    QPen pen(c, width);
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setCapStyle(Qt::SquareCap);
    return pen;
}

// A box with a one-unit outline whose edges fall on pixel boundaries at both sizes.
void box(QPainter& p, qreal x, qreal y, qreal w, qreal h, const QBrush& fill,
         const QColor& outline = ink) {
    p.setPen(line(outline));
    p.setBrush(fill);
    p.drawRect(QRectF(x + 0.5, y + 0.5, w - 1, h - 1));
}

// Raised (or sunken) bevel inside a box: light top-left, dark bottom-right.
void bevel(QPainter& p, qreal x, qreal y, qreal w, qreal h, bool raised) {
    const QColor light = raised ? Qt::white : shade;
    const QColor dark = raised ? shade : Qt::white;
    p.setPen(line(light));
    p.drawLine(QPointF(x + 1.5, y + h - 2.5), QPointF(x + 1.5, y + 1.5));
    p.drawLine(QPointF(x + 1.5, y + 1.5), QPointF(x + w - 2.5, y + 1.5));
    p.setPen(line(dark));
    p.drawLine(QPointF(x + w - 1.5, y + 1.5), QPointF(x + w - 1.5, y + h - 1.5));
    p.drawLine(QPointF(x + 1.5, y + h - 1.5), QPointF(x + w - 1.5, y + h - 1.5));
}

// A small landscape picture: sky, sun and two hills; the base of several picture icons.
void landscape(QPainter& p, const QRectF& r, bool big) {
    p.save();
    p.setClipRect(r);
    QLinearGradient sky(r.topLeft(), r.bottomLeft());
    sky.setColorAt(0, QColor(0x6C, 0xB8, 0xF0));
    sky.setColorAt(1, QColor(0xD4, 0xEC, 0xFF));
    p.fillRect(r, sky);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xFF, 0xC8, 0x28));
    const qreal sun = r.width() * 0.22;
    p.drawEllipse(QRectF(r.right() - sun * 1.5, r.top() + sun * 0.4, sun, sun));
    QPainterPath hills;
    hills.moveTo(r.left(), r.bottom());
    hills.lineTo(r.left(), r.top() + r.height() * 0.7);
    hills.lineTo(r.left() + r.width() * 0.35, r.top() + r.height() * 0.35);
    hills.lineTo(r.left() + r.width() * 0.6, r.top() + r.height() * 0.65);
    hills.lineTo(r.left() + r.width() * 0.75, r.top() + r.height() * 0.5);
    hills.lineTo(r.right(), r.top() + r.height() * 0.75);
    hills.lineTo(r.right(), r.bottom());
    hills.closeSubpath();
    p.setBrush(QColor(0x3C, 0x9C, 0x3C));
    p.drawPath(hills);
    if (big) {
        // Snow on the high peak.
        QPainterPath snow;
        const QPointF peak(r.left() + r.width() * 0.35, r.top() + r.height() * 0.35);
        snow.moveTo(peak);
        snow.lineTo(peak + QPointF(-r.width() * 0.08, r.height() * 0.08));
        snow.lineTo(peak + QPointF(r.width() * 0.08, r.height() * 0.08));
        snow.closeSubpath();
        p.setBrush(Qt::white);
        p.drawPath(snow);
    }
    p.restore();
}

// One seven-segment digit in a cell of 6 x 11 units; segments in the order a b c d e f g.
void segmentDigit(QPainter& p, qreal x, qreal y, unsigned mask, const QColor& on,
                  const QColor& off) {
    const qreal w = 6, h = 11, t = 1.4, m = h / 2;
    const QRectF bars[7] = {
        {x + t, y, w - 2 * t, t},                     // a
        {x + w - t, y + t, t, m - 1.5 * t},           // b
        {x + w - t, y + m + 0.5 * t, t, m - 1.5 * t}, // c
        {x + t, y + h - t, w - 2 * t, t},             // d
        {x, y + m + 0.5 * t, t, m - 1.5 * t},         // e
        {x, y + t, t, m - 1.5 * t},                   // f
        {x + t, y + m - t / 2, w - 2 * t, t},         // g
    };
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 7; ++i) {
        p.setBrush((mask >> i) & 1 ? on : off);
        p.drawRect(bars[i]);
    }
}

// A triangle in the current pen and brush.
void triangle(QPainter& p, QPointF a, QPointF b, QPointF c) {
    QPainterPath path;
    path.moveTo(a);
    path.lineTo(b);
    path.lineTo(c);
    path.closeSubpath();
    p.drawPath(path);
}

// A play triangle pointing right.
void playTriangle(QPainter& p, const QRectF& r, const QColor& c) {
    p.setPen(Qt::NoPen);
    p.setBrush(c);
    triangle(p, r.topLeft(), {r.right(), r.center().y()}, r.bottomLeft());
}

// A capital A built from strokes (no fonts needed at build time).
QPainterPath letterA(qreal x, qreal y, qreal w, qreal h) {
    QPainterPath a;
    a.moveTo(x, y + h);
    a.lineTo(x + w / 2, y);
    a.lineTo(x + w, y + h);
    a.moveTo(x + w * 0.25, y + h * 0.6);
    a.lineTo(x + w * 0.75, y + h * 0.6);
    return a;
}

void drawAnimate(QPainter& p, bool big) {
    // A film strip with three frames of a ball moving down.
    box(p, 2, 3, 18, 16, QColor(0x30, 0x30, 0x38));
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    for (int i = 0; i < 4; ++i) {
        p.drawRect(QRectF(3.5 + i * 4.5, 4, 1.5, 1.5));
        p.drawRect(QRectF(3.5 + i * 4.5, 16.5, 1.5, 1.5));
    }
    for (int i = 0; i < 3; ++i) {
        const QRectF frame(3 + i * 5.5, 6.5, 4.5, 9);
        p.setBrush(QColor(0xD8, 0xEC, 0xFF));
        p.drawRect(frame);
        p.setBrush(warm);
        const qreal d = big ? 2.5 : 3;
        p.drawEllipse(QRectF(frame.center().x() - d / 2, frame.top() + 1 + i * 2.5, d, d));
    }
}

void drawPicClip(QPainter& p, bool big) {
    // A picture cut into a 3 x 3 grid, one cell lifted out.
    landscape(p, QRectF(2, 2, 18, 18), big);
    p.setPen(line(Qt::white));
    p.drawLine(QPointF(8, 2), QPointF(8, 20));
    p.drawLine(QPointF(14, 2), QPointF(14, 20));
    p.drawLine(QPointF(2, 8), QPointF(20, 8));
    p.drawLine(QPointF(2, 14), QPointF(20, 14));
    p.setBrush(Qt::NoBrush);
    p.setPen(line(ink));
    p.drawRect(QRectF(1.5, 1.5, 19, 19));
    p.setPen(line(warm, big ? 1 : 1.5));
    p.drawRect(QRectF(8.5, 8.5, 5, 5));
}

void drawScrollText(QPainter& p, bool big) {
    // A marquee: lines of text running out to the left, with the direction arrow.
    box(p, 1, 5, 20, 12, QColor(0xFF, 0xFF, 0xE8));
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    p.drawRect(QRectF(2, 8, 12, 2));
    p.drawRect(QRectF(16, 8, 4, 2));
    p.setBrush(shade);
    p.drawRect(QRectF(2, 12, 8, 2));
    p.drawRect(QRectF(12, 12, 8, 2));
    if (big) {
        p.setBrush(QColor(0x90, 0xB8, 0xE8));
        p.drawRect(QRectF(2.5, 10, 12, 0.5));
    }
    p.setBrush(warm);
    triangle(p, {1, 2.5}, {4, 0.5}, {4, 4.5});
    p.setPen(line(warm));
    p.drawLine(QPointF(4, 2.5), QPointF(9.5, 2.5));
}

void drawStars(QPainter& p, bool big) {
    // Flight through a star field: stars streaming out from the centre of a dark sky.
    box(p, 1, 1, 20, 20, QColor(0x06, 0x0A, 0x24));
    p.setPen(Qt::NoPen);
    struct Star {
        qreal x, y, r;
    };
    const Star stars[] = {{5, 5, 1.6}, {16, 4, 1.2}, {17, 15, 2}, {4, 16, 1.4}, {11, 11, 0.8},
                          {8, 9, 0.8}, {14, 8, 1},   {9, 14, 1},  {12, 4, 0.8}, {18, 10, 1}};
    for (const Star& s : stars) {
        p.setBrush(s.r > 1.3 ? QColor(Qt::white) : QColor(0xA8, 0xC0, 0xFF));
        if (big) {
            // Streaks away from the centre show the speed.
            QLineF streak(QPointF(11, 11), QPointF(s.x, s.y));
            streak.setLength(streak.length() - s.r * 1.5);
            p.setPen(QPen(QColor(0x60, 0x70, 0xB0), 0.5));
            p.drawLine(QLineF(streak.p2(), QPointF(s.x, s.y)));
            p.setPen(Qt::NoPen);
        }
        p.drawEllipse(QPointF(s.x, s.y), s.r / 2 + 0.3, s.r / 2 + 0.3);
    }
}

void drawBounce(QPainter& p, bool big) {
    // A ball on its way down a dotted arc, bouncing on the floor.
    p.setPen(line(ink));
    p.drawLine(QPointF(1.5, 20.5), QPointF(20.5, 20.5));
    p.setPen(Qt::NoPen);
    p.setBrush(shade);
    const QPointF trail[] = {{2.5, 4}, {5, 3}, {7.5, 3.5}, {10, 5.5}, {12, 9}};
    for (const QPointF& t : trail)
        p.drawEllipse(t, big ? 0.6 : 0.8, big ? 0.6 : 0.8);
    QRadialGradient ball(QPointF(13.5, 12.5), 5);
    ball.setColorAt(0, QColor(0xFF, 0xA0, 0xA0));
    ball.setColorAt(1, QColor(0xC8, 0x10, 0x20));
    p.setBrush(ball);
    p.setPen(line(QColor(0x70, 0x08, 0x10), big ? 0.5 : 1));
    p.drawEllipse(QRectF(11, 11, 8, 8));
    p.setPen(line(shade));
    p.drawLine(QPointF(17.5, 6.5), QPointF(19.5, 4.5));
}

void drawThreeD(QPainter& p, bool) {
    // A wire cube in perspective.
    const QPointF f[4] = {{3, 8}, {13, 8}, {13, 18}, {3, 18}};
    const QPointF b[4] = {{8, 3}, {18, 3}, {18, 13}, {8, 13}};
    p.setBrush(QColor(0x88, 0xC0, 0xF8));
    p.setPen(Qt::NoPen);
    p.drawPolygon(QPolygonF({f[0], b[0], b[1], f[1]}));
    p.setBrush(QColor(0x28, 0x70, 0xC8));
    p.drawPolygon(QPolygonF({f[1], b[1], b[2], f[2]}));
    p.setBrush(QColor(0x50, 0x98, 0xE8));
    p.drawPolygon(QPolygonF({f[0], f[1], f[2], f[3]}));
    p.setPen(line(ink));
    p.setBrush(Qt::NoBrush);
    p.drawPolygon(QPolygonF({f[0], f[1], f[2], f[3]}).translated(0.5, 0.5));
    for (int i = 0; i < 3; ++i)
        p.drawLine(f[i] + QPointF(0.5, 0.5), b[i] + QPointF(0.5, 0.5));
    p.drawLine(b[0] + QPointF(0.5, 0.5), b[1] + QPointF(0.5, 0.5));
    p.drawLine(b[1] + QPointF(0.5, 0.5), b[2] + QPointF(0.5, 0.5));
    p.setPen(QPen(shade, 0.5, Qt::DotLine));
    p.drawLine(b[3] + QPointF(0.5, 0.5), b[0] + QPointF(0.5, 0.5));
    p.drawLine(b[3] + QPointF(0.5, 0.5), b[2] + QPointF(0.5, 0.5));
    p.drawLine(b[3] + QPointF(0.5, 0.5), f[3] + QPointF(0.5, 0.5));
}

void drawWav(QPainter& p, bool big) {
    // The waveform of a sound on a dark screen.
    box(p, 1, 3, 20, 16, screen);
    p.setPen(line(QColor(0x30, 0x50, 0x40), 0.5));
    p.drawLine(QPointF(2, 11), QPointF(20, 11));
    QPainterPath wave;
    const int steps = big ? 72 : 36;
    for (int i = 0; i <= steps; ++i) {
        const qreal x = 2.5 + 17.0 * i / steps;
        const qreal t = (x - 2.5) / 17.0;
        const qreal envelope = 6.5 * std::sin(t * M_PI) * (0.55 + 0.45 * std::cos(t * 9));
        const qreal y = 11 + envelope * std::sin(t * (big ? 38 : 26));
        if (i == 0)
            wave.moveTo(x, y);
        else
            wave.lineTo(x, y);
    }
    p.setPen(QPen(lime, big ? 0.6 : 1));
    p.setBrush(Qt::NoBrush);
    p.drawPath(wave);
}

void drawGauge(QPainter& p, bool big) {
    // A box gauge: a lowered box filled from the bottom, with the peak mark above the bar.
    box(p, 6, 1, 10, 20, Qt::white);
    bevel(p, 6, 1, 10, 20, false);
    p.setPen(Qt::NoPen);
    QLinearGradient bar(QPointF(0, 20), QPointF(0, 2));
    bar.setColorAt(0, QColor(0x00, 0x80, 0x00));
    bar.setColorAt(0.6, QColor(0xE0, 0xD0, 0x00));
    bar.setColorAt(1, QColor(0xE0, 0x20, 0x10));
    p.setBrush(bar);
    p.drawRect(QRectF(8, 10, 6, 9));
    p.setBrush(QColor(0xD0, 0x20, 0x10));
    p.drawRect(QRectF(8, 6, 6, 1));
    p.setPen(line(ink));
    for (int y = 3; y <= 19; y += big ? 2 : 4)
        p.drawLine(QPointF(2.5, y + 0.5), QPointF(big && y % 4 != 3 ? 3.5 : 4.5, y + 0.5));
}

void drawLcd(QPainter& p, bool) {
    // Two seven-segment digits on a green-black LCD panel.
    box(p, 1, 4, 20, 15, QColor(0x08, 0x20, 0x10));
    const QColor on(0x30, 0xF0, 0x40), off(0x18, 0x40, 0x20);
    segmentDigit(p, 3.5, 6, 0b1011011, on, off);  // 2
    segmentDigit(p, 12.5, 6, 0b1111101, on, off); // 6
}

void drawDotPanel(QPainter& p, bool big) {
    // A dot-matrix marquee: a grid of unlit dots with an "H" lit in amber.
    box(p, 1, 3, 20, 16, QColor(0x20, 0x10, 0x08));
    const int cols = big ? 9 : 6, rows = big ? 7 : 5;
    const qreal pitchX = 18.0 / cols, pitchY = 14.0 / rows;
    const auto lit = [&](int c, int r) {
        const int mid = rows / 2;
        const int left = cols / 2 - 2, right = left + 3;
        return c == left || c == right || (r == mid && c > left && c < right);
    };
    p.setPen(Qt::NoPen);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            p.setBrush(lit(c, r) ? QColor(0xFF, 0xB0, 0x20) : QColor(0x58, 0x30, 0x18));
            const QPointF centre(2 + pitchX * (c + 0.5), 4 + pitchY * (r + 0.5));
            p.drawEllipse(centre, pitchX * 0.36, pitchX * 0.36);
        }
}

void drawThreeDLabel(QPainter& p, bool big) {
    // A raised letter: its shadow below right, its light edge above left.
    QPen pen(QColor(0x60, 0x60, 0x70), big ? 3 : 3.2);
    pen.setJoinStyle(Qt::MiterJoin);
    pen.setCapStyle(Qt::FlatCap);
    p.setBrush(Qt::NoBrush);
    p.setPen(pen);
    p.drawPath(letterA(5, 4, 13, 15).translated(1.5, 1.5));
    pen.setColor(Qt::white);
    p.setPen(pen);
    p.drawPath(letterA(5, 4, 13, 15).translated(-0.5, -0.5));
    pen.setColor(accent);
    p.setPen(pen);
    p.drawPath(letterA(5, 4, 13, 15));
}

void drawStatusPanel(QPainter& p, bool big) {
    // A status panel: a raised panel with a processor chart.
    box(p, 1, 2, 20, 18, face);
    bevel(p, 1, 2, 20, 18, true);
    box(p, 3, 4, 16, 11, screen);
    QPainterPath chart;
    const qreal load[] = {13, 11, 12, 8, 9, 6, 10, 7, 5, 8};
    const int n = big ? 10 : 6;
    for (int i = 0; i < n; ++i) {
        const QPointF pt(4 + 14.0 * i / (n - 1), load[i * 9 / (n - 1)]);
        if (i == 0)
            chart.moveTo(pt);
        else
            chart.lineTo(pt);
    }
    p.setPen(QPen(lime, big ? 0.6 : 1));
    p.setBrush(Qt::NoBrush);
    p.drawPath(chart);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    p.drawRect(QRectF(4, 16.5, 8, 1.5));
    p.setBrush(accent);
    p.drawRect(QRectF(14, 16.5, 4, 1.5));
}

void drawPicBox(QPainter& p, bool big) {
    // A grid of thumbnails in a list box, the selected one framed.
    box(p, 1, 1, 20, 20, Qt::white);
    const QColor frames[] = {QColor(0x6C, 0xB8, 0xF0), QColor(0xF0, 0xB0, 0x50),
                             QColor(0x70, 0xC8, 0x70), QColor(0xC0, 0x80, 0xE0)};
    for (int i = 0; i < 4; ++i) {
        const QRectF cell(3 + (i % 2) * 8.5, 3 + (i / 2) * 8.5, 7.5, 7.5);
        if (big || i == 0)
            landscape(p, cell, big);
        else
            p.fillRect(cell, frames[i]);
    }
    p.setBrush(Qt::NoBrush);
    p.setPen(line(accent));
    p.drawRect(QRectF(10.5, 10.5, 9, 9));
}

void drawIcoBox(QPainter& p, bool) {
    // A list of icons, each with its file name beside it.
    box(p, 1, 1, 20, 20, Qt::white);
    const QColor icons[] = {warm, accent, QColor(0x40, 0xA0, 0x40)};
    for (int i = 0; i < 3; ++i) {
        const qreal y = 3 + i * 6;
        p.setPen(Qt::NoPen);
        p.setBrush(icons[i]);
        p.drawRoundedRect(QRectF(3, y, 5, 5), 1, 1);
        p.setBrush(Qt::white);
        p.drawRect(QRectF(4.5, y + 1.5, 2, 2));
        p.setBrush(shade);
        p.drawRect(QRectF(10, y + 2, 9 - i * 2, 1.5));
    }
}

void drawFontCombo(QPainter& p, bool big) {
    // A combo box holding a letter, with its drop-down button.
    box(p, 1, 5, 20, 12, Qt::white);
    box(p, 14, 5, 7, 12, face);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    triangle(p, {15.5, 10}, {19.5, 10}, {17.5, 13});
    // A serif F.
    p.setBrush(QColor(0xB0, 0x20, 0x30));
    p.drawRect(QRectF(5, 7.5, 2, 8));
    p.drawRect(QRectF(5, 7.5, 6, 1.5));
    p.drawRect(QRectF(5, 10.5, 4.5, 1.5));
    p.drawRect(QRectF(3.5, 14.5, 5, 1));
    if (big)
        p.drawRect(QRectF(10.25, 7.5, 0.75, 3));
}

void drawDriveTab(QPainter& p, bool big) {
    // A disk drive above a row of tabs, the front tab joined to the page it shows.
    box(p, 1, 1, 20, 13, Qt::white);
    box(p, 4, 4, 14, 7, QColor(0x70, 0x78, 0x88));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x30, 0x34, 0x40));
    p.drawRect(QRectF(6, 6.5, 7, big ? 1 : 2));
    p.setBrush(lime);
    p.drawRect(QRectF(15, 8, 1.5, 1.5));
    const qreal left[3] = {14, 8, 2};
    for (int i = 0; i < 3; ++i) {
        QPainterPath tab;
        tab.moveTo(left[i] + 0.5, 13.5);
        tab.lineTo(left[i] + 1.5, 19.5);
        tab.lineTo(left[i] + 6.5, 19.5);
        tab.lineTo(left[i] + 7.5, 13.5);
        p.setPen(line(ink));
        p.setBrush(i == 2 ? QColor(Qt::white) : QColor(0xC8, 0xD0, 0xDC));
        p.drawPath(tab);
    }
    // The front tab opens into the page.
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(3, 13, 6, 1));
    p.setBrush(accent);
    p.drawRect(QRectF(4.5, 15.5, 3, big ? 1.5 : 2));
}

void drawBiBtn(QPainter& p, bool big) {
    // A two-state button: one half pressed in, the other standing out.
    box(p, 1, 5, 10, 12, face);
    bevel(p, 1, 5, 10, 12, false);
    box(p, 11, 5, 10, 12, face);
    bevel(p, 11, 5, 10, 12, true);
    p.setPen(Qt::NoPen);
    p.setBrush(lime);
    p.drawEllipse(QPointF(6, 11), big ? 2 : 2.2, big ? 2 : 2.2);
    p.setBrush(QColor(0x40, 0x50, 0x40));
    p.drawEllipse(QPointF(16, 11), big ? 2 : 2.2, big ? 2 : 2.2);
}

void drawAutoButton(QPainter& p, bool big) {
    // A button with the circular arrow of automatic repeat.
    box(p, 1, 3, 20, 16, face);
    bevel(p, 1, 3, 20, 16, true);
    p.setPen(QPen(accent, big ? 1.25 : 1.5, Qt::SolidLine, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(6.5, 6.5, 9, 9), 100 * 16, 280 * 16);
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    triangle(p, {10, 4.5}, {13.5, 6.8}, {10, 9});
}

void drawGrabBar(QPainter& p, bool big) {
    // Two panes with the bar between them and its grip.
    box(p, 1, 2, 8, 18, Qt::white);
    box(p, 13, 2, 8, 18, Qt::white);
    box(p, 9, 2, 4, 18, face);
    p.setPen(Qt::NoPen);
    p.setBrush(ink);
    for (int i = 0; i < (big ? 5 : 3); ++i)
        p.drawRect(QRectF(10.5, 8 + i * (big ? 1.5 : 2.5), 1, big ? 0.5 : 1));
    // Arrows that tell it moves sideways.
    p.setBrush(warm);
    triangle(p, {4, 11}, {7, 9}, {7, 13});
    triangle(p, {18, 11}, {15, 9}, {15, 13});
}

void drawApp(QPainter& p, bool big) {
    // An application window with its title bar and an information mark.
    box(p, 1, 2, 20, 18, Qt::white);
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    p.drawRect(QRectF(2, 3, 18, 4));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(17, 4, 2, 2));
    p.setBrush(accent);
    p.drawEllipse(QPointF(11, 10.5), 1.3, 1.3);
    p.drawRect(QRectF(10, 13, 2, 5));
    if (big) {
        p.drawRect(QRectF(9, 13, 1, 0.5));
        p.drawRect(QRectF(9, 17.5, 4, 0.5));
    }
}

void drawFillImage(QPainter& p, bool big) {
    // A vertical rainbow in bands.
    const QColor bands[] = {QColor(0xE0, 0x20, 0x20), QColor(0xF0, 0x90, 0x10),
                            QColor(0xF0, 0xE0, 0x20), QColor(0x30, 0xB0, 0x30),
                            QColor(0x20, 0x70, 0xE0), QColor(0x70, 0x30, 0xC0)};
    const int n = big ? 6 : 6;
    p.setPen(Qt::NoPen);
    for (int i = 0; i < n; ++i) {
        p.setBrush(bands[i]);
        p.drawRect(QRectF(2, 2 + i * 3, 18, 3));
    }
    p.setBrush(Qt::NoBrush);
    p.setPen(line(ink));
    p.drawRect(QRectF(1.5, 1.5, 19, 19));
}

void drawFxImage(QPainter& p, bool big) {
    // A picture dissolving block by block into the next one.
    box(p, 1, 1, 20, 20, QColor(0x30, 0x30, 0x60));
    landscape(p, QRectF(2, 2, 18, 18), big);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x40, 0x30, 0x80));
    const qreal cell = big ? 1.5 : 3;
    const int n = int(18 / cell);
    for (int r = 0; r < n; ++r)
        for (int c = 0; c < n; ++c) {
            // Blocks become more likely towards the lower right, as a dissolve in progress.
            const unsigned hash = unsigned(r * 7919 + c * 104729) % 97;
            if (hash < unsigned((c + r) * 97 / (2 * n)))
                p.drawRect(QRectF(2 + c * cell, 2 + r * cell, cell, cell));
        }
}

void drawImage(QPainter& p, bool big) {
    // A picture kept in proportion inside a wider frame, with the arrows of its stretch.
    box(p, 1, 3, 20, 16, face);
    landscape(p, QRectF(5, 5, 12, 12), big);
    p.setPen(line(ink));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(4.5, 4.5, 13, 13));
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    triangle(p, {1.5, 11}, {4, 8.5}, {4, 13.5});
    triangle(p, {20.5, 11}, {18, 8.5}, {18, 13.5});
}

void drawWavPlay(QPainter& p, bool big) {
    // A play list with the play button.
    box(p, 1, 1, 20, 20, Qt::white);
    p.setPen(Qt::NoPen);
    for (int i = 0; i < 4; ++i) {
        p.setBrush(i == 1 ? accent : shade);
        p.drawRect(QRectF(3, 3.5 + i * 3, i == 1 ? 16 : 12 - i, big ? 1.5 : 2));
    }
    box(p, 3, 15, 16, 5, face);
    playTriangle(p, QRectF(9.5, 16, 3, 3), QColor(0x20, 0x90, 0x30));
}

const std::vector<Art>& arts() {
    static const std::vector<Art> all = {
        {"TQXAnimate", drawAnimate},
        {"TQXPicClip", drawPicClip},
        {"TQXScrollText", drawScrollText},
        {"TQXStars", drawStars},
        {"TQXBounce", drawBounce},
        {"TQX3D", drawThreeD},
        {"TQXWAV", drawWav},
        {"TQXGauge", drawGauge},
        {"TQXLCDPanel", drawLcd},
        {"TQXDOTPanel", drawDotPanel},
        {"TQX3dLabel", drawThreeDLabel},
        {"TQXPanel", drawStatusPanel},
        {"TQXPicBox", drawPicBox},
        {"TQXIcoBox", drawIcoBox},
        {"TQXFontCombo", drawFontCombo},
        {"TQXDriveTab", drawDriveTab},
        {"TQXBiBtn", drawBiBtn},
        {"TQXAutoButton", drawAutoButton},
        {"TQXGrabBar", drawGrabBar},
        {"TQXApp", drawApp},
        {"TQXFillImage", drawFillImage},
        {"TQXFxImage", drawFxImage},
        {"TQXImage", drawImage},
        {"TQXWavPlay", drawWavPlay},
    };
    return all;
}

QImage render(const Art& art, int size) {
    QImage img(size, size, QImage::Format_ARGB32);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 22.0, size / 22.0);
    art.draw(p, size >= 44);
    p.end();
    return img;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: qxpaletteart OUTDIR\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    QFile qrc(out + QStringLiteral("/palette.qrc"));
    if (!QDir().mkpath(out + QStringLiteral("/22")) ||
        !QDir().mkpath(out + QStringLiteral("/44")) ||
        !qrc.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fprintf(stderr, "qxpaletteart: cannot write to %s\n", argv[1]);
        return 1;
    }
    QTextStream list(&qrc);
    list << "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"/qxtools/palette\">\n";
    for (const Art& art : arts())
        for (const int size : {22, 44}) {
            const QString name = QString::fromLatin1(art.className).toUpper();
            const QString file = QStringLiteral("%1/%2.png").arg(size).arg(name);
            if (!render(art, size).save(out + QLatin1Char('/') + file)) {
                std::fprintf(stderr, "qxpaletteart: cannot write %s\n", qPrintable(file));
                return 1;
            }
            list << "    <file alias=\"" << size << '/' << name << "\">" << file << "</file>\n";
        }
    list << "  </qresource>\n</RCC>\n";
    return 0;
}
