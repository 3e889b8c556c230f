#include "Qxdrvtab.h"

#include "QXDesign.h"
#include "QXTools.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXDriveTab>());

// The resource pictures by drive type, from DRIVE_REMOVABLE on.
constexpr std::array<const char*, 5> pictureNames = {"QXFLOPPY", "QXHARD", "QXNETWORK", "QXCDROM",
                                                     "QXRAM"};

// How often a mount table that gives no change events is read again.
constexpr int pollInterval = 2000;

// The kernel's tables signal changes; a plain file never does.
bool signalsChanges(const QString& fileName) {
    return fileName.startsWith(QLatin1String("/proc/"));
}

} // namespace

TQXDriveTab::TQXDriveTab(QWidget* parent)
    : TTabSet(parent), TQXAboutCarrier(QXDriveTabVersion),
      m_mountTable(QStringLiteral("/proc/self/mountinfo")), m_timer(this) {
    setAccessibleName(QStringLiteral("Laufwerke"));
    setAccessibleDescription(
        QStringLiteral("Ein Reiter je Laufwerk; ein Klick wählt das Laufwerk"));
    for (std::size_t i = 0; i < m_pictures.size(); ++i) {
        m_pictures[i] = std::make_unique<TBitmap>();
        m_pictures[i]->SetImage(
            QImage(QStringLiteral(":/qxtools/bitmap/") + QLatin1String(pictureNames[i])));
        // The pictures stand on the key colour of their bottom-left pixel.
        m_pictures[i]->SetTransparent(true);
    }
    m_timer.SetEnabled(false);
    m_timer.SetInterval(pollInterval);
    m_timer.OnTimer = [this](QObject*) { QXOnTime(); };
    m_table = readMountTable();
    SetDrive(QString());
    SetTabStyle(tsOwnerDraw);
    watch();
}

TQXDriveTab::~TQXDriveTab() = default;

TBitmap* TQXDriveTab::KindBitmap(int driveType) const {
    if (driveType < DRIVE_REMOVABLE || driveType > DRIVE_RAMDISK)
        return nullptr;
    return m_pictures[std::size_t(driveType - DRIVE_REMOVABLE)].get();
}

void TQXDriveTab::SetDrive(const QString& Value) {
    if (Value.isEmpty())
        m_drive = currentDrive();
    else
        m_drive = Value.endsWith(QLatin1Char('/')) ? Value : Value + QLatin1Char('/');
    if (designing())
        return;
    const int index = int(m_roots.indexOf(m_drive));
    if (index >= 0)
        SetTabIndex(index);
}

void TQXDriveTab::SetMountTable(const QString& fileName) {
    m_mountTable = fileName;
    watch();
    m_table = readMountTable();
    if (!ComponentState().Contains(csLoading))
        buildTabs();
}

void TQXDriveTab::QXOnTime() {
    QByteArray table = readMountTable();
    if (table == m_table)
        return;
    m_table = std::move(table);
    if (!ComponentState().Contains(csLoading))
        buildTabs();
}

int TQXDriveTab::DriveKind(const TMountPoint& mount) const {
    return DriveTypeOf(mount);
}

QString TQXDriveTab::DriveLabel(const TMountPoint& mount) const {
    return VolumeLabel(mount);
}

void TQXDriveTab::Loaded() {
    TTabSet::Loaded();
    m_table = readMountTable();
    buildTabs();
}

void TQXDriveTab::MeasureTab(int Index, int& TabWidth) {
    if (designing())
        return;
    if (auto* picture = static_cast<TBitmap*>(Tabs()->Objects(Index)))
        TabWidth += picture->Width() + 2;
}

void TQXDriveTab::DrawTab(TCanvas* TabCanvas, const TRect& R, int Index, bool) {
    const QString& text = (*Tabs())[Index];
    auto* picture = static_cast<TBitmap*>(Tabs()->Objects(Index));
    if (designing() || !picture) {
        TabCanvas->TextOut(R.Left, R.Top + 2, text);
        return;
    }
    TabCanvas->Draw(R.Left, R.Top + 4, picture);
    TabCanvas->TextOut(R.Left + 2 + picture->Width(), R.Top + 2, text);
}

void TQXDriveTab::Click() {
    if (m_rebuilding)
        return;
    const int index = TabIndex();
    if (index >= 0 && index < m_roots.size())
        SetDrive(m_roots[index]);
    TTabSet::Click();
}

QByteArray TQXDriveTab::readMountTable() const {
    QFile file(m_mountTable);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    return file.readAll();
}

QList<TMountPoint> TQXDriveTab::drives(const QByteArray& table) const {
    return LogicalDrives(ParseMountInfo(table), false);
}

QString TQXDriveTab::currentDrive() const {
    const QString root = MountPointOf(QDir::currentPath(), drives(m_table)).Root;
    return root.isEmpty() ? QStringLiteral("/") : root;
}

void TQXDriveTab::buildTabs() {
    QStringList roots;
    TStringList tabs;
    for (const TMountPoint& mount : drives(m_table)) {
        TBitmap* picture = KindBitmap(DriveKind(mount));
        if (!picture)
            continue;
        QString name = DriveLabel(mount);
        if (name.isEmpty())
            name = mount.Root == QLatin1String("/")
                       ? mount.Root
                       : QFileInfo(QDir::cleanPath(mount.Root)).fileName();
        roots << mount.Root;
        tabs.AddObject(name, picture);
    }
    const int index = int(roots.indexOf(m_drive));
    m_rebuilding = true;
    m_roots = roots;
    SetTabs(&tabs);
    if (index >= 0)
        SetTabIndex(index);
    m_rebuilding = false;
    if (index >= 0 || designing() || m_roots.isEmpty())
        return;
    // The selected drive is gone: the first drive takes its place, and that is a click.
    if (TabIndex() == 0)
        Click();
    else
        SetTabIndex(0);
}

void TQXDriveTab::watch() {
    m_notifier.reset();
    m_watched.reset();
    m_timer.SetEnabled(false);
    if (signalsChanges(m_mountTable)) {
        m_watched = std::make_unique<QFile>(m_mountTable);
        if (m_watched->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            m_notifier =
                std::make_unique<QSocketNotifier>(m_watched->handle(), QSocketNotifier::Exception);
            connect(m_notifier.get(), &QSocketNotifier::activated, this, &TQXDriveTab::QXOnTime);
            return;
        }
        m_watched.reset();
    }
    m_timer.SetEnabled(true);
}

void Qxdrvtab::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXDriveTab");
}
