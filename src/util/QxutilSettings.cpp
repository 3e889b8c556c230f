#include "QxutilSettings.h"

#include "QxutilText.h"
#include "SysUtils.h"
#include "TIniFile.h"

namespace {

const QString winPosSection = QStringLiteral("WinPos");

// StrToBool: an integer or "True"/"False".
bool strToBool(const QString& s) {
    const QString t = Trim(s);
    if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
        return true;
    if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
        return false;
    int v = 0;
    if (!TryStrToInt(t, v))
        throw EConvertError(QStringLiteral("'%1' is not a valid boolean value").arg(s));
    return v != 0;
}

} // namespace

void qxtINIFlush(const QString& FileName) {
    TIniFile(FileName).UpdateFile();
}

bool qxtINISectionExists(const QString& FileName, const QString& Section) {
    return TIniFile(FileName).SectionExists(Section);
}

void qxtINIEraseSection(const QString& FileName, const QString& Section) {
    TIniFile(FileName).EraseSection(Section);
}

void qxtINIReadSections(const QString& FileName, TStrings* List) {
    TIniFile(FileName).ReadSections(List);
}

void qxtINIReadSectionValues(const QString& FileName, const QString& Section, TStrings* List) {
    TIniFile(FileName).ReadSectionValues(Section, List);
}

void qxtINIReadSection(const QString& FileName, const QString& Section, TStrings* List) {
    TIniFile(FileName).ReadSection(Section, List);
}

void qxtINIWriteBool(const QString& FileName, const QString& Section, const QString& Key,
                     bool Value) {
    TIniFile(FileName).WriteBool(Section, Key, Value);
}

bool qxtINIReadBool(const QString& FileName, const QString& Section, const QString& Key,
                    bool Default) {
    TIniFile ini(FileName);
    const QString s = ini.ReadString(Section, Key, QString());
    if (!s.contains(QLatin1Char(';')))
        return ini.ReadBool(Section, Key, Default);
    const QString value = qxtDelComment(s);
    return Trim(value).isEmpty() ? Default : strToBool(value);
}

void qxtINIWriteInteger(const QString& FileName, const QString& Section, const QString& Key,
                        int Value) {
    TIniFile(FileName).WriteInteger(Section, Key, Value);
}

int qxtINIReadInteger(const QString& FileName, const QString& Section, const QString& Key,
                      int Default) {
    QString s =
        qxtDelComment(TIniFile(FileName).ReadString(Section, Key, QString::number(Default)));
    if (s.isEmpty())
        s = QStringLiteral("0");
    return StrToInt(s);
}

void qxtINIWriteString(const QString& FileName, const QString& Section, const QString& Key,
                       const QString& Value) {
    TIniFile(FileName).WriteString(Section, Key, Value);
}

QString qxtINIReadString(const QString& FileName, const QString& Section, const QString& Key,
                         const QString& Default) {
    return TIniFile(FileName).ReadString(Section, Key, Default);
}

void qxtINISaveWinPos(const QString& FileName, const QString& Key, TForm* Form,
                      TWinPosStyle Style) {
    if (Style == swpNone)
        return;
    SetFormWindowState(Form, wsNormal);
    TIniFile ini(FileName);
    ini.WriteInteger(winPosSection, Key + QStringLiteral("_Top"), Form->y());
    ini.WriteInteger(winPosSection, Key + QStringLiteral("_Left"), Form->x());
    if (Style == swpSizePosition) {
        ini.WriteInteger(winPosSection, Key + QStringLiteral("_Height"), Form->height());
        ini.WriteInteger(winPosSection, Key + QStringLiteral("_Width"), Form->width());
    }
}

void qxtINILoadWinPos(const QString& FileName, const QString& Key, TForm* Form,
                      TWinPosStyle Style) {
    if (Style == swpNone)
        return;
    TIniFile ini(FileName);
    Form->move(Form->x(), ini.ReadInteger(winPosSection, Key + QStringLiteral("_Top"), Form->y()));
    Form->move(ini.ReadInteger(winPosSection, Key + QStringLiteral("_Left"), Form->x()), Form->y());
    if (Style == swpSizePosition) {
        Form->resize(Form->width(), ini.ReadInteger(winPosSection, Key + QStringLiteral("_Height"),
                                                    Form->height()));
        Form->resize(ini.ReadInteger(winPosSection, Key + QStringLiteral("_Width"), Form->width()),
                     Form->height());
    }
}

void qxtINISaveFont(const QString& FileName, const QString& Section, const QString& Key,
                    TFont* Font) {
    TIniFile ini(FileName);
    ini.WriteString(Section, Key + QStringLiteral("_Name"), Font->Name());
    ini.WriteInteger(Section, Key + QStringLiteral("_Size"), Font->Size());
    ini.WriteInteger(Section, Key + QStringLiteral("_Color"), Font->Color());
    QString style;
    const TFontStyles s = Font->Style();
    if (s.Contains(fsBold))
        style += QLatin1Char('B');
    if (s.Contains(fsItalic))
        style += QLatin1Char('I');
    if (s.Contains(fsUnderline))
        style += QLatin1Char('U');
    if (s.Contains(fsStrikeOut))
        style += QLatin1Char('S');
    ini.WriteString(Section, Key + QStringLiteral("_Style"), style);
}

void qxtINILoadFont(const QString& FileName, const QString& Section, const QString& Key,
                    TFont* Font) {
    TIniFile ini(FileName);
    Font->SetName(ini.ReadString(Section, Key + QStringLiteral("_Name"), Font->Name()));
    Font->SetSize(ini.ReadInteger(Section, Key + QStringLiteral("_Size"), Font->Size()));
    Font->SetColor(ini.ReadInteger(Section, Key + QStringLiteral("_Color"), Font->Color()));
    const QString s = ini.ReadString(Section, Key + QStringLiteral("_Style"), QString());
    TFontStyles style;
    if (s.contains(QLatin1Char('B')))
        style.Include(fsBold);
    if (s.contains(QLatin1Char('I')))
        style.Include(fsItalic);
    if (s.contains(QLatin1Char('U')))
        style.Include(fsUnderline);
    if (s.contains(QLatin1Char('S')))
        style.Include(fsStrikeOut);
    Font->SetStyle(style);
}

void qxtINIWriteViewStyle(const QString& FileName, const QString& Section, const QString& Key,
                          TViewStyle Style) {
    TIniFile(FileName).WriteString(Section, Key, qxtViewStyleToStr(Style));
}

TViewStyle qxtINIReadViewStyle(const QString& FileName, const QString& Section, const QString& Key,
                               TViewStyle Default) {
    return qxtStrToViewStyle(
        TIniFile(FileName).ReadString(Section, Key, qxtViewStyleToStr(Default)));
}

QString qxtViewStyleToStr(TViewStyle Style) {
    switch (Style) {
    case vsIcon:
        return QStringLiteral("Icon");
    case vsSmallIcon:
        return QStringLiteral("SmallIcon");
    case vsList:
        return QStringLiteral("List");
    case vsReport:
        return QStringLiteral("Report");
    }
    return QStringLiteral("SmallIcon");
}

TViewStyle qxtStrToViewStyle(const QString& S) {
    if (S == QLatin1String("Icon"))
        return vsIcon;
    if (S == QLatin1String("List"))
        return vsList;
    if (S == QLatin1String("Report"))
        return vsReport;
    return vsSmallIcon;
}
