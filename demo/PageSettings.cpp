// The settings section: a TQXINI that keeps the gallery's window placement, a sample font and
// the columns of a list in an INI file.
#include "DemoPage.h"

#include "Qxini.h"
#include "QxutilFiles.h"

#include <QCoreApplication>
#include <QFile>
#include <QFontDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString fontSection = QStringLiteral("Demo");
const QString fontKey = QStringLiteral("Sample");
const QString columnSection = QStringLiteral("Columns");
const QString columnPrefix = QStringLiteral("files");

class SettingsPage : public QWidget {
public:
    explicit SettingsPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        m_file = new QLabel;
        m_file->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(m_file);

        m_sample = new QLabel(QStringLiteral("Falsches Üben von Xylophonmusik quält jeden "
                                             "größeren Zwerg."));
        m_sample->setWordWrap(true);
        layout->addWidget(m_sample);

        m_files = new QTreeWidget;
        m_files->setHeaderLabels(
            {QStringLiteral("Datei"), QStringLiteral("Typ"), QStringLiteral("Größe")});
        m_files->header()->setStretchLastSection(false);
        m_files->addTopLevelItem(new QTreeWidgetItem(QStringList{
            QStringLiteral("qxdemo.ini"), QStringLiteral("INI"), QStringLiteral("1 KB")}));
        m_files->setMaximumHeight(90);
        layout->addWidget(m_files);

        auto* buttons = new QGridLayout;
        const auto button = [&](const QString& text, int row, int column, auto slot) {
            auto* b = new QPushButton(text);
            connect(b, &QPushButton::clicked, this, slot);
            buttons->addWidget(b, row, column);
        };
        button(QStringLiteral("Save window, font and columns"), 0, 0, [this] { save(); });
        button(QStringLiteral("Restore them"), 0, 1, [this] { restore(); });
        button(QStringLiteral("Choose font…"), 1, 0, [this] { chooseFont(); });
        button(QStringLiteral("Forget window placement"), 1, 1, [this] {
            m_ini->KillSection(QStringLiteral("WinPos"));
            showFile();
        });
        layout->addLayout(buttons);

        m_contents = new QPlainTextEdit;
        m_contents->setReadOnly(true);
        m_contents->setMinimumHeight(120);
        layout->addWidget(m_contents);

        // The component takes the window of its owner as the form, so it is made once the
        // page sits in the gallery's main window.
        QTimer::singleShot(0, this, [this] { attach(); });
    }

private:
    void attach() {
        m_ini = new TQXINI(this);
        m_ini->SetName(QStringLiteral("Gallery"));
        m_ini->SetINIFileName(qxtWinDir() + QStringLiteral("qxdemo.ini"));
        m_ini->SetSaveWinPos(swpSizePosition);
        m_ini->OnReadINI = [this](QObject*) {
            m_ini->INILoadFont(fontSection, fontKey, &m_font);
            m_ini->INILoadColumns(columnSection, columnPrefix, m_files, true);
        };
        m_ini->OnWriteINI = [this](QObject*) {
            m_ini->INISaveFont(fontSection, fontKey, &m_font);
            m_ini->INISaveColumns(columnSection, columnPrefix, m_files);
        };
        m_file->setText(QStringLiteral("INI file: %1").arg(m_ini->GetINIFileName()));
        if (QFile::exists(m_ini->GetINIFileName()))
            restore();
        else
            showFile();
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
                [this] { m_ini->WriteINI(); });
    }

    void save() {
        m_ini->WriteINI();
        showFile();
    }

    void restore() {
        try {
            m_ini->ReadINI();
        } catch (const Exception& e) {
            m_contents->setPlainText(e.Message());
            return;
        }
        applyFont();
        showFile();
    }

    void chooseFont() {
        bool ok = false;
        const QFont chosen = QFontDialog::getFont(&ok, m_font.ToQFont(), this);
        if (!ok)
            return;
        m_font.SetQFont(chosen);
        applyFont();
    }

    void applyFont() {
        m_sample->setFont(m_font.ToQFont());
        QPalette p = m_sample->palette();
        p.setColor(QPalette::WindowText, TColorToQColor(m_font.Color(), &p));
        m_sample->setPalette(p);
    }

    void showFile() {
        QFile f(m_ini->GetINIFileName());
        m_contents->setPlainText(f.open(QIODevice::ReadOnly)
                                     ? QString::fromUtf8(f.readAll())
                                     : QStringLiteral("(the file does not exist yet)"));
    }

    TQXINI* m_ini = nullptr;
    TFont m_font;
    QLabel* m_file;
    QLabel* m_sample;
    QTreeWidget* m_files;
    QPlainTextEdit* m_contents;
};

} // namespace

QXDEMO_PAGE({qxdemo::Family::Settings, QStringLiteral("INI file component (TQXINI)"),
             [](QWidget* parent) -> QWidget* { return new SettingsPage(parent); }})
