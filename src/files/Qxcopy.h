#pragma once

#include "QXAboutString.h"
#include "QXExport.h"
#include "QXGauge.h"
#include "TComponent.h"

#include <QString>
#include <QtGlobal>
#include <functional>
#include <memory>

class TDirListing;
class TfrmQXCopy;

// Reports a file about to be copied: the files copied so far in this run, then the source and
// destination names.
using HilfsEvent = std::function<void(QObject* Sender, int Files, const QString& SourceFileName,
                                      const QString& DestFileName)>;

// Copies one file, or every file matching a mask such as "/data/*.txt", to a destination in
// blocks of BufferSize bytes, showing the progress on up to two external gauges and, with
// ShowCopyDialog, in a progress window (TfrmQXCopy). It checks the destination's file system
// first (ready, room for everything), asks before overwriting and before creating a missing
// destination directory, and can be cancelled. Every question and failure is a German dialog
// and a false result; nothing is thrown.
//
// Nothing the user had is lost:
// - each file is written into a hidden temporary file in the destination directory, which
//   replaces the destination only once it is complete, so a cancelled or failed copy (a full
//   disk included) leaves an existing destination exactly as it was and no partial file;
// - a read that returns less than a block is not taken for the end of the file: reading goes
//   on until the block is full or the file has ended;
// - a source and destination that are the same file (one name, or two links to one file) are
//   left alone; the file counts as copied.
//
// Linux meanings: a drive is a mounted file system; its free space comes from statvfs
// (DiskFree), and a destination whose directory cannot be reached is "not ready". Attributes
// are the permission bits, the date is the modification time. A destination that is a link to
// a file is written through the link. Replacing a file keeps its permission bits (and, where the
// process may give it away, its owner); other names linked to the old file keep the old text.
//
// The cancel flag is one for all instances. The progress window sets it (Escape, its button or
// its close box, each after the question "Kopiervorgang abbrechen ?"), and so does CancelCopy();
// a running copy stops after its current block. A run refuses to start while the flag is set;
// a new TQXCopy or ClearCancel() clears it.
//
// Example, the text files of a directory copied with the progress window:
//
//     auto* copy = new TQXCopy(window);
//     copy->SetCopyDate(true);
//     if (!copy->CopyFile(QStringLiteral("/data/*.txt"), QStringLiteral("/backup/"), true))
//         return; // the user has been told why
class QXT_EXPORT TQXCopy : public TComponent, public TQXAboutCarrier {
    Q_OBJECT
    Q_PROPERTY(QString About_QXTools READ About_QXTools WRITE SetAbout_QXTools DESIGNABLE false)
    Q_PROPERTY(int BufferSize READ BufferSize WRITE SetBufferSize)
    Q_PROPERTY(bool CopyAttrib READ CopyAttrib WRITE SetCopyAttrib)
    Q_PROPERTY(bool CopyDate READ CopyDate WRITE SetCopyDate)
    Q_PROPERTY(TQXGauge* CopyProgressGauge READ CopyProgressGauge WRITE SetCopyProgressGauge)
    Q_PROPERTY(QString Dest READ Dest WRITE SetDest)
    Q_PROPERTY(QString DialogCaption READ DialogCaption WRITE SetDialogCaption)
    Q_PROPERTY(TQXGauge* FileProgressGauge READ FileProgressGauge WRITE SetFileProgressGauge)
    Q_PROPERTY(bool OverWrite READ OverWrite WRITE SetOverWrite)
    Q_PROPERTY(bool OverWriteMsg READ OverWriteMsg WRITE SetOverWriteMsg)
    Q_PROPERTY(bool ProcessMessages READ ProcessMessages WRITE SetProcessMessages)
    Q_PROPERTY(bool ShowCopyDialog READ ShowCopyDialog WRITE SetShowCopyDialog)
    Q_PROPERTY(QString Source READ Source WRITE SetSource)

public:
    // A copy with 8 KiB blocks that asks before overwriting and shows no window; it clears the
    // shared cancel flag.
    explicit TQXCopy(QObject* owner = nullptr);
    ~TQXCopy() override;

    // Bytes of one copy block, any value 0..65535 kept as given. 0 stands for 65,536 (the
    // 16-bit count come round), the largest block. Default 8192.
    quint16 BufferSize() const { return m_bufferSize; }
    void SetBufferSize(quint16 Value);
    // Give each copy the source's permission bits. Default false.
    bool CopyAttrib() const { return m_copyAttrib; }
    void SetCopyAttrib(bool Value) { m_copyAttrib = Value; }
    // Give each copy the source's modification (and access) time. Default false.
    bool CopyDate() const { return m_copyDate; }
    void SetCopyDate(bool Value) { m_copyDate = Value; }
    // A gauge for the progress over all files of a run; cleared when the gauge goes away.
    TQXGauge* CopyProgressGauge() const { return m_copyGauge; }
    void SetCopyProgressGauge(TQXGauge* Value);
    // The destination: a directory (existing, or ending in "/"), or a file name.
    QString Dest() const { return m_dest; }
    void SetDest(const QString& Value) { m_dest = Value; }
    // The progress window's title. Default "Kopiere Dateien...".
    QString DialogCaption() const { return m_dialogCaption; }
    void SetDialogCaption(const QString& Value) { m_dialogCaption = Value; }
    // A gauge for the progress within the current file; cleared when the gauge goes away.
    TQXGauge* FileProgressGauge() const { return m_fileGauge; }
    void SetFileProgressGauge(TQXGauge* Value);
    // Replace existing files without asking (a read-only one is still asked about).
    bool OverWrite() const { return m_overWrite; }
    void SetOverWrite(bool Value) { m_overWrite = Value; }
    // Ask before replacing an existing file (unless OverWrite). Default true.
    bool OverWriteMsg() const { return m_overWriteMsg; }
    void SetOverWriteMsg(bool Value) { m_overWriteMsg = Value; }
    // Let pending events run after every block (always done while the window is shown).
    bool ProcessMessages() const { return m_processMessages; }
    void SetProcessMessages(bool Value) { m_processMessages = Value; }
    // Show the progress window during Copy.
    bool ShowCopyDialog() const { return m_showCopyDialog; }
    void SetShowCopyDialog(bool Value) { m_showCopyDialog = Value; }
    // The file to copy; its name part may hold "*" and "?".
    QString Source() const { return m_source; }
    void SetSource(const QString& Value) { m_source = Value; }

    // CopyFile(Source, Dest, ShowCopyDialog).
    bool Copy();
    // One run: Source names one file, or a mask whose files all go into the directory Dest.
    // True when every file was copied, skipped on request or already in place. A run started
    // while the cancel flag is set, or while this component is copying, does nothing and
    // returns false.
    bool CopyFile(const QString& Source, const QString& Dest, bool ShowDialog);
    // Copies one file (the questions, the checks and the block loop of a run, without the
    // drive check); true when it was copied, skipped on request or already in place.
    bool KopiereDatei(const QString& Source, const QString& Dest, bool ShowDialog);

    // Whether the file carries all the attribute bits Attr (qxtHasAttr).
    bool HasAttr(const QString& FileName, quint16 Attr) const;
    // The name with a trailing "/" ("" stays "").
    QString CheckPfadName(const QString& Name) const;
    // Whether the name exists and is not a directory.
    bool QXFileExists(const QString& FileName) const;
    // The size of the file, or the total of the files a mask denotes.
    qint64 GetFileSize(const QString& FileName) const;
    // The number of files a name (0 or 1) or a mask denotes.
    int GetFileCount(const QString& FileName) const;
    // Creates the directory and its missing parents; true when it exists afterwards.
    bool MakeDir(const QString& Dir) const;

    // The files copied (or already in place) in the running or last run.
    int CopiedFiles() const { return m_files; }
    // The progress window while a run shows it, else nullptr.
    TfrmQXCopy* CopyDialog() const { return m_form.get(); }

    // Sets the shared cancel flag; safe to call from a signal handler.
    static void CancelCopy();
    // Clears the shared cancel flag, so runs may start again.
    static void ClearCancel();
    // Whether the shared cancel flag is set.
    static bool CopyCancelled();

    // Called before each file of a run is copied.
    HilfsEvent OnChange;
    // Called when a run starts, with the window (if any) already shown.
    TNotifyEvent OnStart;
    // Called at the end of every run that started, also a failed or cancelled one.
    TNotifyEvent OnEnd;

signals:
    // Emitted with OnStart, OnChange and OnEnd.
    void started();
    void changed(int files, const QString& sourceFileName, const QString& destFileName);
    void ended();
    // After every block: the bytes done and the size of the current file, then of the run.
    void progressed(qint64 fileDone, qint64 fileSize, qint64 runDone, qint64 runSize);

protected:
    void Notification(QObject* component, TOperation operation) override;

private:
    qint64 readMask(const QString& Source, int& count);
    bool runFiles(const QString& Source, const QString& Dest, bool ShowDialog);
    bool destinationReady(const QString& Source, const QString& Dest);
    bool copyBytes(const QString& source, const QString& target, const QString& writeTo);
    void startFile(qint64 size);
    void advance(qint64 bytes);
    void skip(qint64 size);
    bool abortAlone();

    quint16 m_bufferSize = 8192;
    bool m_copyAttrib = false;
    bool m_copyDate = false;
    TQXGauge* m_copyGauge = nullptr;
    TQXGauge* m_fileGauge = nullptr;
    QString m_dest;
    QString m_dialogCaption;
    bool m_overWrite = false;
    bool m_overWriteMsg = true;
    bool m_processMessages = false;
    bool m_showCopyDialog = false;
    QString m_source;

    bool m_running = false;
    int m_files = 0;
    qint64 m_runSize = 0;
    qint64 m_runDone = 0;
    qint64 m_fileSize = 0;
    qint64 m_fileDone = 0;
    std::unique_ptr<TfrmQXCopy> m_form;
    // The mask's directory as read for the run's total, kept for the copy.
    std::shared_ptr<const TDirListing> m_maskListing;
};

namespace Qxcopy {
// Puts TQXCopy on the "QX Tools" palette page.
QXT_EXPORT void Register();
} // namespace Qxcopy
