#include "QXHintED.h"

#include "Dialogs.h"
#include "Qxhint.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const bool editorKnown = RegisterEditorClass(EditorClassOf<THintProperty>("THintProperty"));

// A widget's hint is its tooltip; any other object keeps it in a property named Hint.
QString hintOf(const QObject* o) {
    if (const auto* w = qobject_cast<const QWidget*>(o))
        return w->toolTip();
    return o ? o->property("Hint").toString() : QString();
}

void setHintOf(QObject* o, const QString& hint) {
    if (auto* w = qobject_cast<QWidget*>(o))
        w->setToolTip(hint);
    else if (o)
        o->setProperty("Hint", hint);
}

} // namespace

int QXHintLineCount(const QString& text) {
    if (text.isEmpty())
        return 0;
    const int breaks = int(text.count(QLatin1Char('\n')));
    return text.endsWith(QLatin1Char('\n')) ? breaks : breaks + 1;
}

THintStringEditDialog::THintStringEditDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("HintStringEditDialog"));
    setWindowTitle(QStringLiteral("Hinweis bearbeiten"));
    auto* layout = new QVBoxLayout(this);

    Bevel1 = new QFrame;
    Bevel1->setFrameShape(QFrame::StyledPanel);
    Bevel1->setFrameShadow(QFrame::Sunken);
    auto* inner = new QVBoxLayout(Bevel1);
    Memo = new QPlainTextEdit;
    Memo->setAccessibleName(QStringLiteral("Hinweistext"));
    Memo->setTabChangesFocus(true);
    inner->addWidget(Memo, 1);
    LineCounter = new QLabel;
    inner->addWidget(LineCounter);
    ShowPanel = new QLabel;
    ShowPanel->setAccessibleName(QStringLiteral("Vorschau"));
    ShowPanel->setAlignment(Qt::AlignCenter);
    ShowPanel->setWordWrap(true);
    ShowPanel->setFrameShape(QFrame::Panel);
    ShowPanel->setFrameShadow(QFrame::Raised);
    ShowPanel->setMinimumHeight(60);
    ShowPanel->setAutoFillBackground(true);
    // The preview in the colours and font of the bubbles.
    QPalette p = ShowPanel->palette();
    p.setColor(QPalette::Window, TColorToQColor(QXH_Color));
    p.setColor(QPalette::WindowText, Qt::black);
    ShowPanel->setPalette(p);
    if (QXH_Font)
        ShowPanel->setFont(QXH_Font->ToQFont());
    inner->addWidget(ShowPanel);
    layout->addWidget(Bevel1, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    OkButton = new QPushButton(QStringLiteral("OK"));
    OkButton->setDefault(true);
    CancelButton = new QPushButton(QStringLiteral("Abbrechen"));
    buttons->addWidget(OkButton);
    buttons->addWidget(CancelButton);
    layout->addLayout(buttons);
    connect(OkButton, &QPushButton::clicked, this, [this]() { done(mrOk); });
    connect(CancelButton, &QPushButton::clicked, this, [this]() { done(mrCancel); });
    connect(Memo, &QPlainTextEdit::textChanged, this, &THintStringEditDialog::MemoChange);
    resize(360, 300);
    MemoChange();
}

THintStringEditDialog::~THintStringEditDialog() = default;

void THintStringEditDialog::MemoChange() {
    const QString text = Memo->toPlainText();
    ShowPanel->setText(text);
    LineCounter->setText(QString::asprintf("%d Lines", QXHintLineCount(text)));
}

TPropertyAttributes THintProperty::GetAttributes() const {
    TPropertyAttributes attributes = TStringProperty::GetAttributes();
    attributes.Include(paDialog);
    return attributes;
}

QString THintProperty::GetValue() const {
    return hintOf(GetComponent(0));
}

void THintProperty::SetValue(const QString& value) {
    for (int i = 0; i < PropCount(); ++i)
        setHintOf(GetComponent(i), value);
}

void THintProperty::Edit() {
    THintStringEditDialog dialog;
    dialog.Memo->setPlainText(GetValue());
    if (ShowModalForm(&dialog) == mrOk)
        SetValue(dialog.Memo->toPlainText());
}

void QXHintED::Register() {
    Q_UNUSED(editorKnown);
    if (const TPropertyEditorClass* editor = FindEditorClass(QStringLiteral("THintProperty")))
        RegisterPropertyEditor(QStringLiteral("string"), QStringLiteral("TControl"),
                               QStringLiteral("Hint"), *editor);
}
