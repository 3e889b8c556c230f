#include "QXDesign.h"
#include "QXDirList.h"
#include "QXFind.h"
#include "QXTools.h"
#include "QxutilFiles.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

// What the events saw, one line each.
struct Recorder {
    QStringList found;    // path relative to the start + name
    QStringList notFound; // the same for OnNotFindFile
    QStringList changes;  // "relative path dirs files"
    QStringList volumes;
    int executed = 0;
    int finished = 0;

    void attach(TQXFind& f, const QString& start) {
        const auto rel = [start](const QString& path) { return path.mid(start.size()); };
        f.OnExecute = [this](QObject*) { ++executed; };
        f.OnFinished = [this](QObject*) { ++finished; };
        f.OnChange = [this, rel](QObject*, const QString& path, int dirs, int files) {
            changes << QStringLiteral("%1 %2 %3").arg(rel(path)).arg(dirs).arg(files);
        };
        f.OnFindFile = [this, rel](QObject*, const TSearchRec& r, const QString& path,
                                   const QString& volume) {
            found << rel(path) + r.Name;
            volumes << volume;
        };
        f.OnNotFindFile = [this, rel](QObject*, const TSearchRec& r, const QString& path,
                                      const QString&) { notFound << rel(path) + r.Name; };
    }
};

// start/ a.txt b.bmp c.gif .hidden/h.txt sub1/x.txt sub1/deep/y.txt sub2/z.BMP
class FindTree : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* f : {"a.txt", "b.bmp", "c.gif", ".hidden/h.txt", "sub1/x.txt",
                              "sub1/deep/y.txt", "sub2/z.BMP"})
            dir.write(QLatin1String(f), "data");
        start = dir.path() + '/';
    }
    qxtest::TempDir dir;
    QString start;
};

} // namespace

TEST_F(FindTree, SubdirectoriesFirstDepthFirstWithCounts) {
    TQXFind find;
    find.SetStartPath(dir.path());
    find.SetSubdirs(true);
    Recorder r;
    r.attach(find, start);
    find.Execute();
    // The hidden directory is not entered; its attributes (hidden + directory) are not exactly
    // those of a plain directory, so it is reported as a file.
    EXPECT_EQ(r.found, QStringList({"sub1/deep/y.txt", "sub1/x.txt", "sub2/z.BMP", ".hidden",
                                    "a.txt", "b.bmp", "c.gif"}));
    EXPECT_EQ(r.changes, QStringList({"sub1/deep/ 0 1", "sub1/ 1 1", "sub1/ 1 2", " 2 2",
                                      "sub2/ 2 3", " 3 3", " 3 4", " 3 5", " 3 6", " 3 7"}));
    EXPECT_EQ(find.DirCount(), 3);
    EXPECT_EQ(find.FileCount(), 7);
    // ".", ".." and plain directories go to OnNotFindFile.
    EXPECT_EQ(r.notFound,
              QStringList({"sub1/deep/.", "sub1/deep/..", "sub1/.", "sub1/..", "sub1/deep",
                           "sub2/.", "sub2/..", ".", "..", "sub1", "sub2"}));
    EXPECT_EQ(r.executed, 1);
    EXPECT_EQ(r.finished, 1);
    ASSERT_FALSE(r.volumes.isEmpty());
    EXPECT_EQ(r.volumes.first(), qxtVolumeName(start));
}

TEST_F(FindTree, OnlyTheStartDirectoryWithoutSubdirs) {
    TQXFind find;
    find.SetStartPath(dir.path());
    find.SetFilePattern(QStringLiteral("*.txt"));
    EXPECT_EQ(find.FilePattern(), QStringLiteral("*.TXT"));
    Recorder r;
    r.attach(find, start);
    find.Execute();
    EXPECT_EQ(r.found, QStringList({"a.txt"}));
    EXPECT_EQ(r.changes, QStringList({" 0 1"}));
    EXPECT_TRUE(r.notFound.isEmpty());
}

TEST_F(FindTree, PatternListsMatchUpperCasedNames) {
    TQXFind find;
    find.SetStartPath(start);
    find.SetSubdirs(true);
    find.SetFilePattern(QStringLiteral("*.bmp;*.gif"));
    Recorder r;
    r.attach(find, start);
    find.Execute();
    EXPECT_EQ(r.found, QStringList({"sub2/z.BMP", "b.bmp", "c.gif"}));
    // Non-matching entries are reported; ".", ".." and plain directories are passed over.
    EXPECT_EQ(r.notFound, QStringList({"sub1/deep/y.txt", "sub1/x.txt", ".hidden", "a.txt"}));
    EXPECT_EQ(find.FileCount(), 3);
    EXPECT_EQ(find.DirCount(), 3);
}

TEST_F(FindTree, BreakScanEndsAfterTheCurrentEntryAndIsClearedAgain) {
    TQXFind find;
    find.SetStartPath(start);
    find.SetSubdirs(true);
    Recorder r;
    r.attach(find, start);
    find.OnFindFile = [&](QObject* sender, const TSearchRec& rec, const QString& path,
                          const QString&) {
        r.found << path.mid(start.size()) + rec.Name;
        static_cast<TQXFind*>(sender)->BreakScan();
    };
    find.Execute();
    EXPECT_EQ(r.found, QStringList({"sub1/deep/y.txt"}));
    EXPECT_EQ(find.FileCount(), 1);
    EXPECT_EQ(r.finished, 1);

    // The flag was cleared at the end: the next search runs to its end.
    r.found.clear();
    find.OnFindFile = [&](QObject*, const TSearchRec& rec, const QString&, const QString&) {
        r.found << rec.Name;
    };
    find.Execute();
    EXPECT_EQ(r.found.size(), 7);
    EXPECT_EQ(find.FileCount(), 7);
}

TEST_F(FindTree, BreakScanBeforeExecuteIsForgotten) {
    TQXFind find;
    find.SetStartPath(start);
    find.BreakScan();
    QStringList files;
    int done = 0;
    QObject::connect(&find, &TQXFind::fileFound, [&](const QString& name) { files << name; });
    QObject::connect(&find, &TQXFind::finished, [&]() { ++done; });
    find.Execute();
    ASSERT_EQ(files.size(), 4);
    EXPECT_EQ(files.first(), start + QStringLiteral(".hidden"));
    EXPECT_EQ(done, 1);
}

TEST_F(FindTree, ADirectoryWithMoreThanTheDirectoryBitCountsAsAFile) {
    ASSERT_EQ(::chmod(QFile::encodeName(dir.file(QStringLiteral("sub2"))).constData(), 0555), 0);
    TQXFind find;
    find.SetStartPath(start);
    find.SetFilePattern(QStringLiteral("sub*"));
    Recorder r;
    r.attach(find, start);
    find.Execute();
    ::chmod(QFile::encodeName(dir.file(QStringLiteral("sub2"))).constData(), 0755);
    EXPECT_EQ(r.found, QStringList({"sub2"}));
    EXPECT_EQ(r.notFound, QStringList({"sub1"}));
}

TEST(Find, DefaultsAndProperties) {
    TQXFind find;
    EXPECT_EQ(find.StartPath(), QStringLiteral("/"));
    EXPECT_EQ(find.FilePattern(), QStringLiteral("*.*"));
    EXPECT_FALSE(find.Subdirs());
    find.SetStartPath(QStringLiteral("/data"));
    EXPECT_EQ(find.StartPath(), QStringLiteral("/data/"));
    EXPECT_TRUE(find.setProperty("FilePattern", QStringLiteral("*.gif;*.png")));
    EXPECT_EQ(find.FilePattern(), QStringLiteral("*.GIF;*.PNG"));
    EXPECT_EQ(find.property("About_QXTools").toString(), QStringLiteral("15.11.96"));
    find.setProperty("About_QXTools", QStringLiteral("01.01.00"));
    EXPECT_EQ(find.About_QXTools(), QStringLiteral("15.11.96"));
}

TEST(Find, BothComponentsRegisterOnThePalette) {
    TPaletteRegistry::Instance().Clear();
    QXFind::Register();
    QXDirList::Register();
    QStringList names;
    for (const TComponentClass& c :
         TPaletteRegistry::Instance().ClassesOnPage(QLatin1String(QXPalettePage)))
        names << c.Name;
    EXPECT_EQ(names, QStringList({"TQXFind", "TQXDirList"}));
    const TComponentClass* find = FindComponentClass(QStringLiteral("TQXFind"));
    ASSERT_NE(find, nullptr);
    EXPECT_FALSE(find->IsWidget);
    std::unique_ptr<QObject> made(find->Create(nullptr));
    EXPECT_NE(qobject_cast<TQXFind*>(made.get()), nullptr);
    TPaletteRegistry::Instance().Clear();
}

namespace {

QString record(const TSearchRec& r) {
    return QStringLiteral("%1 attr=%2 size=%3 time=%4 exclude=%5")
        .arg(r.Name)
        .arg(r.Attr)
        .arg(r.Size)
        .arg(r.Time)
        .arg(r.ExcludeAttr);
}

// Every event of a search as a line, with the whole record of the entries reported.
QStringList eventsOf(TQXFind& find) {
    QStringList log;
    find.OnChange = [&log](QObject*, const QString& path, int dirs, int files) {
        log << QStringLiteral("change %1 %2 %3").arg(path).arg(dirs).arg(files);
    };
    find.OnFindFile = [&](QObject*, const TSearchRec& r, const QString& path, const QString&) {
        log << QStringLiteral("found %1 ").arg(path) + record(r);
    };
    find.OnNotFindFile = [&](QObject*, const TSearchRec& r, const QString& path, const QString&) {
        log << QStringLiteral("other %1 ").arg(path) + record(r);
    };
    find.Execute();
    log << QStringLiteral("counts %1 %2").arg(find.DirCount()).arg(find.FileCount());
    return log;
}

// The walk written out with FindFirst/FindNext on paths, each directory listed once for its
// subdirectories and once more for its files: what the search must report.
struct ReferenceWalk {
    QString pattern;
    bool subdirs;
    QStringList log;
    int dirs = 0, files = 0;

    void change(const QString& path) {
        log << QStringLiteral("change %1 %2 %3").arg(path).arg(dirs).arg(files);
    }
    void walk(const QString& path) {
        TSearchRec sr;
        const auto dot = [&] { return sr.Name == "." || sr.Name == ".."; };
        if (subdirs)
            for (int rc = FindFirst(path + "*.*", faDirectory, sr); rc == 0; rc = FindNext(sr))
                if (!dot() && (sr.Attr & faDirectory)) {
                    walk(path + sr.Name + '/');
                    ++dirs;
                    change(path);
                }
        const bool list = pattern.contains(';');
        for (int rc = FindFirst(path + (list ? QStringLiteral("*.*") : pattern), faAnyFile, sr);
             rc == 0; rc = FindNext(sr)) {
            if (dot() || sr.Attr == faDirectory) {
                if (!list)
                    log << QStringLiteral("other %1 ").arg(path) + record(sr);
                continue;
            }
            if (list && !qxtIsMatch(sr.Name.toUpper(), pattern)) {
                log << QStringLiteral("other %1 ").arg(path) + record(sr);
                continue;
            }
            ++files;
            change(path);
            log << QStringLiteral("found %1 ").arg(path) + record(sr);
        }
    }
};

} // namespace

TEST(Find, ReportsWhatAWalkOfFindFirstAndFindNextReports) {
    qxtest::TempDir dir;
    for (const char* f :
         {"Zeta.txt", "alpha.TXT", "Alpha.txt", "b.dat", "file1.txt", "fuß.txt", "ÄRGER.txt",
          ".versteckt", ".hidden/inner.txt", "sub/one.txt", "sub/Two.DAT", "sub/deeper/three.txt",
          "sub/deeper/four", "Sub2/x.txt", "nur-lesen/drin.txt", "empty/.keep"})
        dir.write(QString::fromUtf8(f), QByteArray(int(std::strlen(f)), 'x'));
    QDir(dir.path()).mkpath(QStringLiteral("leer"));
    const QString root = dir.path() + '/';
    ASSERT_TRUE(QFile::link(root + "sub", root + "link-to-sub"));
    ASSERT_TRUE(QFile::link(root + "b.dat", root + "link-to-b"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(root + "pipe").constData(), 0644), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(root + "nur-lesen").constData(), 0555), 0);

    int compared = 0;
    for (bool subdirs : {true, false})
        for (const char* pattern : {"*.*", "*.txt", "f?le*", "*.", "sub*", "*.txt;*.dat", "zz"}) {
            SCOPED_TRACE(testing::Message() << pattern << (subdirs ? " with subdirs" : ""));
            TQXFind find;
            find.SetStartPath(root);
            find.SetSubdirs(subdirs);
            find.SetFilePattern(QString::fromLatin1(pattern));
            ReferenceWalk expected{find.FilePattern(), subdirs, {}};
            expected.walk(root);
            expected.log << QStringLiteral("counts %1 %2").arg(expected.dirs).arg(expected.files);
            EXPECT_EQ(eventsOf(find), expected.log);
            compared += int(expected.log.size());
        }
    ::chmod(QFile::encodeName(root + "nur-lesen").constData(), 0755);
    // The tree gives every kind of line many times.
    EXPECT_GT(compared, 200);
}

TEST_F(FindTree, EventsPostedBeforeTheSearchRunAtItsFirstEntry) {
    for (int i = 0; i < 50; ++i)
        dir.write(QStringLiteral("many/f%1.txt").arg(i), "x");
    TQXFind find;
    find.SetStartPath(start + "many");
    find.SetFilePattern(QStringLiteral("*.txt"));
    int found = 0;
    find.OnFindFile = [&found](QObject*, const TSearchRec&, const QString&, const QString&) {
        ++found;
    };
    QMetaObject::invokeMethod(
        &find, [&find] { find.BreakScan(); }, Qt::QueuedConnection);
    find.Execute();
    // The stop comes from the event loop while the first file is looked at: it is counted,
    // not reported.
    EXPECT_EQ(find.FileCount(), 1);
    EXPECT_EQ(found, 0);
}
