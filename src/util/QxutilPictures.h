#pragma once

// Picture loading.

#include "QXExport.h"

#include <QString>
#include <memory>

class TBitmap;
class TIcon;

// A bitmap of the picture in a file, or nullptr when nothing can be read from it. What it
// reads is chosen by the extension (case-blind):
// - .BMP: the bitmap;
// - .ICO: image Index of the icon file (0 is the first);
// - .EXE, .DLL, .ICL: icon Index of a Windows program or library (its image closest to
//   32 x 32 pixels);
// - .GIF and every other extension registered with TPicture (.JPG, .JPEG, .PNG, ...): the
//   picture as its graphic class loads it (a GIF gives its first image);
// - any other extension: whatever Qt's image readers recognise in the bytes.
// Transparent parts come back laid over the window background colour, since a bitmap is drawn
// opaquely. Runs on the GUI thread (GIF pictures own a timer).
QXT_EXPORT std::unique_ptr<TBitmap> qxtGetBitmapFromFile(const QString& FileName, int Index);

// Icon Index of an .ICO file, or of a Windows program or library (.EXE, .DLL, .ICL); nullptr
// when the file holds no such icon, and for every other kind of file. Safe on any thread.
QXT_EXPORT std::unique_ptr<TIcon> qxtExtractIcon(const QString& FileName, int Index);
