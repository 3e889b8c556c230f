// The font combo section: a TQXFontCombo steering a sample label, with the filter of its
// separate Fonts list to try out.
#include "DemoPage.h"

#include "Qxfntcbo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

class FontComboPage : public QWidget {
public:
    explicit FontComboPage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        auto* sample = new QLabel(
            QStringLiteral("Falsches Üben von Xylophonmusik quält jeden größeren Zwerg."));
        QFont big = sample->font();
        big.setPointSize(16);
        sample->setFont(big);
        sample->setWordWrap(true);

        m_combo = new TQXFontCombo;
        m_combo->setToolTip(QStringLiteral("Die Schrift des Beispieltexts.^MEsc kehrt zur "
                                           "zuletzt festgelegten Schrift zurück."));
        m_combo->SetControl(sample);
        auto* faces = new QCheckBox(QStringLiteral("Show each font in its own face"));
        faces->setToolTip(QStringLiteral("Zeigt jeden Namen der Liste in seiner Schrift."));
        connect(faces, &QCheckBox::toggled, this,
                [this](bool on) { m_combo->SetShowFontFaces(on); });
        auto* top = new QGridLayout;
        top->addWidget(m_combo, 0, 0);
        top->addWidget(faces, 0, 1);
        top->setColumnStretch(2, 1);
        layout->addLayout(top);
        layout->addWidget(sample);

        // The filter only applies to Fonts; the drop-down above lists every font.
        auto* filter = new QGridLayout;
        auto* charSet = new QComboBox;
        charSet->addItems({QStringLiteral("All"), QStringLiteral("Latin (ANSI)"),
                           QStringLiteral("Symbol"), QStringLiteral("OEM")});
        connect(charSet, &QComboBox::currentIndexChanged, this, [this](int index) {
            m_combo->SetCharSet(TCharSet(index));
            showFonts();
        });
        auto* pitch = new QComboBox;
        pitch->addItems(
            {QStringLiteral("Any pitch"), QStringLiteral("Proportional"), QStringLiteral("Fixed")});
        connect(pitch, &QComboBox::currentIndexChanged, this, [this](int index) {
            m_combo->SetPitch(TPitch(index));
            showFonts();
        });
        auto* outline = new QCheckBox(QStringLiteral("Scalable outline fonts only"));
        connect(outline, &QCheckBox::toggled, this, [this](bool on) {
            m_combo->SetTrueTypeOnly(on);
            showFonts();
        });
        filter->addWidget(new QLabel(QStringLiteral("Fonts filtered by")), 0, 0);
        filter->addWidget(charSet, 0, 1);
        filter->addWidget(pitch, 0, 2);
        filter->addWidget(outline, 0, 3);
        filter->setColumnStretch(4, 1);
        layout->addLayout(filter);

        m_fonts = new QPlainTextEdit;
        m_fonts->setReadOnly(true);
        m_fonts->setMaximumHeight(110);
        layout->addWidget(m_fonts);
        showFonts();
    }

private:
    void showFonts() {
        const QStringList fonts = m_combo->Fonts()->ToStringList();
        m_fonts->setPlainText(fonts.isEmpty() ? QStringLiteral("(no font passes the filter)")
                                              : fonts.join(QLatin1Char('\n')));
    }

    TQXFontCombo* m_combo = nullptr;
    QPlainTextEdit* m_fonts = nullptr;
};

QWidget* createFontComboPage(QWidget* parent) {
    return new FontComboPage(parent);
}

} // namespace

QXDEMO_PAGE({qxdemo::Family::Application, QStringLiteral("Font combo box (TQXFontCombo)"),
             createFontComboPage})
