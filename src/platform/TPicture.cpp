#include "TPicture.h"

#include "SysUtils.h"

#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <cstring>
#include <utility>

namespace {

struct Registry {
    QMutex mutex;
    QList<TFileFormat> formats;
    Registry() {
        formats = {
            {QStringLiteral("bmp"), QStringLiteral("Bitmaps"), GraphicClassOf<TBitmap>()},
            {QStringLiteral("ico"), QStringLiteral("Icons"), GraphicClassOf<TIcon>()},
            {QStringLiteral("jpg"), QStringLiteral("JPEG Image File"),
             GraphicClassOf<TReaderImage>()},
            {QStringLiteral("jpeg"), QStringLiteral("JPEG Image File"),
             GraphicClassOf<TReaderImage>()},
            {QStringLiteral("png"), QStringLiteral("PNG Image File"),
             GraphicClassOf<TReaderImage>()},
        };
    }
};

Registry& registry() {
    static Registry r;
    return r;
}

bool sameClass(const TGraphicClass& a, const TGraphicClass& b) {
    return a.Name && b.Name && std::strcmp(a.Name, b.Name) == 0;
}

} // namespace

TPicture::TPicture() = default;

TPicture::~TPicture() = default;

void TPicture::setOwned(TGraphic* graphic) {
    m_graphic.reset(graphic);
    if (m_graphic) {
        m_graphic->OnChange = [this](TGraphic*) { changed(); };
        hookProgress(m_graphic.get());
    }
    changed();
}

void TPicture::hookProgress(TGraphic* graphic) {
    graphic->OnProgress = [this](TPersistent* sender, TProgressStage stage, int percent,
                                 bool redrawNow, const TRect& r, const QString& msg) {
        if (OnProgress)
            OnProgress(sender, stage, percent, redrawNow, r, msg);
    };
}

void TPicture::changed() {
    if (OnChange)
        OnChange(this);
}

void TPicture::SetGraphic(TGraphic* graphic) {
    if (!graphic) {
        setOwned(nullptr);
        return;
    }
    for (const TFileFormat& f : FileFormats()) {
        if (graphic->ClassName() == QLatin1String(f.GraphicClass.Name)) {
            std::unique_ptr<TGraphic> copy(f.GraphicClass.Create());
            copy->Assign(graphic);
            setOwned(copy.release());
            return;
        }
    }
    // An unregistered class is copied into a bitmap when it can be.
    auto copy = std::make_unique<TBitmap>();
    copy->Assign(graphic);
    setOwned(copy.release());
}

TBitmap* TPicture::Bitmap() {
    auto* b = dynamic_cast<TBitmap*>(m_graphic.get());
    if (!b) {
        b = new TBitmap;
        setOwned(b);
    }
    return b;
}

TIcon* TPicture::Icon() {
    auto* i = dynamic_cast<TIcon*>(m_graphic.get());
    if (!i) {
        i = new TIcon;
        setOwned(i);
    }
    return i;
}

int TPicture::Width() const {
    return m_graphic ? m_graphic->Width() : 0;
}

int TPicture::Height() const {
    return m_graphic ? m_graphic->Height() : 0;
}

void TPicture::LoadFromFile(const QString& fileName) {
    const QString ext = QFileInfo(fileName).suffix();
    const TGraphicClass cls = GraphicClassForExtension(ext);
    if (!cls.Create)
        throw EInvalidGraphic(QStringLiteral("Unknown picture file extension (.%1)").arg(ext));
    std::unique_ptr<TGraphic> loading(cls.Create());
    hookProgress(loading.get());
    std::unique_ptr<TGraphic> old = std::exchange(m_graphic, std::move(loading));
    try {
        m_graphic->LoadFromFile(fileName);
    } catch (...) {
        m_graphic = std::move(old);
        throw;
    }
    setOwned(m_graphic.release());
}

void TPicture::SaveToFile(const QString& fileName) {
    if (m_graphic)
        m_graphic->SaveToFile(fileName);
}

void TPicture::Assign(TPersistent* source) {
    if (!source) {
        setOwned(nullptr);
    } else if (auto* p = dynamic_cast<TPicture*>(source)) {
        SetGraphic(p->Graphic());
    } else if (auto* g = dynamic_cast<TGraphic*>(source)) {
        SetGraphic(g);
    } else {
        TPersistent::Assign(source);
    }
}

void TPicture::AssignTo(TPersistent* dest) {
    if (m_graphic)
        dest->Assign(m_graphic.get());
    else
        TPersistent::AssignTo(dest);
}

void TPicture::RegisterFileFormat(const QString& extension, const QString& description,
                                  TGraphicClass graphicClass) {
    Registry& r = registry();
    QMutexLocker lock(&r.mutex);
    r.formats.prepend({extension.toLower(), description, graphicClass});
}

void TPicture::UnregisterGraphicClass(TGraphicClass graphicClass) {
    Registry& r = registry();
    QMutexLocker lock(&r.mutex);
    r.formats.removeIf(
        [&](const TFileFormat& f) { return sameClass(f.GraphicClass, graphicClass); });
}

QList<TFileFormat> TPicture::FileFormats() {
    Registry& r = registry();
    QMutexLocker lock(&r.mutex);
    return r.formats;
}

TGraphicClass TPicture::GraphicClassForExtension(const QString& extension) {
    QString ext = extension.toLower();
    if (ext.startsWith(QLatin1Char('.')))
        ext.remove(0, 1);
    for (const TFileFormat& f : FileFormats())
        if (f.Extension == ext)
            return f.GraphicClass;
    return {};
}

QString TPicture::FileDialogFilter() {
    QStringList all, each;
    for (const TFileFormat& f : FileFormats()) {
        const QString mask = QStringLiteral("*.") + f.Extension;
        all << mask;
        each << QStringLiteral("%1 (%2)").arg(f.Description, mask);
    }
    return QStringLiteral("All (%1);;").arg(all.join(QLatin1Char(' '))) +
           each.join(QStringLiteral(";;"));
}
