// The directory list: a list of file names grouped by directory.
#include "DemoPage.h"

#include "QXDirList.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QWidget* createDirListPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    auto* note = new QLabel(QStringLiteral(
        "Full file names, one a line; Update sorts them and groups them by directory. As the "
        "list has always been built, the last file of the sorted list is left out."));
    note->setWordWrap(true);
    layout->addWidget(note);

    auto* row = new QHBoxLayout;
    auto* names = new QPlainTextEdit(QStringLiteral("/home/anna/Briefe/Bank.txt\n"
                                                    "/home/anna/Briefe/Vermieter.txt\n"
                                                    "/home/anna/Bilder/Urlaub/Strand.gif\n"
                                                    "/home/anna/Bilder/Urlaub/Berge.gif\n"
                                                    "/home/anna/Bilder/Katze.png\n"
                                                    "/home/anna/Briefe/Alt/Schule.txt\n"
                                                    "/home/anna/Briefe/Alt/Zeugnis.txt\n"
                                                    "/home/anna/Notizen.txt"));
    auto* tree = new QTreeWidget;
    tree->setHeaderLabels({QStringLiteral("DirList"), QStringLiteral("Path")});
    tree->setMinimumHeight(180);
    names->setMinimumHeight(180);
    row->addWidget(names, 1);
    row->addWidget(tree, 1);
    layout->addLayout(row);
    auto* update = new QPushButton(QStringLiteral("Update"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(update);
    buttons->addStretch(1);
    layout->addLayout(buttons);

    auto* list = new TQXDirList(page);
    const auto run = [list, names, tree]() {
        list->SetFileListStrings(names->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts));
        list->Update();
        tree->clear();
        for (int i = 0; i < list->DirList()->Count(); ++i) {
            auto* dir = new QTreeWidgetItem(tree, {list->DirList()->Strings(i)});
            auto* info = static_cast<TDirInfo*>(list->DirList()->Objects(i));
            dir->setText(1, info->Path);
            for (const QString& file : list->GetFiles(i)->ToStringList())
                new QTreeWidgetItem(dir, {file});
        }
        tree->expandAll();
        tree->resizeColumnToContents(0);
    };
    QObject::connect(update, &QPushButton::clicked, page, run);
    run();
    return page;
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Files, QStringLiteral("Directory list (TQXDirList)"),
             createDirListPage})
