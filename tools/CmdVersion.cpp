// Version information of files: the memo listing and the hexadecimal version text.

#include "Command.h"

#include "QxutilVersion.h"
#include "SysUtils.h"

#include <QFileInfo>

namespace {

int verinfo(const QStringList& args);
int hexversion(const QStringList& args);

const qxtool::Command verinfoCommand{QStringLiteral("verinfo"), QStringLiteral("verinfo FILE"),
                                     QStringLiteral("version information of a file, as the memo "
                                                    "lists it"),
                                     verinfo};
const qxtool::Command hexversionCommand{
    QStringLiteral("hexversion"), QStringLiteral("hexversion TEXT"),
    QStringLiteral("a version text as hexadecimal digits"), hexversion};

// The memo's lines; a missing file is listed as the memo lists it and exits 1.
int verinfo(const QStringList& args) {
    if (args.size() != 1)
        return qxtool::usageError(verinfoCommand);
    for (const QString& line : qxtFileVersionsInfoLines(args[0]))
        qxtool::out() << line << '\n';
    return QFileInfo(args[0]).isFile() ? 0 : 1;
}

int hexversion(const QStringList& args) {
    if (args.size() != 1)
        return qxtool::usageError(hexversionCommand);
    try {
        qxtool::out() << qxtGetHexFileVersion(args[0]) << '\n';
    } catch (const Exception& e) {
        qxtool::err() << e.Message() << '\n';
        return 1;
    }
    return 0;
}

} // namespace

QXTOOL_COMMAND(verinfoCommand)
QXTOOL_COMMAND(hexversionCommand)
