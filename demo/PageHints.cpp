// The hint section: a TQXHint that turns every tooltip of the gallery into a thought bubble,
// with its position and colour to choose, and the hint editor for a few sample widgets.
#include "DemoPage.h"

#include "QXHintED.h"
#include "Qxhint.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

struct NamedColour {
    const char* name;
    TColor colour;
};

constexpr NamedColour balloonColours[] = {
    {"Yellow", clYellow},
    {"Light blue", RGB(0xC8, 0xE6, 0xFF)},
    {"White", clWhite},
    {"Mint", RGB(0xC8, 0xFF, 0xC8)},
    {"Pink", RGB(0xFF, 0xD2, 0xE6)},
};

class HintsPage : public QWidget {
public:
    explicit HintsPage(QWidget* parent) : QWidget(parent) {
        m_hint = new TQXHint(this);
        m_hint->SetName(QStringLiteral("GalleryHint"));

        auto* layout = new QVBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral(
            "Every tooltip of the gallery shows as a thought bubble while the switch is on; "
            "off, no hints show at all. Rest the pointer on any of the widgets below."));
        intro->setWordWrap(true);
        layout->addWidget(intro);

        auto* settings = new QGridLayout;
        auto* active = new QCheckBox(QStringLiteral("Thought-bubble hints"));
        active->setChecked(m_hint->Active());
        active->setToolTip(QStringLiteral("Schaltet die Sprechblasen für die ganze Galerie ein "
                                          "und aus."));
        connect(active, &QCheckBox::toggled, this, [this](bool on) { m_hint->SetActive(on); });
        settings->addWidget(active, 0, 0, 1, 2);

        auto* position = new QComboBox;
        position->addItems({QStringLiteral("Above, left"), QStringLiteral("Above, right"),
                            QStringLiteral("Below, left"), QStringLiteral("Below, right")});
        position->setCurrentIndex(int(m_hint->HintPosition()));
        position->setToolTip(QStringLiteral("Auf welcher Seite des Mauszeigers die Blase "
                                            "steht.^MAm Bildschirmrand weicht sie aus."));
        connect(position, &QComboBox::currentIndexChanged, this,
                [this](int index) { m_hint->SetHintPosition(THintPosition(index)); });
        settings->addWidget(new QLabel(QStringLiteral("Position")), 1, 0);
        settings->addWidget(position, 1, 1);

        auto* colour = new QComboBox;
        for (const NamedColour& c : balloonColours)
            colour->addItem(QLatin1String(c.name));
        colour->setToolTip(QStringLiteral("Die Farbe der Blase."));
        connect(colour, &QComboBox::currentIndexChanged, this,
                [this](int index) { m_hint->SetColor(balloonColours[index].colour); });
        settings->addWidget(new QLabel(QStringLiteral("Colour")), 2, 0);
        settings->addWidget(colour, 2, 1);

        auto* shadow = new QSpinBox;
        shadow->setRange(0, 30);
        shadow->setValue(m_hint->ShadowDepth());
        shadow->setSuffix(QStringLiteral(" px"));
        shadow->setToolTip(QStringLiteral("Wie weit der Schatten versetzt ist."));
        connect(shadow, &QSpinBox::valueChanged, this,
                [this](int value) { m_hint->SetShadowDepth(value); });
        settings->addWidget(new QLabel(QStringLiteral("Shadow")), 3, 0);
        settings->addWidget(shadow, 3, 1);
        settings->setColumnStretch(2, 1);
        layout->addLayout(settings);

        // Sample widgets whose hints the editor changes.
        auto* samples = new QHBoxLayout;
        auto* save = new QPushButton(QStringLiteral("Save"));
        save->setToolTip(QStringLiteral("Speichert die Datei.^MTastenkürzel: Strg+S"));
        auto* name = new QLineEdit(QStringLiteral("Bericht.txt"));
        name->setToolTip(QStringLiteral("Der Name, unter dem die Datei gespeichert wird."));
        auto* backup = new QCheckBox(QStringLiteral("Keep a backup"));
        backup->setToolTip(
            QStringLiteral("Legt vor dem Überschreiben eine Sicherungskopie mit der Endung "
                           ".bak an, damit nichts verloren geht, falls etwas schiefgeht."));
        samples->addWidget(save);
        samples->addWidget(name, 1);
        samples->addWidget(backup);
        layout->addLayout(samples);

        auto* editRow = new QHBoxLayout;
        auto* target = new QComboBox;
        const QList<QWidget*> editable{save, name, backup};
        target->addItems({QStringLiteral("The Save button"), QStringLiteral("The file name"),
                          QStringLiteral("The backup switch")});
        target->setToolTip(QStringLiteral("Der Knopf daneben bearbeitet den Hinweis dieses "
                                          "Elements."));
        auto* edit = new QPushButton(QStringLiteral("Edit hint…"));
        edit->setToolTip(QStringLiteral("Öffnet den Hinweis-Editor mit Vorschau."));
        connect(edit, &QPushButton::clicked, this, [target, editable] {
            THintProperty editor({editable[target->currentIndex()]}, "Hint");
            editor.Edit();
        });
        editRow->addWidget(target);
        editRow->addWidget(edit);
        editRow->addStretch(1);
        layout->addLayout(editRow);
    }

private:
    TQXHint* m_hint = nullptr;
};

QWidget* createHintsPage(QWidget* parent) {
    return new HintsPage(parent);
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Application, QStringLiteral("Thought-bubble hints (TQXHint)"),
             createHintsPage})
