#include "QxcopyForm.h"

#include "Dialogs.h"
#include "QXGauge.h"
#include "Qxcopy.h"

#include <QCloseEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace {

constexpr int panelWidth = 360;
constexpr int gaugeBoxes = 24;

// A sunken panel showing a file name; a name wider than the panel loses its middle, so the
// directory's start and the file's name stay readable.
class NamePanel : public QLabel {
public:
    NamePanel() {
        setFrameStyle(QFrame::Panel | QFrame::Sunken);
        setMargin(2);
        setTextFormat(Qt::PlainText);
    }
    QSize sizeHint() const override { return {panelWidth, QLabel::sizeHint().height()}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        drawFrame(&p);
        const QRect area = contentsRect().adjusted(margin() + 1, 0, -margin() - 1, 0);
        p.setPen(palette().color(QPalette::WindowText));
        p.drawText(area, Qt::AlignVCenter | Qt::AlignLeft,
                   fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()));
    }
};

// A caption in the left column, beside a panel or a gauge.
QLabel* caption(const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

TQXGauge* makeGauge(const QString& name, const QString& description) {
    auto* gauge = new TQXGauge;
    gauge->SetBoxes(gaugeBoxes);
    gauge->SetShowPeak(false);
    gauge->setMinimumSize(panelWidth, 22);
    gauge->setAccessibleName(name);
    gauge->setAccessibleDescription(description);
    gauge->setToolTip(description);
    return gauge;
}

// A borderless panel holding a caption and a gauge, so the pair shows and hides together.
QFrame* gaugePanel(const QString& text, TQXGauge* gauge, int captionWidth) {
    auto* panel = new QFrame;
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    QLabel* label = caption(text, gauge);
    label->setMinimumWidth(captionWidth);
    row->addWidget(label);
    row->addWidget(gauge, 1);
    return panel;
}

} // namespace

TfrmQXCopy::TfrmQXCopy(QWidget* parent) : TForm(parent, Qt::Dialog) {
    setObjectName(QStringLiteral("frmQXCopy"));
    setWindowTitle(QStringLiteral("Kopiere Dateien..."));
    setAccessibleName(QStringLiteral("Kopierfortschritt"));
    if (parent)
        setWindowModality(Qt::WindowModal);

    panSource = new NamePanel;
    panSource->setObjectName(QStringLiteral("panSource"));
    panSource->setAccessibleName(QStringLiteral("Quelldatei"));
    panDest = new NamePanel;
    panDest->setObjectName(QStringLiteral("panDest"));
    panDest->setAccessibleName(QStringLiteral("Zieldatei"));
    Label1 = caption(QStringLiteral("Quelle:"), panSource);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2 = caption(QStringLiteral("Ziel:"), panDest);
    Label2->setObjectName(QStringLiteral("Label2"));
    Button1 = new QPushButton(QStringLiteral("Abbrechen"));
    Button1->setObjectName(QStringLiteral("Button1"));
    Button1->setDefault(true);

    const int captionWidth = std::max({Label1->sizeHint().width(), Label2->sizeHint().width(),
                                       fontMetrics().horizontalAdvance(QStringLiteral("Gesamt:")),
                                       fontMetrics().horizontalAdvance(QStringLiteral("Datei:"))});
    dfgCopy = makeGauge(QStringLiteral("Gesamtfortschritt"),
                        QStringLiteral("Fortschritt über alle Dateien"));
    dfgCopy->setObjectName(QStringLiteral("dfgCopy"));
    Panel1 = gaugePanel(QStringLiteral("Gesamt:"), dfgCopy, captionWidth);
    Panel1->setObjectName(QStringLiteral("Panel1"));
    dfgFile = makeGauge(QStringLiteral("Dateifortschritt"),
                        QStringLiteral("Fortschritt der aktuellen Datei"));
    dfgFile->setObjectName(QStringLiteral("dfgFile"));
    panFile = gaugePanel(QStringLiteral("Datei:"), dfgFile, captionWidth);
    panFile->setObjectName(QStringLiteral("panFile"));

    auto* grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setVerticalSpacing(8);
    grid->addWidget(Label1, 0, 0);
    grid->addWidget(panSource, 0, 1);
    grid->addWidget(Label2, 1, 0);
    grid->addWidget(panDest, 1, 1);
    grid->addWidget(Panel1, 2, 0, 1, 2);
    grid->addWidget(panFile, 3, 0, 1, 2);
    grid->addWidget(Button1, 4, 0, 1, 2, Qt::AlignRight);
    grid->setRowMinimumHeight(2, 30);

    connect(Button1, &QPushButton::clicked, this, [this]() { Button1Click(Button1); });
}

TfrmQXCopy::~TfrmQXCopy() = default;

void TfrmQXCopy::ShowFileProgress(bool Value) {
    panFile->setVisible(Value);
    adjustSize();
}

void TfrmQXCopy::FormKeyPress(QObject*, char& Key) {
    if (Key == 27)
        askCancel();
}

void TfrmQXCopy::Button1Click(QObject*) {
    askCancel();
}

void TfrmQXCopy::keyPressEvent(QKeyEvent* e) {
    if (e->key() != Qt::Key_Escape) {
        TForm::keyPressEvent(e);
        return;
    }
    char key = 27;
    FormKeyPress(this, key);
}

// The window belongs to the run and goes with it; closing it early means cancelling.
void TfrmQXCopy::closeEvent(QCloseEvent* e) {
    e->ignore();
    askCancel();
}

void TfrmQXCopy::askCancel() {
    if (MessageDlg(QStringLiteral("Kopiervorgang abbrechen ?"), mtConfirmation, {mbYes, mbNo}) ==
        mrYes)
        TQXCopy::CancelCopy();
}
