#include "QxutilVersion.h"

#include "Dialogs.h"
#include "PeResources_p.h"
#include "QxutilText.h"
#include "SysUtils.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextEdit>
#include <algorithm>

namespace {

struct VersionKey {
    QString TVersionType::*field;
    const char16_t* key;
    const char* label;
};

// The record's fields with their resource keys and memo labels, in record order.
const VersionKey versionKeys[] = {
    {&TVersionType::CompanyName, u"\\CompanyName", "        FirmenName: "},
    {&TVersionType::FileDescription, u"\\FileDescription", "DateiInformationen: "},
    {&TVersionType::FileVersion, u"\\FileVersion", "      DateiVersion: "},
    {&TVersionType::InternalName, u"\\InternalName", "     Interner Name: "},
    {&TVersionType::LegalCopyright, u"\\LegalCopyright", "    LegalCopyright: "},
    {&TVersionType::LegalTradeMarks, u"\\LegalTradeMarks", "   LegalTradeMarks: "},
    {&TVersionType::OriginalFileName, u"\\OriginalFileName", "Original DateiName: "},
    {&TVersionType::ProductName, u"\\ProductName", "       ProductName: "},
    {&TVersionType::ProductVersion, u"\\ProductVersion", "    ProduktVersion: "},
    {&TVersionType::Comments, u"\\Comments", "       Bemerkungen: "},
};

// The bytes of a regular file, mapped while the object lives (read when it cannot be mapped).
// Anything else (a directory, a device, a missing file) gives no bytes.
class FileBytes {
public:
    explicit FileBytes(const QString& fileName) : m_file(fileName) {
        if (!QFileInfo(fileName).isFile() || !m_file.open(QIODevice::ReadOnly))
            return;
        const qint64 size = m_file.size();
        if (size <= 0)
            return;
        if (const uchar* mapped = m_file.map(0, size)) {
            m_view = QByteArrayView(mapped, size);
        } else {
            m_copy = m_file.readAll();
            m_view = m_copy;
        }
    }
    QByteArrayView view() const { return m_view; }

private:
    QFile m_file;
    QByteArray m_copy;
    QByteArrayView m_view;
};

// The file's size in bytes and its modification time to the second.
qint64 fileSize(const QString& fileName) {
    return QFileInfo(fileName).size();
}

QDateTime fileDateTime(const QString& fileName) {
    QDateTime t = QFileInfo(fileName).lastModified();
    return t.addMSecs(-t.time().msec());
}

// A number written with digits and one dot, formatted "00.00": rounded half up to two
// decimals on the digits themselves, at least two digits before the dot.
QString formatTwoDecimals(const QString& number) {
    const qsizetype dot = number.indexOf(QLatin1Char('.'));
    const QString whole = number.left(dot);
    const QString fraction = number.mid(dot + 1);
    if ((whole.isEmpty() && fraction.isEmpty()) || fraction.contains(QLatin1Char('.')))
        throw EConvertError(QStringLiteral("'%1' is not a valid floating point value").arg(number));
    QString digits = whole + (fraction + QStringLiteral("00")).left(2);
    if (fraction.size() > 2 && fraction[2] >= QLatin1Char('5')) {
        qsizetype i = digits.size() - 1;
        for (; i >= 0 && digits[i] == QLatin1Char('9'); --i)
            digits[i] = QLatin1Char('0');
        if (i < 0)
            digits.prepend(QLatin1Char('1'));
        else
            digits[i] = QChar(digits[i].unicode() + 1);
    }
    QString integer = digits.left(digits.size() - 2);
    while (integer.size() > 2 && integer.startsWith(QLatin1Char('0')))
        integer.remove(0, 1);
    return integer.rightJustified(2, QLatin1Char('0')) + QLatin1Char('.') + digits.right(2);
}

// The running program's record, built from the application object.
TVersionType runningProgramRecord() {
    if (!QCoreApplication::instance())
        throw Exception(QStringLiteral("no application object"));
    TVersionType record;
    record.CompanyName = QCoreApplication::organizationName();
    record.FileDescription = QCoreApplication::applicationName();
    record.FileVersion = QCoreApplication::applicationVersion();
    record.InternalName = QCoreApplication::applicationName();
    record.OriginalFileName = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    record.ProductName = QCoreApplication::applicationName();
    record.ProductVersion = QCoreApplication::applicationVersion();
    return record;
}

// The Qt resource file of a library resource, looked up case-blind; "" when missing.
QString resourcePath(const QString& name, const QString& type) {
    const auto child = [](const QString& dir, const QString& entry, QDir::Filters filter) {
        const QStringList entries = QDir(dir).entryList(filter);
        const auto it = std::find_if(entries.begin(), entries.end(), [&](const QString& e) {
            return e.compare(entry, Qt::CaseInsensitive) == 0;
        });
        return it == entries.end() ? QString() : dir + QLatin1Char('/') + *it;
    };
    QString dir = QStringLiteral(":/qxtools");
    if (!type.isEmpty())
        dir = child(dir, type, QDir::Dirs);
    if (dir.isEmpty() || name.isEmpty())
        return {};
    return child(dir, name, QDir::Files);
}

} // namespace

TVersionType qxtGetFileVersionsInfo(const QString& FileName) {
    TVersionType record;
    const FileBytes file(FileName);
    const QByteArray block = qxpe::versionInfo(file.view());
    if (block.isEmpty())
        return record;
    const auto table = qxpe::firstTranslation(block);
    if (!table)
        return record;
    const QString prefix = QStringLiteral("\\StringFileInfo\\") + *table;
    for (const VersionKey& k : versionKeys)
        if (const auto text = qxpe::queryText(block, prefix + QString::fromUtf16(k.key)))
            record.*k.field = *text;
    return record;
}

QStringList qxtFileVersionsInfoLines(const QString& FileName) {
    QStringList lines{QStringLiteral("         Dateiname: ") + FileName};
    if (!QFileInfo(FileName).isFile()) {
        lines << QStringLiteral("Fehler : Datei nicht gefunden");
        return lines;
    }
    const TVersionType record = qxtGetFileVersionsInfo(FileName);
    for (const VersionKey& k : versionKeys)
        if (!(record.*k.field).isEmpty())
            lines << QString::fromLatin1(k.label) + record.*k.field;
    lines << QStringLiteral("        Dateigröße: ") + QString::number(fileSize(FileName));
    lines << QStringLiteral("        DateiDatum: ") + DateTimeToStr(fileDateTime(FileName));
    return lines;
}

void qxtFileVersionsInfoToMemo(const QString& FileName, QPlainTextEdit* Memo) {
    for (const QString& line : qxtFileVersionsInfoLines(FileName))
        Memo->appendPlainText(line);
}

void qxtFileVersionsInfoToMemo(const QString& FileName, QTextEdit* Memo) {
    // QTextEdit::append would take a line that looks like HTML for markup.
    QTextCursor cursor(Memo->document());
    cursor.movePosition(QTextCursor::End);
    for (const QString& line : qxtFileVersionsInfoLines(FileName)) {
        if (!Memo->document()->isEmpty())
            cursor.insertBlock();
        cursor.insertText(line);
    }
}

QString qxtGetFileVersion(const QString& FileName) {
    return qxtGetFileVersionsInfo(FileName).ProductVersion;
}

QString qxtGetAppVersion() {
    QString result = QStringLiteral("UNKNOWN");
    try {
        const QString version = runningProgramRecord().ProductVersion;
        result = version.left(std::max<qsizetype>(version.lastIndexOf(QLatin1Char('.')), 0));
    } catch (const std::exception&) {
        result = QStringLiteral("Version-ERROR");
    }
    return result;
}

QString qxtGetHexFileVersion(const QString& Version) {
    QString text;
    for (QChar c : Version)
        if ((c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.'))
            text += c;
    if (qxtInCount(text, QLatin1Char('.')) == 1)
        text = QStringLiteral("01.00.") + formatTwoDecimals(text);
    QString hex;
    for (int part = 1; part <= 4; ++part) {
        const int value = StrToInt(QLatin1Char('0') + qxtSplitPar(text, QLatin1Char('.'), part));
        hex += QString::number(quint32(value), 16).toUpper().rightJustified(4, QLatin1Char('0'));
    }
    return hex;
}

bool qxtResExists(const QString& ResName, const QString& ResType) {
    return !resourcePath(ResName, ResType).isEmpty();
}

bool qxtExtractRes(const QString& ResName, const QString& ResType, const QString& FileName) {
    const QString path = resourcePath(ResName, ResType);
    if (path.isEmpty()) {
        ShowMessage(QStringLiteral("Ressource nicht gefunden"));
        return false;
    }
    QFile resource(path);
    if (!resource.open(QIODevice::ReadOnly))
        return false;
    const QFileInfo target(FileName);
    if ((target.exists() || target.isSymLink()) && !QFile::remove(FileName)) {
        ShowMessage(QStringLiteral("Datei ") + FileName +
                    QStringLiteral(" ist in Benutzung und kann nicht aktualisiert werden"));
        return false;
    }
    QFile out(FileName);
    const QByteArray bytes = resource.readAll();
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size())
        return false;
    return out.flush();
}

QImage qxtGetFileIcon(const QString& FileName, bool LargeIcon) {
    const FileBytes file(FileName);
    return qxpe::iconGroupImage(file.view(), 0, LargeIcon ? 32 : 16);
}

int qxtGetIconCount(const QString& FileName) {
    const FileBytes file(FileName);
    return qxpe::iconGroupCount(file.view());
}
