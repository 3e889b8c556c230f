// examples/display.cpp: an LCD panel with a caption, a box gauge at 70 per cent and a label
// that a blinker makes blink.
#include <qxtools/QXGauge.h>
#include <qxtools/QxBlink.h>
#include <qxtools/Qxlcdpan.h>

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QWidget window;
    auto* layout = new QVBoxLayout(&window);

    auto* lcd = new TQXLCDPanel;
    lcd->SetColumns(8);
    lcd->SetCaption(QStringLiteral("12:34:56"));
    layout->addWidget(lcd);

    auto* gauge = new TQXGauge;
    gauge->SetBoxes(10);
    gauge->SetProgress(70);
    layout->addWidget(gauge);

    auto* warning = new QLabel(QStringLiteral("Achtung"));
    layout->addWidget(warning);
    // The blinker is no widget: it gives the label yellow and olive in turn, every 500 ms.
    auto* blinker = new TQXBlinker(&window);
    blinker->SetInterval(500);
    blinker->SetControl(warning);
    blinker->SetBlink(true);

    // With a file name the window is drawn into it after the blinker's first tick.
    if (argc > 1) {
        blinker->QXOnTime();
        return window.grab().save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
    }
    window.show();
    return app.exec();
}
