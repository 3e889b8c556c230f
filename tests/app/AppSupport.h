#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <ostream>

namespace apptest {

// A busy picture: colour ramps crossed by stripes, a checker band and text, so that a
// shadow or a stray pixel shows against it.
QImage busyBackground(int width, int height);

// The part of image within area (clipped), enlarged pixel by pixel for looking at.
QImage zoomed(const QImage& image, const QRect& area, int factor);

// Where tests leave pictures for a person to look at (in the build tree).
QString artefact(const QString& name);

// The colour a pixel takes where the grey shadow (0x808080) is laid on it with SRCAND.
inline unsigned shadowed(unsigned bgr) {
    return bgr & 0x808080u;
}

} // namespace apptest

// Readable strings in failure messages (found by GoogleTest through the argument's namespace).
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& list, std::ostream* os) {
    *os << '{' << list.join(QStringLiteral(", ")).toStdString() << '}';
}
