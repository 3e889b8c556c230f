// File copy with progress: TQXCopy with its options, two external gauges and its window.
#include "DemoPage.h"

#include "Dialogs.h"
#include "FileUtils.h"
#include "QXGauge.h"
#include "Qxcopy.h"
#include "QxutilFiles.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {

TQXGauge* progressGauge(TColor colour, const QString& name) {
    auto* gauge = new TQXGauge;
    gauge->setFixedHeight(22);
    gauge->setMinimumWidth(260);
    gauge->SetBoxes(25);
    gauge->SetBoxColor(colour);
    gauge->SetShowPeak(false);
    gauge->setAccessibleName(name);
    return gauge;
}

QCheckBox* option(const QString& text, bool on, const QString& tip) {
    auto* box = new QCheckBox(text);
    box->setChecked(on);
    box->setToolTip(tip);
    return box;
}

QWidget* createCopyPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* copy = new TQXCopy(page);

    auto* source = new QLineEdit(qxtAppDir() + QStringLiteral("*"));
    source->setToolTip(QStringLiteral("A file, or a directory and a mask (* and ? in the name)"));
    auto* browseSource = new QPushButton(QStringLiteral("…"));
    auto* dest = new QLineEdit(qxtTMPDir() + QStringLiteral("qxdemo-copy/"));
    auto* browseDest = new QPushButton(QStringLiteral("…"));

    auto* overWrite = option(QStringLiteral("OverWrite"), false,
                             QStringLiteral("Replace existing files without asking"));
    auto* overWriteMsg = option(QStringLiteral("OverWriteMsg"), true,
                                QStringLiteral("Ask before replacing an existing file"));
    auto* copyAttrib = option(QStringLiteral("CopyAttrib"), false,
                              QStringLiteral("Give the copies the sources' permission bits"));
    auto* copyDate = option(QStringLiteral("CopyDate"), false,
                            QStringLiteral("Give the copies the sources' modification time"));
    auto* processMessages =
        option(QStringLiteral("ProcessMessages"), true,
               QStringLiteral("Keep this window live (and Cancel working) during the copy"));
    auto* showDialog = option(QStringLiteral("ShowCopyDialog"), true,
                              QStringLiteral("Show the progress window during the copy"));
    auto* bufferSize = new QSpinBox;
    bufferSize->setRange(0, 65535);
    bufferSize->setValue(copy->BufferSize());
    bufferSize->setSuffix(QStringLiteral(" bytes"));
    bufferSize->setToolTip(QStringLiteral("Block size; 0 stands for 65,536"));

    auto* total = progressGauge(clNavy, QStringLiteral("All files"));
    auto* file = progressGauge(clTeal, QStringLiteral("Current file"));
    copy->SetCopyProgressGauge(total);
    copy->SetFileProgressGauge(file);

    auto* start = new QPushButton(QStringLiteral("Copy"));
    auto* cancel = new QPushButton(QStringLiteral("Cancel"));
    cancel->setEnabled(false);
    auto* status = new QLabel(QStringLiteral("Ready."));
    status->setTextFormat(Qt::PlainText);

    auto* grid = new QGridLayout(page);
    grid->addWidget(new QLabel(QStringLiteral("Source")), 0, 0);
    grid->addWidget(source, 0, 1);
    grid->addWidget(browseSource, 0, 2);
    grid->addWidget(new QLabel(QStringLiteral("Dest")), 1, 0);
    grid->addWidget(dest, 1, 1);
    grid->addWidget(browseDest, 1, 2);
    auto* options = new QGridLayout;
    options->addWidget(overWrite, 0, 0);
    options->addWidget(overWriteMsg, 0, 1);
    options->addWidget(copyAttrib, 0, 2);
    options->addWidget(copyDate, 0, 3);
    options->addWidget(processMessages, 1, 0);
    options->addWidget(showDialog, 1, 1);
    options->addWidget(new QLabel(QStringLiteral("BufferSize")), 1, 2, Qt::AlignRight);
    options->addWidget(bufferSize, 1, 3);
    grid->addLayout(options, 2, 0, 1, 3);
    grid->addWidget(new QLabel(QStringLiteral("All files")), 3, 0);
    grid->addWidget(total, 3, 1, 1, 2);
    grid->addWidget(new QLabel(QStringLiteral("File")), 4, 0);
    grid->addWidget(file, 4, 1, 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(start);
    buttons->addWidget(cancel);
    buttons->addWidget(status, 1);
    grid->addLayout(buttons, 5, 0, 1, 3);

    copy->OnStart = [start, cancel](QObject*) {
        start->setEnabled(false);
        cancel->setEnabled(true);
    };
    copy->OnChange = [status](QObject*, int files, const QString& from, const QString&) {
        status->setText(QStringLiteral("%1 done, copying %2").arg(files).arg(from));
    };
    copy->OnEnd = [start, cancel, status, copy](QObject*) {
        start->setEnabled(true);
        cancel->setEnabled(false);
        status->setText(
            QStringLiteral("%1 file(s) copied%2.")
                .arg(copy->CopiedFiles())
                .arg(TQXCopy::CopyCancelled() ? QStringLiteral(", cancelled") : QString()));
    };

    QObject::connect(start, &QPushButton::clicked, page, [=]() {
        copy->SetSource(source->text());
        copy->SetDest(dest->text());
        copy->SetOverWrite(overWrite->isChecked());
        copy->SetOverWriteMsg(overWriteMsg->isChecked());
        copy->SetCopyAttrib(copyAttrib->isChecked());
        copy->SetCopyDate(copyDate->isChecked());
        copy->SetProcessMessages(processMessages->isChecked());
        copy->SetShowCopyDialog(showDialog->isChecked());
        copy->SetBufferSize(quint16(bufferSize->value()));
        // A cancelled run leaves the flag set until someone clears it.
        TQXCopy::ClearCancel();
        copy->Copy();
    });
    QObject::connect(cancel, &QPushButton::clicked, page, []() { TQXCopy::CancelCopy(); });
    QObject::connect(browseSource, &QPushButton::clicked, page, [source]() {
        QString chosen = ExtractFilePath(source->text());
        if (OpenFileDialog(QStringLiteral("File to copy"), QString(), chosen))
            source->setText(chosen);
    });
    QObject::connect(browseDest, &QPushButton::clicked, page, [dest]() {
        QString chosen = dest->text();
        if (SelectDirectory(QStringLiteral("Destination directory"), chosen))
            dest->setText(qxtCheckPath(chosen));
    });
    return page;
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Files, QStringLiteral("File copy with progress (TQXCopy)"),
             createCopyPage})
