#include "Drives.h"
#include "Qxdrvtab.h"
#include "TestSupport.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFontMetrics>
#include <QMap>
#include <QProcess>
#include <gtest/gtest.h>
#include <sys/mount.h>

namespace {

// A mount table as the kernel writes it. The device numbers belong to no disk of a test
// machine, so no volume label or removable flag of a real disk leaks in; labels and removable
// drives come from the table below instead.
QByteArray mountTable(const QString& extra = {}) {
    return QByteArrayLiteral("21 1 253:250 / / rw - ext4 /dev/vdz1 rw\n"
                             "22 21 0:21 / /proc rw - proc proc rw\n"
                             "23 21 0:22 / /sys rw - sysfs sysfs rw\n"
                             "24 23 0:23 / /sys/fs/cgroup rw - cgroup2 cgroup2 rw\n"
                             "25 21 0:5 / /dev rw - devtmpfs udev rw\n"
                             "26 25 0:24 / /dev/shm rw - tmpfs tmpfs rw\n"
                             "30 21 0:171 / /mnt/server rw - nfs4 srv:/export rw\n"
                             "31 21 11:250 / /media/cd ro - iso9660 /dev/sr9 ro\n"
                             "32 21 0:172 / /scratch rw - tmpfs tmpfs rw\n"
                             "33 21 0:173 / /run/user/1000 rw - tmpfs tmpfs rw\n"
                             "34 21 253:251 / /home rw - ext4 /dev/vdz2 rw\n"
                             "35 21 8:250 / /media/USB\\040Stick rw - vfat /dev/sdz1 rw\n"
                             "36 21 0:174 / /mnt/sys rw - binfmt_misc binfmt_misc rw\n") +
           extra.toUtf8();
}

// Drive tabs whose labels and removable flags are given by the test.
class ScriptedDriveTab : public TQXDriveTab {
public:
    QMap<QString, QString> labels; // by root
    QStringList removable;         // roots
    using TQXDriveTab::DrawTab;
    using TQXDriveTab::MeasureTab;

protected:
    int DriveKind(const TMountPoint& mount) const override {
        return removable.contains(mount.Root) ? DRIVE_REMOVABLE : TQXDriveTab::DriveKind(mount);
    }
    QString DriveLabel(const TMountPoint& mount) const override { return labels.value(mount.Root); }
};

// Tabs built from table, as an application's control is after loading.
struct Fixture {
    qxtest::TempDir dir;
    QString table = dir.write(QStringLiteral("mountinfo"), mountTable());
    ScriptedDriveTab tabs;
    int clicks = 0;

    explicit Fixture(bool designing = false) {
        tabs.removable << QStringLiteral("/media/USB Stick/");
        tabs.labels[QStringLiteral("/home/")] = QStringLiteral("Daten");
        tabs.SetDesigning(designing);
        tabs.SetMountTable(table);
        tabs.EndLoading();
        tabs.OnClick = [this](QObject*) { ++clicks; };
    }
    void rewrite(const QByteArray& text) { dir.write(QStringLiteral("mountinfo"), text); }
};

QList<TBitmap*> pictures(const TQXDriveTab& tabs) {
    QList<TBitmap*> out;
    for (int i = 0; i < tabs.Tabs()->Count(); ++i)
        out << static_cast<TBitmap*>(tabs.Tabs()->Objects(i));
    return out;
}

// Where a picture's opaque pixels stand in image (its top-left corner); (-1, -1) when nowhere.
QPoint findPicture(const QImage& image, const QImage& picture) {
    const QImage pic = picture.convertToFormat(QImage::Format_RGB32);
    const QRgb key = pic.pixel(0, pic.height() - 1);
    for (int y = 0; y + pic.height() <= image.height(); ++y)
        for (int x = 0; x + pic.width() <= image.width(); ++x) {
            bool match = true;
            for (int py = 0; match && py < pic.height(); ++py)
                for (int px = 0; match && px < pic.width(); ++px)
                    match = pic.pixel(px, py) == key || (image.pixel(x + px, y + py) & 0xFFFFFF) ==
                                                            (pic.pixel(px, py) & 0xFFFFFF);
            if (match)
                return {x, y};
        }
    return {-1, -1};
}

} // namespace

TEST(DriveTab, OneTabPerRealFileSystemInTableOrder) {
    Fixture f;
    TQXDriveTab& tabs = f.tabs;
    EXPECT_EQ(tabs.TabStyle(), tsOwnerDraw);
    EXPECT_EQ(tabs.Roots(), (QStringList{"/", "/mnt/server/", "/media/cd/", "/scratch/", "/home/",
                                         "/media/USB Stick/"}));
    // The label where there is one, else the last component; the root is "/".
    EXPECT_EQ(tabs.Tabs()->ToStringList(),
              (QStringList{"/", "server", "cd", "scratch", "Daten", "USB Stick"}));
    EXPECT_EQ(pictures(tabs),
              (QList<TBitmap*>{tabs.KindBitmap(DRIVE_FIXED), tabs.KindBitmap(DRIVE_REMOTE),
                               tabs.KindBitmap(DRIVE_CDROM), tabs.KindBitmap(DRIVE_RAMDISK),
                               tabs.KindBitmap(DRIVE_FIXED), tabs.KindBitmap(DRIVE_REMOVABLE)}));
    EXPECT_EQ(tabs.count(), 6);

    // Five different 16 x 16 pictures on a key colour; no picture for the other types.
    QList<QImage> seen;
    for (int kind = DRIVE_REMOVABLE; kind <= DRIVE_RAMDISK; ++kind) {
        ASSERT_NE(tabs.KindBitmap(kind), nullptr) << kind;
        const QImage image = tabs.KindBitmap(kind)->Image().convertToFormat(QImage::Format_RGB32);
        EXPECT_EQ(image.size(), QSize(16, 16)) << kind;
        EXPECT_TRUE(tabs.KindBitmap(kind)->Transparent()) << kind;
        EXPECT_FALSE(seen.contains(image)) << kind;
        seen << image;
    }
    for (int kind : {DRIVE_UNKNOWN, DRIVE_NO_ROOT_DIR, DRIVE_RAMDISK + 1})
        EXPECT_EQ(tabs.KindBitmap(kind), nullptr) << kind;
}

TEST(DriveTab, LaterMountsOverTheSamePointShowTheVisibleOne) {
    Fixture f;
    // A CD mounted over /home keeps the place of /home but shows the CD.
    f.rewrite(mountTable(QStringLiteral("40 34 11:251 / /home ro - udf /dev/sr8 ro\n")));
    f.tabs.QXOnTime();
    EXPECT_EQ(f.tabs.Roots().indexOf("/home/"), 4);
    EXPECT_EQ(pictures(f.tabs)[4], f.tabs.KindBitmap(DRIVE_CDROM));
    EXPECT_EQ(f.tabs.count(), 6);
}

TEST(DriveTab, DriveNamesTheSelectedDrivesRoot) {
    Fixture f;
    TQXDriveTab& tabs = f.tabs;
    tabs.SetDrive(QStringLiteral("/media/cd"));
    EXPECT_EQ(tabs.TabIndex(), 2);
    EXPECT_EQ(tabs.Drive(), QStringLiteral("/media/cd/"));
    EXPECT_EQ(f.clicks, 1);
    // The selected drive again is no click; a root no tab has is kept and moves nothing.
    tabs.SetDrive(QStringLiteral("/media/cd/"));
    EXPECT_EQ(f.clicks, 1);
    tabs.SetDrive(QStringLiteral("/media/cd/docs"));
    EXPECT_EQ(tabs.Drive(), QStringLiteral("/media/cd/docs/"));
    EXPECT_EQ(tabs.TabIndex(), 2);
    EXPECT_EQ(f.clicks, 1);
    // Selecting a tab (as a user's click does) makes its drive the Drive.
    tabs.SetTabIndex(3);
    EXPECT_EQ(tabs.Drive(), QStringLiteral("/scratch/"));
    EXPECT_EQ(f.clicks, 2);
}

TEST(DriveTab, EmptyDriveIsTheDriveOfTheCurrentDirectory) {
    qxtest::TempDir work;
    const QString root = QDir(work.path()).canonicalPath();
    ASSERT_TRUE(QDir().mkpath(root + QStringLiteral("/sub")));
    Fixture f;
    f.rewrite(mountTable(QStringLiteral("50 21 253:252 / %1 rw - ext4 /dev/vdz5 rw\n").arg(root)));
    f.tabs.QXOnTime();
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root + QStringLiteral("/sub")));
    f.tabs.SetDrive(QString());
    QDir::setCurrent(previous);
    EXPECT_EQ(f.tabs.Drive(), root + QLatin1Char('/'));
    EXPECT_EQ(f.tabs.TabIndex(), f.tabs.count() - 1);
}

TEST(DriveTab, TabsFollowTheMountTableAndKeepTheSelectedDrive) {
    Fixture f;
    TQXDriveTab& tabs = f.tabs;
    tabs.SetDrive(QStringLiteral("/scratch"));
    const int clicks = f.clicks;

    // The CD before the selected drive goes away; the same drive stays selected, silently.
    QByteArray table = mountTable();
    table.replace("31 21 11:250 / /media/cd ro - iso9660 /dev/sr9 ro\n", "");
    f.rewrite(table);
    tabs.QXOnTime();
    EXPECT_EQ(tabs.Roots(),
              (QStringList{"/", "/mnt/server/", "/scratch/", "/home/", "/media/USB Stick/"}));
    EXPECT_EQ(tabs.count(), 5);
    EXPECT_EQ(tabs.TabIndex(), 2);
    EXPECT_EQ(tabs.Drive(), QStringLiteral("/scratch/"));
    EXPECT_EQ(f.clicks, clicks);

    // A new mount gets a tab where the table lists it.
    table += "60 21 0:180 / /mnt/ram rw - ramfs ramfs rw\n";
    f.rewrite(table);
    tabs.QXOnTime();
    EXPECT_EQ(tabs.Roots().last(), QStringLiteral("/mnt/ram/"));
    EXPECT_EQ(tabs.Tabs()->ToStringList().last(), QStringLiteral("ram"));
    EXPECT_EQ(pictures(tabs).last(), tabs.KindBitmap(DRIVE_RAMDISK));
    EXPECT_EQ(tabs.TabIndex(), 2);

    // The selected drive itself goes away: the first drive takes its place, told by a click.
    table.replace("32 21 0:172 / /scratch rw - tmpfs tmpfs rw\n", "");
    f.rewrite(table);
    tabs.QXOnTime();
    EXPECT_FALSE(tabs.Roots().contains(QStringLiteral("/scratch/")));
    EXPECT_EQ(tabs.TabIndex(), 0);
    EXPECT_EQ(tabs.Drive(), QStringLiteral("/"));
    EXPECT_EQ(f.clicks, clicks + 1);
}

TEST(DriveTab, PicturesWidenAndDecorateTheTabsExceptInTheDesigner) {
    Fixture plain;
    Fixture designed(true);
    ASSERT_EQ(designed.tabs.Tabs()->ToStringList(), plain.tabs.Tabs()->ToStringList());
    for (int i = 0; i < plain.tabs.count(); ++i) {
        int width = 40;
        plain.tabs.MeasureTab(i, width);
        EXPECT_EQ(width, 40 + 16 + 2) << i;
        width = 40;
        designed.tabs.MeasureTab(i, width);
        EXPECT_EQ(width, 40) << i;
        EXPECT_EQ(plain.tabs.tabRect(i).width(), designed.tabs.tabRect(i).width() + 18) << i;
    }

    // In the designer Drive is kept but does not move the selection.
    designed.tabs.SetTabIndex(1);
    designed.tabs.SetDrive(QStringLiteral("/home/"));
    EXPECT_EQ(designed.tabs.TabIndex(), 1);
    EXPECT_EQ(designed.tabs.Drive(), QStringLiteral("/home/"));

    // Drawn: the picture of each kind outside the designer, none inside.
    plain.tabs.resize(plain.tabs.sizeHint());
    designed.tabs.resize(designed.tabs.sizeHint());
    const QImage withPictures = plain.tabs.grab().toImage();
    const QImage withoutPictures = designed.tabs.grab().toImage();
    for (int kind = DRIVE_REMOVABLE; kind <= DRIVE_RAMDISK; ++kind) {
        const QImage picture = plain.tabs.KindBitmap(kind)->Image();
        EXPECT_NE(findPicture(withPictures, picture), QPoint(-1, -1)) << kind;
        EXPECT_EQ(findPicture(withoutPictures, picture), QPoint(-1, -1)) << kind;
    }
}

TEST(DriveTab, APictureStandsLeftOfItsNameOnTheTabBackground) {
    Fixture f;
    f.tabs.resize(f.tabs.sizeHint());
    const QImage image = f.tabs.grab().toImage().convertToFormat(QImage::Format_RGB32);
    // The network drive's tab: its picture fills the left of the tab's contents, 4 pixels down.
    const QRect tab = f.tabs.tabRect(1);
    const QPoint at = findPicture(image, f.tabs.KindBitmap(DRIVE_REMOTE)->Image());
    ASSERT_TRUE(tab.contains(at)) << at.x() << "," << at.y();
    const int content =
        QFontMetrics(f.tabs.font()).horizontalAdvance(QStringLiteral("server")) + 18;
    EXPECT_EQ(at.x(), tab.left() + (tab.width() - content) / 2);
    EXPECT_EQ(at.y(), tab.top() + std::max(0, (tab.height() - 24) / 2) + 4);
    // The key colour around the pictures is never drawn; the name's ink lies right of it.
    bool ink = false;
    for (int y = tab.top(); y <= tab.bottom(); ++y)
        for (int x = tab.left(); x <= tab.right(); ++x) {
            EXPECT_NE(image.pixel(x, y) & 0xFFFFFF, 0xFF00FFu) << x << "," << y;
            if (x >= at.x() + 18 && qGray(image.pixel(x, y)) < 96)
                ink = true;
        }
    EXPECT_TRUE(ink);
}

// The watch on the kernel's table, seen from a private mount namespace: a child copy of this
// program mounts a RAM disk there, and its tabs must follow without being asked.
TEST(DriveTab, FollowsTheKernelsMountTableWhileRunning) {
    if (qEnvironmentVariableIsSet("QX_DRIVETAB_NAMESPACE")) {
        qxtest::TempDir dir;
        const QString point = QDir(dir.path()).canonicalPath();
        TQXDriveTab tabs;
        tabs.EndLoading();
        ASSERT_FALSE(tabs.Roots().contains(point + QLatin1Char('/')));
        ASSERT_EQ(::mount("qxtest", QFile::encodeName(point).constData(), "tmpfs", 0, nullptr), 0);
        auto waitFor = [&](bool present) {
            QDeadlineTimer deadline(10000);
            while (tabs.Roots().contains(point + QLatin1Char('/')) != present &&
                   !deadline.hasExpired())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
            return tabs.Roots().contains(point + QLatin1Char('/')) == present;
        };
        EXPECT_TRUE(waitFor(true));
        ASSERT_EQ(::umount(QFile::encodeName(point).constData()), 0);
        EXPECT_TRUE(waitFor(false));
        return;
    }
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QX_DRIVETAB_NAMESPACE"), QStringLiteral("1"));
    child.setProcessEnvironment(env);
    child.start(
        QStringLiteral("unshare"),
        {QStringLiteral("--mount"), QStringLiteral("--propagation"), QStringLiteral("private"),
         QCoreApplication::applicationFilePath(),
         QStringLiteral("--gtest_filter=DriveTab.FollowsTheKernelsMountTableWhileRunning")});
    if (!child.waitForStarted())
        GTEST_SKIP() << "unshare is not installed";
    ASSERT_TRUE(child.waitForFinished(60000));
    const QString out = QString::fromLocal8Bit(child.readAllStandardOutput());
    const QString err = QString::fromLocal8Bit(child.readAllStandardError());
    if (err.startsWith(QLatin1String("unshare:")))
        GTEST_SKIP() << "no private mount namespace here: " << err.toStdString();
    EXPECT_EQ(child.exitCode(), 0) << out.toStdString() << err.toStdString();
    EXPECT_TRUE(out.contains(QLatin1String("[  PASSED  ] 1 test"))) << out.toStdString();
}
