#include "QxutilPictures.h"

#include "PeResources_p.h"
#include "TGraphic.h"
#include "TPicture.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QThread>
#include <exception>

namespace {

bool isProgramFile(const QString& ext) {
    return ext == QLatin1String("exe") || ext == QLatin1String("dll") ||
           ext == QLatin1String("icl");
}

QImage iconImage(const QString& fileName, const QString& ext, int index) {
    if (index < 0)
        return {};
    if (ext == QLatin1String("ico")) {
        QImageReader reader(fileName, "ICO");
        if (index > 0 && !reader.jumpToImage(index))
            return {};
        return reader.read();
    }
    if (!isProgramFile(ext))
        return {};
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return qxpe::iconGroupImage(bytes, index, 32);
}

// The colour transparent parts are laid over: the window background on the GUI thread (the
// palette belongs to it), white elsewhere.
QColor backdrop() {
    const QCoreApplication* app = QCoreApplication::instance();
    if (qobject_cast<const QGuiApplication*>(app) && QThread::currentThread() == app->thread())
        return QGuiApplication::palette().color(QPalette::Base);
    return Qt::white;
}

QImage opaque(const QImage& image) {
    if (!image.hasAlphaChannel())
        return image;
    QImage out(image.size(), QImage::Format_RGB32);
    out.fill(backdrop());
    QPainter p(&out);
    p.drawImage(0, 0, image);
    return out;
}

QImage readPicture(const QString& fileName, const QString& ext, int index) {
    if (ext == QLatin1String("ico") || isProgramFile(ext))
        return iconImage(fileName, ext, index);
    if (ext == QLatin1String("bmp")) {
        TBitmap bitmap;
        bitmap.LoadFromFile(fileName);
        return bitmap.Image();
    }
    if (TPicture::GraphicClassForExtension(ext).Create) {
        TPicture picture;
        picture.LoadFromFile(fileName);
        TBitmap bitmap;
        bitmap.Assign(picture.Graphic());
        return bitmap.Image();
    }
    return QImageReader(fileName).read();
}

} // namespace

std::unique_ptr<TBitmap> qxtGetBitmapFromFile(const QString& FileName, int Index) {
    QImage image;
    try {
        image = readPicture(FileName, QFileInfo(FileName).suffix().toLower(), Index);
    } catch (const std::exception&) {
        // Unreadable and broken files alike give no picture.
        return nullptr;
    }
    if (image.isNull())
        return nullptr;
    auto bitmap = std::make_unique<TBitmap>();
    bitmap->SetImage(opaque(image));
    return bitmap;
}

std::unique_ptr<TIcon> qxtExtractIcon(const QString& FileName, int Index) {
    const QImage image = iconImage(FileName, QFileInfo(FileName).suffix().toLower(), Index);
    if (image.isNull())
        return nullptr;
    auto icon = std::make_unique<TIcon>();
    icon->SetImage(image);
    return icon;
}
