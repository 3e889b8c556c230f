#include "TestSupport.h"

#include "TColor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <ctime>
#include <stdexcept>
#include <unistd.h>

namespace qxtest {

TempDir::TempDir() {
    if (!m_dir.isValid())
        throw std::runtime_error("cannot create a temporary directory");
}

QString TempDir::write(const QString& name, const QByteArray& bytes) const {
    const QString full = file(name);
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile f(full);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate) || f.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write test file");
    return full;
}

DialogRecorder::DialogRecorder() {
    m_previous = SetDialogHandler([this](TDialogRequest& r) {
        requests.append(r);
        if (r.Kind == dkMessage || answers.isEmpty())
            return mrOk;
        return answers.takeFirst();
    });
}

DialogRecorder::~DialogRecorder() {
    SetDialogHandler(std::move(m_previous));
}

QStringList DialogRecorder::texts() const {
    QStringList out;
    for (const auto& r : requests)
        out << r.Text;
    return out;
}

ToolResult runQxtool(const QStringList& args) {
    return runQxtool(args, QProcessEnvironment::systemEnvironment());
}

ToolResult runQxtool(const QStringList& args, const QProcessEnvironment& environment) {
    QProcess p;
    p.setProcessEnvironment(environment);
    p.start(QStringLiteral(QXTOOL_PATH), args);
    ToolResult r;
    if (!p.waitForFinished(120000))
        return r;
    r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

int pixelBGR(const QImage& image, int x, int y) {
    return QColorToTColor(image.pixelColor(x, y));
}

void passClockTick() {
    // Time stamps come from the coarse clock, or from a finer one: once the coarse clock is past
    // the fine time of now, every stamp so far is older than any to come.
    struct timespec fine {
    }, coarse{};
    ::clock_gettime(CLOCK_REALTIME, &fine);
    for (;;) {
        ::clock_gettime(CLOCK_REALTIME_COARSE, &coarse);
        if (coarse.tv_sec > fine.tv_sec ||
            (coarse.tv_sec == fine.tv_sec && coarse.tv_nsec > fine.tv_nsec))
            return;
        ::usleep(500);
    }
}

} // namespace qxtest
