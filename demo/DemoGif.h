#pragma once

#include <QByteArray>
#include <QImage>

namespace qxdemo {

// Writes an 8-bit image as a GIF with uncompressed LZW data: every pixel is a root code,
// with a clear code before the table would need wider codes. With looping the file carries an
// animation's "loop for ever" block.
QByteArray writeGif(const QImage& indexed, const QByteArray& comment, bool looping);
// A small landscape, 120 x 80 pixels in 256 colours, labelled "GIF".
QImage sampleArtwork();

} // namespace qxdemo
