#include "Command.h"

#include "Dispatch.h"

#include <QRegularExpression>
#include <algorithm>

namespace qxtool {

namespace {

QList<Command>& registry() {
    static QList<Command> list;
    return list;
}

// "[NAME]" and "[NAME...]" may be left out.
bool isOptional(const Entry& argument) {
    return argument.name.startsWith(QLatin1Char('['));
}

bool repeats(const Entry& argument) {
    return argument.name.endsWith(QLatin1String("...")) ||
           argument.name.endsWith(QLatin1String("...]"));
}

// A word of the command line that is an option; "-" alone and negative numbers are arguments.
bool looksLikeOption(const QString& word) {
    static const QRegularExpression number(QStringLiteral("^-[0-9.]"));
    return word.size() > 1 && word.startsWith(QLatin1Char('-')) && !number.match(word).hasMatch();
}

bool isHelp(const QString& word) {
    return word == QLatin1String("-h") || word == QLatin1String("--help");
}

constexpr qsizetype lineWidth = 79;

// Breaks the lines of text that would not fit the line width at blanks; every line but the
// first is indented (the first starts where the caller's column is).
QString wrapped(const QString& text, qsizetype indent) {
    QStringList out;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        if (indent + line.size() <= lineWidth) {
            out << line;
            continue;
        }
        QString current;
        for (const QString& word : line.split(QLatin1Char(' '))) {
            if (!current.isEmpty() && indent + current.size() + 1 + word.size() > lineWidth) {
                out << current;
                current.clear();
            }
            current += (current.isEmpty() ? QString() : QStringLiteral(" ")) + word;
        }
        out << current;
    }
    return out.join(QLatin1Char('\n') + QString(indent, QLatin1Char(' ')));
}

// Lines "  NAME  text" with the texts in one column.
void printEntries(QTextStream& s, const QString& title, const QList<Entry>& entries) {
    if (entries.isEmpty())
        return;
    qsizetype width = 0;
    for (const Entry& e : entries)
        width = std::max(width, e.name.size());
    s << '\n' << title << ":\n";
    for (const Entry& e : entries)
        s << "  " << e.name.leftJustified(width) << "  " << wrapped(e.text, width + 4) << '\n';
}

const Option* findOption(const Command& command, const QString& name) {
    for (const Option& o : command.options)
        if (o.name == name)
            return &o;
    return nullptr;
}

} // namespace

QTextStream& out() {
    static QTextStream s(stdout);
    return s;
}

QTextStream& err() {
    static QTextStream s(stderr);
    return s;
}

bool Call::has(const QString& option) const {
    return std::any_of(set.begin(), set.end(), [&](const auto& o) { return o.first == option; });
}

QString Call::value(const QString& option, const QString& fallback) const {
    for (auto it = set.crbegin(); it != set.crend(); ++it)
        if (it->first == option)
            return it->second;
    return fallback;
}

int Call::usageError(const QString& reason) const {
    return qxtool::usageError(command, reason);
}

QString Command::usage() const {
    QStringList words{name};
    for (const Option& o : options)
        words << QStringLiteral("[%1]").arg(o.value.isEmpty() ? o.name : o.name + ' ' + o.value);
    for (const Entry& a : arguments)
        words << a.name;
    return words.join(QLatin1Char(' '));
}

bool registerCommand(const Command& command) {
    registry().append(command);
    return true;
}

const QList<Command>& commands() {
    return registry();
}

const Command* findCommand(const QString& name) {
    for (const Command& c : registry())
        if (c.name == name)
            return &c;
    return nullptr;
}

int usageError(const Command& command, const QString& reason) {
    err() << "qxtool " << command.name << ": " << reason << '\n'
          << "usage: qxtool " << command.usage() << '\n'
          << "Hilfe: qxtool help " << command.name << Qt::endl;
    return 2;
}

void printHelp(const Command& command) {
    auto& s = out();
    const QString sentence = command.summary.isEmpty()
                                 ? QString()
                                 : command.summary.first(1).toUpper() + command.summary.sliced(1);
    s << "usage: qxtool " << command.usage() << "\n\n" << wrapped(sentence + '.', 0) << '\n';
    printEntries(s, QStringLiteral("Arguments"), command.arguments);
    QList<Entry> options;
    for (const Option& o : command.options)
        options << Entry{o.value.isEmpty() ? o.name : o.name + ' ' + o.value, o.text};
    options << Entry{QStringLiteral("-h, --help"), QStringLiteral("show this help and exit")}
            << Entry{QStringLiteral("--"),
                     QStringLiteral("end of options: the words after it are arguments")};
    printEntries(s, QStringLiteral("Options"), options);
    if (!command.details.isEmpty())
        s << '\n' << wrapped(command.details, 0) << '\n';
    printEntries(s, QStringLiteral("Exit codes"),
                 command.exitCodes +
                     QList<Entry>{{QStringLiteral("2"),
                                   QStringLiteral("wrong usage: unknown option, missing or extra "
                                                  "argument; nothing was done")}});
    if (!command.examples.isEmpty()) {
        s << (command.examples.size() == 1 ? "\nExample:\n" : "\nExamples:\n");
        for (const QString& e : command.examples)
            s << "  " << e << '\n';
    }
    s.flush();
}

int runCommand(const Command& command, const QStringList& words) {
    const qsizetype end = words.indexOf(QStringLiteral("--"));
    const QStringList options = end < 0 ? words : words.first(end);
    if (std::any_of(options.begin(), options.end(), isHelp)) {
        printHelp(command);
        return 0;
    }
    Call call{command, {}, {}};
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        if (i == end) {
            call.args << words.sliced(i + 1);
            break;
        }
        if (!looksLikeOption(word)) {
            call.args << word;
            continue;
        }
        const qsizetype equals = word.indexOf(QLatin1Char('='));
        const QString name = equals < 0 ? word : word.first(equals);
        const Option* option = findOption(command, name);
        if (!option)
            return usageError(command, QStringLiteral("unbekannte Option '%1'").arg(name));
        if (option->value.isEmpty()) {
            if (equals >= 0)
                return usageError(command,
                                  QStringLiteral("die Option %1 nimmt keinen Wert").arg(name));
            call.set.append({name, QString()});
        } else if (equals >= 0) {
            call.set.append({name, word.sliced(equals + 1)});
        } else if (i + 1 < words.size() && i + 1 != end) {
            call.set.append({name, words[++i]});
        } else {
            return usageError(
                command,
                QStringLiteral("der Option %1 fehlt der Wert %2").arg(name, option->value));
        }
    }
    qsizetype required = 0;
    bool unlimited = false;
    for (const Entry& a : command.arguments) {
        required += isOptional(a) ? 0 : 1;
        unlimited = unlimited || repeats(a);
    }
    if (call.args.size() < required) {
        const Entry& missing = command.arguments[call.args.size()];
        return usageError(command, QStringLiteral("das Argument %1 fehlt").arg(missing.name));
    }
    if (!unlimited && call.args.size() > command.arguments.size())
        return usageError(
            command,
            QStringLiteral("ein Argument zu viel: '%1'").arg(call.args[command.arguments.size()]));
    return command.run(call);
}

} // namespace qxtool
