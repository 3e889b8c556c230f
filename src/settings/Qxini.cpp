#include "Qxini.h"

#include "Application.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "QxutilText.h"
#include "SysUtils.h"
#include "TIniFile.h"

#include <QAbstractItemModel>
#include <QFileInfo>
#include <QHeaderView>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXINI>());

const QString winPosSection = QStringLiteral("WinPos");

// Window state -> stored integer, and stored integer -> window state.
constexpr int dtWinPosWert[] = {0, 1, 2};
constexpr TWindowState TqxWindowState[] = {wsNormal, wsMinimized, wsMaximized};

TWindowState storedState(int v) {
    return v >= 0 && v <= 2 ? TqxWindowState[v] : wsNormal;
}

QString columnKey(const QString& prefix, int i) {
    return prefix + QStringLiteral("Colum_") + QString::number(i);
}

} // namespace

TQXINI::TQXINI(QObject* owner) : TComponent(owner), TQXAboutCarrier(QXIniVersion) {
    if (auto* w = qobject_cast<QWidget*>(owner))
        m_form = w->window();
    SetINIFileName(QStringLiteral("Default.INI"));
}

TQXINI::~TQXINI() = default;

void TQXINI::SetCaption(const QString& Value) {
    m_caption = Value.isEmpty() ? Name() : Value;
}

void TQXINI::SetINIFileName(const QString& Value) {
    m_iniFileName = Value.isEmpty() ? QStringLiteral("Default.INI") : Value;
    if (m_iniFileName.contains(QLatin1Char('/')))
        m_fullPath = m_iniFileName;
    else
        m_fullPath =
            QFileInfo(TApplication::ExeName()).absolutePath() + QLatin1Char('/') + m_iniFileName;
}

void TQXINI::ReadINI() {
    if (m_caption.isEmpty())
        SetCaption(Name());
    INILoadWinPos(m_caption, m_form, m_saveWinPos);
    if (OnReadINI)
        OnReadINI(this);
    emit iniRead();
}

void TQXINI::WriteINI() {
    if (m_caption.isEmpty())
        SetCaption(Name());
    INISaveWinPos(m_caption, m_form, m_saveWinPos);
    if (OnWriteINI)
        OnWriteINI(this);
    emit iniWritten();
}

void TQXINI::INIWriteBool(const QString& Section, const QString& Key, bool Value) {
    TIniFile(m_fullPath).WriteBool(Section, Key, Value);
}

bool TQXINI::INIReadBool(const QString& Section, const QString& Key, bool Default) {
    return TIniFile(m_fullPath).ReadBool(Section, Key, Default);
}

void TQXINI::INIWriteInteger(const QString& Section, const QString& Key, int Value) {
    TIniFile(m_fullPath).WriteInteger(Section, Key, Value);
}

int TQXINI::INIReadInteger(const QString& Section, const QString& Key, int Default) {
    return TIniFile(m_fullPath).ReadInteger(Section, Key, Default);
}

void TQXINI::INIWriteString(const QString& Section, const QString& Key, const QString& Value) {
    TIniFile(m_fullPath).WriteString(Section, Key, Value);
}

QString TQXINI::INIReadString(const QString& Section, const QString& Key, const QString& Default) {
    return TIniFile(m_fullPath).ReadString(Section, Key, Default);
}

void TQXINI::INIReadItems(const QString& Section, TStrings* Items) {
    Items->Clear();
    const TIniFile ini(m_fullPath);
    // The count names the highest index, so "Anzahl" = 2 gives three items.
    const int n = ini.ReadInteger(Section, QStringLiteral("Anzahl"), 0);
    for (int i = 0; i <= n; ++i)
        Items->Add(ini.ReadString(Section, QString::number(i), QStringLiteral("Leer")));
}

void TQXINI::INIReadSection(const QString& Section, TStrings* Items) {
    TIniFile(m_fullPath).ReadSection(Section, Items);
}

void TQXINI::INIReadSectionValues(const QString& Section, TStrings* Items) {
    TIniFile(m_fullPath).ReadSectionValues(Section, Items);
}

void TQXINI::INISaveWinPos(const QString& Prefix, TForm* Form, TWinPosStyle Style) {
    if (Style == swpNone || !Form)
        return;
    TIniFile ini(m_fullPath);
    const TWindowState state = FormWindowState(Form);
    ini.WriteInteger(winPosSection, Prefix + QStringLiteral("_WindowState"), dtWinPosWert[state]);
    if (state != wsNormal)
        return;
    ini.WriteInteger(winPosSection, Prefix + QStringLiteral("_Top"), Form->y());
    ini.WriteInteger(winPosSection, Prefix + QStringLiteral("_Left"), Form->x());
    if (Style == swpSizePosition) {
        ini.WriteInteger(winPosSection, Prefix + QStringLiteral("_Height"), Form->height());
        ini.WriteInteger(winPosSection, Prefix + QStringLiteral("_Width"), Form->width());
    }
}

void TQXINI::INILoadWinPos(const QString& Prefix, TForm* Form, TWinPosStyle Style) {
    if (Style == swpNone || !Form)
        return;
    const TIniFile ini(m_fullPath);
    Form->move(Form->x(),
               ini.ReadInteger(winPosSection, Prefix + QStringLiteral("_Top"), Form->y()));
    Form->move(ini.ReadInteger(winPosSection, Prefix + QStringLiteral("_Left"), Form->x()),
               Form->y());
    if (Style == swpSizePosition) {
        Form->resize(
            Form->width(),
            ini.ReadInteger(winPosSection, Prefix + QStringLiteral("_Height"), Form->height()));
        Form->resize(
            ini.ReadInteger(winPosSection, Prefix + QStringLiteral("_Width"), Form->width()),
            Form->height());
    }
    const int v = ini.ReadInteger(winPosSection, Prefix + QStringLiteral("_WindowState"),
                                  dtWinPosWert[FormWindowState(Form)]);
    SetFormWindowState(Form, storedState(v));
}

void TQXINI::INISaveFont(const QString& Section, const QString& Prefix, TFont* Font) {
    qxtINISaveFont(m_fullPath, Section, Prefix, Font);
}

void TQXINI::INILoadFont(const QString& Section, const QString& Prefix, TFont* Font) {
    qxtINILoadFont(m_fullPath, Section, Prefix, Font);
}

void TQXINI::INISaveColumns(const QString& Section, const QString& Prefix, QTreeView* View) {
    TIniFile ini(m_fullPath);
    const QAbstractItemModel* model = View->model();
    const int count = View->header()->count();
    for (int i = 0; i < count; ++i) {
        const QString caption =
            model ? model->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString() : QString();
        ini.WriteString(Section, columnKey(Prefix, i),
                        caption + QLatin1Char('|') + QString::number(View->columnWidth(i)));
    }
}

void TQXINI::INILoadColumns(const QString& Section, const QString& Prefix, QTreeView* View,
                            bool Captions) {
    const TIniFile ini(m_fullPath);
    QAbstractItemModel* model = View->model();
    const int count = View->header()->count();
    for (int i = 0; i < count; ++i) {
        const QString s = ini.ReadString(Section, columnKey(Prefix, i), QString());
        if (s.isEmpty())
            continue;
        if (Captions && model)
            model->setHeaderData(i, Qt::Horizontal, qxtSplitPar(s, QLatin1Char('|'), 1));
        View->setColumnWidth(i, StrToInt(qxtSplitPar(s, QLatin1Char('|'), 2)));
    }
}

TViewStyle TQXINI::INIReadViewStyle(const QString& Section, const QString& Key,
                                    TViewStyle Default) {
    return qxtINIReadViewStyle(m_fullPath, Section, Key, Default);
}

void TQXINI::INIWriteViewStyle(const QString& Section, const QString& Key, TViewStyle Value) {
    qxtINIWriteViewStyle(m_fullPath, Section, Key, Value);
}

void TQXINI::KillSection(const QString& Section) {
    TIniFile(m_fullPath).EraseSection(Section);
}

void Qxini::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXINI");
}
