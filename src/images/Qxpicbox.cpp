#include "Qxpicbox.h"

#include "Application.h"
#include "Dialogs.h"
#include "FileUtils.h"
#include "FindFile.h"
#include "QXTools.h"
#include "QxutilFiles.h"
#include "QxutilPictures.h"
#include "QxutilText.h"

#include <QCoreApplication>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>
#include <utility>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXPicBox>());
const bool editorKnown =
    RegisterEditorClass(EditorClassOf<TPicPatternProperty>("TPicPatternProperty"));

// The extension list of a set of kinds: bitmaps first without a separator, GIF last.
QString filterOf(TPicType type) {
    static const std::pair<TPicAttr, const char*> others[] = {{ptICO, ";*.ICO"}, {ptEXE, ";*.EXE"},
                                                              {ptDLL, ";*.DLL"}, {ptICL, ";*.ICL"},
                                                              {ptJPG, ";*.JPG"}, {ptGIF, ";*.GIF"}};
    QString filter = type.Contains(ptBMP) ? QStringLiteral("*.BMP") : QString();
    for (const auto& [attr, text] : others)
        if (type.Contains(attr))
            filter += QLatin1String(text);
    return filter;
}

// An icon laid on a white 32 x 32 bitmap (made on any thread, so without a canvas).
std::unique_ptr<TBitmap> iconBitmap(const TIcon& icon) {
    QImage image(32, 32, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).drawImage(0, 0, icon.Image());
    auto bitmap = std::make_unique<TBitmap>();
    bitmap->SetImage(image);
    return bitmap;
}

std::unique_ptr<TIcon> resourceIcon(const char* name) {
    auto icon = std::make_unique<TIcon>();
    icon->LoadFromFile(QStringLiteral(":/qxtools/icon/") + QLatin1String(name));
    return icon;
}

} // namespace

// ---------------------------------------------------------------------------------------------
// TFillListThread

TFillListThread::TFillListThread(TQXPicBox* Box, const QString& Filter, const QString& Pattern,
                                 bool SubDirs, bool CheckForIcons)
    : TThread(true), CheckForIcons(CheckForIcons), Filter(Filter.toUpper()), Pattern(Pattern),
      SubDirs(SubDirs), m_box(Box), m_list(Box->Items()), m_application(Application()) {}

TFillListThread::~TFillListThread() {
    Terminate();
    WaitFor();
    // Deleted before its queued end arrived (the box went away mid-scan).
    restoreCursor();
}

void TFillListThread::Execute() {
    Queue([this] {
        showWaitCursor();
        m_box->FreeBitmaps();
        m_list->Clear();
    });
    ScanDir(Pattern);
    Queue([this] { restoreCursor(); });
}

bool TFillListThread::stopping() const {
    return Terminated() || m_application->Terminated();
}

void TFillListThread::ScanDir(const QString& Path) {
    const QString dir = ExtractFilePath(Path);
    const QString mask = ExtractFileName(Path);
    // One reading of the directory serves both passes.
    auto listing = std::make_shared<const TDirListing>(dir.isEmpty() ? QStringLiteral(".") : dir);
    TSearchRec sr;
    if (SubDirs) {
        for (int rc = FindFirst(listing, QStringLiteral("*.*"), faDirectory, sr);
             rc == 0 && !stopping(); rc = FindNext(sr))
            if ((sr.Attr & faDirectory) && sr.Name != QLatin1String(".") &&
                sr.Name != QLatin1String(".."))
                ScanDir(dir + sr.Name + PathDelim + mask);
    }
    for (int rc = FindFirst(listing, mask, faAnyFile, sr); rc == 0 && !stopping();
         rc = FindNext(sr)) {
        if (sr.Attr & faDirectory)
            continue;
        const QString ext = ExtractFileExt(sr.Name).toUpper();
        if (ext.isEmpty() || !Filter.contains(ext))
            continue;
        const QString fileName = dir + sr.Name;
        if (CheckForIcons && ext != QLatin1String(".BMP")) {
            const std::unique_ptr<TIcon> icon = qxtExtractIcon(fileName, 0);
            if (icon)
                add(fileName, iconBitmap(*icon));
        } else {
            add(fileName, nullptr);
        }
    }
    FindClose(sr);
}

void TFillListThread::add(const QString& FileName, std::unique_ptr<TBitmap> Icon) {
    {
        // One wake-up of the GUI thread carries everything found since the last one arrived.
        QMutexLocker lock(&m_mutex);
        m_found.emplace_back(FileName, std::move(Icon));
        if (!m_handOverQueued) {
            m_handOverQueued = true;
            Queue([this] { handOver(); });
        }
    }
    ++m_count;
    if (OnChangePicCount)
        OnChangePicCount(m_box, m_count);
}

void TFillListThread::handOver() {
    std::vector<std::pair<QString, std::unique_ptr<TBitmap>>> found;
    {
        QMutexLocker lock(&m_mutex);
        found.swap(m_found);
        m_handOverQueued = false;
    }
    for (auto& [fileName, icon] : found) {
        const int before = m_list->Count();
        const int index = m_list->Add(fileName);
        if (icon && m_list->Count() > before)
            m_list->PutObject(index, icon.release());
    }
}

void TFillListThread::showWaitCursor() {
    m_savedCursor = Screen()->Cursor();
    qxtSetScreenCursor(crHourGlass);
    m_cursorShown = true;
}

void TFillListThread::restoreCursor() {
    if (!m_cursorShown)
        return;
    m_cursorShown = false;
    qxtSetScreenCursor(m_savedCursor);
}

// ---------------------------------------------------------------------------------------------
// TQXPicBox

TQXPicBox::TQXPicBox(QWidget* parent)
    : TCustomListBox(parent), TQXAboutCarrier(QXPicBoxVersion),
      m_backPic(std::make_unique<TBitmap>()), m_noIcon(resourceIcon("QXKEINICON")),
      m_noPicture(resourceIcon("QXKEINPIC")), m_picType{ptBMP, ptICO} {
    m_filter = filterOf(m_picType);
    SetStyle(lbOwnerDrawFixed);
    SetItemHeight(60);
    SetMultiSelect(false);
    resize(sizeHint());
    setAccessibleName(QStringLiteral("Bilderliste"));
    setAccessibleDescription(QStringLiteral("Vorschaubilder der Bilddateien eines Verzeichnisses"));
}

TQXPicBox::~TQXPicBox() {
    if (m_thread) {
        m_thread->OnTerminate = nullptr;
        delete std::exchange(m_thread, nullptr);
    }
    FreeBitmaps();
}

QSize TQXPicBox::sizeHint() const {
    return {320, 240};
}

void TQXPicBox::SetActive(bool Value) {
    m_active = Value;
    if (Value)
        FillItems(m_picPattern);
}

void TQXPicBox::SetBackPic(TBitmap* Value) {
    m_backPic->Assign(Value);
    Invalidate();
}

void TQXPicBox::SetBorderSpace(int Value) {
    m_borderSpace = std::clamp(Value, 1, 20);
    Invalidate();
}

void TQXPicBox::SetBorderWidth(int Value) {
    m_borderWidth = std::min(Value, 20);
    Invalidate();
}

void TQXPicBox::SetCaption(bool Value) {
    m_caption = Value;
    Invalidate();
}

void TQXPicBox::SetPicHeight(int Value) {
    m_picHeight = std::max(Value, 32);
    Invalidate();
}

void TQXPicBox::SetPicNoCacheSize(int Value) {
    m_picNoCacheSize = std::clamp(Value, 1, 1000000);
}

void TQXPicBox::SetPicPattern(const QString& Value) {
    m_picPattern = Value;
    FillItems(Value);
}

void TQXPicBox::SetPicType(TPicType Value) {
    if (Value == m_picType)
        return;
    m_picType = Value;
    m_filter = filterOf(Value);
    FillItems(m_picPattern);
}

void TQXPicBox::SetPicWidth(int Value) {
    m_picWidth = std::max(Value, 32);
    Invalidate();
}

void TQXPicBox::SetRows(int Value) {
    m_rows = std::max(Value, 1);
    Invalidate();
}

void TQXPicBox::SetScaled(bool Value) {
    m_scaled = Value;
    Invalidate();
}

void TQXPicBox::SetSubDirs(bool Value) {
    if (Value == m_subDirs)
        return;
    m_subDirs = Value;
    FillItems(m_picPattern);
}

void TQXPicBox::stopScan() {
    while (m_thread) {
        TFillListThread* thread = m_thread;
        thread->Terminate();
        thread->WaitFor();
        // Its additions and its end are queued on the thread object; the end clears m_thread.
        QCoreApplication::sendPostedEvents(thread);
        TApplication::ProcessMessages();
    }
}

void TQXPicBox::FillItems(const QString& Pattern) {
    stopScan();
    if (!m_active)
        return;
    if (Items()->Count() > 0) {
        FreeBitmaps();
        Items()->Clear();
    }
    if (OnChangePicCount)
        OnChangePicCount(this, Items()->Count());
    if (m_picPattern.isEmpty() || m_filter.isEmpty())
        return;
    if (OnStartScan)
        OnStartScan(this);
    m_thread = new TFillListThread(this, m_filter, Pattern, m_subDirs, m_checkForIcons);
    m_thread->OnTerminate = [this](QObject*) { ThreadDone(); };
    m_thread->OnChangePicCount = OnChangePicCount;
    m_thread->SetFreeOnTerminate(true);
    m_thread->SetPriority(tpLower);
    m_thread->Resume();
}

void TQXPicBox::ThreadDone() {
    m_thread = nullptr;
    if (OnChangePicCount)
        OnChangePicCount(this, Items()->Count());
    if (OnStopScan)
        OnStopScan(this);
}

void TQXPicBox::BreakScan() {
    if (m_thread)
        m_thread->Terminate();
}

bool TQXPicBox::FindItem(const QString& FileName) {
    SetItemIndex(Items()->IndexOf(FileName));
    return ItemIndex() >= 0;
}

TBitmap* TQXPicBox::GetBitmap(int Index) {
    auto* bitmap = static_cast<TBitmap*>(Items()->Objects(Index));
    if (!bitmap) {
        bitmap = ReadBitmap(Index).release();
        Items()->PutObject(Index, bitmap);
    }
    return bitmap;
}

std::unique_ptr<TBitmap> TQXPicBox::ReadBitmap(int Index) {
    auto cell = std::make_unique<TBitmap>(m_cellWidth, m_cellHeight);
    TCanvas* c = cell->Canvas();
    c->SetPalette(palette());
    c->Brush = Canvas()->Brush;
    c->FillRect({0, 0, m_cellWidth, m_cellHeight});
    std::unique_ptr<TBitmap> picture = qxtGetBitmapFromFile((*Items())[Index], 0);
    if (!picture) {
        picture = std::make_unique<TBitmap>(32, 32);
        picture->Canvas()->SetPalette(palette());
        picture->Canvas()->Brush = Canvas()->Brush;
        picture->Canvas()->FillRect({0, 0, 32, 32});
        picture->Canvas()->Draw(0, 0, m_noPicture.get());
    }
    qxtZoomInRect(picture.get(), {0, 0, m_cellWidth, m_cellHeight}, cell.get());
    return cell;
}

void TQXPicBox::FreeBitmaps() {
    TStrings* items = Items();
    for (int i = 0; i < items->Count(); ++i)
        if (auto* bitmap = static_cast<TBitmap*>(items->Objects(i))) {
            items->PutObject(i, nullptr);
            delete bitmap;
        }
}

void TQXPicBox::CheckPicSize() {
    const int cw = ClientWidth();
    const int ch = ClientHeight();
    int width = m_picWidth;
    int height = m_picHeight;
    if (m_scaled) {
        width = std::max(1, Columns() < 1 ? cw : cw / Columns());
        height = std::max(1, ch / m_rows);
    } else {
        const int columns = (cw + 2) / m_picWidth;
        const int rows = (ch + 2) / m_picHeight;
        // Compared as the setters store them, so a paint never asks for another one.
        if (columns != Columns() || std::max(rows, 1) != m_rows) {
            SetColumns(columns);
            SetRows(rows);
        }
    }
    SetItemHeight(std::max(1, ch / m_rows));
    if (width != m_cellWidth || height != m_cellHeight) {
        m_cellWidth = width;
        m_cellHeight = height;
        FreeBitmaps();
    }
}

int TQXPicBox::ViewIndex(const TRect& Rect) const {
    const int row = Rect.Top / ItemHeight();
    const int columnWidth = Columns() > 0 ? ClientWidth() / Columns() : 0;
    if (columnWidth <= 0)
        return -1;
    return row + (Rect.Left / columnWidth) * (ClientHeight() / ItemHeight());
}

void TQXPicBox::DrawItem(int Index, const TRect& Rect, TOwnerDrawState State) {
    // A selected cell that has the focus keeps its plain look; the focus rectangle marks it.
    bool selected = State.Contains(odSelected);
    if (selected && State.Contains(odFocused)) {
        selected = false;
        Canvas()->Brush.Color = Color();
        Canvas()->Font.SetColor(Font()->Color());
    }
    const int w = Rect.Right - Rect.Left;
    const int h = Rect.Bottom - Rect.Top;
    TBitmap cell(w, h);
    TCanvas* c = cell.Canvas();
    c->SetPalette(palette());
    c->Pen = Canvas()->Pen;
    c->Brush = Canvas()->Brush;
    c->Font.Assign(Canvas()->Font);
    c->FillRect({0, 0, w, h});
    if (!m_backPic->Empty())
        c->StretchDraw({0, 0, w, h}, m_backPic.get());
    if (m_borderWidth > 0) {
        TRect frame{0, 0, w, h};
        Frame3D(c, frame, 0xFFFFFF, 0x808080, m_borderWidth);
    }
    const TRect picture{m_borderSpace, m_borderSpace, w - m_borderSpace, h - m_borderSpace};

    QString fileName = (*Items())[Index];
    QString fileCaption = ExtractFileName(fileName);
    const int viewIndex = ViewIndex(Rect);
    if (viewIndex < 0)
        return;
    if (OnRequestFileName)
        OnRequestFileName(this, viewIndex, fileName, fileCaption);

    const qint64 size = qxtGetFileSize(fileName, false);
    bool cross = size == 0;
    if (!cross) {
        if (size >= m_picNoCacheSize) {
            qxtStretchPropDraw(GetBitmap(Index), picture, c);
        } else {
            // Small files are read at every paint; whatever fails there shows the cross.
            try {
                const std::unique_ptr<TBitmap> fresh = qxtGetBitmapFromFile(fileName, 0);
                cross = !fresh;
                if (fresh)
                    qxtStretchPropDraw(fresh.get(), picture, c);
            } catch (const std::exception&) {
                cross = true;
            }
        }
    }
    if (cross) {
        c->Pen.Color = clRed;
        c->Pen.Width = 2;
        c->Pen.Style = psSolid;
        c->MoveTo(picture.Left, picture.Top);
        c->LineTo(picture.Right, picture.Bottom);
        c->MoveTo(picture.Right, picture.Top);
        c->LineTo(picture.Left, picture.Bottom);
    }

    if (m_caption) {
        if (selected)
            c->Font.SetColor(clHighlightText);
        c->SetBkMode(TRANSPARENT);
        c->Brush.Style = bsClear;
        const int y = h - c->TextHeight(fileCaption) - m_borderWidth;
        const int x = (w - c->TextWidth(fileCaption)) / 2;
        c->TextOut(x, y, fileCaption);
    }
    Canvas()->Draw(Rect.Left, Rect.Top, &cell);
}

void TQXPicBox::paintEvent(QPaintEvent* e) {
    CheckPicSize();
    TCustomListBox::paintEvent(e);
}

void TQXPicBox::resizeEvent(QResizeEvent* e) {
    // The client area holds at least one whole cell.
    const int growW = std::max(0, m_picWidth - ClientWidth());
    const int growH = std::max(0, m_picHeight - ClientHeight());
    if (growW > 0 || growH > 0)
        resize(width() + growW, height() + growH);
    TCustomListBox::resizeEvent(e);
    // The grid follows at once, so the first paint already lays the cells out right.
    CheckPicSize();
}

void TQXPicBox::SaveToBMP(const QString& Source, const QString& Dest) {
    const QString ext = ExtractFileExt(Source).toUpper();
    std::unique_ptr<TIcon> icon;
    if (ext == QLatin1String(".BMP")) {
        if (!CopyFile(Source, Dest, false))
            ShowMessage(QStringLiteral("Fehler beim Kopieren"));
        return;
    }
    if (ext == QLatin1String(".ICO") || ext == QLatin1String(".EXE") ||
        ext == QLatin1String(".DLL")) {
        icon = qxtExtractIcon(Source, 0);
        if (!icon) {
            ShowMessage(QStringLiteral("Datei enthält kein Icon"));
            return;
        }
    } else {
        ShowMessage(QStringLiteral("Datei kann nicht konvertiert werden"));
        return;
    }
    try {
        iconBitmap(*icon)->SaveToFile(Dest);
    } catch (const Exception&) {
        ShowMessage(QStringLiteral("Fehler beim Speichern von \"%1\"").arg(Dest));
    }
}

QPixmap TQXPicBox::backPicProperty() const {
    return QPixmap::fromImage(m_backPic->Image());
}

void TQXPicBox::setBackPicProperty(const QPixmap& value) {
    TBitmap bitmap;
    bitmap.SetImage(value.toImage());
    SetBackPic(&bitmap);
}

QXPicBoxEnums::TPicTypeFlags TQXPicBox::picTypeProperty() const {
    return QXPicBoxEnums::TPicTypeFlags::fromInt(int(m_picType.Bits()));
}

void TQXPicBox::setPicTypeProperty(QXPicBoxEnums::TPicTypeFlags value) {
    SetPicType(TPicType::FromBits(std::uint64_t(value.toInt()) & 0x7F));
}

// ---------------------------------------------------------------------------------------------
// TPicPatternProperty

TPropertyAttributes TPicPatternProperty::GetAttributes() const {
    return TStringProperty::GetAttributes().Include(paDialog);
}

void TPicPatternProperty::Edit() {
    QString dir = ExtractFilePath(GetStrValue());
    if (!SelectDirectory(QStringLiteral("Bildverzeichnis wählen"), dir))
        return;
    if (dir.endsWith(PathDelim))
        dir.chop(1);
    SetStrValue(dir + QStringLiteral("/*.*"));
}

void QXPicBox::Register() {
    Q_UNUSED(classKnown);
    Q_UNUSED(editorKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXPicBox");
    if (const TPropertyEditorClass* editor = FindEditorClass(QStringLiteral("TPicPatternProperty")))
        RegisterPropertyEditor(QStringLiteral("string"), QStringLiteral("TQXPicBox"),
                               QStringLiteral("PicPattern"), *editor);
}
