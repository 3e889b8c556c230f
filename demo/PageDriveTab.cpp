// The drives of this machine as tabs, and what the selected one is: its root, kind, file system,
// label and free space. The tabs follow mounts and unmounts while the gallery runs.

#include "DemoPage.h"

#include "Drives.h"
#include "Qxdrvtab.h"

#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

namespace {

QString kindText(int type) {
    switch (type) {
    case DRIVE_REMOVABLE:
        return QStringLiteral("removable");
    case DRIVE_FIXED:
        return QStringLiteral("fixed disk");
    case DRIVE_REMOTE:
        return QStringLiteral("network");
    case DRIVE_CDROM:
        return QStringLiteral("CD-ROM / DVD");
    case DRIVE_RAMDISK:
        return QStringLiteral("RAM disk");
    default:
        return QStringLiteral("unknown");
    }
}

QWidget* createPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    auto* tabs = new TQXDriveTab(page);
    layout->addWidget(tabs);

    auto* form = new QFormLayout;
    auto* root = new QLabel;
    auto* kind = new QLabel;
    auto* fileSystem = new QLabel;
    auto* label = new QLabel;
    auto* free = new QLabel;
    for (QLabel* l : {root, kind, fileSystem, label, free})
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(QStringLiteral("Drive"), root);
    form->addRow(QStringLiteral("Kind"), kind);
    form->addRow(QStringLiteral("File system"), fileSystem);
    form->addRow(QStringLiteral("Label"), label);
    form->addRow(QStringLiteral("Free"), free);
    layout->addLayout(form);
    layout->addWidget(new QLabel(QStringLiteral(
        "One tab per mounted file system; mount or unmount one and the tabs follow.")));
    layout->addStretch();

    auto show = [=](QObject*) {
        const TMountPoint mount = MountPointOf(tabs->Drive());
        root->setText(tabs->Drive());
        kind->setText(kindText(DriveTypeOf(mount)));
        fileSystem->setText(mount.FsType + QStringLiteral(" on ") + mount.Source);
        const QString name = VolumeLabel(mount);
        label->setText(name.isEmpty() ? QStringLiteral("(none)") : name);
        const qint64 bytes = DiskFree(tabs->Drive());
        free->setText(bytes < 0 ? QStringLiteral("not ready")
                                : QLocale(QLocale::English).formattedDataSize(bytes));
    };
    tabs->OnClick = show;
    tabs->EndLoading();
    show(tabs);
    return page;
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Files, QStringLiteral("Drive tabs (TQXDriveTab)"), createPage})
