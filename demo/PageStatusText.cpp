// Display section: live status panels, the four 3D caption styles and two marquees.
#include "DemoPage.h"

#include "QXScroll.h"
#include "Qx3dlbl.h"
#include "Qxpanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

QWidget* statusTextPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);

    auto* panels = new QHBoxLayout;
    auto* text = new TQXPanel;
    text->SetCaptionFormat(QStringLiteral("%DayLong (%Day), %Date, %Time^MProzessor %CPU, "
                                          "Speicher belegt %MemoryLoad^M%AvailPhys frei von "
                                          "%TotalPhys"));
    text->SetBevelInner(bvLowered);
    text->setFixedSize(380, 62);
    text->QXOnTime();
    auto* chart = new TQXPanel;
    chart->SetStyle(sgCPU);
    chart->SetBevelOuter(bvLowered);
    chart->SetColor(clWhite);
    chart->SetGraphColor(clTeal);
    chart->setFixedSize(250, 62);
    panels->addWidget(text);
    panels->addWidget(chart);
    panels->addStretch(1);
    layout->addWidget(new QLabel(QStringLiteral("Status panels: every placeholder, and the CPU "
                                                "chart (both refresh once a second)")));
    layout->addLayout(panels);

    auto* labels = new QHBoxLayout;
    const struct {
        TcsStyle style;
        const char* caption;
    } styles[] = {{csRaised, "Erhaben"},
                  {csLowered, "Vertieft"},
                  {csShadow, "Schatten"},
                  {csNONE, "Schlicht"}};
    for (const auto& s : styles) {
        auto* label = new TQX3dLabel;
        label->SetAutoSize(false);
        label->setFixedSize(150, 45);
        label->SetCaptionStyle(s.style);
        label->SetCaption(QString::fromUtf8(s.caption));
        label->SetBorderStyle(bvLowered);
        label->SetCaptionSpacing(2);
        labels->addWidget(label);
    }
    labels->addStretch(1);
    layout->addWidget(new QLabel(QStringLiteral("3D labels: raised, lowered, shadow, none")));
    layout->addLayout(labels);

    auto* marquees = new QHBoxLayout;
    auto* across = new TQXScrollText;
    across->setFixedSize(420, 40);
    across->SetColor(clNavy);
    across->Font()->SetColor(clYellow);
    across->Font()->SetSize(14);
    across->SetShadow(true);
    across->SetShadowColor(clBlack);
    across->SetCaption(QStringLiteral("+++ QXTools für Qt: Laufschrift von rechts nach links +++"));
    across->SetSteps(2);
    across->SetInterval(30);
    auto* upward = new TQXScrollText;
    upward->setFixedSize(200, 90);
    upward->SetColor(clBlack);
    upward->Font()->SetColor(clLime);
    upward->SetScrollHorizontal(false);
    upward->SetCaption(QStringLiteral("Abspann^M^MZeilen laufen^Mvon unten^Mnach oben"));
    upward->SetInterval(40);
    marquees->addWidget(across);
    marquees->addWidget(upward);
    marquees->addStretch(1);
    layout->addWidget(new QLabel(QStringLiteral("Scrolling text: horizontal with shadow, and "
                                                "vertical over several lines")));
    layout->addLayout(marquees);
    return page;
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Display,
             QStringLiteral("Status panel, 3D label, scrolling text (TQXPanel, TQX3dLabel, "
                            "TQXScrollText)"),
             statusTextPage})
