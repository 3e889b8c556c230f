#include "FindFile.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

// The state of one search: the listing and the entries that passed the mask, in its order.
struct TFindState {
    std::shared_ptr<const TDirListing> listing;
    std::vector<int> matches;
    std::size_t next = 0;

    // Fills F with the next entry that the exclusion bits let through.
    int Next(TSearchRec& F);
};

namespace {

// The pattern elements of the Windows matcher: the wildcards of the DOS rules besides "*".
enum class Tok { Literal, Star, DosStar, DosDot, DosQm };

struct Token {
    Tok kind;
    QChar c;
};

std::vector<Token> tokenize(const QString& mask) {
    std::vector<Token> toks;
    if (mask == QLatin1String("*.*"))
        return {{Tok::Star, QChar()}};
    for (qsizetype i = 0; i < mask.size(); ++i) {
        const QChar c = mask[i];
        const QChar next = i + 1 < mask.size() ? mask[i + 1] : QChar();
        if (c == QLatin1Char('?'))
            toks.push_back({Tok::DosQm, c});
        else if (c == QLatin1Char('*'))
            toks.push_back({next == QLatin1Char('.') ? Tok::DosStar : Tok::Star, c});
        else if (c == QLatin1Char('.') &&
                 (next.isNull() || next == QLatin1Char('?') || next == QLatin1Char('*')))
            toks.push_back({Tok::DosDot, c});
        else
            toks.push_back({Tok::Literal, c.toUpper()});
    }
    return toks;
}

// Walks the tokens over the set of name positions reachable so far; the name matches when its
// end is reachable after the last token.
bool matchTokens(const std::vector<Token>& toks, const QString& name) {
    const qsizetype len = name.size();
    const qsizetype lastDot = name.lastIndexOf(QLatin1Char('.'));
    std::vector<char> cur(len + 1, 0), nxt(len + 1, 0);
    cur[0] = 1;
    for (const Token& t : toks) {
        std::fill(nxt.begin(), nxt.end(), 0);
        bool any = false;
        for (qsizetype n = 0; n <= len; ++n) {
            if (!cur[n])
                continue;
            switch (t.kind) {
            case Tok::Literal:
                if (n < len && name[n].toUpper() == t.c)
                    nxt[n + 1] = 1;
                break;
            case Tok::Star:
                std::fill(nxt.begin() + n, nxt.end(), 1);
                break;
            case Tok::DosStar: {
                // Any run that stops short of the name's last dot.
                const qsizetype end = lastDot >= n ? lastDot : len;
                std::fill(nxt.begin() + n, nxt.begin() + end + 1, 1);
                break;
            }
            case Tok::DosDot:
                if (n == len)
                    nxt[n] = 1;
                else if (name[n] == QLatin1Char('.'))
                    nxt[n + 1] = 1;
                break;
            case Tok::DosQm:
                if (n == len || name[n] == QLatin1Char('.'))
                    nxt[n] = 1;
                else
                    nxt[n + 1] = 1;
                break;
            }
        }
        for (char v : nxt)
            any = any || v;
        if (!any)
            return false;
        cur.swap(nxt);
    }
    return cur[len] != 0;
}

// The coarsest time steps of a Linux file system (FAT's two seconds).
constexpr qint64 kCoarsestStepSeconds = 2;

bool isDotName(const QByteArray& name) {
    return name == "." || name == "..";
}

int dosDateTime(time_t t) {
    struct tm tm {};
    localtime_r(&t, &tm);
    if (tm.tm_year < 80)
        return (1 << 21) | (1 << 16); // the DOS epoch, 1 January 1980
    const unsigned year = std::min(tm.tm_year - 80, 127);
    const quint32 v = (year << 25) | (unsigned(tm.tm_mon + 1) << 21) |
                      (unsigned(tm.tm_mday) << 16) | (unsigned(tm.tm_hour) << 11) |
                      (unsigned(tm.tm_min) << 5) | (unsigned(tm.tm_sec) / 2);
    return static_cast<int>(v);
}

int attributesOf(const struct statx& st, const QByteArray& name) {
    int attr = 0;
    const mode_t mode = st.stx_mode;
    if (S_ISDIR(mode))
        attr |= faDirectory;
    else if (S_ISREG(mode))
        attr |= faArchive;
    else
        attr |= faSysFile;
    if (!S_ISLNK(mode) && !(mode & S_IWUSR))
        attr |= faReadOnly;
    if (name.startsWith('.') && !isDotName(name))
        attr |= faHidden;
    if ((st.stx_attributes_mask & STATX_ATTR_COMPRESSED) &&
        (st.stx_attributes & STATX_ATTR_COMPRESSED))
        attr |= faCompressed;
    return attr;
}

bool statEntry(int dirFd, const char* path, struct statx& st) {
    return ::statx(dirFd, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT,
                   STATX_TYPE | STATX_MODE | STATX_SIZE | STATX_MTIME, &st) == 0;
}

QByteArray baseName(const QByteArray& path) {
    QByteArray p = path;
    while (p.size() > 1 && p.endsWith('/'))
        p.chop(1);
    const qsizetype slash = p.lastIndexOf('/');
    return slash < 0 ? p : p.mid(slash + 1);
}

} // namespace

int TFindState::Next(TSearchRec& F) {
    while (next < matches.size()) {
        const TDirListing::Entry& entry = listing->m_entries[std::size_t(matches[next++])];
        struct statx st {};
        if (!statEntry(listing->m_dirFd, entry.bytes.constData(), st))
            continue; // removed since the directory was read
        const int attr = attributesOf(st, entry.bytes);
        if (attr & F.ExcludeAttr)
            continue;
        F.Name = entry.name;
        F.Attr = attr;
        F.Size = S_ISREG(st.stx_mode) ? qint64(st.stx_size) : 0;
        F.Time = dosDateTime(st.stx_mtime.tv_sec);
        return 0;
    }
    return ERROR_NO_MORE_FILES;
}

bool MatchesMask(const QString& Name, const QString& Mask) {
    return matchTokens(tokenize(Mask), Name);
}

TDirListing::TDirListing(const QString& Dir) {
    m_dirFd = ::open(QFile::encodeName(Dir).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_dirFd < 0)
        return;
    // A change stamps the directory with the coarse clock's time (or a finer one), cut to the
    // file system's steps. When the stamp lies before the clock's time now, every later change
    // leaves a different stamp; a stamp without a fraction of a second may come from a file
    // system that counts in whole seconds or two, which needs that much more distance.
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    struct statx st {};
    if (::statx(m_dirFd, "", AT_EMPTY_PATH, STATX_CTIME, &st) == 0 && (st.stx_mask & STATX_CTIME)) {
        m_ctimeSec = st.stx_ctime.tv_sec;
        m_ctimeNsec = st.stx_ctime.tv_nsec;
        m_settled = m_ctimeNsec != 0 ? std::tie(m_ctimeSec, m_ctimeNsec) <
                                           std::tuple(qint64(now.tv_sec), quint32(now.tv_nsec))
                                     : m_ctimeSec + kCoarsestStepSeconds < now.tv_sec;
    }
    const int listFd = ::dup(m_dirFd);
    DIR* d = listFd >= 0 ? ::fdopendir(listFd) : nullptr;
    if (!d) {
        if (listFd >= 0)
            ::close(listFd);
        ::close(m_dirFd);
        m_dirFd = -1;
        return;
    }
    // "." and ".." first, then by upper-cased name, as NTFS lists a directory (the bytes
    // decide between names equal but for case).
    struct Keyed {
        int rank;
        QString key;
        std::size_t index;
    };
    std::vector<Entry> read;
    std::vector<Keyed> order;
    while (const dirent* e = ::readdir(d)) {
        QByteArray bytes(e->d_name);
        QString name = QFile::decodeName(bytes);
        const int rank = bytes == "." ? 0 : bytes == ".." ? 1 : 2;
        order.push_back({rank, rank == 2 ? name.toUpper() : QString(), read.size()});
        read.push_back({std::move(bytes), std::move(name), e->d_type});
    }
    ::closedir(d);
    std::sort(order.begin(), order.end(), [&read](const Keyed& a, const Keyed& b) {
        if (a.rank != b.rank || a.rank < 2)
            return a.rank < b.rank;
        const int c = QString::compare(a.key, b.key);
        return c != 0 ? c < 0 : read[a.index].bytes < read[b.index].bytes;
    });
    m_entries.reserve(read.size());
    for (const Keyed& k : order)
        m_entries.push_back(std::move(read[k.index]));
}

TDirListing::~TDirListing() {
    if (m_dirFd >= 0)
        ::close(m_dirFd);
}

bool TDirListing::Changed() const {
    struct statx st {};
    if (!m_settled || ::statx(m_dirFd, "", AT_EMPTY_PATH, STATX_CTIME, &st) != 0)
        return true;
    return st.stx_ctime.tv_sec != m_ctimeSec || st.stx_ctime.tv_nsec != m_ctimeNsec;
}

bool TDirListing::IsDirectory(int i) const {
    const Entry& entry = m_entries[std::size_t(i)];
    if (entry.type != DT_DIR && entry.type != DT_UNKNOWN)
        return false;
    struct statx st {};
    return statEntry(m_dirFd, entry.bytes.constData(), st) && S_ISDIR(st.stx_mode);
}

std::pair<QString, QString> SplitSearchPath(const QString& Path) {
    const qsizetype slash = Path.lastIndexOf(QLatin1Char('/'));
    return {slash < 0 ? QStringLiteral(".") : Path.left(slash + 1), Path.mid(slash + 1)};
}

int FindFirst(const QString& Path, int Attr, TSearchRec& F) {
    const auto [dir, mask] = SplitSearchPath(Path);
    return FindFirst(std::make_shared<const TDirListing>(dir), mask, Attr, F);
}

int FindFirst(std::shared_ptr<const TDirListing> Listing, const QString& Mask, int Attr,
              TSearchRec& F) {
    FindClose(F);
    F.ExcludeAttr = ~Attr & (faHidden | faSysFile | faVolumeID | faDirectory);
    if (!Listing || !Listing->IsOpen())
        return ERROR_PATH_NOT_FOUND;
    auto state = std::make_shared<TFindState>();
    if (!Mask.isEmpty()) {
        const std::vector<Token> toks = tokenize(Mask);
        // "*.*" takes every name without looking at it.
        const bool all = toks.size() == 1 && toks[0].kind == Tok::Star;
        for (int i = 0; i < Listing->Count(); ++i)
            if (all || matchTokens(toks, Listing->Name(i)))
                state->matches.push_back(i);
    }
    state->listing = std::move(Listing);
    F.FindHandle = std::move(state);
    const int rc = FindNext(F);
    if (rc != 0) {
        FindClose(F);
        return ERROR_FILE_NOT_FOUND;
    }
    return 0;
}

int FindNext(TSearchRec& F) {
    return F.FindHandle ? F.FindHandle->Next(F) : ERROR_NO_MORE_FILES;
}

void FindClose(TSearchRec& F) {
    F.FindHandle.reset();
}

int FileGetAttr(const QString& FileName) {
    const QByteArray path = QFile::encodeName(FileName);
    struct statx st {};
    if (path.isEmpty() || !statEntry(AT_FDCWD, path.constData(), st))
        return -1;
    return attributesOf(st, baseName(path));
}

int FileSetAttr(const QString& FileName, int Attr) {
    const QByteArray path = QFile::encodeName(FileName);
    struct stat st {};
    if (::lstat(path.constData(), &st) != 0)
        return errno;
    if (S_ISLNK(st.st_mode))
        return (Attr & faReadOnly) ? EPERM : 0; // a link carries no permissions of its own
    const mode_t mode = (Attr & faReadOnly) ? (st.st_mode & ~mode_t(S_IWUSR | S_IWGRP | S_IWOTH))
                                            : (st.st_mode | S_IWUSR);
    return ::chmod(path.constData(), mode & 07777) == 0 ? 0 : errno;
}

int FileAge(const QString& FileName) {
    const QByteArray path = QFile::encodeName(FileName);
    struct stat st {};
    if (path.isEmpty() || ::stat(path.constData(), &st) != 0 || S_ISDIR(st.st_mode))
        return -1;
    return dosDateTime(st.st_mtime);
}

QDateTime FileDateToDateTime(int FileDate) {
    if (FileDate == -1)
        return {};
    const quint32 v = static_cast<quint32>(FileDate);
    const QDate date(int((v >> 25) & 0x7F) + 1980, int((v >> 21) & 0x0F), int((v >> 16) & 0x1F));
    const QTime time(int((v >> 11) & 0x1F), int((v >> 5) & 0x3F), int(v & 0x1F) * 2);
    return QDateTime(date, time);
}
