#pragma once

// Resources of Windows PE images (EXE and DLL files, PE32 and PE32+) read from their bytes on
// any platform. Every read is checked against the bytes given: any input is safe to pass, and
// a file that is not a PE image simply has no resources.

#include "QXExport.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QList>
#include <QString>
#include <QStringView>
#include <optional>

namespace qxpe {

// The first version resource (a VS_VERSIONINFO block) of the image; empty when it has none.
QXT_EXPORT QByteArray versionInfo(QByteArrayView image);

// The value at a path of keys in a VS_VERSIONINFO block, as VerQueryValue finds it: keys are
// separated by "\" and compared case-blind ("\VarFileInfo\Translation",
// "\StringFileInfo\040704E4\CompanyName"). Nothing when a key on the path is missing.
QXT_EXPORT std::optional<QByteArray> queryValue(QByteArrayView block, QStringView path);

// The text value at a path: UTF-16 up to its terminating zero or the end of its entry.
QXT_EXPORT std::optional<QString> queryText(QByteArrayView block, QStringView path);

// The name of the string table of the first translation: language and code page, four
// upper-case hexadecimal digits each ("040704E4"). Nothing when the block has no translation.
QXT_EXPORT std::optional<QString> firstTranslation(QByteArrayView block);

// One image of an icon group, as its group entry and its RT_ICON resource give it.
struct IconImage {
    int width = 0; // 256 where the entry says 0
    int height = 0;
    int colorCount = 0;
    int planes = 0;
    int bitCount = 0;
    QByteArray data; // a DIB with its AND mask, or a PNG stream
};

// The number of icon groups (RT_GROUP_ICON resources) of the image.
QXT_EXPORT int iconGroupCount(QByteArrayView image);

// The images of the index-th icon group, in directory order (named groups before numbered
// ones, as Windows counts them); images whose RT_ICON is missing are left out.
QXT_EXPORT QList<IconImage> iconGroup(QByteArrayView image, int index);

// An ICO file holding the images, in order.
QXT_EXPORT QByteArray icoFile(const QList<IconImage>& images);

// The image of the index-th icon group that is closest to size pixels wide (the one with more
// colours when two are as close); a null image when there is no such group.
QXT_EXPORT QImage iconGroupImage(QByteArrayView image, int index, int size);

} // namespace qxpe
