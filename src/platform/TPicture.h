#pragma once

#include "QXExport.h"
#include "TGraphic.h"

#include <QList>
#include <QString>
#include <functional>
#include <memory>

class TBitmap;
class TIcon;

// One entry of the picture registry.
struct TFileFormat {
    QString Extension;   // lower case, without the dot
    QString Description; // "GIF Image File"
    // The class loading files of the extension.
    TGraphicClass GraphicClass;
};

// Holds one graphic of any registered class and loads files by their extension.
//
// Example, any registered picture file and its size:
//
//     TPicture picture;
//     picture.LoadFromFile(fileName); // raises EInvalidGraphic for an unknown extension
//     qDebug() << picture.Graphic()->ClassName() << picture.Width() << picture.Height();
class QXT_EXPORT TPicture : public TPersistent {
public:
    TPicture();
    ~TPicture() override;
    TPicture(const TPicture&) = delete;
    TPicture& operator=(const TPicture&) = delete;
    QString ClassName() const override { return QStringLiteral("TPicture"); }

    // The graphic held, or nullptr.
    TGraphic* Graphic() const { return m_graphic.get(); }
    // Takes a copy of graphic (a new object of its class, assigned from it); nullptr clears.
    void SetGraphic(TGraphic* graphic);
    // The graphic as a bitmap: replaces any other graphic by an empty bitmap.
    TBitmap* Bitmap();
    // The graphic as an icon: replaces any other graphic by an empty icon.
    TIcon* Icon();
    // The graphic's width, 0 without one.
    int Width() const;
    // The graphic's height, 0 without one.
    int Height() const;
    // Chooses the graphic class by the file's extension (case-blind) and loads the file;
    // raises EInvalidGraphic "Unknown picture file extension (.xyz)" for an unregistered one.
    // While the file loads, Graphic() is the new graphic, so that a progress handler can show
    // it partly loaded; when loading fails the picture keeps its old graphic.
    void LoadFromFile(const QString& fileName);
    // Saves the graphic in its own format (nothing without one).
    void SaveToFile(const QString& fileName);
    void Assign(TPersistent* source) override;
    // Called when the graphic changes (a new graphic or the graphic's own OnChange).
    std::function<void(TPicture*)> OnChange;
    // Passes on the progress reports of the graphic (while a file loads).
    TProgressEvent OnProgress;

    // Registers a graphic class for a file extension; a later registration of the same
    // extension takes precedence.
    static void RegisterFileFormat(const QString& extension, const QString& description,
                                   TGraphicClass graphicClass);
    // Removes every extension registered for the class.
    static void UnregisterGraphicClass(TGraphicClass graphicClass);
    // The registered formats, newest first.
    static QList<TFileFormat> FileFormats();
    // The class registered for an extension (without the dot), or a class with no name.
    static TGraphicClass GraphicClassForExtension(const QString& extension);
    // A file-dialog filter of every registered format ("All (*.gif *.bmp);;GIF Image File
    // (*.gif)").
    static QString FileDialogFilter();

protected:
    void AssignTo(TPersistent* dest) override;

private:
    void setOwned(TGraphic* graphic);
    void hookProgress(TGraphic* graphic);
    void changed();
    std::unique_ptr<TGraphic> m_graphic;
};
