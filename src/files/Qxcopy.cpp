#include "Qxcopy.h"

#include "Application.h"
#include "Dialogs.h"
#include "Drives.h"
#include "FileUtils.h"
#include "FindFile.h"
#include "QXDesign.h"
#include "QXTools.h"
#include "QxcopyForm.h"
#include "QxutilFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QRandomGenerator>
#include <atomic>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

const bool classKnown = RegisterClass(ComponentClassOf<TQXCopy>());

// One flag for every instance; a signal handler may set it, so it is a lock-free atomic.
std::atomic<bool> cancelFlag{false};
static_assert(std::atomic<bool>::is_always_lock_free);

// What a mask run copies: read-only, hidden, system and archive files, no directories.
constexpr int copyAttr = faReadOnly | faHidden | faSysFile | faArchive;

QByteArray native(const QString& name) {
    return QFile::encodeName(name);
}

bool hasWildcards(const QString& name) {
    return name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
}

// Bytes as gauge units: a gauge counts in 32 bits, so beyond 2 GiB the units grow to 2, 4, …
// bytes, the same for the amount done and for the whole.
int gaugeUnits(qint64 bytes, qint64 whole) {
    int shift = 0;
    while ((whole >> shift) > INT_MAX)
        ++shift;
    return int(bytes >> shift);
}

// Gives the gauge the range 0..whole and no progress; an empty whole still needs a range of
// one unit, as a gauge refuses a maximum equal to its minimum.
void resetGauge(TQXGauge* gauge, qint64 whole) {
    if (!gauge)
        return;
    gauge->SetMinValue(0);
    gauge->SetMaxValue(std::max(1, gaugeUnits(whole, whole)));
    gauge->SetProgress(0);
}

void showGauge(TQXGauge* gauge, qint64 done, qint64 whole) {
    if (gauge)
        gauge->SetProgress(gaugeUnits(done, whole));
}

// Reads until the block is full or the file has ended (a pipe, a network file system or a
// signal may hand out less than asked for). The bytes read, or -1 on an error.
ssize_t readBlock(int fd, char* data, std::size_t size) {
    std::size_t got = 0;
    while (got < size) {
        const ssize_t n = ::read(fd, data + got, size - got);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return -1;
        if (n == 0)
            break;
        got += std::size_t(n);
    }
    return ssize_t(got);
}

bool writeBlock(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        size -= std::size_t(n);
    }
    return true;
}

// Moves a file's bytes block by block. The kernel copies from file to file itself
// (copy_file_range) as long as it can, which spares the two trips of every byte through the
// buffer; read and write take over for the rest of the file when it cannot (other file systems,
// no support) and for a file that the kernel finds empty at once, as procfs and sysfs files are
// whatever size they claim. Either way a block is full unless the file has ended.
class BlockMover {
public:
    BlockMover(int in, int out, std::size_t blockSize)
        : m_in(in), m_out(out), m_blockSize(blockSize) {}

    enum Failure { None, ReadFailed, WriteFailed };

    // Copies the next block; the bytes copied (fewer than a block only at the end of the file),
    // or -1 with failure saying which side failed.
    ssize_t Next(Failure& failure) {
        const std::size_t size = m_blockSize;
        std::size_t done = 0;
        while (m_kernel && done < size) {
            const ssize_t n = ::copy_file_range(m_in, nullptr, m_out, nullptr, size - done, 0);
            if (n > 0) {
                done += std::size_t(n);
                m_kernelCopied = true;
            } else if (n == 0 && m_kernelCopied) {
                return ssize_t(done); // the end of the file
            } else if (n < 0 && errno == EINTR) {
                continue;
            } else {
                // Any error is met again by read or write, which tell on which side it lies.
                m_kernel = false;
            }
        }
        if (done == size)
            return ssize_t(done);
        m_buffer.resize(size);
        const ssize_t n = readBlock(m_in, m_buffer.data(), size - done);
        if (n < 0) {
            failure = ReadFailed;
            return -1;
        }
        if (!writeBlock(m_out, m_buffer.data(), std::size_t(n))) {
            failure = WriteFailed;
            return -1;
        }
        return ssize_t(done) + n;
    }

    std::size_t BlockSize() const { return m_blockSize; }

private:
    int m_in, m_out;
    std::size_t m_blockSize;
    std::vector<char> m_buffer; // only for read and write
    bool m_kernel = true;
    bool m_kernelCopied = false;
};

// Whether a name is there at all (a dangling link included).
bool entryExists(const QString& name) {
    struct stat st {};
    return ::lstat(native(name).constData(), &st) == 0;
}

// Whether the name exists and is no directory (FileExists), and then the size its name reports
// (a link's target's): one look at a file that is no link serves both.
bool sourceFile(const QString& name, qint64& size) {
    struct stat st {};
    if (name.isEmpty() || ::lstat(native(name).constData(), &st) != 0 || S_ISDIR(st.st_mode))
        return false;
    size = S_ISLNK(st.st_mode) ? QFileInfo(name).size() : qint64(st.st_size);
    return true;
}

// Whether two names are one file (the same name, or two links to one file).
bool sameFile(const QString& a, const QString& b) {
    struct stat sa {
    }, sb{};
    return ::stat(native(a).constData(), &sa) == 0 && ::stat(native(b).constData(), &sb) == 0 &&
           sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

// An open descriptor, closed with the object.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : m_fd(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }
    int get() const { return m_fd; }
    void reset(int fd) {
        close();
        m_fd = fd;
    }
    // Closes now; false when the close reports an error (a write that failed late).
    bool close() {
        const int fd = std::exchange(m_fd, -1);
        return fd < 0 || ::close(fd) == 0;
    }

private:
    int m_fd;
};

// The new contents of a destination: a hidden file beside it that replaces it only when
// complete. Until Commit succeeds the destination is untouched, and the temporary file is
// removed with the object.
class TempFile {
public:
    explicit TempFile(const QString& target) : m_target(native(target)) {}
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() {
        m_fd.close();
        if (!m_name.isEmpty())
            ::unlink(m_name.constData());
    }

    // Creates the file with the usual permissions (0666 less the umask); false with errno set.
    bool Create() {
        const QByteArray dir = m_target.left(m_target.lastIndexOf('/') + 1);
        for (int attempt = 0; attempt < 100; ++attempt) {
            const QByteArray name =
                dir + ".qxcopy-" + QByteArray::number(QRandomGenerator::global()->generate64(), 36);
            const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (fd >= 0) {
                m_fd.reset(fd);
                m_name = name;
                return true;
            }
            if (errno != EEXIST)
                return false;
        }
        return false;
    }
    int Handle() const { return m_fd.get(); }

    // Puts the file in the destination's place. An existing file is replaced only after the
    // new text is on the disk, so a crash leaves the old file or the new one, never neither.
    bool Commit(bool replacing) {
        if ((replacing && ::fsync(m_fd.get()) != 0) || !m_fd.close() ||
            ::rename(m_name.constData(), m_target.constData()) != 0)
            return false;
        m_name.clear();
        return true;
    }

private:
    QByteArray m_target;
    QByteArray m_name;
    Descriptor m_fd;
};

QString writeFailedText(const QString& target) {
    return QStringLiteral("Fehler beim schreiben von ") + target +
           QStringLiteral(". Ziel-Datenträger voll ?");
}

} // namespace

TQXCopy::TQXCopy(QObject* owner) : TComponent(owner), TQXAboutCarrier(QXCopyVersion) {
    m_dialogCaption = QStringLiteral("Kopiere Dateien...");
    ClearCancel();
}

TQXCopy::~TQXCopy() = default;

// The framework's setter compared the value with 1024 and 16384 but kept it whatever it was.
void TQXCopy::SetBufferSize(quint16 Value) {
    m_bufferSize = Value;
}

void TQXCopy::SetCopyProgressGauge(TQXGauge* Value) {
    m_copyGauge = Value;
    FreeNotification(Value);
}

void TQXCopy::SetFileProgressGauge(TQXGauge* Value) {
    m_fileGauge = Value;
    FreeNotification(Value);
}

void TQXCopy::Notification(QObject* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation != opRemove)
        return;
    if (component == m_copyGauge)
        m_copyGauge = nullptr;
    if (component == m_fileGauge)
        m_fileGauge = nullptr;
}

void TQXCopy::CancelCopy() {
    cancelFlag.store(true);
}

void TQXCopy::ClearCancel() {
    cancelFlag.store(false);
}

bool TQXCopy::CopyCancelled() {
    return cancelFlag.load();
}

bool TQXCopy::Copy() {
    return CopyFile(m_source, m_dest, m_showCopyDialog);
}

bool TQXCopy::CopyFile(const QString& Source, const QString& Dest, bool ShowDialog) {
    if (cancelFlag.load() || m_running)
        return false;
    m_running = true;
    m_files = 0;
    m_runDone = 0;

    if (ShowDialog) {
        auto* window = qobject_cast<QWidget*>(Owner());
        m_form = std::make_unique<TfrmQXCopy>(window ? window->window() : nullptr);
        m_form->setWindowTitle(m_dialogCaption);
        m_form->show();
    }
    if (OnStart)
        OnStart(this);
    emit started();

    // A mask's directory is read once for the total and the count, and again for the copy
    // only when it has changed in between.
    const bool mask = hasWildcards(ExtractFileName(Source));
    int count = 0;
    m_runSize = mask ? readMask(Source, count) : GetFileSize(Source);
    resetGauge(m_copyGauge, m_runSize);
    resetGauge(m_fileGauge, 0);
    if (m_form) {
        resetGauge(m_form->dfgCopy, m_runSize);
        resetGauge(m_form->dfgFile, 0);
        m_form->ShowFileProgress((mask ? count : GetFileCount(Source)) >= 2);
    }

    const bool ok = destinationReady(Source, Dest) && runFiles(Source, Dest, ShowDialog);

    if (OnEnd)
        OnEnd(this);
    emit ended();
    m_form.reset();
    m_maskListing.reset();
    for (TQXGauge* gauge : {m_copyGauge, m_fileGauge})
        if (gauge)
            gauge->Refresh();
    m_running = false;
    return ok;
}

// A destination on another file system must be ready and should have room for everything.
bool TQXCopy::destinationReady(const QString& Source, const QString& Dest) {
    const QString sourceDir = ExtractFilePath(Source);
    const QString destDir = DirectoryExists(Dest) ? Dest : ExtractFilePath(Dest);
    const QString destination = destDir.isEmpty() ? QStringLiteral(".") : destDir;
    if (IsSameDrive(sourceDir.isEmpty() ? QStringLiteral(".") : sourceDir, destination))
        return true;
    while (DiskFree(destination) == -1)
        if (MessageDlg(QStringLiteral("Zieldatenträger nicht bereit"), mtWarning,
                       {mbAbort, mbRetry}) != mrRetry)
            return false;
    while (DiskFree(destination) < m_runSize) {
        const int answer = MessageDlg(QStringLiteral("Zu wenig Speicherplatz für alle Dateien"),
                                      mtWarning, {mbAbort, mbRetry, mbIgnore});
        if (answer == mrIgnore)
            break;
        if (answer != mrRetry)
            return false;
    }
    return true;
}

// The total size of the files a mask denotes (GetFileSize) and their number (GetFileCount) from
// one reading of its directory, which is kept for the copy.
qint64 TQXCopy::readMask(const QString& Source, int& count) {
    const auto [dir, mask] = SplitSearchPath(Source);
    m_maskListing = std::make_shared<const TDirListing>(dir);
    qint64 total = 0;
    count = 0;
    TSearchRec sr;
    for (int rc = FindFirst(m_maskListing, mask, faAnyFile, sr); rc == 0; rc = FindNext(sr))
        if (qxtIsFile(sr)) {
            total += sr.Size;
            ++count;
        }
    return total;
}

bool TQXCopy::runFiles(const QString& Source, const QString& Dest, bool ShowDialog) {
    TApplication::ProcessMessages();
    if (!hasWildcards(ExtractFileName(Source)))
        return KopiereDatei(Source, Dest, ShowDialog);
    // Several files cannot share one file name: the destination of a mask is a directory.
    const QString destDir = CheckPfadName(Dest);
    const QString sourceDir = ExtractFilePath(Source);
    const auto [dir, mask] = SplitSearchPath(Source);
    std::shared_ptr<const TDirListing> listing = m_maskListing;
    if (!listing || listing->Changed())
        listing = std::make_shared<const TDirListing>(dir);
    bool ok = true;
    TSearchRec sr;
    for (int rc = FindFirst(listing, mask, copyAttr, sr); rc == 0 && ok; rc = FindNext(sr))
        ok = !cancelFlag.load() && KopiereDatei(sourceDir + sr.Name, destDir, ShowDialog);
    FindClose(sr);
    return ok;
}

bool TQXCopy::abortAlone() {
    // Within a run the run's end reports the end.
    if (!m_running && OnEnd)
        OnEnd(this);
    return false;
}

bool TQXCopy::KopiereDatei(const QString& Source, const QString& Dest, bool ShowDialog) {
    qint64 size = 0;
    while (!sourceFile(Source, size)) {
        const int answer =
            MessageDlg(QStringLiteral("Datei >") + Source + QStringLiteral("< nicht gefunden"),
                       mtWarning, {mbAbort, mbRetry, mbIgnore});
        if (answer == mrIgnore)
            return true;
        if (answer != mrRetry)
            return abortAlone();
    }

    const QString target = ExtractFileName(Dest).isEmpty() || DirectoryExists(Dest)
                               ? CheckPfadName(Dest) + ExtractFileName(Source)
                               : Dest;
    TfrmQXCopy* window = ShowDialog ? m_form.get() : nullptr;
    if (window) {
        window->panSource->setText(Source);
        window->panSource->setToolTip(Source);
        window->panDest->setText(target);
        window->panDest->setToolTip(target);
    }
    startFile(size);

    const QString dir = ExtractFilePath(target);
    if (!dir.isEmpty() && !DirectoryExists(dir)) {
        if (MessageDlg(QStringLiteral("Zielverzeichnis ") + dir +
                           QStringLiteral(" existiert nicht. Soll es erstellt werden ?"),
                       mtConfirmation, {mbYes, mbNo}) != mrYes)
            return false;
        if (!MakeDir(dir)) {
            MessageBox(QStringLiteral("Verzeichnis konnte nicht erstellt werden"),
                       QStringLiteral("Problem"), mtError);
            return false;
        }
    }

    // Usually nothing has the target's name yet, and the questions about it need not look.
    const bool targetThere = entryExists(target);
    if (targetThere && sameFile(Source, target)) {
        skip(size);
        ++m_files;
        return true;
    }

    // A link to a file is written through, so the link stays.
    QString writeTo = target;
    if (targetThere) {
        const QFileInfo targetInfo(target);
        if (targetInfo.isSymLink() && targetInfo.exists())
            writeTo = targetInfo.canonicalFilePath();
    }
    if (targetThere && FileExists(target)) {
        if (!m_overWrite && m_overWriteMsg &&
            MessageDlg(QStringLiteral("Datei ") + target +
                           QStringLiteral(" schon vorhanden. Soll sie überschrieben werden ?"),
                       mtConfirmation, {mbYes, mbNo}) != mrYes) {
            skip(size);
            return true;
        }
        if (HasAttr(writeTo, faReadOnly)) {
            if (MessageDlg(QStringLiteral("Datei ") + target +
                               QStringLiteral(" Schreibgeschützt. Soll sie überschrieben werden ?"),
                           mtConfirmation, {mbYes, mbNo}) != mrYes) {
                skip(size);
                return true;
            }
            FileSetAttr(writeTo, FileGetAttr(writeTo) & ~faReadOnly);
        }
    }

    while (DiskFree(ExtractFilePath(writeTo)) < size)
        if (MessageDlg(QStringLiteral("Zu wenig Speicherplatz für Datei >") + target +
                           QStringLiteral("< auf Zieldatenträger"),
                       mtWarning, {mbAbort, mbRetry}) != mrRetry)
            return false;

    if (OnChange)
        OnChange(this, m_files, Source, target);
    emit changed(m_files, Source, target);

    if (!copyBytes(Source, target, writeTo))
        return false;
    ++m_files;
    return true;
}

bool TQXCopy::copyBytes(const QString& source, const QString& target, const QString& writeTo) {
    const auto readFailed = [&source]() {
        MessageDlg(QStringLiteral("Fehler beim lesen von ") + source, mtError, {mbOK});
        return false;
    };
    // Only regular files are opened: a pipe would block, a device would be read without end.
    struct stat from {};
    if (::stat(native(source).constData(), &from) != 0 || !S_ISREG(from.st_mode))
        return readFailed();
    Descriptor in(::open(native(source).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (in.get() < 0 || ::fstat(in.get(), &from) != 0 || !S_ISREG(from.st_mode))
        return readFailed();
    // A 16-bit block size of 0 has come round from 65,536.
    const std::size_t blockSize = m_bufferSize == 0 ? 65536 : m_bufferSize;
    if (from.st_size > off_t(blockSize))
        ::posix_fadvise(in.get(), 0, 0, POSIX_FADV_SEQUENTIAL);

    struct stat old {};
    const bool replacing = ::stat(native(writeTo).constData(), &old) == 0;
    TempFile out(writeTo);
    if (!out.Create()) {
        if (errno == ENOSPC || errno == EDQUOT)
            MessageDlg(writeFailedText(target), mtError, {mbOK});
        else
            MessageDlg(QStringLiteral("Datei ") + target +
                           QStringLiteral(" kann nicht angelegt werden"),
                       mtError, {mbOK});
        return false;
    }

    BlockMover mover(in.get(), out.Handle(), blockSize);
    TfrmQXCopy* window = m_form.get();
    for (;;) {
        BlockMover::Failure failure = BlockMover::None;
        const ssize_t n = mover.Next(failure);
        if (failure == BlockMover::ReadFailed)
            return readFailed();
        if (failure == BlockMover::WriteFailed) {
            MessageDlg(writeFailedText(target), mtError, {mbOK});
            return false;
        }
        if (m_processMessages || (window && window->isVisible()))
            TApplication::ProcessMessages();
        if (cancelFlag.load())
            return false;
        advance(n);
        if (std::size_t(n) < mover.BlockSize())
            break;
    }

    if (m_copyDate) {
        const struct timespec times[2] = {from.st_atim, from.st_mtim};
        ::futimens(out.Handle(), times);
    }
    if (m_copyAttrib)
        ::fchmod(out.Handle(), from.st_mode & 07777);
    else if (replacing) {
        ::fchmod(out.Handle(), old.st_mode & 07777);
        // Only root may give a file away; anyone else keeps it as their own.
        std::ignore = ::fchown(out.Handle(), old.st_uid, old.st_gid);
    }
    if (!out.Commit(replacing)) {
        MessageDlg(errno == ENOSPC || errno == EDQUOT || errno == EIO
                       ? writeFailedText(target)
                       : QStringLiteral("Datei ") + target +
                             QStringLiteral(" kann nicht angelegt werden"),
                   mtError, {mbOK});
        return false;
    }
    // An empty file's gauge has a range of one unit, which only this fills.
    for (TQXGauge* gauge : {m_fileGauge, window ? window->dfgFile : nullptr})
        if (gauge)
            gauge->SetProgress(gauge->MaxValue());
    return true;
}

void TQXCopy::startFile(qint64 size) {
    m_fileSize = size;
    m_fileDone = 0;
    resetGauge(m_fileGauge, size);
    if (m_form)
        resetGauge(m_form->dfgFile, size);
}

void TQXCopy::advance(qint64 bytes) {
    m_fileDone += bytes;
    m_runDone += bytes;
    showGauge(m_fileGauge, m_fileDone, m_fileSize);
    showGauge(m_copyGauge, m_runDone, m_runSize);
    if (m_form) {
        showGauge(m_form->dfgFile, m_fileDone, m_fileSize);
        showGauge(m_form->dfgCopy, m_runDone, m_runSize);
    }
    emit progressed(m_fileDone, m_fileSize, m_runDone, m_runSize);
}

// A file left out counts in the run's gauges as if it had been copied.
void TQXCopy::skip(qint64 size) {
    m_runDone += size;
    showGauge(m_copyGauge, m_runDone, m_runSize);
    if (m_form)
        showGauge(m_form->dfgCopy, m_runDone, m_runSize);
    emit progressed(m_fileDone, m_fileSize, m_runDone, m_runSize);
}

bool TQXCopy::HasAttr(const QString& FileName, quint16 Attr) const {
    return qxtHasAttr(FileName, Attr);
}

QString TQXCopy::CheckPfadName(const QString& Name) const {
    return qxtCheckPath(Name);
}

bool TQXCopy::QXFileExists(const QString& FileName) const {
    return FileExists(FileName);
}

qint64 TQXCopy::GetFileSize(const QString& FileName) const {
    return qxtGetFileSize(FileName, false);
}

int TQXCopy::GetFileCount(const QString& FileName) const {
    if (!hasWildcards(ExtractFileName(FileName)))
        return QXFileExists(FileName) ? 1 : 0;
    int count = 0;
    TSearchRec sr;
    for (int rc = FindFirst(FileName, copyAttr, sr); rc == 0; rc = FindNext(sr))
        ++count;
    FindClose(sr);
    return count;
}

bool TQXCopy::MakeDir(const QString& Dir) const {
    return ForceDirectories(Dir);
}

void Qxcopy::Register() {
    Q_UNUSED(classKnown);
    QXRegisterOne(QLatin1String(QXPalettePage), "TQXCopy");
}
