#include "AppIcon.h"
#include "DemoPage.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QGroupBox>
#include <QLabel>
#include <QList>
#include <QMainWindow>
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
        headless = headless || word == "--screenshot" || word == "--help" || word == "-h";
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
    const QStringList pages = qxdemo::pageNames();
    const QCommandLineOption pageOption(
        QStringLiteral("page"),
        QStringLiteral("Open the tab NAME: %1.").arg(pages.join(QStringLiteral(", "))),
        QStringLiteral("NAME"));
    parser.addOption(shotOption);
    parser.addOption(pageOption);
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

    if (parser.isSet(shotOption)) {
        // Let timers and layouts settle before taking the picture.
        QTimer::singleShot(300, &window, [&]() {
            const bool ok = window.grab().save(parser.value(shotOption));
            QApplication::exit(ok ? 0 : 1);
        });
    }
    return QApplication::exec();
}
