// qxtool ini FILE VERB ...: reads and writes INI files through the settings functions.
#include "Command.h"

#include "QxutilSettings.h"
#include "SysUtils.h"
#include "TStrings.h"

namespace {

int printList(const TStringList& list) {
    for (int i = 0; i < list.Count(); ++i)
        qxtool::out() << list[i] << '\n';
    return 0;
}

int runIni(const qxtool::Command& self, const QStringList& args) {
    if (args.size() < 2)
        return qxtool::usageError(self);
    const QString& file = args[0];
    const QString& verb = args[1];
    const QStringList rest = args.mid(2);
    const auto n = rest.size();
    auto& out = qxtool::out();
    try {
        if (verb == QLatin1String("read") && (n == 2 || n == 3)) {
            out << qxtINIReadString(file, rest[0], rest[1], n == 3 ? rest[2] : QString()) << '\n';
            return 0;
        }
        if (verb == QLatin1String("readint") && n == 3) {
            out << qxtINIReadInteger(file, rest[0], rest[1], StrToInt(rest[2])) << '\n';
            return 0;
        }
        if (verb == QLatin1String("readbool") && n == 3) {
            const bool def = StrToInt(rest[2]) != 0;
            out << (qxtINIReadBool(file, rest[0], rest[1], def) ? 1 : 0) << '\n';
            return 0;
        }
        if (verb == QLatin1String("write") && n == 3) {
            qxtINIWriteString(file, rest[0], rest[1], rest[2]);
            return 0;
        }
        TStringList list;
        if (verb == QLatin1String("sections") && n == 0) {
            qxtINIReadSections(file, &list);
            return printList(list);
        }
        if (verb == QLatin1String("keys") && n == 1) {
            qxtINIReadSection(file, rest[0], &list);
            return printList(list);
        }
        if (verb == QLatin1String("values") && n == 1) {
            qxtINIReadSectionValues(file, rest[0], &list);
            return printList(list);
        }
        if (verb == QLatin1String("erase") && n == 1) {
            qxtINIEraseSection(file, rest[0]);
            return 0;
        }
    } catch (const Exception& e) {
        qxtool::err() << e.Message() << '\n';
        return 1;
    }
    return qxtool::usageError(self);
}

const qxtool::Command iniCommand{
    QStringLiteral("ini"),
    QStringLiteral("ini FILE read SECTION KEY [DEFAULT] | readint SECTION KEY DEFAULT | "
                   "readbool SECTION KEY DEFAULT | write SECTION KEY VALUE | sections | "
                   "keys SECTION | values SECTION | erase SECTION"),
    QStringLiteral("reads and writes INI files (a bare FILE lives in the configuration directory)"),
    [](const QStringList& args) { return runIni(iniCommand, args); }};

} // namespace

QXTOOL_COMMAND(iniCommand)
