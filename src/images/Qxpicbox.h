#pragma once

#include "Application.h"
#include "QXAboutString.h"
#include "QXDesign.h"
#include "QXExport.h"
#include "TCustomListBox.h"
#include "TGraphic.h"
#include "TSet.h"
#include "TThread.h"

#include <QColor>
#include <QMutex>
#include <QPixmap>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

// Known to Qt's meta-object system so Designer offers the values.
namespace QXPicBoxEnums {
Q_NAMESPACE_EXPORT(QXT_EXPORT)

// The kinds of file a picture box lists.
enum TPicAttr { ptBMP, ptGIF, ptICO, ptEXE, ptDLL, ptICL, ptJPG };
Q_ENUM_NS(TPicAttr)

// PicType as Designer edits it: one flag for each kind.
enum TPicTypeFlag {
    PicBMP = 1 << ptBMP,
    PicGIF = 1 << ptGIF,
    PicICO = 1 << ptICO,
    PicEXE = 1 << ptEXE,
    PicDLL = 1 << ptDLL,
    PicICL = 1 << ptICL,
    PicJPG = 1 << ptJPG
};
Q_DECLARE_FLAGS(TPicTypeFlags, TPicTypeFlag)
Q_FLAG_NS(TPicTypeFlags)

} // namespace QXPicBoxEnums
Q_DECLARE_OPERATORS_FOR_FLAGS(QXPicBoxEnums::TPicTypeFlags)

using TPicAttr = QXPicBoxEnums::TPicAttr;
using enum QXPicBoxEnums::TPicAttr;
// A set of file kinds.
using TPicType = TSet<TPicAttr>;

// The number of listed files changed.
using TChangePicCount = std::function<void(QObject* Sender, int Count)>;
// Lets the application replace the file a cell shows and its caption.
using TQXPicBoxEvent =
    std::function<void(QObject* Sender, int ViewIndex, QString& FileName, QString& FileCaption)>;

class TQXPicBox;

// The scanner of a picture box: walks a pattern on a thread of its own, subdirectories first
// and depth first, and hands every matching file to the box's list in the order found. The
// list is touched on the GUI thread only (each addition is queued there); OnChangePicCount is
// called on the scanning thread after each addition. It stops before the next directory entry
// once terminated or once the application quits, and deletes itself when it has ended.
class QXT_EXPORT TFillListThread : public TThread {
    Q_OBJECT
public:
    // Scans Pattern into Box's Items; Filter is upper-cased here.
    TFillListThread(TQXPicBox* Box, const QString& Filter, const QString& Pattern, bool SubDirs,
                    bool CheckForIcons);
    ~TFillListThread() override;

    // List only files that hold an icon (bitmaps are always listed).
    const bool CheckForIcons;
    // The upper-cased extension list the scan accepts.
    const QString Filter;
    // Directory and file-name pattern to scan.
    const QString Pattern;
    // Descend into subdirectories.
    const bool SubDirs;
    // Called on the scanning thread with the list's new count.
    TChangePicCount OnChangePicCount;

protected:
    void Execute() override;

private:
    void ScanDir(const QString& Path);
    bool stopping() const;
    void add(const QString& FileName, std::unique_ptr<TBitmap> Icon);
    void handOver();
    void showWaitCursor();
    void restoreCursor();

    // Files found and not yet in the list, in scan order; one queued call takes all there are.
    QMutex m_mutex;
    std::vector<std::pair<QString, std::unique_ptr<TBitmap>>> m_found;
    bool m_handOverQueued = false;

    TQXPicBox* m_box;
    TStrings* m_list;
    // Made on the GUI thread: the application object belongs there.
    TApplication* m_application;
    // Items this scan has handed over so far (the list's count once they have arrived).
    int m_count = 0;
    // GUI-thread state: the cursor to restore and whether the wait cursor is up.
    int m_savedCursor = 0;
    bool m_cursorShown = false;
};

// A grid of thumbnails of the picture files that PicPattern finds, optionally in every
// subdirectory, filled by a background scan while the box stays usable.
//
// - Cells are PicWidth x PicHeight (or the client area divided into Columns x Rows when
//   Scaled); items run down the columns. A thumbnail is made when its cell is first painted
//   and kept as the item's object; files smaller than PicNoCacheSize bytes are read again at
//   every paint instead. A missing or empty file shows a red cross, an unreadable one the
//   no-picture symbol.
// - Setting Active, PicPattern, PicType or SubDirs starts a new scan (a running one is stopped
//   first); OnStartScan and OnStopScan frame it, and OnChangePicCount reports every addition
//   (from the scanning thread, so its handler must be thread-safe).
//
// Example, the pictures of a directory with their number in a label:
//
//     auto* pictures = new TQXPicBox(window);
//     pictures->SetPicPattern(QStringLiteral("/home/me/Bilder/*.*"));
//     pictures->OnChangePicCount = [label](QObject*, int count) {
//         QMetaObject::invokeMethod(label, [label, count] { label->setNum(count); },
//                                   Qt::QueuedConnection);
//     };
//     pictures->SetActive(true);
class QXT_EXPORT TQXPicBox : public TCustomListBox, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QPixmap BackPic READ backPicProperty WRITE setBackPicProperty)
    Q_PROPERTY(int BorderSpace READ BorderSpace WRITE SetBorderSpace)
    Q_PROPERTY(int BorderWidth READ BorderWidth WRITE SetBorderWidth)
    Q_PROPERTY(bool Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool CheckForIcons READ CheckForIcons WRITE SetCheckForIcons)
    Q_PROPERTY(int PicCount READ PicCount WRITE SetPicCount STORED false)
    Q_PROPERTY(int PicHeight READ PicHeight WRITE SetPicHeight)
    Q_PROPERTY(int PicNoCacheSize READ PicNoCacheSize WRITE SetPicNoCacheSize)
    Q_PROPERTY(QString PicPattern READ PicPattern WRITE SetPicPattern)
    Q_PROPERTY(QXPicBoxEnums::TPicTypeFlags PicType READ picTypeProperty WRITE setPicTypeProperty)
    Q_PROPERTY(QString Filter READ Filter WRITE SetFilter)
    Q_PROPERTY(int PicWidth READ PicWidth WRITE SetPicWidth)
    Q_PROPERTY(int Rows READ Rows WRITE SetRows)
    Q_PROPERTY(bool Scaled READ Scaled WRITE SetScaled)
    Q_PROPERTY(bool SubDirs READ SubDirs WRITE SetSubDirs)
    Q_PROPERTY(QColor Color READ colorProperty WRITE setColorProperty)
    Q_PROPERTY(int Columns READ Columns WRITE SetColumns)
    Q_PROPERTY(bool Sorted READ Sorted WRITE SetSorted)
    // Forms set properties in this order: the filter after the kinds it is built from, and the
    // scan switched on after everything it reads.
    Q_PROPERTY(bool Active READ Active WRITE SetActive)

public:
    explicit TQXPicBox(QWidget* parent = nullptr);
    // Stops a running scan and waits for it before the list goes.
    ~TQXPicBox() override;

    // Scanning on: setting true refills the list; false only stores.
    bool Active() const { return m_active; }
    void SetActive(bool Value);
    // Stretched over every cell as its background (a copy is kept).
    TBitmap* BackPic() const { return m_backPic.get(); }
    void SetBackPic(TBitmap* Value);
    // Gap between a cell's border and its picture, 1..20.
    int BorderSpace() const { return m_borderSpace; }
    void SetBorderSpace(int Value);
    // Width of each cell's raised frame, at most 20; 0 draws none.
    int BorderWidth() const { return m_borderWidth; }
    void SetBorderWidth(int Value);
    // Draw the file's name under its picture.
    bool Caption() const { return m_caption; }
    void SetCaption(bool Value);
    // List only files that hold an icon (bitmaps are always listed).
    bool CheckForIcons() const { return m_checkForIcons; }
    void SetCheckForIcons(bool Value) { m_checkForIcons = Value; }
    // The extensions a scan accepts, built from PicType ("*.BMP;*.ICO" by default).
    QString Filter() const { return m_filter; }
    void SetFilter(const QString& Value) { m_filter = Value; }
    // The number of listed files; writing changes nothing.
    int PicCount() const { return Items()->Count(); }
    void SetPicCount(int) {}
    // Cell height when not Scaled, at least 32.
    int PicHeight() const { return m_picHeight; }
    void SetPicHeight(int Value);
    // Files smaller than this many bytes are read at every paint instead of being cached;
    // 1..1000000.
    int PicNoCacheSize() const { return m_picNoCacheSize; }
    void SetPicNoCacheSize(int Value);
    // Directory and file pattern to scan ("/home/me/Bilder/*.*"); setting it refills.
    QString PicPattern() const { return m_picPattern; }
    void SetPicPattern(const QString& Value);
    // The kinds of file listed; a different set rebuilds Filter and refills.
    TPicType PicType() const { return m_picType; }
    void SetPicType(TPicType Value);
    // Cell width when not Scaled, at least 32.
    int PicWidth() const { return m_picWidth; }
    void SetPicWidth(int Value);
    // Visible rows, at least 1.
    int Rows() const { return m_rows; }
    void SetRows(int Value);
    // Cells divide the client area into Columns x Rows instead of PicWidth x PicHeight.
    bool Scaled() const { return m_scaled; }
    void SetScaled(bool Value);
    // Scan subdirectories too; a change refills.
    bool SubDirs() const { return m_subDirs; }
    void SetSubDirs(bool Value);

    // Stops any scan, clears the list and starts a scan of Pattern.
    void FillItems(const QString& Pattern);
    // Asks the running scan to end, without waiting.
    void BreakScan();
    // Selects the item named FileName (compared case-blind); false and no selection when absent.
    bool FindItem(const QString& FileName);
    // The cached thumbnail of item Index, made on first use.
    TBitmap* GetBitmap(int Index);
    // A new thumbnail of item Index at the current cell size.
    std::unique_ptr<TBitmap> ReadBitmap(int Index);
    // Drops every cached thumbnail.
    void FreeBitmaps();
    // Works out the cell size and the grid from the client area.
    void CheckPicSize();
    // Copies a BMP file, or converts an icon file or a program's first icon, to the BMP file
    // Dest; says so in a message when it cannot.
    void SaveToBMP(const QString& Source, const QString& Dest);
    // The running scan, nullptr when idle.
    TFillListThread* ScanThread() const { return m_thread; }
    // Whether a scan is running.
    bool Scanning() const { return m_thread != nullptr; }
    // The size of a thumbnail now.
    int CellWidth() const { return m_cellWidth; }
    int CellHeight() const { return m_cellHeight; }
    // The cell's index among the cells in view (down the columns), -1 when there is no grid.
    int ViewIndex(const TRect& Rect) const;

    // 320 x 240 pixels, room for a few rows of thumbnails.
    QSize sizeHint() const override;

    // The number of listed files changed (also called on the scanning thread).
    TChangePicCount OnChangePicCount;
    // Lets the application replace the file shown in a cell and its caption.
    TQXPicBoxEvent OnRequestFileName;
    // A scan is about to start.
    TNotifyEvent OnStartScan;
    // The scan has ended.
    TNotifyEvent OnStopScan;

protected:
    void DrawItem(int Index, const TRect& Rect, TOwnerDrawState State) override;
    // Lays the cells out for the current thumbnail size before painting.
    void paintEvent(QPaintEvent* e) override;
    // The control keeps room for at least one whole cell.
    void resizeEvent(QResizeEvent* e) override;

private:
    void ThreadDone();
    void stopScan();
    QPixmap backPicProperty() const;
    void setBackPicProperty(const QPixmap& value);
    QXPicBoxEnums::TPicTypeFlags picTypeProperty() const;
    void setPicTypeProperty(QXPicBoxEnums::TPicTypeFlags value);
    QColor colorProperty() const { return TColorToQColor(Color()); }
    void setColorProperty(const QColor& c) { SetColor(QColorToTColor(c)); }

    TFillListThread* m_thread = nullptr;
    std::unique_ptr<TBitmap> m_backPic;
    std::unique_ptr<TIcon> m_noIcon;
    std::unique_ptr<TIcon> m_noPicture;
    QString m_filter;
    QString m_picPattern;
    TPicType m_picType;
    int m_borderSpace = 10;
    int m_borderWidth = 2;
    int m_picHeight = 70;
    int m_picWidth = 100;
    int m_picNoCacheSize = 1000;
    int m_rows = 1;
    int m_cellHeight = 70;
    int m_cellWidth = 100;
    bool m_active = false;
    bool m_caption = false;
    bool m_checkForIcons = false;
    bool m_scaled = false;
    bool m_subDirs = false;
};

// The editor of PicPattern: chooses a directory and makes the pattern "directory/*.*".
class QXT_EXPORT TPicPatternProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    // The string editor's attributes plus paDialog.
    TPropertyAttributes GetAttributes() const override;
    // Shows the directory chooser (through the dialog service) at the pattern's directory.
    void Edit() override;
};

namespace QXPicBox {
// Puts TQXPicBox on the "QX Tools" palette page and registers its pattern editor.
QXT_EXPORT void Register();
} // namespace QXPicBox
