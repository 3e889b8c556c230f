#include "DemoPage.h"
#include "Dialogs.h"
#include "FindFile.h"
#include "QXFind.h"
#include "QxutilFiles.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace {

QString attributeText(int attr) {
    QString s;
    s += (attr & faReadOnly) ? 'R' : '-';
    s += (attr & faHidden) ? 'H' : '-';
    s += (attr & faSysFile) ? 'S' : '-';
    s += (attr & faDirectory) ? 'D' : '-';
    s += (attr & faArchive) ? 'A' : '-';
    return s;
}

// A directory search with TQXFind: start path, pattern list and subdirectory switch, the found
// files with size, date and attributes, the running counts, and a stop button.
QWidget* createSearchPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* find = new TQXFind(page);
    auto* dir = new QLineEdit(qxtAppDir());
    auto* browse = new QPushButton(QStringLiteral("…"));
    auto* pattern = new QLineEdit(QStringLiteral("*.*"));
    pattern->setToolTip(QStringLiteral("One mask, or several joined by \";\" (*.cpp;*.h)"));
    auto* subdirs = new QCheckBox(QStringLiteral("Subdirectories"));
    subdirs->setChecked(true);
    auto* search = new QPushButton(QStringLiteral("Search"));
    auto* stop = new QPushButton(QStringLiteral("Stop"));
    stop->setEnabled(false);
    auto* counts = new QLabel(QStringLiteral("Dirs: 0   Files: 0"));
    auto* results = new QTreeWidget;
    results->setHeaderLabels({QStringLiteral("File"), QStringLiteral("Size"),
                              QStringLiteral("Modified"), QStringLiteral("Attributes")});
    results->setRootIsDecorated(false);
    results->setUniformRowHeights(true);
    results->header()->setStretchLastSection(false);
    results->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    results->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    results->setMinimumHeight(260);

    auto* grid = new QGridLayout(page);
    grid->addWidget(new QLabel(QStringLiteral("Directory")), 0, 0);
    grid->addWidget(dir, 0, 1);
    grid->addWidget(browse, 0, 2);
    grid->addWidget(new QLabel(QStringLiteral("Pattern")), 1, 0);
    grid->addWidget(pattern, 1, 1);
    grid->addWidget(subdirs, 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(search);
    buttons->addWidget(stop);
    buttons->addStretch(1);
    buttons->addWidget(counts);
    grid->addLayout(buttons, 2, 0, 1, 3);
    grid->addWidget(results, 3, 0, 1, 3);

    find->OnChange = [counts](QObject*, const QString&, int dirCount, int fileCount) {
        counts->setText(QStringLiteral("Dirs: %1   Files: %2").arg(dirCount).arg(fileCount));
    };
    // Names are shown below the start directory.
    find->OnFindFile = [find, results](QObject*, const TSearchRec& rec, const QString& path,
                                       const QString&) {
        auto* item = new QTreeWidgetItem(results);
        item->setText(0, path.mid(find->StartPath().size()) + rec.Name);
        item->setToolTip(0, path + rec.Name);
        item->setText(1, QString::number(rec.Size));
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->setText(2, FileDateToDateTime(rec.Time).toString(QStringLiteral("dd.MM.yyyy hh:mm")));
        item->setText(3, attributeText(rec.Attr));
    };
    find->OnExecute = [search, stop, results](QObject*) {
        results->clear();
        search->setEnabled(false);
        stop->setEnabled(true);
    };
    find->OnFinished = [search, stop](QObject*) {
        search->setEnabled(true);
        stop->setEnabled(false);
    };

    const auto run = [=]() {
        // A search lets events run, so Return in a field could start a second one inside it.
        if (!search->isEnabled())
            return;
        find->SetStartPath(dir->text());
        find->SetFilePattern(pattern->text());
        find->SetSubdirs(subdirs->isChecked());
        find->Execute();
    };
    QObject::connect(search, &QPushButton::clicked, page, run);
    QObject::connect(pattern, &QLineEdit::returnPressed, page, run);
    QObject::connect(dir, &QLineEdit::returnPressed, page, run);
    QObject::connect(stop, &QPushButton::clicked, page, [find]() { find->BreakScan(); });
    QObject::connect(browse, &QPushButton::clicked, page, [dir]() {
        QString chosen = dir->text();
        if (SelectDirectory(QStringLiteral("Directory to search"), chosen))
            dir->setText(chosen);
    });
    // Show a first result at once.
    QTimer::singleShot(0, page, run);
    return page;
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Files, QStringLiteral("File search (TQXFind)"), createSearchPage})
