#include "TIniFile.h"

#include "QxutilFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSet>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// The file is handled as bytes so that lines the parser does not understand (even invalid
// UTF-8) survive a write unchanged; only names and values are decoded.

bool isBlank(char c) {
    return static_cast<unsigned char>(c) <= 0x20;
}

QByteArrayView trimmed(QByteArrayView v) {
    qsizetype b = 0;
    qsizetype e = v.size();
    while (b < e && isBlank(v[b]))
        ++b;
    while (e > b && isBlank(v[e - 1]))
        --e;
    return v.sliced(b, e - b);
}

enum class LineKind { Other, Section, Key };

struct Line {
    LineKind kind = LineKind::Other;
    qsizetype begin = 0;      // first byte of the line
    qsizetype end = 0;        // end of its text, before "\r\n" or "\n"
    qsizetype next = 0;       // first byte of the following line
    QByteArrayView name;      // section or key name, trimmed
    QByteArrayView value;     // key value, trimmed
    qsizetype valueBegin = 0; // where a new value goes: the trimmed value's start
};

qsizetype bomLength(QByteArrayView data) {
    return data.startsWith("\xEF\xBB\xBF") ? 3 : 0;
}

// Classifies the lines of a file one at a time.
class Scanner {
public:
    explicit Scanner(QByteArrayView data) : m_data(data), m_pos(bomLength(data)) {}

    bool next(Line& line) {
        if (m_pos >= m_data.size())
            return false;
        line = Line{};
        line.begin = m_pos;
        qsizetype nl = m_data.indexOf('\n', m_pos);
        if (nl < 0)
            nl = m_data.size();
        line.next = nl < m_data.size() ? nl + 1 : nl;
        line.end = nl > m_pos && m_data[nl - 1] == '\r' ? nl - 1 : nl;
        m_pos = line.next;

        const QByteArrayView text = m_data.sliced(line.begin, line.end - line.begin);
        const QByteArrayView t = trimmed(text);
        if (t.startsWith('[')) {
            const qsizetype close = t.indexOf(']');
            if (close > 0) {
                line.kind = LineKind::Section;
                line.name = trimmed(t.sliced(1, close - 1));
            }
            return true;
        }
        if (t.isEmpty() || t.startsWith(';'))
            return true;
        const qsizetype eq = text.indexOf('=');
        if (eq < 0)
            return true;
        const QByteArrayView name = trimmed(text.first(eq));
        if (name.isEmpty())
            return true;
        line.kind = LineKind::Key;
        line.name = name;
        const QByteArrayView rest = text.sliced(eq + 1);
        line.value = trimmed(rest);
        line.valueBegin = line.value.isEmpty() ? line.begin + eq + 1
                                               : line.begin + (line.value.data() - text.data());
        return true;
    }

private:
    QByteArrayView m_data;
    qsizetype m_pos;
};

bool isAscii(QByteArrayView v) {
    for (char c : v)
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
    return true;
}

// A section or key name asked for, compared case-blind with the names in the file.
class Name {
public:
    explicit Name(const QString& name)
        : m_text(Trim(name)), m_utf8(m_text.toUtf8()), m_ascii(isAscii(m_utf8)) {}

    bool matches(QByteArrayView raw) const {
        if (m_ascii && isAscii(raw))
            return raw.size() == m_utf8.size() &&
                   qstrnicmp(raw.data(), raw.size(), m_utf8.constData(), m_utf8.size()) == 0;
        return QString::fromUtf8(raw).compare(m_text, Qt::CaseInsensitive) == 0;
    }
    const QByteArray& utf8() const { return m_utf8; }

private:
    QString m_text;
    QByteArray m_utf8;
    bool m_ascii;
};

QByteArray readFile(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

QByteArray lineBreakOf(const QByteArray& data) {
    const qsizetype nl = data.indexOf('\n');
    return nl > 0 && data[nl - 1] == '\r' ? QByteArrayLiteral("\r\n") : QByteArrayLiteral("\n");
}

// Names and values are single lines.
QString oneLine(QString s) {
    s.replace(QLatin1Char('\r'), QLatin1Char(' '));
    s.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return s;
}

// Visits the lines of the first section named `section`; stops when `visit` returns false.
template <typename Visit> void forSection(QByteArrayView data, const Name& section, Visit visit) {
    Scanner scan(data);
    Line line;
    bool inside = false;
    while (scan.next(line)) {
        if (line.kind == LineKind::Section) {
            if (inside)
                return;
            inside = section.matches(line.name);
            continue;
        }
        if (inside && !visit(line))
            return;
    }
}

bool findKey(QByteArrayView data, const Name& section, const Name& key, Line& found) {
    bool ok = false;
    forSection(data, section, [&](const Line& line) {
        if (line.kind == LineKind::Key && key.matches(line.name)) {
            found = line;
            ok = true;
            return false;
        }
        return true;
    });
    return ok;
}

QByteArray setValue(const QByteArray& data, const Name& section, const Name& key,
                    const QByteArray& value) {
    const QByteArray eol = lineBreakOf(data);
    Scanner scan(data);
    Line line;
    bool inside = false;
    bool seen = false;
    qsizetype insertAt = -1;
    while (scan.next(line)) {
        if (line.kind == LineKind::Section) {
            if (inside)
                break;
            if (!seen && section.matches(line.name)) {
                inside = seen = true;
                insertAt = line.next;
            }
            continue;
        }
        if (!inside || line.kind != LineKind::Key)
            continue;
        if (key.matches(line.name))
            return data.first(line.valueBegin) + value + data.sliced(line.end);
        insertAt = line.next;
    }
    const QByteArray entry = key.utf8() + '=' + value + eol;
    const bool open = !data.isEmpty() && !data.endsWith('\n');
    if (seen) {
        if (open && insertAt == data.size())
            return data + eol + entry;
        return data.first(insertAt) + entry + data.sliced(insertAt);
    }
    QByteArray out = data;
    if (open)
        out += eol;
    if (!trimmed(out.sliced(bomLength(out))).isEmpty() && !out.endsWith(eol + eol))
        out += eol;
    return out + '[' + section.utf8() + ']' + eol + entry;
}

// Copies the file without the lines for which `drop` says true.
template <typename Drop> QByteArray without(const QByteArray& data, Drop drop) {
    QByteArray out;
    out.reserve(data.size());
    out += data.first(bomLength(data));
    Scanner scan(data);
    Line line;
    while (scan.next(line))
        if (!drop(line))
            out += QByteArrayView(data).sliced(line.begin, line.next - line.begin);
    return out;
}

// An exclusive advisory lock on the INI file itself, released when the object goes; nothing
// is left beside the file. Every write replaces the file, so a writer that waited on the lock
// of the file it opened checks that the name still belongs to that file and otherwise locks the
// new one. A missing file is created empty to carry the lock.
class WriteLock {
public:
    explicit WriteLock(const QString& path) : m_path(QFile::encodeName(path)) {
        for (;;) {
            m_created = false;
            m_fd = open(0);
            if (m_fd < 0 && errno == ENOENT) {
                m_fd = open(O_CREAT | O_EXCL);
                m_created = m_fd >= 0;
                if (m_fd < 0 && errno == EEXIST)
                    continue;
            }
            if (m_fd < 0)
                return;
            int rc;
            while ((rc = ::flock(m_fd, LOCK_EX)) != 0 && errno == EINTR) {
            }
            struct stat held {};
            struct stat named {};
            if (rc == 0 && ::fstat(m_fd, &held) == 0 && ::stat(m_path.constData(), &named) == 0 &&
                held.st_dev == named.st_dev && held.st_ino == named.st_ino)
                return;
            ::close(m_fd);
            m_fd = -1;
            if (rc != 0)
                return;
        }
    }
    ~WriteLock() {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;
    bool held() const { return m_fd >= 0; }
    // Removes the file if it was only created to carry the lock; the lock is still held, so no
    // other writer is inside, and one waiting on it finds the name gone and starts again.
    void removeIfCreated() const {
        if (m_created)
            ::unlink(m_path.constData());
    }

private:
    // Writable where possible, as NFS grants exclusive locks only to writers; a file without
    // write permission is still replaced by the rename, as before.
    int open(int flags) const {
        const int fd = ::open(m_path.constData(), O_RDWR | O_CLOEXEC | flags, 0666);
        return fd < 0 && errno == EACCES ? ::open(m_path.constData(), O_RDONLY | O_CLOEXEC | flags)
                                         : fd;
    }

    QByteArray m_path;
    int m_fd = -1;
    bool m_created = false;
};

[[noreturn]] void writeError(const QString& path) {
    throw EIniFileException(QStringLiteral("Unable to write to %1").arg(path));
}

// Read, change and atomically replace the file under the lock. A change that leaves the bytes
// as they were writes nothing (so erasing from a missing file does not create it).
template <typename Change> void rewrite(const QString& path, Change change) {
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        writeError(path);
    WriteLock lock(path);
    if (!lock.held())
        writeError(path);
    const QByteArray before = readFile(path);
    const QByteArray after = change(before);
    if (after == before) {
        lock.removeIfCreated();
        return;
    }
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(after) != after.size() || !out.commit())
        writeError(path);
}

} // namespace

TIniFile::TIniFile(const QString& fileName)
    : m_fileName(fileName.contains(QLatin1Char('/')) ? fileName : qxtWinDir() + fileName) {}

QString TIniFile::ReadString(const QString& Section, const QString& Ident,
                             const QString& Default) const {
    const QByteArray data = readFile(m_fileName);
    Line line;
    if (findKey(data, Name(Section), Name(Ident), line))
        return QString::fromUtf8(line.value);
    return Default;
}

void TIniFile::WriteString(const QString& Section, const QString& Ident, const QString& Value) {
    const Name section(oneLine(Section));
    const Name key(oneLine(Ident));
    const QByteArray value = oneLine(Value).toUtf8();
    rewrite(m_fileName,
            [&](const QByteArray& data) { return setValue(data, section, key, value); });
}

int TIniFile::ReadInteger(const QString& Section, const QString& Ident, int Default) const {
    return StrToIntDef(ReadString(Section, Ident, QString()), Default);
}

void TIniFile::WriteInteger(const QString& Section, const QString& Ident, int Value) {
    WriteString(Section, Ident, QString::number(Value));
}

bool TIniFile::ReadBool(const QString& Section, const QString& Ident, bool Default) const {
    return ReadInteger(Section, Ident, Default ? 1 : 0) != 0;
}

void TIniFile::WriteBool(const QString& Section, const QString& Ident, bool Value) {
    WriteString(Section, Ident, Value ? QStringLiteral("1") : QStringLiteral("0"));
}

bool TIniFile::ValueExists(const QString& Section, const QString& Ident) const {
    const QByteArray data = readFile(m_fileName);
    Line line;
    return findKey(data, Name(Section), Name(Ident), line);
}

namespace {

// Each key of a section once (its first occurrence), as "name" or "name=value".
QStringList uniqueKeys(QByteArrayView data, const QString& section, bool withValues) {
    QStringList out;
    QSet<QString> seen;
    forSection(data, Name(section), [&](const Line& line) {
        if (line.kind == LineKind::Key) {
            const QString name = QString::fromUtf8(line.name);
            if (!seen.contains(name.toCaseFolded())) {
                seen.insert(name.toCaseFolded());
                out.append(withValues ? name + QLatin1Char('=') + QString::fromUtf8(line.value)
                                      : name);
            }
        }
        return true;
    });
    return out;
}

} // namespace

void TIniFile::ReadSection(const QString& Section, TStrings* Strings) const {
    Strings->SetStringList(uniqueKeys(readFile(m_fileName), Section, false));
}

void TIniFile::ReadSections(TStrings* Strings) const {
    const QByteArray data = readFile(m_fileName);
    QStringList names;
    QSet<QString> seen;
    Scanner scan(data);
    Line line;
    while (scan.next(line)) {
        if (line.kind != LineKind::Section)
            continue;
        const QString name = QString::fromUtf8(line.name);
        if (!seen.contains(name.toCaseFolded())) {
            seen.insert(name.toCaseFolded());
            names.append(name);
        }
    }
    Strings->SetStringList(names);
}

void TIniFile::ReadSectionValues(const QString& Section, TStrings* Strings) const {
    Strings->SetStringList(uniqueKeys(readFile(m_fileName), Section, true));
}

bool TIniFile::SectionExists(const QString& Section) const {
    const QByteArray data = readFile(m_fileName);
    const Name section(Section);
    Scanner scan(data);
    Line line;
    while (scan.next(line))
        if (line.kind == LineKind::Section && section.matches(line.name))
            return true;
    return false;
}

void TIniFile::EraseSection(const QString& Section) {
    const Name section(oneLine(Section));
    rewrite(m_fileName, [&](const QByteArray& data) {
        bool inside = false;
        return without(data, [&](const Line& line) {
            if (line.kind == LineKind::Section)
                inside = section.matches(line.name);
            return inside;
        });
    });
}

void TIniFile::DeleteKey(const QString& Section, const QString& Ident) {
    const Name section(oneLine(Section));
    const Name key(oneLine(Ident));
    rewrite(m_fileName, [&](const QByteArray& data) {
        bool inside = false;
        bool seen = false;
        return without(data, [&](const Line& line) {
            if (line.kind == LineKind::Section) {
                inside = !seen && section.matches(line.name);
                seen = seen || inside;
                return false;
            }
            return inside && line.kind == LineKind::Key && key.matches(line.name);
        });
    });
}

void TIniFile::UpdateFile() {
    const int fd = ::open(QFile::encodeName(m_fileName).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}
