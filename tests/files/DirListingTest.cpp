#include "FindFile.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <ctime>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

namespace {

// A listing taken now of a directory whose last change lies before this moment.
std::unique_ptr<TDirListing> settledListing(const QString& dir) {
    qxtest::passClockTick();
    return std::make_unique<TDirListing>(dir);
}

} // namespace

TEST(DirListing, ChangedTellsEveryChangeOfTheNamesOrPermissions) {
    qxtest::TempDir dir;
    dir.write(QStringLiteral("d/a.txt"), "a");
    dir.write(QStringLiteral("d/b.txt"), "b");
    const QString d = dir.file(QStringLiteral("d"));

    auto listing = settledListing(d);
    ASSERT_TRUE(listing->IsOpen());
    EXPECT_FALSE(listing->Changed());
    // Other files' bytes and the listing's own reads change nothing.
    dir.write(QStringLiteral("d/a.txt"), "longer now");
    dir.write(QStringLiteral("elsewhere.txt"), "x");
    EXPECT_TRUE(listing->IsDirectory(0));
    EXPECT_FALSE(listing->Changed());

    const auto changes = std::initializer_list<std::function<void()>>{
        [&] { dir.write(QStringLiteral("d/new.txt"), "n"); },
        [&] { QFile::remove(dir.file(QStringLiteral("d/new.txt"))); },
        [&] {
            QFile::rename(dir.file(QStringLiteral("d/b.txt")), dir.file(QStringLiteral("d/c")));
        },
        [&] { QDir(d).mkdir(QStringLiteral("sub")); },
        [&] { ::chmod(QFile::encodeName(d).constData(), 0700); },
    };
    int i = 0;
    for (const auto& change : changes) {
        listing = settledListing(d);
        ASSERT_FALSE(listing->Changed()) << "before change " << i;
        change();
        EXPECT_TRUE(listing->Changed()) << "change " << i;
        ++i;
    }
}

TEST(DirListing, ARecentChangeOrAnUnreadableDirectoryCountsAsChanged) {
    qxtest::TempDir dir;
    const TDirListing missing(dir.file(QStringLiteral("none")));
    EXPECT_FALSE(missing.IsOpen());
    EXPECT_TRUE(missing.Changed());

    // Changed within the clock tick of the reading: a second change could carry the same
    // time stamp, so the listing cannot vouch for itself.
    for (int attempt = 0; attempt < 50; ++attempt) {
        struct timespec before {
        }, after{};
        ::clock_gettime(CLOCK_REALTIME_COARSE, &before);
        const QString d = dir.file(QStringLiteral("fresh%1").arg(attempt));
        QDir().mkpath(d);
        const TDirListing fresh(d);
        ::clock_gettime(CLOCK_REALTIME_COARSE, &after);
        if (after.tv_sec == before.tv_sec && after.tv_nsec == before.tv_nsec) {
            EXPECT_TRUE(fresh.Changed());
            return;
        }
    }
    GTEST_SKIP() << "the clock ticked every time while a directory was made";
}

TEST(DirListing, SplitSearchPathIsTheSplitFindFirstMakes) {
    EXPECT_EQ(SplitSearchPath(QStringLiteral("/data/x/*.txt")),
              std::pair(QStringLiteral("/data/x/"), QStringLiteral("*.txt")));
    EXPECT_EQ(SplitSearchPath(QStringLiteral("*.txt")),
              std::pair(QStringLiteral("."), QStringLiteral("*.txt")));
    EXPECT_EQ(SplitSearchPath(QStringLiteral("/data/")),
              std::pair(QStringLiteral("/data/"), QString()));
    EXPECT_EQ(SplitSearchPath(QStringLiteral("/")), std::pair(QStringLiteral("/"), QString()));
}
