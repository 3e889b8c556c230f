#include "AppIcon.h"
#include "DemoPage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QList>
#include <QMainWindow>
#include <QPixmap>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>

namespace qxdemo {

namespace {

QList<Page>& pages() {
    static QList<Page> list;
    return list;
}

struct FamilyInfo {
    Family family;
    const char* name;
    const char* coming; // what the tab will show once its components exist
};

constexpr FamilyInfo families[] = {
    {Family::Images, "Images",
     "GIF pictures, the thumbnail browser, the dissolving image, gradient and pattern fills and "
     "the proportional image."},
    {Family::Sound, "Sound", "WAV playback with its waveform, the RIFF reader and MP3 tags."},
    {Family::Display, "Display",
     "The LCD panel, the dot-matrix marquee, the gauge, the system-status panel, the 3D label, "
     "scrolling text, the star field, the bouncing ball and the blinker."},
    {Family::Files, "Files", "Copying with progress, file search, directory lists and drive tabs."},
    {Family::Settings, "Settings", "The INI component saving window placement and fonts."},
    {Family::Application, "Application", "Thought-bubble hints and the font combo box."},
    {Family::Utilities, "Utilities", "The qxt function library."},
};

QWidget* familyTab(const FamilyInfo& info) {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    bool any = false;
    for (const Page& p : pages()) {
        if (p.family != info.family)
            continue;
        auto* box = new QGroupBox(p.title);
        auto* boxLayout = new QVBoxLayout(box);
        boxLayout->addWidget(p.create(box));
        layout->addWidget(box);
        any = true;
    }
    if (!any) {
        auto* label =
            new QLabel(QStringLiteral("Coming to this page: %1").arg(QLatin1String(info.coming)));
        label->setWordWrap(true);
        layout->addWidget(label);
    }
    layout->addStretch(1);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    return scroll;
}

// Grows the window until the current tab's content shows whole, without scroll bars, renders
// it and gives the window its size back: a picture of a long tab shows all of it.
QPixmap grabWhole(QMainWindow& window, QTabWidget* tabs) {
    const QSize before = window.size();
    auto* scroll = qobject_cast<QScrollArea*>(tabs->currentWidget());
    if (scroll && scroll->widget()) {
        const QSize need =
            scroll->widget()->sizeHint().expandedTo(scroll->widget()->minimumSizeHint());
        const QSize have = scroll->maximumViewportSize();
        window.resize(before.width() + std::max(0, need.width() - have.width()),
                      before.height() + std::max(0, need.height() - have.height()));
        QApplication::processEvents();
    }
    const QPixmap shot = window.grab();
    window.resize(before);
    return shot;
}

// Writes one picture per tab into dir, named after the tab, each after the tab's timers and
// layouts had time to settle; exits with 0 when all were written.
void shootAll(QMainWindow& window, QTabWidget* tabs, const QString& dir, int index = 0,
              bool ok = true) {
    if (index == tabs->count()) {
        QApplication::exit(ok ? 0 : 1);
        return;
    }
    tabs->setCurrentIndex(index);
    QTimer::singleShot(300, &window, [&window, tabs, dir, index, ok]() {
        const QString file = QDir(dir).filePath(tabs->tabText(index) + QStringLiteral(".png"));
        const bool saved = grabWhole(window, tabs).save(file);
        if (!saved)
            std::fprintf(stderr, "qxdemo: %s kann nicht geschrieben werden.\n", qPrintable(file));
        shootAll(window, tabs, dir, index + 1, ok && saved);
    });
}

// The tabs' names, in the order of the tabs.
QStringList pageNames() {
    QStringList names;
    for (const FamilyInfo& info : families)
        names << QLatin1String(info.name);
    return names;
}

} // namespace

bool registerPage(Page page) {
    pages().append(std::move(page));
    return true;
}

} // namespace qxdemo

int main(int argc, char** argv) {
    // --screenshot and --help work without a display.
    bool headless = false;
    for (int i = 1; i < argc; ++i) {
        const QByteArray word(argv[i]);
        headless = headless || word == "--screenshot" || word == "--screenshot-all" ||
                   word == "--help" || word == "-h";
    }
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qxdemo"));
    QApplication::setApplicationDisplayName(QStringLiteral("QXTools Gallery"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The QXTools component gallery."));
    parser.addHelpOption();
    const QCommandLineOption shotOption(QStringLiteral("screenshot"),
                                        QStringLiteral("Render the window into FILE and exit."),
                                        QStringLiteral("FILE"));
    const QCommandLineOption allOption(
        QStringLiteral("screenshot-all"),
        QStringLiteral("Render every tab, whole, into DIR/NAME.png and exit."),
        QStringLiteral("DIR"));
    const QStringList pages = qxdemo::pageNames();
    const QCommandLineOption pageOption(
        QStringLiteral("page"),
        QStringLiteral("Open the tab NAME: %1.").arg(pages.join(QStringLiteral(", "))),
        QStringLiteral("NAME"));
    parser.addOption(shotOption);
    parser.addOption(pageOption);
    parser.addOption(allOption);
    parser.process(app);
    const QString page = parser.value(pageOption);
    const auto named = std::find_if(pages.begin(), pages.end(), [&](const QString& name) {
        return name.compare(page, Qt::CaseInsensitive) == 0;
    });
    if (parser.isSet(pageOption) && named == pages.end()) {
        std::fprintf(stderr, "qxdemo: Eine Seite \"%s\" gibt es nicht. Die Seiten sind: %s.\n",
                     qPrintable(page), qPrintable(pages.join(QStringLiteral(", "))));
        return 2;
    }
    QApplication::setWindowIcon(qxdemo::galleryIcon());

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("QXTools Gallery"));
    auto* tabs = new QTabWidget;
    for (const auto& info : qxdemo::families)
        tabs->addTab(qxdemo::familyTab(info), QLatin1String(info.name));
    window.setCentralWidget(tabs);
    window.resize(900, 640);
    if (named != pages.end())
        tabs->setCurrentIndex(int(named - pages.begin()));
    window.show();

    if (parser.isSet(allOption)) {
        const QString dir = parser.value(allOption);
        if (!QDir().mkpath(dir)) {
            std::fprintf(stderr, "qxdemo: Das Verzeichnis %s kann nicht angelegt werden.\n",
                         qPrintable(dir));
            return 1;
        }
        qxdemo::shootAll(window, tabs, dir);
    } else if (parser.isSet(shotOption)) {
        // Let timers and layouts settle before taking the picture.
        QTimer::singleShot(300, &window, [&]() {
            const bool ok = qxdemo::grabWhole(window, tabs).save(parser.value(shotOption));
            QApplication::exit(ok ? 0 : 1);
        });
    }
    return QApplication::exec();
}
