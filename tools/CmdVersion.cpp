// Version information of files: the memo listing and the hexadecimal version text.

#include "Command.h"

#include "QxutilVersion.h"
#include "SysUtils.h"

#include <QFileInfo>

namespace {

// The memo's lines; a missing file is listed as the memo lists it and exits 1.
int verinfo(const qxtool::Call& call) {
    const QString& file = call.args[0];
    for (const QString& line : qxtFileVersionsInfoLines(file))
        qxtool::out() << line << '\n';
    return QFileInfo(file).isFile() ? 0 : 1;
}

// Why the version text cannot be written as four hexadecimal words, or empty when it can.
QString hexVersionProblem(const QString& text, const QString& hex) {
    bool digits = false;
    qsizetype dots = 0;
    for (QChar c : text) {
        digits = digits || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
        dots += c == QLatin1Char('.') ? 1 : 0;
    }
    if (!digits)
        return QStringLiteral("'%1' enthält keine Versionsnummer").arg(text);
    if (dots > 3)
        return QStringLiteral("'%1' hat mehr als vier Teile").arg(text);
    if (hex.size() != 16)
        return QStringLiteral("ein Teil von '%1' ist größer als 65535").arg(text);
    return QString();
}

int hexversion(const qxtool::Call& call) {
    const QString& text = call.args[0];
    try {
        const QString hex = qxtGetHexFileVersion(text);
        const QString problem = hexVersionProblem(text, hex);
        if (!problem.isEmpty()) {
            qxtool::err() << "qxtool hexversion: " << problem << Qt::endl;
            return 1;
        }
        qxtool::out() << hex << '\n';
    } catch (const Exception& e) {
        qxtool::err() << "qxtool hexversion: " << e.Message() << '\n';
        return 1;
    }
    return 0;
}

const qxtool::Command verinfoCommand{
    .name = "verinfo",
    .summary = "the version information of a file, as the memo lists it",
    .arguments = {{"FILE", "a Windows program or library (its version resource is read), or any "
                           "other file (only name, size and date are listed)"}},
    .exitCodes = {{"0", "FILE exists (its lines are printed)"},
                  {"1", "FILE does not exist (\"Fehler : Datei nicht gefunden\" is printed)"}},
    .examples = {"qxtool verinfo setup.exe"},
    .run = verinfo};

const qxtool::Command hexversionCommand{
    .name = "hexversion",
    .summary = "a version text as sixteen hexadecimal digits",
    .arguments = {{"TEXT", "a version such as 3.0.4.17; only its digits and dots count, and a "
                           "text with one dot (2.5) stands for 1.0.2.50"}},
    .exitCodes = {{"0", "the digits are printed"},
                  {"1", "TEXT holds no digit, more than four parts or a part above 65535"}},
    .examples = {"qxtool hexversion 3.0.4.17"},
    .run = hexversion};

} // namespace

QXTOOL_COMMAND(verinfoCommand)
QXTOOL_COMMAND(hexversionCommand)
