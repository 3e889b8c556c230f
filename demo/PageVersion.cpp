// The version information of a chosen file: the German memo listing, its icon and the
// version texts derived from it.

#include "DemoPage.h"

#include "Dialogs.h"
#include "QxutilVersion.h"
#include "SysUtils.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString hexVersion(const QString& version) {
    try {
        return qxtGetHexFileVersion(version);
    } catch (const Exception& e) {
        return e.Message();
    }
}

QWidget* createPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);

    auto* row = new QHBoxLayout;
    auto* icon = new QLabel;
    icon->setFixedSize(36, 36);
    icon->setAlignment(Qt::AlignCenter);
    auto* file = new QLineEdit(QCoreApplication::applicationFilePath());
    auto* choose = new QPushButton(QStringLiteral("Choose file…"));
    row->addWidget(icon);
    row->addWidget(file, 1);
    row->addWidget(choose);
    layout->addLayout(row);

    auto* memo = new QPlainTextEdit;
    memo->setReadOnly(true);
    memo->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    memo->setMinimumHeight(200);
    layout->addWidget(memo);
    auto* summary = new QLabel;
    layout->addWidget(summary);

    const auto show = [=]() {
        const QString name = file->text();
        memo->clear();
        qxtFileVersionsInfoToMemo(name, memo);
        const QImage image = qxtGetFileIcon(name, true);
        icon->setPixmap(image.isNull() ? QPixmap() : QPixmap::fromImage(image));
        const QString version = qxtGetFileVersion(name);
        summary->setText(QStringLiteral("Product version: %1    Hex: %2    Icons: %3    "
                                        "qxtGetAppVersion: \"%4\"")
                             .arg(version.isEmpty() ? QStringLiteral("(none)") : version,
                                  hexVersion(version), QString::number(qxtGetIconCount(name)),
                                  qxtGetAppVersion()));
    };
    QObject::connect(file, &QLineEdit::editingFinished, page, show);
    QObject::connect(choose, &QPushButton::clicked, page, [=]() {
        QString name = file->text();
        if (OpenFileDialog(QStringLiteral("Choose a file"),
                           QStringLiteral("Programs and libraries (*.exe *.dll);;All files (*)"),
                           name)) {
            file->setText(name);
            show();
        }
    });
    show();
    return page;
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Files, QStringLiteral("Version information"), createPage})
