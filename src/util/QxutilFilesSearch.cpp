#include "Application.h"
#include "Dialogs.h"
#include "FileUtils.h"
#include "QxutilFiles.h"
#include "QxutilText.h"

#include <QFileInfo>
#include <functional>
#include <memory>

namespace {

// X against Q where "?" in Q stands for any character. Only X's length bounds the walk: a
// longer Q matches when X is a matching prefix, a shorter one fails after its end.
bool questionMarkCompare(const QString& X, const QString& Q) {
    for (qsizetype i = 0; i < X.size(); ++i) {
        if (i >= Q.size())
            return false;
        if (Q[i] != QLatin1Char('?') && Q[i] != X[i])
            return false;
    }
    return true;
}

bool matchesField(const QString& Name, QString P) {
    const QChar star = QLatin1Char('*');
    const qsizetype s = P.indexOf(star) + 1; // 1-based, 0 when there is none
    const qsizetype second = s > 0 ? P.indexOf(star, s) + 1 : 0;
    const qsizetype t = second > 0 ? second : s;
    if (t > s)
        return Name.contains(P.mid(s, t - s - 1));
    if (s == 0) {
        if (!P.contains(QLatin1Char('?')))
            return Name == P;
        return questionMarkCompare(Name, P);
    }
    bool result = false;
    if (s == 1) {
        P.remove(0, 1);
        result = questionMarkCompare(Name.right(P.size()), P);
    }
    if (P.size() == s) {
        P.chop(1);
        result = questionMarkCompare(Name.left(P.size()), P);
    }
    return result;
}

bool allDigits(const QString& s) {
    for (QChar c : s)
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    return !s.isEmpty();
}

// The listing of Dir (a path ending in "/", or "" for the working directory) and the one a
// search of Dir + Mask reads, which is the same unless the mask names a directory of its own.
struct Listings {
    std::shared_ptr<const TDirListing> dir;
    std::shared_ptr<const TDirListing> search;
    QString mask;

    Listings(const QString& Dir, const QString& Mask, bool needDir) {
        const auto [searchDir, searchMask] = SplitSearchPath(Dir + Mask);
        mask = searchMask;
        const QString listed = Dir.isEmpty() ? QStringLiteral(".") : Dir;
        search = std::make_shared<const TDirListing>(searchDir);
        if (needDir)
            dir = searchDir == listed ? search : std::make_shared<const TDirListing>(listed);
    }
};

bool isDotName(const QString& name) {
    return name == QLatin1String(".") || name == QLatin1String("..");
}

// Visits the files of Dir matching Mask, then (with Recursive) those of every subdirectory;
// visit returns false to end the walk. Returns false when the walk was ended. Each directory
// is read once for its files and its subdirectories, whose types come from the listing.
bool walkFiles(const QString& Dir, const QString& Mask, bool Recursive,
               const std::function<bool(const QString& dir, const TSearchRec&)>& visit) {
    const QString dir = qxtCheckPath(Dir);
    TApplication::ProcessMessages();
    const Listings listings(dir, Mask, Recursive);
    TSearchRec sr;
    for (int rc = FindFirst(listings.search, listings.mask, faAnyFile, sr); rc == 0;
         rc = FindNext(sr))
        if (qxtIsFile(sr) && !visit(dir, sr))
            return false;
    if (!Recursive)
        return true;
    const TDirListing& listing = *listings.dir;
    for (int i = 0; i < listing.Count(); ++i)
        if (!isDotName(listing.Name(i)) && listing.IsDirectory(i) &&
            !walkFiles(dir + listing.Name(i), Mask, true, visit))
            return false;
    return true;
}

} // namespace

bool qxtIsMatch(const QString& Name, const QString& Patterns) {
    const int n = int(Patterns.count(QLatin1Char(';'))) + 1;
    for (int i = 1; i <= n; ++i)
        if (matchesField(Name, qxtSplitPar(Patterns, QLatin1Char(';'), i)))
            return true;
    return false;
}

QString qxtGetNextFileName(const QString& Pattern) {
    const QChar hash = QLatin1Char('#');
    const QString dir = ExtractFilePath(Pattern);
    const QString file = ExtractFileName(Pattern);
    const qsizetype first = file.indexOf(hash);
    const qsizetype width = file.count(hash);
    if (first < 0 || width > 10) {
        ShowMessage(QStringLiteral("Fehler in Filepattern"));
        return {};
    }
    QString path, name = file, ext;
    qxtSplitFileName(Pattern, path, name, ext);
    name.replace(hash, QLatin1Char('?'));

    // The counter stands at the same place in every full name of the series.
    const qsizetype pos = dir.size() + first;
    QString best;
    qint64 bestNumber = 0;
    TSearchRec sr;
    for (int rc = FindFirst(dir + name + ext, faAnyFile, sr); rc == 0; rc = FindNext(sr)) {
        if (!qxtIsFile(sr))
            continue;
        const QString full = dir + sr.Name;
        const QString digits = full.mid(pos, width);
        if (digits.size() != width || !allDigits(digits))
            continue;
        const qint64 number = digits.toLongLong();
        if (best.isEmpty() || number > bestNumber) {
            best = full;
            bestNumber = number;
        }
    }
    FindClose(sr);
    if (best.isEmpty())
        return dir + QString(file).replace(hash, QLatin1Char('0'));
    const QString next = QString::number(bestNumber + 1).rightJustified(width, QLatin1Char('0'));
    if (next.size() != width)
        return best;
    return best.left(pos) + next + best.mid(pos + width);
}

qint64 qxtGetFileSize(const QString& FileName, bool Recursive) {
    if (!FileName.contains(QLatin1Char('*')) && !FileName.contains(QLatin1Char('?'))) {
        const QFileInfo info(FileName);
        return info.isFile() ? info.size() : 0;
    }
    const QString dir = ExtractFilePath(FileName);
    const QString mask = ExtractFileName(FileName);
    const Listings listings(dir, mask, Recursive);
    qint64 total = 0;
    TSearchRec sr;
    for (int rc = FindFirst(listings.search, listings.mask, faAnyFile, sr); rc == 0;
         rc = FindNext(sr))
        if (qxtIsFile(sr))
            total += sr.Size;
    if (!Recursive)
        return total;
    const TDirListing& listing = *listings.dir;
    for (int i = 0; i < listing.Count(); ++i)
        if (!isDotName(listing.Name(i)) && listing.IsDirectory(i))
            total += qxtGetFileSize(dir + listing.Name(i) + PathDelim + mask, true);
    return total;
}

int qxtFileCount(const QString& Dir, const QString& Mask, bool Recursive) {
    return qxtFileCount3(Dir, Mask, Recursive, 0, 0);
}

int qxtFileCount2(const QString& Dir, const QString& Mask, bool Recursive, int Attr) {
    return qxtFileCount3(Dir, Mask, Recursive, Attr, 0);
}

int qxtFileCount3(const QString& Dir, const QString& Mask, bool Recursive, int Attr, int MaxCount) {
    int count = 0;
    walkFiles(Dir, Mask, Recursive, [&](const QString&, const TSearchRec& sr) {
        if ((sr.Attr & Attr) == Attr)
            ++count;
        return MaxCount <= 0 || count < MaxCount;
    });
    return count;
}

bool qxtFilesExists(const QString& Dir, const QString& Mask, bool Recursive) {
    return qxtFileCount3(Dir, Mask, Recursive, 0, 1) > 0;
}

int qxtGetFiles(TStringList* List, const QString& Dir, const QString& Mask, bool Recursive) {
    if (!List)
        return 0;
    int added = 0;
    walkFiles(Dir, Mask, Recursive, [&](const QString& dir, const TSearchRec& sr) {
        List->Add(dir + sr.Name);
        ++added;
        return true;
    });
    return added;
}
