#pragma once

#include "Drives.h"
#include "QXAboutString.h"
#include "QXExport.h"
#include "TGraphic.h"
#include "TTabSet.h"
#include "TTimer.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>

class QFile;
class QSocketNotifier;

// A tab set with one tab per drive: every mounted real file system (pseudo file systems and
// the mounts under /proc, /sys, /dev and /run left out), in the order the mount table lists
// them. Each tab shows the picture of the drive's kind (removable, fixed, network, CD-ROM or
// RAM disk) and the drive's short name: its volume label, else the last component of its
// mount point, "/" for the root. Selecting a tab makes its drive the Drive.
//
// The tabs follow mounts and unmounts while the program runs. The kernel's mount table
// (/proc/self/mountinfo) reports every change as an urgent-data event on an open handle, so it
// is watched with a socket notifier and costs nothing while nothing changes; a table read from
// any other file (which never signals) is read again every two seconds.
//
// In the designer the tabs are built but show their names without pictures, and Drive does not
// move the selection.
//
// Example, a file list that follows the chosen drive:
//
//     auto* drives = new TQXDriveTab(window);
//     drives->OnClick = [drives, list](QObject*) { list->setRootPath(drives->Drive()); };
class QXT_EXPORT TQXDriveTab : public TTabSet, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(QString Drive READ Drive WRITE SetDrive)

public:
    // One tab per mounted file system with the current directory's one chosen; it follows
    // mounts and unmounts from then on.
    explicit TQXDriveTab(QWidget* parent = nullptr);
    ~TQXDriveTab() override;

    // The root of the selected drive, ending in "/".
    QString Drive() const { return m_drive; }
    // Stores the root Value (a "/" is added when missing) and, outside the designer, selects
    // its tab; an empty Value names the drive holding the current directory.
    void SetDrive(const QString& Value);

    // The drive roots of the tabs, in tab order.
    QStringList Roots() const { return m_roots; }
    // The picture of a drive type (DRIVE_REMOVABLE to DRIVE_RAMDISK); nullptr for the types
    // that get no tab.
    TBitmap* KindBitmap(int driveType) const;

    // The mount table the tabs are built from, in the format of /proc/self/mountinfo (the
    // default). Setting it reads it at once and watches it from then on.
    QString MountTable() const { return m_mountTable; }
    void SetMountTable(const QString& fileName);

public slots:
    // Reads the mount table again and rebuilds the tabs when it changed; the watch calls it.
    void QXOnTime();

protected:
    // The type of a mounted file system (one of the DRIVE_ numbers).
    virtual int DriveKind(const TMountPoint& mount) const;
    // The volume label of a mounted file system; "" when it has none.
    virtual QString DriveLabel(const TMountPoint& mount) const;

    void Loaded() override;
    void MeasureTab(int Index, int& TabWidth) override;
    void DrawTab(TCanvas* TabCanvas, const TRect& R, int Index, bool Selected) override;
    void Click() override;

private:
    bool designing() const { return ComponentState().Contains(csDesigning); }
    QByteArray readMountTable() const;
    QList<TMountPoint> drives(const QByteArray& table) const;
    QString currentDrive() const;
    void buildTabs();
    void watch();

    std::array<std::unique_ptr<TBitmap>, 5> m_pictures;
    QString m_drive;
    QStringList m_roots;
    QString m_mountTable;
    QByteArray m_table;
    std::unique_ptr<QFile> m_watched;
    std::unique_ptr<QSocketNotifier> m_notifier;
    TTimer m_timer;
    // Set while the tabs are rebuilt, so keeping the selected drive is no click.
    bool m_rebuilding = false;
};

namespace Qxdrvtab {
// Puts TQXDriveTab on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxdrvtab
