// Copying files with progress: qxtool copy.
#include "Command.h"
#include "Dialogs.h"
#include "FileUtils.h"
#include "Qxcopy.h"

#include <QObject>
#include <csignal>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

// A line on the terminal with two bars: the whole run and the current file.
class ProgressLine {
public:
    void SetFile(const QString& name) {
        m_name = ExtractFileName(name);
        m_shown = {-1, -1};
    }
    void Show(qint64 fileDone, qint64 fileSize, qint64 runDone, qint64 runSize) {
        const std::pair<int, int> now{percent(runDone, runSize), percent(fileDone, fileSize)};
        if (now == m_shown)
            return;
        m_shown = now;
        const QString line =
            QStringLiteral("gesamt %1  datei %2  %3").arg(bar(now.first), bar(now.second), m_name);
        qxtool::err() << '\r' << line.left(width() - 1) << "\033[K" << Qt::flush;
        m_visible = true;
    }
    // Clears the line so a message starts at the left edge.
    void Clear() {
        if (m_visible)
            qxtool::err() << "\r\033[K" << Qt::flush;
        m_visible = false;
        m_shown = {-1, -1};
    }

private:
    static int percent(qint64 done, qint64 whole) {
        return whole <= 0 ? 100 : int(std::min<qint64>(100, done * 100 / whole));
    }
    static QString bar(int percent) {
        constexpr int cells = 20;
        const int full = percent * cells / 100;
        return QStringLiteral("[%1%2] %3%")
            .arg(QString(full, QLatin1Char('#')), QString(cells - full, QLatin1Char('.')))
            .arg(percent, 3);
    }
    static int width() {
        winsize ws{};
        return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &ws) == 0 && ws.ws_col > 0 ? ws.ws_col : 80;
    }

    QString m_name;
    std::pair<int, int> m_shown{-1, -1};
    bool m_visible = false;
};

struct Choice {
    TMsgDlgBtn button;
    int result;
    QChar key;
    const char* word;
};

// The order is that of the prompt; the first choice a question offers among the last four is
// the answer "no" (used when no one can answer).
constexpr Choice choices[] = {
    {mbYes, mrYes, u'j', "ja"},
    {mbRetry, mrRetry, u'w', "wiederholen"},
    {mbIgnore, mrIgnore, u'i', "ignorieren"},
    {mbNo, mrNo, u'n', "nein"},
    {mbAbort, mrAbort, u'a', "abbrechen"},
    {mbCancel, mrCancel, u'a', "abbrechen"},
    {mbOK, mrOk, u'o', "ok"},
};

const Choice& negative(const TDialogRequest& r) {
    for (const Choice& c : choices)
        if ((c.button == mbNo || c.button == mbAbort || c.button == mbCancel || c.button == mbOK) &&
            r.Buttons.Contains(c.button))
            return c;
    return choices[std::size(choices) - 1];
}

// Prints messages on standard error and asks questions on the terminal; without a terminal on
// standard input every question is answered "no" (abort, where that is the choice).
int terminalDialog(TDialogRequest& r, ProgressLine& progress) {
    progress.Clear();
    QTextStream& err = qxtool::err();
    if (r.Kind == dkMessage || r.Buttons == TMsgDlgButtons{mbOK}) {
        if (!r.Caption.isEmpty())
            err << r.Caption << ": ";
        err << r.Text << Qt::endl;
        return mrOk;
    }
    const Choice& no = negative(r);
    if (!::isatty(STDIN_FILENO)) {
        err << r.Text << ' ' << no.word << Qt::endl;
        return no.result;
    }
    QStringList offered;
    for (const Choice& c : choices)
        if (r.Buttons.Contains(c.button))
            offered << QStringLiteral("%1 = %2").arg(c.key).arg(QLatin1String(c.word));
    for (;;) {
        err << r.Text << " [" << offered.join(QStringLiteral(", ")) << "] " << Qt::flush;
        char line[64] = {};
        if (!std::fgets(line, sizeof line, stdin)) {
            err << no.word << Qt::endl;
            return no.result;
        }
        const QString answer = QString::fromLocal8Bit(line).trimmed().toLower();
        for (const Choice& c : choices)
            if (r.Buttons.Contains(c.button) && !answer.isEmpty() && answer[0] == c.key)
                return c.result;
    }
}

// Ctrl+C and a termination request stop the copy after its current block; the file being
// copied is left as it was.
void cancelOnSignal(int) {
    TQXCopy::CancelCopy();
}

class CancelOnSignals {
public:
    CancelOnSignals() {
        struct sigaction sa {};
        sa.sa_handler = cancelOnSignal;
        sigemptyset(&sa.sa_mask);
        // No SA_RESTART: a question waiting for its answer returns, answered "no".
        ::sigaction(SIGINT, &sa, &m_int);
        ::sigaction(SIGTERM, &sa, &m_term);
    }
    ~CancelOnSignals() {
        ::sigaction(SIGINT, &m_int, nullptr);
        ::sigaction(SIGTERM, &m_term, nullptr);
    }
    CancelOnSignals(const CancelOnSignals&) = delete;
    CancelOnSignals& operator=(const CancelOnSignals&) = delete;

private:
    struct sigaction m_int {};
    struct sigaction m_term {};
};

int runCopy(const qxtool::Call& call) {
    TQXCopy copy;
    copy.SetSource(call.args[0]);
    copy.SetDest(call.args[1]);
    copy.SetOverWrite(call.has(QStringLiteral("--overwrite")));
    copy.SetCopyAttrib(call.has(QStringLiteral("--attrib")));
    copy.SetCopyDate(call.has(QStringLiteral("--date")));
    if (call.has(QStringLiteral("--buffer"))) {
        bool ok = false;
        const uint size = call.value(QStringLiteral("--buffer")).toUInt(&ok);
        if (!ok || size > 65535)
            return call.usageError(
                QStringLiteral("--buffer: N muss eine Zahl von 0 bis 65535 sein"));
        copy.SetBufferSize(quint16(size));
    }

    const QString& source = call.args[0];
    const bool mask = source.contains(QLatin1Char('*')) || source.contains(QLatin1Char('?'));
    const int wanted = mask ? copy.GetFileCount(source) : 1;
    if (mask && wanted == 0) {
        qxtool::err() << "qxtool copy: keine Datei passt zu " << source << Qt::endl;
        return 1;
    }

    ProgressLine progress;
    if (::isatty(STDERR_FILENO)) {
        copy.OnChange = [&progress](QObject*, int, const QString& from, const QString&) {
            progress.SetFile(from);
        };
        QObject::connect(
            &copy, &TQXCopy::progressed, &copy,
            [&progress](qint64 fileDone, qint64 fileSize, qint64 runDone, qint64 runSize) {
                progress.Show(fileDone, fileSize, runDone, runSize);
            });
    }
    const TDialogHandler previous =
        SetDialogHandler([&progress](TDialogRequest& r) { return terminalDialog(r, progress); });
    bool ok = false;
    {
        const CancelOnSignals signalsCancel;
        ok = copy.Copy();
    }
    SetDialogHandler(previous);
    progress.Clear();
    if (TQXCopy::CopyCancelled())
        qxtool::err() << "qxtool copy: Kopiervorgang abgebrochen" << Qt::endl;
    qxtool::out() << "Copied: " << copy.CopiedFiles() << "\nFiles: " << wanted << Qt::endl;
    return ok && copy.CopiedFiles() == wanted ? 0 : 1;
}

const qxtool::Command copyCommand{
    .name = "copy",
    .summary = "copy a file or the files matching a mask, with progress",
    .arguments = {{"SOURCE", "a file, or a directory and a mask (\"/data/*.wav\"; quote it)"},
                  {"DEST", "the destination directory, or the new file name for one file"}},
    .options = {{"--overwrite", "", "replace existing files without asking"},
                {"--attrib", "", "give the copies the permission bits of their sources"},
                {"--date", "", "give the copies the modification time of their sources"},
                {"--buffer", "N",
                 "copy in blocks of N bytes, 0 to 65535 (0: 65536); "
                 "default 8192"}},
    .details = "Each file is written beside its destination under a hidden temporary name and "
               "takes the destination's place only when it is complete: an existing file is "
               "never left half-written. The questions (replace a file, create a missing "
               "directory, retry) are asked on the terminal; without a terminal on standard "
               "input each is answered \"no\". When standard error is a terminal it shows the "
               "progress of the run and of the current file. Ctrl+C stops after the current "
               "block. Prints \"Copied: N\" (files copied or already in place) and \"Files: N\" "
               "(files SOURCE names).",
    .exitCodes = {{"0", "every file was copied"},
                  {"1", "a file was skipped, failed or the copy was cancelled (messages on "
                        "standard error), or the mask matched nothing"}},
    .examples = {"qxtool copy '/media/stick/*.wav' ~/Musik/", "qxtool copy --date big.iso /srv/"},
    .run = runCopy};

} // namespace

QXTOOL_COMMAND(copyCommand)
