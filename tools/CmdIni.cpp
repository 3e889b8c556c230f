// qxtool ini FILE VERB ...: reads and writes INI files through the settings functions.
#include "Command.h"

#include "QxutilSettings.h"
#include "SysUtils.h"
#include "TStrings.h"

namespace {

struct Verb {
    const char* name;
    const char* form; // its arguments
    const char* text;
};

constexpr Verb verbs[] = {
    {"read", "SECTION KEY [DEFAULT]", "the value, or DEFAULT (empty) when absent"},
    {"readint", "SECTION KEY DEFAULT", "the value as a whole number"},
    {"readbool", "SECTION KEY DEFAULT", "1 or 0 (DEFAULT is a number)"},
    {"write", "SECTION KEY VALUE", "sets the value; other writers' keys are kept"},
    {"sections", "", "the section names, one a line"},
    {"keys", "SECTION", "the key names of SECTION"},
    {"values", "SECTION", "the KEY=VALUE lines of SECTION"},
    {"erase", "SECTION", "removes SECTION with all its keys"},
};

int printList(const TStringList& list) {
    for (int i = 0; i < list.Count(); ++i)
        qxtool::out() << list[i] << '\n';
    return 0;
}

int runIni(const qxtool::Call& call) {
    const QString& file = call.args[0];
    const QString& verb = call.args[1];
    const QStringList rest = call.args.mid(2);
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
    for (const Verb& v : verbs)
        if (verb == QLatin1String(v.name))
            return call.usageError(
                *v.form ? QStringLiteral("%1 nimmt die Argumente %2").arg(verb, v.form)
                        : QStringLiteral("%1 nimmt keine Argumente").arg(verb));
    return call.usageError(QStringLiteral("unbekanntes Verb '%1'").arg(verb));
}

QString verbHelp() {
    QString text = QStringLiteral("Verbs:\n");
    for (const Verb& v : verbs)
        text += QStringLiteral("  %1  %2\n")
                    .arg((QLatin1String(v.name) + ' ' + QLatin1String(v.form)).leftJustified(28),
                         QLatin1String(v.text));
    return text + QStringLiteral("Names are compared case-blind. Put \"--\" before a VALUE that "
                                 "starts with \"-\".");
}

const qxtool::Command iniCommand{
    .name = "ini",
    .summary = "read and write entries of INI files",
    .arguments = {{"FILE", "the INI file; a name without \"/\" lives in the configuration "
                           "directory (~/.config)"},
                  {"VERB", "what to do, one of the verbs below"},
                  {"[ARG...]", "the verb's arguments"}},
    .details = verbHelp(),
    .exitCodes = {{"0", "done (a missing key prints its default)"},
                  {"1", "a DEFAULT or a stored value is not a number, or FILE cannot be written "
                        "(the message on standard error)"}},
    .examples = {"qxtool ini app.ini write Fenster Breite 640",
                 "qxtool ini app.ini readint Fenster Breite 800"},
    .run = runIni};

} // namespace

QXTOOL_COMMAND(iniCommand)
